#include <gtest/gtest.h>

#include <chrono>
#include <limits>

#include "diagnosis/ProfileLikelihood.h"
#include "diagnosis/SolvedModel.h"
#include "functions/InverseNormalDistribution.h"
#include "functions/InverseTDistribution.h"

namespace quorvex {
namespace {

constexpr double kNone = std::numeric_limits<double>::infinity();

ProfileScale ScatterOf(const ModelClass& model) {
  return {model.StdErr * model.StdErr, ConfidenceQuantiles(model.DOFError)};
}

ProfiledModel ProfileOf(const ModelClass& model, const SolveData& data, const Settings& settings = {}) {
  SolveForm form;
  return *ProfileCoefficients(model, data, ScatterOf(model), settings, form);
}

// Like the density of an immunoassay's standard curve (R's data set DNase, run 1: M. Davidian & D. M. Giltinan,
// Nonlinear Models for Repeated Measurement Data, Chapman & Hall 1995, 5.2.4).
SolveData Assay() {
  std::vector<double> dose;
  for (int i = 0; i < 16; ++i) dose.push_back(i < 2 ? 0.04882812 : 0.1953125 * std::ldexp(1, i / 2 - 1));
  return Points({dose}, {0.017, 0.018, 0.121, 0.124, 0.206, 0.215, 0.377, 0.374, 0.614, 0.609, 1.019, 1.001, 1.334,
                         1.364, 1.73, 1.71});
}

// Heights of a pine against its age (R's data set Loblolly, seed 301: F. H. Kung, Proc. Am. Statist. Assoc., 1986).
SolveData Pine() { return Points({{3, 5, 10, 15, 20, 25}}, {4.51, 10.89, 28.72, 41.74, 52.7, 60.92}); }

SolveData ByRate() {
  SolveData data = Puromycin();
  double sum = 0;
  for (std::size_t i = 0; i < data.N(); ++i) sum += data.sig[i] = 1 / data.Y[i];
  for (double& weight : data.sig) weight *= static_cast<double>(data.N()) / sum;
  return data;
}

// R 4.2: the roots by uniroot (tol 1e-13) of root((rss(b) - rss)/s^2) - t, each rss(b) refitted to a relative change of
// 1e-13; s^2 = rss/df, or 100 for errors known to be 10; t to four decimals as the reports have it, else by qnorm.
// confint(nls(...)) agrees to the 5 digits that its splines have.
struct ByR {
  const char* Formula;
  SolveData Data;
  std::vector<double> Start;
  double Deviation;  // known; 0: from the scatter
  std::vector<LimitsByLevel> Limits;
};
const ByR kByR[] = {
    {"a*x/(b+x)",
     Puromycin(),
     {200, 0.05},
     0,
     {{{{205.32118, 220.3149638}, {200.0883498, 226.0871934}, {197.3021917, 229.2887534}, {191.1222632, 236.7351818}}},
      {{{0.05551431485, 0.07378808554},
        {0.04981566827, 0.08161764351},
        {0.04692060649, 0.08615647905},
        {0.04083776727, 0.09726529876}}}}},
    {"a*x/(b+x)",
     Puromycin(),
     {200, 0.05},
     10,
     {{{{206.2696949, 219.300706}, {202.1774713, 223.7460518}, {200.2226911, 225.9351381}, {196.4528154, 230.2833919}}},
      {{{0.05658419748, 0.07245875886},
        {0.05204960697, 0.07838759448},
        {0.04995768738, 0.0814055812},
        {0.04605703615, 0.08759541533}}}}},
    {"a*x/(b+x)",
     ByRate(),
     {200, 0.05},
     0,
     {{{{200.0831975, 219.5178644},
        {193.3562798, 227.0626574},
        {189.7863406, 231.2623347},
        {181.8967531, 241.0713449}}},
      {{{0.05202390325, 0.07052203726},
        {0.04639451603, 0.07864438318},
        {0.04356094965, 0.08340391364},
        {0.03766531774, 0.09520442661}}}}},
    {"a/(1+exp((b-ln(x))/c))",
     Assay(),
     {2.3, 1.4, 1},
     0,
     {{{{2.268282606, 2.431563351},
        {2.218401369, 2.499983825},
        {2.193501989, 2.538788499},
        {2.142223163, 2.630918087}}},
      {{{1.402076022, 1.571835339}, {1.348486877, 1.64046571}, {1.321425391, 1.678749168}, {1.265028578, 1.767822246}}},
      {{{1.008584526, 1.075771718},
        {0.9859851871, 1.101173091},
        {0.9743040722, 1.114934225},
        {0.949364054, 1.145880154}}}}},
    {"a+(b-a)*exp(-c*x)",
     Pine(),
     {100, -8, 0.04},
     0,
     {{{{89.49972457, 103.3587633},
        {84.53141183, 113.0073473},
        {81.49102619, 121.6992353},
        {73.73198778, 169.8020425}}},
      {{{-10.33575478, -7.84924002},
        {-11.59661977, -6.671785362},
        {-12.51266776, -5.848749472},
        {-15.56181552, -3.28953944}}},
      {{{0.03919464532, 0.04950117839},
        {0.03422982763, 0.05464558559},
        {0.03072349604, 0.05835226208},
        {0.01960815768, 0.0705242986}}}}},
    {"a*(1-exp(-b*x))",
     OxygenDemand(),
     {19, 0.5},
     0,
     {{{{16.72613937, 22.83821211}, {15.03149716, 29.24321795}, {14.04943065, 38.45523932}, {11.53076059, kNone}}},
      {{{0.3351600076, 0.822929934},
        {0.2038743972, 1.263714045},
        {0.1314025634, 1.808115372},
        {-0.04449441155, kNone}}}}}};

TEST(ProfileLikelihood, AgreesWithRefitsByR) {
  for (const ByR& c : kByR) {
    const auto model = SolvedModel(c.Formula, c.Data, c.Start);
    ProfileScale scale = ScatterOf(*model);
    if (c.Deviation > 0) {
      scale.Variance = c.Deviation * c.Deviation;
      scale.Quantiles = {InverseNormalDistribution(0.84), InverseNormalDistribution(0.95),
                         InverseNormalDistribution(0.975), InverseNormalDistribution(0.995)};
    }
    SolveForm form;
    const ProfiledModel profiled = *ProfileCoefficients(*model, c.Data, scale, {}, form);
    ASSERT_EQ(profiled.Coefficients.size(), c.Limits.size()) << profiled.Refusal;
    for (std::size_t i = 0; i < c.Limits.size(); ++i)
      for (std::size_t level = 0; level < kLimitLevels.size(); ++level) {
        const CoefficientProfile& profile = profiled.Coefficients[i];
        const Interval limits = profile.Limits[level], expected = c.Limits[i][level];
        // The ten digits of the source.
        EXPECT_NEAR(limits.Lower, expected.Lower, 1e-9 * std::abs(expected.Lower)) << c.Formula << profile.Name;
        if (expected.Upper == kNone)
          EXPECT_EQ(limits.Upper, kNone);
        else
          EXPECT_NEAR(limits.Upper, expected.Upper, 1e-9 * std::abs(expected.Upper)) << c.Formula << profile.Name;
      }
  }
}

TEST(ProfileLikelihood, SaysWhyThereIsNoLimit) {
  const SolveData demand = OxygenDemand();
  const auto model = SolvedModel("a*(1-exp(-b*x))", demand, {19, 0.5});
  EXPECT_EQ(ProfileOf(*model, demand).Coefficients[1].Curve.AboveEnds,
            "The merit function doesn't rise enough however far b goes: there is no upper limit at 99 %.");
  model->Coefficients[1].Maximum = 1;
  const CoefficientProfile bounded = ProfileOf(*model, demand).Coefficients[1];
  EXPECT_EQ(
      bounded.Curve.AboveEnds,
      "b meets its bound of 1 before the merit function has risen enough: it is the upper limit at 90 % and above.");
  EXPECT_NEAR(bounded.Limits[0].Upper, 0.822929934, 1e-9);
  EXPECT_EQ(bounded.Limits[1].Upper, 1);

  const auto edge = SolvedModel("b*(x-a)^0.5", demand, {0.5, 8});
  const CoefficientProfile ends = ProfileOf(*edge, demand).Coefficients[0];
  EXPECT_EQ(ends.Curve.AboveEnds,
            "The model has no value at some point with a above 1: it is the upper limit at 99 %.");
  EXPECT_NEAR(ends.Limits[3].Upper, 1, 1e-8);

  // Only the product is determined; each of the two may be anything.
  auto product = SolvedModel("a*x", demand, {1})->CopyTo();
  const auto twice = CompileModel("twice", {"a*b*x"}, 1, LocaleText());
  twice->CoefficientValues = {product->Values(1), 1};
  twice->Variances = {NAN, 0};
  twice->Solved = true;
  twice->Statistics = product->Statistics;
  const ProfiledModel open = *[&] {
    SolveForm form;
    return ProfileCoefficients(*twice, demand, {product->StdErr * product->StdErr, ConfidenceQuantiles(4)}, {}, form);
  }();
  ASSERT_EQ(open.Coefficients.size(), 2u) << open.Refusal;
  for (const CoefficientProfile& profile : open.Coefficients) EXPECT_EQ(profile.Limits[0].Upper, kNone) << profile.Name;
}

// value -+ se t, by the parabola, where it is one: on both roads, weighted, of one variable and two, in any unit.
TEST(ProfileLikelihood, IsSymmetricWhereTheModelIsLinear) {
  for (const double unit : {1e-9, 1.0, 1e9})
    for (const bool linear : {false, true})
      for (const bool two : {false, true}) {
        SolveData data = Points({{1, 2, 3, 4, 5, 6, 8, 9}}, {3.1, 4.7, 7.4, 8.6, 11.2, 13.3, 16.5, 19.3},
                                {0.5, 1, 1.5, 0.7, 1.3, 1, 1.2, 0.8});
        for (double& y : data.Y) y *= unit;
        if (two) data.X.push_back({4, 1, 7, 3, 8, 2, 2, 9});
        const char* const formula = two ? "a+b*x1+c*x2" : linear ? "a*x+b" : "a+b*x";
        const auto model =
            linear ? LinearModel(formula, data) : SolvedModel(formula, data, std::vector<double>(two ? 3 : 2, 1));
        const ProfiledModel profiled = ProfileOf(*model, data);
        ASSERT_EQ(profiled.Coefficients.size(), two ? 3u : 2u) << profiled.Refusal;
        const auto quantiles = ConfidenceQuantiles(model->DOFError);
        for (const CoefficientProfile& profile : profiled.Coefficients)
          for (std::size_t level = 0; level < kLimitLevels.size(); ++level) {
            const int i = profile.Coefficient;
            const double half = model->StandardError(i) * quantiles[level];
            EXPECT_NEAR((profile.Limits[level].Upper - model->Values(i)) / half, 1, 1e-8) << formula << unit;
            EXPECT_NEAR((model->Values(i) - profile.Limits[level].Lower) / half, 1, 1e-8) << formula << unit;
          }
      }
}

// a stays at 19 at most: for each b the best a has a closed form, and the rise with it.
TEST(ProfileLikelihood, KeepsTheOthersBetweenTheirBounds) {
  const SolveData data = OxygenDemand();
  const auto rss = [&data](double b) {
    double fy = 0, ff = 0, sum = 0;
    const auto f = [b](double x) { return 1 - std::exp(-b * x); };
    for (std::size_t i = 0; i < data.N(); ++i) fy += f(data.X[0][i]) * data.Y[i], ff += std::pow(f(data.X[0][i]), 2);
    const double a = std::min(fy / ff, 19.0);
    for (std::size_t i = 0; i < data.N(); ++i) sum += std::pow(data.Y[i] - a * f(data.X[0][i]), 2);
    return sum;
  };
  auto model = CompileModel("bounded", {"a*(1-exp(-b*x))"}, 1, LocaleText());
  model->Coefficients[0].Maximum = 19;
  model->CoefficientValues = {15, 0.5};
  model->ICRanges = {{15, 15, 1}, {0.5, 0.5, 1}};
  model->SpecifyICComplete = true;
  SolveForm form;
  std::string log;
  ASSERT_TRUE(model->Fit(data, {}, log, form));
  ASSERT_TRUE(model->IsAtMaximum(1));
  const ProfiledModel profiled = ProfileOf(*model, data);
  ASSERT_EQ(profiled.Coefficients.size(), 2u) << profiled.Refusal;
  const auto quantiles = ConfidenceQuantiles(model->DOFError);
  const CoefficientProfile& b = profiled.Coefficients[1];
  for (std::size_t level = 0; level < 3; ++level)
    for (const double end : {b.Limits[level].Lower, b.Limits[level].Upper})
      EXPECT_NEAR((rss(end) - rss(b.Value)) / std::pow(model->StdErr * quantiles[level], 2), 1, 1e-6) << end;
  EXPECT_EQ(profiled.Coefficients[0].Limits[0].Upper, 19);
}

// The units of X and Y only change the numbers; what is held stays held.
TEST(ProfileLikelihood, FollowsTheUnits) {
  for (const double scale : {1e-9, 1e9}) {
    SolveData data = Puromycin(scale);
    for (double& x : data.X[0]) x *= scale * scale;
    const auto model = SolvedModel("a*x/(b+x)", data, {200 * scale, 0.05 * scale * scale});
    const ProfiledModel profiled = ProfileOf(*model, data);
    EXPECT_NEAR(profiled.Coefficients[0].Limits[3].Upper / scale, 236.7351818, 1e-6);
    EXPECT_NEAR(profiled.Coefficients[1].Limits[3].Lower / (scale * scale), 0.04083776727, 1e-9);
  }
}

TEST(ProfileLikelihood, RefusesWhereItWouldMeanNothing) {
  SolveForm form;
  const SolveData wave =
      Points({{0, 0.7, 1.9, 2.4, 3.1, 4.2, 4.9, 6.3, 7.4, 8.8}}, {0.1, 2.1, 2.7, 2.2, 0.3, -2.5, -2.8, 0.2, 2.6, 1.6});
  // Another frequency is a minimum, too, and far from the best one. Its own profile leads there.
  EXPECT_EQ(ProfileOf(*SolvedModel("a*sin(b*x)", wave, {1, 1.7}), wave).Refusal,
            "The solution is not the best: its merit function of 37.22761 falls to 0.1807986 at a = 2.934476, "
            "b = 1.002441.");
  EXPECT_EQ(ProfileOf(*SolvedModel("a*sin(b*x)", wave, {3, 1}), wave).Refusal, "");

  const SolveData data = Puromycin();
  const auto robust = SolvedModel("a*x/(b+x)", data, {200, 0.05});
  robust->Loss = LossKind::Huber;
  EXPECT_EQ(ProfileOf(*robust, data).Refusal,
            "Profile limits are for least squares alone: with Loss = Huber there are none.");
  const auto held = SolvedModel("a*x/(b+x)", data, {200, 0.05});
  held->SetConstant(1, 0);
  EXPECT_EQ(ProfileOf(*held, data).Coefficients.size(), 1u);
  held->SetConstant(2, 0);
  EXPECT_EQ(ProfileOf(*held, data).Refusal, "No coefficient is free.");
  held->Solved = false;
  EXPECT_EQ(ProfileOf(*held, data).Refusal, "The model is not solved.");
  EXPECT_EQ(
      ProfileOf(*LinearModel("a*exp(b*x)", data), data).Refusal,
      "The linear solver has fitted a transform of Y: the merit function of Y itself is not least at its solution.");
  const SolveData exact = Points({{1, 2, 3, 4}}, {2, 4, 6, 8});
  EXPECT_EQ(ProfileOf(*SolvedModel("a*x", exact, {1}), exact).Refusal,
            "The points don't scatter about the model, so that nothing could limit its coefficients.");
}

TEST(ProfileLikelihoodParallel, GivesTheSameBitsOnAnyNumberOfThreads) {
  const SolveData data = Assay();
  const auto model = SolvedModel("a/(1+exp((b-ln(x))/c))", data, {2.3, 1.4, 1});
  Settings settings;
  settings.Threads = 1;
  const ProfiledModel one = ProfileOf(*model, data, settings);
  for (const int threads : {2, 3, 16}) {
    settings.Threads = threads;
    const ProfiledModel many = ProfileOf(*model, data, settings);
    for (std::size_t i = 0; i < one.Coefficients.size(); ++i) {
      const auto& p = one.Coefficients[i].Curve.Points;
      const auto& q = many.Coefficients[i].Curve.Points;
      ASSERT_EQ(p.size(), q.size());
      for (std::size_t j = 0; j < p.size(); ++j) EXPECT_TRUE(p[j].Value == q[j].Value && p[j].Tau == q[j].Tau);
    }
  }
}

TEST(ProfileLikelihoodParallel, StopsWhenItsUserAborts) {
  std::vector<double> x, y;
  for (int i = 0; i < 60'000; ++i) {
    x.push_back(i * 3e-4);
    y.push_back(3 * std::exp(-0.3 * x.back()) + 1 + std::sin(1e3 * i));
  }
  const SolveData data = Points({x}, y);
  const auto model = SolvedModel("a*exp(-b*x)+c", data, {3, 0.3, 1});
  AbortingForm form(8);
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_FALSE(ProfileCoefficients(*model, data, ScatterOf(*model), {}, form));
  // Far less than the whole work takes; the limit of 0.1 s is too close for a busy machine.
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
}

}  // namespace
}  // namespace quorvex
