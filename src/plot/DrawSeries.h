#pragma once

#include "plot/DeviceMetrics.h"
#include "plot/PlotClass.h"

namespace quorvex {

// Draws a series' line and markers within the frame, each only as far as the series shows it. False where the series
// has no points. The line of a model or an interpolation follows its bends between the points of its table, unless the
// plot wants none but the fitted ones.
bool DrawSeries(DrawingSurface& surface, const PlotSeries& series, const DeviceMetrics& metrics,
                const PlotPicture& picture, const PlotClass& plot);

// Draws the error bars of a series, within the frame: those of points whose X lies between the limits of its axis.
void DrawErrorBars(DrawingSurface& surface, const PlotSeries& series, const DeviceMetrics& metrics,
                   const PlotPicture& picture, const PlotClass& plot);

}  // namespace quorvex
