#include <gtest/gtest.h>

#include "sheet/ParseDelimitedLines.h"
#include "sheet/SeriesData.h"

namespace quorvex {
namespace {

using Places = std::vector<std::size_t>;

const struct {
  const char* Order;
  std::size_t Variables;
  bool Weighted;
  std::size_t Count;
  Places X, Y, SD;
  std::string Fault = "";
} kOrders[] = {
    {"Default", 1, false, 4, {1}, {2, 3, 4}, {0, 0, 0}},
    {"default", 2, true, 5, {1, 2}, {4, 5}, {3, 3}},
    {"y, drop, x, Y", 1, false, 6, {3}, {1, 4, 5, 6}, {0, 0, 0, 0}},
    {"x1,y,sd,y,sd", 1, true, 7, {1}, {2, 4}, {3, 5}},
    {"x,sd,y,y,sd,y", 1, true, 7, {1}, {3, 4, 6, 7}, {2, 5, 2, 2}},
    {"x,sd,y,drop", 1, false, 9, {1}, {3}, {0}},
    {"x2,x1,y", 2, false, 3, {2, 1}, {3}, {0}},
    {"x,y,y,y,y", 1, false, 3, {1}, {2, 3}, {0, 0}},  // as many as there are
    {"x,y", 2, false, 3, {}, {}, {}, "The ColumnOrder has no column x2."},
    {"x,drop", 1, false, 3, {}, {}, {}, "The data have 3 columns, and none of them is a column of Y."},
    {"Default", 1, true, 2, {}, {}, {}, "The data have 2 columns, and none of them is a column of Y."},
};

TEST(ColumnsOfSeries, TakesEveryYAndThoseBehindTheList) {
  for (const auto& c : kOrders) {
    const auto columns = ColumnsOfSeries(c.Order, c.Variables, c.Weighted, c.Count, ',');
    ASSERT_EQ(static_cast<bool>(columns), c.Fault.empty()) << c.Order;
    if (!columns) {
      EXPECT_EQ(columns.error(), c.Fault);
      continue;
    }
    EXPECT_EQ(columns->X, c.X) << c.Order;
    EXPECT_EQ(columns->Y, c.Y) << c.Order;
    EXPECT_EQ(columns->SD, c.SD) << c.Order;
  }
}

const struct {
  std::vector<std::string> Headings, Names;
} kNames[] = {
    {{"A1", "A2"}, {"A1", "A2"}},
    {{"", " ", "x"}, {"1", "2", "x"}},
    {{"A", "A", "A_2", "A"}, {"A", "A_3", "A_2", "A_4"}},
    {{"", "1", "1"}, {"1_2", "1", "1_3"}},                 // a heading keeps its name before one that is made up
    {{"a/b", "a_b", "a\\b"}, {"a/b", "a_b_2", "a\\b_3"}},  // told apart as files, too
    {{"%SERIES%", "<b>\"ä\"</b>"}, {"%SERIES%", "<b>\"ä\"</b>"}},
};

TEST(SeriesNames, AreTellableApart) {
  for (const auto& c : kNames) EXPECT_EQ(SeriesNames(c.Headings), c.Names);
  EXPECT_EQ(SeriesFileName("../a\\b\tc"), ".._a_b_c");
}

// What LoadGridData makes of X and one column is the measure of what the series makes of it.
TEST(SeriesData, HasThePointsOfEachColumnAlone) {
  const char* const texts[] = {
      "x;A;B;C\n3;1;4;1;5\n1;2;;2;6\n;3;6;3;7\n2;4;7;x;8\n1;5;8;;9;\n",  // out of order, missing, a text, no X
      "x;A;B;C\n1;1;2;3;4\nq;;;1;\n2;5;6;7;8\n",                         // a text in X matters where there is Y
      "x;A;B;C\n1e-9;1e9;-1e-9;1e300;0\n-1e9;2;3;4;5\n",
  };
  for (const char* text : texts) {
    for (const bool weighted : {false, true}) {
      DelimitedFormat format;
      format.Delimiters = kSemicolonDelimiter;
      format.FirstLine = 2;
      SeriesColumns columns{{1}, {2, 3, 4}, {0, 0, 0}};
      if (weighted) columns.SD = {5, 5, 5};
      const SeriesData series(ParseDelimitedLines(text, format).Cells, columns, {"A", "B", "C"});
      for (std::size_t i = 0; i < 3; ++i) {
        for (const bool unsorted : {false, true}) {
          GridCells alone = ParseDelimitedLines(text, format).Cells;
          std::vector<std::size_t> targets = {1, 0, 0, 0, 3};
          targets[i + 1] = 2;
          alone.MoveColumns(targets);
          const auto expected = LoadGridData(std::move(alone), {.Weighted = weighted, .KeepUnsorted = unsorted});
          const auto points = series.Points(i, unsorted);
          ASSERT_EQ(static_cast<bool>(points), static_cast<bool>(expected)) << text;
          if (!points) {
            EXPECT_TRUE(points.error().ends_with("is not a number.")) << points.error();
            continue;
          }
          EXPECT_EQ(points->Points.X, expected->Points.X);
          EXPECT_EQ(points->Points.Y, expected->Points.Y);
          EXPECT_EQ(points->Points.SD, expected->Points.SD);
          EXPECT_EQ(points->Points.Row, expected->Points.Row);
          EXPECT_EQ(points->Unsorted.Y, expected->Unsorted.Y);
        }
      }
    }
  }
  const SeriesData series(ParseDelimitedLines("1\t2\t3\n2\tabc\t4\n", DelimitedFormat()).Cells, {{1}, {2, 3}, {0, 0}},
                          {"A", "B"});
  EXPECT_EQ(series.Points(0).error(), "Row 2, column 'A': 'abc' is not a number.");
  EXPECT_EQ(series.Points(1)->Points.N(), 2U);
}

}  // namespace
}  // namespace quorvex
