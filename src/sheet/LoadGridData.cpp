#include "sheet/LoadGridData.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <string>
#include <vector>

#include "core/LargePages.h"
#include "core/NumberText.h"

namespace quorvex {
namespace {

// Whether a cell is none of the numbers, which are all finite.
bool IsMark(double cell) { return std::isnan(cell); }

// Why the row of a would-be point is none: the first text among its cells. "" where there is none.
std::string WhyNoPoint(const GridCells& cells, const std::vector<std::vector<double>>& columns, std::size_t row) {
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (!GridCells::IsText(columns[i][row])) continue;
    const std::string name = cells.ColumnName(i + 1), line = std::to_string(cells.FirstLine + row);
    return (name.empty() ? "Line " + line : "Row " + line + ", column '" + name + "'") + ": '" +
           std::string(Trim(cells.TextBehind(columns[i][row]))) + "' is not a number.";
  }
  return "";
}

// Moves all points into ascending order of their only X.
void SortByX(SolveData& data) {
  const std::vector<double>& x = data.X[0];
  if (std::is_sorted(x.begin(), x.end())) return;
  std::vector<std::size_t> order(x.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  // Points of equal X keep the order of the sheet.
  std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return x[a] < x[b]; });
  const auto sort = [&](auto& column) {
    auto sorted = column;
    std::transform(order.begin(), order.end(), sorted.begin(), [&](std::size_t i) { return column[i]; });
    column.swap(sorted);
  };
  for (std::vector<double>* column : {&data.X[0], &data.Y, &data.SD}) sort(*column);
  sort(data.Row);
}

}  // namespace

Result<LoadedGrid> LoadGridData(GridCells cells, const LoadOptions& options) {
  const std::size_t variables = options.IndependentVariables, yColumn = variables, sdColumn = variables + 1;
  const std::size_t rows = cells.GridLastRow();
  std::vector<std::vector<double>> columns(variables + 1 + (options.Weighted ? 1 : 0));
  for (std::size_t i = 0; i < columns.size(); ++i) columns[i] = cells.TakeColumn(i + 1, rows);

  LoadedGrid loaded;
  // Rows kept so far; they move up over those that were skipped. Those before the first mark stay as they are.
  std::size_t points = rows;
  for (const auto& column : columns)
    points = static_cast<std::size_t>(
        std::find_if(column.begin(), column.begin() + static_cast<std::ptrdiff_t>(points), IsMark) - column.begin());
  bool hasSD = options.Weighted && points > 0;
  SolveData& data = loaded.Points;
  ReserveLarge(data.Row, rows);
  for (std::size_t row = 0; row < points; ++row) data.Row.push_back(cells.FirstLine + row);
  for (std::size_t row = points; row < rows; ++row) {
    bool xMissing = false;
    for (std::size_t i = 0; i < variables; ++i) xMissing |= GridCells::IsEmpty(columns[i][row]);
    const bool yMissing = GridCells::IsEmpty(columns[yColumn][row]);
    if (xMissing || yMissing) {
      if (xMissing != yMissing) loaded.HadPartialRow = true;
      continue;
    }
    if (std::string why = WhyNoPoint(cells, columns, row); !why.empty()) {
      if (options.SkipTexts) continue;
      return Failure{std::move(why)};
    }
    if (points != row)
      for (auto& column : columns) column[points] = column[row];
    if (options.Weighted && GridCells::IsEmpty(columns[sdColumn][points]))
      columns[sdColumn][points] = 1;
    else
      hasSD = options.Weighted;
    data.Row.push_back(cells.FirstLine + row);
    ++points;
  }

  for (auto& column : columns) column.resize(points);
  data.HasSD = hasSD;
  if (options.Weighted) {
    data.SD = std::move(columns[sdColumn]);
  } else {
    ReserveLarge(data.SD, points);
    data.SD.assign(points, 1.0);
  }
  data.Y = std::move(columns[yColumn]);
  columns.resize(variables);
  data.X = std::move(columns);
  if (options.KeepUnsorted) loaded.Unsorted = data;
  if (variables == 1) SortByX(data);
  return loaded;
}

}  // namespace quorvex
