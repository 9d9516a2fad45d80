#include "results/ResultData.h"

#include <cassert>

#include "sheet/ComputeWeights.h"
#include "sheet/LoadGridData.h"

namespace quorvex {

Result<ResultData> LoadResultData(const DataSheet& sheet) {
  const std::size_t variables = sheet.IndependentVariables;
  Result<LoadedGrid> loaded = LoadGridData(sheet.Cells, {variables, sheet.HasStandardDeviation, true});
  if (!loaded) return Failure{loaded.error()};
  ResultData data;
  data.Points = std::move(loaded->Unsorted);
  data.Points.sig = ComputeWeights(data.Points.SD);
  const std::size_t last = sheet.Cells.GridLastRow();
  for (std::size_t row = 1; row <= last; ++row) {
    std::size_t filled = 0;
    for (std::size_t col = 1; col <= variables + 1; ++col)
      if (!GridCells::IsEmpty(sheet.Cells.Cell(row, col))) ++filled;
    if (filled == variables + 1)
      data.Rows.push_back(row);
    else if (filled > 0)
      ++data.MissingPoints;
  }
  assert(data.Rows.size() == data.Points.N());
  return data;
}

}  // namespace quorvex
