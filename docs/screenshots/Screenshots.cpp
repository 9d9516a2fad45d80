// Takes the pictures of the windows for the manual, from real runs of the examples:
//   screenshots FOLDER SUFFIX light|dark [NAME...]
// Run from the project's folder. QT_SCALE_FACTOR sets the scale; of pictures that are named
// only those are kept that begin so.

#include <QApplication>
#include <QDir>

#include "DarkPalette.h"
#include "Shots.h"
#include "app/ui/ContrastStyle.h"

int main(int argc, char** argv) {
  using namespace quorvex;
  const QApplication application(argc, argv);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() < 4 || !QDir().mkpath(arguments[1])) return EXIT_FAILURE;
  QApplication::setStyle(new ContrastStyle);
  if (arguments[3] == "dark") QApplication::setPalette(DarkPalette());
  Session session;
  session.Preferences.Set("Show Tips at Startup", "0");
  session.Preferences.Set("hideplotinfo", "1");
  const Shots shots{arguments[1], arguments[2], session, arguments.mid(4)};
  for (const auto take :
       {TakePlotWindow, TakeProgress, TakeFrame, TakePreferences, TakeProperties, TakeSheet, TakeSelection, TakeImports,
        TakeEstimates, TakeModels, TakeSolve, TakeResults, TakeNewPlots, TakeCalculator, TakeTutorial, TakeManual})
    take(shots);
  return EXIT_SUCCESS;
}
