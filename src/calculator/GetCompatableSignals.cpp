#include "calculator/GetCompatableSignals.h"

#include <algorithm>
#include <cmath>

#include "calculator/CalculatorFault.h"
#include "calculator/CurveCalculus.h"

namespace quorvex {
namespace {

// The points in order, those with the same X as one.
CurvePoints Cleaned(SeriesTable curve) {
  const CurvePoints sorted = SortedByX(curve);
  CurvePoints points;
  for (std::size_t i = 0; i < sorted.X.size();) {
    const double x = sorted.X[i];
    const std::size_t start = i;
    double sum = 0;
    for (; i < sorted.X.size() && sorted.X[i] == x; ++i) sum += sorted.Y[i];
    points.X.push_back(x);
    points.Y.push_back(sum / static_cast<double>(i - start));
  }
  return points;
}

// Each X of either curve from the larger of the first ones on, while both have one.
std::vector<double> MergedGrid(std::span<const double> x1, std::span<const double> x2) {
  std::vector<double> grid;
  double g = std::max(x1.front(), x2.front());
  if (g > std::min(x1.back(), x2.back())) return grid;
  for (std::size_t i = 1, j = 1;;) {
    grid.push_back(g);
    i = getnextindex(x1, g, i);
    j = getnextindex(x2, g, j);
    if (i > x1.size() || j > x2.size()) return grid;
    g = std::min(x1[i - 1], x2[j - 1]);
  }
}

// The curve on a grid that lies between its ends.
std::vector<double> OnGrid(const CurvePoints& curve, std::span<const double> grid) {
  std::vector<double> values;
  values.reserve(grid.size());
  std::size_t next = 1;
  for (const double g : grid) {
    next = getnextindex(curve.X, g, next);
    const double x1 = curve.X[next - 2], y1 = curve.Y[next - 2];  // the last point that is not behind g
    // At a point of its own the curve has just that value, however steep it is.
    values.push_back(g == x1 ? y1 : (g - x1) * ((curve.Y[next - 1] - y1) / (curve.X[next - 1] - x1)) + y1);
  }
  return values;
}

}  // namespace

std::size_t getnextindex(std::span<const double> x, double value, std::size_t start) {
  while (start <= x.size() && x[start - 1] <= value) ++start;
  return start;
}

CompatableSignals GetCompatableSignals(SeriesTable first, SeriesTable second) {
  CompatableSignals both;
  if (!first.X.empty() && !second.X.empty()) {
    const CurvePoints one = Cleaned(first), two = Cleaned(second);
    both.X = MergedGrid(one.X, two.X);
    both.Y1 = OnGrid(one, both.X);
    both.Y2 = OnGrid(two, both.X);
  }
  const auto finite = [](double y) { return std::isfinite(y); };
  if (both.X.empty() || !std::ranges::all_of(both.Y1, finite) || !std::ranges::all_of(both.Y2, finite))
    throw CalculatorFault(CalculatorError::NoCommonGrid);
  return both;
}

}  // namespace quorvex
