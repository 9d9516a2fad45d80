#pragma once

#include <cstdint>
#include <span>

#include "drawing/DrawingSurface.h"

namespace quorvex {

// Lines in the plots' five styles: 0 solid, 1 dash, 2 dot, 3 dash-dot, 4 dash-dot-dot. Any other is solid. The width is
// 1 to 10; what lies outside takes the nearer of the two. `penScale` is the surface's units to one of width, at
// least 1.

// A coordinate from which on a point counts as out of range, in either direction, at a penScale of 1: it is where the
// mapping of a series puts what cannot be drawn, such as a negative value on a logarithmic axis. Finer units reach as
// far as these do on a screen.
inline constexpr std::int32_t kOutOfRange = 50000;

// Draws a polyline through the points (xs[i], ys[i]). The first point in range starts the line; a solid line leaves out
// later ones that are not in range and joins across them, a patterned one runs through all and leaves it to the clip to
// hide what goes astray. A pattern runs on round the corners. False, with nothing drawn, where no point before the last
// is in range.
bool DrawStyledPolyline(DrawingSurface& surface, std::span<const std::int32_t> xs, std::span<const std::int32_t> ys,
                        int style, std::int32_t width, std::int32_t colour, std::int32_t penScale);

// The same for one straight line.
bool DrawStyledSegment(DrawingSurface& surface, DevicePoint from, DevicePoint to, int style, std::int32_t width,
                       std::int32_t colour, std::int32_t penScale);

// The length at which a sample of the line in a legend ends with a whole pattern, in device units. A solid line has no
// such length and takes `defaultLength`.
std::int32_t GetLineSampleLength(int style, std::int32_t width, std::int32_t defaultLength, std::int32_t penScale);

}  // namespace quorvex
