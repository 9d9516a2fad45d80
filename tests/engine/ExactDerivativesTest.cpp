#include <gtest/gtest.h>

#include <bit>

#include "core/DerivativeKind.h"
#include "core/NumberText.h"
#include "engine/EqClass.h"
#include "engine/Points.h"
#include "engine/UserModel.h"

namespace quorvex {
namespace {

struct Fitted {
  bool Solved;
  std::string Log;
  std::vector<double> Values;
};

Fitted Fit(const std::string& text, const std::vector<double>& starts, const SolveData& data, DerivativeKind method) {
  const std::unique_ptr<ModelClass> model = NewModelFor(1, LocaleText());
  model->SetID(text, {text});
  EXPECT_TRUE(model->IsValidEquation()) << text;
  for (std::size_t i = 0; i < starts.size(); ++i)
    model->SetRuleConstant(static_cast<int>(i) + 1, GeneralNumber(starts[i]));
  Settings settings;
  settings.DerivativeMethod = method;
  SolveForm form;
  Fitted fitted;
  fitted.Solved = model->Fit(data, settings, fitted.Log, form);
  for (int i = 1; i <= model->NumDependentVar(); ++i) fitted.Values.push_back(model->Values(i));
  return fitted;
}

SolveData Sampled(double (*f)(double)) {
  std::vector<double> x, y;
  for (int i = 1; i <= 40; ++i) {
    x.push_back(0.25 * i);
    y.push_back(f(x.back()) + 0.01 * ((i * 7919) % 13 - 6));
  }
  return Points({x}, y);
}

// Models that the sweep has no rules for are fitted as without it, in every bit, and the log tells of it.
TEST(ExactDerivatives, GiveWayToRichardsonsWhereThereAreNone) {
  std::string longModel = "a*x+b";
  for (int i = 0; i < 260; ++i) longModel += "+0*x";
  for (const std::string& text :
       {std::string("a*jnu(b,x)"), std::string("a*knu(b,x)"), std::string("a*exp(-b*x)+0*rnd(1)"), longModel}) {
    const SolveData data = Sampled([](double x) { return 2 * std::exp(-0.3 * x) + 0.4; });
    const Fitted numerical = Fit(text, {1, 1.5}, data, DerivativeKind::Richardson);
    Fitted exact = Fit(text, {1, 1.5}, data, DerivativeKind::Exact);
    ASSERT_TRUE(numerical.Solved) << text;
    const std::string said = "The model has no exact derivatives: Richardson's extrapolation takes their place.\r\n";
    ASSERT_NE(exact.Log.find(said), std::string::npos) << text;
    exact.Log.erase(exact.Log.find(said), said.size());
    EXPECT_EQ(numerical.Log, exact.Log) << text;
    for (std::size_t i = 0; i < 2; ++i)
      EXPECT_EQ(std::bit_cast<std::uint64_t>(numerical.Values[i]), std::bit_cast<std::uint64_t>(exact.Values[i]))
          << text;
  }
}

// Special functions that are good to nine digits are met by derivatives that are good to all, and the fits agree.
TEST(ExactDerivatives, LeadToTheSameAnswers) {
  const struct {
    const char* Text;
    std::vector<double> Starts;
    double (*F)(double);
  } cases[] = {
      {"a*exp(-b*x)+c", {1, 1, 0}, [](double x) { return 2 * std::exp(-0.3 * x) + 0.4; }},
      {"a*j0(b*x)+c", {1, 1, 0.1}, [](double x) { return 2 * std::cyl_bessel_j(0, 1.2 * x) + 0.4; }},
      {"a*igamma(b,x)", {1, 1}, [](double x) { return 2 - 2 * std::exp(-x) * (1 + x); }},
      {"a*student(x,b)", {1, 3}, [](double x) { return 4 / 3.14159265358979 * std::atan(x); }},
      {"a*fdist(b,c,x)", {1, 2, 3}, [](double x) { return 2 / std::pow(1 + x / 2, 2); }},
      {"a*erf((x-b)/c)", {1, 3, 1}, [](double x) { return 2 * std::erf((x - 4) / 1.5); }},
      {"a*airya(b-x)", {1, 0.1}, [](double x) { return std::sin(x) / 2; }},
      {"a*sin(b*x+c)*htan(d*x)", {1, 1, 0, 1}, [](double x) { return std::sin(x + 0.3) * std::tanh(x / 2); }},
  };
  for (const auto& c : cases) {
    const SolveData data = Sampled(c.F);
    const Fitted numerical = Fit(c.Text, c.Starts, data, DerivativeKind::Richardson);
    const Fitted exact = Fit(c.Text, c.Starts, data, DerivativeKind::Exact);
    ASSERT_TRUE(numerical.Solved && exact.Solved) << c.Text;
    for (std::size_t i = 0; i < c.Starts.size(); ++i)
      EXPECT_NEAR(numerical.Values[i], exact.Values[i], 1e-5 * (std::abs(exact.Values[i]) + 0.1)) << c.Text;
  }
}

}  // namespace
}  // namespace quorvex
