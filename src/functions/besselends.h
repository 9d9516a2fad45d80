#pragma once

namespace quorvex {

// Bessel functions at both ends of their domain, for x > 0 and orders nu >= 0: ascending series where x is small beside
// the order, and Hankel's asymptotic series where it is large.

// A function of order nu, its neighbour of order nu + 1, and its derivative with respect to x.
struct BesselOrder {
  double Value, Next, Slope;
};

// J (curvature -1) or I (curvature 1) by its power series (Abramowitz & Stegun 9.1.10 and 9.6.10). For J with
// x <= 2 sqrt(nu + 1), where its terms fall and little cancels; I has terms of one sign and is good everywhere.
// Relative error of gammln, 3e-10, and less where nu is below 1.5. `spherical` multiplies by sqrt(pi/(2x)) before
// anything underflows. Throws NumericFault where more than 100000 terms count.
BesselOrder AscendingBessel(double nu, double x, double curvature, bool spherical = false);

// Where the ascending series serves J.
bool IsSmallArgument(double nu, double x);

// J and Y for x much beyond the order, by Hankel's series at orders below 2 (Abramowitz & Stegun 9.2.5 to 9.2.10), with
// the angle taken at x itself, so that no x is too large; the recurrence leads from there up to nu, which has to be
// below 32768. Good to some 1e-15 (nu + 1) of the modulus where IsDistantArgument.
struct HankelPair {
  BesselOrder J, Y;
};
HankelPair DistantBessel(double nu, double x);

// Where DistantBessel serves.
bool IsDistantArgument(double nu, double x);

// The sum in sqrt(pi/(2x)) exp(-x) times it, which is K (sign 1), and exp(x)/sqrt(2 pi x) times it, which is I (sign
// -1, where x is large beside nu^2 as well); for x >= 20 (Abramowitz & Stegun 9.7.1 and 9.7.2).
double DistantModified(double nu, double x, double sign);

}  // namespace quorvex
