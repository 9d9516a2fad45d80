#include "plot3d/SurfaceMesh.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace quorvex {

std::optional<SurfaceMesh> SurfaceMesh::Of(const ModelClass& model, const BoxProjection& projection) {
  if (model.Statistics.X.size() != 2) return std::nullopt;
  const SeriesTable table = model.CopyDataTo(1);
  const std::span<const double> X1 = table.X, X2 = model.CopyDataTo(2).X, Y = table.Y;
  if (X1.empty()) return std::nullopt;
  // X1 changes slowest: a row ends where it changes or, over input that has only one value of it, where X2 begins anew.
  std::size_t columns = 1;
  while (columns < X1.size() && X1[columns] == X1[0] && (X2[columns] != X2[0] || X2[columns - 1] == X2[0])) ++columns;
  if (X1.size() % columns != 0) return std::nullopt;

  SurfaceMesh mesh(X1.size() / columns, columns);
  for (std::size_t i = 0; i < X1.size(); ++i) {
    const double z = projection.Axis(2).Plotted(Y[i]);
    const DevicePlace place = projection.Place(projection.Axis(0).Plotted(X1[i]), projection.Axis(1).Plotted(X2[i]), z);
    const bool hasPlace = std::isfinite(place.x) && std::isfinite(place.y) && std::isfinite(z);
    mesh.nodes_[i] = {place.x, place.y, hasPlace ? z : std::numeric_limits<double>::quiet_NaN()};
  }
  return mesh;
}

HeightRange SurfaceMesh::Heights() const {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  HeightRange heights{kInfinity, -kInfinity};
  for (const SurfacePlace& node : nodes_)
    // A height without a place compares as neither.
    heights = {node.z < heights.Low ? node.z : heights.Low, node.z > heights.High ? node.z : heights.High};
  return heights;
}

bool SurfaceMesh::IsDrawn(const MeshCell& cell, const HeightRange& limits) {
  const auto hasPlace = [](const SurfacePlace& node) { return !std::isnan(node.z); };
  const auto isWithin = [&](const SurfacePlace& node) { return limits.Contains(node.z); };
  return std::all_of(cell.begin(), cell.end(), hasPlace) && std::any_of(cell.begin(), cell.end(), isWithin);
}

}  // namespace quorvex
