// The console program: answers questions about itself, runs a macro, or hands over to the desktop program.

#include <cstdlib>

#include "app/CommandLine.h"
#include "app/ConvertPlot.h"
#include "app/StartUp.h"

namespace quorvex {
namespace {

// The progress form of a program without windows.
class ConsoleForm : public cfgSolve {
 public:
  std::string RequestWindows() override {
    if (!HasDisplay()) return "There is no display, so the run goes on without progress form and message boxes.";
    HandOver(kDesktopProgram);
    return "The desktop program is not installed, so the run goes on without progress form and message boxes.";
  }

  // A signal aborts the run as the button of a window does.
  void Yield() override { Aborted = Aborted || EndSignal() != 0; }
  void Pulse() override { Yield(); }
  void SetProgress(int, int) override { Yield(); }
};

}  // namespace
}  // namespace quorvex

int main(int argc, char** argv) {
  using namespace quorvex;
  PrepareProcess();
  const std::vector<std::string> arguments = Arguments(argc, argv);
  if (const std::optional<int> status = AnswerQuestion(arguments)) return *status;
  if (IsPlotSwitch(arguments)) return ConvertPlot(arguments);
  if (IsCheckSwitch(arguments)) return CheckMacroMode(ParseCheck(arguments));
  const CommandRequest request = ParseCommandLine(JoinedByBlanks(arguments));
  if (request.Mode == CommandMode::RunMacro) {
    ConsoleForm form;
    WatchForEnd();
    return RunMacroMode(*request.Macro, form);
  }
  HandOver(kDesktopProgram);
  Complain("The desktop program quorvex-desktop is not installed; quorvex -runcfg FILE runs a macro without it.");
  return EXIT_FAILURE;
}
