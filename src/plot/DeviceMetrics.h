#pragma once

#include <cstdint>

#include "plot/PageSetup.h"

namespace quorvex {

// The measures of a drawing, in device units, taken afresh each time so that a plot suits any device.
struct DeviceMetrics {
  std::int32_t Width = 0, Height = 0;                                   // of the page
  DeviceRect Margins;                                                   // of a printer's page
  std::int32_t Margin4X = 0, Margin4Y = 0, Margin2X = 0, Margin2Y = 0;  // 4 mm and 2 mm
  std::int32_t DevicePpi = 0;                                           // units per inch, both directions averaged
  std::int32_t MajorTick = 0, MinorTick = 0;
  std::int32_t PenScale = 1;
  bool BlankPaper = false;  // a printer's page whose background isn't printed

  // Where titles may stand: within the margins, and off the edge by 2 mm.
  DeviceRect TitleArea() const;

  // From the middle of a marker of a size in points to its edge, and of an error bar's cap to its end.
  std::int32_t MarkerRadius(std::int32_t size) const;
  std::int32_t ErrorCap() const;

  // Of the surface, with ticks of a length in inches.
  static DeviceMetrics Measure(const DrawingSurface& surface, const PageSetup& page, double TickPenLength);
};

// Fills the page with the plot's background, unless it is blank paper.
void DrawPageBackground(DrawingSurface& surface, const DeviceMetrics& metrics, std::int32_t colour);

}  // namespace quorvex
