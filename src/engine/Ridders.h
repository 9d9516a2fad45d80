#pragma once

#include <array>
#include <cmath>
#include <cstddef>

#include "engine/ModelSetup.h"

namespace quorvex {

// Ridders' extrapolation of centred difference quotients to step 0: at most ten quotients, each of a step 1.4 times
// smaller; when the diagonal of the tableau grows to twice the error estimate, higher orders only add noise.
// Source: C. J. F. Ridders, Adv. Eng. Software 4 (1982) 75.
inline constexpr std::size_t kRidderRounds = 10;
inline constexpr double kRidderShrink = 1.4, kRidderFactor = 1.96, kRidderSafe = 2.0;

// The first step, some 4e-6 of a and such that a + h is a double, lest its rounding go into the quotient.
inline double InitialStep(double a) {
  const double h = a == 0 ? 3.684e-6 : a * 3.684e-6;
  const double moved = a + h;
  return moved - a;
}

// The steps of differences by a coefficient that stay inside its bounds.
struct DifferenceStep {
  double Central = 0;  // InitialStep, shortened where a bound is nearer
  double Inward = 0;   // where a bound is too near for that: the step of kOneSided, with its sign; else 0
};

// The derivative at a from the values at a, a + h, ..., a + 4h, times h, right to the fourth order of h (B. Fornberg,
// Math. Comp. 51, 1988).
inline constexpr std::array<double, 5> kOneSided = {-25.0 / 12, 4, -3, 4.0 / 3, -1.0 / 4};

// Of values weighted so, and their absolute values, summed: whether the sum is rounding. A slope of 0 must come out as
// 0, since a search would take its sign for a way off the bound.
inline bool IsRounding(double sum, double absolute) { return std::abs(sum) <= 0x1p-50 * absolute; }

inline DifferenceStep StepInside(const Coefficient& coefficient, double a) {
  const double h = InitialStep(a), size = std::abs(h);
  const double below = a - coefficient.Minimum, above = coefficient.Maximum - a;
  const double room = below < above ? below : above;
  // Outside there is nothing to stay inside of.
  if (room >= size || room < 0) return {h, 0};
  if (room >= size / 16) return {0.9 * room, 0};
  const double wide = below < above ? above : below, step = std::fmin(100 * size, 0.24 * wide);
  return {0, below < above ? step : -step};
}

}  // namespace quorvex
