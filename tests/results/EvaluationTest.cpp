#include <gtest/gtest.h>

#include "NistSets.h"
#include "RecordingPrompter.h"
#include "core/NumberText.h"
#include "results/Evaluation.h"
#include "results/SolvedProject.h"

namespace quorvex {
namespace {

const LocaleText kLocale;
const LocaleText kGerman{',', ';', '.', '.', ':'};

std::string Evaluated(const SolvedItem& solution, const EvaluationEntries& entries,
                      const LocaleText& locale = kLocale) {
  RecordingPrompter user;
  const auto text = EvalCommand(solution, entries, locale, user);
  return text ? *text : user.Last();
}

// Texts line by line; numbers at the end of a line may differ by what a numerical derivative is good for.
void ExpectLines(const std::string& actual, const std::string& expected) {
  const std::vector<std::string> lines = Split(actual, '\n'), wanted = Split(expected, '\n');
  ASSERT_EQ(lines.size(), wanted.size()) << actual;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::size_t at = wanted[i].rfind("= ");
    const auto number = [at](const std::string& line) {
      return at == std::string::npos ? std::nullopt : NumericText(Split(line.substr(at + 2), '\r')[0]);
    };
    const auto value = lines[i].size() == wanted[i].size() ? number(lines[i]) : std::nullopt;
    if (!value || !number(wanted[i])) {
      EXPECT_EQ(lines[i], wanted[i]);
    } else {
      EXPECT_EQ(lines[i].substr(0, at), wanted[i].substr(0, at));
      EXPECT_NEAR(*value, *number(wanted[i]), 1e-8);
    }
  }
}

EvaluationEntries Value(std::vector<std::string> x, bool dydx = false, bool parameters = false) {
  EvaluationEntries entries;
  entries.X = std::move(x);
  entries.DyDx = dydx;
  entries.Parameters = parameters;
  return entries;
}

EvaluationEntries Root(std::vector<std::string> x, std::string y, int variable, std::string min, std::string max,
                       std::string intervals = "200") {
  EvaluationEntries entries = Value(std::move(x));
  entries.RootAtY = true;
  entries.Y = std::move(y);
  entries.Variable = variable;
  entries.SearchMin = std::move(min);
  entries.SearchMax = std::move(max);
  entries.SearchIntervals = std::move(intervals);
  return entries;
}

// A parabola y = x^2 - 4 + b/x with b = 0 held, over X from 0.5 to 5.
struct Curve {
  Curve(const LocaleText& locale = kLocale) : project(ProjectOf({{0.5, 1, 5}, {1, 2, 3}}, false, locale)) {
    ModelClass& model = AddModel(project, "Mine", {"a*x^2+c+b/x"});
    model.SetIC(GatherData(project.Sheet).Points);
    for (int i = 1; i <= 3; ++i) model.SetValue(i, model.Variables(i) == "a" ? 1 : model.Variables(i) == "c" ? -4 : 0);
    for (int i = 1; i <= 3; ++i) model.SetConstant(i, model.Variables(i) != "b");
    solution.Model = &model;
  }
  Project project;
  SolvedItem solution;
};

TEST(EvalCommand, WritesValuesRootsAndDerivativesOfOneVariable) {
  const Curve curve;
  EvaluationEntries both = Root({""}, "0", 1, "-5.1", "5.1");
  both.DyDx = true;
  const struct {
    EvaluationEntries entries;
    const char* text;
  } kCases[] = {
      {Value({" 3 "}), "Evaluation of equation: Mine\r\nX = 3\r\nY = 5.000000000000E+00"},
      {Value({"3"}, true, true),
       "Evaluation of equation: Mine\r\nX = 3\r\nY = 5.000000000000E+00\r\nDerivatives at X = 3\r\n"
       "dY/dX = 6.000000000000E+00\r\ndY/da = 9.000000000000E+00\r\n"
       "dY/db = 0.000000000000E+00  (Held Constant)\r\ndY/dc = 1.000000000000E+00"},
      {both,
       "Root search of equation: Mine\r\nX at Y = 0\r\n-2.000000000000E+00\r\n2.000000000000E+00\r\n"
       "Derivatives at X = -2\r\ndY/dX = -4.000000000000E+00\r\nDerivatives at X = 2\r\ndY/dX = 4.000000000000E+00"},
      {Root({""}, "-5", 1, "0.5", "5"), "Root search of equation: Mine\r\nX at Y = -5\r\nNo roots found."},
      {Root({""}, "0", 1, "5", "1"), "Root search of equation: Mine\r\nX at Y = 0\r\n2.000000000000E+00"},
  };
  for (const auto& c : kCases) ExpectLines(Evaluated(curve.solution, c.entries), c.text);
}

// R 4, predict() of lm(), but for the fifth digit of the quantile.
TEST(EvalCommand, TellsTheLimitsOfAValue) {
  Project project = LineProject();
  ModelClass& line = SolveModel(project, "a*x+b", 1);
  const SolveData data = GatherData(project.Sheet).Points;
  EvaluationEntries entries = Value({"7.5"});
  entries.Limits = {true, true, 2};
  RecordingPrompter user;
  const std::string text = *EvalCommand({&line, nullptr}, entries, kLocale, user, data);
  const std::vector<std::string> lines = Split(text, '\n');
  ASSERT_EQ(lines.size(), 5u) << text;
  EXPECT_TRUE(lines[3].starts_with("95% confidence limits: 1.37486") && lines[3].find(" to 1.86513") < 60) << lines[3];
  EXPECT_TRUE(lines[4].starts_with("95% prediction limits: 1.32487") && lines[4].find(" to 1.91512") < 60) << lines[4];
}

TEST(EvalCommand, SaysWhatHasNoValueAndLeavesTheModelAlone) {
  Project project = LineProject();
  ModelClass& model = AddModel(project, "Mine", {"b+ln(x)^a"});
  model.SetIC(GatherData(project.Sheet).Points);
  model.SetValue(1, 0.5);
  model.SetValue(2, 3);
  EXPECT_EQ(Evaluated({&model, nullptr}, Value({"-1"}, true, true)),
            "Evaluation of equation: Mine\r\nX = -1\r\nError\r\nError evaluating the function at X =-1\r\n"
            "Derivatives at X = -1\r\nError calculating dY/dX\r\nError calculating dY/da\r\n"
            "Error calculating dY/db");
  EXPECT_EQ(model.Values(1), 0.5);
  EXPECT_EQ(model.Values(2), 3);
}

TEST(EvalCommand, NamesTheVariablesWhereThereAreSeveral) {
  Project project = ProjectOf({{1, 2, 4}, {2, 3, 5}, {1, 2, 3}});
  ModelClass& model = AddModel(project, "Plane", {"a*x1+b*x2"});
  model.SetIC(GatherData(project.Sheet).Points);
  model.SetValue(1, 2);
  model.SetValue(2, -1);
  const SolvedItem solution{&model, nullptr};
  ExpectLines(Evaluated(solution, Value({"1.5", "4"}, true, true)),
              "Evaluation of equation: Plane\r\nX1 = 1.5\r\nX2 = 4\r\nY = -1.000000000000E+00\r\n"
              "Derivatives at X1 = 1.5, X2 = 4\r\ndY/dX1 = 2.000000000000E+00\r\ndY/dX2 = -1.000000000000E+00\r\n"
              "dY/da = 1.500000000000E+00\r\ndY/db = 4.000000000000E+00");
  EXPECT_EQ(Evaluated(solution, Root({"3", ""}, "1", 2, "0", "8")),
            "Root search of equation: Plane\r\nX1 = 3\r\nX2 at Y = 1\r\n5.000000000000E+00");
  EXPECT_EQ(Evaluated(solution, Root({"", "3"}, "1", 2, "0", "8")), "refuse: Please enter a value for X1.");
  const SearchDefaults search = DefaultSearch(solution, 2, kLocale);
  EXPECT_EQ(search.Min, "2");
  EXPECT_EQ(search.Max, "5");
  EXPECT_EQ(search.Intervals, "200");
}

TEST(EvalCommand, RefusesEntriesThatDoNotDo) {
  const Curve curve;
  const struct {
    EvaluationEntries entries;
    const char* text;
  } kCases[] = {
      {Value({""}), "refuse: Please enter a value for X."},
      {Value({"1e400"}), "refuse: Please enter a value for X."},
      {Root({""}, "y", 1, "0", "1"), "refuse: Please enter a value for Y."},
      {Root({""}, "1", 1, "", "1"), "refuse: Please enter a value for the search minimum."},
      {Root({""}, "1", 1, "0", "-"), "refuse: Please enter a value for the search maximum."},
      {Root({""}, "1", 1, "1", "1.0"), "refuse: The values entered for search minimum and maximum cannot be equal."},
      {Root({""}, "1", 1, "0", "1", "0"), "refuse: The number of search intervals must be between 1 and 1000000."},
      {Root({""}, "1", 1, "0", "1", "1e9"), "refuse: The number of search intervals must be between 1 and 1000000."},
  };
  for (const auto& c : kCases) EXPECT_EQ(Evaluated(curve.solution, c.entries), c.text);
}

TEST(EvalCommand, SpeaksTheUsersNumbers) {
  const Curve curve(kGerman);
  EXPECT_EQ(Evaluated(curve.solution, Value({"2,5"}), kGerman),
            "Evaluation of equation: Mine\r\nX = 2,5\r\nY = 2,250000000000E+00");
  EXPECT_EQ(Evaluated(curve.solution, Value({"2.5"}), kGerman), "refuse: Please enter a value for X.");
  EXPECT_EQ(DefaultSearch(curve.solution, 1, kGerman).Min, "0,5");
}

TEST(EvalCommand, ServesInterpolations) {
  Project project = ProjectOf({{-1, 0, 1, 2}, {1, 0, 1, 4}});
  InterpClass& polynomial = project.Interpolations[1];
  std::string log;
  ASSERT_TRUE(polynomial.Fit(GatherData(project.Sheet).Points, log));
  const SolvedItem solution{nullptr, &polynomial};
  EXPECT_EQ(Evaluated(solution, Value({"1.5"}, true, true)),
            "Evaluation of equation: Polynomial\r\nX = 1.5\r\nY = 2.250000000000E+00");
  EXPECT_EQ(Evaluated(solution, Value({"3"})),
            "Evaluation of equation: Polynomial\r\nX = 3\r\nError\r\nData lies outside of the valid range");
  EXPECT_EQ(Evaluated(solution, Root({""}, "2.25", 1, "-5", "5")),
            "Root search of equation: Polynomial\r\nX at Y = 2.25\r\n1.500000000000E+00");
  EXPECT_EQ(DefaultSearch(solution, 1, kLocale).Max, "2");
}

}  // namespace
}  // namespace quorvex
