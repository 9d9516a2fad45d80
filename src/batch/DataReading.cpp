#include "batch/DataReading.h"

#include <utility>

#include "core/NumberText.h"
#include "import/ConnectString.h"
#include "sheet/ArrangeData.h"
#include "sheet/ColumnDates.h"
#include "sheet/ComputeWeights.h"
#include "sheet/LoadGridData.h"

namespace quorvex {

std::string DataSourceText(const MacroSetup& setup) {
  return setup.SQLQuery.empty() ? setup.DataFile : MaskPassword(setup.DataFile);
}

std::string VariablesFault(const MacroSetup& setup) {
  if (setup.IndependentVariables >= 1 && setup.IndependentVariables <= kMostIndependentVariables) return {};
  return "IndependentVariables must be 1 to 20, not " + std::to_string(setup.IndependentVariables) + ".";
}

bool KeepsUnsorted(const MacroSetup& setup) {
  return EqualNoCase(setup.OutputFormat, "quorvex") || setup.UseParameterFile || !setup.PlotFile.empty() ||
         !setup.ReportFile.empty();
}

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

DataReading ReadPoints(GridCells cells, const MacroSetup& setup, const LocaleText& locale) {
  DataReading reading;
  if (reading.Message = VariablesFault(setup); !reading.Message.empty()) return reading;
  const auto variables = static_cast<std::size_t>(setup.IndependentVariables);
  if (!ArrangeData(cells, setup.ColumnOrder, variables, locale.ListSeparator)) return reading;
  NumberDates(cells, kIsoDates);
  return ReadingOf(LoadGridData(
      std::move(cells),
      {.IndependentVariables = variables, .Weighted = setup.Weighted, .KeepUnsorted = KeepsUnsorted(setup)}));
}

}  // namespace quorvex
