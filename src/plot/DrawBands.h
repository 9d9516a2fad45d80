#pragma once

#include <cstdint>

#include "plot/DeviceMetrics.h"
#include "plot/PlotClass.h"

namespace quorvex {

// The colours of a band: those of its curve, mixed with what it lies upon.
struct BandColors {
  std::int32_t Area = 0, Edge = 0;
};
BandColors ColorsOfBand(BandKind kind, std::int32_t curve, std::int32_t background);

// What a plot lies upon on that device.
std::int32_t PaperColor(const PlotPage& plot, const DeviceMetrics& metrics);

// Fills the bands of all series, within the frame, prediction first, which lies around confidence, and those of the
// first series last, which is the best of several models and has the narrower ones; then draws their edges, so that
// bands that cover each other can be told apart. Where a curve has no limits its band is interrupted.
void DrawBands(DrawingSurface& surface, const DeviceMetrics& metrics, const PlotPicture& picture,
               const PlotClass& plot);

}  // namespace quorvex
