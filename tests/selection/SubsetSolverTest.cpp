#include <cmath>

#include "NistSets.h"
#include "selection/SelectionCase.h"
#include "selection/SubsetSolver.h"

namespace quorvex {
namespace {

SubsetSolver SolverOf(const DataSheet& sheet, bool intercept = true) {
  VarSelect choices = ChoicesFor(sheet);
  choices.Intercept = intercept;
  return {DataFor(sheet, choices), intercept, SelectionForm()};
}

TEST(SubsetSolver, AgreesWithReferences) {
  for (const auto& row : TableRows("subset_fits.txt", 8)) {
    const std::string where = row[0] + " " + row[1] + " " + row[2];
    const bool intercept = row[2] == "1", weighted = row[3] == "1";
    const DataSheet sheet = SelectionSheet(row[0], weighted);
    const auto fit = SolverOf(sheet, intercept).Fit(SubsetOf(row[1]));
    ASSERT_TRUE(fit) << where << fit.error();
    const auto close = [&](double value, double reference, const std::string& what) {
      // The references keep some 10 digits where the columns are nearly alike.
      EXPECT_NEAR(value, reference, 2e-10 * std::abs(reference)) << where << ": " << what;
    };
    const std::vector<double> whole = Numbers(row[4]);
    close(fit->RSS, whole[0], "RSS");
    close(fit->R2, whole[1], "R2");
    close(fit->StdErr, whole[2], "StdErr");
    close(fit->Cp, whole[5], "Cp");
    std::vector<SubsetCoefficient> coefficients = fit->Coefficients;
    if (intercept) coefficients.insert(coefficients.begin(), *fit->Intercept);
    const auto values = Numbers(row[5]), errors = Numbers(row[6]), p = Numbers(row[7]);
    ASSERT_EQ(coefficients.size(), values.size());
    for (std::size_t j = 0; j < values.size(); ++j) {
      close(coefficients[j].Value, values[j], "value");
      close(coefficients[j].StandardError, errors[j], "standard error");
      EXPECT_NEAR(coefficients[j].p, p[j], 2e-9 * p[j]) << where;
    }
  }
}

TEST(SubsetSolver, ReachesTheCertifiedLongley) {
  const std::vector<NistSet> sets = NistSets("linear");
  const auto longley =
      std::find_if(sets.begin(), sets.end(), [](const NistSet& set) { return set.at("name") == "Longley"; });
  ASSERT_NE(longley, sets.end());
  DataSheet sheet(6, false);
  std::ifstream file(TestData("nist/" + longley->at("file")));
  double value;
  for (std::size_t cell = 0; file >> value; ++cell) sheet.Cells.SetGridCellNumber(cell / 7 + 1, cell % 7 + 1, value);
  const auto fit = SolverOf(sheet).Fit({0, 1, 2, 3, 4, 5});
  ASSERT_TRUE(fit);
  const std::vector<double> certified = Numbers(longley->at("certified"));
  EXPECT_GE(CorrectDigits(fit->Intercept->Value, certified[0], 15), 13);
  for (std::size_t j = 0; j < 6; ++j) EXPECT_GE(CorrectDigits(fit->Coefficients[j].Value, certified[j + 1], 15), 12.5);
  // The certificate of the analysis of variance.
  EXPECT_GE(CorrectDigits(fit->RSS, 836424.055505915, 15), 12.5);
  EXPECT_GE(CorrectDigits(fit->StdErr, 304.854073561965, 15), 13);
  EXPECT_GE(CorrectDigits(fit->Intercept->StandardError, 890420.383607373, 15), 13);
}

TEST(SubsetSolver, DoesNotDependOnUnitsOrOrigins) {
  const DataSheet sheet = SelectionSheet("stackloss.txt");
  const auto reference = SolverOf(sheet).Fit({0, 1, 2});
  for (const double unit : {1e-150, 1e-9, 1e9, 1e140}) {
    DataSheet other = sheet;
    for (std::size_t row = 1; row <= 21; ++row) {
      for (std::size_t col = 1; col <= 4; ++col)
        other.Cells.SetGridCellNumber(row, col, sheet.Cells.GridCellNumber(row, col) * (col == 2 ? unit : 1 / unit));
      // Whole numbers far from 0.
      other.Cells.SetGridCellNumber(row, 3, sheet.Cells.GridCellNumber(row, 3) + 1e12);
    }
    const auto fit = SolverOf(other).Fit({0, 1, 2});
    ASSERT_TRUE(fit) << unit << fit.error();
    EXPECT_NEAR(fit->R2, reference->R2, 1e-14) << unit;
    EXPECT_NEAR(fit->Cp, reference->Cp, 1e-12) << unit;
    for (std::size_t j = 0; j < 3; ++j)
      EXPECT_NEAR(fit->Coefficients[j].t / reference->Coefficients[j].t, 1, 1e-13) << unit;
  }
}

// Deviations of such columns are beyond all numbers.
TEST(SubsetSolver, TakesColumnsAsWideAsNumbersAre) {
  const std::vector<double> x = {1.7, -1.7, 1, 0.5, -0.25}, y = {2, 3, 5, 4, 1};
  std::vector<double> wide = x;
  for (double& value : wide) value *= 0x1p1023;
  const auto narrow = SolverOf(SelectionSheet({x, y})).Fit({0}), fit = SolverOf(SelectionSheet({wide, y})).Fit({0});
  ASSERT_TRUE(narrow && fit);
  EXPECT_EQ(fit->R2, narrow->R2);
  EXPECT_EQ(fit->Coefficients[0].p, narrow->Coefficients[0].p);
  EXPECT_EQ(fit->Intercept->Value, narrow->Intercept->Value);
}

TEST(SubsetSolver, GivesOneProbabilityOnBothRoads) {
  const SubsetSolver solver = SolverOf(SelectionSheet("mtcars.txt"));
  const Subset in = {5, 0}, others = {1, 2, 3, 4, 6, 7, 8, 9};
  const auto entering = solver.EnteringProbabilities(in, others);
  ASSERT_TRUE(entering);
  for (std::size_t i = 0; i < others.size(); ++i) {
    const auto fit = solver.Fit({5, 0, others[i]});
    ASSERT_TRUE(fit);
    EXPECT_NEAR((*entering)[i] / fit->Coefficients[2].p, 1, 1e-11) << others[i];
  }
}

TEST(SubsetSolver, RefusesColumnsThatAreAlike) {
  const std::vector<double> a = {1, 2, 4, 8, 16, 31}, y = {2, 3, 5, 9, 16, 33};
  std::vector<double> nearly = a, apart = a, sum = {3, 1, 4, 1, 5, 9}, twice = a;
  nearly[2] += 1e-9;
  apart[2] += 1e-5;
  std::vector<double> both(a.size());
  for (std::size_t i = 0; i < a.size(); ++i) {
    twice[i] = 1e9 * a[i];
    both[i] = a[i] + sum[i];
  }
  const struct {
    std::vector<std::vector<double>> X;
    bool Intercept, Fits;
  } cases[] = {{{a, a}, true, false},
               {{a, twice}, true, false},
               {{a, nearly}, true, false},
               {{a, nearly}, false, false},
               {{a, apart}, true, true},
               {{a, sum, both}, true, false},
               {{a, {7, 7, 7, 7, 7, 7}}, true, false},
               {{a, {0.1, 0.1, 0.1, 0.1, 0.1, 0.1}}, false, true},
               {{a, {0, 0, 0, 0, 0, 0}}, false, false}};
  for (const auto& c : cases) {
    std::vector<std::vector<double>> columns = c.X;
    columns.push_back(y);
    Subset all;
    for (std::size_t j = 0; j < c.X.size(); ++j) all.push_back(j);
    const SubsetSolver solver = SolverOf(SelectionSheet(columns), c.Intercept);
    const auto fit = solver.Fit(all);
    const auto at = &c - cases;
    EXPECT_EQ(static_cast<bool>(fit), c.Fits) << at;
    if (c.Fits) continue;
    EXPECT_EQ(fit.error(), kLeastSquaresError) << at;
    EXPECT_EQ(solver.R2OnOthers(all.back()), 1) << at;
    EXPECT_FALSE(solver.EnteringProbabilities(Subset(all.begin(), all.end() - 1), {all.back()})) << at;
  }
}

TEST(SubsetSolver, NamesTheStepThatFails) {
  const std::vector<double> x = {1, 2, 4, 8}, z = {1, 0, 1, 1};
  const auto huge = SolverOf(SelectionSheet({x, z, {1e200, -1e200, 1e200, 3e200}})).Fit({0});
  ASSERT_FALSE(huge);
  EXPECT_EQ(huge.error(), "Error in fit statistical calculations.");
  // Coefficients of some 1e300, whose variances are beyond all numbers.
  const auto tiny = SolverOf(SelectionSheet({{1e-200, 2e-200, 4e-200, 8e-200}, z, {1, 2, 1, 3}})).Fit({0});
  ASSERT_FALSE(tiny);
  EXPECT_EQ(tiny.error(), "Error in Covariance calculation.");
}

TEST(SubsetSolver, TakesWhatRoundingLeavesOfAPerfectFitForNothing) {
  const std::vector<double> a = {1.1, 2.3, 4.7, 8.9, 3.3, 5.2}, b = {3, 1, 4, 1, 5, 9};
  std::vector<double> y(a.size());
  for (std::size_t i = 0; i < y.size(); ++i) y[i] = 2 + 0.1 * a[i];
  const SubsetSolver solver = SolverOf(SelectionSheet({a, b, y}));
  const auto fit = solver.Fit({0, 1});
  ASSERT_TRUE(fit);
  EXPECT_EQ(fit->RSS, 0);
  EXPECT_EQ(fit->R2, 1);
  EXPECT_EQ(fit->Coefficients[0].p, 0);
  EXPECT_EQ(fit->Coefficients[1].p, 1);
  EXPECT_TRUE(std::isnan(fit->Coefficients[0].t));
  EXPECT_TRUE(std::isnan(fit->Cp));
  const auto entering = solver.EnteringProbabilities({0}, {1});
  ASSERT_TRUE(entering);
  EXPECT_EQ((*entering)[0], 1);
}

TEST(SubsetSolver, RegressesColumnsOnTheOthers) {
  for (const auto& row : TableRows("r2_on_others.txt", 3)) {
    const SubsetSolver solver = SolverOf(SelectionSheet(row[0]), row[1] == "1");
    const std::vector<double> r2 = Numbers(row[2]);
    for (std::size_t j = 0; j < r2.size(); ++j) EXPECT_NEAR(solver.R2OnOthers(j), r2[j], 1e-13) << row[0] << j;
  }
}

}  // namespace
}  // namespace quorvex
