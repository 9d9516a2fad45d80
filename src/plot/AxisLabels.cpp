#include "plot/AxisLabels.h"

#include <algorithm>
#include <cmath>

#include "core/NumberText.h"
#include "core/NumericFault.h"
#include "core/SerialDate.h"

namespace quorvex {
namespace {

int IntegerDigits(double v) { return v < 1 ? 0 : RoundToInt16(std::log10(v) + 1); }

std::string WithDecimals(int decimals, const char* exponent) {
  return "0.0" + std::string(static_cast<std::size_t>(std::max(decimals - 1, 0)), '0') + exponent;
}

double StepOf(const AxisLimits& limits) { return (limits.Max - limits.Min) / limits.Ticks; }

bool IsWhole(double value) { return value == std::floor(value); }

enum class Notation { Plain, Exponent };

// How many decimals tell each tick to a fiftieth of a step: those of the numbers themselves or, where they are written
// with an exponent, of what stands before it. One at least.
int DecimalsForTicks(const AxisLimits& limits, Notation notation) {
  constexpr int kMost = 17;  // a double has no more
  const double step = StepOf(limits), allowed = std::abs(step) / 50;
  int decimals = 1;
  for (int i = 0; i <= limits.Ticks; ++i) {
    const double tick = std::abs(limits.Min + i * step);
    const double unit = notation == Notation::Exponent && tick > 0 ? std::pow(10.0, std::floor(std::log10(tick))) : 1;
    const auto isTold = [&] {
      const double scale = std::pow(10.0, decimals) / unit;
      return std::abs(tick * scale - std::nearbyint(tick * scale)) <= allowed * scale;
    };
    while (decimals < kMost && !isTold()) ++decimals;
  }
  return decimals;
}

}  // namespace

std::string BuildAutoLabelFormat(const AxisLimits& limits, bool rows) {
  if (limits.Log) return "0.0E+00";
  if (rows && IsWhole(limits.Min) && IsWhole(StepOf(limits))) return "0";
  const double a = std::max(std::abs(limits.Min), std::abs(limits.Max));
  if (a > 1e-7 && a < 1e7) return WithDecimals(DecimalsForTicks(limits, Notation::Plain), "");
  int decimals = DecimalsForTicks(limits, Notation::Exponent);
  if (a >= 1e7) {
    const int d = IntegerDigits(a) - IntegerDigits(StepOf(limits));
    decimals = std::max(decimals, d < 8 ? d + 1 : 0);
  }
  return WithDecimals(decimals, "E+00");
}

std::vector<std::string> FillAxisLabels(const AxisLimits& limits, const std::string& format) {
  std::vector<std::string> labels;
  if (limits.Log) {
    const int last = RoundToInt16(std::log10(limits.Min));
    for (int e = RoundToInt16(std::log10(limits.Max)); e >= last; --e)
      labels.push_back(FormatNumber(std::pow(10.0, e), format));
    return labels;
  }
  const double step = StepOf(limits);
  if (!std::isfinite(step)) throw NumericFault();
  // The tick that stands for zero, counted from 1; subtracting steps would rarely meet it. Limits that are multiples of
  // the step are so but for their last bits, and the quotient may miss the whole number by as much.
  constexpr double kLastBits = 1e-12;
  const double zeroIndex = 1 + limits.Ticks * limits.Max / (limits.Max - limits.Min);
  double value = limits.Max;
  for (int i = 1; i <= limits.Ticks + 1; ++i) {
    labels.push_back(FormatNumber(value, format));
    // The last tick is the limit itself, which subtracting steps would miss by rounding.
    if (i >= limits.Ticks)
      value = limits.Min;
    else
      value = std::abs(i + 1 - zeroIndex) < kLastBits ? 0 : value - step;
  }
  return labels;
}

std::vector<std::string> MakeAxisLabels(const AxisLimits& limits, std::string& format, bool autoFormat, bool rows) {
  // Dates suit every scale.
  if (autoFormat && !IsDatePattern(format)) format = BuildAutoLabelFormat(limits, rows);
  return FillAxisLabels(limits, format);
}

}  // namespace quorvex
