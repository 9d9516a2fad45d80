#include <gtest/gtest.h>

#include "RecordingPrompter.h"
#include "results/PlotPoints.h"
#include "results/SolvedProject.h"

namespace quorvex {
namespace {

using Column = std::vector<double>;

// Time, height and its standard deviation; the third row lacks the height, the fourth the deviation.
Project Heights() {
  Project project = ProjectOf({{3, 1, 2, 5, 4}, {30, 10, 0, 50, 40}, {0.5, 0.25, 1, 2, 3}}, true);
  project.Sheet.Cells.ClearCell(3, 2);
  project.Sheet.Cells.ClearCell(4, 3);
  project.Sheet.Headers = {"Time", "Height", "SD"};
  return project;
}

TEST(SelectedPoints, TakesTheSheetOrTheSelectedColumns) {
  const struct {
    std::vector<CellRange> selection;
    Column x, y, sd;
    const char *xTitle, *yTitle;
  } kCases[] = {
      {{{4, 2, 4, 2}}, {3, 1, 5, 4}, {30, 10, 50, 40}, {0.5, 0.25, 1, 3}, "Time", "Height"},
      {{{1, 1, kMostSheetRows, 2}}, {3, 1, 5, 4}, {30, 10, 50, 40}, {0.5, 0.25, 1, 3}, "Time", "Height"},
      {{{2, 1, 4, 2}}, {1, 5}, {10, 50}, {0.25, 1}, "Time", "Height"},
      {{{2, 3, 5, 3}, {2, 1, 5, 1}}, {1, 2, 4}, {0.25, 1, 3}, {1, 1, 1}, "Time", "SD"},  // whichever came first
      {{{4, 2, 5, 2}, {4, 1, 5, 1}}, {5, 4}, {50, 40}, {1, 3}, "Time", "Height"},
      {{{1, 2, 3, 3}}, {30, 10}, {0.5, 0.25}, {1, 1}, "Height", "SD"},  // no deviation of a deviation
  };
  const Project project = Heights();
  for (const auto& c : kCases) {
    RecordingPrompter user;
    const auto points = SelectedPoints(project.Sheet, c.selection, user);
    ASSERT_TRUE(points) << user.Last();
    EXPECT_EQ(points->Points.X, std::vector<Column>{c.x});
    EXPECT_EQ(points->Points.Y, c.y);
    EXPECT_EQ(points->Points.SD, c.sd);
    EXPECT_EQ(points->Titles, (std::vector<std::string>{c.xTitle, c.yTitle}));
    EXPECT_TRUE(user.Said.empty());
  }
}

TEST(SelectedPoints, SaysWhyThereAreNone) {
  constexpr const char* kTooFew = "refuse: You need at least 2 data points in order to create a plot.";
  const struct {
    std::vector<CellRange> selection;
    const char* said;
  } kCases[] = {
      {{}, "refuse: You have not selected any cells in the spreadsheet."},
      {{{1, 1, 3, 1}}, "refuse: The currently selected range only includes a single column."},
      {{{1, 1, 3, 3}}, "refuse: The currently selected range contains more than two columns."},
      {{{1, 1, 1, 1}, {1, 2, 1, 2}}, kTooFew},   // one cell in each of two columns
      {{{2, 1, 3, 2}}, kTooFew},                 // two rows, one of them incomplete
      {{{100, 1, kMostSheetRows, 2}}, kTooFew},  // below the data
      {{{4, 1, 6, 2}}, "refuse: Line 6: 'tall' is not a number."},
  };
  Project project = Heights();
  project.Sheet.Cells.SetGridCellNumber(6, 1, 6);
  project.Sheet.Cells.SetGridCellText(6, 2, "tall");
  for (const auto& c : kCases) {
    RecordingPrompter user;
    EXPECT_FALSE(SelectedPoints(project.Sheet, c.selection, user));
    EXPECT_EQ(user.Said, std::vector<std::string>{c.said});
  }
}

TEST(SelectedPoints, TakesThreeColumnsOfTwoVariables) {
  Project project = ProjectOf({{1, 2}, {3, 4}, {5, 6}, {0.5, 1}}, true);
  project.Sheet.Headers = {"", "Depth", "", "SD"};
  RecordingPrompter user;
  const auto points = SelectedPoints(project.Sheet, {{1, 1, 1, 1}}, user);
  ASSERT_TRUE(points);
  EXPECT_EQ(points->Points.X, (std::vector<Column>{{1, 2}, {3, 4}}));
  EXPECT_EQ(points->Points.Y, (Column{5, 6}));
  EXPECT_EQ(points->Points.SD, (Column{0.5, 1}));
  EXPECT_EQ(points->Titles, (std::vector<std::string>{"X1", "Depth", "Y"}));
  const auto two = SelectedPoints(project.Sheet, {{1, 1, 2, 1}, {1, 3, 2, 3}}, user);
  ASSERT_TRUE(two);
  EXPECT_EQ(two->Points.X, std::vector<Column>{(Column{1, 2})});
  EXPECT_EQ(two->Points.Y, (Column{5, 6}));
  EXPECT_EQ(two->Titles, (std::vector<std::string>{"X", "Y"}));
  EXPECT_TRUE(user.Said.empty());
  project.Sheet.Cells.ClearCell(2, 2);
  EXPECT_FALSE(SelectedPoints(project.Sheet, {{1, 1, 1, 1}}, user));
  EXPECT_EQ(user.Last(), "refuse: You need at least 2 data points in order to create a plot.");
}

TEST(SelectedPoints, AsksForTwoColumnsOfManyVariables) {
  const Project project = ProjectOf({{1, 2}, {3, 4}, {5, 6}, {7, 8}});
  RecordingPrompter user;
  EXPECT_FALSE(SelectedPoints(project.Sheet, {{1, 1, 1, 1}}, user));
  EXPECT_EQ(user.Last(),
            "refuse: Data of more than two independent variables have no plot. Please select two columns.");
  EXPECT_TRUE(SelectedPoints(project.Sheet, {{1, 1, 2, 1}, {1, 3, 2, 3}}, user));
}

TEST(SolutionPoints, AreThoseOfTheSheetWhereThereIsACurve) {
  Project line = LineProject();
  const SolvedItem fit{&SolveModel(line, "a*x+b", 1), nullptr};
  RecordingPrompter user;
  EXPECT_EQ(SolutionPoints({fit}, line.Sheet, user)->Points.N(), 5u);
  EXPECT_FALSE(SolutionPoints({}, line.Sheet, user));
  EXPECT_EQ(user.Said, std::vector<std::string>{"refuse: There are no regression models to plot."});
}

}  // namespace
}  // namespace quorvex
