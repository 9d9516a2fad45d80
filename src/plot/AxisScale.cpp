#include "plot/AxisScale.h"

#include <algorithm>
#include <cmath>

#include "core/NumberText.h"
#include "core/NumericFault.h"
#include "drawing/StyledLines.h"

namespace quorvex {
namespace {

// Far beyond any device, so that a line to a point out there keeps its direction, and well within 32 bits.
constexpr double kFarthest = 1e9;

AxisLimits Checked(const AxisLimits& limits) {
  if (!std::isfinite(limits.Min) || !std::isfinite(limits.Max)) throw NumericFault();
  return limits;
}

}  // namespace

double RoundDownToMultiple(double x, double m) {
  const double rem = x - std::floor(x / m) * m;
  if (rem == 0) return x;
  return rem > 0 ? x - rem : x - (m + rem);  // below 0 where the quotient was rounded up to a whole number
}

AxisLimits NiceAxisLimits(double min, double max) {
  double range = max - min;
  if (range <= 0) {
    max += 1;
    min -= 1;
    range = max - min;
  }
  const double p = std::pow(10.0, RoundToInt16(std::floor(std::log10(range))));
  const double r = range / p;
  // A step is m tenths of p, the power of ten next below the range.
  const double m = r <= 1 ? 1 : r <= 2 ? 2 : r <= 5 ? 5 : 10;
  min = RoundDownToMultiple(min * 10 / p, m) * p / 10;
  const double t = (max - min) / p * 10 / m;
  const double n = t - std::floor(t) <= 1e-99 ? std::floor(t) : std::floor(t + 1);
  return Checked({min, n * p * m / 10 + min, RoundToInt16(n), false});
}

AxisLimits RecomputeLogAxisLimits(double min, double max) {
  if (min <= 0 || max <= 0) return NiceAxisLimits(min, max);
  // From beyond the limit step by step: the logarithm of a power of ten may be off by its last digit.
  int lo = RoundToInt16(std::log10(min) + 1);
  while (std::pow(10.0, lo) > min) --lo;
  int hi = RoundToInt16(std::log10(max) - 1);
  while (std::pow(10.0, hi) < max) ++hi;
  // Data at a single power of ten still need a decade to stand in.
  if (hi == lo) --lo;
  return Checked({std::pow(10.0, lo), std::pow(10.0, hi), hi - lo, true});
}

AxisLimits AutomaticLimits(double min, double max, bool log) {
  return log ? RecomputeLogAxisLimits(min, max) : NiceAxisLimits(min, max);
}

AxisMap AxisMap::Between(double min, double max, bool log, std::int32_t first, std::int32_t last,
                         std::int32_t penScale) {
  if (log) {
    min = std::log10(min);
    max = std::log10(max);
  }
  const double scale = (last - first) / (max - min);
  return {scale, first - scale * min, log, kOutOfRange * penScale};
}

std::int32_t AxisMap::ToDevice(double value) const {
  if (Log && value <= 0) return OutOfRange;
  const double device = (Log ? std::log10(value) : value) * Scale + Offset;
  if (std::isnan(device)) return OutOfRange;
  return static_cast<std::int32_t>(std::lrint(std::clamp(device, -kFarthest, kFarthest)));
}

double AxisMap::ToData(double device) const {
  const double value = (device - Offset) / Scale;
  return Log ? std::pow(10.0, value) : value;
}

}  // namespace quorvex
