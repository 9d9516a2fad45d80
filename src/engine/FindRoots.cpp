#include "engine/FindRoots.h"

#include <cmath>
#include <utility>

namespace quorvex {

std::vector<double> FindRoots(const std::function<std::optional<double>(double)>& function, double XMin, double XMax,
                              int Intervals) {
  if (XMax < XMin) std::swap(XMin, XMax);
  // Less than doubles resolve, so that halving goes on until x moves no more.
  const double tolerance = 1e-16 * (std::abs(XMin) + std::abs(XMax)) / 2;
  // The root behind `from`, where the function has the sign of `sign` up to the root and the other one at from + step.
  const auto bisect = [&](double from, double step, double sign) {
    for (int halving = 0; halving < 100; ++halving) {
      step /= 2;
      const std::optional<double> d = function(from + step);
      if (d == 0.0) return from + step;
      // A place without a value counts as lying beyond the root.
      if (d && std::signbit(*d) == std::signbit(sign)) from += step;
      if (step < tolerance) break;
    }
    return from;
  };

  std::vector<double> Roots;
  const auto add = [&](double root) {
    if (Roots.empty() || Roots.back() != root) Roots.push_back(root);
  };
  double lastX = 0, last = 0;  // the last end with a value; 0 where there is none yet, or it is a root
  for (int k = 0; k <= Intervals; ++k) {
    // The last end is XMax itself, which the product might miss by a rounding.
    const double x = k == Intervals ? XMax : XMin + (XMax - XMin) * (static_cast<double>(k) / Intervals);
    const std::optional<double> d = function(x);
    // A gap: the ends on both sides of it are compared with each other.
    if (!d) continue;
    if (*d == 0)
      add(x);
    else if (last != 0 && std::signbit(*d) != std::signbit(last))
      add(bisect(lastX, x - lastX, last));
    lastX = x;
    last = *d;
  }
  return Roots;
}

}  // namespace quorvex
