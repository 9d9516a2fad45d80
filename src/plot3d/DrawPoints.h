#pragma once

#include "plot3d/PlotClass3D.h"

namespace quorvex {

// Draws the points of a set of data, as its style has line and markers. Points outside the limits are left out, and so
// are those that a logarithmic axis has no place for; a line goes on without them.
void DrawScatter(DrawingSurface& surface, const PlotSeries& data, const DeviceMetrics& metrics,
                 const BoxProjection& projection);

// Draws the error bars of the points within the limits along the vertical axis, the parts above and below the point in
// a colour each. A bar ends in a cap, or without one at a limit.
void DrawErrorBars3D(DrawingSurface& surface, const PlotSeries& data, const PlotClass3D& plot,
                     const DeviceMetrics& metrics, const BoxProjection& projection);

// Draws a line from each input point of a model to its surface, in the colour for points above or below it. Of the two
// ends one must be within the limits, where the line ends.
void DrawResidualBars3D(DrawingSurface& surface, const PlotSeries& model, const PlotClass3D& plot,
                        const DeviceMetrics& metrics, const BoxProjection& projection);

}  // namespace quorvex
