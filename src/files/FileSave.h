#pragma once

#include "core/Prompter.h"
#include "project/Project.h"

namespace quorvex {

// The commands of a project window that meet its file.

// Whether the project has no file yet. Any name with "Untitled" in it counts as none.
bool IsUntitled(const Project& project);

// Save: writes the project to its file; one without a file goes through Save As. False where nothing was saved.
bool FileSave(Project& project, Prompter& user);

// Save As: asks for a name, which is the project's from then on.
bool FileSaveAs(Project& project, Prompter& user);

// Asks to save what changed before the project is closed. False where it must stay open: the user cancelled, or what
// was to be saved could not be.
bool MayClose(Project& project, Prompter& user);

}  // namespace quorvex
