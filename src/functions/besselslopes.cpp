#include "functions/besselslopes.h"

#include <cmath>
#include <limits>

#include "core/NumericFault.h"
#include "functions/Elementary.h"
#include "functions/digamma.h"
#include "functions/gamma.h"

namespace quorvex {
namespace {

// The ascending series with the digits that its gammln lacks.
BesselOrder Ascending(double nu, double x, double curvature, bool spherical = false) {
  const BesselOrder rough = AscendingBessel(nu, x, curvature, spherical);
  const auto lacking = [](double argument) { return Exp(gammln(argument) - LnGamma(argument)); };
  const double factor = lacking(nu + 1), next = rough.Next * lacking(nu + 2);
  // The slope is a term of the order nu and the curvature times the neighbour.
  return {rough.Value * factor, next, (rough.Slope - curvature * rough.Next) * factor + curvature * next};
}

// The second derivative by the power series, term by term: (x/2)^power / Gamma(nu + 1) times the sum in
// curvature (x/2)^2, for a power above 1. It has its digits where the function itself is below all doubles.
double AscendingCurvature(double power, double nu, double x, double curvature) {
  constexpr double kSettled = 1e-17;
  const double z = curvature * (x / 2) * (x / 2);
  double term = 1;
  double sum = power * (power - 1);
  for (int k = 1; std::abs(term) > kSettled; ++k) {
    term *= z / (k * (nu + k));
    sum += term * (power + 2 * k) * (power + 2 * k - 1);
  }
  return Exp((power - 2) * Ln(x / 2) - LnGamma(nu + 1)) * (sum / 4);
}

BesselOrder J(double nu, double x) {
  if (IsSmallArgument(nu, x)) return Ascending(nu, x, -1);
  return BesselJ(nu, x);
}

BesselOrder Y(double nu, double x) {
  const OrdinaryBessel both = bessjy(x, nu);
  return {both.Y, nu / x * both.Y - both.DY, both.DY};
}

BesselOrder I(double nu, double x) { return x < 30 || x < nu * nu ? Ascending(nu, x, 1) : BesselI(nu, x); }

BesselOrder K(double nu, double x) {
  const double value = BesselK(nu, x), slope = BesselKSlope(nu, x);
  return {value, nu / x * value - slope, slope};
}

}  // namespace

BesselOrder PreciseBessel(BesselKind kind, double nu, double x) {
  if (!(x > 0 && nu >= 0)) throw NumericFault();
  switch (kind) {
    case BesselKind::J:
      return J(nu, x);
    case BesselKind::Y:
      return Y(nu, x);
    case BesselKind::I:
      return I(nu, x);
    default:
      return K(nu, x);
  }
}

double BesselCurvature(BesselKind kind, double nu, double x) {
  if (kind == BesselKind::J || kind == BesselKind::I)
    if (nu > 1 && IsSmallArgument(nu, x)) return AscendingCurvature(nu, nu, x, kind == BesselKind::J ? -1 : 1);
  const auto [value, next, slope] = PreciseBessel(kind, nu, x);
  const double ofOrder = (nu - 1) / x * (nu / x * value);
  switch (kind) {
    case BesselKind::I:
      return ofOrder + value - next / x;
    case BesselKind::K:
      return ofOrder + value + next / x;
    default:
      return ofOrder - value + next / x;
  }
}

BesselOrder PreciseSpherical(BesselKind kind, int n, double x) {
  if (n < 0 || !(x > 0)) throw NumericFault();
  const double nu = n + 0.5;
  if (kind == BesselKind::J && IsSmallArgument(nu, x)) return Ascending(nu, x, -1, true);
  const BesselOrder cylinder = PreciseBessel(kind, nu, x);
  const double factor = Sqr(kPi / 2) / Sqr(x);
  const double value = factor * cylinder.Value, next = factor * cylinder.Next;
  return {value, next, n / x * value - next};
}

double SphericalCurvature(BesselKind kind, int n, double x) {
  constexpr double kHalfRootPi = 0.88622692545275801;
  if (kind == BesselKind::J && n > 1 && IsSmallArgument(n + 0.5, x))
    return kHalfRootPi * AscendingCurvature(n, n + 0.5, x, -1);
  const auto [value, next, slope] = PreciseSpherical(kind, n, x);
  return (n - 1) / x * (n / x * value) - value + 2 / x * next;
}

double WholeOrderSlope(BesselKind kind, int n, double x) {
  const bool symmetric = kind == BesselKind::J || kind == BesselKind::I;
  if (!symmetric || x > 0) return PreciseBessel(kind, n, x).Slope;
  if (x == 0) return n == 1 ? 0.5 : 0;
  const double slope = PreciseBessel(kind, n, -x).Slope;
  return n % 2 == 0 ? -slope : slope;
}

AiryFunctions PreciseAiry(double x) {
  constexpr double kThird = 1.0 / 3, kTwoThirds = 2.0 / 3;
  constexpr double kRoot3 = 1.7320508075688772;
  constexpr double kAi0 = 0.35502805388781724, kDAi0 = -0.25881940379280680;  // DLMF 9.2.3 and 9.2.4
  constexpr double kStraight = 1e-10;  // within it the functions are straight lines
  constexpr double kVanished = 104.2;  // from here on Ai is below and Bi above the doubles
  if (std::abs(x) < kStraight) return {kAi0 + x * kDAi0, kRoot3 * (kAi0 - x * kDAi0), kDAi0, -kRoot3 * kDAi0};
  if (!(x >= -1e6)) throw NumericFault();
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  if (x > kVanished) return {0, kInfinity, 0, kInfinity};
  const double t = std::abs(x), root = Sqr(t);
  const double z = 2 * t * root / 3;
  if (x > 0) {  // DLMF 9.6.2 to 9.6.5
    const double third = PreciseBessel(BesselKind::K, kThird, z).Value / kPi;
    const double twoThirds = PreciseBessel(BesselKind::K, kTwoThirds, z).Value / kPi;
    return {root / kRoot3 * third, root * (third + 2 / kRoot3 * PreciseBessel(BesselKind::I, kThird, z).Value),
            -t / kRoot3 * twoThirds, t * (twoThirds + 2 / kRoot3 * PreciseBessel(BesselKind::I, kTwoThirds, z).Value)};
  }
  // DLMF 9.6.6 to 9.6.9, with the functions of negative orders by those of positive ones (DLMF 10.4.6).
  const double thirdJ = PreciseBessel(BesselKind::J, kThird, z).Value;
  const double thirdY = PreciseBessel(BesselKind::Y, kThird, z).Value;
  const double twoThirdsJ = PreciseBessel(BesselKind::J, kTwoThirds, z).Value;
  const double twoThirdsY = PreciseBessel(BesselKind::Y, kTwoThirds, z).Value;
  return {root / 2 * (thirdJ - thirdY / kRoot3), -root / 2 * (thirdY + thirdJ / kRoot3),
          t / 2 * (twoThirdsY / kRoot3 + twoThirdsJ), t / 2 * (twoThirdsJ / kRoot3 - twoThirdsY)};
}

}  // namespace quorvex
