#include <gtest/gtest.h>

#include <numeric>

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
    const Result<PlotPoints> points = SelectedPoints(project.Sheet, c.selection);
    ASSERT_TRUE(points) << points.error();
    EXPECT_EQ(points->Points.X, std::vector<Column>{c.x});
    EXPECT_EQ(points->Points.Y, c.y);
    EXPECT_EQ(points->Points.SD, c.sd);
    EXPECT_EQ(points->Titles, (std::vector<std::string>{c.xTitle, c.yTitle}));
  }
}

TEST(SelectedPoints, SaysWhyThereAreNone) {
  constexpr const char* kTooFew = "You need at least 2 data points in order to create a plot.";
  const struct {
    std::vector<CellRange> selection;
    const char* said;
  } kCases[] = {
      {{}, "Invalid range selection. You have not selected any cells in the spreadsheet."},
      {{{1, 1, 1, 1}, {1, 2, 1, 2}, {3, 1, 3, 1}},
       "Invalid range selection. This operation can only work with at most two selected ranges.  You currently have 3 "
       "ranges selected. Hint:  Make sure you do not have the control key pressed when selecting the FIRST range."},
      {{{1, 1, 3, 1}}, "Invalid range selection. The currently selected range only includes a single column."},
      {{{1, 1, 3, 3}}, "Invalid range selection. The currently selected range contains more than two columns."},
      {{{1, 1, 3, 2}, {1, 3, 3, 3}},
       "Invalid range selection. At least one of the two selected ranges contains multiple columns."},
      {{{1, 1, 3, 1}, {5, 1, 7, 1}},
       "Invalid range selection. The currently selected ranges either overlap or occupy the same column."},
      {{{1, 1, 3, 1}, {1, 2, 4, 2}},
       "Invalid range selection. The currently selected ranges do not contain the same rows."},
      {{{1, 1, 1, 1}, {1, 2, 1, 2}}, kTooFew},   // one cell in each of two columns
      {{{2, 1, 3, 2}}, kTooFew},                 // two rows, one of them incomplete
      {{{100, 1, kMostSheetRows, 2}}, kTooFew},  // below the data
      {{{5, 1, 6, 2}}, kTooFew},                 // a number and a text
  };
  Project project = Heights();
  project.Sheet.Cells.SetGridCellNumber(6, 1, 6);
  project.Sheet.Cells.SetGridCellText(6, 2, "tall");
  for (const auto& c : kCases) {
    const Result<PlotPoints> points = SelectedPoints(project.Sheet, c.selection);
    ASSERT_FALSE(points);
    EXPECT_EQ(points.error(), c.said);
  }
}

TEST(SelectedPoints, TakesThreeColumnsOfTwoVariables) {
  Project project = ProjectOf({{1, 2}, {3, 4}, {5, 6}, {0.5, 1}}, true);
  project.Sheet.Headers = {"", "Depth", "", "SD"};
  const Result<PlotPoints> points = SelectedPoints(project.Sheet, {{1, 1, 1, 1}});
  ASSERT_TRUE(points);
  EXPECT_EQ(points->Points.X, (std::vector<Column>{{1, 2}, {3, 4}}));
  EXPECT_EQ(points->Points.Y, (Column{5, 6}));
  EXPECT_EQ(points->Points.SD, (Column{0.5, 1}));
  EXPECT_EQ(points->Titles, (std::vector<std::string>{"X1", "Depth", "Y"}));
  const Result<PlotPoints> two = SelectedPoints(project.Sheet, {{1, 1, 2, 1}, {1, 3, 2, 3}});
  ASSERT_TRUE(two);
  EXPECT_EQ(two->Points.X, std::vector<Column>{(Column{1, 2})});
  EXPECT_EQ(two->Points.Y, (Column{5, 6}));
  EXPECT_EQ(two->Titles, (std::vector<std::string>{"X", "Y"}));
  project.Sheet.Cells.ClearCell(2, 2);
  EXPECT_EQ(SelectedPoints(project.Sheet, {{1, 1, 1, 1}}).error(),
            "You need at least 2 data points in order to create a plot.");
}

TEST(SolutionPoints, AreAllOfASheetThatIsLongerThanAUserCouldMakeIt) {
  std::vector<double> rows(kMostSheetRows + 100);
  std::iota(rows.begin(), rows.end(), 1.0);
  Project line = ProjectOf({rows, rows});
  const SolvedItem fit{&SolveModel(line, "a*x+b", 1), nullptr};
  EXPECT_EQ(SolutionPoints({fit}, line.Sheet)->Points.Y, rows);
}

TEST(SolutionPoints, AreThoseOfTheSheetWhereThereIsACurve) {
  Project line = LineProject();
  const SolvedItem fit{&SolveModel(line, "a*x+b", 1), nullptr};
  EXPECT_EQ(SolutionPoints({fit}, line.Sheet)->Points.N(), 5u);
  EXPECT_EQ(SolutionPoints({}, line.Sheet).error(), "There are no regression models to plot.");
}

}  // namespace
}  // namespace quorvex
