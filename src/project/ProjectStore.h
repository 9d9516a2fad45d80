#pragma once

#include <cstddef>
#include <memory>

#include "core/Prompter.h"
#include "project/Project.h"
#include "solve/GroupPick.h"

namespace quorvex {

// Where a window keeps what outlives it.
class ProjectStore {
 public:
  virtual ~ProjectStore() = default;

  // Save: writes the project to its file; one without a file goes through Save As, which asks for a name that is the
  // project's from then on. False where nothing was saved.
  virtual bool FileSave(Project& project, Prompter& user) = 0;
  virtual bool FileSaveAs(Project& project, Prompter& user) = 0;

  // Asks to save what changed before the project is closed. False where the project must stay open.
  virtual bool MayClose(Project& project, Prompter& user) = 0;

  // The user's own group of models with that many variables.
  virtual std::unique_ptr<GroupStore> OpenGroupStore(std::size_t independentVariables) = 0;
};

}  // namespace quorvex
