#include "sheet/LoadGridData.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
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

// After so many points somebody is asked whether to go on.
constexpr std::size_t kStep = 1 << 18;

// Moves all points into ascending order of their only X; those of equal X keep the order of the sheet. False where
// `goesOn` said so on the way.
bool SortByX(SolveData& data, const std::function<bool()>& goesOn) {
  const std::vector<double>& x = data.X[0];
  if (std::is_sorted(x.begin(), x.end())) return true;
  struct Place {
    double X;
    std::size_t Point;
  };
  const std::size_t count = x.size();
  std::vector<Place> order(count), merged(count);
  for (std::size_t i = 0; i < count; ++i) order[i] = {x[i], i};
  const auto isBefore = [](const Place& a, const Place& b) { return a.X < b.X; };
  for (std::size_t i = 0; i < count; i += kStep) {
    if (!goesOn()) return false;
    const auto begin = order.begin() + static_cast<std::ptrdiff_t>(i);
    std::stable_sort(begin, begin + static_cast<std::ptrdiff_t>(std::min(kStep, count - i)), isBefore);
  }
  for (std::size_t run = kStep; run < count; run *= 2, order.swap(merged))
    for (std::size_t first = 0; first < count; first += 2 * run) {
      if (!goesOn()) return false;
      const auto at = [&](std::size_t i) { return order.begin() + static_cast<std::ptrdiff_t>(std::min(i, count)); };
      std::merge(at(first), at(first + run), at(first + run), at(first + 2 * run),
                 merged.begin() + static_cast<std::ptrdiff_t>(first), isBefore);
    }
  const auto sort = [&](auto& column) {
    auto sorted = column;
    for (std::size_t i = 0; i < count; ++i) {
      if (i % kStep == 0 && !goesOn()) return false;
      sorted[i] = column[order[i].Point];
    }
    column.swap(sorted);
    return true;
  };
  return sort(data.X[0]) && sort(data.Y) && sort(data.SD) && sort(data.Row);
}

}  // namespace

Result<LoadedGrid> LoadGridData(GridCells cells, const LoadOptions& options) {
  const std::size_t variables = options.IndependentVariables, yColumn = variables, sdColumn = variables + 1;
  const std::size_t rows = cells.GridLastRow();
  std::vector<std::vector<double>> columns(variables + 1 + (options.Weighted ? 1 : 0));
  for (std::size_t i = 0; i < columns.size(); ++i) columns[i] = cells.TakeColumn(i + 1, rows);

  LoadedGrid loaded;
  const auto goesOn = [&] { return !options.KeepGoing || options.KeepGoing(); };
  // Rows kept so far; they move up over those that were skipped. Those before the first mark stay as they are.
  std::size_t points = rows;
  for (const auto& column : columns)
    points = static_cast<std::size_t>(
        std::find_if(column.begin(), column.begin() + static_cast<std::ptrdiff_t>(points), IsMark) - column.begin());
  bool hasSD = options.Weighted && points > 0;
  SolveData& data = loaded.Points;
  ReserveLarge(data.Row, rows);
  for (std::size_t row = 0; row < points; ++row) {
    if (row % kStep == 0 && !goesOn()) return Failure{""};
    data.Row.push_back(cells.FirstLine + row);
  }
  for (std::size_t row = points; row < rows; ++row) {
    if (row % kStep == 0 && !goesOn()) return Failure{""};
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
  if (!goesOn() || (variables == 1 && !SortByX(data, goesOn))) return Failure{""};
  return loaded;
}

}  // namespace quorvex
