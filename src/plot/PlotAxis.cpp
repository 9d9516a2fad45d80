#include "plot/PlotAxis.h"

#include "plot/PlotDefaults.h"

namespace quorvex {
namespace {

template <typename Io, typename Axis>
void ListDefaults(const Io& io, Axis& axis, const std::string& prefix, const std::string& suffix) {
  io.Font(prefix + "axistitle", suffix, axis.AxisTitleFont, axis.AxisTitleColor);
  io.Font(prefix + "axisnumber", suffix, axis.AxisNumberFont, axis.AxisNumberColor);
  io(prefix + "labelstring" + suffix, axis.LabelString);
  io(prefix + "logscale" + suffix, axis.LogScale);
}

bool IsWhole(double value) { return value == std::floor(value); }

}  // namespace

AxisLimits PlotAxis::AutomaticLimits(double min, double max, bool log) const {
  AxisLimits limits = quorvex::AutomaticLimits(min, max, log);
  const double rows = limits.Max - limits.Min;
  if (CountsRows() && !limits.Log && IsWhole(limits.Min) && IsWhole(limits.Max) && rows < limits.Ticks)
    limits.Ticks = static_cast<int>(rows);
  return limits;
}

void PlotAxis::Take(const AxisLimits& limits) {
  Min = limits.Min;
  Max = limits.Max;
  NumMajorTicks = static_cast<std::int16_t>(limits.Ticks);
  LogScale = limits.Log;
  if (LogScale) NumMinorTicks = 10;
}

void PlotAxis::Read(const Settings& settings, const std::string& prefix, const std::string& suffix) {
  AxisNumberFont.Size = 8;
  ListDefaults(ReadDefaults(settings), *this, prefix, suffix);
}

void PlotAxis::Store(Settings& settings, const std::string& prefix, const std::string& suffix) const {
  ListDefaults(KeepDefaults(settings), *this, prefix, suffix);
}

}  // namespace quorvex
