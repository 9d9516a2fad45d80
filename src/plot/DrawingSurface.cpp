#include "plot/DrawingSurface.h"

#include <algorithm>
#include <limits>

#include "core/NumberText.h"

namespace quorvex {

std::int32_t DrawingSurface::PenScale() const {
  constexpr double kScreenTwips = 15;
  const double twips = TwipsPerPixelX();
  return twips == 0 ? 1 : std::max(RoundToInt32(kScreenTwips / twips), 1);
}

std::int32_t DrawingSurface::OnPixel(std::int32_t at) const {
  const std::int32_t units = UnitsPerPixel(), up = at + units / 2, beyond = up % units;
  return up - (beyond < 0 ? beyond + units : beyond);
}

std::int32_t MulDiv(std::int32_t a, std::int32_t b, std::int32_t c) {
  using Limits = std::numeric_limits<std::int32_t>;
  if (c == 0) return -1;
  std::int64_t product = std::int64_t{a} * b, divisor = c;
  if (divisor < 0) {
    product = -product;
    divisor = -divisor;
  }
  const std::int64_t result = (product + (product < 0 ? -divisor : divisor) / 2) / divisor;
  return result < Limits::min() || result > Limits::max() ? -1 : static_cast<std::int32_t>(result);
}

}  // namespace quorvex
