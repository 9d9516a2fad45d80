#pragma once

#include <array>
#include <cstddef>
#include <span>

namespace quorvex {

// A place of a surface: device units right and down, and its height as it is plotted, NaN where it has no place.
struct SurfacePlace {
  double x = 0, y = 0, z = 0;
};

// Heights as they are plotted, both ends included.
struct HeightRange {
  double Low = 0, High = 0;
  bool Contains(double z) const { return z >= Low && z <= High; }
};

// The four nodes of a cell, around it.
using MeshCell = std::array<SurfacePlace, 4>;

// The corners of what is left of a cell, around it.
class CellPart {
 public:
  void Add(const SurfacePlace& corner) { corners_[count_++] = corner; }
  std::span<const SurfacePlace> Corners() const { return {corners_.data(), count_}; }

 private:
  std::array<SurfacePlace, 8> corners_;  // two on each edge at most
  std::size_t count_ = 0;
};

// The part of a cell whose heights are within a range. The edges are cut where they cross a limit of it, at exactly its
// height, and two cells cut their common edge at the same place.
CellPart CutCell(const MeshCell& cell, const HeightRange& range);

}  // namespace quorvex
