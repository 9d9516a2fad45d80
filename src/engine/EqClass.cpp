#include "engine/EqClass.h"

#include <algorithm>

#include "core/LargePages.h"
#include "core/NumberText.h"
#include "engine/RuleQuantity.h"
#include "equation/Catalogue.h"
#include "equation/Dialect.h"

namespace quorvex {

EqClass::EqClass(const LocaleText& locale) : ModelClass(Dialect::OneVariable, locale) {}

std::string EqClass::EvaluationFailure(std::span<const double> x) const {
  return "Error evaluating the function at X =" + GeneralNumber(x[0]);
}

std::string EqClass::DerivativeFailure(std::span<const double> x) const {
  return "Error taking derivatives at X = " + GeneralNumber(x[0]);
}

std::unique_ptr<ModelClass> EqClass::NewModel() const { return std::make_unique<EqClass>(locale_); }

// The average of Y divides only under the spelling "/yagv": "/yavg" is unknown here, and the estimate fails.
std::optional<double> EqClass::RuleQuantity(std::string_view rule, const SolveData& data) const {
  if (rule == "/yavg") return std::nullopt;
  if (rule == "/yagv") return QuantityOf("yavg", data, std::nullopt);
  return QuantityOf(rule.substr(1), data, 1);
}

InputPoints EqClass::InputTable(const SolveData& data) const {
  const std::vector<double>& x = data.X[0];
  InputPoints points{{{}}, {}};
  for (std::vector<double>* column : {&points.X[0], &points.Y}) ReserveLarge(*column, x.size());
  // The points are sorted, so equal X are neighbours: a curve has one value there, whatever was measured.
  if (std::adjacent_find(x.begin(), x.end()) == x.end()) {
    points.X[0] = x;
    points.Y = data.Y;
    return points;
  }
  for (std::size_t i = 0; i < x.size(); ++i) {
    if (i > 0 && x[i] == x[i - 1]) continue;
    points.X[0].push_back(x[i]);
    points.Y.push_back(data.Y[i]);
  }
  return points;
}

const CatalogueModel* EqClass::LookupBuiltInModel(std::string_view sID) const {
  return quorvex::LookupBuiltInModel(sID, 1);
}

}  // namespace quorvex
