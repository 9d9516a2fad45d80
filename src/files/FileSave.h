#pragma once

#include "core/Prompter.h"
#include "project/Project.h"

namespace quorvex {

// The commands of a project window that meet its file.

// Save: writes the project to its file; one without a file goes through Save As. False where nothing was saved.
bool FileSave(Project& project, Prompter& user);

// Save As: asks for a name, which is the project's from then on.
bool FileSaveAs(Project& project, Prompter& user);

// Asks to save what changed before the project is closed, the data and the notes apart; where the user wants only one
// of them, the other stays as the file has it. False where the project must stay open: the user cancelled, or what was
// to be saved could not be.
bool MayClose(Project& project, Prompter& user);

}  // namespace quorvex
