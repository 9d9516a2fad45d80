#pragma once

#include <vector>

#include "sheet/DataSheet.h"

namespace quorvex {

// Flags for the rows, from the first, that have some, but not all, of their X and Y.
std::vector<bool> IncompleteRows(const DataSheet& sheet);

}  // namespace quorvex
