#pragma once

#include <array>

#include "drawing/PlotText.h"
#include "plot/LabelStrip.h"
#include "plot3d/PlotClass3D.h"

namespace quorvex {

// What stands around the box and decides how large it is.
struct BoxMargins {
  PlotText Title;
  std::array<PlotText, 3> AxisTitles;  // of X, Y and Z, whole, along axes that may run in any direction
  std::array<LabelStrip, 3> Labels;
};

// The width and the height that no number of any axis goes beyond.
DeviceExtent LargestNumber(const BoxMargins& around);

// Takes the measures of titles and numbers on a surface.
BoxMargins MeasureBox(DrawingSurface& surface, const PlotClass3D& plot, const DeviceMetrics& metrics);

// The rectangle for the box: at every angle there is room around it for what belongs to the axes.
DeviceRect ComputeBoxRect(const BoxMargins& around, const DeviceMetrics& metrics, bool square);

// Draws all that lies behind the data, and outside of the box: its far faces and edges, title, ticks, grids on the far
// faces, numbers and titles of the axes.
void DrawBox(DrawingSurface& surface, const PlotClass3D& plot, const DeviceMetrics& metrics, const BoxMargins& around,
             const BoxProjection& box, const DeviceRect& frame);

// Draws the edges in front of the data: the vertical one next to the viewer and those of the upper face that meet it.
void DrawBoxFrontEdges(DrawingSurface& surface, const PlotClass3D& plot, const BoxProjection& box);

}  // namespace quorvex
