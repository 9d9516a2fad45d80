#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "import/spreadsheet/SpreadsheetArchive.h"
#include "import/spreadsheet/SpreadsheetCells.h"

namespace quorvex {

constexpr std::size_t kMostSheets = 10'000, kLongestName = 2048;

// What is read out of a spreadsheet.
struct SpreadsheetContent {
  std::vector<std::string> Names;  // of the sheets; where one is read, perhaps only of those up to it
  bool Found = false;              // the sheet that was asked for is there
  SpreadsheetCells Sheet;          // its cells
};

// The two formats: OASIS OpenDocument 1.2 and ECMA-376 (Office Open XML). Each reads the names of the sheets, and the
// cells of the one named `sheet` where that is given. Of the format's many elements only those that hold values count.
SpreadsheetFault ReadOpenDocument(SpreadsheetArchive& archive, const std::optional<std::string>& sheet,
                                  SpreadsheetContent& content);
SpreadsheetFault ReadOpenXml(SpreadsheetArchive& archive, const std::optional<std::string>& sheet,
                             SpreadsheetContent& content);

}  // namespace quorvex
