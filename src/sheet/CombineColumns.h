#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "sheet/ComputedCells.h"

namespace quorvex {

// An entry of the dialog's list of operations, with the operator of the equation language that it stands for.
struct CombineOperation {
  std::string_view Text;
  BinaryCode Code;
};

// The list, in its order.
std::span<const CombineOperation> CombineOperations();

// "a operator b" row by row, as the equation language computes it. Blank where a or b has no number, and where the
// operation fails (Faulted).
ComputedCells Combine(std::vector<double> a, std::vector<double> b, BinaryCode code);

// The data rows of the selection, which are combined, in its columns. Refused where it is several ranges or there are
// none.
std::optional<CellRange> CombineRows(const SheetEdit& edit);

// The Combine Columns dialog: a result column from two others, which it may replace.
struct CombineColumns {
  std::size_t FirstCol = 1, SecondCol = 1, ResultCol = 1;  // columns of the sheet, from 1
  std::size_t Operation = 0;                               // place in CombineOperations(), from 0

  // Works on CombineRows.
  bool Apply(const SheetEdit& edit) const;
};

}  // namespace quorvex
