#include "sheet/IncompleteRows.h"

namespace quorvex {

std::vector<bool> IncompleteRows(const DataSheet& sheet) {
  std::vector<bool> incomplete(sheet.Cells.GridLastRow());
  const std::size_t needed = sheet.IndependentVariables + 1;
  for (std::size_t row = 1; row <= incomplete.size(); ++row) {
    std::size_t filled = 0;
    for (std::size_t col = 1; col <= needed; ++col) filled += GridCells::IsEmpty(sheet.Cells.Cell(row, col)) ? 0 : 1;
    incomplete[row - 1] = filled > 0 && filled < needed;
  }
  return incomplete;
}

TextRows FindTextRows(const DataSheet& sheet) {
  TextRows found;
  found.Rows.resize(sheet.Cells.GridLastRow());
  const std::size_t needed = sheet.IndependentVariables + 1, columns = sheet.ColumnCount();
  for (std::size_t row = 1; row <= found.Rows.size(); ++row) {
    std::size_t filled = 0, texts = 0, first = 0;
    for (std::size_t col = 1; col <= columns; ++col) {
      const double cell = sheet.Cells.Cell(row, col);
      if (col <= needed && !GridCells::IsEmpty(cell)) ++filled;
      if (GridCells::IsText(cell) && ++texts == 1) first = col;
    }
    if (filled < needed || texts == 0) continue;
    if (found.Count == 0) found.First = {row, first};
    found.Rows[row - 1] = true;
    ++found.Count;
    found.Cells += texts;
  }
  return found;
}

}  // namespace quorvex
