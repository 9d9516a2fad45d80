#include "import/ReadPoints.h"

#include <algorithm>
#include <cstddef>

#include "import/TextImport.h"
#include "sheet/ParseDelimitedLines.h"

namespace quorvex {
namespace {

bool IsNumber(double cell) { return !GridCells::IsEmpty(cell) && !GridCells::IsText(cell); }

// The cells of the columns that hold numbers, `most` of them at most.
std::vector<std::vector<double>> NumberColumns(std::string_view bytes, std::size_t most, const LocaleText& locale) {
  const bool blanks = BlanksDelimit(bytes, locale.DecimalSeparator);
  DelimitedFormat format;
  format.Delimiters = kTabDelimiter | kSemicolonDelimiter | (blanks ? kSpaceDelimiter : 0) |
                      (locale.DecimalSeparator != ',' ? kCommaDelimiter : 0);
  format.IgnoreConsecutive = blanks;
  format.DecimalSeparator = locale.DecimalSeparator;
  DelimitedLines lines = ParseDelimitedLines(bytes, format);
  std::vector<std::vector<double>> columns;
  const std::size_t count = lines.Cells.GridLastCol();
  for (std::size_t col = 1; col <= count && columns.size() < most; ++col) {
    std::vector<double> cells = lines.Cells.TakeColumn(col, lines.Rows);
    if (std::ranges::any_of(cells, IsNumber)) columns.push_back(std::move(cells));
  }
  return columns;
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

std::vector<std::vector<double>> ReadPoints(std::string_view bytes, std::size_t variables, const LocaleText& locale) {
  std::vector<std::vector<double>> columns = NumberColumns(bytes, variables + 1, locale);
  if (columns.size() == 1 && variables == 1) columns.insert(columns.begin(), RowNumbers(columns[0]));
  if (columns.size() <= variables) return {};

  std::vector<std::vector<double>> points(columns.size());
  for (std::size_t row = 0; row < columns[0].size(); ++row) {
    if (!std::ranges::all_of(columns, [&](const auto& column) { return IsNumber(column[row]); })) continue;
    for (std::size_t col = 0; col < columns.size(); ++col) points[col].push_back(columns[col][row]);
  }
  if (points[0].empty()) return {};
  return points;
}

}  // namespace quorvex
