#include <gtest/gtest.h>

#include <utility>

#include "TableFile.h"
#include "core/DerivativeKind.h"
#include "core/NumberText.h"
#include "engine/EqClass.h"
#include "engine/Points.h"
#include "engine/UserModel.h"

namespace quorvex {
namespace {

SolveData Sampled(std::vector<double> x, const std::function<double(double)>& f) {
  std::vector<double> y;
  for (const double v : x) y.push_back(f(v));
  return Points({std::move(x)}, std::move(y));
}

// A form that raises a flag at a given turn of the event loop.
struct ScriptedForm : SolveForm {
  int AbortAt = 0, PauseAt = 0, Turns = 0;
  std::vector<std::string> Texts;
  void Yield() override {
    ++Turns;
    if (Turns == AbortAt) Aborted = true;
    if (Turns == PauseAt) Paused = true;
  }
  void SetDeltaLabel(const std::string& text) override { Texts.push_back(text); }
  void SetParameterLabel(int i, const std::string& text) override { Texts.push_back(std::to_string(i) + " " + text); }
};

struct Solving {
  explicit Solving(std::vector<std::string> lines, bool several = false)
      : Model(NewModelFor(several ? 2 : 1, LocaleText())) {
    Model->SetID("test", std::move(lines));
    EXPECT_TRUE(Model->IsValidEquation());
  }
  Solving& Start(std::vector<double> values) {
    for (std::size_t i = 0; i < values.size(); ++i)
      Model->SetRuleConstant(static_cast<int>(i) + 1, GeneralNumber(values[i]));
    return *this;
  }
  bool Logged(const std::string& text) const { return Log.find(text) != std::string::npos; }
  bool Fit(const SolveData& data) { return Model->Fit(data, Preferences, Log, Form); }
  // The log from the line that begins with `text` on, with bare line ends.
  std::string From(const std::string& text) const {
    std::string log = Log.substr(std::min(Log.find(text), Log.size()));
    std::erase(log, '\r');
    return log;
  }
  std::unique_ptr<ModelClass> Model;
  Settings Preferences;
  ScriptedForm Form;
  std::string Log;
};

const SolveData kLine = Sampled({1, 2, 3, 4, 5}, [](double x) { return 3 + 2 * x; });
const SolveData kNoisy = Points({{1, 2, 3, 4, 5}}, {5.1, 6.9, 9.2, 10.8, 13.1});

TEST(Fit, ReportsAPerfectFitAsConverged) {
  Solving solving({"a+b*x"});
  ASSERT_TRUE(solving.Fit(kLine));
  EXPECT_NEAR(solving.Model->Values(1), 3, 1e-9);
  EXPECT_NEAR(solving.Model->Values(2), 2, 1e-9);
  EXPECT_TRUE(solving.Logged("Solution converged to residual change"));
}

TEST(Fit, StopsAtOnceWhereTheMeritFunctionIsZero) {
  Solving solving({"a*x"});
  ASSERT_TRUE(solving.Start({2}).Fit(Points({{1, 2, 4}}, {2, 4, 8})));
  EXPECT_EQ(solving.From("Beginning non-linear iterations"),
            "Beginning non-linear iterations\n"
            "Solution converged to residual change less than 1E-10%\n"
            "Final Merit Function = 0\n"
            "Total number of non-linear iterations = 1\n"
            "Residual Sum of Squares = 0\n"
            "Solution Complete\n\n");
  EXPECT_EQ(solving.Model->R2, 1);
  EXPECT_EQ(solving.Model->Durbin, 0);
}

TEST(Fit, WritesItsAccountLineByLine) {
  Solving solving({"a+b*x"});
  solving.Model->cfgID = "line";
  ASSERT_TRUE(solving.Fit(kNoisy));
  std::string head = solving.From("");
  EXPECT_EQ(head.substr(0, head.find("Solution converged")),
            "Beginning non-linear solution for model line\n"
            "Determining derivative method for user defined model\n"
            "Using numerical derivatives\n"
            "Obtaining initial estimates\n"
            "Initial estimates successful\n"
            "Solving with 1 initial condition(s)\n"
            "Beginning non-linear iterations\n");
  EXPECT_NEAR(solving.Model->RSS, 0.107, 1e-9);  // closed form of the straight line
  EXPECT_NEAR(solving.Model->StandardError(2), std::sqrt(0.107 / 3 / 10), 1e-9);
  // Values stand, so a second solve starts from them.
  solving.Log.clear();
  ASSERT_TRUE(solving.Fit(kNoisy));
  EXPECT_TRUE(solving.Logged("Using current initial estimates\r\n"));
}

TEST(Fit, RefusesAsManyCoefficientsAsPoints) {
  Solving solving({"a+b*x+c*x^2"});
  EXPECT_FALSE(solving.Fit(Points({{1, 2, 3}}, {1, 2, 4})));
  EXPECT_EQ(solving.From("Solution"), "Solution failed: not enough data points\n\n");
  solving.Log.clear();
  EXPECT_TRUE(solving.Fit(Points({{1, 2, 3, 4}}, {1, 2, 4, 9})));
  EXPECT_EQ(solving.Model->DOFError, 1);
}

TEST(Fit, EndsAtTheIterationLimitOneBeyondIt) {
  Solving solving({"a*exp(b*x)"});
  solving.Preferences.MaxIterations = 2;
  ASSERT_TRUE(solving.Start({1, 0.5}).Fit(kNoisy));
  EXPECT_TRUE(
      solving.Logged("Reached iteration limit of 2\r\nSolution failed to converge to residual change of "
                     "1E-10%\r\nFinal Merit Function = "));
  EXPECT_TRUE(solving.Logged("Total number of non-linear iterations = 3\r\n"));
  EXPECT_EQ(solving.Model->Ended, SearchEnd::IterationLimit);
}

TEST(Fit, ToleratesSomeStepsWithoutChange) {
  // A coefficient without influence on a constant model: every trial gives the same merit function.
  Solving solving({"a+0*b*x^0"});
  solving.Model->SetConstant(2, 0);
  solving.Preferences.DivIterations = 3;
  ASSERT_TRUE(solving.Start({2, 1}).Fit(Points({{1, 2, 3}}, {1, 2, 3})));
  EXPECT_TRUE(
      solving.Logged("Merit Function unchanged during last 3 of 5 iterations\r\n"
                     "Solution converged to residual change of 0.0%\r\n"))
      << solving.Log;
  EXPECT_EQ(solving.Model->CopyTo()->Ended, SearchEnd::Unchanged);
  solving.Preferences.MaxIterations = 5;  // where both ends meet it is the limit
  ASSERT_TRUE(solving.Fit(Points({{1, 2, 3}}, {1, 2, 3})));
  EXPECT_EQ(solving.Model->Ended, SearchEnd::IterationLimit);
}

TEST(Fit, StandsWhenTheUserPausesAndFallsWhenHeAborts) {
  Solving paused({"a*exp(b*x)"});
  paused.Form.PauseAt = 2;
  EXPECT_TRUE(paused.Start({1, 0.1}).Fit(kNoisy));
  EXPECT_TRUE(paused.Logged("Iterations stopped by user.\r\n"));
  EXPECT_TRUE(paused.Model->Solved);
  EXPECT_FALSE(paused.Form.Paused);
  EXPECT_EQ(paused.Model->Ended, SearchEnd::Paused);
  ASSERT_TRUE(paused.Fit(kNoisy));
  EXPECT_EQ(paused.Model->Ended, SearchEnd::Converged);

  Solving aborted({"a*exp(b*x)"});
  aborted.Form.AbortAt = 2;
  EXPECT_FALSE(aborted.Start({1, 0.1}).Fit(kNoisy));
  EXPECT_FALSE(aborted.Model->Solved);
  EXPECT_EQ(aborted.From("Beginning non-linear iterations"), "Beginning non-linear iterations\n");
}

TEST(Fit, ShowsItsProgress) {
  Solving solving({"a+b*x"});
  solving.Form.ShowDetail = true;
  solving.Fit(kNoisy);
  ASSERT_GE(solving.Form.Texts.size(), 3u);
  EXPECT_EQ(solving.Form.Texts[0], "1 a: 1");
  EXPECT_EQ(solving.Form.Texts[1], "2 b: 1");
  EXPECT_EQ(solving.Form.Texts[2], "Percent Change: 0.000000E+00");

  // The first two steps of a*x in closed form: towards sum xy / sum xx, held back by damping. The first one is taken
  // before the iterations.
  Solving damped({"a*x"});
  damped.Preferences.MaxIterations = 1;
  ASSERT_TRUE(damped.Start({0}).Fit(Points({{1, 2, 4}}, {2, 4, 9})));
  double a = 0, before = 0, chisq = 101;
  for (const double alamda : {0.001, 0.0001}) {
    a += (46 - 21 * a) / (21 * (1 + alamda));
    before = std::exchange(chisq, 101 - 2 * 46 * a + 21 * a * a);
  }
  EXPECT_NEAR(damped.Model->Values(1), a, 1e-9);
  EXPECT_EQ(damped.Form.Texts.back(),
            "Percent Change: " + FormatNumber((before - chisq) / chisq * 100, "0.000000E+00"));
}

TEST(Fit, KeepsHeldCoefficientsAndGivesThemNoVariance) {
  Solving solving({"a+b*x+c*x^2"});
  solving.Model->SetConstant(2, 0);
  ASSERT_TRUE(solving.Start({1, 2, 0}).Fit(kNoisy));
  EXPECT_EQ(solving.Model->Values(2), 2);
  EXPECT_EQ(solving.Model->Covariance(2), 0);
  EXPECT_GT(solving.Model->Covariance(1), 0);
  EXPECT_EQ(solving.Model->DOFError, 3);

  Solving allHeld({"a+b*x"});
  allHeld.Model->SetConstant(1, 0);
  allHeld.Model->SetConstant(2, 0);
  ASSERT_TRUE(allHeld.Start({3, 2}).Fit(kNoisy));
  EXPECT_NEAR(allHeld.Model->RSS, 0.11, 1e-12);
}

constexpr struct {
  const char *Model, *Messages;
  bool Several;
} kFaults[] = {
    {"a*ln(x-3)", "Error evaluating the function at X =1\nSolution failed: Numerical Error\n", false},
    {"a*(x-1)^(-1)", "Error evaluating the function at X =1\nSolution failed: Numerical Error\n", false},
    {"a*exp(1000*x)", "Error evaluating the function at X =1\nSolution failed: Numerical Error\n", false},
    {"a*sqr(1-b)*x", "Error taking derivatives at X = 1\nSolution failed: Numerical Error\n", false},
    {"a*x+b-b", "Singular matrix encountered in gaussian elimination.\nSolution failed: Numerical Error\n", false},
    {"a*x*1e200", "Solution failed: Numerical Error\n", false},
    {"a*ln(x1-3)", "Error evaluating the function.\nSolution failed: Numerical Error\n", true},
    {"a*sqr(1-b)*x1", "Error taking derivatives.\nSolution failed: Numerical Error\n", true},
};

TEST(Fit, EndsANumericalFaultWithItsReasonAndTheParameters) {
  for (const auto& c : kFaults) {
    Solving solving({c.Model}, c.Several);
    EXPECT_FALSE(solving.Fit(kNoisy)) << c.Model;
    EXPECT_FALSE(solving.Model->Solved);
    std::string expected =
        "Beginning non-linear iterations\n" + std::string(c.Messages) + "Current parameter values:\n";
    for (int i = 1; i <= solving.Model->NumDependentVar(); ++i)
      expected += solving.Model->Variables(i) + " = " + GeneralNumber(solving.Model->Values(i)) + "\n";
    EXPECT_EQ(solving.From("Beginning non-linear iterations"), expected + "\n") << c.Model;
    EXPECT_EQ(solving.Log.find("nan"), std::string::npos);
  }
}

// The point that fails is the first one in the order of the data, however far it lies behind the blocks that went well.
TEST(Fit, NamesTheFirstPointThatFails) {
  std::vector<double> x;
  for (int i = 1; i <= 700; ++i) x.push_back(i);
  const SolveData data = Sampled(x, [](double v) { return v; });
  const std::pair<const char*, const char*> models[] = {
      {"a*ln(600.5-x)", "Error evaluating the function at X =601\n"},
      {"if(x<>300,a*x,1/(x-300))", "Error evaluating the function at X =300\n"},
      {"if(x<650,a*x,a*sqr(1-b))", "Error taking derivatives at X = 650\n"},  // no value above b = 1
  };
  for (const auto& [text, message] : models) {
    Solving solving({text});
    EXPECT_FALSE(solving.Fit(data));
    EXPECT_NE(solving.From("").find(message), std::string::npos) << text << "\n" << solving.From("");
  }
}

TEST(Fit, TakesAShorterStepWhereATrialHasNoValue) {
  // From b = 5 the first steps lead beyond the domain of the root.
  const SolveData data = Sampled({1, 2, 3, 4, 5, 6}, [](double x) { return 2 * std::sqrt(x - 0.9); });
  Solving solving({"a*sqr(x-b)"});
  ASSERT_TRUE(solving.Start({1, -5}).Fit(data)) << solving.Log;
  EXPECT_NEAR(solving.Model->Values(1), 2, 1e-4);
  EXPECT_NEAR(solving.Model->Values(2), 0.9, 1e-4);
}

TEST(Fit, RefusesMoreThanAHundredCoefficients) {
  std::string text = "x*(c1";
  std::vector<double> x, y;
  for (int i = 2; i <= 101; ++i) text += "+c" + std::to_string(i);
  for (int i = 0; i < 200; ++i) x.push_back(i), y.push_back(i);
  Solving solving({text + ")"});
  EXPECT_FALSE(solving.Fit(Points({x}, y)));
  EXPECT_TRUE(solving.From("Beginning non-l")
                  .find("iterations\nA model may have 100 coefficients at most.\nSolution failed: Numerical Error\n") !=
              std::string::npos)
      << solving.Log;
}

TEST(Fit, TakesTypedDerivativesOnlyWhereAllCompile) {
  Solving typed({"F1*exp(b*x)", "a"});
  typed.Model->SetDerivative(1, "exp(B*x)");
  typed.Model->SetDerivative(2, "F1*x*exp(b*x)*xmean/3");  // 3 is the mean
  typed.Start({5, 0.1});
  ASSERT_TRUE(typed.Fit(kNoisy));
  EXPECT_TRUE(typed.Logged("Using analytical derivatives\r\n"));

  Solving numeric({"a*exp(b*x)"});
  ASSERT_TRUE(numeric.Start({5, 0.1}).Fit(kNoisy));
  EXPECT_NEAR(typed.Model->RSS / numeric.Model->RSS, 1, 1e-12);
  EXPECT_NEAR(typed.Model->StandardError(2) / numeric.Model->StandardError(2), 1, 1e-8);

  for (const char* text : {"Numerical", "x*a*exp(b*x", "x*F2"}) {
    Solving fallen({"a*exp(b*x)"});
    fallen.Model->SetDerivative(1, "exp(b*x)");
    fallen.Model->SetDerivative(2, text);
    ASSERT_TRUE(fallen.Start({5, 0.1}).Fit(kNoisy));
    EXPECT_TRUE(fallen.Logged("Using numerical derivatives\r\n")) << text;
  }

  // A model that no block can be computed of has its derivatives point by point, to the same bits.
  for (const bool isTyped : {false, true}) {
    Solving block({"a*exp(b*x)"}), points({"if(x>3,a,a)*exp(b*x)"});
    for (Solving* solving : {&block, &points}) {
      if (isTyped) {
        solving->Model->SetDerivative(1, "exp(b*x)");
        solving->Model->SetDerivative(2, "x*a*exp(b*x)");
      }
      solving->Model->SetConstant(2, 2);  // any number but 0 frees a coefficient, and multiplies its derivative
      ASSERT_TRUE(solving->Start({5, 0.1}).Fit(kNoisy));
    }
    EXPECT_EQ(points.Model->Values(1), block.Model->Values(1)) << isTyped;
    EXPECT_EQ(points.Model->Covariance(1), block.Model->Covariance(1)) << isTyped;
    EXPECT_EQ(points.Model->Covariance(2), block.Model->Covariance(2)) << isTyped;
  }
}

// Of a model that has none the log says what takes their place.
TEST(Fit, TellsWhetherItsDerivativesAreExact) {
  const auto logged = [](const std::string& text, DerivativeKind method, const std::string& typed = "") {
    Solving solving({text});
    if (!typed.empty()) solving.Model->SetDerivative(1, typed);
    solving.Preferences.DerivativeMethod = method;
    solving.Fit(kNoisy);
    const std::string log = solving.From("Determining");
    return log.substr(log.find('\n') + 1, log.find("Obtaining") - log.find('\n') - 1);
  };
  const std::string numerical = "Using numerical derivatives\n";
  EXPECT_EQ(logged("a*exp(x)", DerivativeKind::Exact), "Using exact derivatives\n");
  EXPECT_EQ(logged("a*exp(x)", DerivativeKind::Richardson), numerical);
  EXPECT_EQ(logged("a*exp(x)", DerivativeKind::Central), numerical);
  EXPECT_EQ(logged("a*exp(x)", DerivativeKind::Exact, "exp(x)"), "Using analytical derivatives\n");
  const std::string random = "a*x+rnd(1)";
  EXPECT_EQ(logged(random, DerivativeKind::Central), numerical);
  EXPECT_EQ(logged(random, DerivativeKind::Exact),
            numerical + "The model has no exact derivatives: Richardson's extrapolation takes their place.\n");
}

// The first trial leads beyond a = 3, where the typed derivative has no value. That ends the search, unless derivatives
// are to be numerical: then the trial counts as a worse one.
TEST(Fit, EndsWhereATypedDerivativeFailsAtATrial) {
  for (const DerivativeKind method : {DerivativeKind::Richardson, DerivativeKind::Central, DerivativeKind::Exact}) {
    Solving solving({"a*x"});
    solving.Model->SetDerivative(1, "x*sqr(3-a)/sqr(3-a)");
    solving.Preferences.DerivativeMethod = method;
    EXPECT_EQ(solving.Start({1}).Fit(Points({{1, 2, 4}}, {5, 10, 20})), method == DerivativeKind::Central);
    EXPECT_EQ(solving.From("Error taking").substr(0, solving.From("Error taking").find("Current")),
              method == DerivativeKind::Central
                  ? ""
                  : "Error taking derivatives at X = 1\nSolution failed: Numerical Error\n");
  }
}

// The first trial has a value of 1e160 in its last block, whose square is out of range: that ends the search, though
// the blocks before are bad enough to reject it.
TEST(Fit, EndsWhereTheSumsOfATrialOverflow) {
  std::vector<double> x(600), y(600, 1);
  for (std::size_t i = 0; i < x.size(); ++i) x[i] = static_cast<double>(i) / 600;
  Solving solving({"if(a>2,exp(370*x),1/a)"});
  solving.Model->SetDerivative(1, "0.2+x/90");
  EXPECT_FALSE(solving.Start({1.5}).Fit(Points({std::move(x)}, std::move(y))));
  EXPECT_EQ(solving.From("Solution failed").substr(0, 33), "Solution failed: Numerical Error\n");
}

// Every step leads beyond 2.5 until the damping overflows. The trials that had no value were worse ones, no reason.
TEST(Fit, GivesNoReasonOfARejectedTrial) {
  Solving solving({"a*x*if(a>2.5,ln(0-1),1)"});
  solving.Model->SetDerivative(1, "x");
  solving.Preferences.DivIterations = 400;
  solving.Preferences.MaxIterations = 1000;
  EXPECT_FALSE(solving.Start({2.5}).Fit(Points({{1, 2, 4}}, {5, 10, 20})));
  EXPECT_EQ(
      solving.From("Beginning non-linear iterations"),
      "Beginning non-linear iterations\nSolution failed: Numerical Error\nCurrent parameter values:\na = 2.5\n\n");
  // Nor is the reason of one fit that of the next.
  Solving again({"a*ln(x-3)"});
  EXPECT_FALSE(again.Fit(kNoisy));
  again.Log.clear();
  again.Model->SpecifyICComplete = true;
  EXPECT_FALSE(again.Fit(Points({{1, 2, 3}}, {1.7e308, -1.7e308, 1.7e308})));  // whose deviation overflows
  EXPECT_EQ(again.From("Using current").substr(0, 70),
            "Using current initial estimates\nSolution failed: Numerical Error\nCurre");
}

TEST(Fit, SearchesFromEveryPointOfAGridAndKeepsTheBest) {
  // cos(b*x) has one deep minimum; a start far from it ends in a shallow one.
  std::vector<double> x;
  for (int i = 0; i <= 40; ++i) x.push_back(i * 0.1);
  const SolveData data = Sampled(x, [](double v) { return 2 * std::cos(3 * v) + 0.01 * std::sin(50 * v); });
  Solving solving({"a*cos(b*x)"});
  solving.Model->SetICRange({{1, 1, 1}, {1, 9, 5}});
  solving.Model->SetValue(1, 1);
  solving.Model->SpecifyICComplete = true;
  ASSERT_TRUE(solving.Fit(data)) << solving.Log;
  EXPECT_TRUE(solving.Logged("Solving with 5 initial condition(s)\r\n"));
  EXPECT_TRUE(solving.Logged("IC Set 5: Final residual change = "));
  EXPECT_TRUE(solving.Logged("5 of 5 IC's successful, determining best fit.\r\nSolution Complete\r\n\r\n"));
  EXPECT_EQ(solving.Model->SweepCount, 5);
  EXPECT_NEAR(std::abs(solving.Model->Values(2)), 3, 0.01);
  const auto& rows = solving.Model->GetSweepInfo();
  ASSERT_EQ(rows.size(), 5u);
  for (std::size_t k = 0; k < 5; ++k) {
    EXPECT_EQ(rows[k].Start[1], 1 + 2.0 * static_cast<double>(k));
    EXPECT_GE(rows[k].RSS, solving.Model->RSS);
  }

  // Of two equal ones the first, and a search from one start leaves no sweep behind.
  for (const double start : {1.0, -1.0}) {
    Solving mirrored({"b^2*x"});
    mirrored.Model->SetICRange({{start, -start, 2}});
    mirrored.Model->SpecifyICComplete = true;
    ASSERT_TRUE(mirrored.Fit(kNoisy));
    EXPECT_EQ(mirrored.Model->SweepCount, 2);
    EXPECT_EQ(std::signbit(mirrored.Model->Values(1)), start < 0);
    mirrored.Model->ICCancel();
    ASSERT_TRUE(mirrored.Fit(kNoisy));
    EXPECT_EQ(mirrored.Model->SweepCount, 0);
  }
}

// Two wells at b near 2 and -2. By RSS the former is better, by the weights the latter. The solution of a sweep is that
// of a search from its best start alone, wherever that stands among the starts; the other one is cut off at the limit.
TEST(Fit, KeepsTheWholeSolutionOfTheSetWithTheSmallestRss) {
  const SolveData data = Points({{1, 2, 3, 4, 5}}, {4, 4, 1, 1, -1}, {1, 1, 0.2, 0.2, 2.6});
  const std::pair<double, double> kStarts[] = {{2, -40}, {-40, 2}, {40, -2}};
  for (const auto& [first, second] : kStarts) {
    SCOPED_TRACE(first);
    const auto solve = [&](double from, double to, std::int32_t steps) {
      Solving solving({"if(x<3,b^2,b)"});
      solving.Preferences.MaxIterations = 6;
      solving.Preferences.ResidualTolerance = 0.1;
      solving.Model->SetValue(1, from);
      solving.Model->SetICRange({{from, to, steps}});
      solving.Model->SpecifyICComplete = true;
      EXPECT_TRUE(solving.Fit(data)) << solving.Log;
      return std::move(solving.Model);
    };
    const auto sweep = solve(first, second, 2);
    const std::size_t at = first > second ? 0 : 1;
    const SweepRow &best = sweep->GetSweepInfo()[at], &other = sweep->GetSweepInfo()[1 - at];
    ASSERT_LT(best.RSS, other.RSS);
    ASSERT_GT(best.RssNorm, other.RssNorm);
    const auto single = solve(best.Start[0], best.Start[0], 1);
    const auto all = [](const ModelClass& m) {
      return std::vector<double>{m.Values(1), m.Covariance(1), m.RSS,     m.R2Adjust,
                                 m.R2,        m.StdErr,        m.RssNorm, static_cast<double>(m.Ended)};
    };
    EXPECT_EQ(all(*sweep), all(*single));
    EXPECT_EQ(sweep->Ended, first == 40 ? SearchEnd::IterationLimit : SearchEnd::Converged);
  }
}

// The total sum of squares overflows, so the statistics fail although the search met the data exactly. A set of a sweep
// is then tried again until the user ends it.
TEST(Fit, RejectsWhatHasNoStatistics) {
  const std::string rejected = "Solution rejected based on poor goodness of fit statics.\n\n";
  for (const std::int32_t steps : {1, 2}) {
    Solving solving({"a*x"});
    solving.Model->SetValue(1, 1e160);
    solving.Model->SetICRange({{1e160, 2e160, steps}});
    solving.Model->SpecifyICComplete = true;
    solving.Form.AbortAt = 4;
    EXPECT_FALSE(solving.Fit(Points({{1, 2, 4}}, {1e160, 2e160, 4e160})));
    const std::string again = "IC Set 1: Final residual change = 0\n" + rejected;
    EXPECT_EQ(solving.From(steps == 1 ? "Solution rej" : "IC Set"), steps == 1 ? rejected : again + again + again);
    EXPECT_FALSE(solving.Model->Solved);
  }
}

TEST(Fit, CountsAFailedStartOfASweepAsNone) {
  Solving solving({"a*ln(b*x)"});
  solving.Model->SetICRange({{1, 1, 1}, {-1, 1, 2}});
  solving.Model->SpecifyICComplete = true;
  ASSERT_TRUE(solving.Fit(kNoisy));
  EXPECT_TRUE(solving.Logged("1 of 2 IC's successful"));

  Solving hopeless({"a*ln(b*x)"});
  hopeless.Model->SetICRange({{1, 1, 1}, {-2, -1, 2}});
  hopeless.Model->SpecifyICComplete = true;
  EXPECT_FALSE(hopeless.Fit(kNoisy));
  EXPECT_EQ(hopeless.From("0 of"), "0 of 2 IC's successful, determining best fit.\n");
}

TEST(BuildICSets, RunsTheFullGridWithTheFirstCoefficientFastest) {
  const auto sets = BuildICSets({{0, 2, 3}, {5, 5, 1}, {10, 14, 5}});
  ASSERT_EQ(sets.size(), 15u);
  EXPECT_EQ(sets[0], (std::vector<double>{0, 5, 10}));
  EXPECT_EQ(sets[1], (std::vector<double>{1, 5, 10}));
  EXPECT_EQ(sets[3], (std::vector<double>{0, 5, 11}));
  EXPECT_EQ(sets[14], (std::vector<double>{2, 5, 14}));
}

TEST(SetIC, EstimatesByRules) {
  const SolveData one = Points({{0, 1, 3, 4}}, {4, 6, 10, 20});
  const SolveData two = Points({{0, 1, 3, 4}, {8, 1, 2, 3}}, {4, 6, 10, 20});
  for (const auto& row : TableRows("estimation_rules.txt", 4)) {
    SCOPED_TRACE(row[0]);
    const bool several = row[2] == "2", fails = row[3] == "none";
    Solving solving({several ? "a*x1+a*x2" : "a*x"}, several);
    solving.Model->SetRule(1, row[0]);
    solving.Model->SetRuleConstant(1, row[1]);
    solving.Model->SetICRange({{3, 7, 5}});  // a range of an earlier fit
    EXPECT_EQ(solving.Model->SetIC(several ? two : one), !fails);
    EXPECT_DOUBLE_EQ(solving.Model->Values(1), fails ? 1.0 : Number(row[3]));
    EXPECT_EQ(solving.Model->SpecifyICComplete, !fails);
    EXPECT_EQ(solving.Model->GetICRange()[0], (ICRange{solving.Model->Values(1), solving.Model->Values(1), 1}));
  }
}

// A start that rules were forced to give is one for this fit alone.
TEST(SetIC, TakesTheEstimatesOfABuiltInModelFromItsRulesWhereForced) {
  for (const bool forced : {false, true}) {
    EqClass line{LocaleText{}};
    line.SetID("a*x+b", {"a*x+b"});
    line.UserType = false;
    line.ForceRuleEstimate = forced;
    line.SetRule(1, "* YMax");
    EXPECT_TRUE(line.SetIC(kLine));
    EXPECT_NEAR(line.Values(1), forced ? 13 : 2, 1e-12);
    EXPECT_EQ(line.SpecifyICComplete, !forced);
  }
}

TEST(SetIC, FillsTheStatisticsOfTheInput) {
  Solving solving({"a*x"});
  solving.Model->SetIC(Points({{1, 1, 2, 5}}, {3, 9, 1, 9}));
  const VariableStatistics& x = solving.Model->Statistics.X[0];
  EXPECT_EQ(x.InputXMin, 1);
  EXPECT_EQ(x.InputXMax, 5);
  EXPECT_EQ(x.XMean, 2.25);
  EXPECT_DOUBLE_EQ(x.XStd, std::sqrt(10.75 / 3));
  EXPECT_EQ(x.XAtYMin, 2);
  EXPECT_EQ(x.XAtYMax, 1);  // the first of equal ones
  EXPECT_EQ(x.YAtXMin, 3);
  EXPECT_EQ(x.YAtXMax, 9);
  EXPECT_EQ(solving.Model->Statistics.YMean, 5.5);
  EXPECT_EQ(solving.Model->NumInputX(), 3u);  // equal neighbours count once
  EXPECT_EQ(solving.Model->InputX(3), 5);
}

TEST(SetIC, FallsBackOnOneAtAFault) {
  Solving solving({"a*x+b"});
  solving.Model->SetIC(kLine);
  EXPECT_FALSE(solving.Start({7, 7}).Model->SetIC(Points({{1, 2, 3}}, {1.7e308, -1.7e308, 1.7e308})));
  EXPECT_EQ(solving.Model->Values(1), 1);
  EXPECT_EQ(solving.Model->Statistics.YMean, 0);  // not that of other data
}

// Weighted line through (1,1), (2,3), (3,2), (4,5) with weights w; sums worked out in rational arithmetic.
TEST(GetGoodnessOfFit, WeighsWhatItShould) {
  Solving solving({"a+b*x"});
  solving.Model->SetValue(1, 0);
  solving.Model->SetValue(2, 1);
  const SolveData data = Points({{1, 2, 3, 4}}, {1, 3, 2, 5}, {2, 0.5, 1, 0.5});
  ASSERT_TRUE(solving.Model->GetGoodnessOfFit(data, 2));
  const ModelClass& m = *solving.Model;
  EXPECT_EQ(m.ResSum, 1);
  EXPECT_EQ(m.ResAvg, 0.25);
  EXPECT_EQ(m.RSS, 3);
  EXPECT_EQ(m.RssNorm, 2);
  EXPECT_EQ(m.RST, 7);  // about the weighted mean 2
  EXPECT_EQ(m.DOFError, 2);
  EXPECT_EQ(m.DOFRegression, 1);
  EXPECT_EQ(m.StdErr, 1);
  EXPECT_DOUBLE_EQ(m.R2, 5.0 / 7);
  EXPECT_DOUBLE_EQ(m.R2Adjust, 4.0 / 7);
  EXPECT_DOUBLE_EQ(m.Durbin, (1.0 + 4 + 4) / 3);
}

TEST(GetGoodnessOfFit, ClipsAndSettlesTheBorderCases) {
  Solving solving({"a+0*x"});
  solving.Model->SetValue(1, 2);
  ASSERT_TRUE(solving.Model->GetGoodnessOfFit(Points({{1, 2, 3}}, {2, 2, 2}), 1));
  EXPECT_EQ(solving.Model->R2, 1);  // constant Y, met exactly
  solving.Model->SetValue(1, 3);
  ASSERT_TRUE(solving.Model->GetGoodnessOfFit(Points({{1, 2, 3}}, {2, 2, 2}), 1));
  EXPECT_EQ(solving.Model->R2, 0);
  ASSERT_TRUE(solving.Model->GetGoodnessOfFit(Points({{1, 2, 3}}, {1, 2, 1}), 3));
  EXPECT_EQ(solving.Model->R2, 0);  // negative before
  EXPECT_EQ(solving.Model->R2Adjust, 0);
  EXPECT_EQ(solving.Model->DOFError, 1);
}

// Against closed forms at a point: cos for sin, and the chain of a product.
TEST(Derivatives, AgreeWithCalculus) {
  Solving solving({"a*sin(b*x)+c"});
  ModelClass& m = *solving.Model;
  for (int i = 1; i <= 3; ++i) m.SetValue(i, i == 3 ? 0 : i + 0.5);
  const double x = 0.7, a = 1.5, b = 2.5;
  std::vector<double> dyda(3);
  std::string ErrString;
  const double exact[] = {std::sin(b * x), a * x * std::cos(b * x), 1};
  ASSERT_TRUE(m.Derivative({&x, 1}, dyda, ErrString));
  for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(dyda[i], exact[i], 1e-9) << i;
  ASSERT_TRUE(m.NumericalDerivatives({&x, 1}, dyda, ErrString));
  for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(dyda[i], exact[i], 1e-8) << i;
  EXPECT_NEAR(m.DDX({&x, 1}), a * b * std::cos(b * x), 1e-8);
  m.SetConstant(2, 0);
  ASSERT_TRUE(m.Derivative({&x, 1}, dyda, ErrString));
  EXPECT_EQ(dyda[1], 0);
}

TEST(ModelClass, CopiesToAnIndependentTwin) {
  Solving solving({"F1+b", "a*x"});
  solving.Model->SetRule(1, "* YMax");
  ASSERT_TRUE(solving.Fit(kNoisy));
  const std::unique_ptr<ModelClass> twin = solving.Model->CopyTo();
  EXPECT_TRUE(twin->Solved);
  EXPECT_EQ(twin->RSS, solving.Model->RSS);
  EXPECT_EQ(twin->Values(2), solving.Model->Values(2));
  EXPECT_EQ(twin->Covariance(2), solving.Model->Covariance(2));
  EXPECT_EQ(twin->Rules(1), "* YMax");
  EXPECT_EQ(twin->NumInputX(), 5u);
  solving.Model->Datachange();
  EXPECT_TRUE(twin->Solved);
  EXPECT_FALSE(solving.Model->Solved);
  EXPECT_EQ(solving.Model->Values(1), 1);
  double y = 0, x = 3;
  ASSERT_TRUE(twin->Evaluate({&x, 1}, y));
  EXPECT_EQ(y, twin->Values(1) * 3 + twin->Values(2));
}

// A form that is aborted in the middle of an iteration.
struct ImpatientForm : SolveForm {
  int Pulses = 0, AbortAt;
  explicit ImpatientForm(int abortAt) : AbortAt(abortAt) {}
  void Pulse() override { Aborted |= ++Pulses == AbortAt; }
};

// Four blocks of points, and a search from one start or from three.
struct Impatient : Solving {
  explicit Impatient(bool sweep, int abortAt) : Solving({"a*exp(-b*x)"}), Form(abortAt) {
    Model->SpecifyICComplete = true;
    for (const int coefficient : {1, 2}) Model->SetValue(coefficient, 0.5);
    Model->SetICRange({{0.5, 0.5, 1}, {0.5, 1.5, sweep ? 3 : 1}});
    std::vector<double> x(1000);
    for (std::size_t i = 0; i < x.size(); ++i) x[i] = 0.01 * static_cast<double>(i);
    Settings settings;
    settings.Threads = 1;  // on which the form gets all turns
    Solved = Model->Fit(Sampled(x, [](double v) { return 3 * std::exp(-v) + std::sin(9 * v); }), settings, Log, Form);
    EXPECT_EQ(Model->Solved, Solved);
  }
  ImpatientForm Form;
  bool Solved;
};

TEST(Fit, EndsWithinAnIterationWhereItIsAborted) {
  // In the first pass and in later ones.
  for (const int at : {1, 3, 6}) {
    for (const bool sweep : {false, true}) {
      const Impatient fit(sweep, at);
      EXPECT_FALSE(fit.Solved);
      EXPECT_EQ(fit.Form.Pulses, at);  // nothing was computed after that
      EXPECT_TRUE(fit.Log.ends_with("Beginning non-linear iterations\r\n")) << fit.Log;
    }
  }
}

// Whose turns are the last ones of a fit. An abort there is no fault of the model, and the log says nothing of one.
TEST(Fit, EndsWithinItsStatisticsWhereItIsAborted) {
  for (const bool sweep : {false, true}) {
    const Impatient whole(sweep, 0);
    EXPECT_TRUE(whole.Solved);
    for (const int before : {0, 3}) {
      const Impatient fit(sweep, whole.Form.Pulses - before);
      EXPECT_FALSE(fit.Solved);
      EXPECT_EQ(fit.Form.Pulses, whole.Form.Pulses - before);
      EXPECT_TRUE(whole.Log.starts_with(fit.Log)) << fit.Log;
      EXPECT_TRUE(whole.Log.substr(fit.Log.size()).starts_with("Residual Sum of Squares = ")) << fit.Log;
    }
  }
}

}  // namespace
}  // namespace quorvex
