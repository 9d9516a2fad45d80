#include <gtest/gtest.h>

#include "RecordingPrompter.h"
#include "engine/UserModel.h"
#include "files/ProjectFile.h"
#include "project/ChangeColumns.h"
#include "project/ProjectEditor.h"
#include "sheet/TypeInCell.h"

namespace quorvex {
namespace {

using Said = std::vector<std::string>;

struct Columns {
  Settings Preferences;
  RecordingPrompter User;
  Project Document;
  ProjectEditor Editor;

  explicit Columns(std::size_t variables, bool weighted)
      : Document(NewProject(variables, weighted, LocaleText())), Editor(Document, Preferences, User) {
    for (std::size_t row = 1; row <= 5; ++row)
      for (std::size_t col = 1; col <= Document.Sheet.ColumnCount(); ++col)
        Document.Sheet.Cells.SetGridCellNumber(row, col, static_cast<double>(10 * row + col * col));
  }
  bool Change(std::size_t variables, bool weighted) {
    return ChangeColumns(Document, Editor.Edit, {variables, weighted});
  }
  void AddModel(const std::string& id, const std::string& text) {
    auto model = NewModelFor(Document.Sheet.IndependentVariables, LocaleText());
    model->SetID(id, {text});
    Document.Models.Add(id, std::move(model));
  }
  // The file of the project, which holds everything that undo has to bring back.
  std::string File() const { return ProjectText(Document); }
  // "X1 X2 Y|11 0 14", the headers and the first row.
  std::string Row() const {
    std::string text;
    for (const std::string& header : Document.Sheet.Headers) text += (text.empty() ? "" : " ") + header;
    for (std::size_t col = 1; col <= Document.Sheet.ColumnCount(); ++col)
      text += (col == 1 ? "|" : " ") + Document.Sheet.Cells.GridCellText(1, col);
    return text;
  }
};

TEST(ChangeColumns, KeepsWhatTheOtherColumnsHold) {
  const struct {
    ProjectKind before, after;
    const char* row;
    const char* asked;
  } kCases[] = {
      {{1, false}, {2, false}, "X1 X2 Y|11  14", ""},
      {{1, true}, {3, true}, "X1 X2 X3 Y StDev|11   14 19", ""},
      {{1, false}, {1, true}, "X Y StDev|11 14 ", ""},
      {{2, true}, {1, true}, "X Y StDev|11 19 26", "column 'X2' with its 5 cells"},
      {{3, true},
       {1, false},
       "X Y|11 26",
       "column 'X2' with its 5 cells, column 'X3' with its 5 cells and column 'StDev' with its 5 cells"},
      {{1, false}, {1, false}, "X Y|11 14", ""},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.row);
    Columns p(c.before.IndependentVariables, c.before.HasStandardDeviation);
    p.Document.Sheet.Formats[c.before.IndependentVariables].NumberFormat = "0.000";  // that of Y
    const std::string before = p.File();
    const std::string asked = c.asked;
    if (!asked.empty()) {
      p.User.Answer = false;
      EXPECT_FALSE(p.Change(c.after.IndependentVariables, c.after.HasStandardDeviation));
      EXPECT_EQ(p.User.Said,
                Said{"ask: This takes away " + asked + ". Undo brings that back. Do you want to continue?"});
      EXPECT_EQ(p.File(), before);
      EXPECT_FALSE(p.Editor.Menu.UndoEnabled);
      p.User = {};
    }
    EXPECT_EQ(p.Change(c.after.IndependentVariables, c.after.HasStandardDeviation), c.before != c.after);
    EXPECT_EQ(p.User.Said.empty(), asked.empty());
    EXPECT_EQ(p.Row(), c.row);
    EXPECT_EQ(p.Document.Sheet.Formats[c.after.IndependentVariables].NumberFormat, "0.000");
    EXPECT_EQ(p.Document.Models.size(), NewProject(c.after.IndependentVariables, false, LocaleText()).Models.size());
    EXPECT_EQ(p.Editor.Menu.UndoEnabled, c.before != c.after);
    const std::string after = p.File();
    // A file of the new columns reads back to the same.
    const Result<Project> read = ParseProject(after, "columns.qvx", LocaleText());
    ASSERT_TRUE(read);
    EXPECT_EQ(ProjectText(*read), after);
    if (c.before == c.after) continue;
    EXPECT_EQ(p.Editor.Menu.UndoText, "&Undo Change Columns");
    p.Editor.EditUndo();
    EXPECT_EQ(p.File(), before);
    p.Editor.EditRedo();
    EXPECT_EQ(p.File(), after);
  }
}

TEST(ChangeColumns, BringsModelsAndSolutionsBack) {
  Columns p(1, false);
  p.Document.Sheet.Headers = {"Dose", "Y"};
  p.AddModel("mine", "m*x+n");
  const SolveData data{{{11, 21, 31, 41}}, {14, 24, 34, 45}, {1, 1, 1, 1}, {1, 1, 1, 1}};
  for (const char* id : {"mine", "a*x+b"}) {
    std::string log;
    SolveForm form;
    ASSERT_TRUE(p.Document.Models.Find(id)->Fit(data, Settings(), log, form)) << log;
  }
  const std::string solved = p.File();
  EXPECT_TRUE(p.Change(2, false));
  EXPECT_EQ(
      p.User.Said,
      Said{"ask: This takes away 2 solutions and 1 user defined model of 1 independent variable. Undo brings that "
           "back. Do you want to continue?"});
  EXPECT_EQ(p.Document.Models.Find("mine"), nullptr);
  EXPECT_EQ(p.Document.Sheet.Headers, (std::vector<std::string>{"Dose", "X2", "Y"}));
  for (const auto& model : p.Document.Models) ASSERT_EQ(model->NumIndependentVar(), 2);
  // Steps of the new columns, and back through all of them.
  p.AddModel("plane", "u*x1+v*x2");
  EXPECT_TRUE(TypeInCell(p.Editor.Edit, 1, 2, "7"));
  const std::string typed = p.File();
  p.Editor.UndoNewest(2);
  EXPECT_EQ(p.File(), solved);
  EXPECT_EQ(p.User.Said.size(), 1u);
  p.Editor.RedoLast(2);
  EXPECT_EQ(p.File(), typed);
  // A standard deviation alone leaves the models, but not the solutions: the weights are others.
  p.Editor.UndoNewest(2);
  EXPECT_TRUE(p.Change(1, true));
  EXPECT_EQ(p.User.Last(), "ask: This takes away 2 solutions. Undo brings that back. Do you want to continue?");
  EXPECT_FALSE(p.Document.Models.Find("mine")->Solved);
  p.Editor.EditUndo();
  EXPECT_EQ(p.File(), solved);
}

}  // namespace
}  // namespace quorvex
