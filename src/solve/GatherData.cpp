#include "solve/GatherData.h"

#include <algorithm>

#include "sheet/ComputeWeights.h"
#include "sheet/IncompleteRows.h"
#include "sheet/LoadGridData.h"

namespace quorvex {

Result<GatheredData> GatherData(const DataSheet& sheet, PointOrder order) {
  const bool ofSheet = order == PointOrder::OfSheet;
  Result<LoadedGrid> loaded =
      LoadGridData(sheet.Cells, {sheet.IndependentVariables, sheet.HasStandardDeviation, ofSheet});
  if (!loaded) return Failure{loaded.error()};
  GatheredData data;
  data.Points = std::move(ofSheet ? loaded->Unsorted : loaded->Points);
  data.Points.sig = ComputeWeights(data.Points.SD);
  const std::vector<bool> incomplete = IncompleteRows(sheet);
  data.IncompleteRows = static_cast<std::size_t>(std::count(incomplete.begin(), incomplete.end(), true));
  // Of the others a row has all of its cells or none.
  for (std::size_t row = 1; ofSheet && row <= incomplete.size(); ++row)
    if (!incomplete[row - 1] && !GridCells::IsEmpty(sheet.Cells.Cell(row, 1))) data.Rows.push_back(row);
  return data;
}

bool MayLeaveOut(std::size_t incompleteRows, const Settings& settings, Prompter& user) {
  if (incompleteRows == 0 || settings.Integer("missingdatawarning") != 1) return true;
  return user.Ask(
      std::to_string(incompleteRows) +
      (incompleteRows == 1 ? " row of the data is incomplete and is" : " rows of the data are incomplete and are") +
      " left out of the solution. Do you want to continue?");
}

}  // namespace quorvex
