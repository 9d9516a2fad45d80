#pragma once

#include "batch/DataReading.h"

namespace quorvex {

// Runs `SQLQuery` on the source that `DataFile` is the connect string of, and reads the result like the lines of a data
// file: its columns in the column order, a cell that shows the marker of missing data as an empty one. A result without
// rows is no failure and gives no points. Where the database refuses, Message is what it says.
DataReading ReadMacroDatabase(const MacroSetup& setup, const LocaleText& locale);

}  // namespace quorvex
