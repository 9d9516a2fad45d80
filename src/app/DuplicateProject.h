#pragma once

#include <string>

#include "core/Result.h"
#include "project/Project.h"

namespace quorvex {

// A project with all that a file of the project would hold, through such a file in the folder for temporary ones. It is
// called `name`, and is not saved. Fails with the sentence for the user.
Result<Project> DuplicateProject(const Project& project, const std::string& name);

}  // namespace quorvex
