#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "sheet/SheetEdit.h"

namespace quorvex {

enum class SweepMethod { Constant, Linear, Function, ColumnFunction };

// The Fill command: gives rows of one column new values. The fields are the dialog's, numbers as typed in the user's
// locale.
struct DataSweep {
  std::string SelRow1, SelRow2;  // first and last row
  std::size_t SelCol = 1;
  SweepMethod MethodOption = SweepMethod::Constant;

  std::string ConstantText;            // Constant: the value of all rows
  std::string LinStart, LinIncrement;  // Linear: the first row, and what each row has more than the one above
  std::string FuncText;                // Function: an equation in X, which runs as a linear sweep does
  std::string FuncStart, FuncIncrement;
  std::string ColumnFunc, ColumnText;  // ColumnFunction: an equation in X, and the number of the column X is taken from

  // Fills the rows. An equation knows X alone: coefficients and words of data such as "xmean" are refused. A row whose
  // X is missing becomes blank, and one whose evaluation fails, which the user is told once.
  bool Apply(const SheetEdit& edit) const;
};

// The dialog as it opens for the selection, which must be one column.
std::optional<DataSweep> EditFill(const SheetEdit& edit);

}  // namespace quorvex
