#include "batch/ReadMacroDataFile.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/Files.h"
#include "core/NumberText.h"
#include "sheet/ParseDelimitedLines.h"

namespace quorvex {

DataReading ReadMacroDataFile(const MacroSetup& setup, const LocaleText& locale) {
  DataReading reading;
  WholeFile file;
  constexpr int kFileNotFound = 53;
  if (reading.ErrorNumber = file.Read(setup.DataFile); reading.ErrorNumber != 0) {
    if (reading.ErrorNumber != kFileNotFound && !setup.DataFile.empty())
      reading.Message = FileErrorText(reading.ErrorNumber);
    return reading;
  }

  const auto variables = static_cast<std::size_t>(setup.IndependentVariables);
  DelimitedFormat format;
  format.Delimiters = (setup.DelimitTab ? kTabDelimiter : 0) | (setup.DelimitComma ? kCommaDelimiter : 0) |
                      (setup.DelimitSpace ? kSpaceDelimiter : 0) | (setup.DelimitSemicolon ? kSemicolonDelimiter : 0);
  format.IgnoreConsecutive = setup.IgnoreConsecutive;
  format.OverrideDecimal = setup.OverrideDecimal;
  format.DecimalSeparator = locale.DecimalSeparator;
  format.MissingMarker = setup.MissingData;
  // Columns that nothing reads are not kept.
  const bool inOrder = EqualNoCase(setup.ColumnOrder, "default");
  // In order these are the X, Y and standard deviations; else as many as the order names.
  format.ColumnLimit = inOrder ? variables + 2
                               : 1 + static_cast<std::size_t>(std::count(
                                         setup.ColumnOrder.begin(), setup.ColumnOrder.end(), locale.ListSeparator));
  const double firstLine = std::nearbyint(NumericText(setup.DataFirstLine, locale.DecimalSeparator).value_or(1));
  constexpr double kLastLine = 1e15;  // beyond the end of any file
  format.FirstLine = firstLine < 1 ? 1 : static_cast<std::size_t>(std::min(firstLine, kLastLine));

  DelimitedLines lines = ParseDelimitedLines(file.Text(), format);
  if (lines.Rows == 0) {
    reading.Message = file.Text().empty()
                          ? "The file is empty."
                          : "The file has no data from line " + std::to_string(format.FirstLine) + " on.";
    return reading;
  }
  return ReadPoints(std::move(lines.Cells), setup, locale);
}

}  // namespace quorvex
