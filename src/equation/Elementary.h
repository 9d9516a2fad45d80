#pragma once

#include <cmath>

namespace quorvex {

// The elementary functions as the equation language, the built-in models and their derivatives call them, all through
// this one place, so that a model gives the same bits whichever way it is evaluated. Domain faults show in the
// processor's flags (core/FaultFlags.h); results then are NaN or infinite.
inline double Exp(double x) { return std::exp(x); }
inline double Ln(double x) { return std::log(x); }
inline double Sqr(double x) { return std::sqrt(x); }
inline double Sin(double x) { return std::sin(x); }
inline double Cos(double x) { return std::cos(x); }
inline double Tan(double x) { return std::tan(x); }
inline double Atn(double x) { return std::atan(x); }
inline double Power(double a, double b) { return std::pow(a, b); }  // 0^0 is 1; 0 to a negative power raises a flag

// The program's pi: 15 digits, in every formula that names it, so that results agree with those printed elsewhere.
inline constexpr double kPi = 3.14159265358979;

}  // namespace quorvex
