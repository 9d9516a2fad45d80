#include <QLineEdit>

#include "Shots.h"
#include "app/ui/ManualWindow.h"

namespace quorvex {

// The manual in its window: the contents, a part of a page, and a word that is looked for.
void TakeManual(const Shots& shots) {
  ManualWindow window;
  window.Open("index.html");
  shots.Take(window, "manual-contents");
  window.Open("../equations.md#traps");
  window.findChild<QAction*>("find")->trigger();
  window.findChild<QLineEdit*>("wanted")->setText("radians");
  window.findChild<QAction*>("findNext")->trigger();
  shots.Take(window, "manual-find");
}

}  // namespace quorvex
