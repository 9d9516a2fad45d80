#pragma once

namespace quorvex {

// Logarithm and exponential where the straightforward formula would subtract nearly equal numbers. They are made of
// those of Elementary.h, and fault as these do.

// ln(1 + x) to a few units in the last place, however small x is.
// Method: W. Kahan's quotient of two errors that cancel (N. J. Higham, Accuracy and Stability of Numerical Algorithms,
// section 1.14.1, has it for the exponential).
double LnOnePlus(double x);

// exp(x) - 1 in the same way.
double ExpMinusOne(double x);

// w - ln(1 + w) for w > -1, which is w^2/2 near 0; to a few units in the last place there.
double LessLnOnePlus(double w);

// n ln(n/m) + m - n for n, m > 0: how much less likely an event is than at its peak, as a logarithm. Good to a few
// units in the last place where n and m are near each other, and it is near 0.
// Source: C. Loader, Fast and Accurate Computation of Binomial Probabilities, 2000.
double Deviance(double n, double m);

}  // namespace quorvex
