#include "project/TypeInCell.h"

#include "sheet/CellEntry.h"

namespace quorvex {

bool TypeInCell(Project& project, std::size_t row, std::size_t col, const std::string& text, Prompter& user) {
  GridCells& cells = project.Sheet.Cells;
  if (text == EntryText(cells, row, col, project.Locale)) return true;
  const std::optional<CellEntry> entry = ReadCellEntry(text, project.Locale);
  if (!entry) {
    user.Refuse("Invalid entry.");
    return false;
  }
  if (entry->Value) {
    cells.SetGridCellNumber(row, col, *entry->Value);
  } else {
    cells.ClearCell(row, col);
  }
  project.Changed = true;
  return true;
}

}  // namespace quorvex
