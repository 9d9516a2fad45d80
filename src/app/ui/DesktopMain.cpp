// The desktop program: what the console program does, with windows.

#include <QSocketNotifier>
#include <csignal>
#include <cstdlib>

#include "app/CommandLine.h"
#include "app/ConvertPlot.h"
#include "app/DesktopDrawer.h"
#include "app/RecoveryStore.h"
#include "app/SettingsStore.h"
#include "app/StartUp.h"
#include "app/ui/DesktopApplication.h"
#include "app/ui/FileRequests.h"
#include "app/ui/ServeDrawings.h"
#include "app/ui/parentfrm.h"
#include "batch/ui/cfgSolveWindow.h"

namespace quorvex {
namespace {

// Qt ends a process that finds no display, or one that it cannot reach, by a fatal message. The console program does
// without, so it takes the run of a macro back; with no display named it says so in the log and does not hand over
// again.
void TakeBackWithoutDisplay(QtMsgType type, const QMessageLogContext&, const QString&) {
  if (type != QtFatalMsg) return;
  unsetenv("DISPLAY");
  unsetenv("WAYLAND_DISPLAY");
  HandOver(kConsoleProgram);
  Complain("There is no display, and the program quorvex, which does without, is not installed.");
  std::_Exit(EXIT_FAILURE);
}

void GiveUpWithoutDisplay(QtMsgType type, const QMessageLogContext&, const QString&) {
  if (type != QtFatalMsg) return;
  Complain("There is no display for the main window; quorvex -runcfg FILE runs a macro without one.");
  std::_Exit(EXIT_FAILURE);
}

// The connection to the display. Arguments are file names and none of Qt's own options.
class Desktop {
 public:
  Desktop(char* programName, QtMessageHandler withoutDisplay)
      : argv_{programName, nullptr}, application_((qInstallMessageHandler(withoutDisplay), argc_), argv_) {
    qInstallMessageHandler(nullptr);
    QApplication::setApplicationName("Quorvex");
    QApplication::setDesktopFileName("quorvex");
  }
  DesktopApplication& Application() { return application_; }

 private:
  int argc_ = 1;
  char* argv_[2];
  DesktopApplication application_;
};

int RunMacroWithWindows(const MacroRequest& request, char* programName) {
  const Desktop desktop(programName, TakeBackWithoutDisplay);
  cfgSolveWindow form;
  QSocketNotifier end(WatchForEnd(), QSocketNotifier::Read);
  QObject::connect(&end, &QSocketNotifier::activated, &form, [&] {
    end.setEnabled(false);
    form.Aborted = true;
  });
  return RunMacroMode(request, form);
}

// Whether an instance was running already, which opens the files.
bool HandedToRunning(const std::vector<std::string>& commands) {
  bool taken = false;
  for (const std::string& command : commands) {
    const CommandRequest request = ParseCommandLine(command);
    if (request.Mode == CommandMode::OpenFile)
      taken = FileRequests::SendToRunning(QString::fromStdString(request.FileName)) || taken;
  }
  return taken;
}

int RunInteractive(const std::vector<std::string>& commands, char* programName) {
  Desktop desktop(programName, GiveUpWithoutDisplay);
  if (HandedToRunning(commands)) return EXIT_SUCCESS;
  Session session{LoadSettings(), ReadUserLocale()};
  parentfrm frame(session, commands.front(), StateFolder());
  frame.OpenAlso({commands.begin() + 1, commands.end()});
  FileRequests requests;
  QObject::connect(&requests, &FileRequests::Requested, &frame, &parentfrm::OpenRequestedFile);
  QObject::connect(&desktop.Application(), &DesktopApplication::Failed, &frame, &parentfrm::GoOnAfterFailure);
  requests.Listen();
  // Whoever ends the program by a signal finds at the next start what was not saved.
  QSocketNotifier end(WatchForEnd(), QSocketNotifier::Read);
  QObject::connect(&end, &QSocketNotifier::activated, &frame, [&] {
    end.setEnabled(false);
    frame.KeepCopies();
    // By now the signal has its own effect again, so the program ends as whoever sent it expects.
    std::raise(EndSignal());
  });
  frame.show();
  return QApplication::exec();
}

}  // namespace
}  // namespace quorvex

int main(int argc, char** argv) {
  using namespace quorvex;
  PrepareProcess();
  const std::vector<std::string> arguments = Arguments(argc, argv);
  if (arguments.size() == 3 && arguments[0] == DesktopDrawer::kSwitch)
    return ServeDrawings(arguments[1], arguments[2], argv[0]);
  if (const std::optional<int> status = AnswerQuestion(arguments)) return *status;
  if (IsPlotSwitch(arguments)) return ConvertPlot(arguments);
  if (IsCheckSwitch(arguments)) return CheckMacroMode(ParseCheck(arguments));
  const CommandRequest request = ParseCommandLine(JoinedByBlanks(arguments));
  if (request.Mode == CommandMode::RunMacro) return RunMacroWithWindows(*request.Macro, argv[0]);
  return RunInteractive(StartCommands(arguments), argv[0]);
}
