#pragma once

#include <optional>
#include <vector>

#include "engine/ModelClass.h"
#include "plot3d/BoxProjection.h"
#include "plot3d/MeshCell.h"

namespace quorvex {

// The surface of a model as a mesh of nodes, which stand where they are seen.
class SurfaceMesh {
 public:
  // From a model's table; nothing where that is no mesh over two variables. A mesh over a single value of a variable
  // may have no cells.
  static std::optional<SurfaceMesh> Of(const ModelClass& model, const BoxProjection& projection);

  // The least and the greatest height; of no nodes, a range that contains nothing.
  HeightRange Heights() const;

  // Calls `draw` with each cell that has a node within the limits and all nodes in a place, from the far end of the box
  // to the near one, X2 changing fastest.
  template <typename Draw>
  void EachCell(const BoxView& view, const HeightRange& limits, Draw draw) const;

 private:
  SurfaceMesh(std::size_t rows, std::size_t columns) : rows_(rows), columns_(columns), nodes_(rows * columns) {}

  const SurfacePlace& Node(std::size_t row, std::size_t column) const { return nodes_[row * columns_ + column]; }
  static bool IsDrawn(const MeshCell& cell, const HeightRange& limits);

  std::size_t rows_, columns_;       // nodes along X1 and along X2
  std::vector<SurfacePlace> nodes_;  // row by row
};

template <typename Draw>
void SurfaceMesh::EachCell(const BoxView& view, const HeightRange& limits, Draw draw) const {
  // Both upward where the viewer looks at the upper ends of X1 and X2, both downward where at the lower ones, and one
  // each way from between.
  const bool rowsUp = view.NearP() > 0, columnsUp = view.NearQ() > 0;
  for (std::size_t i = 0; i + 1 < rows_; ++i)
    for (std::size_t j = 0; j + 1 < columns_; ++j) {
      const std::size_t row = rowsUp ? i : rows_ - 2 - i, column = columnsUp ? j : columns_ - 2 - j;
      const MeshCell cell = {Node(row, column + 1), Node(row + 1, column + 1), Node(row + 1, column),
                             Node(row, column)};
      if (IsDrawn(cell, limits)) draw(cell);
    }
}

}  // namespace quorvex
