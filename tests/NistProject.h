#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "NistSets.h"
#include "Paths.h"
#include "RecordingPrompter.h"
#include "core/NumberText.h"
#include "engine/UserModel.h"
#include "import/spreadsheet/SpreadsheetImport.h"
#include "project/ProjectEditor.h"

namespace quorvex {

// A reference set as a project: its data, as an import brings them, and its model as one of the user's own under the
// name of the set, with the start nearer to the solution as its rules.
inline Project NistProject(const NistSet& row) {
  Project project = NewProject(std::stoul(row.at("n_indep")), false, LocaleText());
  const Settings settings;
  RecordingPrompter user;
  ProjectEditor editor(project, settings, user);
  auto import = OpenImport(TestData("nist/" + row.at("file")), project.Sheet, LocaleText());
  EXPECT_TRUE(import && (*import)->Preview());
  (*import)->Columns.AssignInOrder();
  EXPECT_EQ((*import)->Finish(editor.Edit), ImportOutcome::Imported);

  auto model = NewModelFor(project.Sheet.IndependentVariables, LocaleText());
  model->SetID(row.at("name"), {row.at("model")});
  model->UserType = true;
  // The linear sets come without a start.
  std::vector<double> start(static_cast<std::size_t>(model->NumDependentVar()));
  if (row.at("start2") != "-") start = Numbers(row.at("start2"));
  for (int i = 1; i <= model->NumDependentVar(); ++i)
    model->SetRuleConstant(i, ShortestNumber(start[static_cast<std::size_t>(i - 1)]));
  project.Models.Add(row.at("name"), std::move(model));
  return project;
}

}  // namespace quorvex
