#pragma once

#include <algorithm>
#include <cmath>

#include "drawing/LinePattern.h"
#include "drawing/SurfaceObjects.h"

namespace quorvex {

// The style of a pen that draws nothing.
inline constexpr int kNoLine = 5;

// How a pen's lines look on pixels: on screen, and so in pictures that are to look the same.
struct PenLook {
  PenLook(const SurfacePen& pen, const DrawingSurface& surface)
      : Width(std::max(Rounded(1.0 * pen.Width / surface.UnitsPerPixel()), 1)),
        Shift(Width % 2 == 0 ? 0 : 0.5),
        FlatEnds(pen.Width <= surface.PenScale()),
        Pattern(pen.Style, Rounded(1.0 * pen.Width / surface.PenScale()),
                1.0 * surface.PenScale() / surface.UnitsPerPixel()) {}

  int Width;            // in pixels
  double Shift;         // a place is the middle of its pixel, but crisp lines of an even width lie between two
  bool FlatEnds;        // the thinnest lines end where they are told to, so that their patterns keep their gaps
  LinePattern Pattern;  // in pixels

 private:
  static int Rounded(double width) { return static_cast<int>(std::lround(width)); }
};

}  // namespace quorvex
