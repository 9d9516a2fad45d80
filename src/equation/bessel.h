#pragma once

namespace quorvex {

// Bessel functions of integer order, by published approximations; about 8 digits for J and Y, 7 for I and K. Wrong
// orders throw NumericFault; arguments outside the domain (Y and K at x <= 0) and overflow show in the processor's
// flags.

// J and Y of order 0 and 1. Ratios of polynomials in x^2 below |x| = 8, amplitude and phase from there on
// (Hart et al., Computer Approximations, 1968). Absolute error below 6e-9 for J, 5e-8 for Y (4e-7 for y1 as x goes to
// 0, where it is large itself); from 8 on below 3e-10. Far out the phase loses what x loses by rounding.
double bessj0(double x);
double bessj1(double x);
double bessy0(double x);  // x > 0
double bessy1(double x);  // x > 0

// I and K of order 0 and 1 (Abramowitz & Stegun 9.8.1 to 9.8.8, E. E. Allen). Break points |x| = 3.75 and x = 2.
// Error bounds of that source: i0 1.6e-7 absolute; i1/x 8e-9; k0 1e-8 and x*k1 8e-9, besides ln(x/2) times the error of
// I; above the break points 1.9e-7 for order 0 and 2.2e-7 for order 1, of sqrt(x) exp(-x) I and of sqrt(x) exp(x) K. I
// overflows beyond |x| = 709.78, where exp does; K underflows to 0.
double bessi0(double x);
double bessi1(double x);
double bessk0(double x);  // x > 0
double bessk1(double x);  // x > 0

// Order n >= 2; throws for n < 2.
// J climbs from orders 0 and 1 where |x| > n. Elsewhere, and always for I, the recurrence runs downward from an order
// above n, is scaled by 1e-10 whenever it passes 1e10, and is normalised at the end (Miller's method). Relative error
// of some 1e-6 away from the zeros of J.
// Limits of that method, kept:
// - At tiny |x| one step of the recurrence outruns the scaling, and the running value overflows, which is a fault: for
//   J below 1e-38 (n = 2), 4e-26 (5), 3e-19 (10), 2e-10 (100); for I below 2e-24, 4e-17, 5e-14, 3e-9.
// - The start order knows nothing of x, so at large |x| I loses digits: for n = 2 it has 2e-6 at 40 and 2e-4 at 80, for
//   n = 5 1e-3 at 200, for n = 10 3e-5 at 400, and is of no use much beyond.
// Y and K climb from orders 0 and 1, which is stable; errors of the starting values grow with the functions.
double bessj(int n, double x);
double bessy(int n, double x);  // x > 0
double bessi(int n, double x);
double bessk(int n, double x);  // x > 0

}  // namespace quorvex
