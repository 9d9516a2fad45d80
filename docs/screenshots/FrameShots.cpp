#include <QAction>
#include <QMenu>
#include <QTabWidget>

#include "Shots.h"
#include "app/ui/parentfrm.h"
#include "desktop/quorvexWindow.h"

namespace quorvex {

// The main frame as it opens, and with the examples.
void TakeFrame(const Shots& shots) {
  shots.Run.Preferences.Set("screenwidth", "12000");  // window units, 15 to the pixel
  shots.Run.Preferences.Set("screenheight", "8000");
  parentfrm frame(shots.Run, "", "");
  frame.show();
  shots.Take(frame, "frame-empty");
  const QList<QAction*> examples = frame.findChild<QMenu*>("examples")->actions();
  examples[1]->trigger();
  shots.Take(frame, "frame-sheet");
  for (QAction* example : {examples[0], examples[2]}) example->trigger();
  frame.findChild<QAction*>("mnuWindowCascade")->trigger();
  frame.ActiveProject()->findChild<QTabWidget*>("pages")->setCurrentIndex(1);
  shots.Take(frame, "frame-windows");
}

}  // namespace quorvex
