#include "equation/Catalogue.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/Limits.h"
#include "equation/CatalogueRows.h"

namespace quorvex {

std::string PowerText(XFunction of, int power, const std::string& variable) {
  std::string text = (power > 0 ? "*" : "/") + (of == XFunction::Ln ? "ln(" + variable + ")" : variable);
  if (std::abs(power) != 1) text += "^" + std::to_string(std::abs(power));
  return text;
}

void MakeNested(CatalogueModel& model, int constantAt, std::vector<NestedRun> runs) {
  model.Shape = ModelShape::Nested;
  model.ConstantAt = constantAt;
  model.NumCoefficients = 1;
  for (const NestedRun& run : runs) model.NumCoefficients += run.Degree;
  model.Basis.resize(static_cast<std::size_t>(model.NumCoefficients));
  for (const NestedRun& run : runs) {
    for (int k = 1; k <= run.Degree; ++k) {
      const Factor factor{run.Base.Function, run.Base.Power * k, run.Base.Variable};
      model.Basis[static_cast<std::size_t>(run.Offset + run.Step * k)] = factor;
    }
  }
  model.Runs = std::move(runs);
}

const std::vector<CatalogueModel>& Catalogue(int independentVariables) {
  // Never given back: taking hundreds of models apart is a part of what a small macro takes.
  if (independentVariables == 1) {
    static const auto& models = *new std::vector<CatalogueModel>(OneVariableModels());
    return models;
  }
  if (independentVariables == 2) {
    static const auto& models = *new std::vector<CatalogueModel>(TwoVariableModels());
    return models;
  }
  // Made when first asked for: most runs need the models of one number of variables only.
  static const auto models = [] {
    std::array<std::vector<CatalogueModel>, kMostIndependentVariables + 1> byCount;
    for (int n = 3; n <= kMostIndependentVariables; ++n) byCount[static_cast<std::size_t>(n)] = ManyVariableModels(n);
    return byCount;
  }();
  const bool offered = independentVariables >= 3 && independentVariables <= kMostIndependentVariables;
  return models[offered ? static_cast<std::size_t>(independentVariables) : 0];
}

const CatalogueModel* LookupBuiltInModel(std::string_view id, int independentVariables) {
  const auto& models = Catalogue(independentVariables);
  const auto found = std::find_if(models.begin(), models.end(), [&](const CatalogueModel& m) { return m.ID == id; });
  return found == models.end() ? nullptr : &*found;
}

std::string ListModels(int independentVariables) {
  std::string text;
  for (const CatalogueModel& model : Catalogue(independentVariables)) {
    text += std::to_string(model.IDIndex) + '\t' + model.Group + '\t' + model.ID + '\t' + model.Definition + '\t' +
            model.Description + '\n';
  }
  return text;
}

}  // namespace quorvex
