#include "import/ReadPoints.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <utility>

#include "import/TextImport.h"
#include "sheet/ColumnDates.h"
#include "sheet/ParseDelimitedLines.h"

namespace quorvex {
namespace {

bool IsNumber(double cell) { return !GridCells::IsEmpty(cell) && !GridCells::IsText(cell); }

// Makes numbers of the dates in a column. Returns how they are written, without date and time where it holds others.
DateForm NumberDatesOf(GridCells& cells, std::size_t col, std::size_t rows, const LocaleText& locale) {
  DateForm form;
  bool otherNumbers = false;
  for (std::size_t row = 1; row <= rows; ++row) {
    const double cell = cells.Cell(row, col);
    otherNumbers = otherNumbers || IsNumber(cell);
    if (!GridCells::IsText(cell)) continue;
    const auto date = ReadDate(cells.TextBehind(cell), locale);
    if (!date) continue;
    cells.SetGridCellNumber(row, col, date->Days);
    form.Join(date->Form);
  }
  return otherNumbers ? DateForm() : form;
}

// The columns that hold numbers, `most` of them at most, with all of their cells.
TextPoints NumberColumns(std::string_view bytes, std::size_t most, const LocaleText& locale) {
  const bool blanks = BlanksDelimit(bytes, locale.DecimalSeparator);
  DelimitedFormat format;
  format.Delimiters = kTabDelimiter | kSemicolonDelimiter | (blanks ? kSpaceDelimiter : 0) |
                      (locale.DecimalSeparator != ',' ? kCommaDelimiter : 0);
  format.IgnoreConsecutive = blanks;
  format.DecimalSeparator = locale.DecimalSeparator;
  DelimitedLines lines = ParseDelimitedLines(bytes, format);
  const ColumnDates dates(lines.Cells, locale);
  TextPoints found;
  DateForm before;
  const std::size_t count = lines.Cells.GridLastCol();
  for (std::size_t col = 1; col <= count; ++col) {
    const DateForm form = NumberDatesOf(lines.Cells, col, lines.Rows, dates.LocaleOf(col));
    std::vector<double> cells = lines.Cells.TakeColumn(col, lines.Rows);
    if (!std::ranges::any_of(cells, IsNumber)) continue;
    if (blanks && before.HasDate && !before.HasTime && form.HasTime && !form.HasDate) {
      // The blank stood between a date and its time.
      std::ranges::transform(found.Columns.back(), cells, found.Columns.back().begin(), std::plus<>());
      before.Join(form);
      found.Patterns.back() = before.Pattern();
      continue;
    }
    if (found.Columns.size() == most) break;
    found.Columns.push_back(std::move(cells));
    found.Patterns.push_back(form.Pattern());
    before = form;
  }
  return found;
}

// The numbers of the rows, from 1 at the first number of a column.
std::vector<double> RowNumbers(const std::vector<double>& column) {
  const auto first = std::ranges::find_if(column, IsNumber) - column.begin();
  std::vector<double> numbers(column.size());
  for (std::size_t row = 0; row < numbers.size(); ++row)
    numbers[row] = static_cast<double>(static_cast<std::ptrdiff_t>(row) - first + 1);
  return numbers;
}

}  // namespace

TextPoints ReadPoints(std::string_view bytes, std::size_t variables, const LocaleText& locale) {
  TextPoints read = NumberColumns(bytes, variables + 1, locale);
  std::vector<std::vector<double>>& columns = read.Columns;
  if (columns.size() == 1 && variables == 1) {
    columns.insert(columns.begin(), RowNumbers(columns[0]));
    read.Patterns.insert(read.Patterns.begin(), "");
  }
  if (columns.size() <= variables) return {};

  TextPoints points{std::vector<std::vector<double>>(columns.size()), std::move(read.Patterns)};
  for (std::size_t row = 0; row < columns[0].size(); ++row) {
    if (!std::ranges::all_of(columns, [&](const auto& column) { return IsNumber(column[row]); })) continue;
    for (std::size_t col = 0; col < columns.size(); ++col) points.Columns[col].push_back(columns[col][row]);
  }
  if (points.Columns[0].empty()) return {};
  return points;
}

}  // namespace quorvex
