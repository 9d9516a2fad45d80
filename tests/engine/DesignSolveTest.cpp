#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "core/NumericFault.h"
#include "engine/DesignSolve.h"
#include "engine/ReferenceSolution.h"
#include "equation/ClosedForms.h"
#include "equation/Linearization.h"

namespace quorvex {
namespace {

using Columns = std::vector<std::vector<double>>;

TEST(DesignSolve, CountsAPointByItsWeight) {
  const CatalogueModel& model = *LookupBuiltInModel("a*x+b", 1);
  const LinearSolution weighted =
      DesignSolve(model, Columns{{1, 2, 4, 5}}, std::vector<double>{1, 3, 2, 7}, std::vector<double>{1, 4, 1, 1});
  const LinearSolution repeated = DesignSolve(model, Columns{{1, 2, 2, 2, 2, 4, 5}},
                                              std::vector<double>{1, 3, 3, 3, 3, 2, 7}, std::vector<double>(7, 1.0));
  for (std::size_t j = 0; j < 2; ++j) EXPECT_NEAR(weighted.a[j], repeated.a[j], 1e-14);
}

// The terms of the model at each x, each times the root of the weight.
template <class Real>
std::vector<std::vector<Real>> WeightedTerms(const CatalogueModel& model, const Columns& x,
                                             const std::vector<double>& sig) {
  std::vector<std::vector<double>> terms(model.Basis.size(), std::vector<double>(sig.size()));
  std::vector<double*> columns;
  for (auto& term : terms) columns.push_back(term.data());
  const double* const points = x[0].data();
  BasisFunctions(model, &points, sig.size(), columns.data());
  std::vector<std::vector<Real>> weighted;
  for (const auto& term : terms) {
    weighted.emplace_back();
    for (std::size_t i = 0; i < sig.size(); ++i)
      weighted.back().push_back(std::sqrt(static_cast<Real>(sig[i])) * term[i]);
  }
  return weighted;
}

template <class Real>
std::vector<Real> WeightedValues(const std::vector<double>& y, const std::vector<double>& sig) {
  std::vector<Real> b;
  for (std::size_t i = 0; i < y.size(); ++i) b.push_back(std::sqrt(static_cast<Real>(sig[i])) * y[i]);
  return b;
}

// Every linear model of one variable, in units that fit X well or badly. Coefficient by coefficient no more than two
// digits are lost of those that the condition of the scaled columns leaves a double and a QR of theirs in doubles
// keeps; six are left where the condition is below 1e8, and six of each variance where it is below 1e9.
TEST(DesignSolve, KeepsTheDigitsThatTheScaledConditionLeaves) {
  constexpr std::size_t kPoints = 40;
  constexpr struct {
    double from, to;
    bool logarithmic;
  } kRanges[] = {{0.1, 10, false},  {1e-3, 0.1, false}, {1e-6, 1e-3, false}, {4e-7, 7e-7, false},
                 {1e3, 1e6, false}, {1e6, 1e9, false},  {1, 100, false},     {1e-9, 1e-3, true}};
  std::mt19937 random(1);
  const auto noise = [&random] { return static_cast<double>(random()) / 2147483648.0 - 1; };
  int solved = 0, models = 0;
  for (const auto& range : kRanges) {
    for (const bool weighted : {false, true}) {
      Columns x(1);
      std::vector<double> y, sig;
      for (std::size_t i = 0; i < kPoints; ++i) {
        const double t = static_cast<double>(i) / (kPoints - 1);
        x[0].push_back(range.logarithmic ? range.from * std::pow(range.to / range.from, t)
                                         : range.from + (range.to - range.from) * t);
        y.push_back(2 + 3 * t - 4 * t * t + std::sin(5 * t) + 0.01 * noise());
        sig.push_back(weighted ? std::pow(10, 2 * noise()) : 1);
      }
      for (const CatalogueModel& model : Catalogue(1)) {
        if (model.Shape == ModelShape::ClosedForm || model.Outer != OuterFunction::None ||
            model.Transform != YTransform::None || model.Restore != Restoration::None)
          continue;
        SCOPED_TRACE(model.Definition + " from " + std::to_string(range.from));
        ++models;
        const auto terms = WeightedTerms<long double>(model, x, sig);
        const bool solvable = std::all_of(terms.begin(), terms.end(), [](const auto& term) {
          return std::all_of(term.begin(), term.end(), [](long double v) { return v < 1e300; }) &&
                 std::any_of(term.begin(), term.end(), [](long double v) { return v != 0; });
        });
        if (!solvable) continue;  // exp(x) or exp(-x) is beyond the range of numbers
        ++solved;
        const LinearSolution solution = DesignSolve(model, x, y, sig);
        const ReferenceSolution<long double> reference(terms, WeightedValues<long double>(y, sig));
        const ReferenceSolution<double> plain(WeightedTerms<double>(model, x, sig), WeightedValues<double>(y, sig));
        double digits = 17, attainable = 17, ofVariances = 17;
        for (std::size_t j = 0; j < terms.size(); ++j) {
          double variance = 0;
          for (std::size_t k = 0; k < terms.size(); ++k) variance += std::pow(solution.v(j, k) / solution.w[k], 2);
          digits = std::min(digits, DigitsOf(solution.a[j], reference.a[j]));
          attainable = std::min(attainable, DigitsOf(plain.a[j], reference.a[j]));
          ofVariances = std::min(ofVariances, DigitsOf(variance, reference.variances[j]));
        }
        const double left = 53 * std::log10(2) - static_cast<double>(std::log10(reference.Condition));
        EXPECT_GE(digits, std::min(left, attainable) - 2);
        EXPECT_GE(digits, reference.Condition < 1e8 ? 6 : -99);
        EXPECT_GE(ofVariances, reference.Condition < 1e9 ? 6 : -99);
      }
    }
  }
  EXPECT_EQ(models, 8 * 2 * 254);
  EXPECT_EQ(solved, models - 2 * (41 + 41 + 45));
}

TEST(DesignSolve, HasAnExactZeroWhereTheDesignIsSingular) {
  const struct {
    int Variables;
    const char* ID;
    Columns x;
    bool singular;
  } cases[] = {
      {1, "a*x+b", {{49, 49, 49, 49, 49}}, true},  // 49 * (1/49) is not 1
      {1, "a*x+b", {{0, 0, 0, 0, 0}}, true},
      {1, "a*x^2+b*x+c", {{0.1, 0.7, 0.1, 0.7, 0.1}}, true},  // a parabola through two places
      {1, "a*x^2+b*x+c", {{0.1, 0.7, 0.1, 0.7, 0.2}}, false},
      {1, "a*x^2+b*x+c", {{0, 0, 1, 2, 3}}, false},
      {2, "a+b*x1+c*x2", {{1, 2, 3, 4, 5}, {49, 49, 49, 49, 49}}, true},        // a variable that does not vary
      {2, "a+b*x1+c*x2", {{1, 2, 3, 4, 5}, {0.3, 0.6, 0.9, 1.2, 1.5}}, false},  // proportional but for rounding
      {2, "a+b*x1+c*x2", {{1, 2, 3, 4, 5}, {1, 2, 3, 4, 5}}, true},
      {1, "a*x+b", {{1e15, 1e15 + 0.125, 1e15, 1e15, 1e15}}, false},  // hardly distinct is distinct
  };
  const std::vector<double> y = {1, 3, 2, 5, 4}, sig = {0.5, 1.25, 1, 1.25, 1};
  for (const auto& c : cases) {
    const auto w = DesignSolve(*LookupBuiltInModel(c.ID, c.Variables), c.x, y, sig).w;
    EXPECT_EQ(std::count(w.begin(), w.end(), 0.0) > 0, c.singular) << c.ID << " " << c.x.back()[0];
  }
}

TEST(DesignSolve, FaultsWhereABasisFunctionHasNoValue) {
  for (const char* id : {"a+b/x", "a+b*ln(x)", "a+b/x^.5"})
    EXPECT_THROW(DesignSolve(*LookupBuiltInModel(id, 1), Columns{{0, 1, 2}}, std::vector<double>{1, 2, 3},
                             std::vector<double>(3, 1.0)),
                 NumericFault)
        << id;
}

// Coefficients at which each model has values that its transform takes back: the default, and the models that need
// others, by number in the catalogue of one variable.
std::vector<double> TrueCoefficients(const CatalogueModel& model) {
  static const std::map<int, std::vector<double>> special = {{13, {-0.5}}, {40, {0.2}}};
  std::vector<double> a(static_cast<std::size_t>(model.NumCoefficients));
  for (std::size_t j = 0; j < a.size(); ++j) a[j] = 0.7 - 0.15 * static_cast<double>(j % 4);
  if (model.NumVariables == 1 && special.contains(model.IDIndex)) a = special.at(model.IDIndex);
  return a;
}

TEST(RestoreParameters, CompletesTheLinearSolutionOfExactData) {
  constexpr std::size_t kPoints = 60;
  int solved = 0;
  for (int n = 1; n <= 20; ++n) {
    Columns x(static_cast<std::size_t>(n), std::vector<double>(kPoints));
    std::vector<double> y(kPoints), sig(kPoints);
    std::vector<const double*> columns;
    for (std::size_t v = 0; v < x.size(); ++v) {
      for (std::size_t i = 0; i < kPoints; ++i)  // spread over 0.1 to 0.9, each variable in an order of its own
        x[v][i] = 0.1 + 0.8 * static_cast<double>((i * (2 * v * v + 7) + v * v) % 61) / 61;
      columns.push_back(x[v].data());
    }
    for (std::size_t i = 0; i < kPoints; ++i) sig[i] = 0.5 + 0.1 * static_cast<double>(i % 11);
    for (const CatalogueModel& model : Catalogue(n)) {
      if (n == 1 && model.IDIndex == 59) continue;  // not linear after its transform; see below
      SCOPED_TRACE(model.Definition);
      const std::vector<double> a = TrueCoefficients(model);
      Value(model, columns.data(), kPoints, a.data(), y.data());
      LinearSolution solution = DesignSolve(model, x, LinearizeData(model, x, y), sig);
      const auto [least, most] = std::minmax_element(solution.w.begin(), solution.w.end());
      ASSERT_GT(*least, 0);
      RestoreParameters(model, solution.a);
      // What y and the solve round off, by the condition of the design; the transforms may lose two digits of their
      // own.
      double size = 1;
      for (const double value : a) size += std::abs(value);
      for (std::size_t j = 0; j < a.size(); ++j)
        EXPECT_NEAR(solution.a[j], a[j], 1000 * std::numeric_limits<double>::epsilon() * *most / *least * size);
      ++solved;
    }
  }
  EXPECT_EQ(solved, 298 - 1 + 242 + 3 * 18);
}

TEST(LinearizeData, TakesOneLogarithmOfTheDoubleExponential) {
  const std::vector<double> y = {0.2, 0.9};
  EXPECT_EQ(LinearizeData(*LookupBuiltInModel("exp(-exp(a-b*x))", 1), Columns{{1, 2}}, y),
            (std::vector<double>{std::log(0.2), std::log(0.9)}));
}

TEST(LinearizeData, FaultsWhereTheTransformHasNoValue) {
  const struct {
    const char* ID;
    double y;
  } cases[] = {{"a*x^b", 0},       {"a*x^b", -1},      {"x/(a*x+b)", 0}, {"cos(x+a)", 1},     {"sin(x+a)", 1.5},
               {"1-exp(-x^a)", 1}, {"1-exp(-x^a)", 0}, {"exp(-x^a)", 1}, {"ln(a+b*x)", 1000}, {"1-1/(x^a)", 1}};
  for (const auto& c : cases) {
    const std::vector<double> y = {0.5, c.y};
    EXPECT_THROW(LinearizeData(*LookupBuiltInModel(c.ID, 1), Columns{{1, 2}}, y), NumericFault) << c.ID << " " << c.y;
  }
}

TEST(RestoreParameters, FaultsWhereTheConversionHasNoValue) {
  const struct {
    const char* ID;
    std::vector<double> a;
  } cases[] = {{"a*x^b", {1000, 1}},  {"a*b*x/(1+b*x)", {0, 1}}, {"a*b*x/(1+b*x)", {1, 0}},
               {"a*x/(b+x)", {0, 1}}, {"a*(x-b)", {0, 1}},       {"a*exp((-(x-b)^2)/(2*c^2))", {1, 1, 1}}};
  for (auto c : cases) EXPECT_THROW(RestoreParameters(*LookupBuiltInModel(c.ID, 1), c.a), NumericFault) << c.ID;
}

}  // namespace
}  // namespace quorvex
