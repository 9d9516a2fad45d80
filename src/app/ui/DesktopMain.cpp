// The desktop program: what the console program does, with windows.

#include <QApplication>
#include <cstdlib>

#include "app/CommandLine.h"
#include "app/StartUp.h"
#include "batch/ui/cfgSolveWindow.h"

namespace quorvex {
namespace {

// Qt ends a process that finds no display, or one that it cannot reach, by a fatal message. The console program does
// without, so it takes the run back; with no display named it says so in the log and does not hand over again.
void TakeBackWithoutDisplay(QtMsgType type, const QMessageLogContext&, const QString&) {
  if (type != QtFatalMsg) return;
  unsetenv("DISPLAY");
  unsetenv("WAYLAND_DISPLAY");
  HandOver(kConsoleProgram);
  Complain("There is no display, and the program quorvex, which does without, is not installed.");
  std::_Exit(EXIT_FAILURE);
}

int RunMacroWithWindows(const std::string& fileName, char* programName) {
  // Arguments are file names and none of Qt's own options.
  char* argv[] = {programName, nullptr};
  int argc = 1;
  qInstallMessageHandler(TakeBackWithoutDisplay);
  const QApplication application(argc, argv);
  qInstallMessageHandler(nullptr);
  QApplication::setApplicationName("Quorvex");
  cfgSolveWindow form;
  return RunMacroMode(fileName, form);
}

}  // namespace
}  // namespace quorvex

int main(int argc, char** argv) {
  using namespace quorvex;
  const std::vector<std::string> arguments = Arguments(argc, argv);
  if (const std::optional<int> status = AnswerQuestion(arguments)) return *status;
  const CommandRequest request = ParseCommandLine(JoinedByBlanks(arguments));
  if (request.Mode == CommandMode::RunMacro) return RunMacroWithWindows(request.FileName, argv[0]);
  Complain("This version has no main window yet; quorvex -runcfg FILE runs a macro.");
  return EXIT_FAILURE;
}
