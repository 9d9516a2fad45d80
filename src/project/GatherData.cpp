#include "project/GatherData.h"

#include <algorithm>

#include "sheet/ComputeWeights.h"
#include "sheet/IncompleteRows.h"
#include "sheet/LoadGridData.h"

namespace quorvex {

Result<GatheredData> GatherData(const DataSheet& sheet) {
  Result<LoadedGrid> loaded = LoadGridData(
      sheet.Cells, {.IndependentVariables = sheet.IndependentVariables, .Weighted = sheet.HasStandardDeviation});
  if (!loaded) return Failure{loaded.error()};
  GatheredData data;
  data.Points = std::move(loaded->Points);
  data.Points.sig = ComputeWeights(data.Points.SD);
  const std::vector<bool> incomplete = IncompleteRows(sheet);
  data.IncompleteRows = static_cast<std::size_t>(std::count(incomplete.begin(), incomplete.end(), true));
  return data;
}

}  // namespace quorvex
