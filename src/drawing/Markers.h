#pragma once

#include <cstdint>
#include <span>

#include "drawing/DrawingSurface.h"

namespace quorvex {

// Draws a marker at each point (xs[i], ys[i]), but only one of several that follow each other on one pixel, and none
// beyond +-50000 units of penScale, where the mapping of a series puts what cannot be drawn. All are alike, and so they
// stand on whole pixels. Styles: 0 circle, 1 square, 2 diagonal
// cross, 3 upright cross, 4 triangle pointing up, 5 down, and filled: 6 circle, 7 square, 8 triangle up, 9 down. A
// style that is none of these draws nothing. `radius`, in device units, reaches from the middle to an edge or tip.
void DrawMarkers(DrawingSurface& surface, std::span<const std::int32_t> xs, std::span<const std::int32_t> ys,
                 std::int32_t colour, int style, std::int32_t radius, std::int32_t penScale);

}  // namespace quorvex
