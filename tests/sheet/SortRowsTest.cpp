#include <gtest/gtest.h>

#include <set>
#include <tuple>

#include "EditedSheet.h"
#include "sheet/SortRows.h"

namespace quorvex {
namespace {

const char* const kQuestion =
    "ask: There is data in columns in addition to ones you have selected. Do you want to include all";

TEST(Sort, OrdersRowsByTheirKeys) {
  const char* const before = "2 b 1\n10 a 2\n- c 3\n2 - 4\n2 a 5\n-1 7 6\n";
  const struct {
    SortKeys Keys;
    const char* After;
  } cases[] = {
      {{{{1, true}, {}, {}}}, "-1 7 6\n2 b 1\n2 - 4\n2 a 5\n10 a 2\n- c 3\n"},
      {{{{1, false}, {}, {}}}, "10 a 2\n2 b 1\n2 - 4\n2 a 5\n-1 7 6\n- c 3\n"},
      {{{{1, true}, {2, true}, {}}}, "-1 7 6\n2 a 5\n2 b 1\n2 - 4\n10 a 2\n- c 3\n"},
      {{{{2, false}, {1, true}, {}}}, "- c 3\n2 b 1\n2 a 5\n10 a 2\n-1 7 6\n2 - 4\n"},
      {{{{2, true}, {1, false}, {3, true}}}, "-1 7 6\n10 a 2\n2 a 5\n2 b 1\n- c 3\n2 - 4\n"},
  };
  for (const auto& c : cases) {
    EditedSheet sheet(before, 2);
    const SheetEdit edit = sheet.WithAll();
    const std::optional<CellRange> range = SortRange(edit);
    ASSERT_TRUE(range);
    EXPECT_EQ(*range, (CellRange{1, 1, 6, 3}));
    ASSERT_TRUE(Sort(edit, *range, c.Keys));
    EXPECT_EQ(sheet.Cells(), c.After);
    EXPECT_EQ(sheet.WhenRemembered, before);
    EXPECT_EQ(sheet.Undo, (std::vector<std::pair<std::string, CellRange>>{{"&Undo Sort", *range}}));
    EXPECT_TRUE(sheet.User.Said.empty());
  }
}

TEST(Sort, TakesItsRangeFromTheSelection) {
  const struct {
    CellRange Selected;
    bool IncludeAll;
    CellRange Sorted;
    const char* After;
  } cases[] = {
      {{1, 1, 3, 1}, true, {1, 1, 3, 2}, "1 5\n2 6\n3 4\n0 7\n"},
      {{1, 1, 3, 1}, false, {1, 1, 3, 1}, "1 4\n2 5\n3 6\n0 7\n"},
      {{2, 1, 2, 2}, true, {1, 1, 4, 2}, "0 7\n1 5\n2 6\n3 4\n"},
  };
  for (const auto& c : cases) {
    EditedSheet sheet("3 4\n1 5\n2 6\n0 7\n");
    sheet.User.Answer = c.IncludeAll;
    const SheetEdit edit = sheet.With({c.Selected});
    const std::optional<CellRange> range = SortRange(edit);
    ASSERT_TRUE(range);
    EXPECT_EQ(*range, c.Sorted);
    EXPECT_EQ(sheet.User.Last(), c.Selected.LastCol == 1 ? kQuestion : "");
    ASSERT_TRUE(Sort(edit, *range, {{{1, true}, {}, {}}}));
    EXPECT_EQ(sheet.Cells(), c.After);
  }
}

TEST(Sort, RefusesAndLeavesTheSheet) {
  const char* const before = "3 4\n1 5\n";
  EditedSheet sheet(before), empty("");
  const auto refusal = [](EditedSheet& refused) {
    EXPECT_TRUE(refused.Undo.empty());
    return refused.User.Last();
  };
  EXPECT_FALSE(SortRange(empty.With({{1, 1, 1, 1}, {3, 1, 3, 1}})));
  EXPECT_EQ(refusal(empty), "refuse: There is no data to sort.");
  EXPECT_FALSE(SortRange(sheet.With({{7, 1, 9, 2}})));
  EXPECT_EQ(refusal(sheet), "refuse: There is no data to sort.");
  EXPECT_FALSE(SortRange(sheet.With({{1, 1, 1, 1}, {2, 1, 2, 1}})));
  EXPECT_EQ(refusal(sheet),
            "refuse: Invalid range selection. The 'Sort' command cannot be used on multiple selections.");

  const struct {
    SortKeys Keys;
    const char* Refusal;
  } cases[] = {
      {{}, "refuse: Invalid Sort Keys. At least the first key must be specified."},
      {{{{}, {1, true}, {2, true}}}, "refuse: Invalid Sort Keys. At least the first key must be specified."},
      {{{{1, true}, {}, {2, true}}},
       "refuse: Invalid Sort Keys. You have specified a third sort key before using the second sort key."},
      {{{{1, true}, {1, false}, {}}}, "refuse: Invalid Sort Keys. You have specified duplicate sort keys."},
      {{{{1, true}, {2, true}, {1, true}}}, "refuse: Invalid Sort Keys. You have specified duplicate sort keys."},
      {{{{1, true}, {2, true}, {2, false}}}, "refuse: Invalid Sort Keys. You have specified duplicate sort keys."},
  };
  for (const auto& c : cases) {
    EXPECT_FALSE(Sort(sheet.WithAll(), {1, 1, 2, 2}, c.Keys));
    EXPECT_EQ(refusal(sheet), c.Refusal);
  }
  EXPECT_EQ(sheet.Cells(), before);
}

TEST(Sort, IsAStablePermutationOfAFullSheet) {
  EditedSheet sheet("", 2, true);
  GridCells& cells = sheet.Sheet.Cells;
  std::uint32_t random = 1;
  std::multiset<std::tuple<double, double, double>> before, after;
  const auto rowOf = [&](std::size_t row) {
    return std::tuple(cells.GridCellNumber(row, 1), cells.GridCellNumber(row, 2), cells.GridCellNumber(row, 3));
  };
  for (std::size_t row = 1; row <= kMostSheetRows; ++row) {
    for (std::size_t col = 1; col <= 2; ++col) {
      random = random * 1664525 + 1013904223;
      cells.SetGridCellNumber(row, col, (random >> 20) % 50);
    }
    cells.SetGridCellNumber(row, 3, static_cast<double>(row));
    before.insert(rowOf(row));
  }
  ASSERT_TRUE(Sort(sheet.WithAll(), {1, 1, kMostSheetRows, 4}, {{{1, true}, {2, false}, {}}}));
  for (std::size_t row = 1; row <= kMostSheetRows; ++row) {
    after.insert(rowOf(row));
    if (row == 1) continue;
    const auto [a1, a2, a3] = rowOf(row - 1);
    const auto [b1, b2, b3] = rowOf(row);
    ASSERT_TRUE(std::tuple(a1, -a2, a3) < std::tuple(b1, -b2, b3)) << row;
  }
  EXPECT_EQ(before, after);
}

}  // namespace
}  // namespace quorvex
