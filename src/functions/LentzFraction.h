#pragma once

#include <cmath>

namespace quorvex {

// A continued fraction b0 + a1/(b1 + a2/(b2 + ...)), carried forward one term at a time by the modified Lentz method:
// C and D are the ratios of successive numerators and denominators, and Value is multiplied by C * D at each step, so
// nothing overflows. A ratio that comes out as 0 is moved to a tiny number. When to stop is the caller's business.
// Thompson & Barnett, J. Comput. Phys. 64, 490 (1986). T is double or a complex number.
template <typename T>
struct LentzFraction {
  static constexpr double FPMIN = 1e-30;

  T Value;
  T C;
  T D;

  static LentzFraction StartingWith(T b0) { return {b0, b0, T(0)}; }                   // b0 + a1/(b1 + ...)
  static LentzFraction OneOver(T b1) { return {T(1) / b1, T(1 / FPMIN), T(1) / b1}; }  // 1/(b1 + a2/(b2 + ...))

  // Takes the next term in and returns the factor by which Value changed; 1 means that it has settled.
  T Step(T a, T b) {
    D = T(1) / AwayFromZero(b + a * D);
    C = AwayFromZero(b + a / C);
    const T change = C * D;
    Value = Value * change;
    return change;
  }

 private:
  static T AwayFromZero(T value) {
    using std::abs;
    return abs(value) < FPMIN ? T(FPMIN) : value;
  }
};

}  // namespace quorvex
