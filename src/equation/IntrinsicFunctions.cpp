#include "equation/IntrinsicFunctions.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cmath>

#include "core/NumberText.h"
#include "equation/Elementary.h"
#include "equation/bessel.h"
#include "equation/besseljy.h"
#include "equation/betai.h"
#include "equation/gamma.h"
#include "equation/plgndr.h"

namespace quorvex {
namespace {

double Sign(double x) { return (x > 0) - (x < 0); }

double ArcSin(double x) { return Atn2(Sqr(1 - x * x), x); }
double ArcCos(double x) { return Atn2(Sqr(1 - x * x), -x) + 2 * Atn(1); }

// e^x + e^-x and e^x - e^-x.
double Sum(double x) { return Exp(HeldHyperbolic(x)) + Exp(-HeldHyperbolic(x)); }
double Difference(double x) { return Exp(HeldHyperbolic(x)) - Exp(-HeldHyperbolic(x)); }

double Erf(double x) { return x >= 0 ? gammp(0.5, x * x) : -gammp(0.5, x * x); }
double Erfc(double x) { return x >= 0 ? gammq(0.5, x * x) : 1 + gammp(0.5, x * x); }

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
    {"log10", 8, 1, [](Args a, RandomState&) { return Ln(a[0]) / Ln(10); }},
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
    {"arcsec", 21, 1, [](Args a, RandomState&) { return ArcCos(1 / a[0]); }},
    {"arccosec", 22, 1, [](Args a, RandomState&) { return ArcSin(1 / a[0]); }},
    {"arccotan", 23, 1, [](Args a, RandomState&) { return 2 * Atn(1) - Atn(a[0]); }},
    {"hsin", 24, 1, [](Args a, RandomState&) { return Difference(a[0]) / 2; }},
    {"hcos", 25, 1, [](Args a, RandomState&) { return Sum(a[0]) / 2; }},
    {"htan", 26, 1, [](Args a, RandomState&) { return Difference(a[0]) / Sum(a[0]); }},
    {"hsec", 27, 1, [](Args a, RandomState&) { return 2 / Sum(a[0]); }},
    {"hcosec", 28, 1, [](Args a, RandomState&) { return 2 / Difference(a[0]); }},
    {"hcotan", 29, 1, [](Args a, RandomState&) { return Sum(a[0]) / Difference(a[0]); }},
    {"harcsin", 30, 1, [](Args a, RandomState&) { return Ln(a[0] + Sqr(a[0] * a[0] + 1)); }},
    {"harccos", 31, 1, [](Args a, RandomState&) { return Ln(a[0] + Sqr(a[0] * a[0] - 1)); }},
    {"harctan", 32, 1, [](Args a, RandomState&) { return Ln((1 + a[0]) / (1 - a[0])) / 2; }},
    {"harcsec", 33, 1, [](Args a, RandomState&) { return Ln((Sqr(1 - a[0] * a[0]) + 1) / a[0]); }},
    {"harccosec", 34, 1, [](Args a, RandomState&) { return Ln((Sign(a[0]) * Sqr(a[0] * a[0] + 1) + 1) / a[0]); }},
    {"harccotan", 35, 1, [](Args a, RandomState&) { return Ln((a[0] + 1) / (a[0] - 1)) / 2; }},
    {"rtod", 36, 1, [](Args a, RandomState&) { return a[0] * 180 / kPi; }},
    {"dtor", 37, 1, [](Args a, RandomState&) { return a[0] * kPi / 180; }},
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
    {"beta", 50, 2, [](Args a, RandomState&) { return Exp(gammln(a[0]) + gammln(a[1]) - gammln(a[0] + a[1])); }},
    {"poisson", 51, 2, [](Args a, RandomState&) { return gammq(a[0], a[1]); }},
    {"student", 52, 2, [](Args a, RandomState&) { return 1 - betai(a[1] / 2, 0.5, a[1] / (a[1] + a[0] * a[0])); }},
    {"chi2", 53, 2, [](Args a, RandomState&) { return gammp(a[1] / 2, a[0] / 2); }},
    {"chi2c", 54, 2, [](Args a, RandomState&) { return gammq(a[1] / 2, a[0] / 2); }},
    {"jn", 55, 2, [](Args a, RandomState&) { return OfOrder<bessj0, bessj1, bessj>(a); }},
    {"yn", 56, 2, [](Args a, RandomState&) { return OfOrder<bessy0, bessy1, bessy>(a); }},
    {"in", 57, 2, [](Args a, RandomState&) { return OfOrder<bessi0, bessi1, bessi>(a); }},
    {"kn", 58, 2, [](Args a, RandomState&) { return OfOrder<bessk0, bessk1, bessk>(a); }},
    {"jnu", 59, 2, [](Args a, RandomState&) { return bessjy(a[1], a[0]).J; }},
    {"ynu", 60, 2, [](Args a, RandomState&) { return bessjy(a[1], a[0]).Y; }},
    {"djnu", 61, 2, [](Args a, RandomState&) { return bessjy(a[1], a[0]).DJ; }},
    {"dynu", 62, 2, [](Args a, RandomState&) { return bessjy(a[1], a[0]).DY; }},
    {"inu", 63, 2, [](Args a, RandomState&) { return bessik(a[1], a[0]).I; }},
    {"knu", 64, 2, [](Args a, RandomState&) { return bessik(a[1], a[0]).K; }},
    {"dinu", 65, 2, [](Args a, RandomState&) { return bessik(a[1], a[0]).DI; }},
    {"dknu", 66, 2, [](Args a, RandomState&) { return bessik(a[1], a[0]).DK; }},
    {"sphjn", 67, 2, [](Args a, RandomState&) { return sphbes(RoundToInt16(a[0]), a[1]).J; }},
    {"sphyn", 68, 2, [](Args a, RandomState&) { return sphbes(RoundToInt16(a[0]), a[1]).Y; }},
    {"dsphjn", 69, 2, [](Args a, RandomState&) { return sphbes(RoundToInt16(a[0]), a[1]).DJ; }},
    {"dsphyn", 70, 2, [](Args a, RandomState&) { return sphbes(RoundToInt16(a[0]), a[1]).DY; }},
    {"max", 71, 2, [](Args a, RandomState&) { return a[0] >= a[1] ? a[0] : a[1]; }},
    {"min", 72, 2, [](Args a, RandomState&) { return a[0] >= a[1] ? a[1] : a[0]; }},
    {"mag", 73, 2, [](Args a, RandomState&) { return Sqr(a[0] * a[0] + a[1] * a[1]); }},
    {"legendre", 74, 3, [](Args a, RandomState&) { return plgndr(RoundToInt16(a[0]), RoundToInt16(a[1]), a[2]); }},
    {"binomial", 75, 3, [](Args a, RandomState&) { return betai(a[0], a[1] - a[0] + 1, a[2]); }},
    {"ibeta", 76, 3, [](Args a, RandomState&) { return betai(a[0], a[1], a[2]); }},
    {"fdist", 77, 3, [](Args a, RandomState&) { return betai(a[1] / 2, a[0] / 2, a[1] / (a[1] + a[0] * a[2])); }},
    {"j0", 78, 1, [](Args a, RandomState&) { return bessj0(a[0]); }},
    {"j1", 79, 1, [](Args a, RandomState&) { return bessj1(a[0]); }},
    {"y0", 80, 1, [](Args a, RandomState&) { return bessy0(a[0]); }},
    {"y1", 81, 1, [](Args a, RandomState&) { return bessy1(a[0]); }},
    {"i0", 82, 1, [](Args a, RandomState&) { return bessi0(a[0]); }},
    {"i1", 83, 1, [](Args a, RandomState&) { return bessi1(a[0]); }},
    {"k0", 84, 1, [](Args a, RandomState&) { return bessk0(a[0]); }},
    {"k1", 85, 1, [](Args a, RandomState&) { return bessk1(a[0]); }},
    {"airya", 86, 1, [](Args a, RandomState&) { return airy(a[0]).Ai; }},
    {"airyb", 87, 1, [](Args a, RandomState&) { return airy(a[0]).Bi; }},
    {"dairya", 88, 1, [](Args a, RandomState&) { return airy(a[0]).DAi; }},
    {"dairyb", 89, 1, [](Args a, RandomState&) { return airy(a[0]).DBi; }},
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
