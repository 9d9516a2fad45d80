#include "batch/ui/cfgSolveWindow.h"

#include <QMessageBox>

namespace quorvex {

cfgSolveWindow::cfgSolveWindow() : ProgressWindow(nullptr, "Quorvex Solution Progress") {
  setAttribute(Qt::WA_ShowWithoutActivating);  // runs start while their user types elsewhere
}

void cfgSolveWindow::ShowMessageBox(const std::string& text) {
  QMessageBox::information(isVisible() ? this : nullptr, "Quorvex", QString::fromStdString(text));
}

}  // namespace quorvex
