// The program's entry: answers questions about itself, runs a macro, or hands over to the desktop program.

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "app/CommandLine.h"
#include "app/SettingsStore.h"
#include "batch/RunMacro.h"
#include "core/NumberText.h"
#include "core/Session.h"
#include "core/SolveData.h"
#include "equation/Catalogue.h"

namespace quorvex {
namespace {

constexpr const char* kUsage =
    "Usage: quorvex -runcfg FILE       run a macro and end with its status\n"
    "       quorvex [FILE]             open the desktop, with a project, a plot or a data file\n"
    "       quorvex --list-models [N]  print the catalogue of models of N variables (default 1), tab-separated:\n"
    "                              number, group, ID, definition, description\n"
    "       quorvex --help | --version\n";

void Complain(const std::string& text) { std::fprintf(stderr, "%s\n", text.c_str()); }

// The desktop program, if it stands beside this one.
std::filesystem::path DesktopProgram() {
  std::error_code error;
  const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
  const std::filesystem::path desktop = self.parent_path() / "quorvex-desktop";
  return !error && access(desktop.c_str(), X_OK) == 0 ? desktop : std::filesystem::path();
}

bool HasDisplay() {
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY"})
    if (const char* value = std::getenv(name); value != nullptr && *value != '\0') return true;
  return false;
}

// Replaces this process by the desktop program with the same arguments; comes back only where that fails.
void HandOver(char** argv) {
  const std::filesystem::path desktop = DesktopProgram();
  if (!desktop.empty()) execv(desktop.c_str(), argv);
}

// The progress form of a program without windows.
class ConsoleForm : public cfgSolve {
 public:
  explicit ConsoleForm(char** argv) : argv_(argv) {}

  std::string RequestWindows() override {
    if (!HasDisplay()) return "There is no display, so the run goes on without progress form and message boxes.";
    HandOver(argv_);
    return "The desktop program is not installed, so the run goes on without progress form and message boxes.";
  }

  // One line each, at once: a parent process reads the pipe while the run goes on.
  void DDEText(std::string_view text) override {
    std::printf("%.*s\n", static_cast<int>(text.size()), text.data());
    std::fflush(stdout);
  }

 private:
  char** argv_;
};

int PrintModels(const std::string& count) {
  const std::optional<double> n = NumericText(count);
  if (!n || *n < 1 || *n > kMostIndependentVariables || *n != static_cast<int>(*n)) {
    Complain("The number of variables must be 1 to 20, not '" + count + "'.");
    return EXIT_FAILURE;
  }
  const std::string list = ListModels(static_cast<int>(*n));
  return std::fwrite(list.data(), 1, list.size(), stdout) == list.size() && std::fflush(stdout) == 0 ? EXIT_SUCCESS
                                                                                                     : EXIT_FAILURE;
}

int Main(char** argv, const std::string& commandLine) {
  Session session{LoadSettings(), ReadUserLocale()};
  const CommandRequest request = ParseCommandLine(commandLine);
  if (request.Mode == CommandMode::RunMacro) {
    ConsoleForm form(argv);
    const MacroOutcome outcome = RunMacro(request.FileName, session, form);
    if (outcome.Status != 0) Complain("Exit Status " + std::to_string(outcome.Status));
    return outcome.Status;  // the system keeps the low 8 bits
  }
  HandOver(argv);
  Complain("The desktop program quorvex-desktop is not installed; quorvex -runcfg FILE runs a macro without it.");
  return EXIT_FAILURE;
}

}  // namespace
}  // namespace quorvex

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  for (const std::string& argument : arguments) {
    if (argument == "--help") return std::fputs(quorvex::kUsage, stdout), EXIT_SUCCESS;
    if (argument == "--version") return std::puts("Quorvex " QUORVEX_VERSION), EXIT_SUCCESS;
  }
  if (!arguments.empty() && arguments[0] == "--list-models")
    return quorvex::PrintModels(arguments.size() > 1 ? arguments[1] : "1");
  std::string commandLine;
  for (const std::string& argument : arguments) {
    if (!commandLine.empty()) commandLine += ' ';
    commandLine += argument;
  }
  return quorvex::Main(argv, commandLine);
}
