#include <gtest/gtest.h>

#include "core/DerivativeKind.h"
#include "diagnosis/FitGeometry.h"
#include "diagnosis/Samples.h"
#include "engine/UserModel.h"

namespace quorvex {
namespace {

struct Reference {
  const char* Name;
  const char* Formula;
  SolveData Data;
  const char *Values, *Covariance, *Correlation;  // the latter two row by row, lower triangle with and without diagonal
  double ReciprocalCondition;
  const char* Weakest;
  const char* Leverages;  // of the first points
  double Error;           // that ten digits of the derivatives leave, times the condition
};

// Least squares in 50 digits: mpmath 1.2, normal equations solved by Gauss-Newton to their end.
const Reference kReferences[] = {
    {"Puromycin", "a*x/(b+x)", Sample("puromycin_treated.txt", '\t'), "212.68374314253607 0.064121281681567072",
     "0.40372255369473708 0.00036818415934083166 5.7362660590819056e-7", "0.76508370178728273", 0.36481603752441732,
     "0.70710678118654752 0.70710678118654752",
     "0.12485202120919491 0.12485202120919491 0.19305881156637149 0.19305881156637149", 1e-9},
    {"Stormer", "a*x1/(x2-b)", Weighted(Sample("stormer.txt", '\t')), "29.528475387823218 2.4247986618196037",
     "0.037054426940378395 -0.02634830546204001 0.024618983284022563", "-0.87236369309528122", 0.26109106468367454,
     "0.70710678118654752 -0.70710678118654752", "0.018034466661668242 0.04137940007252309 0.069325884154560999", 1e-9},
    {"Longley", "a+b*x1+c*x2+d*x3+g*x4+h*x5+k*x6", Sample("longley.csv", ','),
     "-3482.2586345958183 0.015061872271373295 -0.035819179292591017 -0.020202298038168251 -0.01033226867173592 "
     "-0.051104105653580714 1.8291514646135518",
     "8531122.5674583028 -166.72779982930112 0.077586125299511696 261.8737081471084 -0.019872521036700301 "
     "0.012069031668748675",
     "-0.20493347138656308 0.81611731800848137 -0.64941859570529034 0.83598679163467552 -0.55499990878529908 "
     "0.94560736780620575",
     2.3108006765732096e-5,
     "-0.70712989673832187 0.0013496462329342121 -0.0085968710170738508 -0.0010688391072095192 "
     "-0.00025181246175183261 0.0084400581642858002 0.70697888299032132",
     "0.4245369306265356 0.56497829770226541 0.36207471236564817", 1e-8}};

std::unique_ptr<ModelClass> ModelAt(const std::string& formula, std::size_t variables, const std::string& values) {
  std::unique_ptr<ModelClass> model = NewModelFor(variables, LocaleText());
  model->SetID(formula, {formula});
  EXPECT_TRUE(model->IsValidEquation());
  model->CoefficientValues = Numbers(values);
  return model;
}

TEST(FitGeometry, AgreesWithFiftyDigitsByAllMethodsAndInAllUnits) {
  for (const Reference& r : kReferences)
    for (const DerivativeKind method : {DerivativeKind::Richardson, DerivativeKind::Central, DerivativeKind::Exact})
      for (const double unit : {1.0, 1e-9, 1e9}) {
        SCOPED_TRACE(std::string(r.Name) + ", method " + std::to_string(static_cast<int>(method)) + ", unit " +
                     std::to_string(unit));
        SolveData data = r.Data;
        const std::string formula = std::string(r.Formula);
        const std::unique_ptr<ModelClass> model = ModelAt(formula, data.X.size(), r.Values);
        const std::vector<double> values = model->CoefficientValues;
        // The units of X1, which one coefficient follows.
        const std::size_t follower = r.Formula[0] == 'a' && r.Formula[1] == '+' ? 1 : 0;
        if (follower == 1 || data.X.size() == 2) {
          for (double& x : data.X[0]) x *= unit;
          model->CoefficientValues[follower] /= unit;
        }
        const bool scaled = model->CoefficientValues != values;
        const std::vector<double> before = model->CoefficientValues;
        SolveForm form;
        const auto geometry = FitGeometry::At(*model, data, method, form);
        ASSERT_TRUE(geometry);
        EXPECT_EQ(model->CoefficientValues, before);
        // Centred quotients alone have some six digits where the coefficient is not linear.
        const double error = method == DerivativeKind::Central ? 1e-5 : r.Error;
        EXPECT_NEAR(geometry->ReciprocalCondition() / r.ReciprocalCondition, 1, error);
        const std::vector<double> weakest = Numbers(r.Weakest), covariance = Numbers(r.Covariance);
        const double sign = geometry->WeakestDirection()[0] * weakest[0] < 0 ? -1 : 1;
        for (std::size_t i = 0; i < weakest.size(); ++i)
          EXPECT_NEAR(sign * geometry->WeakestDirection()[i], weakest[i], error);
        const Matrix c = geometry->Covariance(), correlation = geometry->Correlation();
        const std::vector<double> correlations = Numbers(r.Correlation);
        for (std::size_t i = 0, k = 0, m = 0; k < covariance.size(); ++i)
          for (std::size_t j = 0; j <= i; ++j) {
            const double factor = (scaled && i == follower ? unit : 1) * (scaled && j == follower ? unit : 1);
            EXPECT_NEAR(c(i, j) * factor / covariance[k++], 1, error);
            EXPECT_EQ(c(i, j), c(j, i));
            if (j < i) {
              EXPECT_NEAR(correlation(i, j), correlations[m++], error);
            }
          }
        std::vector<double> gradient(values.size());
        gradient[1] = 1;
        EXPECT_NEAR(geometry->Variance(gradient) / c(1, 1), 1, 1e-9);
        for (double& element : gradient) element *= 0x1p-700;
        EXPECT_NEAR(std::ldexp(geometry->Deviation(gradient), 700) / std::sqrt(c(1, 1)), 1, 1e-9);
        const auto leverages = Leverages(*model, data, *geometry, method, form);
        ASSERT_TRUE(leverages);
        const std::vector<double> expected = Numbers(r.Leverages);
        for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_NEAR((*leverages)[i], expected[i], error);
        double sum = 0;
        for (const double h : *leverages) sum += h;
        EXPECT_NEAR(sum, static_cast<double>(values.size()), 1e-6);
      }
}

TEST(FitGeometry, KnowsWhatIsHeldSingularOrWithoutValue) {
  SolveForm form;
  const SolveData data = Points({{1, 2, 3, 4}}, {1, 2, 3, 5});
  const auto at = [&](const ModelClass& model) {
    return FitGeometry::At(const_cast<ModelClass&>(model), data, DerivativeKind::Richardson, form);
  };
  // A straight line through held and free coefficients: (J^T J)^-1 of a + bx about x = 2.5.
  std::unique_ptr<ModelClass> line = ModelAt("a+b*x", 1, "0 1");
  EXPECT_NEAR(at(*line)->Covariance()(1, 1), 0.2, 1e-12);
  line->SetConstant(1, 0);
  ASSERT_EQ(at(*line)->Free(), std::vector<int>{2});
  EXPECT_NEAR(at(*line)->Covariance()(0, 0), 1.0 / 30, 1e-12);
  line->SetConstant(2, 0);
  EXPECT_EQ(at(*line)->ReciprocalCondition(), 1);
  EXPECT_EQ(*Leverages(*line, data, *at(*line), DerivativeKind::Richardson, form), std::vector<double>(4));

  // Two coefficients of which only the sum counts, and one that counts for nothing.
  const std::unique_ptr<ModelClass> sum = ModelAt("(a+b)*x", 1, "1 1"), idle = ModelAt("a*x+0*b", 1, "1 1");
  EXPECT_LT(at(*sum)->ReciprocalCondition(), 1e-15);
  EXPECT_NEAR(at(*sum)->WeakestDirection()[0], -at(*sum)->WeakestDirection()[1], 1e-12);
  EXPECT_EQ(at(*idle)->ReciprocalCondition(), 0);
  EXPECT_EQ(std::abs(at(*idle)->WeakestDirection()[1]), 1);
  EXPECT_FALSE(std::isfinite(at(*idle)->Covariance()(1, 1)));
  EXPECT_FALSE(Leverages(*idle, data, *at(*idle), DerivativeKind::Richardson, form));

  const std::unique_ptr<ModelClass> none = ModelAt("a*ln(x-2)", 1, "1");
  none->ErrorMessage = "as it was";
  EXPECT_FALSE(at(*none));
  EXPECT_EQ(none->ErrorMessage, "as it was");
  EXPECT_EQ(none->Values(1), 1);
  form.Aborted = true;
  EXPECT_FALSE(at(*line));
}

// The derivative that is typed is twice the true one, which tells them apart; after it the numerical one is back.
TEST(FitGeometry, TakesTypedDerivativesAsTheFitDoes) {
  const SolveData data = Points({{3, 4}}, {3, 4});
  const std::unique_ptr<ModelClass> model = ModelAt("a*x", 1, "1");
  model->UserType = true;
  SolveForm form;
  EXPECT_NEAR(std::abs(FitGeometry::At(*model, data, DerivativeKind::Richardson, form)->R()(0, 0)), 5, 1e-9);
  model->Coefficients[0].Derivative = "2*x";
  EXPECT_NEAR(std::abs(FitGeometry::At(*model, data, DerivativeKind::Richardson, form)->R()(0, 0)), 10, 1e-14);
  std::vector<double> dyda(1);
  std::string why;
  EXPECT_TRUE(model->Derivative(std::vector<double>{3}, dyda, why));
  EXPECT_NEAR(dyda[0], 3, 1e-9);
}

}  // namespace
}  // namespace quorvex
