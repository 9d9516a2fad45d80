#include "solve/ui/Solve.h"

#include <QKeyEvent>

namespace quorvex {

Solve::Solve(QWidget* parent) : ProgressWindow(parent, "Solution Progress") {
  setObjectName("Solve");
  setWindowModality(Qt::ApplicationModal);  // models and data stay as they are during the turns of the event loop
}

void Solve::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) Aborted = true;
  ProgressWindow::keyPressEvent(event);
}

}  // namespace quorvex
