#include "functions/gamma.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

#include "core/NumericFault.h"
#include "functions/Elementary.h"
#include "functions/LentzFraction.h"
#include "functions/NearOne.h"
#include "functions/TailIntegral.h"

namespace quorvex {
namespace {

constexpr int kMaxRounds = 2000;
constexpr double kSettled = 1e-16;

// From this parameter on, near which series and fraction take ever more terms, the incomplete functions are integrals.
constexpr double kLargeParameter = 1000;

// From here on Stirling's series serves.
constexpr double kStirling = 10;

// Up to here 1 less a power that is near 1 is taken term by term.
constexpr double kSmallParameter = 0.1;

constexpr double kTwoPi = 6.283185307179586;

constexpr auto kFactorials = [] {
  std::array<double, 33> table{1};
  for (std::size_t n = 1; n < table.size(); ++n) table[n] = table[n - 1] * static_cast<double>(n);
  return table;
}();

// Riemann's zeta function less 1 at k = 2, 3, ..., from its own sum and Euler and Maclaurin's rest.
constexpr auto kZetaLessOne = [] {
  std::array<double, 26> table{};
  for (int k = 2; k < 28; ++k) {
    constexpr int kDirect = 60;
    const auto power = [k](int base) {
      double value = 1;
      for (int i = 0; i < k; ++i) value /= base;
      return value;
    };
    const double last = power(kDirect);
    const double over = 1.0 / kDirect;
    double sum = last * kDirect / (k - 1) + last / 2 + k * last * over / 12 -
                 k * (k + 1) * (k + 2) * last * over * over * over / 720 +
                 k * (k + 1) * (k + 2) * (k + 3) * (k + 4) * last * over * over * over * over * over / 30240;
    for (int base = kDirect - 1; base > 1; --base) sum += power(base);
    table[static_cast<std::size_t>(k - 2)] = sum;
  }
  return table;
}();

// ln Gamma(2 + d) for |d| <= 1/2.
double LnGammaNear2(double d) {
  constexpr double kOneLessEuler = 0.42278433509846714;
  double sum = 0;
  // (1 - gamma) d + sum over k from 2 of (-1)^k (zeta(k) - 1) d^k/k, from the last term inwards.
  for (std::size_t i = kZetaLessOne.size(); i-- > 0;) sum = (kZetaLessOne[i] / static_cast<double>(i + 2)) - d * sum;
  return d * (kOneLessEuler + d * sum);
}

// x^a exp(-x) / Gamma(a), which stands before series, fraction and integral.
double Front(double a, double x) {
  if (a < kStirling) return Exp(-x + a * Ln(x) - gammln(a));
  return Exp(-Deviance(a, x) - StirlingRest(a)) * Sqr(a / kTwoPi);
}

// P below the mean a and Q from there on, for a large a.
double Tail(double a, double x) {
  const double front = Front(a, x);
  if (front == 0) return 0;
  if (!std::isfinite(front)) throw NumericFault();  // of infinite a or x
  // The integrand falls off within about 1/sqrt(a) of x, relative to it. Below the mean w ends at 1, where the
  // logarithm has its pole; above it there is no end.
  const double width = 1 / Sqr(a);
  if (x < a) {
    const auto below = [a, x](double w) { return w * (x + 1 - a) - (a - 1) * LessLnOnePlus(-w); };
    return front * TailIntegral(below, width, 0.999);
  }
  const auto above = [a, x](double w) { return w * (a - 1 - x) - (a - 1) * LessLnOnePlus(w); };
  return front * TailIntegral(above, width, 1e9);
}

// Q for x < a + 1 and a small a: 1 less x^a/Gamma(1 + a) (1 + a sum of (-x)^n/(n! (a + n))).
double SmallParameterQ(double a, double x) {
  const double logarithm = a * Ln(x) - LnGammaOnePlus(a);
  double power = 1;
  double sum = 0;
  for (int n = 1; n < 40; ++n) {
    power *= -x / n;
    sum += power / (a + n);
  }
  return -ExpMinusOne(logarithm) - Exp(logarithm) * a * sum;
}

void RequireDomain(double a, double x) {
  if (!(x >= 0 && a > 0)) throw NumericFault();
}

}  // namespace

double gammln(double x) {
  constexpr double kLanczos[] = {76.1800917294715,  -86.5053203294168,   24.0140982408309,
                                 -1.23173957245015, 0.00120865097386618, -5.395239384953e-06};
  if (!(x > 0)) throw NumericFault();
  // ln Gamma is 0 at 1 and at 2, where an error of the sum below, small as it is, would be all of the result.
  if (x >= 0.5 && x < 1.5) return LnGammaOnePlus(x - 1);
  if (x >= 1.5 && x < 2.5) return LnGammaNear2(x - 2);
  double series = 1.00000000019001;
  double pole = x;
  for (double coefficient : kLanczos) series += coefficient / ++pole;
  const double base = x + 5.5;
  return (x + 0.5) * Ln(base) - base + Ln(2.506628274631 * series) - Ln(x);
}

double LnGammaOnePlus(double d) { return LnGammaNear2(d) - LnOnePlus(d); }

double LnGammaRise(double a, double d) {
  double rise = 0;
  for (; a < kStirling; ++a) rise -= LnOnePlus(d / a);
  // The difference of the rests would cancel for a small d, where it is d times their derivative halfway.
  const double z = 1 / (a + d / 2) / (a + d / 2);
  const double slope = -z * (1.0 / 12 - z * (1.0 / 120 - z * (1.0 / 252 - z * (1.0 / 240 - z / 132))));
  const double rest = d < 1e-3 ? d * slope : StirlingRest(a + d) - StirlingRest(a);
  return rise + ((a - 0.5) * LnOnePlus(d / a) - d + d * Ln(a + d) + rest);
}

double StirlingRest(double x) {
  const double z = (1 / x) / x;
  return (1.0 / 12 -
          z * (1.0 / 360 -
               z * (1.0 / 1260 - z * (1.0 / 1680 - z * (1.0 / 1188 - z * (691.0 / 360360 - z * (1.0 / 156))))))) /
         x;
}

double betaln(double a, double b) {
  if (a > b) std::swap(a, b);
  if (b < kStirling) return gammln(a) + gammln(b) - gammln(a + b);
  const double rest = StirlingRest(b) - StirlingRest(a + b);
  if (a < kStirling) return gammln(a) - (b - 0.5) * LnOnePlus(a / b) - a * (Ln(a + b) - 1) + rest;
  return (Ln(kTwoPi * (1 / a + 1 / b)) / 2 - a * LnOnePlus(b / a) - b * LnOnePlus(a / b)) + (StirlingRest(a) + rest);
}

double gser(double a, double x) {
  if (x <= 0) return 0;
  double term = 1 / a;
  double sum = term;
  for (int n = 1; n <= kMaxRounds; ++n) {
    term *= x / (a + n);
    sum += term;
    if (std::abs(term) < std::abs(sum) * kSettled) return sum * Front(a, x);
  }
  throw NumericFault();
}

double gcf(double a, double x) {
  double b = x + 1 - a;
  auto fraction = LentzFraction<double>::OneOver(b);
  for (int n = 1; n <= kMaxRounds; ++n) {
    b += 2;
    const double change = fraction.Step(-n * (n - a), b);
    if (std::abs(change - 1) <= 2 * kSettled) return Front(a, x) * fraction.Value;
  }
  throw NumericFault();
}

double gammp(double a, double x) {
  RequireDomain(a, x);
  if (a >= kLargeParameter) return x < a ? Tail(a, x) : 1 - Tail(a, x);
  return x < a + 1 ? gser(a, x) : 1 - gcf(a, x);
}

double gammq(double a, double x) {
  RequireDomain(a, x);
  if (a >= kLargeParameter) return x < a ? 1 - Tail(a, x) : Tail(a, x);
  if (x >= a + 1) return gcf(a, x);
  return a <= kSmallParameter && x > 0 ? SmallParameterQ(a, x) : 1 - gser(a, x);
}

double factrl(int n) {
  if (n < 0) throw NumericFault();
  const auto index = static_cast<std::size_t>(n);
  return index < kFactorials.size() ? kFactorials[index] : Exp(gammln(n + 1.0));
}

double factln(int n) {
  if (n < 0) throw NumericFault();
  return gammln(n + 1.0);
}

}  // namespace quorvex
