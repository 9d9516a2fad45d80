#pragma once

#include <string>

#include "batch/MacroSetup.h"
#include "core/LocaleText.h"
#include "core/SolveData.h"

namespace quorvex {

// What came of reading a macro's data.
struct DataReading {
  bool Ok = false;
  SolveData Data;       // with its weights, sorted by X where there is one variable
  int ErrorNumber = 0;  // of the file error, 0 for any other failure
  std::string Message;  // a sentence for the log where there is one to say
};

// Reads `DataFile` as the setup says: its delimiters, first line, column order and marker of missing data.
DataReading ReadMacroDataFile(const MacroSetup& setup, const LocaleText& locale);

}  // namespace quorvex
