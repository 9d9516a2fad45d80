#pragma once

namespace quorvex {

// The gamma function's logarithm and its derivative with all digits, for derivatives; gammln has nine.

// ln Gamma(x) for x > 0, with an error of a few units in the last place of the larger of it and 1. Throws NumericFault
// otherwise. Stirling's series from 10 on (DLMF 5.11.1); below by the recurrence (DLMF 5.5.1) from the power series
// between 1.5 and 2.5, or from that at 1.
double LnGamma(double x);

// The digamma function psi(x), the derivative of ln Gamma(x), for x > 0; throws otherwise. By the recurrence
// (DLMF 5.5.2) from where its asymptotic series serves (DLMF 5.11.2). The error is a few units in the last place of
// the larger of psi and 1/x; beside its zero at 1.4616 it is absolute.
double Digamma(double x);

// psi(x) - ln x for x >= 10, by that series.
double DigammaLessLn(double x);

// psi(a + d) - psi(a) for a, d > 0, which loses no digits where d is small.
double DigammaRise(double a, double d);

// The same less ln(1 + d/a), which is about d/(2 a (a + d)).
double DigammaRiseLessLn(double a, double d);

// ln B(a, b) for a, b > 0 with an error of a few units in the last place of the larger of it and 1: betaln where both
// are 10 or more.
double LnBeta(double a, double b);

}  // namespace quorvex
