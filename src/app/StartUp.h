#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "batch/MacroRequest.h"
#include "batch/cfgSolve.h"

namespace quorvex {

// What the console program and the desktop program do alike at their start.

// To be called before anything else. Descriptors 0 to 2 are open from then on, so that no file of the program's own
// gets one of them and with it what is told to the user. A listener that is gone and a file that has reached the limit
// of its size are errors of the one write, not the end of the program.
void PrepareProcess();

// From now on the first SIGTERM, SIGINT or SIGHUP asks for an end, and the next one ends the program at once. One that
// was ignored when the program began stays so. Returns a descriptor that can be read once an end is asked for.
int WatchForEnd();

// The signal that asked for an end, or 0.
int EndSignal();

// The program's arguments, without its own name.
std::vector<std::string> Arguments(int argc, char** argv);

// --help, --version and --list-models are answered before anything else, and an option that does not exist is refused
// with the usage. The exit code, or nothing where the program goes on.
std::optional<int> AnswerQuestion(const std::vector<std::string>& arguments);

// Runs a macro, or a part of it, with the user's settings and locale and tells a status other than 0 on standard error.
// Returns the status, of which the system keeps the low 8 bits.
int RunMacroMode(const MacroRequest& request, cfgSolve& form);

// Prints the faults of a macro on standard output and tells a status other than 0 on standard error. Returns the
// status.
int CheckMacroMode(const MacroRequest& request);

// One sentence on standard error.
void Complain(const std::string& text);

// Whether the environment names a display.
bool HasDisplay();

// Another program of the folder that this one is in. Empty where that is unknown.
std::filesystem::path ProgramBeside(const char* program);

// Replaces this process by another program of the same folder, with the arguments it was started with. Comes back only
// where that fails.
void HandOver(const char* program);

inline constexpr const char* kConsoleProgram = "quorvex";
inline constexpr const char* kDesktopProgram = "quorvex-desktop";

}  // namespace quorvex
