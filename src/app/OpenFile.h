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
  Data,  // to be imported
};

// Tells by what the file holds. The user hears why one is not opened, and of the command line's that it is imported.
OpenAs HowToOpen(const std::string& fileName, NamedBy by, Prompter& user);

}  // namespace quorvex
