#include "batch/ReadMacroDataFile.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

#include "core/Files.h"
#include "core/NumberText.h"
#include "core/ParallelRuns.h"
#include "sheet/ColumnDates.h"
#include "sheet/ParseDelimitedLines.h"

namespace quorvex {

namespace {

constexpr int kFileNotFound = 53;

DelimitedFormat FormatOf(const MacroSetup& setup, const LocaleText& locale) {
  DelimitedFormat format;
  format.Delimiters = (setup.DelimitTab ? kTabDelimiter : 0) | (setup.DelimitComma ? kCommaDelimiter : 0) |
                      (setup.DelimitSpace ? kSpaceDelimiter : 0) | (setup.DelimitSemicolon ? kSemicolonDelimiter : 0);
  format.IgnoreConsecutive = setup.IgnoreConsecutive;
  format.OverrideDecimal = setup.OverrideDecimal;
  format.DecimalSeparator = locale.DecimalSeparator;
  format.MissingMarker = setup.MissingData;
  const double firstLine = std::nearbyint(NumericText(setup.DataFirstLine, locale.DecimalSeparator).value_or(1));
  constexpr double kLastLine = 1e15;  // beyond the end of any file
  format.FirstLine = firstLine < 1 ? 1 : static_cast<std::size_t>(std::min(firstLine, kLastLine));
  return format;
}

std::string WhyNoData(bool isEmpty, const DelimitedFormat& format) {
  return isEmpty ? "The file is empty." : "The file has no data from line " + std::to_string(format.FirstLine) + " on.";
}

// With runs of delimiters as one, which is what macros begin with, the cells behind a missing one would move up.
void TakeDelimiters(std::string_view line, DelimitedFormat& format) {
  const auto has = [&](char c) { return line.find(c) != std::string_view::npos; };
  const bool isPointLocale = format.DecimalSeparator == '.';
  const bool blanks = !has('\t') && !has(';') && !(isPointLocale && has(',')) && has(' ');
  format.Delimiters = has('\t')  ? kTabDelimiter
                      : has(';') ? kSemicolonDelimiter
                      : blanks   ? kSpaceDelimiter
                                 : kCommaDelimiter;
  format.IgnoreConsecutive = blanks;
}

}  // namespace

DataReading ReadMacroDataFile(const MacroSetup& setup, const LocaleText& locale, int threads, std::size_t piece,
                              const std::function<bool()>& keepGoing) {
  DataReading reading;
  const auto fail = [&](int error) {
    reading.ErrorNumber = error;
    if (error != kFileNotFound && !setup.DataFile.empty()) reading.Message = FileErrorText(error);
    return std::move(reading);
  };
  threads = ThreadCount(threads);
  FileLines file(piece * static_cast<std::size_t>(threads), keepGoing);
  if (const int error = file.Open(setup.DataFile); error != 0) return fail(error);

  const auto variables = static_cast<std::size_t>(setup.IndependentVariables);
  DelimitedFormat format = FormatOf(setup, locale);
  // Columns that nothing reads are not kept.
  const bool inOrder = EqualNoCase(setup.ColumnOrder, "default");
  // In order these are the X, Y and standard deviations; else as many as the order names.
  format.ColumnLimit = inOrder ? variables + 2
                               : 1 + static_cast<std::size_t>(std::count(
                                         setup.ColumnOrder.begin(), setup.ColumnOrder.end(), locale.ListSeparator));

  DelimitedLines lines;
  if (const int error = ReadDelimitedLines(file, format, lines, threads); error != 0) return fail(error);
  if (lines.Rows == 0) {
    reading.Message = WhyNoData(file.IsEmpty(), format);
    return reading;
  }
  return ReadPoints(std::move(lines.Cells), setup, locale, keepGoing);
}

SeriesReading ReadMacroSeries(const MacroSetup& setup, const LocaleText& locale) {
  SeriesReading reading;
  WholeFile file;
  if (reading.ErrorNumber = file.Read(setup.DataFile); reading.ErrorNumber != 0) {
    reading.Message = FileErrorText(reading.ErrorNumber);
    return reading;
  }
  if (reading.Message = VariablesFault(setup); !reading.Message.empty()) return reading;
  const auto variables = static_cast<std::size_t>(setup.IndependentVariables);
  DelimitedFormat format = FormatOf(setup, locale);
  format.ColumnLimit = std::numeric_limits<std::size_t>::max();
  std::string_view rest = file.Text(), above, line;
  for (std::size_t n = 1; n <= format.FirstLine && !rest.empty(); ++n) above = std::exchange(line, TakeLine(rest));
  if (setup.InputDelimitText.empty()) TakeDelimiters(Trim(line), format);
  DelimitedLines lines = ParseDelimitedLines(file.Text(), format);
  const std::size_t count = lines.Cells.GridLastCol();
  if (count == 0) {
    reading.Message = WhyNoData(file.Text().empty(), format);
    return reading;
  }
  GridCells headings;
  if (format.FirstLine > 1) {
    DelimitedFormat words = format;
    words.AllTexts = words.QuotesHold = true;
    words.FirstLine = words.LineLimit = 1;
    words.MissingMarker = {};
    headings = ParseDelimitedLines(above, words).Cells;
  }
  Result<SeriesColumns> columns = ColumnsOfSeries(setup.ColumnOrder, variables, setup.Weighted,
                                                  std::max(count, headings.GridLastCol()), locale.ListSeparator);
  if (!columns) {
    reading.Message = columns.error();
    return reading;
  }
  std::vector<std::string> names;
  for (const std::size_t col : columns->Y) names.push_back(headings.GridCellText(1, col));
  NumberDates(lines.Cells, kIsoDates);
  reading.Series.emplace(std::move(lines.Cells), std::move(*columns), SeriesNames(std::move(names)));
  return reading;
}

}  // namespace quorvex
