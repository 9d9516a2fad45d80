#include "files/RawData.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "import/TextImport.h"
#include "results/ResultPlots.h"
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

Failure NoDataIn(const std::string& fileName) { return {"Error importing data from '" + fileName + "'."}; }

Result<PlotSeries> ReadRawData(std::string_view bytes, const std::string& fileName, std::size_t variables,
                               const Settings& settings, const LocaleText& locale) {
  std::vector<std::vector<double>> columns = NumberColumns(bytes, variables + 1, locale);
  if (columns.size() == 1 && variables == 1) columns.insert(columns.begin(), RowNumbers(columns[0]));
  if (columns.size() <= variables) return NoDataIn(fileName);

  std::vector<std::vector<double>> points(columns.size());
  for (std::size_t row = 0; row < columns[0].size(); ++row) {
    if (!std::ranges::all_of(columns, [&](const auto& column) { return IsNumber(column[row]); })) continue;
    for (std::size_t col = 0; col < columns.size(); ++col) points[col].push_back(columns[col][row]);
  }
  if (points[0].empty()) return NoDataIn(fileName);
  std::vector<double> y = std::move(points.back());
  points.pop_back();
  DataClass data;
  data.GenerateTable(std::move(points), std::move(y));
  return Markers("Raw Data", std::move(data), settings);
}

Result<std::unique_ptr<PlotPage>> RawDataPlot(std::string_view bytes, const std::string& fileName,
                                              const Settings& settings, const LocaleText& locale) {
  Result<PlotSeries> series = ReadRawData(bytes, fileName, 1, settings, locale);
  if (!series) return Failure{series.error()};
  auto plot = std::make_unique<PlotClass>(settings, locale);
  plot->PlotTitle = "Plot";
  plot->X.AxisTitle = "X";
  plot->Y.AxisTitle = "Y";
  plot->PlotData.push_back(std::move(*series));
  return std::unique_ptr<PlotPage>(std::move(plot));
}

}  // namespace quorvex
