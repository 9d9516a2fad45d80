#include "project/Project.h"

#include <algorithm>

#include "core/NumberText.h"
#include "engine/LoadModelCatalog.h"
#include "equation/Catalogue.h"

namespace quorvex {
namespace {

bool IsInCatalogue(const std::string& id, std::size_t independentVariables) {
  return std::ranges::any_of(Catalogue(static_cast<int>(independentVariables)),
                             [&](const CatalogueModel& model) { return EqualNoCase(model.ID, id); });
}

}  // namespace

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
  for (const auto& model : models) {
    if (!model->UserType && !model->Solved) continue;
    std::unique_ptr<ModelClass> copy = model->CopyTo();
    // The ID given in the macro, unless another model has it, built-in ones included, which are there once the project
    // is opened.
    const bool isFree = !models.Has(copy->cfgID) && !IsInCatalogue(copy->cfgID, unsorted.X.size());
    if (copy->UserType && !copy->cfgID.empty() && isFree && !project.Models.Has(copy->cfgID)) copy->id = copy->cfgID;
    // A copy, since the same call moves the model away.
    const std::string key = copy->id;
    project.Models.Add(key, std::move(copy));
  }
  return project;
}

}  // namespace quorvex
