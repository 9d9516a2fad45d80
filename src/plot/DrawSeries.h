#pragma once

#include "plot/DeviceMetrics.h"
#include "plot/PlotClass.h"

namespace quorvex {

// Draws a series' line and markers within the frame, each only as far as the series shows it. False where the series
// has no points.
bool DrawSeries(DrawingSurface& surface, const PlotSeries& series, const DeviceMetrics& metrics,
                const PlotPicture& picture, bool SwapAxis);

// Draws the error bars of a series, within the frame: those of points whose X lies between the limits of its axis.
void DrawErrorBars(DrawingSurface& surface, const PlotSeries& series, const DeviceMetrics& metrics,
                   const PlotPicture& picture, const PlotClass& plot);

}  // namespace quorvex
