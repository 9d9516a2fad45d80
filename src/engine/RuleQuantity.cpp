#include "engine/RuleQuantity.h"

#include <algorithm>
#include <numeric>
#include <vector>

#include "core/NumericFault.h"

namespace quorvex {
namespace {

// By the name less its variable's letter: "min", "max", "avg", "range".
double Summary(std::string_view what, const std::vector<double>& values) {
  if (values.empty()) throw NumericFault();
  if (what == "avg") return std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
  const auto [smallest, largest] = std::minmax_element(values.begin(), values.end());
  return what == "min" ? *smallest : what == "max" ? *largest : *largest - *smallest;
}

}  // namespace

std::optional<double> QuantityOf(std::string_view name, const SolveData& data, std::optional<int> variable) {
  constexpr struct {
    std::string_view Name, What;
    bool OfY;
  } kQuantities[] = {
      {"ymin", "min", true},  {"ymax", "max", true},  {"yavg", "avg", true},  {"(ymax-ymin)", "range", true},
      {"xmin", "min", false}, {"xmax", "max", false}, {"xavg", "avg", false}, {"(xmax-xmin)", "range", false},
  };
  if (name == "n") return static_cast<double>(data.N());
  for (const auto& quantity : kQuantities) {
    if (name != quantity.Name) continue;
    if (quantity.OfY) return Summary(quantity.What, data.Y);
    if (!variable) return std::nullopt;
    if (*variable < 1 || static_cast<std::size_t>(*variable) > data.X.size()) throw NumericFault();
    return Summary(quantity.What, data.X[static_cast<std::size_t>(*variable - 1)]);
  }
  return std::nullopt;
}

}  // namespace quorvex
