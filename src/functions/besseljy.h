#pragma once

#include <span>

#include "functions/besselends.h"

namespace quorvex {

// Bessel functions of fractional order, and spherical Bessel and Airy functions through them. Where one of the values
// that are computed together lies beyond the range of a double, the processor's flags show a fault for all.

struct OrdinaryBessel {
  double J, Y, DJ, DY;  // DJ and DY are derivatives with respect to x
};

struct AiryFunctions {
  double Ai, Bi, DAi, DBi;
};

// J, Y and derivatives of order nu >= 0 at x > 0; throws NumericFault otherwise, where x is beyond an order above 32767
// by more than 1000, and where nu exceeds x by more than 32767. Hankel's series (DistantBessel) serves far from 0 and
// from the order. Method elsewhere: Steed's. Two continued fractions (for J'/J, and for the outgoing wave) and the
// Wronskian give J and Y at an order mu not far from x; recurrences lead from there to nu. Below x = 2 a series of
// Temme's takes the place of the second fraction. Barnett, Feng, Steed & Goldfarb, Comput. Phys. Comm. 8, 377 (1974);
// Temme, J. Comput. Phys. 21, 343 (1976). Accuracy, of the modulus sqrt(J^2 + Y^2) where x > nu: 2e-13 + 2e-17 x^2, the
// second part from the rounding of the first fraction, whose rounds number about x; where x < nu some 5e-15 (nu + 1),
// relative.
OrdinaryBessel bessjy(double x, double nu);

// J alone: the ascending series where x <= 2 sqrt(nu + 1), so that a Y or slope beyond doubles does no harm and no
// digits are lost at tiny x, else bessjy.
BesselOrder BesselJ(double nu, double x);

// I by its ascending series, or by the asymptotic one from x = 30 and nu^2 on. It overflows beyond x of about 713.
BesselOrder BesselI(double nu, double x);

// Y alone, for an x so small that the slope is beyond doubles.
double BesselY(double nu, double x);

// K and its derivative by Steed's evaluation of the second fraction and Temme's sum, or Temme's series below x = 2, and
// up by the recurrence from an order near 0. Relative error 3e-14 and some 5e-15 nu.
double BesselK(double nu, double x);
double BesselKSlope(double nu, double x);

// Spherical Bessel functions j, y and derivatives of order n >= 0 at x > 0; throws NumericFault otherwise. The factor
// sqrt(pi/2) has 8 digits: relative error 3e-8.
OrdinaryBessel sphbes(int n, double x);

// j alone, as BesselJ is of J.
BesselOrder SphericalJ(int n, double x);

// Airy functions Ai, Bi and derivatives, for x from -1e6 (below, the angle's digits are lost, and it throws); above
// 104.2 Ai is 0 and Bi infinite. Constants of 8 digits, 1/sqrt(3) and within 1e-10 of 0 all four values: elsewhere the
// relative error is 1.5e-9, of the modulus for x < 0, where |x|^1.5 in double adds 1e-16 times itself.
AiryFunctions airy(double x);

// The values of gamma functions that Temme's series starts from, for |x| <= 1/2:
//   gam1 = (1/Gamma(1-x) - 1/Gamma(1+x)) / (2x), gam2 = (1/Gamma(1-x) + 1/Gamma(1+x)) / 2,
//   gampl = 1/Gamma(1+x), gammi = 1/Gamma(1-x)
// Two Chebyshev series in 8x^2 - 1, good to 4e-16.
struct TemmeGammas {
  double gam1, gam2, gampl, gammi;
};
TemmeGammas beschb(double x);

// Sum of a Chebyshev series on [a, b], its first coefficient counted half (Clenshaw's recurrence). Throws NumericFault
// for x outside the interval.
double chebev(double a, double b, std::span<const double> c, double x);

}  // namespace quorvex
