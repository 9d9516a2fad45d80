#include "engine/MvClass.h"

#include <string>

#include "engine/RuleQuantity.h"
#include "equation/Catalogue.h"
#include "equation/Dialect.h"

namespace quorvex {

MvClass::MvClass(const LocaleText& locale) : ModelClass(Dialect::SeveralVariables, locale) {}

// With several variables the messages leave the point out.
std::string MvClass::EvaluationFailure(std::span<const double> /*x*/) const { return "Error evaluating the function."; }

std::string MvClass::DerivativeFailure(std::span<const double> /*x*/) const { return "Error taking derivatives."; }

std::unique_ptr<ModelClass> MvClass::NewModel() const { return std::make_unique<MvClass>(locale_); }

// Rules about X name their variable, as in "/x2max" and "*(x3max-x3min)"; the first number counts.
std::optional<double> MvClass::RuleQuantity(std::string_view rule, const SolveData& data) const {
  std::string name;
  std::optional<int> variable;
  for (std::size_t i = 1; i < rule.size(); ++i) {
    if (rule[i] < '0' || rule[i] > '9') {
      name += rule[i];
      continue;
    }
    int number = 0;
    for (; i < rule.size() && rule[i] >= '0' && rule[i] <= '9'; ++i)
      // Once it is too large it stays so, however many digits follow.
      if (number <= kMostIndependentVariables) number = number * 10 + (rule[i] - '0');
    --i;
    if (!variable) variable = number;
  }
  return QuantityOf(name, data, variable);
}

// Every point, in the order of the data.
InputPoints MvClass::InputTable(const SolveData& data, const LookAround& look) const {
  InputPoints points;
  for (const std::vector<double>& column : data.X) points.X.push_back(CopyInPieces(column, look));
  points.Y = CopyInPieces(data.Y, look);
  return points;
}

const CatalogueModel* MvClass::LookupBuiltInModel(std::string_view sID) const {
  return quorvex::LookupBuiltInModel(sID, NumIndependentVar());
}

}  // namespace quorvex
