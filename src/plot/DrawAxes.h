#pragma once

#include "drawing/PlotText.h"
#include "plot/DeviceMetrics.h"
#include "plot/LabelStrip.h"
#include "plot/PlotClass.h"

namespace quorvex {

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
