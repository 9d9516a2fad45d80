#include "solve/ui/Solve.h"

#include <QKeyEvent>

namespace quorvex {

Solve::Solve(QWidget* parent, std::function<void()> ended)
    : ProgressWindow(parent, "Solution Progress"), ended_(std::move(ended)) {
  setObjectName("Solve");
  setWindowModality(Qt::ApplicationModal);  // models and data stay as they are during the turns of the event loop
}

void Solve::Show(bool visible) {
  ProgressWindow::Show(visible);
  if (!visible) ended_();
}

void Solve::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) Aborted = true;
  ProgressWindow::keyPressEvent(event);
}

}  // namespace quorvex
