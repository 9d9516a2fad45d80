#include "results/Solution.h"

#include <cassert>

#include "engine/RankModels.h"
#include "sheet/ComputeWeights.h"
#include "sheet/LoadGridData.h"

namespace quorvex {

bool Solution::Evaluate(std::span<const double> x, double& y, std::string& ErrString) const {
  if (Interpolation) return Interpolation->Evaluate(x[0], y, ErrString);
  if (Model->Evaluate(x, y, ErrString)) return true;
  ErrString = Model->EvaluationFailure(x);
  return false;
}

std::pair<double, double> Solution::InputRange(int variable) const {
  if (Interpolation) return {Interpolation->InputXMin, Interpolation->InputXMax};
  const VariableStatistics& input = Model->Statistics.X[static_cast<std::size_t>(variable - 1)];
  return {input.InputXMin, input.InputXMax};
}

std::vector<Solution> SolvedList(Project& project, int SortKey) {
  std::vector<Solution> list;
  for (ModelClass* model : RankModels(project.Models, SortKey)) list.push_back({model, nullptr});
  for (InterpClass& interpolation : project.Interpolations)
    if (interpolation.Solved) list.push_back({nullptr, &interpolation});
  return list;
}

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
