#pragma once

#include <optional>
#include <string>
#include <vector>

#include "batch/cfgSolve.h"

namespace quorvex {

// What the console program and the desktop program do alike at their start.

// The program's arguments, without its own name.
std::vector<std::string> Arguments(int argc, char** argv);

// --help, --version and --list-models are answered before anything else, and an option that does not exist is refused
// with the usage. The exit code, or nothing where the program goes on.
std::optional<int> AnswerQuestion(const std::vector<std::string>& arguments);

// Runs a macro with the user's settings and locale and tells a status other than 0 on standard error. Returns the
// status, of which the system keeps the low 8 bits.
int RunMacroMode(const std::string& fileName, cfgSolve& form);

// One sentence on standard error.
void Complain(const std::string& text);

// Whether the environment names a display.
bool HasDisplay();

// Replaces this process by another program of the same folder, with the arguments it was started with. Comes back only
// where that fails.
void HandOver(const char* program);

inline constexpr const char* kConsoleProgram = "quorvex";
inline constexpr const char* kDesktopProgram = "quorvex-desktop";

}  // namespace quorvex
