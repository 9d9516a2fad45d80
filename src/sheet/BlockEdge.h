#pragma once

#include "sheet/CellRange.h"
#include "sheet/GridCells.h"

namespace quorvex {

// The cell that Ctrl with an arrow leads to, a step being -1, 0 or 1: the last of the filled cells in a row, or over
// empty ones to the next that is filled. Where none is, the last cell before the end of the sheet, which is `last`.
CellPlace BlockEdge(const GridCells& cells, CellPlace from, int rowStep, int colStep, CellPlace last);

}  // namespace quorvex
