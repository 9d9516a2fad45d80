#include "sheet/SortRows.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "sheet/ComputedCells.h"

namespace quorvex {
namespace {

// Whether one cell of a key's column comes before another.
bool Before(const GridCells& cells, double a, double b, bool ascend) {
  // Empty cells come last in either direction.
  if (GridCells::IsEmpty(a) || GridCells::IsEmpty(b)) return !GridCells::IsEmpty(a) && GridCells::IsEmpty(b);
  if (!ascend) std::swap(a, b);
  if (GridCells::IsText(a)) return GridCells::IsText(b) && cells.TextBehind(a) < cells.TextBehind(b);
  return GridCells::IsText(b) || a < b;
}

// Whether a column outside the range holds anything.
bool DataBeside(const DataSheet& sheet, const CellRange& range) {
  const std::size_t lastRow = sheet.Cells.GridLastRow();
  for (std::size_t col = 1; col <= sheet.Cells.GridLastCol(); ++col) {
    if (col >= range.FirstCol && col <= range.LastCol) continue;
    for (std::size_t row = 1; row <= lastRow; ++row)
      if (!GridCells::IsEmpty(sheet.Cells.Cell(row, col))) return true;
  }
  return false;
}

// Why the keys do not make an order, or null.
const char* WrongKeys(const SortKeys& keys) {
  if (keys[0].Col == 0) return "Invalid Sort Keys. At least the first key must be specified.";
  if (keys[1].Col == 0 && keys[2].Col != 0)
    return "Invalid Sort Keys. You have specified a third sort key before using the second sort key.";
  if (keys[0].Col == keys[1].Col || keys[0].Col == keys[2].Col || (keys[1].Col != 0 && keys[1].Col == keys[2].Col))
    return "Invalid Sort Keys. You have specified duplicate sort keys.";
  return nullptr;
}

}  // namespace

void SortRows(GridCells& cells, const CellRange& range, std::span<const SortKey> keys) {
  std::vector<std::size_t> order(range.LastRow - range.FirstRow + 1);
  std::iota(order.begin(), order.end(), std::size_t{0});
  // The last key first: each sort keeps the order that the ones before it made among its equals.
  for (auto key = keys.rbegin(); key != keys.rend(); ++key) {
    if (key->Col == 0) continue;
    const std::vector<double> column = CopyColumn(cells, key->Col, range.FirstRow, range.LastRow);
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return Before(cells, column[a], column[b], key->Ascend); });
  }
  for (std::size_t col = range.FirstCol; col <= range.LastCol; ++col) {
    const std::vector<double> column = CopyColumn(cells, col, range.FirstRow, range.LastRow);
    for (std::size_t i = 0; i < order.size(); ++i) cells.SetCell(range.FirstRow + i, col, column[order[i]]);
  }
}

std::optional<CellRange> SortRange(const SheetEdit& edit) {
  const auto refuse = [&] {
    edit.User.Refuse("There is no data to sort.");
    return std::nullopt;
  };
  if (edit.Sheet.Cells.GridLastRow() == 0) return refuse();
  const std::optional<CellRange> selected = edit.OneRange("Sort");
  if (!selected) return std::nullopt;
  CellRange range = edit.DataRows(*selected);
  if (range.LastRow < range.FirstRow) return refuse();
  const CellRange all = edit.WholeSheet();
  range.LastCol = std::min(range.LastCol, all.LastCol);
  if (DataBeside(edit.Sheet, range) &&
      edit.User.Ask("There is data in columns in addition to ones you have selected. Do you want to include all")) {
    range.FirstCol = all.FirstCol;
    range.LastCol = all.LastCol;
  }
  return range;
}

bool Sort(const SheetEdit& edit, const CellRange& range, const SortKeys& keys) {
  if (const char* const why = WrongKeys(keys)) {
    edit.User.Refuse(why);
    return false;
  }
  edit.PushUndo(UndoOperation::Sort, range);
  SortRows(edit.Sheet.Cells, range, keys);
  return true;
}

}  // namespace quorvex
