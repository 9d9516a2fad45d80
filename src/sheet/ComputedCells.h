#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "equation/Expression.h"
#include "sheet/SheetEdit.h"

namespace quorvex {

// The new cells of a column, one per row, NaN for a blank one.
struct ComputedCells {
  std::vector<double> Values;
  bool Faulted = false;  // some are blank because their evaluation failed
};

// The values of an expression without coefficients and words of data, row by row. `x` has one column per independent
// variable, all of one length; a row in which one of them is no number is blank, which is no fault.
ComputedCells EvaluateRows(const Expression& expression, std::span<const std::vector<double>> x);

// The cells of a column as they are stored, from `firstRow` to `lastRow`.
std::vector<double> CopyColumn(const GridCells& cells, std::size_t col, std::size_t firstRow, std::size_t lastRow);

// Stores the cells in the column `target`, which has as many rows, under the undo label, and tells of faults once.
void StoreComputedCells(const SheetEdit& edit, const UndoLabel& label, const CellRange& target,
                        const ComputedCells& computed);

}  // namespace quorvex
