#pragma once

#include <string>
#include <vector>

#include "core/LocaleText.h"
#include "core/Result.h"
#include "project/Project.h"

namespace quorvex {

// A text file of measurements.
struct DataFile {
  std::vector<std::string> Headers;  // of the first line, where that has no number; else empty
  GridCells Cells;
};

// Reads a file whose columns are separated by tabs, semicolons, commas or blanks, whichever its lines have, in this
// order; a comma comes last where it is the decimal separator. Fails with the sentence for the user.
Result<DataFile> ReadDataFile(const std::string& fileName, const LocaleText& locale);

// Puts the data into the sheet of a new project, the headers too. Returns how many columns there was no room for.
std::size_t TakeData(Project& project, DataFile data);

}  // namespace quorvex
