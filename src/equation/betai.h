#pragma once

namespace quorvex {

// Regularised incomplete beta function, behind Student's t, the F distribution and the binomial distribution:
//   betai(a, b, x) = Gamma(a+b) / (Gamma(a) Gamma(b)) * integral from 0 to x of t^(a-1) (1-t)^(b-1) dt
// for a, b > 0 and 0 <= x <= 1; it is exactly 0 at x = 0 and 1 at x = 1. Throws NumericFault for x outside, for a or b
// at or below 0 with x inside, and where betacf does not settle.
// Uses betacf below x = (a+1)/(a+b+2) and the symmetric form 1 - betai(b, a, 1-x) from there on. The fraction stops at
// a relative change of 3e-7, which is the accuracy to expect of the side that is computed, and an absolute one of the
// other.
double betai(double a, double b, double x);

// Its continued fraction (Abramowitz & Stegun 26.5.8), at most 100 rounds of two terms; throws NumericFault beyond,
// which takes a and b of some 30000 or more, with x near the mean a/(a+b).
double betacf(double a, double b, double x);

}  // namespace quorvex
