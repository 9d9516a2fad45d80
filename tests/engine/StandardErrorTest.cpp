// Standard errors of polynomials in calendar years, by every road to a fit: the terms hardly differ, and the normal
// equations have lost all digits by the third power.

#include <gtest/gtest.h>

#include <random>

#include "core/DerivativeKind.h"
#include "core/NumberText.h"
#include "engine/ReferenceSolution.h"
#include "engine/UserModel.h"

namespace quorvex {
namespace {

// One reading a month from 1990 to 2020, of two variables.
SolveData Readings(bool weighted) {
  SolveData data;
  data.X.resize(2);
  std::mt19937 random(3);
  const auto noise = [&random] { return static_cast<double>(random()) / 2147483648.0 - 1; };
  double sum = 0;
  for (int month = 0; month <= 360; ++month) {
    const double t = month / 180.0 - 1;
    data.X[0].push_back(1990 + month / 12.0);
    data.X[1].push_back(std::cos(month));
    data.Y.push_back(350 + 30 * t + 4 * t * t - 2 * t * t * t + 0.5 * noise());
    data.sig.push_back(weighted ? 1.2 + noise() : 1);
    sum += data.sig.back();
  }
  for (double& weight : data.sig) weight *= 361 / sum;
  data.SD.assign(data.Y.size(), 1.0);
  return data;
}

enum class Road { Linear, BuiltIn, Richardson, Central, TypedDerivatives };

struct Case {
  const char* Formula;  // of falling powers of the first variable, then of the second
  int Degree;
  Road By;
  bool Weighted;
  double Digits;
  int Held = 0;        // a coefficient held at 0
  bool Swept = false;  // from two starts
};

const char* const kCubic = "a*x^3+b*x^2+c*x+d";
const char* const kQuartic = "a*x^4+b*x^3+c*x^2+d*x+e";
const Case kCases[] = {
    {kCubic, 3, Road::Linear, false, 6},
    {kCubic, 3, Road::Linear, true, 6},
    {kCubic, 3, Road::BuiltIn, true, 6},
    {kCubic, 3, Road::Richardson, false, 6},
    {kCubic, 3, Road::Richardson, true, 6},
    {kCubic, 3, Road::Central, true, 6},
    {kCubic, 3, Road::TypedDerivatives, true, 6},
    {kCubic, 3, Road::Richardson, true, 6, 3},
    {kCubic, 3, Road::Richardson, true, 6, 0, true},
    {"d-(-c-(b+a*x)*x)*x/2*2", 3, Road::Richardson, true, 6},
    {"a*x1^3+b*x1^2+c*x1+d+e*x2", 3, Road::Richardson, true, 6},
    {kQuartic, 4, Road::Linear, true, 5},  // a condition of 7e10
    {kQuartic, 4, Road::BuiltIn, true, 5},
};

TEST(StandardError, KeepsSixDigitsInCalendarYears) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(std::string(c.Formula) + " " + std::to_string(static_cast<int>(c.By)));
    SolveData data = Readings(c.Weighted);
    const bool several = std::string_view(c.Formula).find("x2") != std::string_view::npos;
    if (!several) data.X.resize(1);
    const std::unique_ptr<ModelClass> model = NewModelFor(data.X.size(), LocaleText());
    model->SetID(c.Formula, {c.Formula});
    ASSERT_TRUE(model->IsValidEquation());
    if (c.By == Road::Linear || c.By == Road::BuiltIn) model->UserType = false;
    if (c.By == Road::Linear) model->SolveType = 1;
    const int n = model->NumDependentVar();
    const auto powerOf = [&](int i) {
      return c.Degree - (model->Variables(i)[0] - 'a');
    };  // -1 for the second variable
    if (c.By == Road::TypedDerivatives)
      for (int i = 1; i <= n; ++i) model->SetDerivative(i, "x^" + std::to_string(powerOf(i)));
    if (c.Held != 0) {
      model->SetConstant(c.Held, 0);
      model->SetRuleConstant(c.Held, "0");
    }
    if (c.Swept) {
      model->SetICRange({{1, 1, 1}, {1, 2, 2}, {1, 1, 1}, {1, 1, 1}});
      model->SpecifyICComplete = true;
    }
    Settings settings;
    settings.DerivativeMethod = c.By == Road::Central ? DerivativeKind::Central : DerivativeKind::Richardson;
    SolveForm form;
    std::string log;
    ASSERT_TRUE(model->Fit(data, settings, log, form)) << log;
    EXPECT_EQ(model->SweepCount, c.Swept ? 2 : 0);

    std::vector<std::vector<long double>> columns;
    std::vector<long double> b;
    std::vector<int> free;
    for (int i = 1; i <= n; ++i) {
      if (i == c.Held) continue;
      free.push_back(i);
      columns.emplace_back();
      for (std::size_t k = 0; k < data.N(); ++k) {
        const long double term =
            powerOf(i) < 0 ? data.X[1][k] : std::pow(static_cast<long double>(data.X[0][k]), powerOf(i));
        columns.back().push_back(std::sqrt(static_cast<long double>(data.sig[k])) * term);
      }
    }
    for (std::size_t k = 0; k < data.N(); ++k)
      b.push_back(std::sqrt(static_cast<long double>(data.sig[k])) * data.Y[k]);
    const ReferenceSolution<long double> reference(columns, b);
    const long double variance = reference.RSS / static_cast<long double>(data.N() - free.size());
    for (std::size_t j = 0; j < free.size(); ++j)
      EXPECT_GE(DigitsOf(model->StandardError(free[j]), std::sqrt(variance * reference.variances[j])), c.Digits)
          << "coefficient " << free[j] << ", condition " << reference.Condition;
    if (c.Held != 0) {
      EXPECT_EQ(model->StandardError(c.Held), 0);
    }
  }
}

}  // namespace
}  // namespace quorvex
