#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/SolveData.h"
#include "engine/UserModel.h"
#include "project/Project.h"
#include "solve/GatherData.h"
#include "solve/SolvedList.h"

namespace quorvex {

// A project with these columns (X's, then Y, then what is a standard deviation) as its sheet.
inline Project ProjectOf(const std::vector<std::vector<double>>& columns, bool hasStandardDeviation = false,
                         const LocaleText& locale = {}) {
  Project project = NewProject(columns.size() - (hasStandardDeviation ? 2 : 1), hasStandardDeviation, locale);
  for (std::size_t c = 0; c < columns.size(); ++c)
    for (std::size_t r = 0; r < columns[c].size(); ++r)
      project.Sheet.Cells.SetGridCellNumber(r + 1, c + 1, columns[c][r]);
  return project;
}

// A user-defined model of the project, its coefficients as they are.
inline ModelClass& AddModel(Project& project, const std::string& name, const std::vector<std::string>& lines) {
  std::unique_ptr<ModelClass> model = NewModelFor(project.Sheet.IndependentVariables, project.Locale);
  model->SetID(name, lines);
  EXPECT_TRUE(model->IsValidEquation()) << lines[0];
  return *project.Models.Add(name, std::move(model));
}

// Solves a model of the project, 0 nonlinear or 1 linear.
inline ModelClass& SolveModel(Project& project, const std::string& name, int solveType) {
  ModelClass* found = project.Models.Find(name);
  if (found == nullptr) throw std::invalid_argument(name);
  ModelClass& model = *found;
  model.SolveType = solveType;
  std::string log;
  SolveForm form;
  EXPECT_TRUE(model.Fit(GatherData(project.Sheet).Points, Settings(), log, form)) << log;
  return model;
}

// Five points about a line. By hand: a = 2, b = 1.2 of a*x+b, residual sum 0.8 of 40.8.
inline Project LineProject(const LocaleText& locale = {}) {
  return ProjectOf({{1, 2, 3, 4, 5}, {3, 5, 8, 9, 11}}, false, locale);
}

// Five points about a plane over X1 and X2.
inline Project PlaneProject(const LocaleText& locale = {}) {
  return ProjectOf({{1, 2, 3, 4, 6}, {1, 3, 2, 5, 4}, {3, 5, 8, 9, 11}}, false, locale);
}

}  // namespace quorvex
