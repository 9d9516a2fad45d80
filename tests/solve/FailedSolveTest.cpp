// What is said of a failed solve, and the ways on from there.

#include <gtest/gtest.h>

#include <cmath>

#include "SolvableProject.h"
#include "solve/InitialEstimates.h"

namespace quorvex {
namespace {

using Points = std::vector<std::pair<double, double>>;

// Solves a model over the points, and what is said of it where it fails. An own model has the name "own".
struct FailedModel : SolvableProject {
  std::string Reason;
  std::vector<EstimateText> Estimates;

  FailedModel() {
    Preferences.SetFlag("tryharder", false);
    Windows.WaysOn.assign(9, [this](FailedSolve& failed) {
      Reason = failed.Reason(0);
      Estimates = failed.Estimates(0);
      return WayOn::Close;
    });
  }
  void Fill(const Points& points) {
    GridCells& cells = Document.Sheet.Cells;
    cells.GridDeleteRows(1, cells.GridLastRow());
    for (std::size_t i = 0; i < points.size(); ++i) {
      cells.SetGridCellNumber(i + 1, 1, points[i].first);
      cells.SetGridCellNumber(i + 1, 2, points[i].second);
    }
  }
};

Points Line(double x0 = 1) {
  Points points;
  for (int i = 0; i < 6; ++i) points.emplace_back(x0 + i, 2.0 * i + 1);
  return points;
}

// Of a*sqr(20*b-x) the best coefficients are at the border of where it has values.
Points Root() {
  Points points;
  for (int i = 0; i <= 10; ++i) points.emplace_back(i, 3 * std::sqrt(10.0 - i));
  return points;
}

const char* const kFirst = "With the estimates it began with, ";

TEST(WhyFailed, SaysInPlainWordsWhatWentWrong) {
  const std::string kBroke = "The search came to coefficients at which it could not go on: ";
  const struct {
    std::string model;  // of the catalogue where it is there, else an own one of that text
    Points points;
    std::string reason;
    int solveType = 0;
  } kCases[] = {
      {"a+b*x+c*x^2+0",
       {{1, 2}, {2, 3}, {3, 5}},
       "The model has 3 coefficients and needs more points than that; the data have 3 points."},
      {"m*x+n", Line(),
       "The linear solver knows the models of the catalogue alone. Choose NonLinear in the setup for a model of your "
       "own.",
       1},
      {"a*x^b",
       {{1, 2}, {2, 3}, {3, -4.5}, {4, 1}},
       "The linear solver needs a function of Y that has no value at X = 3, Y = -4.5. Choose NonLinear in the setup to "
       "fit the model to Y itself.",
       1},
      {"a*x^b", {{0, 2}, {2, 3}, {3, 4}, {4, 5}}, "A term of the model has no value at X = 0.", 1},
      {"a*x+b",
       {{2, 2}, {2, 3}, {2, 4}},
       "The data can't tell the terms of the model apart: there are too few different X for them, or two terms are in "
       "proportion.",
       1},
      {"ln(a+b*x)", Line(), "With the coefficients at which the fit ended, the model has no value at X = 1.", 1},
      {"b*ln(a-x/4)", Line(), std::string(kFirst) + "the model has no value at X = 4."},
      {"a*x*1e200", Line(),
       std::string(kFirst) +
           "the model is so far from the data that the sum of squares is beyond the range of numbers."},
      {"sqr(a-1)*x+b", Line(), std::string(kFirst) + "the derivatives of the model can't be computed at X = 1."},
      {"a*exp(-b*x)+c", Line(2000),
       "At the estimates it began with, the curve doesn't depend on 'a' and 'b' at any point, so that the search had "
       "no "
       "direction to go."},
      {"(a+b)*x+c", Line(),
       "Changes of 'a' and 'b' move the curve in ways that make up for each other, so that the data can't tell them "
       "apart. Hold one of them constant."},
      {"a*sqr(20*b-x)", Root(), kBroke + "Error taking derivatives at X = 10."},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.model + "\n");
    FailedModel p;
    p.Fill(c.points);
    if (p.Document.Models.Find(c.model) == nullptr) p.AddUserModel(c.model, c.model);
    p.SolveOne(c.model, c.solveType);
    EXPECT_EQ(p.User.Last(), "inform: Solution Failed. View log for details.");
    EXPECT_EQ(p.Reason, c.reason) << p.Solver.Log();
  }
}

TEST(WhyFailed, NamesTheVariablesOfSeveralAndTheLimitsOfInterpolations) {
  SolvableProject plane(2);
  for (std::size_t row = 1; row <= 6; ++row)
    for (std::size_t col = 1; col <= 3; ++col)
      plane.Document.Sheet.Cells.SetGridCellNumber(row, col, static_cast<double>((row * col) % 5) / 2);
  plane.AddUserModel("own", "a*ln(x2)+b*x1");
  std::string reason;
  plane.Windows.WaysOn.assign(2, [&](FailedSolve& failed) {
    reason = failed.Reason(0);
    EXPECT_TRUE(failed.Estimates(0).empty() == (failed.Fits()[0].Object.Model == nullptr));
    return WayOn::Close;
  });
  plane.SolveOne("own");
  EXPECT_EQ(reason,
            "With the estimates it began with, the model has no value at X1 = 0, X2 = 0. Searches from many other "
            "starts failed, too.");

  FailedModel p;
  const struct {
    int kind;
    Points points;
    const char* reason;
  } kCurves[] = {
      {kPolynomial,
       [] {
         Points many(11, {0, 1});
         for (int i = 0; i < 11; ++i) many[std::size_t(i)].first = i;
         return many;
       }(),
       "Polynomial takes no more than 10 points of different X; the data have 11."},
      {kCubicSpline,
       {{1, 2}, {1, 3}, {1, 4}},
       "Cubic Spline takes no fewer than 3 points of different X; the data have 1."},
  };
  for (const auto& c : kCurves) {
    p.Fill(c.points);
    p.Windows.Kinds = {c.kind};
    p.Solver.SolveInterpolation();
    EXPECT_EQ(p.Reason, c.reason);
    EXPECT_TRUE(p.Estimates.empty());
  }
}

// The shown text of each estimate, "a = 1".
std::vector<std::string> Texts(const std::vector<EstimateText>& estimates) {
  std::vector<std::string> texts;
  for (const EstimateText& one : estimates) texts.push_back(one.Name + " = " + one.Value);
  return texts;
}

TEST(FailedSolve, ShowsTheEstimatesThatASearchBeganWith) {
  FailedModel p;
  p.Document.Locale.DecimalSeparator = ',';
  p.Fill(Line(2000));
  ModelClass& model = p.AddUserModel("own", "a*exp(-b*x)+c");
  p.SolveOne("own");
  EXPECT_EQ(Texts(p.Estimates), (std::vector<std::string>{"a = 1", "b = 1", "c = 1"}));
  model.CoefficientValues = {1.5, 1, 2};
  model.SetConstant(1, 0);
  model.SetICRange({{1.5, 1.5, 1}, {1, 1, 1}, {2, 3.5, 3}});
  model.SpecifyICComplete = p.Windows.Specify = true;
  p.SolveOne("own");
  EXPECT_EQ(Texts(p.Estimates), (std::vector<std::string>{"a = 1,5 (constant)", "b = 1", "c = 2 to 3,5 in 3 steps"}));
  EXPECT_TRUE(
      p.Reason.starts_with("None of 3 starts led to a solution. The first one: At the estimates it began with, "
                           "the curve doesn't depend on 'b' at any point"))
      << p.Reason;
}

// The searches that a log tells of.
std::size_t Searches(const std::string& log) {
  std::size_t count = 0;
  for (std::size_t at = 0; (at = log.find("Beginning non-linear solution", at)) != std::string::npos; ++at) ++count;
  return count;
}

// Gives the model these values as its user does.
std::function<bool(ModelClass&)> Give(SolvableProject& p, const std::vector<std::string>& values) {
  return [&p, values](ModelClass& model) {
    std::vector<EstimateRow> rows = EstimateRows(model, p.Document.Locale);
    for (std::size_t i = 0; i < values.size(); ++i) rows[i].Initial = values[i];
    return SetEstimates(p.Document, p.Editor, model, rows);
  };
}

TEST(FailedSolve, LeadsOnByEstimatesOfTheUsersOwn) {
  SolvableProject p;
  ModelClass& model = p.AddUserModel("own", "sqr(a-2)*x+b");  // no value from ones
  std::vector<std::vector<std::string>> shown;
  const auto way = [&](WayOn on) {
    return [&shown, on](FailedSolve& failed) {
      shown.push_back(Texts(failed.Estimates(0)));
      return on;
    };
  };
  // Cancelled, the log, a value that fails, too, and one that doesn't.
  p.Preferences.SetFlag("tryharder", false);
  p.Windows.WaysOn = {way(WayOn::InitialEstimates), way(WayOn::ViewLog),
                      [&](FailedSolve& failed) {
                        p.Windows.Estimate = Give(p, {"-5", "2"});
                        return way(WayOn::InitialEstimates)(failed);
                      },
                      [&](FailedSolve& failed) {
                        EXPECT_EQ(EstimateRows(model, {})[0].Initial, "-5");
                        p.Windows.Estimate = Give(p, {"3", "2"});
                        return way(WayOn::InitialEstimates)(failed);
                      }};
  p.Windows.Setup = SolveChoice{0, ModelSelection::SingleModel, false};
  p.Windows.Model = "own";
  EXPECT_EQ(p.Solver.SolveRegression(), 0u);
  EXPECT_EQ(shown, (std::vector<std::vector<std::string>>{
                       {"a = 1", "b = 1"}, {"a = 1", "b = 1"}, {"a = 1", "b = 1"}, {"a = -5", "b = 2"}}));
  EXPECT_EQ(p.User.Last(), "inform: Solution was successful.");
  EXPECT_NEAR(model.Values(1), 6, 0.1);
  EXPECT_EQ(p.History().size(), 3u);  // each run can be taken back
  EXPECT_FALSE(model.SpecifyICComplete);
  // One account of all that was tried.
  EXPECT_EQ(Searches(p.Solver.Log()), 3u) << p.Solver.Log();
}

TEST(FailedSolve, LeadsOnFromAGroup) {
  SolvableProject p;
  for (const char* id : {"one", "two", "three"}) p.AddUserModel(id, "ln(-abs(m*x)-1)");
  p.Preferences.SetFlag("tryharder", false);
  p.Windows.Setup = SolveChoice{0, ModelSelection::Groups};
  p.Windows.Pick = [](GroupPick& pick) { pick.UserDefined = true; };
  p.Windows.WaysOn = {
      [&](FailedSolve& failed) {
        EXPECT_EQ(p.Windows.Left, "one, two, three");
        EXPECT_TRUE(failed.CanTryHarder(0));
        failed.Chosen = {1};
        return WayOn::ViewLog;
      },
      [&](FailedSolve& failed) {
        EXPECT_TRUE(p.Windows.Shown.back().starts_with("SolveLog: Beginning non-linear solution for model two\r\n"));
        EXPECT_EQ(failed.Chosen, std::vector<std::size_t>{1});
        failed.Chosen = {2, 1};
        return WayOn::TryHarder;
      },
      [&](FailedSolve& failed) {
        EXPECT_EQ(p.Windows.Left, "two, three, one");
        EXPECT_FALSE(failed.CanTryHarder(0));
        EXPECT_TRUE(failed.CanTryHarder(2));
        EXPECT_TRUE(failed.Reason(1).ends_with("Searches from many other starts failed, too."));
        return WayOn::Close;
      }};
  EXPECT_EQ(p.Solver.SolveRegression(), 0u);
  EXPECT_EQ(p.User.Said, (std::vector<std::string>{
                             "inform: 2 of the 5 models solved.  View log for details.",
                             "inform: 2 of the 5 models solved.  View log for details.",  // behind the log again

                             "inform: 0 of the 2 models solved.  View log for details."}));
  EXPECT_EQ(p.SolvedNames(), "my line, my power");
}

// What a solve left is brought back until it is solved or gone; a run that is broken off takes nothing off the list.
TEST(FailedSolve, IsBroughtBackLater) {
  SolvableProject p;
  p.AddUserModel("root", "sqr(a-2)*x+b");  // no value from ones
  p.AddUserModel("never", "ln(-abs(m*x)-1)");
  p.Preferences.SetFlag("tryharder", false);
  const auto bringBack = [&](std::vector<std::function<WayOn(FailedSolve&)>> ways) {
    p.Windows.Left.clear();
    p.User.Said.clear();
    p.Windows.WaysOn = std::move(ways);
    const bool solved = p.Solver.SolveWhatFailed().has_value();
    EXPECT_TRUE(p.Windows.WaysOn.empty());
    return solved;
  };
  const auto tryFirst = [](FailedSolve&) { return WayOn::TryHarder; };
  EXPECT_FALSE(bringBack({}));
  EXPECT_EQ(p.User.Last(), "inform: The last solve left nothing without a solution.");

  p.Windows.Setup = SolveChoice{0, ModelSelection::Groups};
  p.Windows.Pick = [](GroupPick& pick) { pick.UserDefined = true; };
  p.Solver.SolveRegression();
  EXPECT_FALSE(bringBack({}));
  EXPECT_EQ(p.User.Last(), "inform: 2 models of the last solve have no solution.");
  EXPECT_EQ(p.Windows.Left, "root, never");

  p.Windows.AtTurn = [](ScriptedProgress& form) { form.Aborted = true; };
  EXPECT_FALSE(bringBack({tryFirst}));
  EXPECT_EQ(p.User.Last(), "inform: Solution Process Aborted.");
  p.Windows.AtTurn = [](ScriptedProgress&) {};
  EXPECT_TRUE(bringBack({tryFirst}));
  EXPECT_TRUE(p.Model("root").Solved);
  EXPECT_EQ(p.Windows.Left, "never") << "behind the run";
  EXPECT_GT(Searches(p.Solver.Log()), 4u) << "one account of all runs";
  EXPECT_FALSE(bringBack({}));
  EXPECT_EQ(p.User.Last(), "inform: 1 model of the last solve has no solution.");
  EXPECT_EQ(p.Windows.Left, "never");

  p.Document.Models.Remove("never");
  EXPECT_FALSE(bringBack({}));
  EXPECT_EQ(p.User.Last(), "inform: The last solve left nothing without a solution.");
}

// A search that fails goes on by itself, under the eyes of the user, who may stop it there.
TEST(RunSolve, TriesHarderByPreferenceUntilTheUserAborts) {
  const struct {
    bool preference, linear, abort;
    const char* said;
    bool tried;
  } kCases[] = {
      {false, false, false, "inform: Solution Failed. View log for details.", false},
      {true, false, true, "inform: Solution Process Aborted.", true},
      {true, true, false, "inform: Solution Failed. View log for details.", false},
  };
  for (const auto& c : kCases) {
    FailedModel p;
    p.Fill(Root());
    p.AddUserModel("own", "a*sqr(20*b-x)");
    p.Preferences.SetFlag("tryharder", c.preference);
    p.Windows.AtTurn = [&](ScriptedProgress& form) {
      if (c.abort && form.Said.back() == "Trying harder: own...") form.Aborted = true;
    };
    p.SolveOne("own", c.linear ? 1 : 0);
    EXPECT_EQ(p.User.Last(), c.said);
    EXPECT_EQ(std::ranges::count(p.Windows.Progress, "Trying harder: own...") > 0, c.tried);
    EXPECT_EQ(Searches(p.Solver.Log()), c.linear ? 0u : 1u) << p.Solver.Log();  // told once, tried or not
    EXPECT_FALSE(p.Model("own").Solved);
  }
}

}  // namespace
}  // namespace quorvex
