#include <gtest/gtest.h>

#include <array>
#include <random>

#include "RecordingClipboard.h"
#include "RecordingPrompter.h"
#include "engine/UserModel.h"
#include "project/ChangeColumns.h"
#include "project/ProjectEditor.h"
#include "sheet/AverageReplicates.h"
#include "sheet/ColumnLayout.h"
#include "sheet/CombineColumns.h"
#include "sheet/DataSweep.h"
#include "sheet/EditCommands.h"
#include "sheet/PasteSpecial.h"
#include "sheet/ReplaceCells.h"
#include "sheet/ScaleCells.h"
#include "sheet/SortRows.h"
#include "sheet/TypeInCell.h"
#include "sheet/ZeroData.h"

namespace quorvex {
namespace {

using Said = std::vector<std::string>;

const UndoMenu kNothingToUndo;

// A window's project without the window.
struct EditedProject {
  Settings Preferences;
  RecordingPrompter User;
  RecordingClipboard Board;
  Project Document;
  ProjectEditor Editor;

  explicit EditedProject(int undolevels = 15, std::size_t variables = 1, bool weighted = true)
      : Preferences(WithLevels(undolevels)),
        Document(NewProject(variables, weighted, LocaleText())),
        Editor(Document, Preferences, User) {}

  static Settings WithLevels(int undolevels) {
    Settings settings;
    settings.SetNumber("undolevels", undolevels);
    return settings;
  }

  bool Type(std::size_t row, std::size_t col, const std::string& text) {
    return TypeInCell(Editor.Edit, row, col, text);
  }
  void Select(const CellRange& range) { Editor.Edit.Selection = {range}; }
  std::string Text(std::size_t row, std::size_t col) const { return Document.Sheet.Cells.GridCellText(row, col); }
  UndoOutcome Update(int action, const std::optional<UndoLabel>& label = {}) {
    return Editor.UpdateUndoMenu(action, label ? &*label : nullptr);
  }

  // Solves the line a*x+b and the spline through the present points.
  void Solve(const char* model = "a*x+b") {
    const SolveData data{{{1, 2, 3, 4}}, {2, 4, 6.5, 7}, {1, 1, 1, 1}, {1, 1, 1, 1}};
    std::string log;
    SolveForm form;
    ModelClass& line = *Document.Models.Find(model);
    line.SolveType = 1;
    ASSERT_TRUE(line.Fit(data, Settings(), log, form)) << log;
    ASSERT_TRUE(Document.Interpolations[0].Fit(data, log)) << log;
  }
};

// Everything that undo has to bring back, as one text.
std::string Content(const Project& project) {
  std::string text =
      ClipboardText(project.Sheet, {1, 1, std::max<std::size_t>(project.Sheet.Cells.GridLastRow(), 1), 25},
                    project.Locale, CellOrder::Kept);
  for (const std::string& header : project.Sheet.Headers) text += header + "|";
  for (const ColumnFormat& format : project.Sheet.Formats) text += format.NumberFormat + "|";
  for (const auto& model : project.Models) {
    if (!model->Solved) continue;
    text += model->id;
    for (int i = 1; i <= model->NumDependentVar(); ++i) text += " " + std::to_string(model->Values(i));
  }
  for (const InterpClass& interpolation : project.Interpolations) text += interpolation.Solved ? "+" : "-";
  return text;
}

TEST(UpdateUndoMenu, ShowsTheNewestLabelUntilNoneIsLeft) {
  EditedProject p;
  EXPECT_EQ(p.Editor.Menu, kNothingToUndo);
  EXPECT_FALSE(p.Document.Changed);
  p.Type(1, 1, "1");
  EXPECT_TRUE(p.Document.Changed);
  EXPECT_EQ(p.Editor.Menu, (UndoMenu{"&Undo Typing \"1\" in X:1", true, true}));
  p.Type(2, 3, "2");
  p.Update(kLeaveUndo);
  EXPECT_EQ(p.Editor.Menu.UndoText, "&Undo Typing \"2\" in StDev:2");
  EXPECT_EQ(p.Editor.UndoHistory(), (Said{"1\t&Undo Typing \"2\" in StDev:2", "2\t&Undo Typing \"1\" in X:1"}));
  EXPECT_TRUE(p.Editor.EditUndo().Ok);
  EXPECT_EQ(p.Text(2, 3), "");
  EXPECT_EQ(p.Text(1, 1), "1");
  EXPECT_EQ(p.Editor.Menu, (UndoMenu{"&Undo Typing \"1\" in X:1", true, true, "&Redo Typing \"2\" in StDev:2", true}));
  EXPECT_TRUE(p.Editor.EditUndo().Ok);
  EXPECT_EQ(p.Text(1, 1), "");
  EXPECT_EQ(p.Editor.Menu, (UndoMenu{kCannotUndo, false, true, "&Redo Typing \"1\" in X:1", true}));
  EXPECT_EQ(p.Editor.UndoHistory(), (Said{"+2\t&Redo Typing \"2\" in StDev:2", "+1\t&Redo Typing \"1\" in X:1"}));
  EXPECT_TRUE(p.Editor.RedoLast(2).Ok);
  EXPECT_EQ(p.Text(1, 1) + p.Text(2, 3), "12");
  EXPECT_FALSE(p.Editor.EditRedo().Ok);
  EXPECT_EQ(p.Editor.Menu, (UndoMenu{"&Undo Typing \"2\" in StDev:2", true, true}));
  p.Editor.UndoNewest(2);
  p.Type(1, 1, "1");
  p.Update(kResetUndo);
  EXPECT_EQ(p.Editor.Menu, kNothingToUndo);
  EXPECT_EQ(p.Text(1, 1), "1");
  EXPECT_TRUE(p.User.Said.empty());
}

TEST(UpdateUndoMenu, KeepsAsManySnapshotsAsTheSettingSays) {
  EditedProject p(3);
  for (int row = 1; row <= 4; ++row) p.Type(static_cast<std::size_t>(row), 1, std::to_string(row));
  EXPECT_EQ(p.Editor.UndoHistory(),
            (Said{"1\t&Undo Typing \"4\" in X:4", "2\t&Undo Typing \"3\" in X:3", "3\t&Undo Typing \"2\" in X:2"}));
  p.Preferences.SetNumber("undolevels", 2);  // a smaller limit holds from the next operation on
  p.Type(5, 1, "5");
  EXPECT_EQ(p.Editor.UndoHistory(), (Said{"1\t&Undo Typing \"5\" in X:5", "2\t&Undo Typing \"4\" in X:4"}));
  const UndoOutcome outcome = p.Editor.UndoNewest(2);
  EXPECT_TRUE(outcome.Ok && outcome.DataRestored && !outcome.MoreLeft);
  EXPECT_EQ(p.Document.Sheet.Cells.GridLastRow(), 3u);
  EXPECT_FALSE(p.Editor.Menu.UndoEnabled);
  p.Type(9, 1, "9");  // what was taken back cannot be made again behind another operation
  EXPECT_FALSE(p.Editor.Menu.RedoEnabled);
}

TEST(UpdateUndoMenu, SaysOnceThatUndoIsDisabled) {
  EditedProject p(0);
  EXPECT_TRUE(p.Type(1, 1, "1"));
  EXPECT_EQ(p.User.Said, Said{"refuse: Cannot UNDO, the UNDO feature has been disabled."});
  EXPECT_EQ(p.Editor.Menu, kNothingToUndo);
  EXPECT_TRUE(p.Type(2, 1, "2"));
  EXPECT_FALSE(p.Editor.EditUndo().Ok);
  EXPECT_EQ(p.User.Said.size(), 1u);
  EXPECT_EQ(p.Text(1, 1) + p.Text(2, 1), "12");
  EXPECT_TRUE(p.Document.Changed);

  p.Preferences.SetNumber("undolevels", 1);  // from the next operation on
  EXPECT_TRUE(p.Type(3, 1, "3"));
  EXPECT_EQ(p.Editor.Menu.UndoText, "&Undo Typing \"3\" in X:3");
  p.Preferences.SetNumber("undolevels", 0);
  EXPECT_FALSE(p.Editor.EditUndo().Ok);
  EXPECT_EQ(p.Editor.Menu, kNothingToUndo);
  EXPECT_EQ(p.User.Said.size(), 2u);
  EXPECT_EQ(p.Text(3, 1), "3");
}

TEST(UpdateUndoMenu, StopsUndoForTheWindowAfterAFailure) {
  const struct {
    int action;
    const char* told;
  } kCases[] = {
      {kPopUndo, "An error occurred UNDO-ing this transaction, possibly due to memory requirements. "},
      {7, "An error occurred with the UNDO feature. "},
  };
  for (const auto& c : kCases) {
    EditedProject p;
    p.Type(1, 1, "1");
    if (c.action == kPopUndo) p.Editor.EditUndo();  // so that there is none left
    const std::string before = Content(p.Document);
    int action = c.action;
    p.Editor.UpdateUndoMenu(action);
    EXPECT_EQ(action, kResetUndo);
    EXPECT_EQ(p.User.Said,
              Said{"refuse: " + std::string(c.told) + "Quorvex will continue without UNDO in the current window."});
    EXPECT_EQ(Content(p.Document), before);
    EXPECT_EQ(p.Editor.Menu, kNothingToUndo);
    EXPECT_TRUE(p.Type(2, 2, "5"));  // goes on, without undo and without a word
    EXPECT_EQ(p.Text(2, 2), "5");
    EXPECT_EQ(p.Editor.Menu, kNothingToUndo);
    EXPECT_EQ(p.User.Said.size(), 1u);
    EXPECT_TRUE(p.Editor.UndoHistory().empty());
    EXPECT_EQ(p.User.Last(), "refuse: Error retrieving Undo history.");
  }
}

TEST(ForgetNewest, LeavesTheOperationButNotItsSnapshot) {
  EditedProject p;
  p.Type(1, 1, "1");
  p.Type(1, 1, "2");
  p.Editor.ForgetNewest();
  EXPECT_EQ(p.Editor.Menu.UndoText, "&Undo Typing \"1\" in X:1");
  p.Editor.ForgetNewest();
  EXPECT_EQ(p.Editor.Menu, kNothingToUndo);
  EXPECT_EQ(p.Text(1, 1), "2");
}

TEST(EditUndo, TakesBackDefaultHeaders) {
  EditedProject p;
  p.User.Text = "Time";
  EXPECT_TRUE(EditHeader(p.Editor.Edit, 1));
  EXPECT_TRUE(FormatDefault(p.Editor.Edit));
  EXPECT_FALSE(p.Editor.EditUndo().DataRestored);
  EXPECT_EQ(p.Document.Sheet.Headers[0], "Time");
  EXPECT_TRUE(p.Editor.EditUndo().Ok);
  EXPECT_EQ(p.Document.Sheet.Headers[0], "X");
}

TEST(EditUndo, TakesADateAndItsPatternBackInOneStep) {
  EditedProject p;
  const auto pattern = [&]() -> std::string& { return p.Document.Sheet.Formats[0].NumberFormat; };
  p.Type(1, 1, "2026-11-22");
  EXPECT_EQ(pattern(), "yyyy-mm-dd");
  EXPECT_TRUE(p.Editor.EditUndo().Ok);
  EXPECT_EQ(pattern() + p.Text(1, 1), "General");
  EXPECT_TRUE(p.Editor.EditRedo().Ok);
  EXPECT_EQ(pattern() + p.Text(1, 1), "yyyy-mm-dd46348");
  pattern() = "dd/mm/yyyy";  // which another step changed, and a plain number leaves alone
  p.Type(2, 1, "2026-11-23");
  EXPECT_TRUE(p.Editor.EditUndo().Ok);
  EXPECT_EQ(pattern(), "dd/mm/yyyy");
}

TEST(EditUndo, BringsBackTheSolutionsThatAnEditDropped) {
  EditedProject p;
  p.Solve();
  ModelClass& line = *p.Document.Models.Find("a*x+b");
  const double slope = line.Values(1), rss = line.RSS;
  p.User.Text = "Time";
  EXPECT_TRUE(EditHeader(p.Editor.Edit, 1));
  EXPECT_TRUE(line.Solved);  // a header is no data
  p.Type(1, 1, "1");
  EXPECT_FALSE(line.Solved);
  EXPECT_EQ(line.Values(1), 1);
  EXPECT_FALSE(p.Document.Interpolations[0].Solved);
  p.Type(2, 1, "2");
  EXPECT_FALSE(p.Editor.EditUndo().RegressionChanged);
  const UndoOutcome outcome = p.Editor.EditUndo();
  EXPECT_TRUE(outcome.RegressionChanged && outcome.InterpolationChanged && outcome.DataRestored);
  EXPECT_EQ(p.Document.Models.Find("a*x+b"), &line);  // windows may go on looking at it
  EXPECT_TRUE(line.Solved);
  EXPECT_EQ(line.Values(1), slope);
  EXPECT_EQ(line.RSS, rss);
  EXPECT_EQ(line.SolveType, 1);
  EXPECT_TRUE(p.Document.Interpolations[0].Solved);
  EXPECT_EQ(p.Document.Interpolations[0].NumInputX(), 4u);

  EXPECT_TRUE(p.Editor.EditRedo().RegressionChanged);
  EXPECT_FALSE(line.Solved);
  EXPECT_EQ(line.Values(1), 1);
  EXPECT_FALSE(p.Document.Interpolations[0].Solved);
}

TEST(EditUndo, TakesBackSolves) {
  EditedProject p;
  p.Type(1, 1, "1");
  p.Update(kPushUndo, UndoOperation::Solve);
  p.Solve();
  p.Update(kPushUndo, UndoOperation::Solve);
  p.Solve("a*x^2+b*x+c");
  EXPECT_TRUE(p.Editor.EditUndo().RegressionChanged);
  EXPECT_TRUE(p.Document.Models.Find("a*x+b")->Solved);
  EXPECT_FALSE(p.Document.Models.Find("a*x^2+b*x+c")->Solved);
  EXPECT_TRUE(p.Document.Interpolations[0].Solved);
  EXPECT_TRUE(p.Editor.EditUndo().RegressionChanged);  // before the first solve nothing was solved
  EXPECT_FALSE(p.Document.Models.Find("a*x+b")->Solved);
  EXPECT_FALSE(p.Document.Interpolations[0].Solved);
  EXPECT_EQ(p.Text(1, 1), "1");
  EXPECT_TRUE(p.Editor.RedoLast(2).RegressionChanged);
  EXPECT_TRUE(p.Document.Models.Find("a*x^2+b*x+c")->Solved);
  EXPECT_TRUE(p.Document.Interpolations[0].Solved);
}

TEST(EditUndo, LeavesOutUserModelsThatWereRedefined) {
  EditedProject p;
  const auto addModel = [&](const char* name, const char* text) {
    p.Document.Models.Add(name, MakeUserModel({name, {text}, "", {{"Value", "1", "Numerical"}}}, 1, LocaleText()));
  };
  addModel("Kept", "a*x");
  addModel("Redefined", "a*x");
  addModel("Removed", "a*x");
  for (const char* name : {"Kept", "Redefined", "Removed"}) p.Document.Models.Find(name)->Solved = true;
  p.Update(kPushUndo, UndoOperation::ClearFits);
  for (const char* name : {"Kept", "Redefined", "Removed"}) p.Document.Models.Find(name)->Solved = false;
  p.Document.Models.Find("Redefined")->SetID("Redefined", {"a*x^2"});
  p.Document.Models.Remove("Removed");
  EXPECT_EQ(p.Editor.EditUndo().LostModels, 2u);
  EXPECT_EQ(p.User.Said, Said{"inform: 2 user defined model(s) could not be recovered because the definition has "
                              "changed after this UNDO level."});
  EXPECT_TRUE(p.Document.Models.Find("Kept")->Solved);
  EXPECT_FALSE(p.Document.Models.Find("Redefined")->Solved);
}

// Any sequence of commands on a random sheet, taken back one by one, passes through the contents it came from.
TEST(EditUndo, RestoresWhatEachCommandFound) {
  std::mt19937 random(20261121);
  const auto upTo = [&](std::size_t n) { return 1 + random() % n; };
  const auto text = [&]() -> std::string {
    const std::string kTexts[] = {"", "text", "-2", "0.1", "2001-02-03", std::to_string(random() % 1000)};
    return kTexts[random() % 6];
  };
  for (int round = 0; round < 30; ++round) {
    EditedProject p(1000, upTo(3), random() % 2 == 0);
    const auto columns = [&] { return p.Document.Sheet.ColumnCount(); };
    SheetEdit& edit = p.Editor.Edit;
    const auto range = [&] {
      const std::size_t row = upTo(12), col = upTo(columns());
      const std::size_t lastRow = random() % 8 == 0 ? kMostSheetRows : row + random() % 4;
      return CellRange{row, col, lastRow, col + random() % (columns() - col + 1)};
    };
    const std::function<void()> kSteps[] = {
        [&] { TypeInCell(edit, upTo(12), upTo(columns()), text()); },
        [&] { EditCut(edit, p.Board); },
        [&] { EditPaste(edit, p.Board); },
        [&] { PasteSpecial(edit, p.Board.Held, CellOrder::Rotated); },
        [&] { ClearSelection(edit); },
        [&] { ClearGrid(edit); },
        [&] { InsertRows(edit); },
        [&] { DeleteSelection(edit); },
        [&] { DeleteIncompleteRows(edit); },
        [&] { mnuEditExchange(edit); },
        [&] { EditHeader(edit, upTo(columns())); },
        [&] { FormatDefault(edit); },
        [&] { FormatCells(edit, [&](const std::string&) { return std::optional(text()); }); },
        [&] {  // an import, which brings cells and may bring names
          edit.PushUndo(UndoOperation::Import, edit.WholeSheet());
          p.Document.Sheet.Cells.SetGridCellNumber(upTo(12), upTo(columns()), 7);
          p.Document.Sheet.Headers[upTo(columns()) - 1] = text();
        },
        [&] { ApplyFactor(edit, edit.Selection[0], upTo(2) == 1 ? FactorMode::Scale : FactorMode::Translate, "2"); },
        [&] {
          if (const auto rows = SortRange(edit)) Sort(edit, *rows, {{{rows->FirstCol, upTo(2) == 1}}});
        },
        [&] { ZeroData(edit, upTo(2) == 1 ? ZeroSign::Negative : ZeroSign::Positive, std::array{upTo(columns())}); },
        [&] { AverageReplicates(edit); },
        [&] {
          CombineColumns{upTo(columns()), upTo(columns()), upTo(columns()), 0}.Apply(edit);
        },
        [&] {
          if (auto sweep = EditFill(edit)) {
            sweep->ConstantText = "3";
            sweep->Apply(edit);
          }
        },
        [&] {
          ReplaceCells{{"1", false, SearchOrder::ByRows}, text()}.ReplaceAll(edit, upTo(2) == 1);
        },
        [&] {
          ChangeColumns(p.Document, edit, {upTo(3), upTo(2) == 1});
        },
    };
    std::vector<std::string> contents;
    for (int step = 0; step < 60; ++step) {
      p.Select(range());
      p.Board.Held.clear();
      for (std::size_t i = random() % 16; i > 0; --i) p.Board.Held += text() + (random() % 3 == 0 ? "\n" : "\t");
      p.User.Text = text();
      p.User.Answer = random() % 2 == 0;
      const std::string before = Content(p.Document);
      const std::size_t known = p.Editor.UndoHistory().size();
      kSteps[random() % (step < 20 ? 4 : std::size(kSteps))]();
      const std::size_t now = p.Editor.UndoHistory().size();
      ASSERT_LE(now, known + 1);
      if (now > known) contents.push_back(before);
      if (now == known) {
        ASSERT_EQ(Content(p.Document), before);
      }
    }
    // And made again, to and fro at random, through the same contents.
    contents.push_back(Content(p.Document));
    std::size_t at = contents.size() - 1;
    const auto step = [&](bool back) {
      const std::string label = back ? p.Editor.Menu.UndoText : p.Editor.Menu.RedoText;
      ASSERT_TRUE((back ? p.Editor.EditUndo() : p.Editor.EditRedo()).Ok);
      at = back ? at - 1 : at + 1;
      ASSERT_EQ(Content(p.Document), contents[at]) << "round " << round << " " << label;
    };
    while (at > 0) step(true);
    EXPECT_FALSE(p.Editor.Menu.UndoEnabled);
    while (at + 1 < contents.size()) step(false);
    EXPECT_FALSE(p.Editor.Menu.RedoEnabled);
    for (int i = 0; i < 30; ++i) step(at + 1 == contents.size() || (at > 0 && random() % 2 == 0));
  }
}

TEST(EditPaste, TakesAFullSheet) {
  EditedProject p;
  for (std::size_t row = 1; row <= kMostSheetRows; ++row)
    for (std::size_t col = 1; col <= 3; ++col)
      p.Document.Sheet.Cells.SetGridCellNumber(row, col, static_cast<double>(row) / static_cast<double>(col + 6));
  p.Select({1, 1, kMostSheetRows, 3});
  EXPECT_TRUE(EditCut(p.Editor.Edit, p.Board));
  EXPECT_TRUE(EditPaste(p.Editor.Edit, p.Board));
  EXPECT_EQ(p.Document.Sheet.Cells.GridCellNumber(kMostSheetRows, 3), static_cast<double>(kMostSheetRows) / 9);
  p.Editor.UndoNewest(1);
  EXPECT_EQ(p.Document.Sheet.Cells.GridLastRow(), 0u);
  p.Editor.UndoNewest(1);
  EXPECT_EQ(p.Document.Sheet.Cells.GridCellNumber(kMostSheetRows, 3), static_cast<double>(kMostSheetRows) / 9);
}

}  // namespace
}  // namespace quorvex
