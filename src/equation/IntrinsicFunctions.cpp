#include "equation/IntrinsicFunctions.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cmath>

#include "core/NumberText.h"
#include "core/NumericFault.h"
#include "functions/Elementary.h"
#include "functions/NearOne.h"
#include "functions/bessel.h"
#include "functions/besseljy.h"
#include "functions/betai.h"
#include "functions/gamma.h"
#include "functions/plgndr.h"

namespace quorvex {
namespace {

double Sign(double x) { return (x > 0) - (x < 0); }

// The inverse functions, circular and hyperbolic, are written with 1 - x and x - 1 where 1 - x*x would lose the digits
// that tell x from 1, and as odd functions of the magnitude where negative x would cancel.

double ArcSin(double x) { return Atn2(Sqr((1 - x) * (1 + x)), x); }
double ArcCos(double x) {
  const double angle = 2 * Atn(Sqr(1 - std::abs(x)) / Sqr(1 + std::abs(x)));
  return x < 0 ? 4 * Atn(1) - angle : angle;
}
double ArcSec(double x) {
  const double angle = 2 * Atn(Sqr(std::abs(x) - 1) / Sqr(std::abs(x) + 1));
  return x < 0 ? 4 * Atn(1) - angle : angle;
}
double ArcCosec(double x) { return Atn2(Sqr(std::abs(x) - 1) * Sqr(std::abs(x) + 1), Sign(x)); }
double ArcCotan(double x) { return x > 1 ? Atn(1 / x) : 2 * Atn(1) - Atn(x); }

// e^x + e^-x and e^x - e^-x.
double Sum(double x) { return Exp(HeldHyperbolic(x)) + Exp(-HeldHyperbolic(x)); }
double Difference(double x) {
  const double held = HeldHyperbolic(x);
  return HyperbolicDifference(held, Exp(held), Exp(-held));
}

// From here on 1 is nothing beside x squared.
constexpr double kLargeHyperbolic = 1e9;
constexpr double kLn2 = 0x1.62e42fefa39efp-1;

double HarcSin(double x) {
  const double t = std::abs(x);
  return Sign(x) * (t > kLargeHyperbolic ? Ln(t) + kLn2 : LnOnePlus(t + t * (t / (1 + Sqr(t * t + 1)))));
}

// The number whose hyperbolic cosine is 1 + t.
double HarcCosOfOnePlus(double t) { return LnOnePlus(t + Sqr(t) * Sqr(t + 2)); }

double HarcCos(double x) { return x > kLargeHyperbolic ? Ln(x) + kLn2 : HarcCosOfOnePlus(x - 1); }
double HarcSec(double x) { return x > 0 && x < 1 / kLargeHyperbolic ? kLn2 - Ln(x) : HarcCosOfOnePlus((1 - x) / x); }
double HarcCosec(double x) {
  const double t = std::abs(x);
  return t < 1 / kLargeHyperbolic ? Sign(x) * (kLn2 - Ln(t)) : HarcSin(1 / x);
}

double HarcTan(double x) {
  const double t = std::abs(x);
  return Sign(x) * LnOnePlus(2 * t / (1 - t)) / 2;
}
double HarcCotan(double x) { return Sign(x) * LnOnePlus(2 / (std::abs(x) - 1)) / 2; }

// sqrt(a*a + b*b), by way of a power of two where the squares would leave the range of a double.
double Magnitude(double a, double b) {
  const double larger = std::max(std::abs(a), std::abs(b));
  const double scale = larger > 0x1p500 ? 0x1p-600 : larger < 0x1p-450 ? 0x1p600 : 1;
  return Sqr((a * scale) * (a * scale) + (b * scale) * (b * scale)) / scale;
}

// Both functions of x*x, which is held where it would overflow. Where it would underflow, erf is a straight line.
double HeldSquare(double x) { return std::abs(x) < 1e3 ? x * x : 1e6; }
double Erf(double x) {
  constexpr double kSlope = 1.1283791670955126;  // 2/sqrt(pi)
  if (std::abs(x) < 1e-9) return kSlope * x;
  return x >= 0 ? gammp(0.5, HeldSquare(x)) : -gammp(0.5, HeldSquare(x));
}
double Erfc(double x) { return x >= 0 ? gammq(0.5, HeldSquare(x)) : 1 + gammp(0.5, HeldSquare(x)); }

// The chance of a value between -t and t, which is the regularised beta function of t^2/(v + t^2). The line that it is
// near 0 goes on where t^2 would underflow.
double Student(double t, double v) {
  constexpr double kLine = 1e-100;
  const double held = std::max(std::abs(t), kLine);
  const double ratio = held / v * held;
  const double within = betai(0.5, v / 2, {ratio / (1 + ratio), 1 / (1 + ratio)});
  return std::abs(t) < kLine ? within * (std::abs(t) / kLine) : within;
}

double FDist(double v1, double v2, double f) {
  const double ratio = v1 / v2 * f;
  return betai(v2 / 2, v1 / 2, {1 / (1 + ratio), ratio / (1 + ratio)});
}

// The digamma function at a whole number: 1 + 1/2 + ... + 1/(n-1) less Euler's constant, which alone stays below 2.
double Psi(int n) {
  double harmonic = 0;
  for (int k = 1; k < n; ++k) harmonic += 1.0 / k;
  return harmonic - 0.5772156649;
}

template <double (*Zero)(double), double (*One)(double), double (*Higher)(int, double)>
double OfOrder(const double* a) {
  const int n = RoundToInt16(a[0]);
  return n == 0 ? Zero(a[1]) : n == 1 ? One(a[1]) : Higher(n, a[1]);
}

double Finite(double value) {
  if (!std::isfinite(value)) throw NumericFault();
  return value;
}

using Args = const double*;

// clang-format off
constexpr IntrinsicFunction kFunctions[] = {
    {"abs", 1, 1, [](Args a, RandomState&) { return std::abs(a[0]); }},
    {"exp", 2, 1, [](Args a, RandomState&) { return Exp(a[0]); }},
    {"fix", 3, 1, [](Args a, RandomState&) { return std::trunc(a[0]); }},
    {"int", 4, 1, [](Args a, RandomState&) { return std::floor(a[0]); }},
    {"fract", 5, 1, [](Args a, RandomState&) { return a[0] - std::trunc(a[0]); }},
    {"log", 6, 1, [](Args a, RandomState&) { return Ln(a[0]); }},
    {"ln", 7, 1, [](Args a, RandomState&) { return Ln(a[0]); }},
    {"log10", 8, 1, [](Args a, RandomState&) { return Log10(a[0]); }},
    {"rnd", 9, 1, [](Args a, RandomState& random) { return random.Draw(a[0]); }},
    {"sgn", 10, 1, [](Args a, RandomState&) { return Sign(a[0]); }},
    {"sqr", 11, 1, [](Args a, RandomState&) { return Sqr(a[0]); }},
    {"cos", 12, 1, [](Args a, RandomState&) { return Cos(a[0]); }},
    {"sin", 13, 1, [](Args a, RandomState&) { return Sin(a[0]); }},
    {"tan", 14, 1, [](Args a, RandomState&) { return Tan(a[0]); }},
    {"arcsin", 15, 1, [](Args a, RandomState&) { return ArcSin(a[0]); }},
    {"arccos", 16, 1, [](Args a, RandomState&) { return ArcCos(a[0]); }},
    {"arctan", 17, 1, [](Args a, RandomState&) { return Atn(a[0]); }},
    {"sec", 18, 1, [](Args a, RandomState&) { return 1 / Cos(a[0]); }},
    {"cosec", 19, 1, [](Args a, RandomState&) { return 1 / Sin(a[0]); }},
    {"cotan", 20, 1, [](Args a, RandomState&) { return 1 / Tan(a[0]); }},
    {"arcsec", 21, 1, [](Args a, RandomState&) { return ArcSec(a[0]); }},
    {"arccosec", 22, 1, [](Args a, RandomState&) { return ArcCosec(a[0]); }},
    {"arccotan", 23, 1, [](Args a, RandomState&) { return ArcCotan(a[0]); }},
    {"hsin", 24, 1, [](Args a, RandomState&) { return Difference(a[0]) / 2; }},
    {"hcos", 25, 1, [](Args a, RandomState&) { return Sum(a[0]) / 2; }},
    {"htan", 26, 1, [](Args a, RandomState&) { return Difference(a[0]) / Sum(a[0]); }},
    {"hsec", 27, 1, [](Args a, RandomState&) { return 2 / Sum(a[0]); }},
    {"hcosec", 28, 1, [](Args a, RandomState&) { return 2 / Difference(a[0]); }},
    {"hcotan", 29, 1, [](Args a, RandomState&) { return Sum(a[0]) / Difference(a[0]); }},
    {"harcsin", 30, 1, [](Args a, RandomState&) { return HarcSin(a[0]); }},
    {"harccos", 31, 1, [](Args a, RandomState&) { return HarcCos(a[0]); }},
    {"harctan", 32, 1, [](Args a, RandomState&) { return HarcTan(a[0]); }},
    {"harcsec", 33, 1, [](Args a, RandomState&) { return HarcSec(a[0]); }},
    {"harccosec", 34, 1, [](Args a, RandomState&) { return HarcCosec(a[0]); }},
    {"harccotan", 35, 1, [](Args a, RandomState&) { return HarcCotan(a[0]); }},
    {"rtod", 36, 1, [](Args a, RandomState&) { return a[0] / kPi * 180; }},
    {"dtor", 37, 1, [](Args a, RandomState&) { return a[0] / 180 * kPi; }},
    {"erf", 38, 1, [](Args a, RandomState&) { return Erf(a[0]); }},
    {"erfc", 39, 1, [](Args a, RandomState&) { return Erfc(a[0]); }, WrittenIn::OneVariable},
    {"fact", 40, 1, [](Args a, RandomState&) { return factrl(RoundToInt16(a[0])); }},
    {"factln", 41, 1, [](Args a, RandomState&) { return factln(RoundToInt16(a[0])); }},
    {"gamma", 42, 1, [](Args a, RandomState&) { return Exp(gammln(a[0])); }},
    {"gammaln", 43, 1, [](Args a, RandomState&) { return gammln(a[0]); }},
    {"psi", 44, 1, [](Args a, RandomState&) { return Psi(RoundToInt16(a[0])); }},
    {"if", 45, 3, nullptr},
    {"endtrue", 46, 0, nullptr, WrittenIn::NoModel},
    {"endif", 47, 0, nullptr, WrittenIn::NoModel},
    {"igamma", 48, 2, [](Args a, RandomState&) { return gammp(a[0], a[1]); }},
    {"igammac", 49, 2, [](Args a, RandomState&) { return gammq(a[0], a[1]); }},
    {"beta", 50, 2, [](Args a, RandomState&) { return Exp(betaln(a[0], a[1])); }},
    {"poisson", 51, 2, [](Args a, RandomState&) { return gammq(a[0], a[1]); }},
    {"student", 52, 2, [](Args a, RandomState&) { return Student(a[0], a[1]); }},
    {"chi2", 53, 2, [](Args a, RandomState&) { return gammp(a[1] / 2, a[0] / 2); }},
    {"chi2c", 54, 2, [](Args a, RandomState&) { return gammq(a[1] / 2, a[0] / 2); }},
    {"jn", 55, 2, [](Args a, RandomState&) { return OfOrder<bessj0, bessj1, bessj>(a); }},
    {"yn", 56, 2, [](Args a, RandomState&) { return OfOrder<bessy0, bessy1, bessy>(a); }},
    {"in", 57, 2, [](Args a, RandomState&) { return OfOrder<bessi0, bessi1, bessi>(a); }},
    {"kn", 58, 2, [](Args a, RandomState&) { return OfOrder<bessk0, bessk1, bessk>(a); }},
    {"jnu", 59, 2, [](Args a, RandomState&) { return BesselJ(a[0], a[1]).Value; }},
    {"ynu", 60, 2, [](Args a, RandomState&) { return BesselY(a[0], a[1]); }},
    {"djnu", 61, 2, [](Args a, RandomState&) { return BesselJ(a[0], a[1]).Slope; }},
    {"dynu", 62, 2, [](Args a, RandomState&) { return bessjy(a[1], a[0]).DY; }},
    {"inu", 63, 2, [](Args a, RandomState&) { return BesselI(a[0], a[1]).Value; }},
    {"knu", 64, 2, [](Args a, RandomState&) { return BesselK(a[0], a[1]); }},
    {"dinu", 65, 2, [](Args a, RandomState&) { return BesselI(a[0], a[1]).Slope; }},
    {"dknu", 66, 2, [](Args a, RandomState&) { return BesselKSlope(a[0], a[1]); }},
    {"sphjn", 67, 2, [](Args a, RandomState&) { return SphericalJ(RoundToInt16(a[0]), a[1]).Value; }},
    {"sphyn", 68, 2, [](Args a, RandomState&) { return sphbes(RoundToInt16(a[0]), a[1]).Y; }},
    {"dsphjn", 69, 2, [](Args a, RandomState&) { return SphericalJ(RoundToInt16(a[0]), a[1]).Slope; }},
    {"dsphyn", 70, 2, [](Args a, RandomState&) { return sphbes(RoundToInt16(a[0]), a[1]).DY; }},
    {"max", 71, 2, [](Args a, RandomState&) { return a[0] >= a[1] ? a[0] : a[1]; }},
    {"min", 72, 2, [](Args a, RandomState&) { return a[0] >= a[1] ? a[1] : a[0]; }},
    {"mag", 73, 2, [](Args a, RandomState&) { return Magnitude(a[0], a[1]); }},
    {"legendre", 74, 3, [](Args a, RandomState&) { return plgndr(RoundToInt16(a[0]), RoundToInt16(a[1]), a[2]); }},
    {"binomial", 75, 3, [](Args a, RandomState&) { return betai(a[0], a[1] - a[0] + 1, a[2]); }},
    {"ibeta", 76, 3, [](Args a, RandomState&) { return betai(a[0], a[1], a[2]); }},
    {"fdist", 77, 3, [](Args a, RandomState&) { return FDist(a[0], a[1], a[2]); }},
    {"j0", 78, 1, [](Args a, RandomState&) { return bessj0(a[0]); }},
    {"j1", 79, 1, [](Args a, RandomState&) { return bessj1(a[0]); }},
    {"y0", 80, 1, [](Args a, RandomState&) { return bessy0(a[0]); }},
    {"y1", 81, 1, [](Args a, RandomState&) { return bessy1(a[0]); }},
    {"i0", 82, 1, [](Args a, RandomState&) { return bessi0(a[0]); }},
    {"i1", 83, 1, [](Args a, RandomState&) { return bessi1(a[0]); }},
    {"k0", 84, 1, [](Args a, RandomState&) { return bessk0(a[0]); }},
    {"k1", 85, 1, [](Args a, RandomState&) { return bessk1(a[0]); }},
    {"airya", 86, 1, [](Args a, RandomState&) { return airy(a[0]).Ai; }},
    {"airyb", 87, 1, [](Args a, RandomState&) { return Finite(airy(a[0]).Bi); }},
    {"dairya", 88, 1, [](Args a, RandomState&) { return airy(a[0]).DAi; }},
    {"dairyb", 89, 1, [](Args a, RandomState&) { return Finite(airy(a[0]).DBi); }},
    {"floor", 90, 1, [](Args a, RandomState&) { return std::floor(a[0]); }},
    {"ceil", 91, 1, [](Args a, RandomState&) { return std::ceil(a[0]); }},
};
// clang-format on

static_assert(std::size(kFunctions) == 91);
static_assert([] {
  int code = 0;
  return std::all_of(std::begin(kFunctions), std::end(kFunctions), [&](const auto& row) { return row.Code == ++code; });
}());

}  // namespace

double RandomState::Draw(double x) {
  constexpr std::uint64_t kIncrement = 0x9E3779B97F4A7C15;  // 2^64 over the golden ratio, made odd
  if (x < 0) counter_ = std::bit_cast<std::uint64_t>(x);
  if (x != 0) counter_ += kIncrement;
  std::uint64_t bits = counter_;
  bits = (bits ^ (bits >> 30)) * 0xBF58476D1CE4E5B9;
  bits = (bits ^ (bits >> 27)) * 0x94D049BB133111EB;
  bits ^= bits >> 31;
  // The upper 53 bits: a double holds as many, so that the number stays below 1.
  return static_cast<double>(bits >> 11) * 0x1p-53;
}

std::span<const IntrinsicFunction> IntrinsicFunctions() { return kFunctions; }

const IntrinsicFunction* FindFunction(std::string_view word) {
  const auto* row = std::ranges::find(kFunctions, word, &IntrinsicFunction::Name);
  return row == std::end(kFunctions) ? nullptr : row;
}

bool IsFunctionName(std::string_view word, bool severalVariables) {
  const IntrinsicFunction* function = FindFunction(word);
  if (!function) return false;
  return function->Word == WrittenIn::AnyModel || (function->Word == WrittenIn::OneVariable && !severalVariables);
}

double CallFunction(int code, const double* args, RandomState& random) {
  assert(code >= 1 && code <= 91 && kFunctions[code - 1].Call);
  return kFunctions[code - 1].Call(args, random);
}

double Atn2(double X, double Y) {
  if (X == 0) return Sign(Y) * kPi / 2;
  const double angle = Y == 0 ? 0 : Atn(Y / X);
  if (X > 0) return angle;
  return Y < 0 ? angle - kPi : angle + kPi;
}

}  // namespace quorvex
