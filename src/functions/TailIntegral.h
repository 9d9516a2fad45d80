#pragma once

#include <algorithm>
#include <array>
#include <cmath>

#include "functions/Elementary.h"

namespace quorvex {

// The integral from 0 to `end` of exp(logarithm(w)), where the logarithm is concave and about 0 at w = 0, and `width`
// is of the order of the distance at which the function has fallen, or farther. That is the tail of a distribution in
// units of its density where the tail begins.
// The range is cut where nothing is left, and the tanh-sinh rule of 84 steps takes it to some 14 digits
// (H. Takahasi & M. Mori, Publ. RIMS 9, 721, 1974).
template <class Logarithm>
double TailIntegral(Logarithm logarithm, double width, double end) {
  constexpr double kNothing = -40, kFar = -80, kStretch = 1.4;
  double range = std::min(width, end);
  while (logarithm(range) < kFar) range /= kStretch;
  while (range < end && logarithm(range) > kNothing) range = std::min(kStretch * range, end);

  // Places from 0 to 1 and weights; place and weight at -t mirror those at t.
  constexpr int kSteps = 42;
  struct Rule {
    std::array<double, kSteps + 1> FromEdge, Weight;
  };
  static const Rule rule = [] {
    Rule made;
    constexpr double kStep = 0.075;
    for (std::size_t i = 0; i <= kSteps; ++i) {
      const double t = static_cast<double>(i) * kStep;
      const double u = kPi / 2 * (Exp(t) - Exp(-t)) / 2;
      made.FromEdge[i] = 1 / (1 + Exp(2 * u));
      made.Weight[i] = kStep * kPi / 2 * (Exp(t) + Exp(-t)) * made.FromEdge[i] * (1 - made.FromEdge[i]);
    }
    return made;
  }();

  double sum = rule.Weight[0] * Exp(logarithm(range / 2));
  for (std::size_t i = 1; i <= kSteps; ++i)
    sum += rule.Weight[i] * (Exp(logarithm(range * rule.FromEdge[i])) + Exp(logarithm(range * (1 - rule.FromEdge[i]))));
  return sum * range;
}

}  // namespace quorvex
