#include "engine/DataClass.h"

#include <algorithm>
#include <cassert>
#include <cmath>

namespace quorvex {

void DataClass::GenerateTable(std::vector<std::vector<double>> X, std::vector<double> Y) {
  const auto limits = [](const std::vector<double>& column) -> Limits {
    if (column.empty()) return {};
    const auto [least, most] = std::minmax_element(column.begin(), column.end());
    return {*least, *most};
  };
  limits_.clear();
  for (const std::vector<double>& column : X) {
    assert(column.size() == Y.size());
    limits_.push_back(limits(column));
  }
  InputYMin = limits(Y).Min;
  InputYMax = limits(Y).Max;
  X_ = std::move(X);
  Y_ = std::move(Y);
  CopyMaxMinErrorDataFrom({}, {});
}

bool DataClass::GenerateErrorTable(std::vector<double> SD) {
  CopyMaxMinErrorDataFrom({}, {});
  if (SD.size() != Y_.size()) return false;
  std::vector<double> max = Y_, min = Y_;
  for (std::size_t i = 0; i < SD.size(); ++i) {
    max[i] += SD[i];
    min[i] -= SD[i];
    if (!std::isfinite(max[i]) || !std::isfinite(min[i])) return false;
  }
  CopyMaxMinErrorDataFrom(std::move(max), std::move(min));
  return true;
}

void DataClass::CopyMaxMinErrorDataFrom(std::vector<double> max, std::vector<double> min) {
  assert(max.size() == min.size() && (max.empty() || max.size() == Y_.size()));
  YMaxError_ = std::move(max);
  YMinError_ = std::move(min);
  ErrorInfo = !YMaxError_.empty();
}

}  // namespace quorvex
