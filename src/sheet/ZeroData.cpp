#include "sheet/ZeroData.h"

namespace quorvex {

bool ZeroData(const SheetEdit& edit, ZeroSign sign, std::span<const std::size_t> columns) {
  if (columns.empty()) {
    edit.User.Refuse("Please select a column or 'Cancel'.");
    return false;
  }
  const bool negative = sign == ZeroSign::Negative;
  const CellRange all = edit.WholeSheet();
  edit.PushUndo(negative ? UndoOperation::ZeroNegativeData : UndoOperation::ZeroPositiveData, all);
  for (const std::size_t col : columns) {
    for (std::size_t row = 1; row <= all.LastRow; ++row) {
      const double cell = edit.Sheet.Cells.Cell(row, col);  // neither holds for what is no number
      if (negative ? cell < 0 : cell > 0) edit.Sheet.Cells.SetGridCellNumber(row, col, 0);
    }
  }
  return true;
}

}  // namespace quorvex
