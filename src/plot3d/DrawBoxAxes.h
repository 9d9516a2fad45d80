#pragma once

#include "plot3d/DrawBox.h"

namespace quorvex {

// Each axis is at that of the four edges where its numbers stand beside the box: below or, of the vertical one, at the
// left. One that is seen from its end shows nothing.

// Draws the ticks, which point outward.
void DrawBoxTicks(DrawingSurface& surface, const PlotClass3D& plot, const DeviceMetrics& metrics,
                  const BoxProjection& box);

// Draws the numbers, but none that would run into others, and the titles, which run along their axes. A title that
// finds no room next to other texts and `pageTitle` is shortened.
void DrawBoxNumbers(DrawingSurface& surface, const PlotClass3D& plot, const DeviceMetrics& metrics,
                    const BoxMargins& around, const BoxProjection& box, const DeviceRect& pageTitle);

}  // namespace quorvex
