// The road from the menu command to the solved list, without a window.

#include <gtest/gtest.h>

#include "SolvableProject.h"
#include "engine/LoadModelCatalog.h"

namespace quorvex {
namespace {

using Said = std::vector<std::string>;

const std::string kFewPoints = "refuse: You need at least 3 data points in order to obtain a solution.";
const std::string kMissingOne = "1 row of the data is incomplete and is left out of the solution. ";
const std::string kMissingX = "ask: Row 2, column 'X' is empty. " + kMissingOne + "Do you want to continue?";
const std::string kMissingY = "ask: Row 2, column 'Y' is empty. " + kMissingOne + "Do you want to continue?";

TEST(SolveRegression, ChecksTheDataInOrder) {
  const std::string kText = "Row 3, column 'Y': 'n/a' is not a number. 1 cell in 1 row of the data is no number. ";
  const std::string kTexts = "Row 3, column 'X': 'n/a' is not a number. 3 cells in 2 rows of the data are no numbers. ";
  const struct {
    const char* name;
    std::function<void(GridCells&)> edit;
    bool goesOn;
    Said said = {};
    bool answer = true;
    const char* warning = "1";  // setting
  } kCases[] = {
      {"complete", [](GridCells&) {}, true},
      {"two rows", [](GridCells& c) { c.GridDeleteRows(3, 6); }, false, {kFewPoints}},
      {"two complete of three", [](GridCells& c) { c.GridDeleteRows(4, 5), c.ClearCell(2, 2); }, false, {kFewPoints}},
      {"incomplete, goes on", [](GridCells& c) { c.ClearCell(2, 2); }, true, {kMissingY}},
      {"incomplete, stops", [](GridCells& c) { c.ClearCell(2, 1); }, false, {kMissingX}, false},
      {"incomplete, no warning", [](GridCells& c) { c.ClearCell(2, 1); }, true, {}, false, "0"},
      {"blank row", [](GridCells& c) { c.ClearCell(2, 1), c.ClearCell(2, 2); }, true, {}, false},
      {"a text, goes on",
       [](GridCells& c) { c.SetGridCellText(3, 2, "n/a"); },
       true,
       {"ask: " + kText + "Do you want to leave this row out?"},
       true,
       "0"},
      {"texts and an incomplete row, stops",
       [](GridCells& c) {
         for (const auto& [row, col] : {CellPlace{3, 1}, {3, 2}, {5, 2}}) c.SetGridCellText(row, col, "n/a");
         c.ClearCell(2, 2);
       },
       false,
       {"ask: " + kTexts + kMissingOne + "Do you want to leave these rows out?"},
       false},
      {"texts in all but two rows",
       [](GridCells& c) { c.GridDeleteRows(4, 5), c.SetGridCellText(3, 2, "n/a"); },
       false,
       {"refuse: " + kText + kFewPoints.substr(8)}},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    SolvableProject p;
    c.edit(p.Document.Sheet.Cells);
    p.Preferences.Set("missingdatawarning", c.warning);
    p.User.Answer = c.answer;
    p.Solver.SolveRegression();
    EXPECT_EQ(p.User.Said, c.said);
    const bool hasTexts = !c.said.empty() && c.said[0].find("n/a") != std::string::npos;
    const std::size_t shown = p.Windows.Gone.empty() ? 0 : p.Windows.Gone[0].Row;
    if (hasTexts) {
      EXPECT_EQ(shown, 3u);  // behind the question, the cell that it is about
    }
    EXPECT_EQ(p.Windows.Shown, c.goesOn ? Said{"SolveSetup"} : Said{});
    EXPECT_FALSE(p.Document.Changed);
    EXPECT_EQ(p.Editor.Menu, UndoMenu());
  }
}

TEST(SolveRegression, CountsARowThatLacksYAndSomeXAsIncomplete) {
  SolvableProject p(2);
  for (std::size_t row = 1; row <= 4; ++row)
    for (std::size_t col = 1; col <= 3; ++col) p.Document.Sheet.Cells.SetGridCellNumber(row, col, 1.0);
  p.Document.Sheet.Cells.SetGridCellNumber(5, 2, 7);
  p.User.Answer = false;
  p.Solver.SolveRegression();
  EXPECT_EQ(p.User.Said, Said{"ask: Row 5, column 'X1' is empty. " + kMissingOne + "Do you want to continue?"});
}

TEST(SolveRegression, WeighsByTheStandardDeviations) {
  SolvableProject p(1, true);
  GridCells& cells = p.Document.Sheet.Cells;
  for (std::size_t row = 1; row <= 8; ++row) cells.SetGridCellNumber(row, 3, 1);
  cells.SetGridCellNumber(9, 1, 9);
  cells.SetGridCellNumber(9, 2, 1000);
  cells.SetGridCellNumber(9, 3, 1e6);  // a point far off that hardly counts
  p.SolveOne("a*x+b", 1);
  EXPECT_NEAR(p.Model("a*x+b").Values(1), 2, 0.02);
}

TEST(SolveRegression, AsksForTheSetupAndKeepsItAsDefault) {
  SolvableProject p;
  p.Windows.Setup = SolveChoice{1, ModelSelection::AllModels, true};
  p.Solver.SolveRegression();
  EXPECT_EQ(p.Windows.Shown, Said{"SolveSetup"});
  EXPECT_EQ(p.Preferences.Text("promptforsetup"), "false");
  EXPECT_EQ(p.Preferences.Text("defaultsolvesetup"), "2");
  EXPECT_EQ(p.Preferences.Text("defaultsolver"), "1");
  p.Windows.Shown.clear();
  p.User.Said.clear();
  p.Solver.SolveRegression();
  EXPECT_EQ(p.Windows.Shown, Said{});  // the stored setup applies
  EXPECT_EQ(p.User.Said.size(), 1u);

  const SolveChoice kNone;
  const struct {
    const char *setup, *solver;
    SolveChoice choice;
  } kStored[] = {
      {"0", "0", kNone}, {"3", "1", {1, ModelSelection::LastSolvedModels}}, {"7", "5", kNone}, {"x", "-1", kNone}};
  for (const auto& c : kStored) {
    p.Preferences.Set("defaultsolvesetup", c.setup);
    p.Preferences.Set("defaultsolver", c.solver);
    EXPECT_EQ(StoredSolveChoice(p.Preferences), c.choice) << c.setup << c.solver;
  }
}

// Each kind takes the models it should, under its label, by the solver of the setup.
TEST(SolveRegression, SelectsModelsInFourWays) {
  SolvableProject p;
  p.Windows.Pick = [](GroupPick& pick) {
    for (GroupPick::Group& group : pick.Groups) group.Checked = group.Name == "Polynomial";
    pick.UserDefined = true;
    pick.UserSpecified = true;
    pick.Members = {"A*X^B", "my power", "gone"};  // names are compared without regard to case
  };
  const auto asked = [&](const SolveChoice& choice) {
    p.Windows.Progress.clear();
    p.Windows.Setup = choice;
    p.Windows.Model = "my line";
    p.Solver.SolveRegression();
    return std::ranges::count_if(p.Windows.Progress, [](const auto& text) { return text.starts_with("Solving"); });
  };
  const auto total = std::ssize(p.Document.Models);
  EXPECT_EQ(total, 300);
  const struct {
    SolveChoice choice;
    std::ptrdiff_t asked;
    const char* label;
  } kCases[] = {
      {{0, ModelSelection::SingleModel}, 1, "1\t&Undo Solve 'my line...'"},
      {{0, ModelSelection::LastSolvedModels}, 1, "1\t&Undo Solve Last"},
      {{0, ModelSelection::Groups}, 10 + 2 + 1, "1\t&Undo Solve Group"},
      {{1, ModelSelection::Groups}, 10 + 1, "1\t&Undo Solve Group"},
      {{0, ModelSelection::AllModels}, total, "1\t&Undo Solve All"},
      {{1, ModelSelection::AllModels}, total - 2, "1\t&Undo Solve All"},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.label + std::to_string(c.choice.SolveType));
    EXPECT_EQ(asked(c.choice), c.asked);
    EXPECT_EQ(p.History().front(), c.label);
    for (const SolvedItem& item : SolvedItems(p.Document, 1)) {
      if (item.Model->UserType) continue;
      EXPECT_TRUE(c.choice.Models != ModelSelection::AllModels || item.Model->SolveType == c.choice.SolveType);
    }
  }
}

TEST(SolveRegression, SaysWhenNothingWasSolvedBefore) {
  SolvableProject p;
  p.Windows.Setup = SolveChoice{0, ModelSelection::LastSolvedModels};
  p.Solver.SolveRegression();
  EXPECT_EQ(p.User.Said, Said{"refuse: The previous solved list is empty."});
  EXPECT_EQ(p.Windows.Progress, Said{});
  EXPECT_EQ(p.Editor.Menu, UndoMenu());
}

TEST(SolveRegression, RefusesAModelOfAnotherNumberOfVariables) {
  SolvableProject p(2);
  for (std::size_t row = 1; row <= 9; ++row)
    for (std::size_t col = 1; col <= 3; ++col)
      p.Document.Sheet.Cells.SetGridCellNumber(row, col, static_cast<double>((row * col) % 7));
  p.AddUserModel("of x1", "a*x1+b");
  p.SolveOne("");
  p.SolveOne("of x1");
  EXPECT_EQ(p.User.Said,
            (Said{"refuse: Please select a model to solve.",
                  "refuse: The equation you selected has 1 independent variables and the current spreadsheet has 2 "
                  "independent variables. Please select a different model to solve."}));
  EXPECT_EQ(p.Preferences.Text("lastselectedmodel"), "0");

  // In a group it is passed over; where it is the only one nothing is left, nor remembered for undo.
  p.User.Said.clear();
  p.Windows.Setup = SolveChoice{0, ModelSelection::Groups};
  p.Windows.Pick = [](GroupPick& pick) { pick.UserDefined = true; };
  p.Solver.SolveRegression();
  EXPECT_EQ(p.User.Said, Said{"refuse: There are no equations to solve."});
  EXPECT_EQ(p.Editor.Menu, UndoMenu());
  EXPECT_FALSE(p.Model("of x1").Solve);
}

TEST(SolveRegression, RemembersTheModelAndUsesEstimatesOnce) {
  SolvableProject p;
  ModelClass& model = p.Model("my line");
  model.SpecifyICComplete = true;
  model.SetValue(1, 1.5);
  model.SetICRange({{1.5, 1.5, 1}, {0, 0, 1}});
  p.Windows.Specify = true;
  p.SolveOne("my line");
  EXPECT_NE(p.Solver.Log().find("Using current initial estimates\r\n"), std::string::npos) << p.Solver.Log();
  EXPECT_FALSE(model.SpecifyIC || model.SpecifyICComplete || model.Solve);
  EXPECT_EQ(p.Preferences.Text("lastselectedmodel"), "my line");
  EXPECT_EQ(ModelPick(p.Document.Models, 1, p.Preferences).LastSelected(), &model);

  model.SpecifyICComplete = true;  // but the user does not want them this time
  p.Windows.Specify = false;
  p.SolveOne("my line");
  EXPECT_EQ(p.Solver.Log().find("Using current initial estimates"), std::string::npos);
}

TEST(ModelPick, ListsModelsByKind) {
  SolvableProject p;
  const ModelPick pick(p.Document.Models, 1, p.Preferences);
  EXPECT_EQ(pick.Listed(ModelKind::All).size(), 300u);
  EXPECT_EQ(pick.Listed(ModelKind::PreDefined).size(), 298u);
  const auto own = pick.Listed(ModelKind::UserDefined);
  ASSERT_EQ(own.size(), 2u);
  EXPECT_EQ(own[1]->id, "my power");
  EXPECT_EQ(pick.LastSelected(), nullptr);
}

TEST(GroupPick, ChecksTheChoiceAndWritesTheFile) {
  const std::string kSave = "ask: Do you want to save the changes to the user specified group file?";
  const std::string kUndefined =
      "refuse: You have selected a user specified group but have not defined it.\r\nPlease select from available "
      "equations for the user specified group.";
  const auto kOwnGroup = [](GroupPick& g) { g.UserSpecified = true, g.Members = {"a*x+b"}; };
  const struct {
    const char* name;
    std::function<void(GroupPick&)> choose;
    bool accepted;
    Said said = {};
    std::optional<Said> file = std::nullopt;
    bool answer = true, fails = false;
  } kCases[] = {
      {"nothing", [](GroupPick&) {}, false, {"refuse: Please select the equation group you want to solve."}},
      {"an empty group of one's own", [](GroupPick& g) { g.UserSpecified = true; }, false, {kUndefined}},
      {"a group", [](GroupPick& g) { g.Groups[3].Checked = true; }, true},
      {"saved", kOwnGroup, true, {kSave}, Said{"a*x+b"}},
      {"not saved", kOwnGroup, true, {kSave}, std::nullopt, false},
      {"disk full", kOwnGroup, true, {kSave, "refuse: Error writing to '/home/user1.grp'"}, std::nullopt, true, true},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    SolvableProject p;
    p.User.Answer = c.answer;
    p.Windows.GroupFileFails = c.fails;
    const auto store = p.Windows.OpenGroupStore(1);
    GroupPick pick(p.Document.Models, p.Preferences, *store);
    c.choose(pick);
    EXPECT_EQ(pick.Accept(p.User), c.accepted);
    EXPECT_EQ(p.User.Said, c.said);
    EXPECT_EQ(p.Windows.GroupFile, c.file);

    // An accepted choice is where the next one begins.
    GroupPick next(p.Document.Models, p.Preferences, *store);
    EXPECT_EQ(next.UserSpecified, c.accepted && pick.UserSpecified);
    EXPECT_EQ(next.Groups[3].Checked, c.accepted && pick.Groups[3].Checked);
    EXPECT_EQ(next.Members, c.file.value_or(Said{}));
  }
}

TEST(GroupPick, ChecksTheUsersGroupWithItsFirstMember) {
  SolvableProject p;
  const auto store = p.Windows.OpenGroupStore(1);
  GroupPick pick(p.Document.Models, p.Preferences, *store);
  pick.Add("a*x+b");
  EXPECT_TRUE(pick.UserSpecified);
  pick.UserSpecified = false;  // as the user wants it
  pick.Add("my line");
  EXPECT_FALSE(pick.UserSpecified);
  pick.Remove(0);
  EXPECT_EQ(pick.Members, Said{"my line"});
}

TEST(GroupPick, ListsTheGroupsOfTheCatalogueOnceAndWhatIsNoMemberYet) {
  SolvableProject p;
  p.Windows.GroupFile = Said{"a*x+b", "elsewhere"};
  const auto store = p.Windows.OpenGroupStore(1);
  const GroupPick pick(p.Document.Models, p.Preferences, *store);
  EXPECT_EQ(pick.Groups.size(), 14u);
  EXPECT_EQ(pick.Members, (Said{"a*x+b", "elsewhere"}));  // a name of another project stays in the file
  EXPECT_EQ(pick.Available().size(), 299u);
}

TEST(ShowLog, ShowsTheLastSolve) {
  SolvableProject p;
  p.Solver.ShowLog();
  EXPECT_EQ(p.User.Said, Said{"inform: Nothing was solved since the project was opened."});
  p.SolveOne("my line");
  p.Solver.ShowLog();
  EXPECT_EQ(p.Windows.Shown.back(), "SolveLog: " + p.Solver.Log());
}

TEST(SolveInterpolation, SolvesTheChosenKinds) {
  SolvableProject p;
  p.Document.Sheet.Cells.SetGridCellNumber(9, 1, 8);  // a second point at x = 8
  p.Document.Sheet.Cells.SetGridCellNumber(9, 2, 17.1);
  p.Solver.SolveInterpolation();  // cancelled
  EXPECT_EQ(p.User.Said, Said{});
  EXPECT_EQ(p.Editor.Menu, UndoMenu());

  p.Windows.Kinds = {kCubicSpline, kRationalFunction};
  EXPECT_EQ(p.Solver.SolveInterpolation(), 0u);
  EXPECT_EQ(p.User.Last(), "inform: Solution was successful.");
  EXPECT_EQ(p.SolvedNames(), "Cubic Spline, Rational Function");
  EXPECT_EQ(p.History(), Said{"1\t&Undo Solve Group"});
  EXPECT_EQ(p.Windows.Progress, (Said{"show", "0 parameters", "Solving Model Cubic Spline...", "0/2", "0 parameters",
                                      "Solving Model Rational Function...", "1/2", "2/2", "hide"}));
  EXPECT_NE(p.Solver.Log().find("Duplicate points detected, points averaged. "), std::string::npos);

  // Of eleven points a polynomial fails, and the spline stays solved.
  for (std::size_t row = 10; row <= 12; ++row)
    for (std::size_t col : {1u, 2u}) p.Document.Sheet.Cells.SetGridCellNumber(row, col, static_cast<double>(row));
  p.Windows.Kinds = {kPolynomial};
  EXPECT_EQ(p.Solver.SolveInterpolation(), std::nullopt);
  EXPECT_EQ(p.User.Last(), "inform: Solution Failed. View log for details.");
  EXPECT_EQ(p.History()[0], "1\t&Undo Solve 'Polynomial...'");
  p.SolveOne("a*x+b", 1);
  EXPECT_EQ(p.SolvedNames(), "a*x+b, Cubic Spline, Rational Function");  // models come first

  SolvableProject plane(2);
  plane.Solver.SolveInterpolation();
  EXPECT_EQ(plane.User.Said, Said{"refuse: An interpolation needs data with one independent variable."});
}

TEST(RunSolve, TellsHowItWentAndShowsWhereItIs) {
  SolvableProject p;
  ModelClass& hopeless = p.AddUserModel("a name that goes on and on, Größe und Öde, to the end", "ln(-abs(m*x)-1)");
  p.Windows.Setup = SolveChoice{0, ModelSelection::Groups};
  p.Windows.Pick = [](GroupPick& pick) { pick.UserDefined = true; };
  EXPECT_EQ(p.Solver.SolveRegression(), 0u);
  EXPECT_EQ(p.Windows.Progress, (Said{"show", "2 parameters", "Solving Model my line...", "0/3", "2 parameters",
                                      "Solving Model my power...", "1/3", "1 parameters",
                                      "Solving Model a name that goes on and on, Größe und Öde, to...", "2/3",
                                      "Trying harder: a name that goes on and on, Größe u...", "3/3", "hide"}));
  EXPECT_EQ(p.User.Said, Said{"inform: 2 of the 3 models solved.  View log for details."});
  EXPECT_EQ(p.SolvedNames(), "my line, my power");
  EXPECT_TRUE(p.Document.Changed);
  EXPECT_FALSE(hopeless.Solved || hopeless.Solve);

  const std::string& log = p.Solver.Log();
  EXPECT_TRUE(log.starts_with("Beginning non-linear solution for model my line\r\n")) << log;
  EXPECT_LT(log.find("for model my line"), log.find("for model my power"));
  EXPECT_LT(log.find("for model my power"), log.find("for model a name"));
  EXPECT_NE(log.find("Solution failed: Numerical Error\r\n"), std::string::npos);

  // The log is that of the last solve alone.
  p.SolveOne(hopeless.id);
  EXPECT_EQ(p.User.Last(), "inform: Solution Failed. View log for details.");
  EXPECT_EQ(p.Solver.Log().find("my line"), std::string::npos);
  p.SolveOne("my line");
  EXPECT_EQ(p.User.Last(), "inform: Solution was successful.");
}

TEST(RunSolve, EndsWhereTheUserAbortsAndPausesOneModelAlone) {
  SolvableProject p;
  p.SolveOne("my line");
  p.User.Said.clear();
  p.Windows.Setup = SolveChoice{0, ModelSelection::Groups};
  p.Windows.Pick = [](GroupPick& pick) {
    pick.UserSpecified = true;
    pick.Members = {"my power", "my line", "gone"};
  };
  // In the third turn of the search for the second model.
  p.Windows.AtTurn = [&p, turns = 0](ScriptedProgress& form) mutable {
    EXPECT_TRUE(p.Solver.Running());
    if (form.Said.back() == "1/2" && ++turns == 3) form.Aborted = true;
  };
  EXPECT_EQ(p.Solver.SolveRegression(), std::nullopt);
  EXPECT_FALSE(p.Solver.Running());
  EXPECT_EQ(p.User.Last(), "inform: Solution Process Aborted.");
  EXPECT_EQ(p.SolvedNames(), "my line");  // what was solved before the abort stays
  const std::string& log = p.Solver.Log();
  EXPECT_TRUE(log.ends_with("\r\nSOLUTION PROCESS ABORTED BY USER.\r\n")) << log;
  EXPECT_FALSE(p.Model("my power").Solve || p.Model("my line").Solve);
  EXPECT_EQ(p.Windows.Progress.back(), "hide");

  // Pause ends the search for the model in hand; a press that comes too late for one is not meant for the next.
  p.Windows.Progress.clear();
  p.Windows.AtTurn = [](ScriptedProgress& form) { form.Paused = form.Said.back() == "1/2"; };
  p.Solver.SolveRegression();
  EXPECT_EQ(p.User.Last(), "inform: Solution was successful.");
  const auto stopped = p.Solver.Log().find("Iterations stopped by user.");
  EXPECT_NE(stopped, std::string::npos);
  EXPECT_EQ(p.Solver.Log().find("Iterations stopped by user.", stopped + 1), std::string::npos);
}

// A run by the other solver that ends before all of its models had their turn.
TEST(RunSolve, LeavesWhatItDidNotComeToAsItWas) {
  SolvableProject p;
  const std::vector<std::string> ids = {"a*x+b", "a*exp(b*x)", "a*x^b"};
  p.Windows.Pick = [&](GroupPick& pick) {
    pick.UserSpecified = true;
    pick.Members = ids;
  };
  p.Windows.Setup = SolveChoice{0, ModelSelection::Groups};
  p.Solver.SolveRegression();
  p.Windows.Setup = SolveChoice{1, ModelSelection::Groups};
  p.Windows.AtTurn = [](ScriptedProgress& form) { form.Aborted = form.Said.back() == "1/3"; };
  p.Solver.SolveRegression();
  EXPECT_EQ(p.User.Last(), "inform: Solution Process Aborted.");
  std::vector<int> solvers;
  for (const auto& model : p.Document.Models)
    if (model->Solved) solvers.push_back(model->SolveType);
  EXPECT_EQ(solvers, (std::vector<int>{1, 0, 0}));
}

TEST(RunSolve, FindsTheBestOfTheRunInTheList) {
  SolvableProject p;
  p.Document.Sheet.Cells.SetGridCellNumber(9, 1, 9);
  p.Preferences.Set("maxiterations", "77");
  EXPECT_FALSE(p.Solver.LimitsOfLastSolve());
  p.SolveOne("a*x+b", 1);
  p.SolveOne("my power");
  EXPECT_EQ(p.Solver.SolveRegression(), 1u);  // the line, which is better, was solved before
  EXPECT_EQ(p.Solver.MissingPoints(), 1u);
  EXPECT_EQ(p.Solver.LimitsOfLastSolve(), (SolveLimits{1e-10, 77, 10}));
  EXPECT_EQ(p.Document.Limits, p.Solver.LimitsOfLastSolve());
  EXPECT_TRUE(p.Solver.ShowsResults());
  p.Preferences.Set("autoresults", "0");
  EXPECT_FALSE(p.Solver.ShowsResults());
}

TEST(RunSolve, IsTakenBackByUndo) {
  SolvableProject p;
  p.SolveOne("a*x+b", 1);
  const double slope = p.Model("a*x+b").Values(1);
  p.SolveOne("a*x+b", 0);
  p.Windows.Kinds = {kCubicSpline};
  p.Solver.SolveInterpolation();
  EXPECT_EQ(p.SolvedNames(), "a*x+b, Cubic Spline");
  EXPECT_EQ(p.History(),
            (Said{"1\t&Undo Solve 'Cubic Spline...'", "2\t&Undo Solve 'a*x+b...'", "3\t&Undo Solve 'a*x+b...'"}));
  p.Editor.EditUndo();
  EXPECT_EQ(p.SolvedNames(), "a*x+b");
  EXPECT_EQ(p.Model("a*x+b").SolveType, 0);
  p.Editor.EditUndo();
  EXPECT_EQ(p.Model("a*x+b").SolveType, 1);
  EXPECT_EQ(p.Model("a*x+b").Values(1), slope);
  p.Editor.EditUndo();
  EXPECT_EQ(p.SolvedNames(), "");
}

// Three fits of known keys, and a spline: RSS 2 < 5 < 9, R^2 the other way round.
struct ClearableProject : SolvableProject {
  ClearableProject() {
    const struct {
      const char* id;
      double rss, r2, r2Adjust, stdErr;
      int solveType;
    } kFits[] = {{"a*x+b", 5, 0.7, 0.6, 1.5, 1}, {"my line", 2, 0.9, 0.8, 1.25, 0}, {"my power", 9, 0.4, -0.3, 3, 0}};
    for (const auto& fit : kFits) {
      ModelClass& model = Model(fit.id);
      model.Solved = true;
      model.RSS = fit.rss;
      model.R2 = fit.r2;
      model.R2Adjust = fit.r2Adjust;
      model.StdErr = fit.stdErr;
      model.SolveType = fit.solveType;
    }
    Document.Interpolations[0].Solved = true;
  }
};

TEST(ClearFits, ClearsByItsOptions) {
  const struct {
    int sortIndex;
    ClearOption option;
    const char *cutoff, *left;
  } kCases[] = {
      {1, ClearOption::Selected, "", "my line, a*x+b, my power"},
      {1, ClearOption::NonLinear, "", "a*x+b, Cubic Spline"},
      {1, ClearOption::Linear, "", "my line, my power, Cubic Spline"},
      {1, ClearOption::All, "", ""},
      {1, ClearOption::BeyondCutoff, "5", "my line, a*x+b, Cubic Spline"},
      {1, ClearOption::BeyondCutoff, "-1", "Cubic Spline"},
      {2, ClearOption::BeyondCutoff, "0.7", "my line, a*x+b, Cubic Spline"},
      {3, ClearOption::BeyondCutoff, "0.25", "my line, a*x+b, my power, Cubic Spline"},  // by magnitude
      {3, ClearOption::BeyondCutoff, "0.5", "my line, a*x+b, Cubic Spline"},
      {4, ClearOption::BeyondCutoff, " 1.4 ", "my line, Cubic Spline"},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.cutoff + std::to_string(c.sortIndex));
    ClearableProject p;
    p.Preferences.SetNumber("sortindex", c.sortIndex);
    p.Windows.Clear = [&](FitClearing& clearing) {
      clearing.Option = c.option;
      clearing.Cutoff = c.cutoff;
    };
    const std::string before = p.SolvedNames();
    const bool cleared = p.Solver.ClearFits({{nullptr, &p.Document.Interpolations[0]}});
    EXPECT_EQ(p.SolvedNames(), c.left);
    EXPECT_EQ(cleared, before != c.left);
    if (!cleared) continue;
    EXPECT_EQ(p.Editor.Menu.UndoText, "&Undo Clear Fits");
    p.Editor.EditUndo();
    EXPECT_EQ(p.SolvedNames(), before);
  }
}

TEST(ClearFits, NamesItsLabelsByTheSortKey) {
  const struct {
    int sortIndex;
    std::string name, caption, cutoff, best, worst, bestValue, worstValue;
  } kCases[] = {
      {1, "RSS", "Available Solutions Sorted By RSS", "Clear Fits with RSS >", "Best RSS", "Worst RSS", "2", "9"},
      {2, "R^2", "Available Solutions Sorted By R^2", "Clear Fits with R^2 <", "Best R^2", "Worst R^2", "0,9", "0,4"},
      {3, "Ra^2", "Available Solutions Sorted By Ra^2", "Clear Fits with Ra^2 <", "Best Ra^2", "Worst Ra^2", "0,8",
       "-0,3"},
      {4, "StdErr", "Available Solutions Sorted By StdErr", "Clear Fits with StdErr >", "Best StdEerr", "Worst StdErr",
       "1,25", "3"},
  };
  for (const auto& c : kCases) {
    ClearableProject p;
    FitClearing clearing(SolvedItems(p.Document, c.sortIndex), {}, c.sortIndex, ',');
    EXPECT_EQ(SolutionsCaption(c.sortIndex), c.caption);
    EXPECT_EQ(clearing.CutoffCaption(), c.cutoff);
    EXPECT_EQ(clearing.BestLabel() + " " + clearing.BestValue(), c.best + " " + c.bestValue);
    EXPECT_EQ(clearing.WorstLabel() + " " + clearing.WorstValue(), c.worst + " " + c.worstValue);
    clearing.Option = ClearOption::BeyondCutoff;
    for (const char* cutoff : {"", "x"}) {
      clearing.Cutoff = cutoff;
      EXPECT_FALSE(clearing.Accept(p.User));
      EXPECT_EQ(p.User.Last(),
                "refuse: Please enter a value for the " + c.name + " cutoff or select a different option.");
    }
  }
  SolvableProject empty;
  EXPECT_FALSE(empty.Solver.ClearFits({}));
  EXPECT_EQ(empty.User.Said, Said{"refuse: There are no solutions to clear."});
}

// By AICc good fits are below 0: a cutoff counts with its sign.
TEST(ClearFits, ClearsBeyondACutoffOfACriterion) {
  SolvableProject p;
  p.Preferences.SetNumber("sortindex", kSortByAICc);
  p.SolveOne("my line");
  p.SolveOne("my power");
  ASSERT_EQ(p.SolvedNames(), "my line, my power");
  ASSERT_NEAR(SortKeyValue(p.Model("my line"), kSortByAICc), -18.94, 0.01);  // 8 ln(RSS / 8) + 12
  ASSERT_NEAR(SortKeyValue(p.Model("my power"), kSortByAICc), -12.33, 0.01);
  p.Windows.Clear = [&](FitClearing& clearing) {
    EXPECT_EQ(clearing.CutoffCaption(), "Clear Fits with AICc >");
    clearing.Option = ClearOption::BeyondCutoff;
    clearing.Cutoff = "-15";
  };
  EXPECT_TRUE(p.Solver.ClearFits({}));
  EXPECT_EQ(p.SolvedNames(), "my line");
}

// Errors of cross-validation are there when they are sorted by, whatever was sorted by at the solve.
TEST(SolvedItems, AreSortedByTheErrorOfCrossValidation) {
  for (const int before : {kSortByRSS, kSortByCV}) {
    SolvableProject p;
    p.Preferences.SetNumber("sortindex", before);
    p.SolveOne("my power");
    p.SolveOne("my line");
    EXPECT_EQ(std::isnan(p.Model("my line").LeaveOneOut), before == kSortByRSS);
    p.Preferences.SetNumber("sortindex", kSortByCV);
    CompleteSortKeys(p.Document, p.Preferences);
    EXPECT_GT(p.Model("my line").LeaveOneOut, p.Model("my line").StdErr);
    EXPECT_EQ(p.SolvedNames(), "my line, my power");
    const std::vector<RankingText> texts = RankingTexts(SolvedItems(p.Document, kSortByCV), ',');
    EXPECT_EQ(texts[0].Told, "AICc 0,00 above the best.\nGroup 1: the data can hardly tell its models apart.");
    EXPECT_EQ(texts[1].Weight + " " + texts[1].Group, "0,035 2");
  }
}

TEST(SolvedItems, KeepTiesInTheOrderOfTheCollection) {
  for (const int sortIndex : {1, 2, 3, 4}) {
    ClearableProject p;
    p.Preferences.SetNumber("sortindex", sortIndex);
    for (const auto& model : p.Document.Models) {
      model->RSS = model->StdErr = 1;
      model->R2 = model->R2Adjust = 0.5;
    }
    EXPECT_EQ(p.SolvedNames(), "a*x+b, my line, my power, Cubic Spline") << sortIndex;
  }
}

TEST(SaveGroup, WritesTheSolvedModelsInTheOrderOfTheList) {
  const std::string kAsk =
      "ask: This operation will create or overwrite the user defined equation group file with the currently solved "
      "equations only. \r\nDo you want to continue?";
  const struct {
    bool answer, fails;
    std::optional<Said> file;
    Said said;
  } kCases[] = {
      {false, false, std::nullopt, {kAsk}},
      {true, false, Said{"my line", "a*x+b", "my power"}, {kAsk, "inform: Group file saved to '/home/user1.grp'."}},
      {true, true, std::nullopt, {kAsk, "refuse: Error writing to '/home/user1.grp'."}},
  };
  for (const auto& c : kCases) {
    ClearableProject p;
    p.User.Answer = c.answer;
    p.Windows.GroupFileFails = c.fails;
    EXPECT_EQ(p.Solver.SaveGroup(), c.file.has_value());
    EXPECT_EQ(p.Windows.GroupFile, c.file);
    EXPECT_EQ(p.User.Said, c.said);
  }
  ClearableProject p;
  for (const auto& model : p.Document.Models) model->Solved = false;  // and a curve alone is no equation of a group
  EXPECT_FALSE(p.Solver.SaveGroup());
  EXPECT_EQ(p.Windows.GroupFile, std::nullopt);
  EXPECT_EQ(p.User.Said, (Said{"refuse: There are no solved equations to save as a group."}));
}

// On the heights and weights of 15 women. Every model is fitted once more on its own, each in a collection of its own.
TEST(RunSolve, SolvesTheWholeCatalogueAndCountsWhatItSolved) {
  const double y[] = {115, 117, 120, 123, 126, 129, 132, 135, 139, 142, 146, 150, 154, 159, 164};
  SolvableProject p;
  for (std::size_t i = 0; i < std::size(y); ++i) {
    p.Document.Sheet.Cells.SetGridCellNumber(i + 1, 1, 58 + static_cast<double>(i));
    p.Document.Sheet.Cells.SetGridCellNumber(i + 1, 2, y[i]);
  }
  for (const char* own : {"my line", "my power"}) p.Document.Models.Remove(own);
  p.Preferences.SetFlag("tryharder", false);  // as each model is solved below
  const SolveData data = GatherData(p.Document.Sheet).Points;
  for (const int solveType : {1, 0}) {
    p.Windows.Setup = SolveChoice{solveType, ModelSelection::AllModels};
    const auto best = p.Solver.SolveRegression();

    ModelCollection alone;
    LoadModelCatalog(alone, 1, LocaleText());
    ASSERT_EQ(alone.size(), 298u);
    std::size_t solved = 0;
    const ModelClass* smallest = nullptr;
    for (const auto& model : alone) {
      model->SolveType = solveType;
      std::string log;
      SolveForm form;
      const bool ok = model->Fit(data, p.Preferences, log, form);
      const ModelClass& twin = p.Model(model->id);
      EXPECT_EQ(twin.Solved, ok) << model->id;
      if (!ok) continue;
      ++solved;
      EXPECT_EQ(twin.RSS, model->RSS) << model->id;
      if (smallest == nullptr || model->RSS < smallest->RSS) smallest = model.get();
    }
    EXPECT_EQ(p.User.Last(), "inform: " + std::to_string(solved) + " of the 298 models solved.  View log for details.");
    ASSERT_EQ(best, 0u);
    EXPECT_EQ(SolvedItems(p.Document, 1)[0].Name(), smallest->id);
  }
}

}  // namespace
}  // namespace quorvex
