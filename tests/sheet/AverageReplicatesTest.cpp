#include <gtest/gtest.h>

#include "EditedSheet.h"
#include "sheet/AverageReplicates.h"

namespace quorvex {
namespace {

TEST(AverageReplicates, MergesEachSetIntoItsFirstRow) {
  const struct {
    std::size_t Variables;
    const char *Before, *After, *Said;
  } cases[] = {
      {1, "2 1 a\n1 5 b\n2 2 c\n3 7 d\n2 6 e\n", "2 3 a\n1 5 b\n3 7 d\n", "1 replicate  found."},
      {1, "1 0.1 -\n2 4 -\n1 0.1 -\n2 6 -\n1 0.1 -\n", "1 0.1 -\n2 5 -\n", "2 replicates found."},
      {2, "1 2 3 -\n2 1 4 -\n1 2 5 -\n1 3 6 -\n", "1 2 4 -\n2 1 4 -\n1 3 6 -\n", "1 replicate  found."},
      // A missing Y counts for nothing; rows without all X are nobody's replicates, whatever they hold.
      {1, "1 - -\n- 2 -\n1 8 -\n- 2 -\nt 3 -\nt 4 -\n", "1 8 -\n- 2 -\n- 2 -\nt 3 -\nt 4 -\n", "1 replicate  found."},
      {1, "1 - -\n1 - -\n0 9 -\n0 11 -\n", "1 - -\n0 10 -\n", "2 replicates found."},
  };
  for (const auto& c : cases) {
    EditedSheet sheet(c.Before, c.Variables, true);
    EXPECT_TRUE(AverageReplicates(sheet.WithAll()));
    EXPECT_EQ(sheet.Cells(), c.After);
    EXPECT_EQ(sheet.User.Said, std::vector<std::string>{std::string("inform: ") + c.Said});
    EXPECT_EQ(sheet.WhenRemembered, c.Before);
    ASSERT_EQ(sheet.Undo.size(), 1u);
    EXPECT_EQ(sheet.Undo[0].first, "&Undo Average Replicates");
    EXPECT_EQ(sheet.Undo[0].second.FirstRow, 1u);
    EXPECT_EQ(sheet.Undo[0].second.LastCol, c.Variables + 2);
  }
}

TEST(AverageReplicates, LeavesTheSheetWhereThereIsNothingToDoOrItCannot) {
  const struct {
    const char *Cells, *Said;
  } cases[] = {
      {"", "inform: No replicates found."},
      {"1 2\n2 2\n- 2\n- 2\n", "inform: No replicates found."},
      {"1 2\n1 t\n", "refuse: Quorvex encountered an error averaging the replicates."},
      {"1 1.5E+308\n1 1.5E+308\n", "refuse: Quorvex encountered an error averaging the replicates."},
  };
  for (const auto& c : cases) {
    EditedSheet sheet(c.Cells);
    EXPECT_FALSE(AverageReplicates(sheet.WithAll()));
    EXPECT_EQ(sheet.User.Said, std::vector<std::string>{c.Said});
    EXPECT_TRUE(sheet.Untouched());
  }
}

TEST(AverageReplicates, TakesAFullSheet) {
  EditedSheet sheet("");
  for (std::size_t row = 1; row <= kMostSheetRows; ++row) {
    sheet.Sheet.Cells.SetGridCellNumber(row, 1, static_cast<double>(row % 256));
    sheet.Sheet.Cells.SetGridCellNumber(row, 2, static_cast<double>(row));
  }
  EXPECT_TRUE(AverageReplicates(sheet.WithAll()));
  EXPECT_EQ(sheet.User.Last(), "inform: 256 replicates found.");
  ASSERT_EQ(sheet.Sheet.Cells.GridLastRow(), 256u);
  for (std::size_t row = 1; row <= 256; ++row)  // row, row + 256, ..., row + 255 * 256
    EXPECT_EQ(sheet.Sheet.Cells.GridCellNumber(row, 2), static_cast<double>(row) + 127.5 * 256);
}

}  // namespace
}  // namespace quorvex
