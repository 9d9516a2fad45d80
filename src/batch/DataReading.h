#pragma once

#include <cstddef>
#include <string>

#include "batch/MacroSetup.h"
#include "core/LocaleText.h"
#include "core/Result.h"
#include "core/SolveData.h"
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

// The data file as log and answers name it; where that is a connect string, without the password in it.
std::string DataSourceText(const MacroSetup& setup);

// Why no data can be read with so many variables, a sentence; empty where they can.
std::string VariablesFault(const MacroSetup& setup);

// Whether the points are wanted in the order of the source, too: by a project, or a plot. The runs of a table of
// parameters may come to ask for a project without reading again.
bool KeepsUnsorted(const MacroSetup& setup);

// The loaded points with their weights, or why there are none.
DataReading ReadingOf(Result<LoadedGrid> loaded);

// The points in the cells of the macro's data source, missing ones already blanked: the columns are arranged as the
// setup says, read, and weighted. Dates whose order is certain are the numbers of their days.
DataReading ReadPoints(GridCells cells, const MacroSetup& setup, const LocaleText& locale);

}  // namespace quorvex
