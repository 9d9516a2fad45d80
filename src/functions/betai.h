#pragma once

namespace quorvex {

// A number from 0 to 1 and what it lacks of 1, which the number itself can't tell when it is near 1.
struct Parts {
  double X, Y;
};

// Regularised incomplete beta function, behind Student's t, the F distribution and the binomial distribution:
//   betai(a, b, x) = Gamma(a+b) / (Gamma(a) Gamma(b)) * integral from 0 to x of t^(a-1) (1-t)^(b-1) dt
// for a, b > 0 and 0 <= x <= 1; it is exactly 0 at x = 0 and 1 at x = 1. Throws NumericFault for x outside, and for a
// or b at or below 0 with x inside.
// Uses betacf below x = (a+1)/(a+b+2) and the symmetric form 1 - betai(b, a, 1-x) from there on; where a and b are both
// 1000 or more, an integral over the tail takes the fraction's place, in bounded time. What stands before them comes
// from betaln, or from a and b of 10 on from Stirling's series in the form of Loader (see Deviance). Relative error of
// the side that is computed some 1e-9, where a and b are 1000 or more 1e-12 but for what x loses by its own rounding.
// Where b is so small that the value is near 0 beyond the mean, too, up to 0.1, the difference from 1 is taken term by
// term, in the power series of the other side (Abramowitz & Stegun 26.5.4).
double betai(double a, double b, double x);
double betai(double a, double b, Parts parts);

// Its continued fraction (Abramowitz & Stegun 26.5.8), two terms in a round. That even part of the fraction is written
// so that nothing cancels as x goes to 1 (A. R. DiDonato & A. H. Morris, ACM Trans. Math. Softw. 18, 360, 1992). At
// most 5000 rounds; throws NumericFault beyond, which takes a and b of millions, with x near the mean a/(a+b).
double betacf(double a, double b, Parts parts);

}  // namespace quorvex
