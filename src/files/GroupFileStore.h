#pragma once

#include <memory>

#include "solve/GroupPick.h"

namespace quorvex {

// The user's own group of models with that many variables, kept in the group file of the working directory.
std::unique_ptr<GroupStore> OpenGroupFile(std::size_t independentVariables);

}  // namespace quorvex
