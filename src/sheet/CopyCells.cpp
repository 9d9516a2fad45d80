#include "sheet/CopyCells.h"

#include <utility>
#include <vector>

namespace quorvex {

void CopyCells(GridCells& from, const CellRange& range, GridCells& to, std::size_t row, std::size_t col,
               CellOrder order) {
  for (std::size_t c = 0; c < range.Cols(); ++c) {
    const std::vector<double> column = from.TakeColumn(range.FirstCol + c, range.LastRow);
    for (std::size_t r = 0; r < range.Rows(); ++r) {
      const double cell = column[range.FirstRow - 1 + r];
      const auto [toRow, toCol] =
          order == CellOrder::Rotated ? std::pair(row + c, col + r) : std::pair(row + r, col + c);
      if (GridCells::IsEmpty(cell)) {
        to.ClearCell(toRow, toCol);
      } else if (GridCells::IsText(cell)) {
        to.SetGridCellText(toRow, toCol, from.TextBehind(cell));
      } else {
        to.SetGridCellNumber(toRow, toCol, cell);
      }
    }
  }
}

}  // namespace quorvex
