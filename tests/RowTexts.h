#pragma once

#include <string>
#include <vector>

#include "sheet/GridCells.h"

namespace quorvex {

// The rows of a sheet, each with the texts of its cells in one, "-" for an empty cell.
inline std::vector<std::string> RowTexts(const GridCells& cells, std::size_t columns, const char* between = " ") {
  std::vector<std::string> rows(cells.GridLastRow());
  for (std::size_t row = 0; row < rows.size(); ++row)
    for (std::size_t col = 1; col <= columns; ++col) {
      const std::string text = cells.GridCellText(row + 1, col);
      rows[row] += (col > 1 ? between : "") + (text.empty() ? "-" : text);
    }
  return rows;
}

}  // namespace quorvex
