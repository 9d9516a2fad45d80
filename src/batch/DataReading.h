#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "core/LocaleText.h"
#include "core/Result.h"
#include "core/SolveData.h"
#include "macro/MacroSetup.h"
#include "sheet/GridCells.h"
#include "sheet/LoadGridData.h"

namespace quorvex {

// What came of reading a macro's data.
struct DataReading {
  bool Ok = false;
  SolveData Data;       // with its weights, sorted by X where there is one variable
  SolveData Unsorted;   // the points in the order of the source, where a project file may be asked for
  int ErrorNumber = 0;  // of the file error, 0 for any other failure
  std::string Message;  // a sentence for the log where there is one to say
};

// The loaded points with their weights, or why there are none.
DataReading ReadingOf(Result<LoadedGrid> loaded);

// The points in the cells of the macro's data source, missing ones already blanked: the columns are arranged as the
// setup says, read, and weighted. Dates whose order is certain are the numbers of their days. `keepGoing`, where there
// is one, is asked some times a second; false ends the reading without a message.
DataReading ReadPoints(GridCells cells, const MacroSetup& setup, const LocaleText& locale,
                       const std::function<bool()>& keepGoing = {});

}  // namespace quorvex
