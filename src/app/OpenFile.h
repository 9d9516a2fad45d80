#pragma once

#include <string>

#include "core/Prompter.h"

namespace quorvex {

// Who names a file to be opened: the user in the window, or the command line, perhaps that of another start.
enum class NamedBy { User, CommandLine };

// How the desktop opens it.
enum class OpenAs {
  Unknown,  // it could not be told what it is
  Project,
  Plot,
  Data,         // to be imported
  DataOfAKind,  // to be imported, once the user has said into what kind of project
};

// Tells by what the file holds. The user hears why one is not opened, and of one of the command line, whose name isn't
// that of a data file, that it is imported.
OpenAs HowToOpen(const std::string& fileName, NamedBy by, Prompter& user);

}  // namespace quorvex
