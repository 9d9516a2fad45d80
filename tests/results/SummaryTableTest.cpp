#include <gtest/gtest.h>

#include <cmath>

#include "results/SolvedProject.h"
#include "results/SummaryTable.h"

namespace quorvex {
namespace {

std::vector<std::string> Column(const TextTable& table, std::size_t column) {
  std::vector<std::string> cells;
  for (std::size_t row = 0; row < table.RowCount(); ++row) cells.push_back(table.Cell(row, column));
  return cells;
}

// The line by hand: RSS 0.8 of 40.8 about the mean, with 3 degrees of freedom of 4.
TEST(SummaryTable, TellsHowWellEachModelFits) {
  Project project = LineProject();
  SolveModel(project, "a*x+b", 1);
  SolveModel(project, "a*x^2+b*x+c", 1);
  const SummaryTable table(project.Models, 1, {}, {"0.0000000000", "0.000000"});
  std::vector<std::string> headings;
  for (std::size_t c = 0; c < table.ColumnCount(); ++c) headings.push_back(table.ColumnHeading(c));
  EXPECT_EQ(headings, (std::vector<std::string>{"Rank", "Model", "StdError", "Residual Sum", "Residual Avg.", "RSS",
                                                "R^2", "Ra^2"}));
  EXPECT_EQ(Column(table, 0), (std::vector<std::string>{"1", "2"}));
  EXPECT_EQ(Column(table, 1), (std::vector<std::string>{"a*x^2+b*x+c", "a*x+b"}));
  const auto number = [&](std::size_t column) { return std::stod(table.Cell(1, column)); };
  EXPECT_NEAR(number(2), std::sqrt(0.8 / 3), 1e-10);
  EXPECT_EQ(table.Cell(1, 3), "0.000000");
  EXPECT_EQ(table.Cell(1, 4), "0.000000");
  EXPECT_NEAR(number(5), 0.8, 1e-10);
  EXPECT_NEAR(number(6), 1 - 0.8 / 40.8, 1e-10);
  EXPECT_NEAR(number(7), 1 - 0.8 / 3 / (40.8 / 4), 1e-10);
}

TEST(SummaryTable, TellsTheRankingWhereItIsSortedByOne) {
  Project project = LineProject();
  for (const char* model : {"a*x+b", "a*x^2+b*x+c"}) SolveModel(project, model, 1);
  project.Models.Find("a*x+b")->LeaveOneOut = 0.25;
  const SummaryTable table(project.Models, kSortByBIC, {}, {"0.000", "0.000"});
  ASSERT_EQ(table.ColumnCount(), 15u);
  std::string headings;
  for (std::size_t c = 2; c < 10; ++c) headings += table.ColumnHeading(c) + "|";
  EXPECT_EQ(headings, "AICc|Delta AICc|Akaike Weight|BIC|CV Error|Group|Same As|StdError|");
  // 5 points and 2 coefficients: 5 ln(0.8 / 5) + 6 + 24, and + 3 ln 5. For 3 coefficients AICc has no room.
  const auto row = Column(table, 1)[0] == "a*x+b" ? 0u : 1u;
  std::string cells;
  for (std::size_t c = 2; c < 9; ++c) cells += table.Cell(row, c) + "|";
  EXPECT_EQ(cells, "20.837|0.000|1.000|-4.335|0.250|1||");
  EXPECT_EQ(table.Cell(1 - row, 2) + table.Cell(1 - row, 3), "");
}

TEST(SummaryTable, RanksByEachKeyAndLeavesOutWhatIsNotSolved) {
  Project project = LineProject();
  const struct {
    const char* Name;
    double RSS, R2, R2Adjust, StdErr;
  } models[] = {{"a*x+b", 1, 0.7, 0.6, 9}, {"a*x^2+b*x+c", 2, 0.9, 0.5, 8}, {"a+b/x", 3, 0.8, 0.7, 7}};
  for (const auto& m : models) {
    ModelClass& model = *project.Models.Find(m.Name);
    model.Solved = true;
    model.RSS = m.RSS, model.R2 = m.R2, model.R2Adjust = m.R2Adjust, model.StdErr = m.StdErr;
  }
  project.Interpolations[0].Solved = true;
  const auto ranked = [&](int sortIndex) { return Column(SummaryTable(project.Models, sortIndex, {}, {}), 1); };
  const std::string line = "a*x+b", parabola = "a*x^2+b*x+c", hyperbola = "a+b/x";
  EXPECT_EQ(ranked(1), (std::vector{line, parabola, hyperbola}));
  EXPECT_EQ(ranked(2), (std::vector{parabola, hyperbola, line}));
  EXPECT_EQ(ranked(3), (std::vector{hyperbola, line, parabola}));
  EXPECT_EQ(ranked(4), (std::vector{hyperbola, parabola, line}));
  project.Models.Find("a*x+b")->Solved = false;
  EXPECT_EQ(ranked(1).size(), 2u);
  project.Models.Find("a+b/x")->R2 = std::nan("");
  EXPECT_EQ(SummaryTable(project.Models, 1, {}, {}).Cell(1, 6), "");
  LocaleText german;
  german.DecimalSeparator = ',';
  EXPECT_EQ(SummaryTable(project.Models, 1, german, {}).Cell(0, 6), "0,9");
}

}  // namespace
}  // namespace quorvex
