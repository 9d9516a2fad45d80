#pragma once

#include "functions/besselends.h"
#include "functions/besseljy.h"

namespace quorvex {

// Derivatives of Bessel functions by x, for orders nu >= 0 and x > 0, with all digits where the functions themselves
// rest on approximations of eight or nine: relative error some 3e-13, of the modulus where x > nu. Faults are those of
// the functions (besseljy.h).

enum class BesselKind { J, Y, I, K };

// The function, its neighbour of order nu + 1, and its derivative.
BesselOrder PreciseBessel(BesselKind kind, double nu, double x);

// The second derivative, from value and neighbour: in Bessel's equation (DLMF 10.2.1 and 10.25.1) digits would cancel
// at a small x.
double BesselCurvature(BesselKind kind, double nu, double x);

// The same of the spherical functions j (J) and y (Y).
BesselOrder PreciseSpherical(BesselKind kind, int n, double x);
double SphericalCurvature(BesselKind kind, int n, double x);

// The derivative of J, Y, I or K of a whole order n, for J and I at any x: at 0 its limit, and below 0 by their
// symmetry.
double WholeOrderSlope(BesselKind kind, int n, double x);

// airy() with constants of all digits.
AiryFunctions PreciseAiry(double x);

}  // namespace quorvex
