#include "engine/TableRange.h"

#include <algorithm>
#include <cmath>

#include "core/NumericFault.h"

namespace quorvex {

std::vector<double> TablePoints(const TableRange& range, double InputMin, double InputMax, bool Extrapolate) {
  if (range.NumPoints < 2) throw NumericFault();
  double start = range.Min, end = range.Max;
  if (!Extrapolate) {
    start = std::max(start, InputMin);
    end = std::min(end, InputMax);
    // The range lies beside the input altogether: the whole input serves instead.
    if (start >= end) {
      start = InputMin;
      end = InputMax;
    }
  }
  const auto last = static_cast<std::size_t>(range.NumPoints - 1);
  std::vector<double> points(last + 1);
  for (std::size_t k = 0; k < last; ++k) {
    const double n = static_cast<double>(k), N = static_cast<double>(last);
    points[k] = range.UseLogSpacing ? start * std::pow(end / start, n / N) : start + n * ((end - start) / N);
  }
  points[last] = end;  // exactly, since an interpolation ends there
  // Logarithmic spacing between numbers of different sign yields NaNs, and ends here.
  if (!std::all_of(points.begin(), points.end(), [](double x) { return std::isfinite(x); })) throw NumericFault();
  return points;
}

std::vector<double> InputMeshPoints(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  values.erase(std::unique(values.begin(), values.end()), values.end());
  if (values.size() < 2) throw NumericFault();
  constexpr std::size_t kMost = kMostMeshDivisions;
  if (values.size() <= kMost) return values;
  std::vector<double> points;
  for (std::size_t k = 0; k < kMost; ++k) points.push_back(values[k * (values.size() - 1) / (kMost - 1)]);
  return points;
}

}  // namespace quorvex
