#include "plot/PlotAxis.h"

#include "core/FontSettings.h"

namespace quorvex {

void PlotAxis::Take(const AxisLimits& limits) {
  Min = limits.Min;
  Max = limits.Max;
  NumMajorTicks = static_cast<std::int16_t>(limits.Ticks);
  LogScale = limits.Log;
  if (LogScale) NumMinorTicks = 10;
}

void PlotAxis::Read(const Settings& settings, const std::string& prefix, const std::string& suffix) {
  AxisNumberFont.Size = 8;
  ReadFontParts(settings, prefix + "axistitle", suffix, AxisTitleFont, AxisTitleColor);
  ReadFontParts(settings, prefix + "axisnumber", suffix, AxisNumberFont, AxisNumberColor);
  LabelString = settings.Text(prefix + "labelstring" + suffix);
  LogScale = settings.Flag(prefix + "logscale" + suffix);
}

}  // namespace quorvex
