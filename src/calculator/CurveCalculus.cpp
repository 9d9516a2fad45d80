#include "calculator/CurveCalculus.h"

#include <algorithm>
#include <numeric>

#include "calculator/CalculatorFault.h"

namespace quorvex {
namespace {

double Quotient(double a, double b) {
  if (b == 0) throw CalculatorFault(CalculatorError::DivisionByZero);
  return a / b;
}

// The parabola through the points i - 1, i and i + 1, by its steps and slopes.
struct Parabola {
  Parabola(SeriesTable curve, std::size_t i)
      : before(curve.X[i] - curve.X[i - 1]),
        behind(curve.X[i + 1] - curve.X[i]),
        slopeBefore(Quotient(curve.Y[i] - curve.Y[i - 1], before)),
        slopeBehind(Quotient(curve.Y[i + 1] - curve.Y[i], behind)),
        curvature(Quotient(slopeBehind - slopeBefore, before + behind)) {}

  const double before, behind, slopeBefore, slopeBehind;
  const double curvature;  // half its second derivative
};

}  // namespace

CurvePoints SortedByX(SeriesTable curve) {
  CurvePoints points{{curve.X.begin(), curve.X.end()}, {curve.Y.begin(), curve.Y.end()}};
  if (std::ranges::is_sorted(curve.X)) return points;
  std::vector<std::size_t> order(curve.X.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::ranges::stable_sort(order, {}, [&](std::size_t i) { return curve.X[i]; });
  for (std::size_t i = 0; i < order.size(); ++i) {
    points.X[i] = curve.X[order[i]];
    points.Y[i] = curve.Y[order[i]];
  }
  return points;
}

CurvePoints Section(SeriesTable curve, double min, double max) {
  CurvePoints points;
  for (std::size_t i = 0; i < curve.X.size(); ++i) {
    if (curve.X[i] < min || curve.X[i] > max) continue;
    points.X.push_back(curve.X[i]);
    points.Y.push_back(curve.Y[i]);
  }
  return points;
}

std::vector<double> Integral(SeriesTable curve) {
  std::vector<double> sums(curve.X.size());
  for (std::size_t i = 1; i < sums.size(); ++i)
    sums[i] = Finite(sums[i - 1] + (curve.X[i] - curve.X[i - 1]) * (curve.Y[i] / 2 + curve.Y[i - 1] / 2));
  return sums;
}

std::vector<double> Derivative(SeriesTable curve, DerivativeMode mode) {
  const std::size_t n = curve.X.size();
  constexpr std::size_t kFewest = 4;
  if (n < kFewest) throw CalculatorFault(CalculatorError::FourPointsNeeded);
  std::vector<double> slopes(n);
  for (std::size_t i = 1; i + 1 < n; ++i) {
    const Parabola at(curve, i);
    const auto derivative = [&](double slope, double step) {
      return Finite(mode == DerivativeMode::First ? slope + step * at.curvature : 2 * at.curvature);
    };
    slopes[i] = derivative(at.slopeBefore, at.before);
    if (i == 1) slopes[0] = derivative(at.slopeBefore, -at.before);
    if (i + 2 == n) slopes[n - 1] = derivative(at.slopeBehind, at.behind);
  }
  return slopes;
}

}  // namespace quorvex
