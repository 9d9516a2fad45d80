#pragma once

#include "functions/betai.h"

namespace quorvex {

// Densities of distributions, the derivatives of their functions by the argument, with all digits that the rounding of
// a logarithm of some hundred leaves; and the derivative of the incomplete gamma function by its parameter. Parameters
// that are not positive throw NumericFault; a pole shows in the processor's flags.

// d/dx P(a, x) = x^(a-1) exp(-x) / Gamma(a) for x >= 0. From a = 10 on by Stirling's series in Loader's form (see
// Deviance).
double GammaDensity(double a, double x);

// d/da P(a, x) for x >= 0. Below x = exp(psi(a + 1)) by the derivative of the power series P(a, x) =
// sum of x^(a+n) exp(-x) / Gamma(a+n+1) term by term (DLMF 8.11.4), above it by the integral over the tail of
// density(t) (ln t - psi(a)): in both there is but one sign. From a = 1000 on by the integral on both sides.
// Relative error some 1e-13.
double GammaByParameter(double a, double x);

// d/dx of the incomplete beta function betai(a, b, x): x^(a-1) y^(b-1) / B(a, b), where y = 1 - x.
double BetaDensity(double a, double b, Parts parts);

// d/da of betai(a, b, x), in the same two ways: at a small a and x by the derivative of the series x^(a+n) y^b
// Gamma(a+b+n) / (Gamma(a+n+1) Gamma(b)) (DLMF 8.17.8) term by term, else by the integral of density(t) (ln t - psi(a)
// + psi(a + b)) over the side on which it has but one sign. The derivative by b is the negative of that with a and b, x
// and y turned. Relative error below 1e-12 for a and b from 0.05 to some thousand.
double BetaByParameter(double a, double b, Parts parts);

// d/dv of betai(a, b, x), where a = v/2, and x = v/(v + c) moves with v: that is a distribution by its degrees of
// freedom, of the variance ratio and of Student's t. By the integral over the part below x, or above it with the other
// sign, of density(t) (psi(a + b) - psi(a) - ln(1 + b/a) + 1 + ln r - r)/2, where r = t (1 + b/a), in whose brackets
// nothing cancels but near their zeros. Relative error some 1e-13; near a zero of the derivative that of the two parts
// whose difference it is.
double BetaByFreedom(double a, double b, Parts parts);

// d/dv of the probability that Student's t with v degrees of freedom is between -t and t.
double StudentByFreedom(double t, double v);

// The density of Student's t with v degrees of freedom on both sides of 0: twice that of t.
double StudentDensity(double t, double v);

}  // namespace quorvex
