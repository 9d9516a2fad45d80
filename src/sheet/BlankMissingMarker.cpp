#include "sheet/BlankMissingMarker.h"

#include "core/NumberText.h"

namespace quorvex {

void BlankMissingMarker(GridCells& cells, std::string_view marker) {
  const std::size_t rows = cells.GridLastRow(), cols = cells.GridLastCol();
  for (std::size_t col = 1; col <= cols; ++col)
    for (std::size_t row = 1; row <= rows; ++row)
      if (Trim(cells.GridCellText(row, col)) == marker) cells.ClearCell(row, col);
}

}  // namespace quorvex
