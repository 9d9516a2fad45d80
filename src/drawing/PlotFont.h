#pragma once

#include <cstdint>
#include <string>

#include "drawing/DrawingSurface.h"

namespace quorvex {

// The sizes that a plot has for its fonts, in points.
inline constexpr double kSmallestFont = 1, kLargestFont = 144;

// A font of a plot's title, numbers, legend or footnote.
struct PlotFont {
  std::string Name = "Arial";
  double Size = 10;  // points
  bool Bold = false, Italic = false;
  bool operator==(const PlotFont&) const = default;
};

// Makes the font on a surface, at a percentage of its size and `angle` degrees from the horizontal, counterclockwise.
SurfaceObject CreatePlotFont(const PlotFont& font, int angle, DrawingSurface& surface, int percent = 100);

}  // namespace quorvex
