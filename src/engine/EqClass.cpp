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

InputPoints EqClass::InputTable(const SolveData& data, const LookAround& look) const {
  const std::vector<double>& x = data.X[0];
  InputPoints points{{{}}, {}};
  // The points are sorted, so equal X are neighbours: a curve has one value there, whatever was measured.
  bool repeats = false;
  InPieces(x.size(), look, [&](std::size_t from, std::size_t end) {
    const auto first = x.begin() + static_cast<std::ptrdiff_t>(from - (from > 0));
    const auto last = x.begin() + static_cast<std::ptrdiff_t>(end);
    repeats = repeats || std::adjacent_find(first, last) != last;
  });
  if (!repeats) {
    points.X[0] = CopyInPieces(x, look);
    points.Y = CopyInPieces(data.Y, look);
    return points;
  }
  for (std::vector<double>* column : {&points.X[0], &points.Y}) ReserveLarge(*column, x.size());
  InPieces(x.size(), look, [&](std::size_t from, std::size_t end) {
    for (std::size_t i = from; i < end; ++i) {
      if (i > 0 && x[i] == x[i - 1]) continue;
      points.X[0].push_back(x[i]);
      points.Y.push_back(data.Y[i]);
    }
  });
  return points;
}

const CatalogueModel* EqClass::LookupBuiltInModel(std::string_view sID) const {
  return quorvex::LookupBuiltInModel(sID, 1);
}

}  // namespace quorvex
