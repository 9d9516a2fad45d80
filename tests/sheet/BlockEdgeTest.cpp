#include <gtest/gtest.h>

#include "sheet/BlockEdge.h"

namespace quorvex {
namespace {

TEST(BlockEdge, EndsBlocksAndCrossesGaps) {
  GridCells cells;
  for (const std::size_t row : {1u, 2u, 3u, 6u, 8u, 9u}) cells.SetGridCellNumber(row, 1, 0);
  cells.SetGridCellText(3, 2, "text");  // holds something, too
  const CellPlace last{20, 3};
  const struct {
    CellPlace From;
    int Rows, Columns;
    CellPlace To;
  } kCases[] = {
      {{1, 1}, 1, 0, {3, 1}},  {{3, 1}, 1, 0, {6, 1}},   {{6, 1}, 1, 0, {8, 1}},   {{4, 1}, 1, 0, {6, 1}},
      {{9, 1}, 1, 0, {20, 1}}, {{20, 1}, 1, 0, {20, 1}}, {{20, 1}, -1, 0, {9, 1}}, {{9, 1}, -1, 0, {8, 1}},
      {{3, 1}, -1, 0, {1, 1}}, {{1, 1}, -1, 0, {1, 1}},  {{3, 1}, 0, 1, {3, 2}},   {{3, 2}, 0, 1, {3, 3}},
      {{3, 3}, 0, -1, {3, 2}}, {{3, 2}, 0, -1, {3, 1}},  {{1, 3}, 1, 0, {20, 3}},  {{3, 1}, 0, -1, {3, 1}},
  };
  for (const auto& c : kCases)
    EXPECT_EQ(BlockEdge(cells, c.From, c.Rows, c.Columns, last), c.To)
        << c.From.Row << ":" << c.From.Col << " by " << c.Rows << ", " << c.Columns;
}

}  // namespace
}  // namespace quorvex
