#pragma once

#include <span>
#include <vector>

#include "drawing/DrawingSurface.h"

namespace quorvex {

// The facets of a surface, in the order in which they are painted, without outlines and by programs that smooth edges:
// between the smoothed edges of two neighbours the ground would shine through. So each facet grows by every later one
// on the other side of one of its edges, which then covers what it has grown by. No colour is seen beyond its own
// facet, and the rim of the whole stays where it is. Neighbours have both corners of an edge in common.
std::vector<std::vector<DevicePoint>> ReachUnderLater(std::span<const std::vector<DevicePoint>> facets);

}  // namespace quorvex
