#pragma once

#include "plot3d/PlotClass3D.h"

namespace quorvex {

// Draws the surface of a model from the far side of the box to the near one, so that near cells cover far ones: as
// lines, filled, or coloured by its values; not at all where its style has neither line nor filling. False where its
// table is no mesh.
bool DrawSurface(DrawingSurface& surface, const PlotSeries& model, const PlotClass3D& plot,
                 const DeviceMetrics& metrics, const BoxProjection& projection);

}  // namespace quorvex
