#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>

#include "calculator/CurveCalculus.h"
#include "calculator/Curves.h"

namespace quorvex {
namespace {

using Function = std::function<double(double)>;

// n steps over 0 to 2 that are equal, or by turns a half and three halves of that.
CurvePoints Sampled(const Function& f, int n, bool even) {
  CurvePoints points;
  const double h = 2.0 / n;
  for (int i = 0; i <= n; ++i) {
    points.X.push_back(i * h - (!even && i % 2 == 1 ? h / 2 : 0));
    points.Y.push_back(f(points.X.back()));
  }
  return points;
}

// How the largest error falls with the step, as a power of it.
double Order(const Function& f, const Function& exact, bool even, bool ends,
             const std::function<Column(SeriesTable)>& compute) {
  const auto error = [&](int n) {
    const CurvePoints points = Sampled(f, n, even);
    const Column y = compute({points.X, points.Y});
    double largest = 0;
    for (std::size_t i = ends ? 0 : 1; i < y.size() - (ends ? 0 : 1); ++i)
      largest = std::max(largest, std::abs(y[i] - exact(points.X[i])));
    return largest;
  };
  return std::log2(error(256) / error(512));
}

TEST(CurveCalculus, ConvergesInTheOrderOfItsMethod) {
  const Function f = [](double x) { return std::exp(x) * std::sin(3 * x); };
  const Function slope = [](double x) { return std::exp(x) * (std::sin(3 * x) + 3 * std::cos(3 * x)); };
  const Function second = [](double x) { return std::exp(x) * (6 * std::cos(3 * x) - 8 * std::sin(3 * x)); };
  const Function area = [](double x) { return (std::exp(x) * (std::sin(3 * x) - 3 * std::cos(3 * x)) + 3) / 10; };
  const auto d1 = [](SeriesTable t) { return Derivative(t, DerivativeMode::First); };
  const auto d2 = [](SeriesTable t) { return Derivative(t, DerivativeMode::Second); };
  const struct {
    const char* What;
    const Function& Exact;
    bool Even, Ends;
    std::function<Column(SeriesTable)> Compute;
    double Expected;
  } cases[] = {
      {"slope, equal steps", slope, true, true, d1, 2},    {"slope, uneven", slope, false, true, d1, 2},
      {"second, equal steps", second, true, false, d2, 2}, {"second, the ends", second, true, true, d2, 1},
      {"second, uneven", second, false, true, d2, 1},      {"area, equal steps", area, true, true, Integral, 2},
      {"area, uneven", area, false, true, Integral, 2},
  };
  for (const auto& c : cases) EXPECT_NEAR(Order(f, c.Exact, c.Even, c.Ends, c.Compute), c.Expected, 0.1) << c.What;
}

TEST(CurveCalculus, IsExactForAParabolaAtEveryPoint) {
  const Column x = {-3, -1, 0, 4, 5, 13};
  Column y;
  for (const double at : x) y.push_back(2 * at * at - 3 * at + 1);
  const Column slopes = Derivative({x, y}, DerivativeMode::First),
               curvature = Derivative({x, y}, DerivativeMode::Second);
  for (std::size_t i = 0; i < x.size(); ++i) {
    EXPECT_DOUBLE_EQ(slopes[i], 4 * x[i] - 3);
    EXPECT_DOUBLE_EQ(curvature[i], 4);
  }
  // Downward it is the same curve.
  const Column back(x.rbegin(), x.rend()), values(y.rbegin(), y.rend());
  EXPECT_DOUBLE_EQ(Derivative({back, values}, DerivativeMode::First)[0], 4 * 13 - 3);
  EXPECT_EQ(Integral({Column{0, 1, 3}, Column{1, 3, 5}}), (Column{0, 2, 10}));
  EXPECT_EQ(Integral({Column{7}, Column{1}}), Column{0});
}

TEST(CurveCalculus, RefusesWhatHasNoSlope) {
  const auto error = [](Column x, Column y) { return ErrorOf([&] { Derivative({x, y}, DerivativeMode::First); }); };
  EXPECT_EQ(error({1, 2, 3}, {1, 2, 3}), CalculatorError::FourPointsNeeded);
  EXPECT_EQ(error({1, 2, 2, 3}, {1, 2, 3, 4}), CalculatorError::DivisionByZero);
  EXPECT_EQ(error({1, 2, 1, 3}, {1, 2, 3, 4}), CalculatorError::DivisionByZero);
  EXPECT_EQ(error({0, 1e-300, 2e-300, 3e-300}, {0, 1e300, 0, 1}), CalculatorError::Overflow);
  EXPECT_EQ(ErrorOf([] { Integral({Column{0, 1e300}, Column{1e300, 1e300}}); }), CalculatorError::Overflow);
  EXPECT_EQ(Integral({Column{0, 1}, Column{1.7e308, 1.7e308}})[1], 1.7e308);
}

TEST(CurveCalculus, KeepsPointsOnTheBoundsAndTheOrderOfEqualX) {
  const Column x = {3, 1, 2, 1}, y = {30, 10, 20, 11};
  const CurvePoints part = Section({x, y}, 1, 2), sorted = SortedByX({x, y});
  EXPECT_EQ(part.X, (Column{1, 2, 1}));
  EXPECT_EQ(part.Y, (Column{10, 20, 11}));
  EXPECT_EQ(sorted.X, (Column{1, 1, 2, 3}));
  EXPECT_EQ(sorted.Y, (Column{10, 11, 20, 30}));
}

}  // namespace
}  // namespace quorvex
