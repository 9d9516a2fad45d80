#pragma once

#include <functional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "calculator/CalculatorFault.h"
#include "calculator/Operations.h"

namespace quorvex {

using Column = std::vector<double>;

inline Column XOf(const StackEntry& entry) {
  const auto x = std::get<PlotSeries>(entry).CopyDataTo().X;
  return {x.begin(), x.end()};
}
inline Column YOf(const StackEntry& entry) {
  const auto y = std::get<PlotSeries>(entry).CopyDataTo().Y;
  return {y.begin(), y.end()};
}
inline double NumberOf(const StackEntry& entry) { return std::get<Numberclass>(entry).Value(); }

inline PlotSeries Curve(Column x, Column y, const std::string& legend = "c") {
  return NewCurve(std::move(x), std::move(y), legend);
}

// What the work fails with; Unknown where it doesn't.
inline CalculatorError ErrorOf(const std::function<void()>& work) {
  try {
    work();
  } catch (const CalculatorFault& fault) {
    return fault.Error;
  }
  return CalculatorError::Unknown;
}

}  // namespace quorvex
