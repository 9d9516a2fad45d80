#include <gtest/gtest.h>

#include <random>

#include "plot3d/MeshCell.h"

namespace quorvex {
namespace {

using Corners = std::vector<std::array<double, 3>>;

Corners CornersOf(const CellPart& part) {
  Corners corners;
  for (const SurfacePlace& corner : part.Corners()) corners.push_back({corner.x, corner.y, corner.z});
  return corners;
}

TEST(CutCell, KeepsWhatLiesBetweenTheLimits) {
  // A square of 12 by 12 units with these heights at (0, 0), (12, 0), (12, 12), (0, 12), cut to 0 to 3.
  const struct {
    const char* what;
    std::array<double, 4> heights;
    Corners expected;
  } kCases[] = {
      {"all", {1, 2, 3, 0}, {{0, 0, 1}, {12, 0, 2}, {12, 12, 3}, {0, 12, 0}}},
      {"but a corner", {1, 1, 7, 1}, {{0, 0, 1}, {12, 0, 1}, {12, 4, 3}, {4, 12, 3}, {0, 12, 1}}},
      {"a corner", {-5, -5, 1, -5}, {{12, 10, 0}, {12, 12, 1}, {10, 12, 0}}},
      {"two of four", {2, 2, -2, -2}, {{0, 0, 2}, {12, 0, 2}, {12, 6, 0}, {0, 6, 0}}},
      {"a strip without a corner", {-1, -1, 5, 5}, {{12, 2, 0}, {12, 8, 3}, {0, 8, 3}, {0, 2, 0}}},
      {"a corner and its surroundings",
       {1, 7, -5, 7},
       {{0, 0, 1}, {4, 0, 3}, {12, 4, 3}, {12, 7, 0}, {7, 12, 0}, {4, 12, 3}, {0, 4, 3}}},
      {"an octagon",
       {-3, 6, -3, 6},
       {{4, 0, 0}, {8, 0, 3}, {12, 4, 3}, {12, 8, 0}, {8, 12, 0}, {4, 12, 3}, {0, 8, 3}, {0, 4, 0}}},
      {"corners at the limits", {0, 3, 3, 0}, {{0, 0, 0}, {12, 0, 3}, {12, 12, 3}, {0, 12, 0}}},
      {"an edge at the limit", {3, 3, 5, 5}, {{0, 0, 3}, {12, 0, 3}}},
      {"a corner at the limit", {0, -1, -1, -1}, {{0, 0, 0}}},
      {"nothing", {4, 5, 4, 5}, {}},
  };
  for (const auto& c : kCases) {
    const MeshCell cell = {
        {{0, 0, c.heights[0]}, {12, 0, c.heights[1]}, {12, 12, c.heights[2]}, {0, 12, c.heights[3]}}};
    EXPECT_EQ(CornersOf(CutCell(cell, {0, 3})), c.expected) << c.what;
  }
}

TEST(CutCell, CutsACommonEdgeAtThePlaceOfItsNeighbour) {
  std::mt19937 random(5);
  std::uniform_real_distribution<double> somewhere(-1000, 1000);
  const auto place = [&] { return SurfacePlace{somewhere(random), somewhere(random), somewhere(random)}; };
  for (int i = 0; i < 1000; ++i) {
    const SurfacePlace a = place(), b = place();
    // Of these cells the common edge alone crosses anything.
    const Corners one = CornersOf(CutCell({a, b, b, b}, {-100, 100})),
                  other = CornersOf(CutCell({b, a, a, a}, {-100, 100}));
    for (const auto& corner : one)
      if (corner[2] == -100 || corner[2] == 100) {
        EXPECT_NE(std::find(other.begin(), other.end(), corner), other.end());
      }
  }
}

}  // namespace
}  // namespace quorvex
