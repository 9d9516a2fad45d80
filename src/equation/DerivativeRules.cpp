#include "equation/DerivativeRules.h"

#include <array>
#include <cfenv>
#include <cmath>
#include <limits>

#include "core/NumberText.h"
#include "core/NumericFault.h"
#include "equation/IntrinsicFunctions.h"
#include "functions/DoubleDouble.h"
#include "functions/Elementary.h"
#include "functions/besselslopes.h"
#include "functions/densities.h"
#include "functions/digamma.h"
#include "functions/plgndrslope.h"

namespace quorvex {
namespace {

// A derivative over a block: of its first argument x and value v, or of all arguments.
using Rule = void (*)(const BlockOperand (&arguments)[3], const BlockOperand& value, std::size_t n, double* out);

// A formula in x and v.
template <double formula(double x, double v)>
void Of(const BlockOperand (&arguments)[3], const BlockOperand& value, std::size_t n, double* __restrict out) {
  const double* const x = arguments[0].Points;
  const double* const v = value.Points;
  if (x == nullptr || v == nullptr) {
    for (std::size_t i = 0; i < n; ++i) out[i] = formula(arguments[0].At(i), value.At(i));
  } else {
    for (std::size_t i = 0; i < n; ++i) out[i] = formula(x[i], v[i]);
  }
}

// A formula in v and w, the value at x of another function of the language.
template <int other, double formula(double v, double w)>
void With(const BlockOperand (&arguments)[3], const BlockOperand& value, std::size_t n, double* __restrict out) {
  FunctionOverBlock(other, arguments, n, out);
  const double* const v = value.Points;
  if (v == nullptr) {
    for (std::size_t i = 0; i < n; ++i) out[i] = formula(value.Value, out[i]);
  } else {
    for (std::size_t i = 0; i < n; ++i) out[i] = formula(v[i], out[i]);
  }
}

// The same for the hyperbolic functions, which are constant where they hold x.
template <int other, double formula(double v, double w)>
void Hyperbolic(const BlockOperand (&arguments)[3], const BlockOperand& value, std::size_t n, double* out) {
  With<other, formula>(arguments, value, n, out);
  for (std::size_t i = 0; i < n; ++i)
    if (HeldHyperbolic(arguments[0].At(i)) != arguments[0].At(i)) out[i] = 0;
}

// A formula in all arguments, point by point.
template <double formula(const double* a)>
void At(const BlockOperand (&arguments)[3], const BlockOperand&, std::size_t n, double* out) {
  for (std::size_t i = 0; i < n; ++i) {
    const double a[3] = {arguments[0].At(i), arguments[1].At(i), arguments[2].At(i)};
    try {
      out[i] = formula(a);
    } catch (const NumericFault&) {
      std::feraiseexcept(FE_INVALID);
      out[i] = std::numeric_limits<double>::quiet_NaN();
    }
  }
}

template <int whole>
void Constant(const BlockOperand (&)[3], const BlockOperand&, std::size_t n, double* out) {
  for (std::size_t i = 0; i < n; ++i) out[i] = whole;
}

constexpr Rule kStep = Constant<0>;
constexpr Rule kStraight = Constant<1>;
constexpr Rule kNone = nullptr;

constexpr int kCos = 12, kSin = 13, kHsin = 24, kHcos = 25, kHtan = 26, kHsec = 27, kHcosec = 28, kHcotan = 29;

// ---- Elementary functions, written so that neither 1 - x loses digits near 1 nor x*x leaves the range of a double.

// 1/(1 + x*x)
double ArcTanSlope(double x) {
  const bool near = std::abs(x) <= 1;
  const double t = near ? x : 1 / x;
  const double slope = 1 / (1 + t * t);
  return near ? slope : slope * t * t;
}

// 1/(|x| sqrt(x*x - 1))
double ArcSecSlope(double x) {
  const double t = std::abs(x);
  return 1 / t / (Sqr(t - 1) * Sqr(t + 1));
}

// 1/sqrt(x*x + 1)
double HarcSinSlope(double x) {
  const double t = std::abs(x);
  return t <= 1 ? 1 / Sqr(1 + t * t) : 1 / t / Sqr(1 + (1 / t) * (1 / t));
}

// a/sqrt(a*a + b*b)
double MagnitudeSlope(double a, double b) {
  if (std::abs(a) >= std::abs(b)) return std::copysign(1 / Sqr(1 + (b / a) * (b / a)), a);
  return a / std::abs(b) / Sqr(1 + (a / b) * (a / b));
}

// ---- Special functions

// 2/sqrt(pi) exp(-x*x), where the rounding of the square would count.
double ErfSlope(double x) {
  constexpr double kTwoOverRootPi = 1.1283791670955126;
  const double held = std::abs(x) < 100 ? x : 100;  // nothing is left here
  const DoubleDouble square = Product(held, held);
  const double power = Exp(-square.Hi);
  return kTwoOverRootPi * (power - power * square.Lo);
}

// d/da B(a, b)
double BetaSlope(double a, double b) { return -Exp(LnBeta(a, b)) * DigammaRise(a, b); }

// Of the incomplete beta function by its second parameter.
double BetaByOther(double a, double b, double x) { return -BetaByParameter(b, a, {1 - x, x}); }

// The same where the first parameter grows as the second falls.
double BinomialByCount(double a, double b, double x) {
  return BetaByParameter(a, b, {x, 1 - x}) - BetaByOther(a, b, x);
}

// Of the incomplete beta function at 1/(1 + ratio), which falls as f grows.
double FDistSlope(double v1, double v2, double f) {
  const double ratio = v1 / v2 * f;
  const double x = 1 / (1 + ratio);
  return -(BetaDensity(v2 / 2, v1 / 2, {x, ratio / (1 + ratio)}) * x) * x * (v1 / v2);
}

// The same by the degrees of freedom.
double FDistByUpper(double v1, double v2, double f) {
  const double ratio = v1 / v2 * f;
  return -BetaByFreedom(v1 / 2, v2 / 2, {ratio / (1 + ratio), 1 / (1 + ratio)});
}

double FDistByLower(double v1, double v2, double f) {
  const double ratio = v1 / v2 * f;
  return BetaByFreedom(v2 / 2, v1 / 2, {1 / (1 + ratio), ratio / (1 + ratio)});
}

// ---- The table

// The derivatives of a function by its arguments.
struct Rules {
  int Code;
  Rule By[3];
};

using X = double;         // the argument
using V = double;         // the value
using W = double;         // the value of the other function
using A = const double*;  // all arguments
using Kind = BesselKind;

// clang-format off
constexpr Rules kRules[] = {
    {/* abs */ 1, {Of<[](X x, V) { return x < 0 ? -1.0 : 1.0; }>}},
    {/* exp */ 2, {Of<[](X, V v) { return v; }>}},
    {/* fix */ 3, {kStep}},
    {/* int */ 4, {kStep}},
    {/* fract */ 5, {kStraight}},
    {/* log */ 6, {Of<[](X x, V) { return 1 / x; }>}},
    {/* ln */ 7, {Of<[](X x, V) { return 1 / x; }>}},
    {/* log10 */ 8, {Of<[](X x, V) { return 0.43429448190325182765 / x; }>}},  // 1/ln(10)
    {/* rnd */ 9, {kNone}},
    {/* sgn */ 10, {kStep}},
    {/* sqr */ 11, {Of<[](X, V v) { return 0.5 / v; }>}},
    {/* cos */ 12, {With<kSin, [](V, W sine) { return -sine; }>}},
    {/* sin */ 13, {With<kCos, [](V, W cosine) { return cosine; }>}},
    {/* tan */ 14, {Of<[](X, V v) { return 1 + v * v; }>}},
    {/* arcsin */ 15, {Of<[](X x, V) { return 1 / Sqr((1 - x) * (1 + x)); }>}},
    {/* arccos */ 16, {Of<[](X x, V) { return -1 / Sqr((1 - x) * (1 + x)); }>}},
    {/* arctan */ 17, {Of<[](X x, V) { return ArcTanSlope(x); }>}},
    {/* sec */ 18, {With<kSin, [](V v, W sine) { return v * v * sine; }>}},
    {/* cosec */ 19, {With<kCos, [](V v, W cosine) { return -v * v * cosine; }>}},
    {/* cotan */ 20, {Of<[](X, V v) { return -(1 + v * v); }>}},
    {/* arcsec */ 21, {Of<[](X x, V) { return ArcSecSlope(x); }>}},
    {/* arccosec */ 22, {Of<[](X x, V) { return -ArcSecSlope(x); }>}},
    {/* arccotan */ 23, {Of<[](X x, V) { return -ArcTanSlope(x); }>}},
    {/* hsin */ 24, {Hyperbolic<kHcos, [](V, W w) { return w; }>}},
    {/* hcos */ 25, {Hyperbolic<kHsin, [](V, W w) { return w; }>}},
    {/* htan */ 26, {Hyperbolic<kHsec, [](V, W w) { return w * w; }>}},
    {/* hsec */ 27, {Hyperbolic<kHtan, [](V v, W w) { return -v * w; }>}},
    {/* hcosec */ 28, {Hyperbolic<kHcotan, [](V v, W w) { return -v * w; }>}},
    {/* hcotan */ 29, {Hyperbolic<kHcosec, [](V, W w) { return -(w * w); }>}},
    {/* harcsin */ 30, {Of<[](X x, V) { return HarcSinSlope(x); }>}},
    {/* harccos */ 31, {Of<[](X x, V) { return 1 / (Sqr(x - 1) * Sqr(x + 1)); }>}},
    {/* harctan */ 32, {Of<[](X x, V) { return 1 / ((1 - x) * (1 + x)); }>}},
    {/* harcsec */ 33, {Of<[](X x, V) { return -1 / (x * Sqr((1 - x) * (1 + x))); }>}},
    {/* harccosec */ 34, {Of<[](X x, V) { return -HarcSinSlope(x) / std::abs(x); }>}},
    {/* harccotan */ 35, {Of<[](X x, V) { return 1 / (1 - x) / (1 + x); }>}},
    {/* rtod */ 36, {Of<[](X, V) { return 180 / kPi; }>}},
    {/* dtor */ 37, {Of<[](X, V) { return kPi / 180; }>}},
    {/* erf */ 38, {Of<[](X x, V) { return ErfSlope(x); }>}},
    {/* erfc */ 39, {Of<[](X x, V) { return -ErfSlope(x); }>}},
    {/* fact */ 40, {kStep}},
    {/* factln */ 41, {kStep}},
    {/* gamma */ 42, {At<[](A a) { return Exp(LnGamma(a[0])) * Digamma(a[0]); }>}},
    {/* gammaln */ 43, {At<[](A a) { return Digamma(a[0]); }>}},
    {/* psi */ 44, {kStep}},
    {/* igamma */ 48, {At<[](A a) { return GammaByParameter(a[0], a[1]); }>,
                       At<[](A a) { return GammaDensity(a[0], a[1]); }>}},
    {/* igammac */ 49, {At<[](A a) { return -GammaByParameter(a[0], a[1]); }>,
                        At<[](A a) { return -GammaDensity(a[0], a[1]); }>}},
    {/* beta */ 50, {At<[](A a) { return BetaSlope(a[0], a[1]); }>,
                     At<[](A a) { return BetaSlope(a[1], a[0]); }>}},
    {/* poisson */ 51, {At<[](A a) { return -GammaByParameter(a[0], a[1]); }>,
                        At<[](A a) { return -GammaDensity(a[0], a[1]); }>}},
    {/* student */ 52, {At<[](A a) { return a[0] < 0 ? -StudentDensity(a[0], a[1]) : StudentDensity(a[0], a[1]); }>,
                        At<[](A a) { return StudentByFreedom(a[0], a[1]); }>}},
    {/* chi2 */ 53, {At<[](A a) { return GammaDensity(a[1] / 2, a[0] / 2) / 2; }>,
                     At<[](A a) { return GammaByParameter(a[1] / 2, a[0] / 2) / 2; }>}},
    {/* chi2c */ 54, {At<[](A a) { return -GammaDensity(a[1] / 2, a[0] / 2) / 2; }>,
                      At<[](A a) { return -GammaByParameter(a[1] / 2, a[0] / 2) / 2; }>}},
    {/* jn */ 55, {kStep, At<[](A a) { return WholeOrderSlope(Kind::J, RoundToInt16(a[0]), a[1]); }>}},
    {/* yn */ 56, {kStep, At<[](A a) { return WholeOrderSlope(Kind::Y, RoundToInt16(a[0]), a[1]); }>}},
    {/* in */ 57, {kStep, At<[](A a) { return WholeOrderSlope(Kind::I, RoundToInt16(a[0]), a[1]); }>}},
    {/* kn */ 58, {kStep, At<[](A a) { return WholeOrderSlope(Kind::K, RoundToInt16(a[0]), a[1]); }>}},
    {/* jnu */ 59, {kNone, At<[](A a) { return PreciseBessel(Kind::J, a[0], a[1]).Slope; }>}},
    {/* ynu */ 60, {kNone, At<[](A a) { return PreciseBessel(Kind::Y, a[0], a[1]).Slope; }>}},
    {/* djnu */ 61, {kNone, At<[](A a) { return BesselCurvature(Kind::J, a[0], a[1]); }>}},
    {/* dynu */ 62, {kNone, At<[](A a) { return BesselCurvature(Kind::Y, a[0], a[1]); }>}},
    {/* inu */ 63, {kNone, At<[](A a) { return PreciseBessel(Kind::I, a[0], a[1]).Slope; }>}},
    {/* knu */ 64, {kNone, At<[](A a) { return PreciseBessel(Kind::K, a[0], a[1]).Slope; }>}},
    {/* dinu */ 65, {kNone, At<[](A a) { return BesselCurvature(Kind::I, a[0], a[1]); }>}},
    {/* dknu */ 66, {kNone, At<[](A a) { return BesselCurvature(Kind::K, a[0], a[1]); }>}},
    {/* sphjn */ 67, {kStep, At<[](A a) { return PreciseSpherical(Kind::J, RoundToInt16(a[0]), a[1]).Slope; }>}},
    {/* sphyn */ 68, {kStep, At<[](A a) { return PreciseSpherical(Kind::Y, RoundToInt16(a[0]), a[1]).Slope; }>}},
    {/* dsphjn */ 69, {kStep, At<[](A a) { return SphericalCurvature(Kind::J, RoundToInt16(a[0]), a[1]); }>}},
    {/* dsphyn */ 70, {kStep, At<[](A a) { return SphericalCurvature(Kind::Y, RoundToInt16(a[0]), a[1]); }>}},
    {/* max */ 71, {At<[](A a) { return a[0] >= a[1] ? 1.0 : 0.0; }>,
                    At<[](A a) { return a[0] >= a[1] ? 0.0 : 1.0; }>}},
    {/* min */ 72, {At<[](A a) { return a[0] >= a[1] ? 0.0 : 1.0; }>,
                    At<[](A a) { return a[0] >= a[1] ? 1.0 : 0.0; }>}},
    {/* mag */ 73, {At<[](A a) { return MagnitudeSlope(a[0], a[1]); }>,
                    At<[](A a) { return MagnitudeSlope(a[1], a[0]); }>}},
    {/* legendre */ 74, {kStep, kStep,
                         At<[](A a) { return plgndrslope(RoundToInt16(a[0]), RoundToInt16(a[1]), a[2]); }>}},
    {/* binomial */ 75, {At<[](A a) { return BinomialByCount(a[0], a[1] - a[0] + 1, a[2]); }>,
                         At<[](A a) { return BetaByOther(a[0], a[1] - a[0] + 1, a[2]); }>,
                         At<[](A a) { return BetaDensity(a[0], a[1] - a[0] + 1, {a[2], 1 - a[2]}); }>}},
    {/* ibeta */ 76, {At<[](A a) { return BetaByParameter(a[0], a[1], {a[2], 1 - a[2]}); }>,
                      At<[](A a) { return BetaByOther(a[0], a[1], a[2]); }>,
                      At<[](A a) { return BetaDensity(a[0], a[1], {a[2], 1 - a[2]}); }>}},
    {/* fdist */ 77, {At<[](A a) { return FDistByUpper(a[0], a[1], a[2]); }>,
                     At<[](A a) { return FDistByLower(a[0], a[1], a[2]); }>,
                     At<[](A a) { return FDistSlope(a[0], a[1], a[2]); }>}},
    {/* j0 */ 78, {At<[](A a) { return WholeOrderSlope(Kind::J, 0, a[0]); }>}},
    {/* j1 */ 79, {At<[](A a) { return WholeOrderSlope(Kind::J, 1, a[0]); }>}},
    {/* y0 */ 80, {At<[](A a) { return WholeOrderSlope(Kind::Y, 0, a[0]); }>}},
    {/* y1 */ 81, {At<[](A a) { return WholeOrderSlope(Kind::Y, 1, a[0]); }>}},
    {/* i0 */ 82, {At<[](A a) { return WholeOrderSlope(Kind::I, 0, a[0]); }>}},
    {/* i1 */ 83, {At<[](A a) { return WholeOrderSlope(Kind::I, 1, a[0]); }>}},
    {/* k0 */ 84, {At<[](A a) { return WholeOrderSlope(Kind::K, 0, a[0]); }>}},
    {/* k1 */ 85, {At<[](A a) { return WholeOrderSlope(Kind::K, 1, a[0]); }>}},
    {/* airya */ 86, {At<[](A a) { return PreciseAiry(a[0]).DAi; }>}},
    {/* airyb */ 87, {At<[](A a) { return PreciseAiry(a[0]).DBi; }>}},
    {/* dairya */ 88, {At<[](A a) { return a[0] * PreciseAiry(a[0]).Ai; }>}},
    {/* dairyb */ 89, {At<[](A a) { return a[0] * PreciseAiry(a[0]).Bi; }>}},
    {/* floor */ 90, {kStep}},
    {/* ceil */ 91, {kStep}},
};
// clang-format on

constexpr auto kByCode = [] {
  std::array<Rules, 92> byCode{};  // control flow, 45 to 47, has no rules
  for (const Rules& rules : kRules) byCode[static_cast<std::size_t>(rules.Code)] = rules;
  return byCode;
}();

Rule RuleOf(int code, std::size_t which) { return kByCode[static_cast<std::size_t>(code)].By[which]; }

}  // namespace

bool HasPartial(int code, std::size_t which) { return RuleOf(code, which) != nullptr; }

void PartialOverBlock(int code, std::size_t which, const BlockOperand (&arguments)[3], const BlockOperand& value,
                      std::size_t n, double* out) {
  RuleOf(code, which)(arguments, value, n, out);
}

}  // namespace quorvex
