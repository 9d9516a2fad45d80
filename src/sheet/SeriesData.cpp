#include "sheet/SeriesData.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <set>
#include <utility>

#include "core/NumberText.h"

namespace quorvex {

Result<SeriesColumns> ColumnsOfSeries(std::string_view columnOrder, std::size_t independentVariables, bool weighted,
                                      std::size_t count, char listSeparator) {
  SeriesColumns columns;
  columns.X.assign(independentVariables, 0);
  std::size_t common = 0;
  const auto addY = [&](std::size_t column) {
    columns.Y.push_back(column);
    columns.SD.push_back(0);
  };
  std::size_t column = 0;
  bool goesOn = true;  // with Y
  if (EqualNoCase(columnOrder, "default")) {
    std::iota(columns.X.begin(), columns.X.end(), std::size_t{1});
    column = independentVariables;
    if (weighted) common = ++column;
  } else {
    for (std::string_view rest = columnOrder;;) {
      const std::size_t end = std::min(rest.find(listSeparator), rest.size());
      const std::string word = ToLower(Trim(rest.substr(0, end)));
      const bool isLast = end == rest.size();
      rest.remove_prefix(isLast ? end : end + 1);
      ++column;
      if (column > count) break;
      if (word == "y") {
        addY(column);
      } else if (word == "sd") {
        if (weighted) (columns.Y.empty() ? common : columns.SD.back()) = column;
      } else if (word.starts_with('x')) {
        const double number = word == "x" ? 1 : NumericText(word.substr(1)).value_or(0);
        for (std::size_t v = 0; v < independentVariables; ++v)
          if (number == static_cast<double>(v + 1)) columns.X[v] = column;
      }
      goesOn = word == "y";
      if (isLast) break;
    }
  }
  while (goesOn && column < count) addY(++column);
  for (std::size_t v = 0; v < independentVariables; ++v)
    if (columns.X[v] == 0) return Failure{"The ColumnOrder has no column x" + std::to_string(v + 1) + "."};
  if (columns.Y.empty())
    return Failure{"The data have " + std::to_string(count) + (count == 1 ? " column" : " columns") +
                   ", and none of them is a column of Y."};
  for (std::size_t& sd : columns.SD)
    if (sd == 0) sd = common;
  return columns;
}

std::string SeriesFileName(std::string_view name) {
  std::string file(name);
  for (char& c : file)
    if (c == '/' || c == '\\' || static_cast<unsigned char>(c) < ' ' || c == '\x7f') c = '_';
  return file;
}

std::vector<std::string> SeriesNames(std::vector<std::string> headings) {
  // A heading that stands in the source keeps its place before one that is made up.
  std::map<std::string, std::size_t> next;  // by file name: the number that the next one of its kind tries
  std::set<std::string> taken;
  for (const std::string& heading : headings)
    if (!Trim(heading).empty()) taken.insert(SeriesFileName(Trim(heading)));
  std::set<std::string> given;
  for (std::size_t i = 0; i < headings.size(); ++i) {
    const bool isBlank = Trim(headings[i]).empty();
    const std::string heading = isBlank ? std::to_string(i + 1) : std::string(Trim(headings[i]));
    const std::string file = SeriesFileName(heading);
    std::string suffix;
    if (given.contains(file) || (isBlank && taken.contains(file))) {
      std::size_t& number = next.try_emplace(file, 2).first->second;
      do suffix = "_" + std::to_string(number++);
      while (taken.contains(file + suffix));
    }
    taken.insert(file + suffix);
    given.insert(file + suffix);
    headings[i] = heading + suffix;
  }
  return headings;
}

SeriesData::SeriesData(GridCells cells, SeriesColumns columns, std::vector<std::string> names)
    : cells_(std::move(cells)), names_(std::move(names)), rows_(cells_.GridLastRow()) {
  for (const std::size_t col : columns.X) x_.push_back(cells_.TakeColumn(col, rows_));
  for (const std::size_t col : columns.Y) y_.push_back(cells_.TakeColumn(col, rows_));
  std::map<std::size_t, std::size_t> places;  // in sd_, of columns
  for (const std::size_t col : columns.SD) {
    if (col > 0 && places.try_emplace(col, places.size() + 1).second) sd_.push_back(cells_.TakeColumn(col, rows_));
    sdOf_.push_back(col > 0 ? places[col] : 0);
  }
  for (std::size_t row = 0; row < rows_; ++row)
    if (std::ranges::none_of(x_, [&](const auto& x) { return GridCells::IsEmpty(x[row]); })) order_.push_back(row);
  xHasTexts_ = std::ranges::any_of(x_, [&](const auto& x) { return HasTexts(x); });
  if (xHasTexts_) return;
  // Points of equal X keep the order of the source.
  if (x_.size() == 1) std::ranges::stable_sort(order_, {}, [&](std::size_t row) { return x_[0][row]; });
  for (const auto& x : x_) {
    std::vector<double>& sorted = sorted_.emplace_back();
    for (const std::size_t row : order_) sorted.push_back(x[row]);
  }
}

bool SeriesData::HasTexts(const std::vector<double>& column) const {
  return cells_.HasTexts() && std::ranges::any_of(column, &GridCells::IsText);
}

// X and one column as a grid of their own.
GridCells SeriesData::OneOf(std::size_t i) const {
  GridCells one;
  one.FirstLine = cells_.FirstLine;
  std::vector<const std::vector<double>*> columns;
  for (const auto& x : x_) columns.push_back(&x);
  columns.push_back(&y_[i]);
  one.ColumnNames.resize(x_.size());
  one.ColumnNames.push_back(names_[i]);
  if (sdOf_[i] > 0) columns.push_back(&sd_[sdOf_[i] - 1]);
  for (std::size_t col = 1; col <= columns.size(); ++col) {
    for (std::size_t row = 1; row <= rows_; ++row) {
      const double cell = (*columns[col - 1])[row - 1];
      if (GridCells::IsText(cell))
        one.SetGridCellText(row, col, cells_.TextBehind(cell));
      else if (!GridCells::IsEmpty(cell))
        one.SetGridCellNumber(row, col, cell);
    }
  }
  return one;
}

Result<LoadedGrid> SeriesData::Points(std::size_t i, bool keepUnsorted) const {
  const std::vector<double>& y = y_[i];
  const std::vector<double>* const sd = sdOf_[i] > 0 ? &sd_[sdOf_[i] - 1] : nullptr;
  // Whether a text matters depends on the cells beside it.
  if (keepUnsorted || xHasTexts_ || HasTexts(y) || (sd != nullptr && HasTexts(*sd)))
    return LoadGridData(OneOf(i),
                        {.IndependentVariables = x_.size(), .Weighted = sd != nullptr, .KeepUnsorted = keepUnsorted});
  LoadedGrid loaded;
  SolveData& data = loaded.Points;
  data.Y.reserve(order_.size());
  data.Row.reserve(order_.size());
  bool isWhole = true;
  for (const std::size_t row : order_) {
    if (GridCells::IsEmpty(y[row])) {
      isWhole = false;
      continue;
    }
    data.Y.push_back(y[row]);
    data.Row.push_back(cells_.FirstLine + row);
  }
  loaded.HadPartialRow = !isWhole;
  data.SD.assign(data.Y.size(), 1.0);
  if (isWhole) {
    data.X = sorted_;
  } else {
    data.X.resize(x_.size());
    for (std::size_t v = 0; v < x_.size(); ++v)
      for (const std::size_t row : order_)
        if (!GridCells::IsEmpty(y[row])) data.X[v].push_back(x_[v][row]);
  }
  if (sd != nullptr) {
    std::size_t point = 0;
    for (const std::size_t row : order_) {
      if (GridCells::IsEmpty(y[row])) continue;
      if (!GridCells::IsEmpty((*sd)[row])) {
        data.SD[point] = (*sd)[row];
        data.HasSD = true;
      }
      ++point;
    }
  }
  return loaded;
}

}  // namespace quorvex
