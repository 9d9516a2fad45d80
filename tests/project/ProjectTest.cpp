#include <gtest/gtest.h>

#include "engine/UserModel.h"
#include "equation/Catalogue.h"
#include "project/Project.h"

namespace quorvex {
namespace {

TEST(NewProject, HasHeadersCatalogueAndInterpolations) {
  const struct {
    std::size_t variables;
    bool weighted;
    std::vector<std::string> headers;
  } kCases[] = {{1, false, {"X", "Y"}}, {1, true, {"X", "Y", "StDev"}}, {3, true, {"X1", "X2", "X3", "Y", "StDev"}}};
  for (const auto& c : kCases) {
    const Project project = NewProject(c.variables, c.weighted, LocaleText());
    EXPECT_EQ(project.FileName, "Untitled");
    EXPECT_EQ(project.Sheet.Headers, c.headers);
    EXPECT_EQ(project.Sheet.Formats, std::vector<ColumnFormat>(c.headers.size()));
    EXPECT_EQ(project.Models.size(), Catalogue(static_cast<int>(c.variables)).size());
    ASSERT_EQ(project.Interpolations.size(), 3u);
    EXPECT_EQ(project.Interpolations[2].id, "Rational Function");
  }
}

TEST(ProjectOfSolve, HoldsThePointsAndTheModelsOfAFile) {
  ModelCollection models;
  Project source = NewProject(1, false, LocaleText());
  ModelClass& solved = *source.Models.Find("a*x+b");
  SolveData data{{{3, 1, 2}}, {6, 2, 4.5}, {0.1, 0.2, 0.3}, {1, 1, 1}};
  std::string log;
  SolveForm form;
  solved.SolveType = 1;
  ASSERT_TRUE(solved.Fit(data, Settings(), log, form)) << log;
  source.Models.Add("Mine", MakeUserModel({"Mine", {"a*x"}, "", {{"Value", "1", "Numerical"}}}, 1, LocaleText()));

  const Project project = ProjectOfSolve(data, true, source.Models, {1e-6, 50, 5}, LocaleText());
  EXPECT_EQ(project.Limits, (SolveLimits{1e-6, 50, 5}));
  EXPECT_EQ(project.Sheet.ColumnCount(), 3u);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(project.Sheet.Cells.GridCellNumber(i + 1, 1), data.X[0][i]);  // in the order of the data
    EXPECT_EQ(project.Sheet.Cells.GridCellNumber(i + 1, 2), data.Y[i]);
    EXPECT_EQ(project.Sheet.Cells.GridCellNumber(i + 1, 3), data.SD[i]);
  }
  EXPECT_EQ(project.Models.size(), 2u);
  ASSERT_NE(project.Models.Find("a*x+b"), nullptr);
  EXPECT_EQ(project.Models.Find("a*x+b")->Values(1), solved.Values(1));
  EXPECT_EQ(ProjectOfSolve(data, false, source.Models, {}, LocaleText()).Sheet.ColumnCount(), 2u);
}

}  // namespace
}  // namespace quorvex
