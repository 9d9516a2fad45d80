#pragma once

#include <array>
#include <cmath>

namespace quorvex {

// Where a quantity lies with some probability; NaN for an end that could not be computed, infinite for one that is not
// there.
struct Interval {
  double Lower = NAN, Upper = NAN;
};

// The levels of all reports, in percent.
inline constexpr std::array<int, 4> kLimitLevels = {68, 90, 95, 99};
using LimitsByLevel = std::array<Interval, kLimitLevels.size()>;

}  // namespace quorvex
