#include "batch/DataReading.h"

#include <utility>

#include "sheet/ArrangeData.h"
#include "sheet/ColumnDates.h"
#include "sheet/ComputeWeights.h"
#include "sheet/LoadGridData.h"

namespace quorvex {

DataReading ReadingOf(Result<LoadedGrid> loaded) {
  DataReading reading;
  if (!loaded) {
    reading.Message = loaded.error();
    return reading;
  }
  reading.Data = std::move(loaded->Points);
  reading.Unsorted = std::move(loaded->Unsorted);
  TakeWeights(reading.Data);
  reading.Ok = true;
  return reading;
}

DataReading ReadPoints(GridCells cells, const MacroSetup& setup, const LocaleText& locale,
                       const std::function<bool()>& keepGoing) {
  DataReading reading;
  const auto goesOn = [&] { return !keepGoing || keepGoing(); };
  if (reading.Message = VariablesFault(setup); !reading.Message.empty()) return reading;
  const auto variables = static_cast<std::size_t>(setup.IndependentVariables);
  if (!ArrangeData(cells, setup.ColumnOrder, variables, locale.ListSeparator)) return reading;
  NumberDates(cells, kIsoDates);
  if (!goesOn()) return reading;
  Result<LoadedGrid> loaded = LoadGridData(std::move(cells), {.IndependentVariables = variables,
                                                              .Weighted = setup.Weighted,
                                                              .KeepUnsorted = KeepsUnsorted(setup),
                                                              .KeepGoing = keepGoing});
  return goesOn() ? ReadingOf(std::move(loaded)) : reading;
}

}  // namespace quorvex
