// Takes the pictures of the windows for the manual, from real runs of the examples:
//   screenshots FOLDER SUFFIX [dark]
// Run from the project's folder. QT_SCALE_FACTOR sets the scale.

#include <QApplication>
#include <QStyleFactory>

#include "DarkPalette.h"
#include "Shots.h"

int main(int argc, char** argv) {
  using namespace quorvex;
  const QApplication application(argc, argv);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() < 3) return EXIT_FAILURE;
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  if (arguments.contains("dark")) QApplication::setPalette(DarkPalette());
  Session session;
  session.Preferences.Set("Show Tips at Startup", "0");
  const Shots shots{arguments[1], arguments[2], session};
  for (const auto take :
       {TakeProgress, TakeFrame, TakePreferences, TakeSheet, TakeImports, TakeEstimates, TakeModels, TakeSolve})
    take(shots);
  return EXIT_SUCCESS;
}
