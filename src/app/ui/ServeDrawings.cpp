#include "app/ui/ServeDrawings.h"

#include <QGuiApplication>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>

#include "app/DesktopDrawer.h"
#include "app/SettingsStore.h"
#include "core/Files.h"
#include "core/NotingPrompter.h"
#include "files/PlotFile.h"
#include "plot/ui/PlotOutput.h"

namespace quorvex {
namespace {

constexpr PictureSize kSizeOfPictures{800, 600, 96};

// Nobody reads what Qt finds to tell of the machine; only that it cannot go on counts.
void EndWhereFatal(QtMsgType type, const QMessageLogContext&, const QString&) {
  if (type == QtFatalMsg) std::_Exit(EXIT_FAILURE);
}

}  // namespace

std::string DrawPlotText(std::string_view plotText, const std::string& pictureName, const Session& session) {
  NotingPrompter user;
  const Result<std::unique_ptr<PlotPage>> plot =
      ParsePlotFile(plotText, DesktopDrawer::kPlotToDraw, session.Preferences, session.Locale);
  if (!plot) return plot.error();
  const bool drawn =
      (*plot)->CreateGraph({.Regenerate = true}, user) && SavePlotPicture(**plot, kSizeOfPictures, pictureName, user);
  return drawn ? "" : user.Last();
}

int ServeDrawings(const std::string& folder, char* programName) {
  // Pictures must not depend on whose display and which scale it would be.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  for (const char* name : {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS", "QT_FONT_DPI", "QT_QPA_PLATFORMTHEME"})
    qunsetenv(name);
  qInstallMessageHandler(EndWhereFatal);
  int argc = 1;
  char* argv[] = {programName, nullptr};
  const QGuiApplication application(argc, argv);
  const Session session{LoadSettings(), ReadUserLocale()};

  const std::filesystem::path shared = folder;
  for (std::string ending; std::getline(std::cin, ending);) {
    WholeFile plot;
    const int error = plot.Read(shared / DesktopDrawer::kPlotToDraw);
    const std::filesystem::path picture = (shared / DesktopDrawer::kDrawnPicture).concat(ending);
    std::cout << (error != 0 ? FileErrorText(error) : DrawPlotText(plot.Text(), picture, session)) << std::endl;
  }
  return EXIT_SUCCESS;
}

}  // namespace quorvex
