#pragma once

namespace quorvex {

// Gamma function, factorials and incomplete gamma functions; every chi-square probability and the error function rest
// on them. Bad arguments and series that don't settle throw NumericFault; results beyond a double's range show in the
// processor's flags.

// ln Gamma(x) for x > 0; throws otherwise (there is no reflection to negative x).
// Lanczos' formula with g = 5 and six coefficients (SIAM J. Numer. Anal. B 1, 86, 1964), cut to 15 digits:
// absolute error below 3e-10, so Gamma(x) is good to that relative error. From 0.5 to 2.5, where ln Gamma has its
// zeros, its power series at 1 and 2 (Abramowitz & Stegun 6.1.33), good to the last digits. Where ln Gamma is large,
// its rounding adds to that.
double gammln(double x);

// ln Gamma(1 + d) for |d| <= 1/2, to a few units in the last place however small d is.
double LnGammaOnePlus(double d);

// ln Gamma(a + d) - ln Gamma(a) for a > 0 and 0 < d <= 0.1, to a relative 1e-9 however small d is. By recurrence
// (Abramowitz & Stegun 6.1.15) from where Stirling's series holds.
double LnGammaRise(double a, double d);

// ln Gamma(x) less (x - 1/2) ln x - x + ln(2 pi)/2, for x >= 10: Stirling's series (Abramowitz & Stegun 6.1.41), to
// 1e-16.
double StirlingRest(double x);

// The logarithm of the beta function, Gamma(a) Gamma(b) / Gamma(a + b), for a, b > 0; throws otherwise. Large
// logarithms are taken off each other by Stirling's series, so the error stays below 1e-9 absolute, or 2e-16 of a large
// value.
double betaln(double a, double b);

// Regularised incomplete gamma functions:
//   gammp(a, x) = 1/Gamma(a) * integral from 0 to x of exp(-t) t^(a-1) dt
//   gammq(a, x) = 1 - gammp(a, x)
// for a > 0 and x >= 0; throws otherwise. gser for x < a + 1, gcf above (Abramowitz & Stegun 6.5.29 and 6.5.31); from
// a = 1000 on the integral over the tail, in bounded time. What stands before them is from a = 10 on Stirling's series
// in the form of Loader (see Deviance).
// Relative error below 1e-9 (of gammln) of the one of the two that is summed (P below a + 1, Q above). The other is its
// difference from 1. That would be all rounding for Q at a small a, where x^a/Gamma(1 + a) is near 1; up to 0.1 the
// difference is taken term by term (Abramowitz & Stegun 6.5.29).
double gammp(double a, double x);
double gammq(double a, double x);

// P(a, x) by its power series, at most 2000 terms; throws beyond, which takes a x near an a above 50000.
// 0 for x at or below 0.
double gser(double a, double x);

// Q(a, x) by its continued fraction, at most 2000 rounds; throws beyond. For x >= a + 1 (it settles too slowly below).
double gcf(double a, double x);

// n!; throws for n < 0. Up to 32 from a table, good to the last digit or two; above by exp(gammln(n + 1)), to about 10
// digits. Overflows from n = 171 on.
double factrl(int n);

// ln n! by gammln(n + 1); throws for n < 0.
double factln(int n);

}  // namespace quorvex
