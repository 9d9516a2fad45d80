#include "functions/besselends.h"

#include <algorithm>
#include <cmath>

#include "core/NumericFault.h"
#include "functions/Elementary.h"
#include "functions/gamma.h"

namespace quorvex {
namespace {

constexpr double kSettled = 1e-17;

// 1 + z/(1 (nu+1)) + z^2/(2 (nu+1)(nu+2)) + ..., as its logarithm of scale and what stands before it.
struct Scaled {
  double Value, Logarithm;
};

Scaled PowerSum(double nu, double z) {
  constexpr int kMostTerms = 100000;
  constexpr double kBig = 1e250, kLnBig = 575.6462732485115;
  double term = 1, sum = 1, logarithm = 0;
  for (int k = 1; k <= kMostTerms; ++k) {
    term *= z / (k * (nu + k));
    sum += term;
    if (std::abs(term) <= kSettled * std::abs(sum)) return {sum, logarithm};
    // The sum of I leaves the range before the factor in front of it, which is as small, can bring it back.
    if (sum > kBig) {
      sum /= kBig;
      term /= kBig;
      logarithm += kLnBig;
    }
  }
  throw NumericFault();
}

// (x/2)^power / Gamma(argument) times the sum
double Scale(double x, double power, double argument, Scaled sum) {
  const double exponent = power == 0 ? 0 : power * Ln(x / 2);
  return Exp(exponent - gammln(argument) + sum.Logarithm) * sum.Value;
}

// The terms a(k) of Hankel's expansions, each from the one before, as far as they fall.
template <class Use>
void ForHankelTerms(double nu, double x, Use use) {
  const double held = std::min(x, 0x1p1000);  // where no term counts, lest the divisor overflow
  double term = 1;
  for (int k = 1; k < 200; ++k) {
    const double next = term * ((4 * nu * nu - (2 * k - 1.0) * (2 * k - 1)) / (8 * k * held));
    // An asymptotic series: behind its smallest term it diverges. Up to k = nu a rise is only passing.
    if (std::abs(next) < kSettled || (std::abs(next) > std::abs(term) && k > nu)) return;
    term = next;
    use(k, term);
  }
}

// What the series of an order make of the wave's amplitude.
struct Quadratures {
  double P, Q;
};

Quadratures HankelSeries(double nu, double x) {
  Quadratures sum = {1, 0};
  ForHankelTerms(nu, x, [&](int k, double term) { (k % 2 == 0 ? sum.P : sum.Q) += k / 2 % 2 == 0 ? term : -term; });
  return sum;
}

}  // namespace

bool IsSmallArgument(double nu, double x) { return x / 2 <= Sqr(nu + 1); }

bool IsDistantArgument(double nu, double x) { return x - nu > 1000 || (x >= 25 && x >= 2 * nu); }

BesselOrder AscendingBessel(double nu, double x, double curvature, bool spherical) {
  const double z = curvature * (x / 2) * (x / 2);
  const double half = spherical ? 0.5 : 0;  // sqrt(pi/(2x)) is sqrt(pi)/2 times (x/2)^-1/2
  const double factor = spherical ? 0.886226925452758 : 1;
  const Scaled sum = PowerSum(nu, z);
  const double value = factor * Scale(x, nu - half, nu + 1, sum);
  const double next = factor * Scale(x, nu + 1 - half, nu + 2, PowerSum(nu + 1, z));
  const double order = nu - half;
  const double rise = order == 0 ? 0 : factor * order / 2 * Scale(x, nu - half - 1, nu + 1, sum);
  return {value, next, rise + curvature * next};
}

HankelPair DistantBessel(double nu, double x) {
  if (!(nu < 32768) || !std::isfinite(x)) throw NumericFault();
  struct JAndY {
    double J, Y;
  };
  constexpr double kHalfPi = 1.5707963267948966;
  const double mu = nu - std::floor(nu), phase = (mu + 0.5) * kHalfPi;
  // By the sum of two angles, since x - phase would round away digits of a large x.
  const double cosX = Cos(x), sinX = Sin(x), cosPhase = Cos(phase), sinPhase = Sin(phase);
  const double c = cosX * cosPhase + sinX * sinPhase, s = sinX * cosPhase - cosX * sinPhase;
  const double amplitude = 1 / Sqr(kHalfPi) / Sqr(x);
  const Quadratures lower = HankelSeries(mu, x), upper = HankelSeries(mu + 1, x);
  JAndY here = {amplitude * (lower.P * c - lower.Q * s), amplitude * (lower.P * s + lower.Q * c)};
  // A quarter of a turn behind.
  JAndY next = {amplitude * (upper.P * s + upper.Q * c), amplitude * (upper.Q * s - upper.P * c)};
  for (double order = mu + 1; order < nu + 0.5; ++order) {
    const JAndY above = {2 * order / x * next.J - here.J, 2 * order / x * next.Y - here.Y};
    here = next;
    next = above;
  }
  return {{here.J, next.J, nu / x * here.J - next.J}, {here.Y, next.Y, nu / x * here.Y - next.Y}};
}

double DistantModified(double nu, double x, double sign) {
  double sum = 1;
  ForHankelTerms(nu, x, [&](int k, double term) { sum += sign > 0 || k % 2 == 0 ? term : -term; });
  return sum;
}

}  // namespace quorvex
