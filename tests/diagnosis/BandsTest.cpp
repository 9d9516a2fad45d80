#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "core/DerivativeKind.h"
#include "core/NumberText.h"
#include "diagnosis/Bands.h"
#include "engine/Points.h"
#include "engine/UserModel.h"

namespace quorvex {
namespace {

std::unique_ptr<ModelClass> Fitted(const std::string& formula, const SolveData& data, std::vector<double> start = {}) {
  std::unique_ptr<ModelClass> model = NewModelFor(data.X.size(), LocaleText());
  model->SetID("model", {formula});
  for (std::size_t i = 0; i < start.size(); ++i)
    model->SetRuleConstant(static_cast<int>(i) + 1, ShortestNumber(start[i]));
  std::string log;
  SolveForm form;
  EXPECT_TRUE(model->Fit(data, Settings(), log, form)) << log;
  return model;
}

Result<Bands> BandsOf(ModelClass& model, const SolveData& data) {
  SolveForm form;
  return Bands::Of(model, data, DerivativeKind::Richardson, form);
}

// Misra1a of NIST's reference sets.
SolveData Misra1a() {
  return Points({{77.6, 114.9, 141.1, 190.8, 239.9, 289.0, 332.8, 378.4, 434.8, 477.3, 536.8, 593.1, 689.1, 760.0}},
                {10.07, 14.73, 17.94, 23.93, 29.61, 35.18, 40.02, 44.82, 50.76, 55.05, 61.01, 66.40, 75.47, 81.78});
}

struct Reference {
  const char *What, *Formula;
  SolveData Data;
  std::vector<double> Start;
  std::size_t Level;
  std::vector<double> X;
  double Weight;
  double Fit, Confidence[2], Prediction[2];
};

const SolveData kLine = Points({{1, 2, 3, 4, 5}}, {3, 5, 8, 9, 11});

// R 4, predict() of lm() with interval = "confidence" and "prediction", of the weighted line with the weight of the
// point; and of Misra1a the delta method in 40 digits (mpmath), whose t is 2.17881282966723. The quantiles of the
// program have four decimals.
const Reference kReferences[] = {
    {"line", "a*x+b", kLine, {}, 2, {1}, 1, 3.2, {1.927021477887, 4.472978522113}, {1.121234778200, 5.278765221800}},
    {"line", "a*x+b", kLine, {}, 2, {7.5}, 1, 16.2, {13.74862101495, 18.65137898505}, {13.24872070824, 19.15127929176}},
    {"weighted line",
     "a*x+b",
     Points({{1, 2, 3, 4, 5}}, {3, 5, 8, 9, 11}, {0.5, 1, 2, 0.5, 1}),
     {},
     3,
     {3},
     2,
     7.402684563758,
     {5.748803800394, 9.056565327123},
     {4.315932737809, 10.489436389708}},
    {"parabola",
     "a*x^2+b*x+c",
     Points({{1, 2, 3, 4, 5, 6, 7, 8}}, {2.1, 3.9, 9.2, 15.8, 25.3, 35.9, 49.1, 64.2}),
     {},
     1,
     {10},
     1,
     101.04940476190,
     {99.60169303152, 102.49711649229},
     {99.45098729455, 102.64782222926}},
    {"plane",
     "a*x1+b*x2+c",
     Points({{1, 2, 3, 4, 6}, {1, 3, 2, 5, 4}}, {3, 5, 8, 9, 11}),
     {},
     2,
     {2.5, 2},
     1,
     6.0074626865672,
     {3.3648808429418, 8.6500445301925},
     {0.5479290916277, 11.4669962815066}},
    {"Misra1a",
     "a*(1-exp(-b*x))",
     Misra1a(),
     {250, 5e-4},
     2,
     {1000},
     1,
     101.10607669386384,
     {101.10607669386384 - 2.17881282966723 * 0.15326084823684,
      101.10607669386384 + 2.17881282966723 * 0.15326084823684},
     {101.10607669386384 - 2.17881282966723 * 0.18403306771966,
      101.10607669386384 + 2.17881282966723 * 0.18403306771966}},
};

TEST(Bands, AreThoseOfIndependentCalculations) {
  for (const Reference& c : kReferences) {
    const auto model = Fitted(c.Formula, c.Data, c.Start);
    const Result<Bands> bands = BandsOf(*model, c.Data);
    ASSERT_TRUE(bands) << c.What << bands.error();
    const std::vector<double> values = model->CoefficientValues;
    const Interval confidence = bands->Limits(BandKind::Confidence, c.Level, *model, c.X, c.Weight),
                   prediction = bands->Limits(BandKind::Prediction, c.Level, *model, c.X, c.Weight);
    // Half a unit of the quantile's last decimal, of some 3; a nonlinear search ends within 1e-7.
    const double tolerance = 3e-5 * (c.Prediction[1] - c.Prediction[0]) + 2e-7 * std::abs(c.Fit);
    EXPECT_NEAR(confidence.Lower, c.Confidence[0], tolerance) << c.What;
    EXPECT_NEAR(confidence.Upper, c.Confidence[1], tolerance) << c.What;
    EXPECT_NEAR(prediction.Lower, c.Prediction[0], tolerance) << c.What;
    EXPECT_NEAR(prediction.Upper, c.Prediction[1], tolerance) << c.What;
    EXPECT_EQ(model->CoefficientValues, values);
  }
}

// What is held has no error, and what the data are multiplied by is what the limits are.
TEST(Bands, FollowHeldCoefficientsAndUnits) {
  for (const double unit : {1e-9, 1.0, 1e9}) {
    SolveData data = kLine;
    for (double& y : data.Y) y *= unit;
    for (double& x : data.X[0]) x /= unit;
    const auto model = Fitted("a*x+b", data);
    const std::vector<double> x = {7.5 / unit};
    const Interval limits = BandsOf(*model, data)->Limits(BandKind::Confidence, 2, *model, x);
    EXPECT_NEAR(limits.Lower / unit, 13.74862101495, 1e-3) << unit;
    EXPECT_NEAR(limits.Upper / unit, 18.65137898505, 1e-3) << unit;
  }
  const auto held = Fitted("a*x+b", kLine);
  held->SetConstant(2, 0);
  held->SetValue(2, 0);
  std::string log;
  SolveForm form;
  ASSERT_TRUE(held->Fit(kLine, Settings(), log, form)) << log;
  const std::vector<double> zero = {0};
  EXPECT_EQ(BandsOf(*held, kLine)->At(*held, zero).OfFit, 0) << "a line through a point that is held";
}

TEST(Bands, SayWhyThereAreNone) {
  const SolveData two = Points({{1, 2}}, {3, 5});
  const auto exact = NewModelFor(1, LocaleText());
  exact->SetID("model", {"a*x+b"});
  exact->SetIC(two);
  EXPECT_EQ(BandsOf(*exact, two).error(),
            "There are no confidence or prediction limits, since there are no more points than coefficients, which "
            "leaves nothing that could tell how much the points scatter.");

  const auto twice = NewModelFor(1, LocaleText());
  twice->SetID("model", {"a*x+b*x+c"});
  twice->SetIC(kLine);
  EXPECT_EQ(
      BandsOf(*twice, kLine).error(),
      "There are no confidence or prediction limits, since the data do not determine all coefficients of the model.");

  const auto root = NewModelFor(1, LocaleText());
  root->SetID("model", {"a*sqr(x-2)+b"});
  root->SetIC(kLine);
  EXPECT_EQ(BandsOf(*root, kLine).error(),
            "There are no confidence or prediction limits, since the model has no value or derivative at some point of "
            "the data.");

  // Where the points are there is a band, beyond there may be none.
  const SolveData right = Points({{3, 4, 5, 6}}, {1, 1.5, 1.7, 2});
  const auto beyond = Fitted("a*sqr(x-2)+b", right);
  const std::vector<double> inside = {4.5}, outside = {1};
  const Result<Bands> bands = BandsOf(*beyond, right);
  EXPECT_TRUE(std::isfinite(bands->Limits(BandKind::Prediction, 2, *beyond, inside).Lower));
  EXPECT_TRUE(std::isnan(bands->Limits(BandKind::Prediction, 2, *beyond, outside).Lower));
}

}  // namespace
}  // namespace quorvex
