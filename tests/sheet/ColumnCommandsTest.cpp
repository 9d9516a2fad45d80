// The commands that compute cells in place: scale and translate, combine, zero.

#include <gtest/gtest.h>

#include "EditedSheet.h"
#include "TableFile.h"
#include "sheet/CombineColumns.h"
#include "sheet/ScaleCells.h"
#include "sheet/ZeroData.h"

namespace quorvex {
namespace {

TEST(Factor, ChangesTheNumbersOfTheRange) {
  const char* const before = "1 -2 t\n- 4 8\n5 6 7\n";
  const struct {
    FactorMode Mode;
    const char *Factor, *After, *Label, *Prompt;
  } cases[] = {
      {FactorMode::Scale, "-2,5", "1 5 t\n- -10 -20\n5 6 7\n", "&Undo Scale", "Enter the scaling factor:"},
      {FactorMode::Translate, " 0,5", "1 -1.5 t\n- 4.5 8.5\n5 6 7\n", "&Undo Translate",
       "Enter the translation factor:"},
  };
  for (const auto& c : cases) {
    EditedSheet sheet(before, 2);
    sheet.Locale.DecimalSeparator = ',';
    const SheetEdit edit = sheet.With({{1, 2, 2, 3}});
    EXPECT_EQ(FactorPrompt(c.Mode), c.Prompt);
    ASSERT_TRUE(FactorRange(edit));
    EXPECT_TRUE(ApplyFactor(edit, *FactorRange(edit), c.Mode, c.Factor));
    EXPECT_EQ(sheet.Cells(), c.After);
    EXPECT_EQ(sheet.WhenRemembered, before);
    EXPECT_EQ(sheet.Undo, (Snapshots{{c.Label, {1, 2, 2, 3}}}));
  }
}

TEST(Factor, RefusesAndLeavesTheSheet) {
  const char* const before = "1 1E+300\n3 4\n";
  EditedSheet sheet(before);
  EXPECT_FALSE(FactorRange(sheet.With({{1, 1, 1, 1}, {2, 2, 2, 2}})));
  EXPECT_EQ(sheet.User.Last(), "refuse: Invalid range selection. Please select a range of cells to manipulate.");
  const struct {
    FactorMode Mode;
    const char *Factor, *Refusal;
  } cases[] = {{FactorMode::Scale, "", "refuse: Please enter a valid scale factor."},
               {FactorMode::Translate, "1x", "refuse: Please enter a valid translation factor."},
               {FactorMode::Scale, "1e300", "refuse: A numerical error has ocurred."}};
  for (const auto& c : cases) {
    EXPECT_FALSE(ApplyFactor(sheet.WithAll(), {1, 1, 2, 2}, c.Mode, c.Factor));
    EXPECT_EQ(sheet.User.Last(), c.Refusal);
  }
  EXPECT_TRUE(sheet.Untouched());
}

TEST(Combine, ComputesEachOperationOfItsList) {
  const auto rows = TableRows("combine_operations.txt", 4);
  ASSERT_EQ(CombineOperations().size(), rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_EQ(CombineOperations()[i].Text, rows[i][0]);
    const ComputedCells computed = Combine({Number(rows[i][1])}, {Number(rows[i][2])}, CombineOperations()[i].Code);
    EXPECT_EQ(computed.Values, Numbers(rows[i][3])) << rows[i][0];
    EXPECT_FALSE(computed.Faulted);
  }
}

TEST(Combine, FillsTheResultColumn) {
  const char* const before = "8 2 1\n6 0 2\n- 3 3\n9 - 4\n0 5 5\n";
  const char* const blank =
      "inform: Cells whose corresponding numerical evaluations resulted in errors were left blank.";
  const struct {
    CombineColumns Columns;
    CellRange Selected;
    const char *After, *Said;
    CellRange Extent;
  } cases[] = {
      {{1, 2, 3, 3}, {2, 1, 2, 1}, "8 2 4\n6 0 -\n- 3 -\n9 - -\n0 5 0\n", blank, {1, 3, 5, 3}},
      {{1, 2, 1, 0}, {1, 1, 2, 3}, "10 2 1\n6 0 2\n- 3 3\n9 - 4\n0 5 5\n", "", {1, 1, 2, 1}},
      {{2, 2, 3, 2}, {3, 1, 99, 1}, "8 2 1\n6 0 2\n- 3 9\n9 - -\n0 5 25\n", "", {3, 3, 5, 3}},
  };
  for (const auto& c : cases) {
    EditedSheet sheet(before, 2);
    EXPECT_TRUE(c.Columns.Apply(sheet.With({c.Selected})));
    EXPECT_EQ(sheet.Cells(), c.After);
    EXPECT_EQ(sheet.User.Last(), c.Said);
    EXPECT_EQ(sheet.WhenRemembered, before);
    EXPECT_EQ(sheet.Undo, (Snapshots{{"&Undo Combine", c.Extent}}));
  }

  EditedSheet sheet(before, 2);
  EXPECT_FALSE(CombineColumns().Apply(sheet.With({{1, 1, 1, 1}, {3, 1, 3, 1}})));
  EXPECT_EQ(sheet.User.Last(),
            "refuse: Invalid range selection. The 'Combine' command cannot be used on multiple selections.");
  EXPECT_FALSE(CombineColumns().Apply(sheet.With({{8, 1, 9, 1}})));
  EXPECT_EQ(sheet.User.Last(), "refuse: There is no data to combine.");
  EXPECT_TRUE(sheet.Untouched());
}

TEST(ZeroData, ZeroesOneSignInTheChosenColumns) {
  const char* const before = "-1 2 -3\n4 - t\n0 -5 6\n";
  const std::size_t y[] = {3}, all[] = {1, 2, 3};
  const struct {
    ZeroSign Sign;
    std::span<const std::size_t> Columns;
    const char *After, *Label;
  } cases[] = {
      {ZeroSign::Negative, all, "0 2 0\n4 - t\n0 0 6\n", "&Undo Zero Negative Data"},
      {ZeroSign::Positive, y, "-1 2 -3\n4 - t\n0 -5 0\n", "&Undo Zero Positive Data"},
  };
  for (const auto& c : cases) {
    EditedSheet sheet(before, 2);
    EXPECT_TRUE(ZeroData(sheet.WithAll(), c.Sign, c.Columns));
    EXPECT_EQ(sheet.Cells(), c.After);
    EXPECT_EQ(sheet.WhenRemembered, before);
    EXPECT_EQ(sheet.Undo, (Snapshots{{c.Label, {1, 1, 3, 3}}}));
  }
  EditedSheet sheet(before, 2);
  EXPECT_FALSE(ZeroData(sheet.WithAll(), ZeroSign::Negative, {}));
  EXPECT_EQ(sheet.User.Last(), "refuse: Please select a column or 'Cancel'.");
  EXPECT_TRUE(sheet.Untouched());
}

}  // namespace
}  // namespace quorvex
