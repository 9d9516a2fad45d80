#pragma once

#include <cstddef>
#include <span>

#include "functions/DoubleDouble.h"

namespace quorvex {

// The mean of at least one number to some 100 bits: equal values have exactly their mean, and decimals the one that
// they have on paper. Not finite where the sum overflows.
inline DoubleDouble ColumnMean(std::span<const double> values) {
  DoubleDouble sum{0, 0};
  for (const double value : values) sum = sum + DoubleDouble{value, 0};
  return sum / static_cast<double>(values.size());
}

}  // namespace quorvex
