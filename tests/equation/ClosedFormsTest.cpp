#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <random>

#include "TableFile.h"
#include "core/FaultFlags.h"
#include "equation/ClosedForms.h"
#include "equation/Evaluator.h"
#include "equation/FormulaText.h"
#include "equation/Parser.h"

namespace quorvex {
namespace {

constexpr double kEpsilon = std::numeric_limits<double>::epsilon();

struct Point {
  double y = 0;
  std::vector<double> dyda;
  bool valueFaults = false, derivativesFault = false;
};

Point At(const CatalogueModel& model, const std::vector<double>& x, const std::vector<double>& a) {
  std::vector<const double*> columns;
  for (const double& value : x) columns.push_back(&value);
  Point point;
  point.dyda.resize(a.size());
  std::vector<double*> derivatives;
  for (double& cell : point.dyda) derivatives.push_back(&cell);
  ClearFaultFlags();
  Value(model, columns.data(), 1, a.data(), &point.y);
  point.valueFaults = FaultFlagsRaised();
  ClearFaultFlags();
  Derivatives(model, columns.data(), 1, a.data(), derivatives.data());
  point.derivativesFault = FaultFlagsRaised();
  ClearFaultFlags();
  return point;
}

long double ByText(const CatalogueModel& model, const std::vector<double>& x, const std::vector<long double>& a) {
  return FormulaText::Evaluate(model.Definition, x, a);
}

// d/da[j] of the formula's text: central differences at steps h, h/2, h/4, h/8, extrapolated to step 0.
long double SlopeByText(const CatalogueModel& model, const std::vector<double>& x, std::vector<long double> a,
                        std::size_t j) {
  const long double centre = a[j], start = 0.01L * std::abs(centre);
  long double tableau[4];
  for (int k = 0; k < 4; ++k) {
    const long double h = std::ldexp(start, -k);
    a[j] = centre + h;
    const long double above = ByText(model, x, a);
    a[j] = centre - h;
    tableau[k] = (above - ByText(model, x, a)) / (2 * h);
    long double four = 4;
    for (int i = k; i-- > 0; four *= 4) tableau[i] = tableau[i + 1] + (tableau[i + 1] - tableau[i]) / (four - 1);
  }
  return tableau[0];
}

// Every model at random points: x on both sides of 1, coefficients mostly within its domain.
template <class Check>
void AtRandomPoints(Check check) {
  std::mt19937 random(20240229);
  const auto between = [&random](double low, double high) {
    return low + (high - low) * static_cast<double>(random()) / 4294967296.0;
  };
  for (int n = 1; n <= 20; ++n) {
    for (const CatalogueModel& model : Catalogue(n)) {
      for (int round = 0; round < 6; ++round) {
        std::vector<double> x(static_cast<std::size_t>(n)), a(static_cast<std::size_t>(model.NumCoefficients));
        for (double& value : x) value = round < 3 ? between(0.1, 0.9) : between(1.1, 3);
        for (double& value : a) value = round % 3 == 2 ? between(-1.5, 1.5) : between(0.2, 1.5);
        SCOPED_TRACE(model.Definition + " at x = " + std::to_string(x[0]) + ", a = " + std::to_string(a[0]));
        check(model, x, a);
      }
    }
  }
}

// The model's definition as a user's model would be run: compiled, and evaluated on the stack. Nothing at a fault.
std::optional<double> Compiled(const CatalogueModel& model, const std::vector<double>& x,
                               const std::vector<double>& a) {
  const Dialect dialect = model.NumVariables == 1 ? Dialect::OneVariable : Dialect::SeveralVariables;
  double y = 0;
  const bool ok = Evaluator().Evaluate(Parser(dialect, {}).Compile({model.Definition}), x, a, {}, y);
  return ok ? std::optional(y) : std::nullopt;
}

TEST(Value, AgreesWithTheTextOfTheDefinition) {
  int compared = 0, faulting = 0;
  AtRandomPoints([&](const CatalogueModel& model, const std::vector<double>& x, const std::vector<double>& a) {
    const auto exact = static_cast<double>(ByText(model, x, {a.begin(), a.end()}));
    const Point point = At(model, x, a);
    const std::optional<double> compiled = Compiled(model, x, a);
    EXPECT_EQ(point.valueFaults, !std::isfinite(exact));
    EXPECT_EQ(point.valueFaults, !compiled);
    if (!std::isfinite(exact)) return void(++faulting);
    // Rounding of the terms, and of an exponent before it is raised, as the condition of the formula lets them count.
    double scale = std::abs(exact);
    for (std::size_t j = 0; j < a.size(); ++j) scale += std::abs(a[j] * point.dyda[j]);
    EXPECT_NEAR(point.y, exact, 8 * kEpsilon * scale);
    EXPECT_NEAR(point.y, *compiled, 16 * kEpsilon * scale);
    ++compared;
  });
  EXPECT_GT(compared, 3500);
  EXPECT_GT(faulting, 10);  // such as ln(x-a) at x < a
}

TEST(Derivatives, AgreeWithDifferencesOfTheText) {
  AtRandomPoints([&](const CatalogueModel& model, const std::vector<double>& x, const std::vector<double>& a) {
    const Point point = At(model, x, a);
    if (point.valueFaults) return;
    for (std::size_t j = 0; j < a.size(); ++j) {
      const auto slope = static_cast<double>(SlopeByText(model, x, {a.begin(), a.end()}, j));
      if (!std::isfinite(slope)) continue;  // the step left the domain
      // Four levels from a step of 1 % leave some 1e-12 of the largest the slope could be in the neighbourhood.
      const double scale = std::abs(slope) + std::abs(point.y / a[j]) + std::abs(1 / a[j]);
      EXPECT_NEAR(point.dyda[j], slope, 1e-10 * scale) << "coefficient " << j;
    }
  });
}

TEST(ClosedForms, GiveAPointTheSameBitsInAnyBlock) {
  constexpr std::size_t kPoints = 600;
  for (int n : {1, 2, 3, 20}) {
    std::vector<std::vector<double>> x(static_cast<std::size_t>(n), std::vector<double>(kPoints));
    std::vector<const double*> columns;
    for (std::size_t v = 0; v < x.size(); ++v) {
      for (std::size_t i = 0; i < kPoints; ++i)
        x[v][i] = 0.001 * static_cast<double>(i + 1) + 0.01 * static_cast<double>(v);
      columns.push_back(x[v].data());
    }
    for (const CatalogueModel& model : Catalogue(n)) {
      const auto count = static_cast<std::size_t>(model.NumCoefficients);
      std::vector<double> a(count), y(kPoints), alone(kPoints);
      for (std::size_t j = 0; j < count; ++j) a[j] = 0.3 + 0.07 * static_cast<double>(j);
      std::vector<std::vector<double>> dyda(count, std::vector<double>(kPoints));
      std::vector<double*> derivatives;
      for (auto& column : dyda) derivatives.push_back(column.data());
      ValueAndDerivatives(model, columns.data(), kPoints, a.data(), y.data(), derivatives.data());
      Value(model, columns.data(), kPoints, a.data(), alone.data());
      for (const std::size_t i : {0U, 255U, 256U, 511U, 599U}) {
        std::vector<double> one;
        for (const auto& column : x) one.push_back(column[i]);
        const Point point = At(model, one, a);
        if (point.valueFaults) continue;
        EXPECT_EQ(y[i], point.y) << model.Definition << " point " << i;
        EXPECT_EQ(alone[i], point.y) << model.Definition << " point " << i;
        for (std::size_t j = 0; j < count; ++j) EXPECT_EQ(dyda[j][i], point.dyda[j]) << model.Definition << " " << i;
      }
    }
  }
}

TEST(Derivatives, AreLimitsAtTheBordersOfADomain) {
  for (const auto& row : TableRows("catalogue_borders.txt", 6)) {
    SCOPED_TRACE(row[1] + " at " + row[2] + ", a = " + row[3]);
    const Point point = At(*LookupBuiltInModel(row[1], std::stoi(row[0])), Numbers(row[2]), Numbers(row[3]));
    const std::vector<double> dyda = Numbers(row[5]);
    EXPECT_FALSE(point.valueFaults);
    EXPECT_DOUBLE_EQ(point.y, Number(row[4]));
    EXPECT_EQ(point.derivativesFault, dyda.empty());
    for (std::size_t j = 0; j < dyda.size(); ++j) EXPECT_DOUBLE_EQ(point.dyda[j], dyda[j]) << j;
  }
}

TEST(Value, FaultsWhereTheFormulaHasNone) {
  const struct {
    const char* ID;
    double x, a;
  } cases[] = {{"a+b*ln(x)", 0, 1},    {"First order logarithm", -1, 1},
               {"a+b/x", 0, 1},        {"a+b*x^.5", -1, 1},
               {"a+b*x/ln(x)", 1, 1},  {"ln(x-a)", 1, 1},
               {"1/(x+a)", -1, 1},     {"a*x^b", -1, 0.5},
               {"a*exp(b*x)", 1e4, 1}, {"1-1/(x^a)", 0, 1},
               {"a+b*x^1.5", -4, 1}};
  for (const auto& c : cases) {
    const CatalogueModel& model = *LookupBuiltInModel(c.ID, 1);
    EXPECT_TRUE(At(model, {c.x}, std::vector(static_cast<std::size_t>(model.NumCoefficients), c.a)).valueFaults)
        << c.ID;
  }
}

TEST(GetXBasisFunction, GivesTheTermsOfLinearModels) {
  AtRandomPoints([&](const CatalogueModel& model, const std::vector<double>& x, const std::vector<double>& a) {
    if (model.Transform != YTransform::None || model.Restore != Restoration::None) return;
    std::vector<double> afunc(model.Basis.size());
    GetXBasisFunction(model, x.data(), afunc.data());
    double sum = 0, scale = 0;
    for (std::size_t j = 0; j < a.size(); ++j) {
      sum += a[j] * afunc[j];
      scale += std::abs(a[j] * afunc[j]);
    }
    EXPECT_NEAR(sum, At(model, x, a).y, 16 * kEpsilon * scale);
  });
}

// Of the models that a transform of Y makes linear; what the whole way gives back is tested with the linear solver.
TEST(GetXBasisFunction, GivesTheLinearisedForm) {
  const double x = 0.4, lnx = std::log(x);
  const struct {
    const char* ID;
    std::vector<double> afunc;
  } cases[] = {{"a*x^2+b*x+c", {std::pow(x, 2), x, 1}},
               {"a*cos(x)+b*sin(x)", {std::cos(x), std::sin(x)}},
               {"Second order inverse polynomial", {1, 1 / x, 1 / std::pow(x, 2)}},
               {"a*(1+x)^b", {1, std::log(1.4)}},
               {"a*x^(b*x)", {1, x * lnx}},
               {"a*x^(b/x)", {1, lnx / x}},
               {"exp(x-a)", {-1}},
               {"a*(x-b)", {x, -1}},
               {"cos(x+a)", {1, x}},
               {"x/(a+b*x-c*x^2)", {1 / x, 1, -x}},
               {"x/(a+b*x+c*sqr(x))", {1 / x, 1, 1 / std::pow(x, 0.5)}},
               {"a*x^b*(1-x)^c", {1, lnx, std::log(0.6)}},
               {"exp(-exp(a-b*x))", {1, -x}},
               {"a+b*x^.5*ln(x)+c*ln(x)/x^2", {1, std::pow(x, 0.5) * lnx, lnx / std::pow(x, 2)}}};
  for (const auto& c : cases) {
    std::vector<double> afunc(c.afunc.size());
    GetXBasisFunction(*LookupBuiltInModel(c.ID, 1), &x, afunc.data());
    for (std::size_t j = 0; j < afunc.size(); ++j) EXPECT_DOUBLE_EQ(afunc[j], c.afunc[j]) << c.ID << " " << j;
  }
}

}  // namespace
}  // namespace quorvex
