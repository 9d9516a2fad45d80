#include "functions/digamma.h"

#include <algorithm>
#include <iterator>

#include "core/NumericFault.h"
#include "functions/Elementary.h"
#include "functions/NearOne.h"
#include "functions/gamma.h"

namespace quorvex {
namespace {

constexpr double kAsymptotic = 10;  // from here on the asymptotic series serve

// Of psi(x) - ln x + 1/(2x), in powers of 1/x^2 from the first on: -B(2k)/(2k) of the Bernoulli numbers B.
constexpr double kSeries[] = {-1.0 / 12, 1.0 / 120, -1.0 / 252, 1.0 / 240, -1.0 / 132, 691.0 / 32760, -1.0 / 12};

void RequirePositive(double x) {
  if (!(x > 0)) throw NumericFault();
}

// How much psi(x) - ln(x) rises from a to a + d, for a >= kAsymptotic: the series at both ends by its divided
// difference. That is Horner's scheme for the value at one end and, along with it, for the quotient of the difference
// by that of the two arguments u and v.
double SeriesRise(double a, double d) {
  const double b = a + d;
  const double u = (1 / a) / a, v = (1 / b) / b;
  double value = 0, quotient = 0;
  for (std::size_t i = std::size(kSeries); i-- > 0;) {
    const double here = value + kSeries[i];
    quotient = quotient * v + here;
    value = here * u;
  }
  const double reciprocals = d / b / a;  // 1/a - 1/b
  return 0.5 * reciprocals - quotient * reciprocals * (1 / a + 1 / b);
}

}  // namespace

double LnGamma(double x) {
  constexpr double kHalfLnTwoPi = 0.91893853320467274178;
  RequirePositive(x);
  if (x >= kAsymptotic) return (x - 0.5) * Ln(x) - x + kHalfLnTwoPi + StirlingRest(x);
  if (x < 0.5) return LnGammaOnePlus(x) - Ln(x);
  double product = 1;
  for (; x >= 2.5; product *= x) --x;
  return gammln(x) + Ln(product);
}

double DigammaLessLn(double x) {
  const double z = (1 / x) / x;
  double sum = 0;
  for (std::size_t i = std::size(kSeries); i-- > 0;) sum = (sum + kSeries[i]) * z;
  return sum - 0.5 / x;
}

double Digamma(double x) {
  RequirePositive(x);
  double below = 0;
  for (; x < kAsymptotic; ++x) below += 1 / x;
  return Ln(x) + DigammaLessLn(x) - below;
}

double DigammaRise(double a, double d) {
  double rise = 0;
  for (; a < kAsymptotic; ++a) rise += d / (a + d) / a;
  return rise + (LnOnePlus(d / a) + SeriesRise(a, d));
}

double DigammaRiseLessLn(double a, double d) {
  double rise = 0;
  for (; a < kAsymptotic; ++a) rise += LessLnOnePlus(1 / a) - LessLnOnePlus(1 / (a + d));
  return rise + SeriesRise(a, d);
}

double LnBeta(double a, double b) {
  if (a > b) std::swap(a, b);
  if (a >= kAsymptotic) return betaln(a, b);
  // There is no gammln but that of a in betaln where b is large; below nothing that cancels is large.
  if (b >= kAsymptotic) return betaln(a, b) + (LnGamma(a) - gammln(a));
  return LnGamma(a) + LnGamma(b) - LnGamma(a + b);
}

}  // namespace quorvex
