#include <gtest/gtest.h>

#include "RecordingPrompter.h"
#include "SolvableProject.h"
#include "core/NumberText.h"
#include "engine/UserModel.h"
#include "files/ProjectFile.h"
#include "results/Evaluation.h"
#include "results/ResultPlots.h"
#include "solve/InitialEstimates.h"

namespace quorvex {
namespace {

using enum EstimateType;
using Said = std::vector<std::string>;
using Rows = std::vector<EstimateRow>;

constexpr LocaleText kComma{.DecimalSeparator = ',', .ListSeparator = ';', .ThousandSeparator = '.'};

std::string TooMany(const std::string& count) {
  return "The maximum number of solutions created by solving variables with ranges is 100. You currently have " +
         count +
         " specified. Either solve fewer variables with ranges or reduce the number of ranges for each variable.";
}

TEST(CheckEstimates, FindsTheFirstWrongCell) {
  const struct {
    Rows rows;
    std::string message;
    std::size_t row = 0;
    int column = 0;
    LocaleText locale = {};
  } kCases[] = {
      {{{"a", InitialEstimate, "1e-3", "", ""}, {"b", Constant, " -2 ", "x", "x"}}, ""},
      {{{"a", InitialEstimate, "1,5", "", ""}}, "Please enter a valid Initial Value for variable 'a'.", 0, 3},
      {{{"a", InitialEstimate, "1,5", "", ""}}, "", 0, 0, kComma},
      {{{"a", InitialEstimate, "1", "", ""}, {"b", InitialEstimate, "", "", ""}},
       "Please enter a valid Initial Value for variable 'b'.",
       1,
       3},
      {{{"a", Constant, "one", "", ""}},
       "Please enter a valid Initial Value to be held constant for variable 'a'.",
       0,
       3},
      {{{"a", Range, "", "", "0"}}, "Please enter a valid Initial Value for variable 'a'.", 0, 3},
      {{{"a", Range, "1", "", "0"}}, "Please enter a valid Final Value for variable 'a'.", 0, 4},
      {{{"a", Range, "1", "2", "0"}}, "Please enter a valid number of steps for variable 'a'.", 0, 5},
      {{{"a", Range, "1", "2", "few"}}, "Please enter a valid number of steps for variable 'a'.", 0, 5},
      {{{"a", Range, "1", "2", "1"}}, ""},
      {{{"a", InitialEstimate, "5", "", "", "0,5", " 1e3 "}, {"b", Constant, "5", "", "", " ", "5"}}, "", 0, 0, kComma},
      {{{"a", Constant, "5", "", "", "low", ""}}, "Please enter a valid Minimum for variable 'a'.", 0, 6},
      {{{"a", Range, "1", "2", "1", "", "1e999"}}, "Please enter a valid Maximum for variable 'a'.", 0, 7},
      {{{"a", InitialEstimate, "5", "", "", "2", "1"}}, "The Minimum is above the Maximum for variable 'a'.", 0, 6},
      {{{"a", Range, "1", "2", "10"}, {"b", Constant, "1", "", "7"}, {"c", Range, "1", "2", "10"}}, ""},
      {{{"a", Range, "1", "2", "101"}}, TooMany("101")},
      {{{"a", Range, "1", "2", "51"}, {"b", Range, "1", "2", "2"}}, TooMany("102")},
      {{{"a", Range, "1", "2", "1e9"}, {"b", Range, "1", "2", "1e9"}}, TooMany("1E+18")},
  };
  for (const auto& c : kCases) {
    const auto refusal = CheckEstimates(c.rows, c.locale);
    EXPECT_EQ(refusal ? refusal->Message : "", c.message);
    EXPECT_EQ(refusal ? refusal->Row : 0, c.row) << c.message;
    EXPECT_EQ(refusal ? refusal->Column : 0, c.column) << c.message;
  }
}

struct Fitted {
  Project Document = NewProject(1, false, {});
  Settings Preferences;
  RecordingPrompter User;
  ProjectEditor Editor{Document, Preferences, User};
  ModelClass& Model = *Document.Models.Find("a*exp(b*x)");

  void Solve() {
    const SolveData data{{{1, 2, 3, 4, 5}}, {6.1, 3.6, 2.3, 1.3, 0.9}, {1, 1, 1, 1, 1}, {1, 1, 1, 1, 1}};
    std::string log;
    SolveForm form;
    Model.SolveType = 0;
    ASSERT_TRUE(Model.Fit(data, Preferences, log, form)) << log;
  }
};

TEST(SetEstimates, StoresStartsAndLetsUndoBringTheSolutionBack) {
  Fitted fitted;
  fitted.Solve();
  ModelClass& model = fitted.Model;
  const double solved = model.Values(1);
  const Rows rows = {{"a", Range, "1", "3", "5", "-0.5", ""}, {"b", Constant, "0.5", "", ""}};
  fitted.User.Answer = false;
  EXPECT_FALSE(SetEstimates(fitted.Document, fitted.Editor, model, rows));
  EXPECT_TRUE(model.Solved);
  EXPECT_FALSE(fitted.Document.Changed);

  fitted.User.Answer = true;
  EXPECT_TRUE(SetEstimates(fitted.Document, fitted.Editor, model, rows));
  EXPECT_EQ(
      fitted.User.Said,
      Said(2,
           "ask: This model is currently in the solved list. Modifying the parameters will clear it's solution. Do "
           "you wish to continue?"));
  EXPECT_FALSE(model.Solved);
  EXPECT_TRUE(model.SpecifyICComplete);
  EXPECT_EQ(model.GetICRange(), (std::vector<ICRange>{{1, 3, 5}, {0.5, 0.5, 1}}));
  EXPECT_EQ(model.Values(1), 1);
  EXPECT_EQ(model.Constants(1), 1);
  EXPECT_EQ(model.Constants(2), 0);
  EXPECT_TRUE(fitted.Document.Changed);
  const Rows shown = EstimateRows(model, kComma);
  EXPECT_EQ(shown[0].Type, Range);
  EXPECT_EQ(shown[0].Final, "3");
  EXPECT_EQ(shown[0].Steps, "5");
  EXPECT_EQ(shown[0].Minimum, "-0,5");
  EXPECT_EQ(shown[0].Maximum, "");
  EXPECT_EQ(shown[1].Type, Constant);
  EXPECT_EQ(shown[1].Initial, "0,5");

  // A model that has no solution needs neither question nor undo.
  EXPECT_TRUE(SetEstimates(fitted.Document, fitted.Editor, model, rows));
  EXPECT_EQ(fitted.User.Said.size(), 2u);
  EXPECT_EQ(fitted.Editor.UndoHistory(), Said{"1\t&Undo Modify Parameters 'a*exp(b*x)...'"});
  fitted.Editor.EditUndo();
  EXPECT_TRUE(model.Solved);
  EXPECT_EQ(model.Values(1), solved);
  EXPECT_FALSE(model.HasBounds());
}

// A model about the mean of its data, solved from the user's estimates; its constant is then the mean of Y, whatever
// the scale. Everything that goes by the input of a fit is that of the data just solved.
TEST(SetEstimates, LeavesTheInputOfTheFitToTheData) {
  const struct {
    const char* text;
    Rows rows;
  } kCases[] = {
      {"a+b*(x-xmean)/xstd", {{"a", InitialEstimate, "2", "", ""}, {"b", InitialEstimate, "1", "", ""}}},
      {"a+b*(x-xmean)/xstd", {{"a", Range, "1", "2", "2"}, {"b", InitialEstimate, "1", "", ""}}},
      {"a+b*(x1-x1mean)/x1std+c*(x2-x2mean)/x2std",
       {{"a", InitialEstimate, "2", "", ""}, {"b", InitialEstimate, "1", "", ""}, {"c", Constant, "0", "", ""}}},
      {"a+b*(x1-x1mean)/x1std+c*(x2-x2mean)/x2std",
       {{"a", Range, "1", "2", "2"}, {"b", InitialEstimate, "1", "", ""}, {"c", InitialEstimate, "1", "", ""}}},
  };
  const std::vector<double> first[] = {{10, 11, 13, 16, 20, 25}, {7, -1, 4, 2, 9, 3}, {3, 5, 4, 8, 9, 13}};
  for (const auto& c : kCases) {
    const std::size_t variables = std::string(c.text).find("x2") == std::string::npos ? 1 : 2;
    SolvableProject p(variables);
    ModelClass& model = p.AddUserModel("mine", c.text);
    for (const double scale : {1.0, 1e-9, 1e9, 1e-200, 1e200}) {
      SCOPED_TRACE(c.text + std::to_string(scale));
      p.Document.Sheet.Cells = GridCells();
      for (std::size_t v = 0; v <= variables; ++v)
        for (std::size_t i = 0; i < 6; ++i)
          p.Document.Sheet.Cells.SetGridCellNumber(i + 1, v + 1,
                                                   first[v < variables ? v : 2][i] * (v < variables ? scale : 1.0));
      ASSERT_TRUE(SetEstimates(p.Document, p.Editor, model, c.rows));
      p.Windows.Specify = true;
      p.SolveOne("mine");
      ASSERT_NE(p.Solver.Log().find("Using current initial estimates"), std::string::npos);
      ASSERT_TRUE(model.Solved) << p.Solver.Log();
      EXPECT_NEAR(model.Values(1), 7, 1e-6);

      Result<Project> back = ParseProject(ProjectText(p.Document), "p.qvx", {});
      ASSERT_TRUE(back);
      for (ModelClass* const of : {&model, back->Models.Find("mine")}) {
        const SolvedItem solution{of, nullptr};
        EXPECT_EQ(of->NumInputX(), 6u);
        for (std::size_t v = 0; v < variables; ++v) {
          const auto [least, greatest] = std::minmax_element(first[v].begin(), first[v].end());
          const int variable = static_cast<int>(v) + 1;
          EXPECT_EQ(solution.InputRange(variable), std::pair(*least * scale, *greatest * scale));
          EXPECT_EQ(DefaultSearch(solution, variable, {}).Max, GeneralNumber(*greatest * scale));
        }
        if (variables > 1) continue;
        const SolveData points = GatherData(p.Document.Sheet).Points;
        const Result<PlotClass> plot = ModelPlot(SeriesOf(solution), "mine", points, "X", "Y", p.Preferences);
        ASSERT_TRUE(plot) << plot.error();
        EXPECT_EQ(plot->PlotData[1].InputXMin(), 10 * scale);
        EXPECT_EQ(plot->PlotData[1].InputXMax(), 25 * scale);
      }
    }
  }
}

TEST(MovedEstimate, MovesByPartsOfItsValueAndZeroByPartsOfOne) {
  const EstimateRow row, inside{.Name = "a", .Initial = "", .Final = "", .Steps = "", .Minimum = "0,2", .Maximum = "1"};
  EXPECT_EQ(MovedEstimate(row, 0.5, 2, 10, {}), "0.6");
  EXPECT_EQ(MovedEstimate(row, -4, -1, 50, {}), "-2");
  EXPECT_EQ(MovedEstimate(row, 0, 3, 1, kComma), "0,03");
  // To its bounds; from beyond them, no further.
  EXPECT_EQ(MovedEstimate(inside, 0.5, -3, 50, kComma), "0,2");
  EXPECT_EQ(MovedEstimate(inside, 0.5, 3, 50, kComma), "1");
  EXPECT_EQ(MovedEstimate(inside, 2, 3, 50, kComma), "2");
}

TEST(SaveRules, MakesTheValuesRules) {
  Project project = NewProject(1, false, {});
  const std::unique_ptr<ModelClass> model = NewModelFor(1, {});
  model->SetID("m", {"a*x+b"});
  RecordingPrompter user;
  EXPECT_TRUE(
      SaveRules(project, *model, Rows{{"a", InitialEstimate, " 2.5", "", ""}, {"b", Range, "3", "", ""}}, user));
  EXPECT_TRUE(user.Said.empty());
  EXPECT_EQ(model->RuleConstant(1), "2.5");
  EXPECT_EQ(model->RuleConstant(2), "3");
  EXPECT_TRUE(project.Changed);

  model->SetRule(1, "* YMax");
  user.Answer = false;
  EXPECT_FALSE(SaveRules(project, *model, Rows{{"a", Constant, "9", "", ""}, {"b", Constant, "9", "", ""}}, user));
  EXPECT_FALSE(SaveRules(project, *model, Rows{{"a", Constant, "9", "", ""}, {"b", Constant, "?", "", ""}}, user));
  EXPECT_EQ(model->Rules(1), "* YMax");
  EXPECT_EQ(
      user.Said,
      (Said{"ask: You have previously specified rules for this equation, this action will overwrite them. Are you "
            "sure you want to continue?",
            "refuse: Please enter a valid Initial Value for variable 'b'."}));
  user.Answer = true;
  EXPECT_TRUE(SaveRules(project, *model, Rows{{"a", Constant, "9", "", ""}, {"b", Constant, "9", "", ""}}, user));
  EXPECT_EQ(model->Rules(1), "Value");
  EXPECT_EQ(model->RuleConstant(1), "9");
}

}  // namespace
}  // namespace quorvex
