#include "functions/besseljy.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/NumericFault.h"
#include "functions/Elementary.h"
#include "functions/LentzFraction.h"
#include "functions/besselends.h"

namespace quorvex {
namespace {

constexpr int MAXIT = 10000;
constexpr double EPS = 1e-16;  // below the spacing of doubles at 1: a fraction has settled when it moves no more
constexpr double FPMIN = 1e-30;
constexpr double XMIN = 2;

void RequireDomain(double x, double nu) {
  if (!(x > 0 && nu >= 0)) throw NumericFault();
}

// The steps that a recurrence takes from nu down to the order that the other method wants. Where there would be more,
// J or I has long underflowed and Y or K overflowed, except at arguments too large for any digit to be right.
int WholeSteps(double steps) {
  if (!(steps < 32768)) throw NumericFault();
  return steps > 0 ? static_cast<int>(steps) : 0;
}

// The logarithmic derivative of J (curvature -1) or I (curvature 1) at order nu, by the fraction that follows from the
// three-term recurrence; and the sign of the function there, if it is positive at order infinity.
struct LogDerivative {
  double Value;
  double Sign;
};

LogDerivative FirstFraction(double x, double nu, double curvature) {
  const double step = 2 / x;
  double b = step * nu;
  auto fraction = LentzFraction<double>::StartingWith(std::max(nu / x, FPMIN));
  double sign = 1;
  for (int i = 1; i <= MAXIT; ++i) {
    b += step;
    const double change = fraction.Step(curvature, b);
    if (fraction.D < 0) sign = -sign;
    if (std::abs(change - 1) < EPS) return {fraction.Value, sign};
  }
  throw NumericFault();
}

// J (curvature -1) or I (curvature 1) and its derivative.
struct Pair {
  double Value;
  double Slope;
};

// The same function at order mu. Lean is its logarithmic derivative less mu/x, which is the function of order mu + 1
// over it, times the curvature: taken from there, since the difference of the two would lose all digits at small x.
struct Bottom {
  double Value;
  double Lean;
};

// Carries `top` from order nu down by `steps` orders.
Bottom StepDown(Pair top, double x, double nu, int steps, double curvature) {
  const double xi = 1 / x;
  double orderOverX = nu * xi;
  double lean = top.Slope / top.Value - orderOverX;
  for (int i = 0; i < steps; ++i) {
    const double below = orderOverX * top.Value + top.Slope;
    orderOverX -= xi;
    lean = curvature * top.Value / (below == 0 ? EPS : below);
    top = {below, orderOverX * below + curvature * top.Value};
  }
  return {top.Value == 0 ? EPS : top.Value, lean};
}

// Orders mu and mu + 1 of the companion function.
struct Neighbours {
  double AtMu;
  double AtNext;
};

// Y (curvature -1) or K (curvature 1), from mu and mu + 1 up by `steps` orders.
Neighbours StepUp(Neighbours pair, double x, double mu, int steps, double curvature) {
  for (int i = 1; i <= steps; ++i) pair = {pair.AtNext, (mu + i) * (2 / x) * pair.AtNext + curvature * pair.AtMu};
  return pair;
}

double SinOverArgument(double t) { return std::abs(t) < EPS ? 1 : Sin(t) / t; }

// sinh(t)/t from exponentials loses digits near 0, where its power series is short.
double SinhOverArgument(double t) {
  if (std::abs(t) > 1) return (Exp(t) - Exp(-t)) / (2 * t);
  double term = 1;
  double sum = 1;
  for (int n = 2; term > EPS; n += 2) {
    term *= t * t / (n * (n + 1));
    sum += term;
  }
  return sum;
}

// Temme's series for x < 2 and |mu| <= 1/2:
//   K(mu) = sum c f,  K(mu+1) = 2/x sum c (p - k f)  over k, with c = (x^2/4)^k / k!
//   Y(mu) = -2/pi sum c g,  Y(mu+1) = -2/pi * 2/x sum c (p - k g),  with c = (-x^2/4)^k / k!,  g = f + 2 sin^2(pi
//   mu/2)/mu q
// Sums as they stand; the factors -2/pi and 2/x are the caller's. Y may be 0, so its sum stops at an absolute change.
Neighbours TemmeSeries(double x, double mu, double curvature) {
  const auto [gam1, gam2, gampl, gammi] = beschb(mu);
  const double d = Ln(2 / x);
  const double e = mu * d;
  const double growth = Exp(e);
  // f, p and q as they are for k = 0; the loop takes each from the one before.
  double f = (gam1 * (growth + 1 / growth) / 2 + gam2 * SinhOverArgument(e) * d) / SinOverArgument(kPi * mu);
  double p = 0.5 * growth / gampl;
  double q = 0.5 / (growth * gammi);
  const double half = 0.5 * kPi * mu;
  // 2 sin^2(pi mu/2)/mu, written so that mu may be 0.
  const double r = curvature < 0 ? kPi * half * SinOverArgument(half) * SinOverArgument(half) : 0;
  const double least = curvature < 0 ? 1 : 0;
  const double ratio = curvature * x * x / 4;
  double c = 1;
  double sum = f + r * q;
  double sumNext = p;
  for (int k = 1; k <= MAXIT; ++k) {
    f = (k * f + p + q) / (k * k - mu * mu);
    c *= ratio / k;
    p /= k - mu;
    q /= k + mu;
    const double g = f + r * q;
    sum += c * g;
    sumNext += c * (p - k * g);
    if (std::abs(c * g) < (least + std::abs(sum)) * EPS) return {sum, sumNext};
  }
  throw NumericFault();
}

// A complex number in the range that the fraction below keeps to: the library's division and absolute value look after
// numbers near the ends of the doubles, and take most of the time.
struct Complex {
  double Re = 0, Im = 0;

  Complex(double re, double im = 0) : Re(re), Im(im) {}
  friend Complex operator+(Complex a, Complex b) { return {a.Re + b.Re, a.Im + b.Im}; }
  friend Complex operator*(Complex a, Complex b) { return {a.Re * b.Re - a.Im * b.Im, a.Re * b.Im + a.Im * b.Re}; }
  friend Complex operator/(Complex a, Complex b) {
    const double square = b.Re * b.Re + b.Im * b.Im;
    return {(a.Re * b.Re + a.Im * b.Im) / square, (a.Im * b.Re - a.Re * b.Im) / square};
  }
  // The larger part, which tells a 0 as well.
  friend double abs(Complex z) { return std::max(std::abs(z.Re), std::abs(z.Im)); }
};

// p + iq, the logarithmic derivative of J + iY at order mu, for x >= 2.
Complex OutgoingWave(double x, double mu) {
  auto fraction = LentzFraction<Complex>::StartingWith({-0.5 / x, 1});
  for (int k = 1; k <= MAXIT; ++k) {
    const double a = (k - 0.5) * (k - 0.5) - mu * mu;
    const Complex change = fraction.Step(k == 1 ? Complex(0, a / x) : Complex(a), {2 * x, 2.0 * k});
    if (std::abs(change.Re - 1) + std::abs(change.Im) < EPS) return fraction.Value;
  }
  throw NumericFault();
}

// K at orders mu and mu + 1 for x >= 2: Steed's evaluation of the fraction z1/z0 = 1/(b1 + a2/(b2 + ...)), and along
// with it Temme's sum S that normalises, K(mu) = sqrt(pi/(2x)) exp(-x) / S. The factor exp(-x) is the caller's.
Neighbours DecayingWave(double x, double mu) {
  const double a1 = 0.25 - mu * mu;
  double a = -a1;
  double b = 2 * (1 + x);
  double d = 1 / b;
  double change = d;
  double fraction = d;
  double qBelow = 0;
  double q = 1;
  double c = a1;
  double weight = a1;  // the running sum of c times q
  double S = 1 + weight * change;
  for (int n = 2; n <= MAXIT; ++n) {
    a -= 2 * (n - 1);
    c *= -a / n;
    const double qAbove = (qBelow - b * q) / a;
    qBelow = q;
    q = qAbove;
    weight += c * q;
    b += 2;
    d = 1 / (b + a * d);
    change *= b * d - 1;
    fraction += change;
    S += weight * change;
    if (std::abs(weight * change / S) < EPS) {
      const double K = Sqr(kPi / (2 * x)) / S;
      return {K, K * (mu + x + 0.5 - a1 * fraction) / x};
    }
  }
  throw NumericFault();
}

// K at orders nu and nu + 1, nu >= -1/2, climbing from the order near 0. On the way the values stand without exp(-x),
// which may be below all doubles, and are scaled down wherever they have grown.
Neighbours RisingK(double nu, double x) {
  constexpr double kBig = 1e250, kLnBig = 575.6462732485115;
  const int steps = WholeSteps(nu + 0.5);
  const double mu = nu - steps;
  const bool near = x < XMIN;
  Neighbours K = near ? TemmeSeries(x, mu, 1) : DecayingWave(x, mu);
  if (near) K.AtNext *= 2 / x;
  double logarithm = near ? 0 : -x;
  for (int i = 1; i <= steps; ++i) {
    K = StepUp(K, x, mu + i - 1, 1, 1);
    if (!near && K.AtNext > kBig) {
      K = {K.AtMu / kBig, K.AtNext / kBig};
      logarithm += kLnBig;
    }
  }
  const double half = near ? 1 : Exp(logarithm / 2);  // the whole may vanish where the product does not
  return {K.AtMu * half * half, K.AtNext * half * half};
}

}  // namespace

double chebev(double a, double b, std::span<const double> c, double x) {
  if (!((x - a) * (x - b) <= 0)) throw NumericFault();
  const double y = (2 * x - a - b) / (b - a);
  double next = 0;
  double afterNext = 0;
  for (std::size_t i = c.size(); i-- > 1;) {
    const double sum = 2 * y * next - afterNext + c[i];
    afterNext = next;
    next = sum;
  }
  return y * next - afterNext + 0.5 * c[0];
}

TemmeGammas beschb(double x) {
  constexpr double c1[] = {-1.142022680371168, 6.5165112670737e-3, 3.087090173086e-4, -3.4706269649e-6,
                           6.9437664e-9,       3.67795e-11,        -1.356e-13};
  constexpr double c2[] = {1.843740587300905, -7.68528408447867e-2, 1.2719271366546e-3, -4.9717367042e-6,
                           -3.31261198e-8,    2.423096e-10,         -1.702e-13,         -1.49e-15};
  const double t = 8 * x * x - 1;
  const double gam1 = chebev(-1, 1, c1, t);
  const double gam2 = chebev(-1, 1, c2, t);
  return {gam1, gam2, gam2 - x * gam1, gam2 + x * gam1};
}

OrdinaryBessel bessjy(double x, double nu) {
  RequireDomain(x, nu);
  if (IsDistantArgument(nu, x)) {
    const HankelPair far = DistantBessel(nu, x);
    return {far.J.Value, far.Y.Value, far.J.Slope, far.Y.Slope};
  }
  const int steps = WholeSteps(x < XMIN ? nu + 0.5 : nu - x + 1.5);
  const double mu = nu - steps;
  const double wronskian = 2 / x / kPi;

  const LogDerivative ofJ = FirstFraction(x, nu, -1);
  // In an unknown scale, so small that growth on the way down does not overflow; jMu gives the true one.
  const Pair top = {ofJ.Sign * FPMIN, ofJ.Sign * FPMIN * ofJ.Value};
  const Bottom bottom = StepDown(top, x, nu, steps, -1);

  double jMu;
  Neighbours Y;
  if (x < XMIN) {
    const Neighbours series = TemmeSeries(x, mu, -1);
    Y = {-2 / kPi * series.AtMu, -2 / kPi * (series.AtNext * 2 / x)};
    // The Wronskian J(mu+1) Y(mu) - J(mu) Y(mu+1) = 2/(pi x), solved for J(mu).
    jMu = -wronskian / (Y.AtNext + bottom.Lean * Y.AtMu);
  } else {
    const auto [p, q] = OutgoingWave(x, mu);
    const double f = mu / x + bottom.Lean;
    const double gamma = (p - f) / q;
    // From the Wronskian and the two logarithmic derivatives; the sign is what the way down has found.
    jMu = std::copysign(Sqr(wronskian / ((p - f) * gamma + q)), bottom.Value);
    // Y' = J (gamma p + q): not gamma Y (p + q/gamma), which would divide by 0 at the zeros of Y.
    Y = {jMu * gamma, mu / x * jMu * gamma - jMu * (gamma * p + q)};
  }

  const double scale = jMu / bottom.Value;
  Y = StepUp(Y, x, mu, steps, -1);
  return {top.Value * scale, Y.AtMu, top.Slope * scale, nu / x * Y.AtMu - Y.AtNext};
}

BesselOrder BesselJ(double nu, double x) {
  RequireDomain(x, nu);
  if (IsSmallArgument(nu, x)) return AscendingBessel(nu, x, -1);
  const OrdinaryBessel both = bessjy(x, nu);
  return {both.J, nu / x * both.J - both.DJ, both.DJ};
}

BesselOrder BesselI(double nu, double x) {
  RequireDomain(x, nu);
  if (x < 30 || x < nu * nu) return AscendingBessel(nu, x, 1);
  // In two factors: exp(x) overflows before the product does.
  const double half = Exp(x / 2);
  const double scale = half / Sqr(2 * kPi * x);
  const double value = DistantModified(nu, x, -1) * scale * half;
  const double next = DistantModified(nu + 1, x, -1) * scale * half;
  return {value, next, nu / x * value + next};
}

double BesselY(double nu, double x) {
  RequireDomain(x, nu);
  if (x >= XMIN) return bessjy(x, nu).Y;
  const int steps = WholeSteps(nu + 0.5);
  const double mu = nu - steps;
  const Neighbours series = TemmeSeries(x, mu, -1);
  if (steps == 0) return -2 / kPi * series.AtMu;
  return -2 / kPi * StepUp({series.AtMu, series.AtNext * 2 / x}, x, mu, steps - 1, -1).AtNext;
}

double BesselK(double nu, double x) {
  RequireDomain(x, nu);
  if (nu >= 0.5) return RisingK(nu - 1, x).AtNext;
  return x < XMIN ? TemmeSeries(x, nu, 1).AtMu : DecayingWave(x, nu).AtMu * Exp(-x);
}

double BesselKSlope(double nu, double x) {
  RequireDomain(x, nu);
  const Neighbours K = RisingK(nu, x);
  return nu / x * K.AtMu - K.AtNext;
}

OrdinaryBessel sphbes(int n, double x) {
  constexpr double RTPIO2 = 1.2533141;
  if (n < 0 || !(x > 0)) throw NumericFault();
  const OrdinaryBessel cylinder = bessjy(x, n + 0.5);
  const double factor = RTPIO2 / Sqr(x);
  const double j = factor * cylinder.J;
  const double y = factor * cylinder.Y;
  return {j, y, factor * cylinder.DJ - j / (2 * x), factor * cylinder.DY - y / (2 * x)};
}

BesselOrder SphericalJ(int n, double x) {
  if (n >= 0 && x > 0 && IsSmallArgument(n + 0.5, x)) return AscendingBessel(n + 0.5, x, -1, true);
  const OrdinaryBessel both = sphbes(n, x);
  return {both.J, n / x * both.J - both.DJ, both.DJ};
}

AiryFunctions airy(double x) {
  constexpr double ONOVRT = 0.57735027;
  constexpr double THIRD = 1.0 / 3;
  constexpr double TWOTHR = 2.0 / 3;
  constexpr double kAi0 = 0.35502805;
  constexpr double kDAi0 = -0.25881940;
  constexpr double kStraight = 1e-10;  // within it the functions are straight lines, and the way below would overflow
  constexpr double kVanished = 104.2;  // here Ai leaves the range of a normal double below, and Bi soon after above
  constexpr double kBlurred = -1e6;    // from here on the rounding of z takes the angle's digits
  if (std::abs(x) < kStraight) return {kAi0 + x * kDAi0, (kAi0 - x * kDAi0) / ONOVRT, kDAi0, -kDAi0 / ONOVRT};
  if (x < kBlurred) throw NumericFault();
  if (x > kVanished) return {0, std::numeric_limits<double>::infinity(), 0, std::numeric_limits<double>::infinity()};
  const double ax = std::abs(x);
  // All four are combinations of Bessel functions of orders 1/3 and 2/3 at 2/3 |x|^1.5 (Abramowitz & Stegun 10.4).
  const double root = Sqr(ax);
  const double z = 2 * ax * root / 3;
  if (x > 0) {
    const double thirdI = BesselI(THIRD, z).Value, thirdK = BesselK(THIRD, z);
    const double twoThirdsI = BesselI(TWOTHR, z).Value, twoThirdsK = BesselK(TWOTHR, z);
    return {root * ONOVRT * thirdK / kPi, root * (thirdK / kPi + 2 * ONOVRT * thirdI), -x * ONOVRT * twoThirdsK / kPi,
            x * (twoThirdsK / kPi + 2 * ONOVRT * twoThirdsI)};
  }
  const OrdinaryBessel third = bessjy(z, THIRD);
  const OrdinaryBessel twoThirds = bessjy(z, TWOTHR);
  return {0.5 * root * (third.J - ONOVRT * third.Y), -0.5 * root * (third.Y + ONOVRT * third.J),
          0.5 * ax * (ONOVRT * twoThirds.Y + twoThirds.J), 0.5 * ax * (ONOVRT * twoThirds.J - twoThirds.Y)};
}

}  // namespace quorvex
