#include "project/Project.h"

#include "engine/LoadModelCatalog.h"

namespace quorvex {

Project NewProject(std::size_t independentVariables, bool hasStandardDeviation, const LocaleText& locale) {
  Project project(independentVariables, hasStandardDeviation, locale);
  LoadModelCatalog(project.Models, static_cast<int>(independentVariables), locale);
  for (const int kind : {kCubicSpline, kPolynomial, kRationalFunction}) project.Interpolations.emplace_back(kind);
  return project;
}

Project ProjectOfSolve(const SolveData& unsorted, bool weighted, const ModelCollection& models,
                       const SolveLimits& limits, const LocaleText& locale) {
  Project project(unsorted.X.size(), weighted, locale);
  project.Limits = limits;
  std::size_t col = 0;
  const auto addColumn = [&](const std::vector<double>& values) {
    ++col;
    for (std::size_t i = 0; i < values.size(); ++i) project.Sheet.Cells.SetGridCellNumber(i + 1, col, values[i]);
  };
  for (const std::vector<double>& column : unsorted.X) addColumn(column);
  addColumn(unsorted.Y);
  if (weighted) addColumn(unsorted.SD);
  for (const auto& model : models)
    if (model->UserType || model->Solved) project.Models.Add(model->id, model->CopyTo());
  return project;
}

}  // namespace quorvex
