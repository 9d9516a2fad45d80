#include "sheet/SheetEdit.h"

#include <algorithm>

namespace quorvex {

std::optional<CellRange> SheetEdit::OneRange(std::string_view command) const {
  if (Selection.size() == 1) return Selection.front();
  User.Refuse("Invalid range selection. The '" + std::string(command) +
              "' command cannot be used on multiple selections.");
  return std::nullopt;
}

CellRange SheetEdit::WholeSheet() const {
  return {1, 1, Sheet.Cells.GridLastRow(), std::max(Sheet.ColumnCount(), Sheet.Cells.GridLastCol())};
}

CellRange SheetEdit::DataRows(CellRange range) const {
  const std::size_t lastRow = Sheet.Cells.GridLastRow();
  // A row alone stands for the whole of its columns.
  if (range.FirstRow == range.LastRow) range.FirstRow = 1, range.LastRow = lastRow;
  range.LastRow = std::min(range.LastRow, lastRow);
  return range;
}

}  // namespace quorvex
