#pragma once

#include <cstddef>

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

}  // namespace quorvex
