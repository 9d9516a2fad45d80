#pragma once

#include <functional>
#include <optional>
#include <string>

#include "core/Prompter.h"
#include "engine/ModelClass.h"
#include "files/ModelFile.h"
#include "project/Project.h"

namespace quorvex {

// The commands that carry user-defined models between projects by files.

inline constexpr const char* kEquationFiles = "Equation Files (*.equ)";

// Asks for the file to read; nothing when the user cancels.
using FileToOpen = std::function<std::optional<std::string>()>;

// Asks which of two models with the same ID is kept: true for that of the file.
using ModelToKeep = std::function<bool(const ModelClass& existing, const ModelClass& imported)>;

// Load User Models: those of a file take the place of the project's own. Import User Models: they are added to them.
// What cannot be read or compiled is left out, and so is a model under the ID of a built-in one. The user hears how
// many came in. Return whether the project changed.
bool LoadUserModels(Project& project, Prompter& user, const FileToOpen& choose);
bool ImportUserModels(Project& project, Prompter& user, const FileToOpen& choose, const ModelToKeep& keepImported);

// Save User Models: writes all of the project's to a file that the user names. False where nothing was written.
bool SaveUserModels(const Project& project, Prompter& user);

// Adds the models of a file to a catalogue without a word, as new projects begin with them where the user wants that.
// One under an ID that is taken is left out, and so is one that is no model of that many variables.
void AddUserModels(ModelCollection& models, const std::string& fileName, std::size_t independentVariables,
                   const LocaleText& locale);

}  // namespace quorvex
