#include "app/ui/ServeDrawings.h"

#include <fcntl.h>
#include <unistd.h>

#include <QGuiApplication>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>

#include "app/SettingsStore.h"
#include "core/Files.h"
#include "core/NotingPrompter.h"
#include "core/SaveFile.h"
#include "core/Session.h"
#include "files/PlotFile.h"
#include "plot/ui/PlotOutput.h"
#include "report/ReportFormat.h"
#include "report/ui/ReportPdf.h"

namespace quorvex {
namespace {

constexpr PictureSize kSizeOfPictures{800, 600, 96};

// Nobody reads what Qt finds to tell of the machine; only that it cannot go on counts.
void EndWhereFatal(QtMsgType type, const QMessageLogContext&, const QString&) {
  if (type == QtFatalMsg) std::_Exit(EXIT_FAILURE);
}

// Qt wants a folder for run-time files and makes one that stays behind, where the environment names none that it likes.
// It likes one that was removed but is still open, and gone with this process.
void UseNoRuntimeFolder() {
  const char* const wanted = std::getenv("TMPDIR");
  for (const char* place : {wanted, "/tmp"}) {
    std::string pattern = std::string(place != nullptr && *place != '\0' ? place : "/tmp") + "/quorvex-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) continue;
    const int folder = open(pattern.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    rmdir(pattern.c_str());
    // The dot makes a folder of what else is a link.
    if (folder >= 0) qputenv("XDG_RUNTIME_DIR", QByteArray("/proc/self/fd/") + QByteArray::number(folder) + "/.");
    return;
  }
}

// Why there is no picture of a plot, or no PDF document of a report, in a line; empty where it was written.
std::string Draw(const std::string& plotName, const std::string& ending, const std::string& pictureName,
                 const Session& session) {
  WholeFile file;
  if (const int error = file.Read(plotName)) return FileErrorText(error);
  if (ending == kPrintedReport) {
    const Result<std::string> pdf = PdfOfReport(file.Text(), session.Preferences, session.Locale);
    const int error = pdf ? SaveFile(pictureName, *pdf, FileCare::Answer) : 0;
    return !pdf ? pdf.error() : error != 0 ? FileErrorText(error) : "";
  }
  const PictureFormat* const format = PictureFormatOf(ending);
  if (format == nullptr) return UnknownPicture(ending);
  const Result<std::unique_ptr<PlotPage>> plot =
      ParsePlotFile(file.Text(), plotName, session.Preferences, session.Locale);
  if (!plot) return plot.error();
  NotingPrompter user;
  const bool drawn = (*plot)->CreateGraph({.Regenerate = true}, user) &&
                     SavePlotPicture(**plot, *format, kSizeOfPictures, pictureName, user);
  return drawn ? "" : user.Last();
}

}  // namespace

int ServeDrawings(const std::string& plotName, const std::string& pictureName, char* programName) {
  // Pictures must not depend on whose display and which scale it would be.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  UseNoRuntimeFolder();
  for (const char* name : {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS", "QT_FONT_DPI", "QT_QPA_PLATFORMTHEME"})
    qunsetenv(name);
  qInstallMessageHandler(EndWhereFatal);
  int argc = 1;
  char* argv[] = {programName, nullptr};
  const QGuiApplication application(argc, argv);
  const Session session{LoadSettings(), ReadUserLocale()};

  for (std::string ending; std::getline(std::cin, ending);)
    std::cout << Draw(plotName, ending, pictureName, session) << std::endl;
  return EXIT_SUCCESS;
}

}  // namespace quorvex
