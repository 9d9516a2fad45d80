#pragma once

#include "files/FileSave.h"
#include "project/ProjectStore.h"

namespace quorvex {

// Projects in files of their own, groups in the group file of the working directory.
class ProjectFiles : public ProjectStore {
 public:
  bool FileSave(Project& project, Prompter& user) override { return quorvex::FileSave(project, user); }
  bool FileSaveAs(Project& project, Prompter& user) override { return quorvex::FileSaveAs(project, user); }
  bool MayClose(Project& project, Prompter& user) override { return quorvex::MayClose(project, user); }
  std::unique_ptr<GroupStore> OpenGroupStore(std::size_t independentVariables) override;
};

}  // namespace quorvex
