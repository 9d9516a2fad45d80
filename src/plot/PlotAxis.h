#pragma once

#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "core/Settings.h"
#include "drawing/PlotFont.h"
#include "plot/AxisScale.h"

namespace quorvex {

// What stands at an axis of the numbers of rows.
inline constexpr const char* kRowTitle = "Row";

// An axis of a plot. The fields that files and templates call XAxisTitle, XMin, NumXMajorTicks and so on are
// X.AxisTitle, X.Min, X.NumMajorTicks.
struct PlotAxis {
  std::string AxisTitle;    // with text codes
  double Min = 0, Max = 0;  // in data units, on a logarithmic axis too
  bool LogScale = false;
  std::int16_t NumMajorTicks = 10;  // major divisions; decades on a logarithmic axis
  std::int16_t NumMinorTicks = 5;   // divisions of a major one, 0 for none
  std::string LabelString;          // number pattern of the labels
  PlotFont AxisTitleFont, AxisNumberFont;
  std::int32_t AxisTitleColor = 0, AxisNumberColor = 0;
  std::vector<std::string> Labels;  // at the major ticks, largest value first; CreateGraph makes them

  AxisLimits Limits() const { return {Min, Max, NumMajorTicks, LogScale}; }
  void Take(const AxisLimits& limits);

  // An axis with the title of row numbers counts them: there is no row between two, and none has decimals.
  bool CountsRows() const { return AxisTitle == kRowTitle; }

  AxisLimits AutomaticLimits(double min, double max, bool log) const;  // around data

  // What the settings have for a new plot's axis: `prefix` is "x", "y" or "z", `suffix` "3d" in three dimensions.
  void Read(const Settings& settings, const std::string& prefix, const std::string& suffix = "");
  void Store(Settings& settings, const std::string& prefix, const std::string& suffix = "") const;

  // Where the major division `i` ends, from 1, as a fraction of the axis.
  double Major(int i) const { return i / static_cast<double>(NumMajorTicks); }

  // Calls `draw` with each place between the major ticks, as a fraction of the axis.
  template <typename Draw>
  void EachMinor(Draw draw) const;
};

template <typename Draw>
void PlotAxis::EachMinor(Draw draw) const {
  for (int i = 0; i < NumMajorTicks; ++i)
    for (int j = 1; j < NumMinorTicks; ++j) {
      // On a logarithmic axis the ticks of a decade stand at log10(1) to log10(minor - 1).
      const double part = LogScale ? std::log10(j) : j / static_cast<double>(NumMinorTicks);
      draw((i + part) / NumMajorTicks);
    }
}

}  // namespace quorvex
