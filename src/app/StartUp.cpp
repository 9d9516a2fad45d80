#include "app/StartUp.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "app/CommandLine.h"
#include "app/DesktopDrawer.h"
#include "app/SettingsStore.h"
#include "batch/MacroCheck.h"
#include "batch/RunMacro.h"
#include "core/NumberText.h"
#include "core/Session.h"
#include "core/SolveData.h"
#include "core/Version.h"
#include "equation/Catalogue.h"

namespace quorvex {
namespace {

constexpr const char* kUsage =
    "Usage: quorvex -runcfg FILE       run a macro and end with its status\n"
    "               [-part I/N]        only that part of the rows of its table, with a log and results of its own\n"
    "               [-missing]         only the rows whose answers are not there\n"
    "       quorvex -check FILE        print the faults of a macro, a line each, and run nothing\n"
    "               [-part I/N]        only those of that part\n"
    "       quorvex -plot FILE OUT...  draw a plot file as pictures: .svg, .pdf, .png, .emf or .bmp\n"
    "       quorvex [FILE]             open the desktop, with a project, a plot or a data file\n"
    "       quorvex --list-models [N]  print the catalogue of models of N variables (default 1), tab-separated:\n"
    "                              number, group, ID, definition, description\n"
    "       quorvex --help | --version\n";

// A signal reaches nothing but what outlives every call.
volatile std::sig_atomic_t endSignal = 0;
int endPipe[2] = {-1, -1};

void AskForEnd(int signal) {
  // The signal may come between a call and the look at its error.
  const int before = errno;
  endSignal = signal;
  static_cast<void>(!write(endPipe[1], "", 1));
  errno = before;
}

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

}  // namespace

void PrepareProcess() {
  // In the place of a stream that is closed the next file would be opened, and messages would go into it.
  for (int descriptor = 0; descriptor <= 2; ++descriptor)
    if (fcntl(descriptor, F_GETFD) < 0) open("/dev/null", O_RDWR);  // takes the lowest that is free
  // A reader that goes away, or a limit of size, is an error of writing and not the end of the program.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
}

int WatchForEnd() {
  if (endPipe[0] >= 0 || pipe2(endPipe, O_CLOEXEC | O_NONBLOCK) != 0) return endPipe[0];
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    struct sigaction action {};
    // What the caller has had ignored, as nohup does, stays so.
    if (sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) continue;
    action.sa_handler = AskForEnd;
    // A second signal ends the program at once.
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigaction(signal, &action, nullptr);
  }
  return endPipe[0];
}

int EndSignal() { return endSignal; }

std::vector<std::string> Arguments(int argc, char** argv) {
  return argc > 1 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

std::optional<int> AnswerQuestion(const std::vector<std::string>& arguments) {
  for (const std::string& argument : arguments) {
    if (argument == "--help") return std::fputs(kUsage, stdout), EXIT_SUCCESS;
    if (argument == "--version") return std::printf("Quorvex %s\n", kVersion), EXIT_SUCCESS;
  }
  if (!arguments.empty() && arguments[0] == "--list-models")
    return PrintModels(arguments.size() > 1 ? arguments[1] : "1");
  if (!arguments.empty() && arguments[0].starts_with('-') &&
      ParseCommandLine(JoinedByBlanks(arguments)).Mode == CommandMode::Nothing && !IsMacroSwitch(arguments[0]) &&
      !IsPlotSwitch(arguments) && !IsCheckSwitch(arguments)) {
    Complain("There is no option '" + arguments[0] + "', and no file of that name.");
    std::fputs(kUsage, stderr);
    return EXIT_FAILURE;
  }
  return std::nullopt;
}

int RunMacroMode(const MacroRequest& request, cfgSolve& form) {
  Session session{LoadSettings(), ReadUserLocale()};
  DesktopDrawer drawer;
  const MacroOutcome outcome = RunMacro(request, session, form, drawer);
  if (!outcome.Message.empty()) Complain(outcome.Message);
  if (outcome.Status != 0) Complain("Exit Status " + std::to_string(outcome.Status));
  return outcome.Status;
}

int CheckMacroMode(const MacroRequest& request) {
  if (request.FileName.empty()) {
    Complain("A macro to be checked must be named, as in: quorvex -check FILE.cfg");
    return EXIT_FAILURE;
  }
  const MacroCheck check = CheckMacroFile(request, {LoadSettings(), ReadUserLocale()});
  bool told = true;
  for (const MacroFault& fault : check.Faults) told = std::puts(ShownFault(fault).c_str()) >= 0 && told;
  told = std::puts(check.Count().c_str()) >= 0 && told;
  if (std::fflush(stdout) != 0 || !told) {
    Complain("The faults cannot be written to standard output.");
    return check.Status != 0 ? check.Status : EXIT_FAILURE;
  }
  if (check.Status != 0) Complain("Exit Status " + std::to_string(check.Status));
  return check.Status;
}

void Complain(const std::string& text) { std::fprintf(stderr, "%s\n", text.c_str()); }

bool HasDisplay() {
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY"})
    if (const char* value = std::getenv(name); value != nullptr && *value != '\0') return true;
  return false;
}

std::filesystem::path ProgramBeside(const char* program) {
  std::error_code error;
  const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
  return error ? std::filesystem::path() : self.parent_path() / program;
}

void HandOver(const char* program) {
  std::ifstream file("/proc/self/cmdline", std::ios::binary);
  std::vector<std::string> arguments;
  for (std::string argument; std::getline(file, argument, '\0');) arguments.push_back(argument);
  std::vector<char*> argv;
  for (std::string& argument : arguments) argv.push_back(argument.data());
  argv.push_back(nullptr);
  execv(ProgramBeside(program).c_str(), argv.data());
}

}  // namespace quorvex
