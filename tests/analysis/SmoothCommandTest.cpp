#include <gtest/gtest.h>

#include <cmath>

#include "analysis/LowessSmooth.h"
#include "analysis/SmoothCommand.h"
#include "sheet/EditedSheet.h"

namespace quorvex {
namespace {

constexpr const char* kTooFew = "refuse: You need at least 4 data points in order to smooth the data.";
constexpr const char* kIncomplete =
    "ask: The spreadsheet contains incomplete rows which must be removed before smoothing. Do you want to delete the "
    "incomplete rows now?";

TEST(SmoothCommand, TellsWhyASheetCannotBeSmoothed) {
  const struct {
    const char* Cells;
    std::size_t Variables;
    std::vector<std::string> Said;
  } cases[] = {
      {"", 1, {kTooFew}},
      {"1 1\n2 2\n3 3\n", 1, {kTooFew}},
      {"1 1\n2 2\n3 3\n- 4\n5 -\n- -\n6 -\n", 1, {kTooFew}},
      {"1 1\n2 2\n3 3\n4 4\n5 -\n", 1, {kIncomplete}},
      {"1 1\n2 2\n3 t\n4 4\n", 1, {"refuse: An error has occurred obtaining the input data."}},
      {"1 1 1\n2 2 2\n3 3 3\n4 4 4\n", 2, {"refuse: Only a project with one independent variable can be smoothed."}},
  };
  for (const auto& c : cases) {
    EditedSheet sheet(c.Cells, c.Variables);
    sheet.User.Answer = false;
    const SheetEdit edit = sheet.WithAll();
    SmoothCommand smooth(edit);
    EXPECT_FALSE(smooth.Begin());
    EXPECT_EQ(sheet.User.Said, c.Said);
    EXPECT_FALSE(smooth.Changed());
    EXPECT_TRUE(sheet.Untouched());
  }
}

TEST(SmoothCommand, DeletesIncompleteRowsOnDemand) {
  EditedSheet sheet("1 1\n2 -\n2 2\n3 3\n- -\n4 4\n");
  const SheetEdit edit = sheet.WithAll();
  SmoothCommand smooth(edit);
  EXPECT_TRUE(smooth.Begin());
  EXPECT_TRUE(smooth.Changed());
  EXPECT_EQ(sheet.Cells(), "1 1\n2 2\n3 3\n- -\n4 4\n");
  EXPECT_EQ(smooth.X(), (std::vector<double>{1, 2, 3, 4}));
}

TEST(SmoothCommand, RefusesAWindowOfAllOrNothing) {
  const struct {
    const char *Percent, *Said;
  } cases[] = {
      {"100", "The smoothing window must be less than 100%."},
      {"1e300", "The smoothing window must be less than 100%."},
      {"0", "The smoothing window must be greater than 0%."},
      {"-5", "The smoothing window must be greater than 0%."},
  };
  EditedSheet sheet("1 1\n2 2\n3 3\n4 4\n");
  const SheetEdit edit = sheet.WithAll();
  SmoothCommand smooth(edit);
  ASSERT_TRUE(smooth.Begin());
  for (const auto& c : cases)
    for (const auto step : {&SmoothCommand::Apply, &SmoothCommand::Finish}) {
      std::string percent = c.Percent;
      EXPECT_FALSE((smooth.*step)(percent)) << c.Percent;
      EXPECT_EQ(sheet.User.Last(), std::string("refuse: ") + c.Said);
      EXPECT_EQ(percent, c.Percent);
    }
  EXPECT_TRUE(smooth.SmoothY().empty());
  EXPECT_TRUE(sheet.Untouched());
}

TEST(SmoothCommand, TakesWhatIsNoNumberForTheDefault) {
  for (const char* text : {"", "abc", "10 %", "1e999", "12,5"}) {
    EditedSheet sheet("1 1\n2 2\n3 3\n4 4\n");
    const SheetEdit edit = sheet.WithAll();
    SmoothCommand smooth(edit);
    ASSERT_TRUE(smooth.Begin());
    std::string percent = text;
    EXPECT_TRUE(smooth.Apply(percent));
    EXPECT_EQ(percent, "10");
  }
  EditedSheet german("1 1\n2 2\n3 3\n4 4\n");
  german.Locale.DecimalSeparator = ',';
  const SheetEdit edit = german.WithAll();
  SmoothCommand smooth(edit);
  ASSERT_TRUE(smooth.Begin());
  std::string percent = "12,5";
  EXPECT_TRUE(smooth.Apply(percent));
  EXPECT_EQ(percent, "12,5");
}

// Rows out of order, equal X, a blank row and a standard deviation: each value comes to the row of its point.
TEST(SmoothCommand, StoresEachValueInTheRowOfItsPoint) {
  EditedSheet sheet("5 9 a\n1 2 -\n- - -\n3 1 7\n3 5 -\n2 8 -\n", 1, true);
  const SheetEdit edit = sheet.WithAll();
  SmoothCommand smooth(edit);
  ASSERT_TRUE(smooth.Begin());
  EXPECT_EQ(smooth.X(), (std::vector<double>{1, 2, 3, 3, 5}));
  EXPECT_EQ(smooth.Y(), (std::vector<double>{2, 8, 1, 5, 9}));
  std::string percent = "60";
  ASSERT_TRUE(smooth.Finish(percent));
  EXPECT_TRUE(smooth.Changed());
  EXPECT_EQ(sheet.Undo.at(0).first, "&Undo Smooth");
  EXPECT_EQ(sheet.Undo[0].second.LastRow, 6u);
  EXPECT_EQ(sheet.WhenRemembered, "5 9 a\n1 2 -\n- - -\n3 1 7\n3 5 -\n2 8 -\n");
  const std::vector<double> ys = LowessSmooth(smooth.X(), smooth.Y(), 0.6, kLowessSteps, 0)->ys;
  const GridCells& cells = sheet.Sheet.Cells;
  for (const auto& [row, point] : {std::pair{1, 4}, {2, 0}, {4, 2}, {5, 3}, {6, 1}})
    EXPECT_EQ(cells.GridCellNumber(static_cast<std::size_t>(row), 2), ys[static_cast<std::size_t>(point)]);
  EXPECT_TRUE(GridCells::IsEmpty(cells.Cell(3, 2)));
  EXPECT_EQ(cells.GridCellText(1, 3), "a");
}

TEST(SmoothCommand, StoresTheWindowThatIsTypedLast) {
  EditedSheet sheet("");
  for (std::size_t row = 1; row <= 5001; ++row) {
    sheet.Sheet.Cells.SetGridCellNumber(row, 1, static_cast<double>(row));
    sheet.Sheet.Cells.SetGridCellNumber(row, 2, std::sin(static_cast<double>(row)));
  }
  const SheetEdit edit = sheet.WithAll();
  SmoothCommand smooth(edit);
  ASSERT_TRUE(smooth.Begin());
  std::string percent = "1";
  ASSERT_TRUE(smooth.Apply(percent));
  percent = "2";
  ASSERT_TRUE(smooth.Finish(percent));
  // A fiftieth of the range lies between two fits.
  EXPECT_EQ(smooth.SmoothY(), LowessSmooth(smooth.X(), smooth.Y(), 0.02, kLowessSteps, 100)->ys);
  EXPECT_EQ(sheet.Sheet.Cells.GridCellNumber(77, 2), smooth.SmoothY()[76]);
}

TEST(SmoothCommand, TellsOfAnOverflowAndLeavesTheSheet) {
  EditedSheet sheet("-1.7e308 1\n0 2\n1 3\n1.7e308 4\n");
  const SheetEdit edit = sheet.WithAll();
  SmoothCommand smooth(edit);
  ASSERT_TRUE(smooth.Begin());
  std::string percent = "50";
  EXPECT_FALSE(smooth.Finish(percent));
  EXPECT_EQ(sheet.User.Last(), "refuse: Error in Lowess procedure, the task could not be completed.");
  EXPECT_TRUE(sheet.Untouched());
}

}  // namespace
}  // namespace quorvex
