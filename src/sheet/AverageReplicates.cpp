#include "sheet/AverageReplicates.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "core/Result.h"
#include "sheet/ColumnMean.h"
#include "sheet/ComputedCells.h"

namespace quorvex {
namespace {

// The sets of two and more replicates, each by its rows (from 1) in ascending order.
std::vector<std::vector<std::size_t>> FindReplicates(const DataSheet& sheet, std::size_t lastRow) {
  std::vector<std::vector<double>> x;
  for (std::size_t v = 1; v <= sheet.IndependentVariables; ++v) x.push_back(CopyColumn(sheet.Cells, v, 1, lastRow));
  std::vector<std::size_t> rows;  // from 0, those with all X
  for (std::size_t row = 0; row < lastRow; ++row)
    if (std::none_of(x.begin(), x.end(), [&](const auto& column) { return std::isnan(column[row]); }))
      rows.push_back(row);

  const auto before = [&](std::size_t a, std::size_t b) {
    for (const auto& column : x)
      if (column[a] != column[b]) return column[a] < column[b];
    return false;
  };
  // Stable, so that the rows of a set ascend and the first one is that which stays.
  std::stable_sort(rows.begin(), rows.end(), before);
  std::vector<std::vector<std::size_t>> sets;
  for (std::size_t begin = 0, end = 0; begin < rows.size(); begin = end) {
    std::vector<std::size_t> set;
    for (end = begin; end < rows.size() && !before(rows[begin], rows[end]); ++end) set.push_back(rows[end] + 1);
    if (set.size() > 1) sets.push_back(std::move(set));
  }
  return sets;
}

// The mean of the numbers in a column's rows, an empty cell where there are none. Fails on a text, and where the sum
// overflows.
Result<double> MeanOfRows(const GridCells& cells, std::size_t col, const std::vector<std::size_t>& rows) {
  const Failure failure{"Quorvex encountered an error averaging the replicates."};
  std::vector<double> numbers;
  for (const std::size_t row : rows) {
    const double cell = cells.Cell(row, col);
    if (GridCells::IsText(cell)) return failure;
    if (!GridCells::IsEmpty(cell)) numbers.push_back(cell);
  }
  if (numbers.empty()) return cells.Cell(rows.front(), col);
  const double mean = ColumnMean(numbers).Hi;
  return std::isfinite(mean) ? Result<double>(mean) : failure;
}

}  // namespace

bool AverageReplicates(const SheetEdit& edit) {
  GridCells& cells = edit.Sheet.Cells;
  const CellRange all = edit.WholeSheet();
  const std::size_t yCol = edit.Sheet.IndependentVariables + 1;
  const std::vector<std::vector<std::size_t>> sets = FindReplicates(edit.Sheet, all.LastRow);
  if (sets.empty()) {
    edit.User.Inform("No replicates found.");
    return false;
  }
  // All means before the first change: a refusal leaves the sheet as it is.
  std::vector<double> means;
  std::vector<bool> merged(all.LastRow, false);  // into a row above
  for (const auto& set : sets) {
    for (const std::size_t row : set) merged[row - 1] = row != set.front();
    const Result<double> mean = MeanOfRows(cells, yCol, set);
    if (!mean) {
      edit.User.Refuse(mean.error());
      return false;
    }
    means.push_back(*mean);
  }

  edit.PushUndo(UndoOperation::AverageReplicates, all);
  for (std::size_t i = 0; i < sets.size(); ++i) cells.SetCell(sets[i].front(), yCol, means[i]);
  for (std::size_t col = 1; col <= all.LastCol; ++col) {
    std::size_t to = 1;
    for (std::size_t row = 1; row <= all.LastRow; ++row)
      if (!merged[row - 1]) cells.SetCell(to++, col, cells.Cell(row, col));
    for (; to <= all.LastRow; ++to) cells.ClearCell(to, col);
  }
  edit.User.Inform(sets.size() == 1 ? "1 replicate  found." : std::to_string(sets.size()) + " replicates found.");
  return true;
}

}  // namespace quorvex
