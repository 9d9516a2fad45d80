#include "functions/betai.h"

#include <algorithm>
#include <cmath>

#include "core/NumericFault.h"
#include "functions/Elementary.h"
#include "functions/LentzFraction.h"
#include "functions/NearOne.h"
#include "functions/TailIntegral.h"
#include "functions/gamma.h"

namespace quorvex {
namespace {

// From these parameters on, both of them, the fraction takes ever more rounds near the mean, and an integral serves.
constexpr double kLargeParameters = 1000;
constexpr double kStirling = 10;
// Up to here what an integral lacks of 1 is not taken off 1.
constexpr double kSmallParameter = 0.1;
constexpr double kTwoPi = 6.283185307179586;

// x^a y^b / B(a, b), which stands before fraction and integral.
double Front(double a, double b, Parts parts) {
  const auto [x, y] = parts;
  // Stirling's rests are right for large parameters alone; for small ones the logarithms do not cancel.
  if (std::min(a, b) < kStirling) {
    const double lnX = x < 0.5 ? Ln(x) : LnOnePlus(-y);
    const double lnY = y < 0.5 ? Ln(y) : LnOnePlus(-x);
    return Exp(a * lnX + b * lnY - betaln(a, b));
  }
  const double n = a + b;
  const double lost = Deviance(a, n * x) + Deviance(b, n * y);
  return Exp(StirlingRest(n) - StirlingRest(a) - StirlingRest(b) - lost) * Sqr(a / kTwoPi * (b / n));
}

// The part below x of the mean's lower side.
double LowerTail(double a, double b, Parts parts) {
  const auto [x, y] = parts;
  const double front = Front(a, b, parts);
  if (front == 0) return 0;
  if (!std::isfinite(front)) throw NumericFault();  // of infinite a or b
  const double ratio = x / y;
  const auto logarithm = [=](double w) {  // at x(1 - w)
    return w * ((b - 1) * ratio - (a - 1)) - (a - 1) * LessLnOnePlus(-w) - (b - 1) * LessLnOnePlus(w * ratio);
  };
  return front / y * TailIntegral(logarithm, 1 / Sqr(a), 0.999);
}

// The smaller side by its fraction or integral.
double Side(double a, double b, Parts parts) {
  if (std::min(a, b) >= kLargeParameters) return LowerTail(a, b, parts);
  return Front(a, b, parts) * betacf(a, b, parts) / a;
}

// The integral up to x, beyond the mean, for a small b. It is 1 less
// y^b Gamma(a + b)/(Gamma(a) Gamma(1 + b)) (1 + b sum of (1-a)(2-a)...(n-a) y^n/(n! (b + n))), a power near 1.
double LessThanPower(double a, double b, Parts parts) {
  constexpr double kSettled = 1e-17;
  const auto [x, y] = parts;
  const double lnY = y < 0.5 ? Ln(y) : LnOnePlus(-x);
  const double logarithm = b * lnY + LnGammaRise(a, b) - LnGammaOnePlus(b);
  double power = 1;
  double sum = 0;
  for (int n = 1; n < 1000; ++n) {
    power *= (n - a) / n * y;
    const double term = power / (b + n);
    sum += term;
    if (std::abs(term) <= std::abs(sum) * kSettled) break;
  }
  return -ExpMinusOne(logarithm) - Exp(logarithm) * b * sum;
}

}  // namespace

double betacf(double a, double b, Parts parts) {
  constexpr int kMaxRounds = 5000;
  constexpr double kSettled = 2e-16;
  const auto [x, y] = parts;
  const double beyondMean = (a > b ? (a + b) * y - b : a - (a + b) * x) + 1;
  auto fraction = LentzFraction<double>::StartingWith(a / (a + 1) * beyondMean);
  for (int n = 1; n <= kMaxRounds; ++n) {
    const double s = a + 2 * n - 1;
    const double product = n * (b - n) / s * x;
    const double alpha = (a + n - 1) / s * (a + b + n - 1) * product * x;
    const double beta = n + product + (a + n) / (s + 2) * (beyondMean + n * (1 + y));
    const double change = fraction.Step(alpha, beta);
    if (std::abs(change - 1) <= kSettled) return a / fraction.Value;
  }
  throw NumericFault();
}

double betai(double a, double b, Parts parts) {
  const auto [x, y] = parts;
  if (!(x >= 0 && y >= 0)) throw NumericFault();
  if (x == 0 || y == 0) return x == 0 ? 0 : 1;
  if (!(a > 0 && b > 0)) throw NumericFault();
  // The fraction converges fast on this side of the mean. Beyond it the symmetry in (a, x) and (b, y) leads back.
  if (x < (a + 1) / (a + b + 2)) return Side(a, b, parts);
  return b <= kSmallParameter ? LessThanPower(a, b, parts) : 1 - Side(b, a, {y, x});
}

double betai(double a, double b, double x) { return betai(a, b, {x, 1 - x}); }

}  // namespace quorvex
