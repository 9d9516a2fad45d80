#include <gtest/gtest.h>

#include "diagnosis/Bootstrap.h"
#include "diagnosis/SolvedModel.h"
#include "engine/SeededRandom.h"

namespace quorvex {
namespace {

Bootstrapped BootstrapOf(const ModelClass& model, const SolveData& data, const BootstrapPlan& plan,
                         const Settings& settings = {}, const QuantitiesOf& quantities = nullptr) {
  SolveForm form;
  return *BootstrapModel(model, data, plan, settings, form, quantities);
}

// R 4.2: quantile(c(1, 2, 4, 8, 16), c(0, 0.025, 0.16, 0.5, 0.84, 0.95, 1), type = 7)
TEST(Bootstrap, TakesQuantilesOfType7) {
  const std::vector<double> values = {1, 2, 4, 8, 16};
  const double expected[][2] = {{0, 1}, {0.025, 1.1}, {0.16, 1.64}, {0.5, 4}, {0.84, 10.88}, {0.95, 14.4}, {1, 16}};
  for (const auto& [p, quantile] : expected) EXPECT_NEAR(QuantileOf(values, p), quantile, 1e-12) << p;
  EXPECT_EQ(QuantileOf(std::vector<double>{3}, 0.84), 3);
}

// A line whose scatter grows with X, weighted or not.
SolveData Line(bool weighted) {
  std::vector<double> x, y, sig;
  SeededRandom random(7);
  double sum = 0;
  for (int i = 0; i < 60; ++i) {
    x.push_back(0.25 * i);
    const double scatter = 0.5 + 0.05 * x.back();
    y.push_back(3 + 2 * x.back() + scatter * (random.Uniform() + random.Uniform() + random.Uniform() - 1.5) * 2);
    sig.push_back(weighted ? 1 / (scatter * scatter) : 1);
    sum += sig.back();
  }
  for (double& weight : sig) weight *= 60 / sum;
  return Points({x}, y, sig);
}

// What residuals drawn at random must give of a line follows from them: their mean square times the inverse of the
// normal equations. What cases give is that of White's estimate (Econometrica 48, 1980) to the order of 1/n.
TEST(Bootstrap, HasTheErrorsThatTheResamplingMustGive) {
  constexpr int kSamples = 4000;
  for (const bool weighted : {false, true})
    for (const bool cases : {false, true}) {
      const SolveData data = Line(weighted);
      const auto model = SolvedModel("a+b*x", data, {1, 1});
      const Bootstrapped result = BootstrapOf(*model, data, {kSamples, cases, 11});
      ASSERT_EQ(result.Failures, 0);
      double w = 0, wx = 0, wxx = 0, mean = 0, square = 0, s00 = 0, s01 = 0, s11 = 0;
      for (std::size_t i = 0; i < data.N(); ++i) {
        const double g = data.sig[i], x = data.X[0][i], e = data.Y[i] - model->Values(1) - model->Values(2) * x;
        w += g, wx += g * x, wxx += g * x * x;
        mean += std::sqrt(g) * e / 60, square += g * e * e / 60;
        s00 += g * g * e * e, s01 += g * g * e * e * x, s11 += g * g * e * e * x * x;
      }
      const double D = w * wxx - wx * wx, variance = (square - mean * mean) * 60 / 58;
      const double errors[] = {
          std::sqrt(cases ? (wxx * wxx * s00 - 2 * wxx * wx * s01 + wx * wx * s11) / (D * D) : variance * wxx / D),
          std::sqrt(cases ? (wx * wx * s00 - 2 * wx * w * s01 + w * w * s11) / (D * D) : variance * w / D)};
      for (std::size_t i = 0; i < 2; ++i) {
        const BootstrapSpread& spread = result.Coefficients[i];
        const double value = model->Values(static_cast<int>(i) + 1), error = errors[i];
        // Four times the error of so many samples: 1/root(2 n) for the deviation, 2.7 and 4.6 times as much for the
        // quantiles; of cases, also the next order.
        const double noise = 4 / std::sqrt(2.0 * kSamples);
        EXPECT_NEAR(spread.StdErr / error, 1, cases ? 2 * noise : noise) << weighted << cases;
        EXPECT_NEAR(spread.Bias / error, 0, noise * 1.5);
        EXPECT_NEAR((spread.Limits[2].Upper - value) / error, 1.95996, (cases ? 5 : 3) * noise) << weighted << cases;
        EXPECT_NEAR((value - spread.Limits[0].Lower) / error, 0.99446, (cases ? 4 : 2) * noise) << weighted << cases;
      }
    }
}

TEST(Bootstrap, CountsTheSamplesWithoutAnAnswer) {
  // Of cases: with all five drawn from the same X nothing is left to fit, and with few it often fails.
  const SolveData data = Points({{1, 2, 2, 2, 2}}, {3, 4.9, 5.2, 5.1, 4.7});
  const auto model = LinearModel("a*x+b", data);
  const Bootstrapped result = BootstrapOf(*model, data, {300, true, 5});
  // (4/5)^5 of them lack the first point.
  EXPECT_NEAR(result.Failures, 300 * 0.32768, 4 * std::sqrt(300 * 0.32768 * 0.67232));
  EXPECT_EQ(result.Samples.size() + static_cast<std::size_t>(result.Failures), 300u);

  const auto unsolved = model->CopyTo();
  unsolved->Solved = false;
  const Bootstrapped none = BootstrapOf(*unsolved, data, {300, true, 5});
  EXPECT_TRUE(none.Samples.empty() && std::isnan(none.Coefficients[0].Limits[0].Lower));
}

TEST(Bootstrap, HasLimitsOfQuantities) {
  const SolveData data = Puromycin();
  const auto model = SolvedModel("a*x/(b+x)", data, {200, 0.05});
  const auto quantities = [](std::span<const double> a) { return std::vector<double>{2 * a[0], std::sqrt(-1 - a[1])}; };
  const Bootstrapped result = BootstrapOf(*model, data, {200}, {}, quantities);
  ASSERT_EQ(result.Quantities.size(), 2u);
  EXPECT_EQ(result.Quantities[0].Limits[2].Lower, 2 * result.Coefficients[0].Limits[2].Lower);
  EXPECT_TRUE(std::isnan(result.Quantities[1].Limits[2].Lower) && std::isnan(result.Quantities[1].StdErr));
}

TEST(BootstrapParallel, GivesTheSameBitsOnAnyNumberOfThreads) {
  const SolveData data = Puromycin();
  const auto model = SolvedModel("a*x/(b+x)", data, {200, 0.05});
  Settings settings;
  settings.Threads = 1;
  for (const bool cases : {false, true}) {
    const Bootstrapped one = BootstrapOf(*model, data, {400, cases, 3}, settings);
    for (const int threads : {2, 3, 16}) {
      settings.Threads = threads;
      EXPECT_EQ(BootstrapOf(*model, data, {400, cases, 3}, settings).Samples, one.Samples);
    }
    // Of fewer samples, the first ones; of another seed, others.
    auto fewer = BootstrapOf(*model, data, {100, cases, 3}, settings).Samples;
    EXPECT_TRUE(std::equal(fewer.begin(), fewer.end(), one.Samples.begin()));
    EXPECT_NE(BootstrapOf(*model, data, {100, cases, 4}, settings).Samples, fewer);
  }
}

TEST(BootstrapParallel, StopsWhenItsUserAborts) {
  const SolveData data = Puromycin();
  const auto model = SolvedModel("a*x/(b+x)", data, {200, 0.05});
  AbortingForm form(3);
  EXPECT_FALSE(BootstrapModel(*model, data, {1'000'000}, {}, form));
}

}  // namespace
}  // namespace quorvex
