#include <gtest/gtest.h>
#include <malloc.h>

#include <limits>

#include "import/BlankMissingMarker.h"
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

// 1 and 9 in column 1 with two empty rows between, a text and a number in column 2; changed in one way each, the last
// row and column are those that hold anything, and what was copied and put back is as it was.
TEST(GridCells, KnowsItsLastRowAfterAnyChange) {
  const double empty = GridCells().Cell(1, 1);
  const std::vector<bool> marked = {false, true, false, true};
  const CellRange top{1, 1, 3, 2}, below{5, 1, 7, 2};
  const CellRange all{1, 1, 65'536, 20}, fromTwo{2, 1, 65'536, 20}, second{1, 2, 4, 2};
  const struct {
    const char* what;
    std::function<void(GridCells&)> change;
    std::size_t rows, cols;
  } kCases[] = {
      {"clear the end", [&](GridCells& c) { c.GridClearRange(fromTwo); }, 1, 2},
      {"clear everything", [&](GridCells& c) { c.GridClearRange(all); }, 0, 0},
      {"clear a column", [&](GridCells& c) { c.GridClearRange(second); }, 4, 1},
      {"clear a cell", [](GridCells& c) { c.ClearCell(4, 1); }, 2, 2},
      {"set nothing", [&](GridCells& c) { c.SetCell(4, 1, empty), c.SetCell(9, 9, empty); }, 2, 2},
      {"delete the last row", [](GridCells& c) { c.GridDeleteRows(4, 1); }, 2, 2},
      {"delete rows between", [](GridCells& c) { c.GridDeleteRows(2, 2); }, 2, 2},
      {"delete marked rows", [&](GridCells& c) { c.DeleteMarkedRows(marked); }, 1, 2},
      {"insert", [](GridCells& c) { c.GridInsertRows(4, 3); }, 7, 2},
      {"exchange", [](GridCells& c) { c.ExchangeColumns(1, 3, 2, 4); }, 4, 3},
      {"put a copy", [&](GridCells& c) { c.PutRange(below, c.CopyRange(top)); }, 6, 2},
  };
  for (const auto& c : kCases) {
    GridCells cells;
    cells.SetGridCellNumber(1, 1, 1);
    cells.SetGridCellNumber(4, 1, 9);
    cells.SetGridCellText(1, 2, "text");
    cells.SetGridCellNumber(2, 2, 5);
    const GridCells before = cells.CopyRange({1, 1, 4, 3});
    c.change(cells);
    EXPECT_EQ(cells.GridLastRow(), c.rows) << c.what;
    EXPECT_EQ(cells.GridLastCol(), c.cols) << c.what;
    cells.GridClearRange({5, 1, 9, 9});
    cells.PutRange({1, 1, 4, 3}, before);
    EXPECT_EQ(cells.GridLastRow(), 4u) << c.what;
    EXPECT_EQ(cells.GridLastCol(), 2u) << c.what;
    EXPECT_EQ(cells.GridCellText(1, 2) + cells.GridCellText(2, 2) + cells.GridCellText(3, 1), "text5") << c.what;
  }
}

TEST(GridCells, GivesBackTheTextsOfCellsThatAreGone) {
  constexpr std::size_t kRows = 65'536;
  const struct {
    const char* what;
    std::size_t most;  // bytes then; the texts of one fill take 6 MB
    std::function<void(GridCells&)> empty;
  } kCases[] = {
      {"clear", 3'000'000,
       [](GridCells& cells) {
         cells.GridClearRange({1, 1, kRows, 2});
       }},
      {"delete rows", 3'000'000, [](GridCells& cells) { cells.GridDeleteRows(1, kRows); }},
      {"delete marked rows", 3'000'000,
       [](GridCells& cells) { cells.DeleteMarkedRows(std::vector<bool>(kRows, true)); }},
      {"overwrite", 15'000'000,  // looked for once they are twice as many
       [](GridCells& cells) {
         for (std::size_t row = 1; row <= kRows; ++row) cells.SetGridCellNumber(row, 1, 0);
         cells.SetGridCellText(kRows, 2, "next");
       }},
  };
  for (const auto& c : kCases) {
    GridCells cells;
    cells.SetGridCellText(1, 3, "kept");
    const std::size_t before = mallinfo2().uordblks;
    for (std::size_t fill = 1; fill <= 5; ++fill) {
      for (std::size_t row = 1; row <= kRows; ++row) cells.SetGridCellText(row, 1, std::string(40, 'x'));
      if (fill == 5) cells.SetGridCellText(2, 3, "kept, too");
      c.empty(cells);
    }
    EXPECT_LT(mallinfo2().uordblks, before + c.most) << c.what;
    if (c.what != std::string("clear") && c.what != std::string("overwrite")) continue;
    EXPECT_EQ(cells.GridCellText(1, 3) + cells.GridCellText(2, 3), "keptkept, too") << c.what;
  }
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
