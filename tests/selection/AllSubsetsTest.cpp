#include <cmath>
#include <set>

#include "selection/AllSubsets.h"
#include "selection/SelectionCase.h"

namespace quorvex {
namespace {

// Keeps the counter's values.
class CountingForm : public SelectionForm {
 public:
  std::vector<double> Values;
  double Total = 0;
  std::size_t AbortAfter = std::size_t(-1);

  void SetCounter(double i, double total) override {
    Values.push_back(i);
    Total = total;
  }
  bool Aborted() const override { return Values.size() >= AbortAfter; }
};

SubsetSearch SearchFor(std::size_t candidates, std::size_t most, SubsetRank rank) {
  return {std::vector<bool>(candidates), most, rank};
}

TEST(AllSubsets, RanksAsReferencesDo) {
  for (const auto& row : TableRows("best_subsets.txt", 4)) {
    const DataSheet sheet = SelectionSheet(row[0]);
    const SubsetSolver solver(DataFor(sheet, ChoicesFor(sheet)), true, SelectionForm());
    SelectionForm form;
    const SubsetRank rank = row[2] == "StdErr" ? SubsetRank::StdErr
                            : row[2] == "RSS"  ? SubsetRank::RSS
                                               : SubsetRank::R2;
    const auto ranked = AllSubsets(solver, SearchFor(solver.Candidates(), std::stoul(row[1]), rank), form);
    const auto best = Split(row[3], ';');
    ASSERT_GE(ranked.size(), best.size());
    for (std::size_t i = 0; i < best.size(); ++i) {
      const auto words = Split(best[i], ' ');
      EXPECT_EQ(ranked[i].Variables, SubsetOf(words[0], ',')) << row[0] << i;
      EXPECT_NEAR(ranked[i].Quality.RSS / Number(words[1]), 1, 1e-10) << row[0] << i;
    }
  }
}

// Whether intercept, limit, and a variable that is always in, are kept, and each combination has the numbers of a
// direct solution. Longley's columns are nearly alike.
TEST(AllSubsets, MeetsDirectSolutions) {
  for (const char* file : {"longley.csv", "mtcars.txt", "stackloss.txt"}) {
    for (const bool intercept : {true, false}) {
      const DataSheet sheet = SelectionSheet(file);
      const SubsetSolver solver(DataFor(sheet, ChoicesFor(sheet)), intercept, SelectionForm());
      SubsetSearch search = SearchFor(solver.Candidates(), 4, SubsetRank::StdErr);
      search.Always[1] = true;
      SelectionForm form;
      std::set<Subset> met;
      double last = 0;
      for (const RankedSubset& ranked : AllSubsets(solver, search, form)) {
        const auto fit = solver.Fit(ranked.Variables);
        ASSERT_TRUE(fit);
        EXPECT_NEAR(ranked.Quality.RSS / fit->RSS, 1, 1e-12);
        EXPECT_NEAR(ranked.Quality.R2, fit->R2, 1e-13);
        EXPECT_NEAR(ranked.Quality.StdErr / fit->StdErr, 1, 1e-12);
        EXPECT_NEAR(ranked.Quality.Cp, fit->Cp, 1e-10 * std::abs(fit->Cp) + 1e-10);
        EXPECT_GE(ranked.Quality.StdErr, last);
        last = ranked.Quality.StdErr;
        EXPECT_LE(ranked.Variables.size(), 4u);
        EXPECT_TRUE(std::count(ranked.Variables.begin(), ranked.Variables.end(), 1u));
        met.insert(ranked.Variables);
      }
      const std::size_t k = solver.Candidates() - 1;  // up to three of them beside the one that is in
      const std::size_t upToThree = 1 + k + k * (k - 1) / 2 + k * (k - 1) * (k - 2) / 6;
      EXPECT_EQ(met.size(), upToThree) << file;
    }
  }
}

TEST(AllSubsets, CountsInTheOrderOfTheCounter) {
  const DataSheet sheet = SelectionSheet("mtcars.txt");
  const SubsetSolver solver(DataFor(sheet, ChoicesFor(sheet)), true, SelectionForm());
  CountingForm all;
  const auto ranked = AllSubsets(solver, SearchFor(10, 20, SubsetRank::R2), all);
  EXPECT_EQ(ranked.size(), 1023u);
  ASSERT_EQ(all.Values.size(), 1024u);  // all but the empty one, and the end
  for (std::size_t i = 0; i < 1023; ++i) EXPECT_EQ(all.Values[i], static_cast<double>(i + 2));
  EXPECT_EQ(all.Total, 1024);
  // The best of them, not the first.
  CountingForm again;
  const auto few = AllSubsets(solver, SearchFor(10, 20, SubsetRank::R2), again, 5);
  ASSERT_EQ(few.size(), 5u);
  for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(few[i].Variables, ranked[i].Variables);
  CountingForm aborted;
  aborted.AbortAfter = 100;
  EXPECT_EQ(AllSubsets(solver, SearchFor(10, 20, SubsetRank::R2), aborted).size(), 100u);
}

TEST(AllSubsets, LeavesOutWhatCannotBeSolved) {
  const std::vector<double> a = {1, 2, 4, 8, 16}, b = {3, 1, 4, 1, 5}, y = {2, 3, 5, 9, 16};
  const auto sets = [&](const std::vector<std::vector<double>>& columns, SubsetSearch search) {
    const DataSheet sheet = SelectionSheet(columns);
    const SubsetSolver solver(DataFor(sheet, ChoicesFor(sheet)), true, SelectionForm());
    SelectionForm form;
    std::set<Subset> met;
    for (const RankedSubset& ranked : AllSubsets(solver, search, form)) met.insert(ranked.Variables);
    return met;
  };
  EXPECT_EQ(sets({a, a, b, y}, SearchFor(3, 20, SubsetRank::R2)), (std::set<Subset>{{0}, {1}, {2}, {0, 2}, {1, 2}}));
  // Five points leave no degree of freedom for four variables and an intercept.
  EXPECT_EQ(sets({a, b, {0, 0, 1, 1, 0}, {1, 5, 1, 2, 1}, y}, SearchFor(4, 20, SubsetRank::R2)).size(), 14u);
  SubsetSearch alike = SearchFor(3, 20, SubsetRank::R2);
  alike.Always = {true, true, false};
  EXPECT_TRUE(sets({a, a, b, y}, alike).empty());
}

// As many squares and products as twenty columns have, of which a counter of 64 bits knows nothing.
TEST(AllSubsets, TakesManyCandidates) {
  DataSheet sheet(20, false);
  for (std::size_t row = 1; row <= 300; ++row)
    for (std::size_t col = 1; col <= 21; ++col)
      sheet.Cells.SetGridCellNumber(row, col, std::sin(static_cast<double>(row * row * col + 7 * col)));
  const VarSelect choices = ChoicesFor(sheet, SelectionProcedure::AllSubsets, true);
  const SubsetSolver solver(DataFor(sheet, choices), true, SelectionForm());
  CountingForm form;
  EXPECT_EQ(AllSubsets(solver, SearchFor(230, 2, SubsetRank::R2), form).size(), 230u + 230 * 229 / 2);
  EXPECT_EQ(CounterStatus(form.Values[0], form.Total, {.DecimalSeparator = ','}),
            "Processing: 2 of 1,72543658669764E+69");
}

}  // namespace
}  // namespace quorvex
