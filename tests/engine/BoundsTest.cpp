// Coefficients between bounds, on every road of the engine.

#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "core/DerivativeKind.h"
#include "core/NumberText.h"
#include "engine/Points.h"
#include "engine/UserModel.h"

namespace quorvex {
namespace {

constexpr double kNone = HUGE_VAL;

struct Bounds {
  double Least = -kNone, Most = kNone;
};

struct Bounded {
  Bounded(const std::string& line, std::vector<double> start, std::vector<Bounds> bounds, std::size_t variables = 1)
      : Model(NewModelFor(variables, LocaleText())) {
    Model->SetID("test", {line});
    EXPECT_TRUE(Model->IsValidEquation()) << line;
    for (std::size_t i = 0; i < bounds.size(); ++i) {
      const int number = static_cast<int>(i) + 1;
      Model->SetRuleConstant(number, GeneralNumber(start[i]));
      Model->SetBounds(number, bounds[i].Least, bounds[i].Most);
    }
  }
  bool Fit(const SolveData& data) {
    SolveForm form;
    return Model->Fit(data, Preferences, Log, form);
  }
  bool Logged(const std::string& text) const { return Log.find(text) != std::string::npos; }

  std::unique_ptr<ModelClass> Model;
  Settings Preferences;
  std::string Log;
};

const SolveData kMisra =
    Points({{77.6, 114.9, 141.1, 190.8, 239.9, 289.0, 332.8, 378.4, 434.8, 477.3, 536.8, 593.1, 689.1, 760.0}},
           {10.07, 14.73, 17.94, 23.93, 29.61, 35.18, 40.02, 44.82, 50.76, 55.05, 61.01, 66.40, 75.47, 81.78});
const SolveData kDecay = Points({{0, 1, 2, 3, 4, 5, 6, 7}}, {5.1, 3.2, 1.9, 1.3, 0.7, 0.55, 0.28, 0.2});
const SolveData kZero = Points({{0, 1, 2, 3}}, {0, 0, 0, 0});

// Half the slope of the sum of squares by each coefficient, by differences that stay inside.
double DescentBy(ModelClass& model, const SolveData& data, int i) {
  const double a = model.Values(i), h = 1e-6 * std::max(std::abs(a), 1e-3);
  const auto sum = [&](double value) {
    model.SetValue(i, value);
    double total = 0;
    for (std::size_t p = 0; p < data.N(); ++p) {
      double y = 0;
      std::array<double, 2> x{data.X[0][p], 0};
      EXPECT_TRUE(model.Evaluate(std::span(x).first(1), y));
      total += (data.Y[p] - y) * (data.Y[p] - y);
    }
    return total;
  };
  const double slope = model.IsAtMinimum(i) ? sum(a + h) - sum(a) : sum(a) - sum(a - h);
  model.SetValue(i, a);
  return -slope / h;
}

struct Case {
  std::string Line;
  const SolveData* Data;
  std::vector<double> Start;
  std::vector<Bounds> Box;
  std::vector<double> Expected;
  double RSS;
};

// By scipy 1.10's least_squares(bounds=), what lies on a bound put there and the others by its method "lm"; the
// straight lines by the normal equations. In the order of the coefficients' names.
const std::vector<Case> kCases = {
    {"(1-x)*10*(b-a^2)+x*(1-a)", &kZero, {-1.2, 1}, {{}, {-kNone, 0.5}}, {0.677060590495, 0.5}, 0.348928763443},
    {"(1-x)*10*(b-a^2)+x*(1-a)", &kZero, {-1.2, 1}, {{-2, 0.3}, {-1, 2}}, {0.3, 0.183333333333}, 1.63333333333},
    {"a*(1-exp(-b*x))", &kMisra, {200, 1e-3}, {{0, 230}, {0, 1}}, {230, 0.000575225772141}, 0.247621969906},
    {"a*(1-exp(-b*x))", &kMisra, {500, 1e-3}, {{0, kNone}, {6e-4, kNone}}, {221.944079019, 6e-4}, 0.608054860712},
    // Starts on a bound, outside of all, and in corners.
    {"a*(1-exp(-b*x))", &kMisra, {230, 0.02}, {{0, 230}, {0, 0.02}}, {230, 0.000575225772141}, 0.247621969906},
    {"a*(1-exp(-b*x))", &kMisra, {0, 1e-3}, {{0, 230}, {0, 1}}, {230, 0.000575225772141}, 0.247621969906},
    {"a*(1-exp(-b*x))", &kMisra, {-1e9, 1e-3}, {{100, 230}, {1e-4, 1}}, {230, 0.000575225772141}, 0.247621969906},
    {"a*exp(-b*x)+c", &kDecay, {1, 1, 1}, {{}, {}, {0.1}}, {5.02389798882, 0.501026284815, 0.1}, 0.0272694986833},
    {"a*exp(-b*x)+c", &kDecay, {0, 0, 0}, {{0, 4.5}, {0}, {0}}, {4.5, 0.518978189518, 0.286282845542}, 0.271198721977},
    // No value, or no slope, beyond the bound or on it.
    {"b+x*ln(a)", &kDecay, {1, 1}, {{0.7}, {}}, {0.7, 2.90211230379}, 6.8249589087},
    {"b+x*ln(a)", &kDecay, {-3, 1}, {{0, 0.7}, {}}, {0.528612304266, 3.885}, 3.512725},
    {"b-x*sqr(a)", &kDecay, {0, 1}, {{0}, {}}, {0.40640625, 3.885}, 3.512725},
    {"b+x*sqr(a)", &kDecay, {1, 1}, {{0}, {}}, {0, 1.65375}, 20.5817875},
    {"b+x*a^2", &kDecay, {0, 1}, {{0}, {}}, {0, 1.65375}, 20.5817875},
    {"a+b*x+c*x^2", &kDecay, {1, 1, 1}, {{0}, {0}, {0}}, {1.65375, 0, 0}, 20.5817875},
    {"a+b*x+c*x^2",
     &kDecay,
     {1, -1, 0.05},
     {{}, {-1.2}, {-kNone, 0.1}},
     {4.37100628931, -1.2, 0.0847282120395},
     0.821623068284},
};

TEST(Bounds, LeadToTheBestPlaceWithin) {
  for (const Case& c : kCases) {
    for (const DerivativeKind derivative :
         {DerivativeKind::Richardson, DerivativeKind::Central, DerivativeKind::Exact}) {
      for (const bool harder : {false, true}) {
        SCOPED_TRACE(c.Line + " from " + GeneralNumber(c.Start[0]) + (harder ? " harder " : " ") +
                     std::to_string(static_cast<int>(derivative)));
        Bounded fit(c.Line, c.Start, c.Box);
        fit.Preferences.DerivativeMethod = derivative;
        fit.Preferences.TryHarder = harder;
        ASSERT_TRUE(fit.Fit(*c.Data)) << fit.Log;
        EXPECT_NEAR(fit.Model->RSS / c.RSS, 1, 1e-7) << fit.Log;
        EXPECT_TRUE(fit.Model->Bounds().Holds(fit.Model->CoefficientValues));
        for (int i = 1; i <= fit.Model->NumDependentVar(); ++i) {
          const double expected = c.Expected[static_cast<std::size_t>(i - 1)];
          EXPECT_NEAR(fit.Model->Values(i), expected, 3e-6 * std::max(std::abs(expected), 1e-3)) << i << fit.Log;
          const std::string side = fit.Model->IsAtMinimum(i) ? "minimum" : "maximum";
          EXPECT_EQ(fit.Logged("Coefficient " + fit.Model->Variables(i) + " lies on its " + side + " of " +
                               GeneralNumber(fit.Model->Values(i)) + "."),
                    fit.Model->IsAtBound(i));
          if (!fit.Model->IsAtBound(i)) continue;
          EXPECT_EQ(fit.Model->Covariance(i), 0);
          const double descent = DescentBy(*fit.Model, *c.Data, i);
          EXPECT_TRUE(fit.Model->IsAtMinimum(i) ? descent < 1e-4 : descent > -1e-4) << descent;
        }
      }
    }
  }
}

// The others have the variances, and the sum of squares, of a fit with what lies on a bound held there.
TEST(Bounds, GiveTheStatisticsOfAFitWithTheCoefficientHeld) {
  Bounded fit("a*exp(-b*x)+c", {1, 1, 1}, {{0, 4.5}, {0}, {0}}), held("a*exp(-b*x)+c", {4.5, 1, 1}, {{}, {}, {}});
  held.Model->SetConstant(1, 0);
  ASSERT_TRUE(fit.Fit(kDecay) && held.Fit(kDecay));
  EXPECT_EQ(fit.Model->Values(1), 4.5);
  for (int i = 1; i <= 3; ++i) EXPECT_NEAR(fit.Model->Covariance(i), held.Model->Covariance(i), 1e-6) << i;
  EXPECT_GT(fit.Model->Covariance(2), 0);
  EXPECT_NEAR(fit.Model->RSS, held.Model->RSS, 1e-12);
  // As many coefficients are adjusted as ever.
  EXPECT_EQ(fit.Model->DOFError, 5);
  EXPECT_EQ(held.Model->DOFError, 6);
}

TEST(Bounds, ThatNothingMeetsChangeNoBit) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.Line);
    const std::vector<Bounds> none(c.Box.size()), wide(c.Box.size(), {-1e300, 1e300});
    Bounded free(c.Line, c.Start, none), bounded(c.Line, c.Start, wide);
    EXPECT_EQ(free.Fit(*c.Data), bounded.Fit(*c.Data));
    EXPECT_EQ(free.Log, bounded.Log);
    EXPECT_EQ(free.Model->CoefficientValues, bounded.Model->CoefficientValues);
    EXPECT_EQ(free.Model->Variances, bounded.Model->Variances);
  }
}

// The same fit in other units of the coefficients.
TEST(Bounds, WorkAtEveryScale) {
  for (const double unit : {1e-9, 1e-3, 1e9}) {
    for (const bool harder : {false, true}) {
      SCOPED_TRACE(unit);
      SolveData data = kDecay;
      for (double& y : data.Y) y *= unit;
      Bounded fit("a*exp(-b*x)+c", {unit, 1, unit}, {{0, 4.5 * unit}, {0}, {0}});
      fit.Preferences.TryHarder = harder;
      ASSERT_TRUE(fit.Fit(data)) << fit.Log;
      EXPECT_EQ(fit.Model->Values(1), 4.5 * unit);
      EXPECT_NEAR(fit.Model->Values(3) / unit, 0.286282845542, 1e-6);
    }
  }
}

TEST(Bounds, HoldACoefficientThatTheyLeaveOneValue) {
  Bounded fit("a+b*x", {1, 1}, {{2, 2}, {}}), all("a+b*x", {1, 1}, {{2, 2}, {0, 0}});
  ASSERT_TRUE(fit.Fit(kDecay) && all.Fit(kDecay));
  EXPECT_EQ(fit.Model->Values(1), 2);
  EXPECT_TRUE(fit.Model->IsHeld(1));
  EXPECT_FALSE(fit.Model->IsAtBound(1));
  EXPECT_EQ(fit.Model->DOFError, 7);
  EXPECT_EQ(all.Model->CoefficientValues, (std::vector<double>{2, 0}));
  EXPECT_TRUE(fit.Logged("Coefficient a starts on its minimum of 2, since 1 lies below."));
  // A start that the user holds outside stays his.
  Bounded held("a+b*x", {1, 1}, {{2, 5}, {}});
  held.Model->SetConstant(1, 0);
  ASSERT_TRUE(held.Fit(kDecay));
  EXPECT_EQ(held.Model->Values(1), 1);
}

// A term that its bound takes out of the model leaves its other coefficients without a meaning.
TEST(Bounds, LetATermGo) {
  Bounded fit("a*exp(-b*x)+c*exp(-d*x)", {1, 1, 1, 0.2}, {{0}, {}, {-kNone, 0}, {}});
  ASSERT_TRUE(fit.Fit(kDecay)) << fit.Log;
  EXPECT_TRUE(fit.Model->Values(3) <= 0);
  Bounded rising("a*exp(-b*x)+c", {-1, 1, 1}, {{-kNone, 0}, {0}, {}});
  ASSERT_TRUE(rising.Fit(kDecay)) << rising.Log;
  EXPECT_EQ(rising.Model->Values(1), 0);
  EXPECT_NEAR(rising.Model->Values(3), 1.65375, 1e-7);
  EXPECT_NEAR(rising.Model->Covariance(3), 1.0 / 8, 1e-9);
}

TEST(Bounds, KeepAllStartsOfASweepInside) {
  Bounded fit("a*exp(-b*x)+c", {1, 1, 1}, {{0, 4.5}, {0}, {0}});
  fit.Model->SpecifyICComplete = true;
  fit.Model->ICRanges = {{-5, 10, 4}, {0, 2, 2}, {1, 1, 1}};
  fit.Model->CoefficientValues = {1, 1, 1};
  ASSERT_TRUE(fit.Fit(kDecay)) << fit.Log;
  EXPECT_EQ(fit.Model->Values(1), 4.5);
  for (const SweepRow& row : fit.Model->SweepRows) {
    EXPECT_TRUE(fit.Model->Bounds().Holds(row.Start));
    EXPECT_TRUE(fit.Model->Bounds().Holds(row.Final));
  }
  EXPECT_TRUE(fit.Logged("Coefficient a lies on its maximum of 4.5.\r\nSolution Complete"));
}

TEST(Bounds, AreRefusedWhereTheyAreNone) {
  for (const auto& [bounds, fault] : {std::pair<Bounds, std::string>{{2, 1},
                                                                     "The minimum of coefficient a, 2, is above "
                                                                     "its maximum, 1."},
                                      {{NAN, 1}, "The minimum of coefficient a is no number."},
                                      {{0, NAN}, "The maximum of coefficient a is no number."},
                                      {{kNone, kNone}, "The minimum of coefficient a is no number."}}) {
    for (const bool harder : {false, true}) {
      Bounded fit("a+b*x", {1, 1}, {bounds, {}});
      fit.Preferences.TryHarder = harder;
      // Also where an earlier solve has left its input.
      fit.Model->SetBounds(1, -kNone, kNone);
      ASSERT_TRUE(fit.Fit(kDecay));
      fit.Model->SetBounds(1, bounds.Least, bounds.Most);
      EXPECT_FALSE(fit.Fit(kDecay));
      EXPECT_EQ(fit.Model->Failure, fault);
      EXPECT_TRUE(fit.Logged(fault + "\r\nSolution failed\r\n\r\n")) << fit.Log;
    }
  }
}

struct LinearCase {
  std::string ID;
  std::vector<double> X, Y;
  std::vector<Bounds> Box;
  std::vector<double> Expected;  // empty where there is none
};

// By hand: with what lies on its bound taken off Y, the normal equations of the others.
TEST(Bounds, AreKeptByTheLinearSolver) {
  const std::vector<LinearCase> cases = {
      {"a*x+b", {1, 2, 3, 4}, {3, 5, 7, 9}, {{0, 1.5}, {}}, {1.5, 2.25}},
      {"a*x+b", {1, 2, 3, 4}, {3, 5, 7, 9}, {{}, {3, kNone}}, {40.0 / 30, 3}},
      {"a*x+b", {1, 2, 3, 4}, {3, 5, 7, 9}, {{0, 1}, {0, 1}}, {1, 1}},
      {"a*x+b", {1, 2, 3, 4}, {-3, -5, -7, -9}, {{0}, {0}}, {0, 0}},
      {"a*x+b", {1e9, 2e9, 3e9, 4e9}, {3, 5, 7, 9}, {{0, 1.5e-9}, {}}, {1.5e-9, 2.25}},
      {"a*x+b", {1, 2, 3, 4}, {3, 5, 7, 9}, {{2.5, 2.5}, {}}, {2.5, -0.25}},
  };
  for (const LinearCase& c : cases) {
    SCOPED_TRACE(c.ID);
    const std::unique_ptr<ModelClass> model = NewModelFor(1, LocaleText());
    model->SetID(c.ID, {c.ID});
    model->UserType = false;
    model->SolveType = 1;
    for (std::size_t i = 0; i < c.Box.size(); ++i)
      model->SetBounds(static_cast<int>(i) + 1, c.Box[i].Least, c.Box[i].Most);
    std::string log;
    SolveForm form;
    ASSERT_TRUE(model->Fit(Points({c.X}, c.Y), {}, log, form)) << log;
    for (std::size_t i = 0; i < c.Expected.size(); ++i) {
      EXPECT_NEAR(model->CoefficientValues[i], c.Expected[i], 1e-12 * std::max(1.0, std::abs(c.Expected[i])));
      const int number = static_cast<int>(i) + 1;
      EXPECT_EQ(model->Covariance(number) == 0, model->IsAtBound(number) || model->IsHeld(number));
    }
  }
}

// By the linear form, which has the logarithm of a.
TEST(Bounds, AreKeptByTheLinearFormOfACurve) {
  const auto solve = [](Bounds first, std::string& log) {
    std::unique_ptr<ModelClass> model = NewModelFor(1, LocaleText());
    model->SetID("a*exp(b*x)", {"a*exp(b*x)"});
    model->UserType = false;
    model->SolveType = 1;
    model->SetBounds(1, first.Least, first.Most);
    SolveForm form;
    model->Fit(kDecay, {}, log, form);
    return model;
  };
  std::string log;
  const auto model = solve({0, 4}, log);
  ASSERT_TRUE(model->Solved) << log;
  EXPECT_EQ(model->Values(1), 4);
  double xy = 0, xx = 0;
  for (std::size_t i = 0; i < kDecay.N(); ++i) {
    xy += kDecay.X[0][i] * (std::log(kDecay.Y[i]) - std::log(4));
    xx += kDecay.X[0][i] * kDecay.X[0][i];
  }
  EXPECT_NEAR(model->Values(2), xy / xx, 1e-13);
  EXPECT_FALSE(solve({-5, -1}, log)->Solved);
  EXPECT_NE(log.find("Coefficient a is positive in the linear solver, and its maximum of -1 is not."),
            std::string::npos)
      << log;
}

}  // namespace
}  // namespace quorvex
