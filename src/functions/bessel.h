#pragma once

namespace quorvex {

// Bessel functions of integer order, by published approximations where these have seven digits. Wrong orders throw
// NumericFault; arguments outside the domain (Y and K at x <= 0) and overflow show in the processor's flags or throw.

// J and Y of order 0 and 1. Ratios of polynomials in x^2 below |x| = 8, amplitude and phase from there on
// (Hart et al., Computer Approximations, 1968), with the sine and cosine of x itself, so that no x is too large.
// Absolute error below 6e-9 for J, 3e-8 for Y (4e-7 for y1 as x goes to 0, where it is large itself); from 8 on below
// 3e-10.
double bessj0(double x);
double bessj1(double x);
double bessy0(double x);  // x > 0
double bessy1(double x);  // x > 0

// I and K of order 0 and 1. I as in BesselI. K up to x = 2 by polynomials (Abramowitz & Stegun 9.8.5 and 9.8.7,
// E. E. Allen: errors of 1e-8, and of 8e-9 for x*k1), above as in BesselK. I overflows beyond |x| of about 713; K
// underflows to 0.
double bessi0(double x);
double bessi1(double x);
double bessk0(double x);  // x > 0
double bessk1(double x);  // x > 0

// Order n >= 2; throws for n < 2.
// J by its ascending series up to |x| = 2 sqrt(n + 1); it climbs from orders 0 and 1 where |x| > n; in between the
// recurrence runs downward from an order above n, is scaled by 1e-10 whenever it passes 1e10, and is normalised at the
// end (Miller's method). Y climbs from orders 0 and 1, I and K are as in BesselI and BesselK. Relative error of J and Y
// 1e-7, of I 4e-10, away from zeros.
double bessj(int n, double x);
double bessy(int n, double x);  // x > 0
double bessi(int n, double x);
double bessk(int n, double x);  // x > 0

}  // namespace quorvex
