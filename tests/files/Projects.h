#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "engine/UserModel.h"
#include "project/Project.h"
#include "sheet/ComputeWeights.h"
#include "sheet/LoadGridData.h"

namespace quorvex {

inline constexpr LocaleText kCommaLocale = {.DecimalSeparator = ',', .ListSeparator = ';', .ThousandSeparator = '.'};

inline SolveData PointsOf(const Project& project) {
  const DataSheet& sheet = project.Sheet;
  auto loaded = LoadGridData(sheet.Cells, {sheet.IndependentVariables, sheet.HasStandardDeviation});
  EXPECT_TRUE(loaded);
  SolveData data = std::move(loaded->Points);
  data.sig = ComputeWeights(data.SD);
  return data;
}

inline ModelClass& AddUserModel(Project& project, const UserModelDefinition& stored) {
  UserModelDefinition definition = stored;
  for (std::string& line : definition.FunctionList) line = LocalizeExpression(line, project.Locale);
  for (auto& coefficient : definition.Coefficients) {
    coefficient.RuleConstant = LocalizeExpression(coefficient.RuleConstant, project.Locale);
    coefficient.Derivative = LocalizeExpression(coefficient.Derivative, project.Locale);
  }
  auto model = MakeUserModel(definition, project.Sheet.IndependentVariables, project.Locale);
  EXPECT_NE(model, nullptr) << definition.id;
  ModelClass* added = project.Models.Add(definition.id, std::move(model));
  EXPECT_NE(added, nullptr) << definition.id;
  return *added;
}

inline void Fit(ModelClass& model, const SolveData& data, int SolveType) {
  std::string log;
  SolveForm form;
  model.SolveType = SolveType;
  EXPECT_TRUE(model.Fit(data, Settings(), log, form)) << model.id << "\n" << log;
}

// One variable: a built-in model solved, a user's model with a function solved by a sweep, one that is not solved, two
// interpolations, and a sheet with an empty cell, a text and an awkward number in it.
inline Project OneVariableProject(const LocaleText& locale) {
  Project project = NewProject(1, false, locale);
  const double x[] = {0.5, 1, 2, 3, 4.25, 5, 7, 1.0 / 3}, y[] = {1.1, 2.3, 3.9, 6.2, 8.4, 10.1, 13.7, 0.6};
  GridCells& cells = project.Sheet.Cells;
  for (std::size_t i = 0; i < std::size(x); ++i) {
    cells.SetGridCellNumber(i + 1, 1, x[i]);
    cells.SetGridCellNumber(i + 1, 2, y[i]);
  }
  cells.SetGridCellNumber(9, 1, -0.0);  // no point: Y is empty
  cells.SetGridCellText(10, 2, "n/a");
  project.Sheet.Headers = {"Time, s", "\"Level\""};
  project.Sheet.Formats[1].NumberFormat = "0.0###";
  project.Sheet.Formats[1].FontItalic = true;
  project.Notes = "First \"run\"\r\nsecond line, with comma\r\n\xC3\xA4";
  project.Limits = {1e-8, 300, 12};

  const SolveData data = PointsOf(project);
  Fit(*project.Models.Find("a*x+b"), data, 1);
  ModelClass& swept = AddUserModel(project, {"My line",
                                             {"a*f1+b*0.5", "x+max(0,b-b)"},
                                             "A line",
                                             {{"Value", "1", "Numerical"}, {"/ymax", "2.5", "Numerical"}}});
  swept.SetIC(data);
  swept.SpecifyICComplete = true;
  swept.SetICRange({{0.5, 3, 3}, {-1, 1, 2}});
  swept.SetConstant(1, 2);
  Fit(swept, data, 0);
  EXPECT_EQ(swept.SweepCount, 6);
  AddUserModel(project, {"Unsolved", {"k*exp(-x)"}, "", {{"*xmax", "0.25", "exp(-x)"}}});
  std::string log;
  for (const std::size_t kind : {0u, 1u}) EXPECT_TRUE(project.Interpolations[kind].Fit(data, log)) << log;
  project.Interpolations[0].LegendText = "spline";
  return project;
}

// Three weighted variables, which have few built-in models.
inline Project SeveralVariablesProject(const LocaleText& locale) {
  Project project = NewProject(3, true, locale);
  const double rows[][5] = {{1, 2, 0.5, 3.1, 0.1}, {2, 1, 0.7, 4.2, 0.2}, {3, 5, 0.1, 9.9, 0.1}, {4, 4, 0.9, 9.4, 0.3},
                            {5, 7, 0.3, 14, 0.1},  {6, 1, 0.4, 8.3, 0.2}, {2, 8, 0.6, 12, 0.1},  {7, 3, 0.8, 12, 0.3}};
  for (std::size_t i = 0; i < std::size(rows); ++i)
    for (std::size_t col = 0; col < 5; ++col) project.Sheet.Cells.SetGridCellNumber(i + 1, col + 1, rows[i][col]);
  project.Sheet.Cells.ClearCell(2, 5);
  const SolveData data = PointsOf(project);
  Fit(**project.Models.begin(), data, 1);
  Fit(AddUserModel(project, {"Plane",
                             {"a*x1+b*x2+c*x3"},
                             "End_description",
                             {{"Value", "1.5", "x1"}, {"Value", "1", "x2"}, {"Value", "1", "x3"}}}),
      data, 0);
  return project;
}

}  // namespace quorvex
