#include <cmath>
#include <limits>

#include "core/NumberText.h"
#include "core/NumericFault.h"

namespace quorvex {
namespace {

// The range is looked at before the conversion, which is undefined beyond it; NaN is in no range.
template <typename Integer>
Integer RoundTo(double value) {
  const double rounded = std::nearbyint(value);
  if (!(rounded >= std::numeric_limits<Integer>::min() && rounded <= std::numeric_limits<Integer>::max()))
    throw NumericFault();
  return static_cast<Integer>(rounded);
}

}  // namespace

std::int16_t RoundToInt16(double value) { return RoundTo<std::int16_t>(value); }
std::int32_t RoundToInt32(double value) { return RoundTo<std::int32_t>(value); }

}  // namespace quorvex
