#include "plot3d/MeshCell.h"

namespace quorvex {
namespace {

bool Crosses(const SurfacePlace& a, const SurfacePlace& b, double height) {
  return (a.z < height && height < b.z) || (b.z < height && height < a.z);
}

// Computed upward, whichever way round the edge is gone.
SurfacePlace Crossing(const SurfacePlace& a, const SurfacePlace& b, double height) {
  const SurfacePlace &low = a.z < b.z ? a : b, &high = a.z < b.z ? b : a;
  const double t = (height - low.z) / (high.z - low.z);
  return {low.x + t * (high.x - low.x), low.y + t * (high.y - low.y), height};
}

}  // namespace

CellPart CutCell(const MeshCell& cell, const HeightRange& range) {
  CellPart part;
  for (std::size_t i = 0; i < cell.size(); ++i) {
    const SurfacePlace &from = cell[i], &to = cell[(i + 1) % cell.size()];
    if (range.Contains(from.z)) part.Add(from);
    const bool up = from.z < to.z;
    for (const double limit : {up ? range.Low : range.High, up ? range.High : range.Low})
      if (Crosses(from, to, limit)) part.Add(Crossing(from, to, limit));
  }
  return part;
}

}  // namespace quorvex
