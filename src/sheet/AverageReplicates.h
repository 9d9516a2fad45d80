#pragma once

#include "sheet/SheetEdit.h"

namespace quorvex {

// Replicates are rows in which all independent variables have numbers, the same ones. Each set becomes one row in the
// place of its first: Y is the mean of those that the set has, the other cells are those of the first row, and the rows
// below close up. Fails, and changes nothing, where a Y of a set is a text or the sum of a set overflows.
bool AverageReplicates(const SheetEdit& edit);

}  // namespace quorvex
