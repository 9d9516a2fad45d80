#pragma once

#include <cmath>
#include <cstddef>

namespace quorvex {

// The elementary functions as the equation language, the built-in models and their derivatives call them, all through
// this one place, so that a model gives the same bits whichever way it is evaluated. They are the program's own and
// made of IEEE operations alone, so that these bits are also the same on every machine; an error below 0.96 units in
// the last place is the price, where a correctly rounded result has 0.5.
//
// Special values are those of the C standard (Annex F). The processor's flags (core/FaultFlags.h) are raised for
// faults and for nothing else: overflow where the result overflows, division by zero for Ln(0), Log10(0) and 0 to a
// negative power, invalid for Ln and Log10 of a negative number, Sin, Cos and Tan of an infinite one, and a negative
// number to a power that is not whole. Results then are infinite or NaN.
double Exp(double x);
double Ln(double x);
double Log10(double x);  // exact at the powers of ten
inline double Sqr(double x) { return std::sqrt(x); }
double Sin(double x);
double Cos(double x);
double Tan(double x);
double Atn(double x);
double Power(double a, double b);  // 0^0 is 1; x^1 and x^2 are x and x*x

// The same, bit for bit and flag for flag, for n arguments at a time. The result may take the place of an argument;
// otherwise they don't overlap.
void ExpBlock(const double* x, double* y, std::size_t n);
void LnBlock(const double* x, double* y, std::size_t n);
void Log10Block(const double* x, double* y, std::size_t n);
void SinBlock(const double* x, double* y, std::size_t n);
void CosBlock(const double* x, double* y, std::size_t n);
void TanBlock(const double* x, double* y, std::size_t n);
void AtnBlock(const double* x, double* y, std::size_t n);
void PowerBlock(const double* a, const double* b, double* y, std::size_t n);
void PowerBlock(const double* a, double b, double* y, std::size_t n);

// The program's pi: 15 digits, in every formula that names it, so that results agree with those printed elsewhere.
inline constexpr double kPi = 3.14159265358979;

}  // namespace quorvex
