#include "sheet/TypeInCell.h"

#include "sheet/CellEntry.h"
#include "sheet/ColumnDates.h"
#include "sheet/ColumnNames.h"

namespace quorvex {

bool TypeInCell(const SheetEdit& edit, std::size_t row, std::size_t col, const std::string& text) {
  GridCells& cells = edit.Sheet.Cells;
  // What is left as it was is no change, even where it is a text, which could not be typed.
  if (text == EntryText(edit.Sheet, row, col, edit.Locale)) return true;
  const std::optional<CellEntry> entry = ReadCellEntry(text, edit.Locale);
  if (!entry) {
    edit.User.Refuse("Invalid entry.");
    return false;
  }
  const std::string what = '"' + text + "\" in " + ColumnName(edit.Sheet, col) + ':' + std::to_string(row);
  ColumnPatterns patterns;
  if (entry->Date && TakesDatePattern(edit.Sheet, col, row, row)) patterns.emplace_back(col, entry->Date->Pattern());
  edit.PushUndo(UndoLabel(UndoOperation::Typing, what).WithPatterns(!patterns.empty()), {row, col, row, col});
  SetPatterns(edit.Sheet, patterns);
  if (entry->Value) {
    cells.SetGridCellNumber(row, col, *entry->Value);
  } else {
    cells.ClearCell(row, col);
  }
  return true;
}

}  // namespace quorvex
