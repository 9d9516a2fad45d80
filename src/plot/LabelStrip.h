#pragma once

#include <cstdint>
#include <vector>

#include "drawing/DrawingSurface.h"
#include "plot/PlotAxis.h"

namespace quorvex {

// The numbers of an axis as measured on a surface: what the strip beside the axis needs, and each one's own extent.
struct LabelStrip {
  std::vector<DeviceExtent> Each;      // in the order of the labels, unturned
  std::int32_t Width = 0, Height = 0;  // the largest of each; of the turned text where Slanted
  bool Slanted = false;                // at 45 degrees, since they would crowd each other side by side
};

// Numbers of more than the width `most` are left out: cut they would be others, and they are not worth the plot.
LabelStrip MeasureLabels(DrawingSurface& surface, const PlotAxis& axis, std::int32_t most);

// Calls `draw` with each number of an axis, from the smallest, its extent, and the fraction of the axis where it
// stands; with none where the strip is empty, for numbers that are left out.
template <typename Draw>
void EachLabel(const PlotAxis& axis, const LabelStrip& strip, Draw draw) {
  const std::size_t n = strip.Each.size();
  for (std::size_t i = 0; i < n; ++i)
    draw(axis.Labels[n - 1 - i], strip.Each[n - 1 - i], axis.Major(static_cast<int>(i)));
}

}  // namespace quorvex
