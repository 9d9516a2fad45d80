#pragma once

#include "batch/DataReading.h"

namespace quorvex {

// Reads `DataFile` as the setup says: its delimiters, first line, column order and marker of missing data.
DataReading ReadMacroDataFile(const MacroSetup& setup, const LocaleText& locale);

}  // namespace quorvex
