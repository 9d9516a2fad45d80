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

}  // namespace quorvex
