#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>

#include "core/NumberText.h"
#include "diagnosis/CrossValidation.h"
#include "diagnosis/Diagnosis.h"
#include "diagnosis/Samples.h"
#include "engine/InformationCriteria.h"
#include "engine/LoadModelCatalog.h"
#include "engine/UserModel.h"

namespace quorvex {
namespace {

struct AbortAt : SolveForm {
  explicit AbortAt(int pulse) : left(pulse) {}
  void Yield() override { Pulse(); }
  void Pulse() override { Aborted = Aborted || --left <= 0; }
  int left;
};

std::unique_ptr<ModelClass> Solved(const std::string& formula, const SolveData& data, const std::string& start) {
  std::unique_ptr<ModelClass> model = CompileModel(formula, {formula}, data.X.size(), LocaleText());
  model->CoefficientValues = Numbers(start);
  model->SpecifyICComplete = true;
  std::string log;
  SolveForm form;
  EXPECT_TRUE(model->Fit(data, Settings(), log, form)) << log;
  return model;
}

SolveData InUnit(SolveData data, double unit) {
  for (double& y : data.Y) y *= unit;
  return data;
}

const SolveData kPuromycin = Sample("puromycin_treated.txt", '\t'), kLongley = Sample("longley.csv", ','),
                kStormer = Sample("stormer.txt", '\t');
const char *const kParabola = "a+b*x+c*x^2", *const kLine6 = "a+b*x1+c*x2+d*x3+g*x4+h*x5+k*x6";
const char* const kLongleyValues =
    "-3482.2586345958183 0.015061872271373295 -0.035819179292591017 -0.020202298038168251 -0.01033226867173592 "
    "-0.051104105653580714 1.8291514646135518";

// AIC and BIC of lm and nls in R 4.2, the latter with weights, less the constants n (1 + ln 2 pi) - sum ln w that
// models of the same data share; AICc from AIC by its definition.
TEST(InformationCriteria, AgreeWithRInAllUnits) {
  const struct {
    const char *Formula, *Start;
    SolveData Data;
    double AICc, BIC;
  } cases[] = {{"a*x/(b+x)", "200 0.1", kPuromycin, 64.216443852035411, 62.671163801399416},
               {kLine6, kLongleyValues, kLongley, -10.647903801588118, -25.038622595098445},
               {"a*x1/(x2-b)", "28 2", Weighted(kStormer), 89.404965977992447, 91.548290731043053},
               {kParabola, "40 400 -200", Weighted(kPuromycin), 83.119669528267096, 79.345010413133394}};
  for (const auto& c : cases) {
    const auto model = Solved(c.Formula, c.Data, c.Start);
    const double n = static_cast<double>(c.Data.N());
    EXPECT_EQ(PointCount(*model), n);
    EXPECT_NEAR(AICc(*model), c.AICc, 1e-8) << c.Formula;
    EXPECT_NEAR(BIC(*model), c.BIC, 1e-8) << c.Formula;
    for (const double unit : {1e-9, 1e9}) {
      model->RssNorm *= unit * unit;
      model->Statistics.InputYMax *= unit, model->Statistics.InputYMin *= unit;
      EXPECT_NEAR(AICc(*model) - 2 * n * std::log(unit), c.AICc, 1e-8);
      model->RssNorm /= unit * unit;
      model->Statistics.InputYMax /= unit, model->Statistics.InputYMin /= unit;
    }
  }
}

// The number of points is read off the degrees of freedom, which every road to a solution leaves.
TEST(InformationCriteria, KnowThePointsAfterEachKindOfSolve) {
  const auto points = [](const char* formula, const std::function<void(ModelClass&, Settings&)>& prepare) {
    std::unique_ptr<ModelClass> model = CompileModel(formula, {formula}, 1, LocaleText());
    Settings settings;
    prepare(*model, settings);
    std::string log;
    SolveForm form;
    EXPECT_TRUE(model->Fit(kPuromycin, settings, log, form)) << log;
    return std::pair{PointCount(*model), FittedCount(*model)};
  };
  EXPECT_EQ(points(kParabola, [](ModelClass&, Settings&) {}), (std::pair{12.0, 3}));
  EXPECT_EQ(points(kParabola, [](ModelClass& m, Settings&) { m.SetConstant(1, 0); }), (std::pair{12.0, 2}));
  EXPECT_EQ(points("a*x/(b+x)", [](ModelClass&, Settings& s) { s.TryHarder = true; }), (std::pair{12.0, 2}));
  const auto sweep = [](ModelClass& m, Settings&) {
    m.SetICRange({{100, 300, 3}, {0.05, 0.2, 3}});
    m.SpecifyICComplete = true;
  };
  EXPECT_EQ(points("a*x/(b+x)", sweep), (std::pair{12.0, 2}));
  ModelCollection catalogue;
  LoadModelCatalog(catalogue, 1, LocaleText());
  for (const auto& model : catalogue) {
    std::string log;
    SolveForm form;
    model->SolveType = 1;
    if (!model->Fit(kPuromycin, Settings(), log, form)) continue;
    EXPECT_EQ(PointCount(*model), 12) << model->id;
  }
}

TEST(InformationCriteria, AreMinusInfinityOfAnExactFitAndMissingForTooFewPoints) {
  auto line = Solved("a+b*x", Points({{1, 2, 3, 4, 5, 6}}, {3, 5, 7, 9, 11, 13}), "1 2");
  for (const double rss : {0.0, 1e-29}) {
    line->RssNorm = rss;
    EXPECT_EQ(AICc(*line), -HUGE_VAL);
    EXPECT_EQ(BIC(*line), -HUGE_VAL);
  }
  line->RssNorm = 1e-25;
  EXPECT_TRUE(std::isfinite(AICc(*line)));
  // K = 3 and the correction: 4 points leave nothing to divide by, 5 leave 1.
  line->DOFError = 2;
  EXPECT_TRUE(std::isnan(AICc(*line)));
  EXPECT_TRUE(std::isfinite(BIC(*line)));
  line->DOFError = 3;
  EXPECT_TRUE(std::isfinite(AICc(*line)));
}

// A constant by hand: the sum of squares is 17.5, with deviations of 0.5 a chi-square of 70.
TEST(InformationCriteria, CountChiSquareWhereDeviationsAreTakenAtTheirWord) {
  SolveData data = Points({{1, 2, 3, 4, 5, 6}}, {1, 2, 3, 4, 5, 6});
  data.UnitDeviation = 0.5;
  Settings settings;
  settings.AbsoluteDeviations = true;
  const auto model = CompileModel("constant", {"a+0*x"}, 1, LocaleText());
  std::string log;
  SolveForm form;
  ASSERT_TRUE(model->Fit(data, settings, log, form)) << log;
  EXPECT_NEAR(AICc(*model), 70 + 2 + 4.0 / 4, 1e-9);
  EXPECT_NEAR(BIC(*model), 70 + std::log(6), 1e-9);
}

// By hatvalues in R 4.2, and by fits to all points but one. A search ends where the sum of squares changes by less than
// 1e-12 of it, which leaves the fitted values of Longley's data, condition 4e4, no more than 7 digits.
TEST(LeaveOneOut, IsThatOfRefitsWhereAModelIsLinear) {
  const struct {
    const char *Formula, *Start;
    SolveData Data;
    double Error, RefitTolerance;
  } cases[] = {{kParabola, "40 400 -200", Weighted(kPuromycin), 25.69966910878362, 1e-8},
               {kLine6, kLongleyValues, kLongley, 0.42477144894726399, 1e-6}};
  for (const auto& c : cases)
    for (const double unit : {1.0, 1e-9, 1e9}) {
      const SolveData data = InUnit(c.Data, unit);
      std::string start;
      for (const double a : Numbers(c.Start)) start += GeneralNumber(a * unit, 17) + " ";
      ModelCollection models;
      ModelClass& model = *models.Add("m", Solved(c.Formula, data, start));
      SolveForm form;
      ASSERT_TRUE(CrossValidate(models, data, static_cast<int>(data.N()) + 5, 1, Settings(), form));
      EXPECT_NEAR(model.LeaveOneOut / unit / c.Error, 1, 1e-7) << c.Formula << ' ' << unit;
      EXPECT_NEAR(model.CrossValidated / model.LeaveOneOut, 1, c.RefitTolerance) << c.Formula << ' ' << unit;
      EXPECT_EQ(model.FailedParts, 0);
    }
}

// numpy 1.24, least squares by singular values, over parts from a generator of its own.
TEST(CrossValidatedError, AgreesWithAnotherProgramOverTheSameParts) {
  const struct {
    int Parts;
    double Plain, Weighted;
  } cases[] = {{2, 19.66884732472977, 25.088178305958547},
               {5, 18.87421183088756, 23.48594726635717},
               {12, 19.847073424559106, 25.699669108783606}};
  const SolveData weighted = Weighted(kPuromycin);
  const auto plain = Solved(kParabola, kPuromycin, "40 400 -200"), other = Solved(kParabola, weighted, "40 400 -200");
  SolveForm form;
  for (const auto& c : cases) {
    EXPECT_NEAR(CrossValidatedError(*plain, kPuromycin, c.Parts, 20240229, Settings(), form).Error, c.Plain, 1e-7);
    EXPECT_NEAR(CrossValidatedError(*other, weighted, c.Parts, 20240229, Settings(), form).Error, c.Weighted, 1e-7);
  }
  const auto longley = Solved(kLine6, kLongley, kLongleyValues);
  EXPECT_NEAR(CrossValidatedError(*longley, kLongley, 4, 7, Settings(), form).Error, 0.5058780529094846, 1e-7);
  EXPECT_TRUE(std::isnan(CrossValidatedError(*plain, kPuromycin, 1, 1, Settings(), form).Error));
}

TEST(CrossValidationParts, HoldEachPointOnceInSizesThatDifferByOne) {
  using Parts = std::vector<std::vector<std::size_t>>;
  EXPECT_EQ(CrossValidationParts(12, 5, 20240229), (Parts{{1, 3, 8}, {5, 2, 6}, {7, 9}, {10, 4}, {11, 0}}));
  EXPECT_EQ(CrossValidationParts(3, 7, 1).size(), 3u);
  for (const int none : {1, 0, -4}) EXPECT_TRUE(CrossValidationParts(12, none, 1).empty());
}

// Only the last point tells of b.
TEST(CrossValidate, HasNoErrorWhereAPointAloneDeterminesACoefficient) {
  const SolveData data = Points({{0, 0, 0, 0, 1}, {1, 2, 3, 4, 5}}, {1, 2, 4, 3, 9});
  ModelCollection models;
  ModelClass& model = *models.Add("m", Solved("a+b*x1+0*x2", data, "2.5 6.5"));
  SolveForm form;
  ASSERT_TRUE(CrossValidate(models, data, 5, 1, Settings(), form));
  EXPECT_EQ(model.LeaveOneOut, HUGE_VAL);
  EXPECT_EQ(model.CrossValidated, HUGE_VAL);
  EXPECT_EQ(model.FailedParts, 1);
}

TEST(CrossValidate, LeavesModelsAloneOtherwise) {
  ModelCollection models;
  ModelClass& model = *models.Add("m", Solved("a*x/(b+x)", kPuromycin, "200 0.1"));
  SolveData other = kPuromycin;
  other.Y[3] += 1;
  SolveForm form;
  EXPECT_TRUE(CrossValidate(models, other, 3, 1, Settings(), form));
  EXPECT_TRUE(std::isnan(model.LeaveOneOut) && std::isnan(model.CrossValidated));  // fitted to other data
  const std::vector<double> values = model.CoefficientValues;
  for (int pulse = 1; pulse < 40; ++pulse) {
    AbortAt aborting(pulse);
    if (CrossValidate(models, kPuromycin, 3, 1, Settings(), aborting)) break;
    EXPECT_TRUE(std::isnan(model.CrossValidated)) << pulse;
  }
  ASSERT_TRUE(CrossValidate(models, kPuromycin, 3, 1, Settings(), form));
  EXPECT_EQ(model.CoefficientValues, values);
  EXPECT_GT(model.CrossValidated, std::sqrt(model.RssNorm / 12));
  std::string log;
  ASSERT_TRUE(model.Fit(kPuromycin, Settings(), log, form));
  EXPECT_TRUE(std::isnan(model.LeaveOneOut) && std::isnan(model.CrossValidated));  // of the fit before
}

// Models of several kinds, one of them robust, to so many points.
ModelCollection Solved(const SolveData& data) {
  ModelCollection models;
  const auto add = [&](const char* formula, const char* start,
                       const std::function<void(ModelClass&, Settings&)>& adjust) {
    ModelClass& model = *models.Add(formula, CompileModel(formula, {formula}, 1, LocaleText()));
    Settings settings;
    settings.DerivativeMethod = DerivativeKind::Central;
    adjust(model, settings);
    model.CoefficientValues = Numbers(start);
    model.SpecifyICComplete = true;
    for (std::size_t i = 0; i < model.ICRanges.size(); ++i)
      model.ICRanges[i] = {model.CoefficientValues[i], model.CoefficientValues[i], 1};
    std::string log;
    SolveForm form;
    EXPECT_TRUE(model.Fit(data, settings, log, form)) << log;
  };
  add("a*exp(-b*x)+c", "5 1 1", [](ModelClass&, Settings&) {});
  add("a+b*x", "5 -1", [](ModelClass&, Settings& settings) { settings.Loss = LossKind::Huber; });
  add("a*exp(-b*x)", "5 1", [](ModelClass& model, Settings&) {
    model.SetDerivative(1, "exp(-b*x)");
    model.SetDerivative(2, "-a*x*exp(-b*x)");
  });
  add("a/(1+b*x)+0*rnd(1)", "5 1", [](ModelClass&, Settings&) {});
  return models;
}

TEST(ParallelCrossValidation, HasTheSameBitsByAnyNumberOfThreads) {
  for (const std::size_t points : {200u, 22'000u}) {
    std::vector<double> x(points), y(points);
    for (std::size_t i = 0; i < points; ++i) {
      x[i] = 4 * static_cast<double>(i + 1) / static_cast<double>(points);
      y[i] = 6 * std::exp(-x[i]) + 0.5 + std::sin(977 * x[i]) * std::cos(31 * x[i]) * (i % 7 == 0 ? 1 : 0.1);
    }
    const SolveData data = Points({x}, y);
    std::vector<double> alone;
    std::vector<std::string> saidAlone;
    for (const int threads : {1, 2, 3, 16}) {
      if (points > 200 && threads > 2) continue;
      const ModelCollection models = Solved(data);
      Settings settings;
      settings.Threads = threads;
      settings.DerivativeMethod = DerivativeKind::Central;
      SolveForm form;
      ASSERT_TRUE(CrossValidate(models, data, 4, 1, settings, form));
      std::vector<double> found;
      for (const auto& model : models) {
        found.insert(found.end(), {model->LeaveOneOut, model->CrossValidated, static_cast<double>(model->FailedParts)});
        const auto geometry = FitGeometry::At(*model, data, DerivativeKind::Richardson, form, threads);
        ASSERT_TRUE(geometry);
        found.insert(found.end(), {geometry->RelativeOffset(), geometry->R()(0, 0), geometry->ReciprocalCondition()});
        EXPECT_GT(model->CrossValidated, 0.1);
        EXPECT_LT(model->LeaveOneOut, 2);
      }
      std::vector<std::string> said;
      for (const Diagnosis& diagnosis : Diagnose(models, data, {}, 1, settings, form, said, LocaleText())) {
        said.push_back(diagnosis.Id);
        said.insert(said.end(), diagnosis.Judgement.Reasons.begin(), diagnosis.Judgement.Reasons.end());
        said.insert(said.end(), diagnosis.Judgement.Notes.begin(), diagnosis.Judgement.Notes.end());
        for (const CoefficientDiagnosis& c : diagnosis.Coefficients)
          found.insert(found.end(), {c.Value, c.StdErr, c.Symmetric[1].Upper});
      }
      EXPECT_GE(said.size(), models.size());
      if (threads == 1) saidAlone = said;
      EXPECT_EQ(said, saidAlone) << threads << ' ' << points;
      if (threads == 1) alone = found;
      EXPECT_EQ(found, alone) << threads << ' ' << points;
    }
  }
}

// Aborts when the first error is there.
TEST(ParallelCrossValidation, LeavesWhatIsFinishedAtAnAbort) {
  struct Watching : SolveForm {
    const ModelCollection* Models = nullptr;
    void Yield() override { Aborted = Aborted || !std::isnan((*Models->begin())->CrossValidated); }
  };
  std::vector<double> x(1500), y(1500);
  for (std::size_t i = 0; i < x.size(); ++i) {
    x[i] = 0.001 * static_cast<double>(i + 1);
    y[i] = 6 * std::exp(-x[i]) + 0.5 + 0.1 * std::sin(977 * x[i]);
  }
  const SolveData data = Points({x}, y);
  const ModelCollection models = Solved(data);
  Watching form;
  form.Models = &models;
  Settings settings;
  settings.Threads = 2;
  EXPECT_FALSE(CrossValidate(models, data, 100, 1, settings, form));
  EXPECT_FALSE(std::isnan((*models.begin())->CrossValidated));
  EXPECT_TRUE(std::isnan((*std::prev(models.end()))->CrossValidated));
}

}  // namespace
}  // namespace quorvex
