#include "functions/densities.h"

#include <algorithm>
#include <cmath>

#include "core/NumericFault.h"
#include "functions/Elementary.h"
#include "functions/NearOne.h"
#include "functions/TailIntegral.h"
#include "functions/digamma.h"
#include "functions/gamma.h"

namespace quorvex {
namespace {

constexpr double kStirling = 10;
constexpr double kTwoPi = 6.283185307179586;

// From here on the power series of the incomplete gamma function takes ever more terms near its mean.
constexpr double kLargeParameter = 1000;

// The sum of c(n) (psi(a + n + 1) - ln x) with c(n) = x^n / ((a+1)...(a+n)), which is positive.
double ParameterSeries(double a, double x) {
  constexpr double kSettled = 1e-17;
  constexpr int kMostTerms = 5000;
  double digamma = Digamma(a + 1) - Ln(x);
  double factor = 1;
  double sum = 0;
  for (int n = 1; n <= kMostTerms; ++n) {
    const double term = factor * digamma;
    sum += term;
    digamma += 1 / (a + n);
    factor *= x / (a + n);
    if (x < a + n && factor * digamma < kSettled * sum) return sum;
  }
  throw NumericFault();
}

// The same for the incomplete beta function: the sum of c(n) (psi(a + n + 1) - psi(a + b + n) - ln x) with c(n) =
// (a+b)...(a+b+n-1) x^n / ((a+1)...(a+n)), where the first of its terms is `digamma` and not negative.
double ParameterSeries(double a, double b, double x, double digamma) {
  constexpr double kSettled = 1e-17;
  double factor = 1;
  double sum = 0;
  for (int n = 0; factor * digamma > kSettled * sum; ++n) {
    sum += factor * digamma;
    digamma += 1 / (a + n + 1) - 1 / (a + b + n);
    factor *= (a + b + n) / (a + n + 1) * x;
  }
  return sum;
}

// The integral of the beta distribution's density times a weight over t = x exp(-s) below x, with `near` and `far` for
// a and b and `ratio` for x/y, or over 1 - t = y exp(-s) above it, with all of these turned, in units of x or y times
// the density at x. With w = 1 - exp(-s) the logarithm is a ln(1 - w) + (b - 1) ln(1 + w x/y), less its value at w = 0.
// From kFar on w is 1, the weight rises as `rise` tells, and the rest is a closed form.
template <class Weight>
double BetaSide(double near, double far, double ratio, double rise, Weight weight) {
  constexpr double kFar = 38;
  const double width = 1 / Sqr(near);
  const auto logarithm = [=](double s) {
    const double w = -ExpMinusOne(-s);
    const double less = w < 0.5 ? LessLnOnePlus(-w) : s - w;
    return w * ((far - 1) * ratio - near) - near * less - (far - 1) * LessLnOnePlus(w * ratio) +
           Ln(weight(s, w) / width);
  };
  const double rest = Exp(logarithm(kFar)) * (1 + rise / near / weight(kFar, 1)) / near;
  return width * (TailIntegral(logarithm, width, kFar) + rest);
}

// ln(x) - psi(a), without cancellation for a large a with x near it.
double LnLessDigamma(double a, double x) {
  if (a < kStirling) return Ln(x) - Digamma(a);
  const double ratio = (x - a) / a;
  return (std::abs(ratio) < 0.5 ? LnOnePlus(ratio) : Ln(x) - Ln(a)) - DigammaLessLn(a);
}

}  // namespace

double GammaDensity(double a, double x) {
  if (!(a > 0 && x >= 0)) throw NumericFault();
  if (x == 0) return Power(0, a - 1);
  if (a < kStirling) return Exp((a - 1) * Ln(x) - x - LnGamma(a));
  return Exp(-Deviance(a, x) - StirlingRest(a) - Ln(x)) * Sqr(a / kTwoPi);
}

double GammaByParameter(double a, double x) {
  if (!(a > 0 && x >= 0)) throw NumericFault();
  if (x == 0) return 0;
  if (a < kLargeParameter && Ln(x) < Digamma(a + 1)) return -GammaDensity(a + 1, x) * ParameterSeries(a, x);
  // The integrals over t = x (1 + w) above and x (1 - w) below, in units of the density at x.
  const double front = GammaDensity(a, x) * x;
  if (front == 0) return 0;
  const double lean = LnLessDigamma(a, x);
  const double width = 1 / Sqr(a);
  if (lean < 0) {
    const auto below = [=](double w) {
      return w * (x + 1 - a) - (a - 1) * LessLnOnePlus(-w) + Ln((-lean - LnOnePlus(-w)) / width);
    };
    return -front * width * TailIntegral(below, width, 0.999);
  }
  const auto above = [=](double w) {
    return w * (a - 1 - x) - (a - 1) * LessLnOnePlus(w) + Ln((lean + LnOnePlus(w)) / width);
  };
  return -front * width * TailIntegral(above, width, 1e9);
}

double BetaDensity(double a, double b, Parts parts) {
  const auto [x, y] = parts;
  if (!(a > 0 && b > 0 && x >= 0 && y >= 0)) throw NumericFault();
  if (x == 0 || y == 0) return Power(0, (x == 0 ? a : b) - 1) * Exp(-LnBeta(a, b));
  const double lnX = x < 0.5 ? Ln(x) : LnOnePlus(-y);
  const double lnY = y < 0.5 ? Ln(y) : LnOnePlus(-x);
  if (std::min(a, b) < kStirling) return Exp((a - 1) * lnX + (b - 1) * lnY - LnBeta(a, b));
  const double n = a + b;
  const double lost = Deviance(a, n * x) + Deviance(b, n * y);
  return Exp(StirlingRest(n) - StirlingRest(a) - StirlingRest(b) - lost - lnX - lnY) * Sqr(a / kTwoPi * (b / n));
}

double BetaByParameter(double a, double b, Parts parts) {
  const auto [x, y] = parts;
  if (!(a > 0 && b > 0 && x >= 0 && y >= 0)) throw NumericFault();
  if (x == 0 || y == 0) return 0;
  const double density = BetaDensity(a, b, parts);
  if (density == 0) return 0;
  const double lnX = x < 0.5 ? Ln(x) : LnOnePlus(-y);
  if (a < kStirling && x < 0.5) {
    const double first = Digamma(a + 1) - Digamma(a + b) - lnX;
    if (first > 0) return -density * x * y / a * ParameterSeries(a, b, x, first);
  }
  // less the mean of the logarithm
  const double lean = lnX + DigammaRise(a, b);
  if (lean < 0) return -density * x * BetaSide(a, b, x / y, 1, [=](double s, double) { return s - lean; });
  return -density * y * BetaSide(b, a, y / x, 0, [=](double, double w) { return lean + LnOnePlus(w * (y / x)); });
}

double BetaByFreedom(double a, double b, Parts parts) {
  const auto [x, y] = parts;
  if (!(a > 0 && b > 0 && x >= 0 && y >= 0)) throw NumericFault();
  if (x == 0 || y == 0) return 0;
  const double density = BetaDensity(a, b, parts);
  if (density == 0) return 0;
  const double whole = DigammaRiseLessLn(a, b);
  const double lean = (b * x - a * y) / a;  // r - 1 at x
  const auto one = [](double, double) { return 1.0; };
  if (lean < 0) {
    const double lnR = lean > -0.5 ? LnOnePlus(lean) : Ln(x) + LnOnePlus(b / a), r = x * (1 + b / a);
    const auto weight = [=](double s, double w) {
      const double ln = lnR - s;
      return (ln < -0.5 ? ExpMinusOne(ln) - ln : LessLnOnePlus(lean - w * r)) / whole;
    };
    return density * x * whole / 2 * (BetaSide(a, b, x / y, 0, one) - BetaSide(a, b, x / y, 1 / whole, weight));
  }
  const double rise = y * (1 + b / a);
  const auto weight = [=](double, double w) { return LessLnOnePlus(lean + w * rise) / whole; };
  return density * y * whole / 2 * (BetaSide(b, a, y / x, 0, weight) - BetaSide(b, a, y / x, 0, one));
}

double StudentByFreedom(double t, double v) {
  constexpr double kLine = 1e-100;  // within it the derivative is a straight line, and t^2 may underflow
  const double held = std::max(std::abs(t), kLine), ratio = held / v * held;
  const double slope = -BetaByFreedom(v / 2, 0.5, {1 / (1 + ratio), ratio / (1 + ratio)});
  return std::abs(t) < kLine ? slope * (std::abs(t) / kLine) : slope;
}

double StudentDensity(double t, double v) {
  // Beyond it 1 is nothing beside its square.
  constexpr double kLarge = 1e9;
  if (!(v > 0)) throw NumericFault();
  const double s = std::abs(t) / Sqr(v);
  const double logarithm = s > kLarge ? 2 * Ln(s) : LnOnePlus(s * s);
  return 2 * Exp(-(v + 1) / 2 * logarithm - LnBeta(0.5, v / 2)) / Sqr(v);
}

}  // namespace quorvex
