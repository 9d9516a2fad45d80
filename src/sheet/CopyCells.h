#pragma once

#include <cstddef>

#include "sheet/CellRange.h"
#include "sheet/GridCells.h"

namespace quorvex {

// Puts the cells of a range into another grid, the empty ones too, the top left corner at `row` and `col`. Rotated, row
// r and column c of the range become row c and column r. The columns are taken out of `from`, which has them no more.
void CopyCells(GridCells& from, const CellRange& range, GridCells& to, std::size_t row, std::size_t col,
               CellOrder order = CellOrder::Kept);

}  // namespace quorvex
