#include "sheet/TypeInCell.h"

#include "sheet/CellEntry.h"
#include "sheet/ColumnNames.h"

namespace quorvex {

bool TypeInCell(const SheetEdit& edit, std::size_t row, std::size_t col, const std::string& text) {
  GridCells& cells = edit.Sheet.Cells;
  // What is left as it was is no change, even where it is a text, which could not be typed.
  if (text == EntryText(cells, row, col, edit.Locale)) return true;
  const std::optional<CellEntry> entry = ReadCellEntry(text, edit.Locale);
  if (!entry) {
    edit.User.Refuse("Invalid entry.");
    return false;
  }
  const std::string what = '"' + text + "\" in " + ColumnName(edit.Sheet, col) + ':' + std::to_string(row);
  edit.PushUndo({UndoOperation::Typing, what}, {row, col, row, col});
  if (entry->Value) {
    cells.SetGridCellNumber(row, col, *entry->Value);
  } else {
    cells.ClearCell(row, col);
  }
  return true;
}

}  // namespace quorvex
