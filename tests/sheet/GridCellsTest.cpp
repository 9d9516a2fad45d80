#include <gtest/gtest.h>

#include <limits>

#include "sheet/BlankMissingMarker.h"
#include "sheet/GridCells.h"

namespace quorvex {
namespace {

TEST(GridCells, HoldsNumbersTextsAndNothing) {
  GridCells cells;
  EXPECT_EQ(cells.GridLastRow(), 0u);
  EXPECT_EQ(cells.GridLastCol(), 0u);
  cells.SetGridCellNumber(3, 2, -0.1);
  cells.SetGridCellText(1, 2, "first");
  cells.SetGridCellText(2, 4, "12");
  EXPECT_EQ(cells.GridLastRow(), 3u);
  EXPECT_EQ(cells.GridLastCol(), 4u);
  EXPECT_EQ(cells.GridCellText(3, 2), "-0.1");
  EXPECT_EQ(cells.GridCellNumber(3, 2), -0.1);
  EXPECT_EQ(cells.GridCellText(1, 2), "first");
  EXPECT_EQ(cells.GridCellNumber(1, 2), 0);
  EXPECT_EQ(cells.GridCellNumber(2, 4), 0);  // a text stays a text
  EXPECT_EQ(cells.GridCellText(2, 2), "");
  EXPECT_EQ(cells.GridCellText(100, 100), "");

  cells.SetGridCellText(1, 2, "second");
  EXPECT_EQ(cells.GridCellText(1, 2), "second");
  EXPECT_EQ(cells.GridCellText(2, 4), "12");
  cells.SetGridCellNumber(1, 2, 8);
  EXPECT_EQ(cells.GridCellText(1, 2), "8");
  cells.SetGridCellText(2, 4, "  ");
  cells.ClearCell(3, 2);
  cells.ClearCell(50, 50);
  EXPECT_EQ(cells.GridLastRow(), 1u);
  EXPECT_EQ(cells.GridLastCol(), 2u);
}

TEST(GridCells, StoresWhatIsNoFiniteNumberAsText) {
  GridCells cells;
  const double infinity = std::numeric_limits<double>::infinity();
  const double values[] = {std::numeric_limits<double>::quiet_NaN(), infinity, -infinity, infinity - infinity};
  const char* const texts[] = {"NAN", "INF", "-INF", "NAN"};
  for (std::size_t i = 0; i < 4; ++i) {
    cells.SetGridCellNumber(i + 1, 1, values[i]);
    EXPECT_EQ(cells.GridCellText(i + 1, 1), texts[i]);
    EXPECT_EQ(cells.GridCellNumber(i + 1, 1), 0);
  }
}

TEST(GridCells, MovesColumnsWithTheirTexts) {
  GridCells cells;
  for (std::size_t col = 1; col <= 4; ++col) cells.SetGridCellText(col, col, std::string(col, 'c'));
  cells.MoveColumns(std::vector<std::size_t>{5, 0, 1, 1, 2});  // 4 wins over 3; there is no column 5
  EXPECT_EQ(cells.GridCellText(1, 5), "c");
  EXPECT_EQ(cells.GridCellText(4, 1), "cccc");
  EXPECT_EQ(cells.GridCellText(3, 1), "");
  EXPECT_EQ(cells.GridLastCol(), 5u);
  EXPECT_EQ(cells.GridCellText(2, 2), "");
}

TEST(BlankMissingMarker, ComparesTheDisplayedTextTrimmed) {
  GridCells cells;
  cells.SetGridCellNumber(1, 1, -999);
  cells.SetGridCellNumber(2, 1, -999.5);
  cells.SetGridCellText(1, 2, " -999 ");
  cells.SetGridCellText(2, 2, "-999.0");
  BlankMissingMarker(cells, "-999");
  EXPECT_EQ(cells.GridCellText(1, 1), "");
  EXPECT_EQ(cells.GridCellText(1, 2), "");
  EXPECT_EQ(cells.GridCellNumber(2, 1), -999.5);
  EXPECT_EQ(cells.GridCellText(2, 2), "-999.0");
}

}  // namespace
}  // namespace quorvex
