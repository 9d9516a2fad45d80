#pragma once

#include <optional>
#include <string>

#include "batch/DataReading.h"
#include "core/Files.h"
#include "sheet/SeriesData.h"

namespace quorvex {

// Reads `DataFile` as the setup says: its delimiters, first line, column order and marker of missing data. Pieces of
// the file are in memory one at a time; neither their size nor the number of threads, as in ThreadCount, has an
// influence on what is read. `keepGoing` is asked some times a second, and where it returns false the reading ends.
DataReading ReadMacroDataFile(const MacroSetup& setup, const LocaleText& locale, int threads = 1,
                              std::size_t piece = FileLines::kPiece, const std::function<bool()>& keepGoing = {});

// What came of reading it as a series.
struct SeriesReading {
  std::optional<SeriesData> Series;
  int ErrorNumber = 0;  // of the file error, 0 for any other failure
  std::string Message;  // why there is no series
};

// Reads it as many Y over the same X. The line in front of the first one with data has the headings. Where the macro
// doesn't name the delimiters, that line of data tells them: a tab, else a semicolon, a comma, or blanks.
SeriesReading ReadMacroSeries(const MacroSetup& setup, const LocaleText& locale);

}  // namespace quorvex
