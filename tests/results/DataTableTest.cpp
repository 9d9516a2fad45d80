#include <gtest/gtest.h>

#include "results/DataTable.h"
#include "results/SolvedProject.h"

namespace quorvex {
namespace {

std::vector<std::string> RowOf(const TextTable& table, std::size_t row) {
  std::vector<std::string> cells;
  for (std::size_t c = 0; c < table.ColumnCount(); ++c) cells.push_back(table.Cell(row, c));
  return cells;
}

TEST(GatherData, KeepsTheOrderOfTheSheetAndCountsTheRowsItLeavesOut) {
  Project project = ProjectOf({{9, 1, 0, 4, 0, 7, 3}, {1, 2, 3, 4, 5, 6, 7}, {2, 1, 1, 1, 1, 1, 2}}, true);
  project.Sheet.Cells.ClearCell(3, 1);               // Y alone
  project.Sheet.Cells.ClearCell(6, 2);               // X alone
  project.Sheet.Cells.GridClearRange({5, 1, 5, 2});  // the standard deviation alone, which is no observation
  GatheredData data = GatherData(project.Sheet, PointOrder::OfSheet);
  EXPECT_EQ(data.Points.X[0], (std::vector<double>{9, 1, 4, 3}));
  EXPECT_EQ(data.Points.Row, (std::vector<std::size_t>{1, 2, 4, 7}));
  EXPECT_EQ(data.IncompleteRows, 2u);
  EXPECT_EQ(data.Points.sig, (std::vector<double>{0.4, 1.6, 1.6, 0.4}));  // 1/4 and 1 over 5/8
  EXPECT_EQ(data.FirstLeftOut, (CellPlace{3, 1}));
  // A text leaves its row out, that of a standard deviation too; one in an incomplete row changes nothing.
  project.Sheet.Cells.SetGridCellText(7, 3, "low");
  project.Sheet.Cells.SetGridCellText(4, 2, "high");
  project.Sheet.Cells.SetGridCellText(4, 3, "low");
  project.Sheet.Cells.SetGridCellText(3, 2, "Y alone");
  data = GatherData(project.Sheet, PointOrder::OfSheet);
  EXPECT_EQ(data.Points.X[0], (std::vector<double>{9, 1}));
  EXPECT_EQ(GatherData(project.Sheet).Points.X[0], (std::vector<double>{1, 9}));
  EXPECT_EQ(GatherData(project.Sheet).Points.Row, (std::vector<std::size_t>{2, 1}));
  EXPECT_EQ(data.Points.Row, (std::vector<std::size_t>{1, 2}));
  EXPECT_EQ(data.IncompleteRows, 4u);
  EXPECT_EQ(TextRowsText(data, project.Sheet),
            "Row 4, column 'Y': 'high' is not a number. 3 cells in 2 rows of the data are no numbers.");
}

TEST(SolvedList, RanksModelsBeforeInterpolations) {
  Project project = LineProject();
  EXPECT_TRUE(SolvedItems(project, 1).empty());
  ModelClass& line = SolveModel(project, "a*x+b", 1);
  ModelClass& hyperbola = SolveModel(project, "a+b/x", 1);
  std::string log;
  ASSERT_TRUE(project.Interpolations[1].Fit(GatherData(project.Sheet).Points, log));
  const SolvedItem polynomial{nullptr, &project.Interpolations[1]};
  EXPECT_EQ(SolvedItems(project, 1), (std::vector<SolvedItem>{{&line, nullptr}, {&hyperbola, nullptr}, polynomial}));
  hyperbola.StdErr = line.StdErr / 2;
  EXPECT_EQ(SolvedItems(project, 4), (std::vector<SolvedItem>{{&hyperbola, nullptr}, {&line, nullptr}, polynomial}));
}

// By hand: the line 2x + 1.2 leaves -0.2, -0.2, 0.8, -0.2, -0.2.
TEST(DataTable, ShowsResidualsInTheOrderOfTheSheet) {
  Project project = ProjectOf({{3, 1, 2, 4, 5}, {8, 3, 5, 9, 11}});
  project.Sheet.Headers[1] = "Weight";
  ModelClass& model = SolveModel(project, "a*x+b", 1);
  model.SetValue(1, 2);
  model.SetValue(2, 1.25);
  const GatheredData data = GatherData(project.Sheet, PointOrder::OfSheet);
  DataTable table({&model, nullptr}, data, project.Sheet, LocaleText());
  std::vector<std::string> headings;
  for (std::size_t c = 0; c < table.ColumnCount(); ++c) headings.push_back(table.ColumnHeading(c));
  EXPECT_EQ(headings, (std::vector<std::string>{"Row", "X", "Weight", "Calc Y", "Residual", "Abs Residual"}));
  ASSERT_EQ(table.RowCount(), 5u);
  EXPECT_EQ(RowOf(table, 0), (std::vector<std::string>{"1", "3", "8", "7.25", "7.5e-1", "7.5e-1"}));
  EXPECT_EQ(RowOf(table, 1), (std::vector<std::string>{"2", "1", "3", "3.25", "-2.5e-1", "2.5e-1"}));

  const LocaleText german{',', ';', '.', '.', ':'};
  DataTable chosen({&model, nullptr}, data, project.Sheet, german, {"0.000", "0.00"});
  EXPECT_EQ(RowOf(chosen, 1), (std::vector<std::string>{"2", "1,000", "3,000", "3,250", "-0,25", "0,25"}));
  EXPECT_EQ(TabSeparated(TableExcerpt(chosen, 1, 1, 2, 2)), "1,000\t3,000\r\n2,000\t5,000\r\n");
}

// R 4, predict() of lm(): the limits of a weighted line at its points, prediction by their weights.
TEST(DataTable, HasColumnsForLimits) {
  Project project =
      ProjectOf({{3, 1, 2, 4, 5}, {8, 3, 5, 9, 11}, {.5, 1, .70710678118654752, 1, .70710678118654752}}, true);
  ModelClass& model = SolveModel(project, "a*x+b", 1);
  const GatheredData data = GatherData(project.Sheet, PointOrder::OfSheet);
  const LocaleText german{',', ';', '.', '.', ':'};
  const DataTable table({&model, nullptr}, data, project.Sheet, german, {"0.000", "0.00"}, {true, true, 3});
  ASSERT_EQ(table.ColumnCount(), 11u);
  EXPECT_EQ(table.ColumnHeading(6), "StDev");
  EXPECT_EQ(table.ColumnHeading(7), "99% confidence, lower");
  EXPECT_EQ(table.ColumnHeading(10), "99% prediction, upper");
  EXPECT_EQ(RowOf(table, 0), (std::vector<std::string>{"1", "3,000", "8,000", "7,403", "0,60", "0,60", "0,500", "5,749",
                                                       "9,057", "4,316", "10,489"}));
  // An interpolation has none.
  std::string log;
  ASSERT_TRUE(project.Interpolations[1].Fit(GatherData(project.Sheet).Points, log));
  const DataTable none({nullptr, &project.Interpolations[1]}, data, project.Sheet, LocaleText(), {}, {true, false, 2});
  EXPECT_EQ(none.ColumnCount(), 9u);
  EXPECT_EQ(none.Cell(1, 7) + none.Cell(1, 8), "");
}

TEST(DataTable, ShowsTheDatesOfTheSheet) {
  Project project = ProjectOf({{46348, 46349.4375, 46350, 46351, 46352}, {8, 3, 5, 9, 11}});
  project.Sheet.Formats[0].NumberFormat = "dd.mm.yyyy";
  ModelClass& model = SolveModel(project, "a*x+b", 1);
  const GatheredData data = GatherData(project.Sheet, PointOrder::OfSheet);
  const LocaleText german{',', ';', '.', '.', ':', DateOrder::DayFirst};
  EXPECT_EQ(DataTable({&model, nullptr}, data, project.Sheet, german, WindowPatterns()).Cell(1, 1), "23.11.2026");
  EXPECT_EQ(DataTable({&model, nullptr}, data, project.Sheet, german).Cell(1, 1), "2026-11-23 10:30");
}

TEST(DataTable, SaysWhereASolutionHasNoValue) {
  Project project = ProjectOf({{1, 2, 3}, {1, 4, 9}});
  std::string log;
  InterpClass& polynomial = project.Interpolations[1];
  ASSERT_TRUE(polynomial.Fit(GatherData(project.Sheet).Points, log));
  project.Sheet.Cells.SetGridCellNumber(3, 1, 4);
  const GatheredData data = GatherData(project.Sheet, PointOrder::OfSheet);
  const DataTable table({nullptr, &polynomial}, data, project.Sheet, LocaleText());
  EXPECT_EQ(RowOf(table, 1), (std::vector<std::string>{"2", "2", "4", "4", "0.0e+0", "0.0e+0"}));
  EXPECT_EQ(RowOf(table, 2), (std::vector<std::string>{"3", "4", "9", "ERROR", "ERROR", "ERROR"}));
  std::string headings = "<table>\r\n<tr>";
  for (std::size_t c = 0; c < table.ColumnCount(); ++c)
    headings += "<th align=\"right\">" + table.ColumnHeading(c) + "</th>";
  EXPECT_NE(Html(table).find(headings + "</tr>\r\n<tr><td>1</td>"), std::string::npos) << Html(table);
}

TEST(TextTable, BecomesTextAndHtml) {
  Report report;
  report.Add(RowKind::Line, {"Y = ", "a<b & c"});
  report.Add(RowKind::Line, {});
  report.Add(RowKind::Heading, {"Table"});
  report.Add(RowKind::ColumnHeadings, {"Variable", "", "Value"});
  report.Add(RowKind::Values, {"a\tb\r\n", "", "1"});
  EXPECT_EQ(TabSeparated(report), "Y = \ta<b & c\r\n\r\nTable\r\nVariable\t\tValue\r\na b  \t\t1\r\n");
  const std::string html = Html(report);
  for (const char* part :
       {"<td>Y = </td><td align=\"left\" colspan=\"2\">a&lt;b &amp; c</td>", "<table>\r\n<tr><td>",
        "<th align=\"left\" colspan=\"3\">Table</th>", "<tr><th align=\"left\">Variable</th><th align=\"right\"></th>",
        "<th align=\"right\">Value</th>", "<td align=\"right\">1</td>", "charset=\"utf-8\""})
    EXPECT_NE(html.find(part), std::string::npos) << part << " in " << html;
}

TEST(DataTable, ShowsTheDeviationsOfWeightedData) {
  Project project = ProjectOf({{1, 2, 3, 4}, {3, 5, 8, 9}, {0.5, 1, 2, 1}}, true);
  const SolvedItem line{&SolveModel(project, "a*x+b", 1), nullptr};
  for (const bool weighted : {true, false}) {
    if (!weighted) project.Sheet.Cells.GridClearRange({1, 3, 4, 3});
    const GatheredData data = GatherData(project.Sheet, PointOrder::OfSheet);
    const DataTable table(line, data, project.Sheet, LocaleText());
    const std::size_t last = table.ColumnCount() - 1;
    EXPECT_EQ(table.ColumnHeading(last), weighted ? "StDev" : "Abs Residual");
    if (weighted) {
      EXPECT_EQ(table.Cell(0, last) + "/" + table.Cell(2, last), "0.5/2");
    }
  }
}

}  // namespace
}  // namespace quorvex
