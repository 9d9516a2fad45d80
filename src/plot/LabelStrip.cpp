#include "plot/LabelStrip.h"

#include <algorithm>

namespace quorvex {

LabelStrip MeasureLabels(DrawingSurface& surface, const PlotAxis& axis, std::int32_t most) {
  const SurfaceObject font = CreatePlotFont(axis.AxisNumberFont, 0, surface);
  const Selection inUse(surface, font);
  LabelStrip strip;
  for (const std::string& label : axis.Labels) {
    const DeviceExtent extent = surface.GetTextExtentPoint32A(label);
    strip.Each.push_back(extent);
    strip.Width = std::max(strip.Width, extent.cx);
    strip.Height = std::max(strip.Height, extent.cy);
  }
  return strip.Width > most ? LabelStrip() : strip;
}

}  // namespace quorvex
