#pragma once

namespace quorvex {

// Gamma function, factorials and incomplete gamma functions; every chi-square probability and the error function rest
// on them. Bad arguments and series that don't settle throw NumericFault; results beyond a double's range show in the
// processor's flags.

// ln Gamma(x) for x > 0; throws otherwise (there is no reflection to negative x).
// Lanczos' formula with g = 5 and six coefficients (SIAM J. Numer. Anal. B 1, 86, 1964), cut to 15 digits:
// absolute error below 3e-10, so Gamma(x) is good to that relative error, and ln Gamma near its zeros 1 and 2 is not
// good to a relative one. Where ln Gamma itself is large, its rounding adds to that.
double gammln(double x);

// Regularised incomplete gamma functions:
//   gammp(a, x) = 1/Gamma(a) * integral from 0 to x of exp(-t) t^(a-1) dt
//   gammq(a, x) = 1 - gammp(a, x)
// for a > 0 and x >= 0; throws otherwise. gser for x < a + 1, gcf above (Abramowitz & Stegun 6.5.29 and 6.5.31).
// The sums stop at a relative change of 3e-7, so that and a little more (1e-6 for P at a of hundreds) is the accuracy
// to expect: relative for the one of the two that is summed (P below a + 1, Q above), absolute for its complement.
double gammp(double a, double x);
double gammq(double a, double x);

// P(a, x) by its power series, at most 100 terms; throws beyond, which happens for x near a from a = 396 on.
// 0 for x at or below 0.
double gser(double a, double x);

// Q(a, x) by its continued fraction, at most 100 rounds; throws beyond, which happens for
// x near a from a = 7032 on. For x >= a + 1 (it settles too slowly below).
double gcf(double a, double x);

// n!; throws for n < 0. Up to 32 from a table, good to the last digit or two; above by exp(gammln(n + 1)), to about 10
// digits. Overflows from n = 171 on.
double factrl(int n);

// ln n! by gammln(n + 1); throws for n < 0.
double factln(int n);

}  // namespace quorvex
