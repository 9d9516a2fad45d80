// The nonlinear reference sets of NIST's StRD, each opened as a project and solved as its user would.

#include <gtest/gtest.h>

#include "NistProject.h"
#include "SolvableProject.h"
#include "TemporaryFolder.h"
#include "files/ProjectFile.h"

namespace quorvex {
namespace {

// From the start nearer to the solution. The digits are those that a plain Levenberg-Marquardt run reaches, as the
// index of the sets has them, less the margin of another order of the sums.
TEST(NistProjects, ReachTheCertifiedSolutionAndKeepItInTheFile) {
  const std::vector<NistSet> sets = NistSets("nonlinear");
  ASSERT_EQ(sets.size(), 13u);
  for (const NistSet& row : sets) {
    SCOPED_TRACE(row.at("name"));
    TemporaryFolder folder;
    const std::string file = folder.Path("set.qvx");
    ASSERT_EQ(WriteProject(NistProject(row), file), 0);
    Result<Project> opened = ReadProject(file, LocaleText());
    ASSERT_TRUE(opened) << opened.error();
    SolvableProject p(std::stoul(row.at("n_indep")));
    p.Document = std::move(*opened);
    if (row.at("lm_start2").starts_with("slow")) p.Preferences.Set("maxiterations", "10000");
    p.SolveOne(row.at("name"));
    EXPECT_EQ(p.User.Said, std::vector<std::string>{"inform: Solution was successful."}) << p.Solver.Log();
    ASSERT_EQ(WriteProject(p.Document, file), 0);

    Result<Project> reopened = ReadProject(file, LocaleText());
    ASSERT_TRUE(reopened) << reopened.error();
    const std::vector<SolvedItem> solved = SolvedItems(*reopened, kSortByRSS);
    ASSERT_EQ(solved.size(), 1u);
    const ModelClass& model = *solved[0].Model;
    EXPECT_EQ(model.id, row.at("name"));
    const std::vector<double> values = Numbers(row.at("certified")), errors = Numbers(row.at("certified_sd"));
    const double expected = std::stod(Split(row.at("lm_start2"), ' ')[2]) - 1.5;
    for (std::size_t i = 0; i < values.size(); ++i) {
      const int coefficient = static_cast<int>(i) + 1;
      EXPECT_GE(CorrectDigits(model.Values(coefficient), values[i], 11), expected) << coefficient;
      EXPECT_GE(CorrectDigits(model.StandardError(coefficient), errors[i], 11), 5) << coefficient;
    }
    EXPECT_GE(CorrectDigits(model.RSS, std::stod(row.at("certified_rss")), 11), 5);
    EXPECT_GE(CorrectDigits(model.StdErr, std::stod(row.at("certified_rsd")), 11), 5);
  }
}

// The linear sets as models of the user's own, which only the nonlinear search can solve, from starts of zeros and of
// hundreds. Their designs are ill-conditioned by intent, and it keeps half of the digits that the linear solver does;
// of Wampler4's coefficients none, for they are up to 200,000 times smaller than their standard errors.
TEST(NistProjects, ReachTheCertifiedSolutionOfLinearSetsToo) {
  const std::map<std::string, double> least = {{"Norris", 7},  {"Pontius", 7},   {"NoInt1", 10},
                                               {"Longley", 4}, {"Wampler1", 10}, {"Wampler4", -1}};
  const std::vector<NistSet> sets = NistSets("linear");
  ASSERT_EQ(sets.size(), least.size());
  for (const std::string start : {"0", "100"}) {
    for (NistSet row : sets) {
      SCOPED_TRACE(row.at("name") + " from " + start);
      const std::vector<double> certified = Numbers(row.at("certified")), errors = Numbers(row.at("certified_sd"));
      row["start2"] = start;
      for (std::size_t i = 1; i < certified.size(); ++i) row["start2"] += " " + start;
      SolvableProject p(std::stoul(row.at("n_indep")));
      p.Document = NistProject(row);
      p.SolveOne(row.at("name"));
      const std::vector<SolvedItem> solved = SolvedItems(p.Document, kSortByRSS);
      ASSERT_EQ(solved.size(), 1u) << p.Solver.Log();
      const ModelClass& model = *solved[0].Model;
      for (std::size_t i = 0; i < certified.size(); ++i) {
        const int coefficient = static_cast<int>(i) + 1;
        EXPECT_GE(CorrectDigits(model.Values(coefficient), certified[i], 16), least.at(row.at("name")));
        EXPECT_LE(std::abs(model.Values(coefficient) - certified[i]), 1e-3 * errors[i] + 1e-9);
        EXPECT_GE(CorrectDigits(model.StandardError(coefficient), errors[i], 16), 7);
      }
      EXPECT_GE(CorrectDigits(model.RSS, std::stod(row.at("certified_rss")), 16), 10);
    }
  }
}

}  // namespace
}  // namespace quorvex
