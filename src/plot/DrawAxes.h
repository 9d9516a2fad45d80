#pragma once

#include <cstdint>
#include <vector>

#include "plot/DeviceMetrics.h"
#include "plot/PlotClass.h"
#include "plot/PlotText.h"

namespace quorvex {

// The numbers of an axis as measured on a surface: what the strip beside the frame needs, and each one's own extent.
struct LabelStrip {
  std::vector<DeviceExtent> Each;      // in the order of the labels, unturned
  std::int32_t Width = 0, Height = 0;  // the largest of each; of the turned text where Slanted
  bool Slanted = false;                // at 45 degrees, since they would crowd each other side by side
};

// What stands around the frame and decides where it lies. With SwapAxis the X axis is the one at the left.
struct PlotMargins {
  PlotText Title, LeftTitle, BottomTitle;
  LabelStrip LeftLabels, BottomLabels;
};

// Takes the measures of titles and numbers on a surface.
PlotMargins MeasurePlot(DrawingSurface& surface, const PlotClass& plot, const DeviceMetrics& metrics);

// The frame that they leave room for.
DeviceRect ComputePlotRect(const PlotMargins& around, const DeviceMetrics& metrics, bool square);

// Draws the frame, its titles, ticks, grids and numbers.
void DrawAxes(DrawingSurface& surface, const PlotClass& plot, const DeviceMetrics& metrics, const PlotMargins& around,
              const DeviceRect& frame);

}  // namespace quorvex
