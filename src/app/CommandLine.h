#pragma once

#include <optional>
#include <string>
#include <vector>

#include "batch/MacroRequest.h"

namespace quorvex {

enum class CommandMode { Nothing, RunMacro, OpenFile };

// What the command line asks for.
struct CommandRequest {
  CommandMode Mode = CommandMode::Nothing;
  std::string FileName;                              // of a macro in lower case
  std::optional<MacroRequest> Macro = std::nullopt;  // what of it is to be run
};

// The arguments as the one text that the command line is.
std::string JoinedByBlanks(const std::vector<std::string>& arguments);

// The whole command line is one text. "-runcfg", in any case and with or without a blank behind it, and a name run a
// macro; the name arrives in lower case, and behind it may stand "-part i/n" and "-missing". Otherwise the line is the
// name of a file to open, if that exists. One double quote at each end of a name is taken off.
CommandRequest ParseCommandLine(const std::string& commandLine);

// The command lines that the arguments of the desktop are: one, as above, or where that says nothing and some argument
// is the name of a file one for each.
std::vector<std::string> StartCommands(const std::vector<std::string>& arguments);

// Whether an argument is or begins with the switch that runs a macro.
bool IsMacroSwitch(const std::string& argument);

// Whether the arguments ask for a check of a macro, "-check" in any case, and for which: a name and what may stand
// behind that of a run. The name is empty where there is none.
bool IsCheckSwitch(const std::vector<std::string>& arguments);
MacroRequest ParseCheck(const std::vector<std::string>& arguments);

// Whether the arguments ask for pictures of a plot file: "-plot" in any case, and names.
bool IsPlotSwitch(const std::vector<std::string>& arguments);

// The name of the file that the interactive program starts with, whether it exists or not: the command line without
// the blanks around it and one double quote at each end. "Untitled" where the line is empty.
std::string StartFileName(const std::string& commandLine);

}  // namespace quorvex
