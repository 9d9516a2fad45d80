#pragma once

#include <cstdint>

namespace quorvex {

// Where an axis begins and ends, in data units, and in how many major divisions: decades where it is logarithmic.
struct AxisLimits {
  double Min = 0, Max = 0;
  int Ticks = 0;
  bool Log = false;

  bool operator==(const AxisLimits&) const = default;
};

// The largest multiple of m at or below x.
double RoundDownToMultiple(double x, double m);

// Limits around [min, max] for a linear axis whose step is 1, 2 or 5 times a power of ten: five to eleven major
// divisions for most ranges. A range of zero becomes min - 1 to max + 1. Throws NumericFault for limits that are
// not finite, or so large that one more or less is lost in them.
AxisLimits NiceAxisLimits(double min, double max);

// Whole decades around [min, max], at least one, for a logarithmic axis. Where a limit isn't positive the axis turns
// linear. Throws NumericFault as above.
AxisLimits RecomputeLogAxisLimits(double min, double max);

// The one or the other, for data between min and max.
AxisLimits AutomaticLimits(double min, double max, bool log);

// The map between an axis and the device: a data value, its log10 on a logarithmic axis, times Scale plus Offset.
struct AxisMap {
  double Scale = 0, Offset = 0;
  bool Log = false;
  std::int32_t OutOfRange = 0;  // the coordinate of what cannot be drawn

  // The axis from `first` to `last`, in device units, for data between min and max.
  static AxisMap Between(double min, double max, bool log, std::int32_t first, std::int32_t last,
                         std::int32_t penScale = 1);

  // The nearest device unit. A value <= 0 on a logarithmic axis, and what is no number, gets OutOfRange; what lies
  // farther off than a billion units comes back to there.
  std::int32_t ToDevice(double value) const;
  double ToData(double device) const;
};

}  // namespace quorvex
