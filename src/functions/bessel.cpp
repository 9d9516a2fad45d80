#include "functions/bessel.h"

#include <array>
#include <cmath>

#include "core/NumericFault.h"
#include "functions/Elementary.h"
#include "functions/besselends.h"
#include "functions/besseljy.h"

namespace quorvex {
namespace {

// Coefficients in rising powers.
template <std::size_t Count>
double Polynomial(const std::array<double, Count>& coefficients, double y) {
  double sum = 0;
  for (std::size_t i = Count; i-- > 0;) sum = sum * y + coefficients[i];
  return sum;
}

// Orders 0 and 1 of J and Y below |x| = 8: a ratio of polynomials in x^2.
struct PolynomialRatio {
  std::array<double, 6> numerator;
  std::array<double, 7> denominator;

  double operator()(double y) const { return Polynomial(numerator, y) / Polynomial(denominator, y); }
};

constexpr PolynomialRatio kJ0 = {{57568490574.0, -13362590354.0, 651619640.7, -11214424.18, 77392.33017, -184.9052456},
                                 {57568490411.0, 1029532985.0, 9494680.718, 59272.64853, 267.8532712, 1.0}};
constexpr PolynomialRatio kJ1 = {  // of J1/x
    {72362614232.0, -7895059235.0, 242396853.1, -2972611.439, 15704.48260, -30.16036606},
    {144725228442.0, 2300535178.0, 18583304.74, 99447.43394, 376.9991397, 1.0}};
constexpr PolynomialRatio kY0 = {  // of Y0 less its logarithm
    {-2957821389.0, 7062834065.0, -512359803.6, 10879881.29, -86327.92757, 228.4622733},
    {40076544269.0, 745249964.8, 7189466.438, 47447.26470, 226.1030244, 1.0}};
constexpr PolynomialRatio kY1 = {  // of Y1/x less its logarithm and pole
    {-0.4900604943e13, 0.1275274390e13, -0.5153438139e11, 0.7349264551e9, -0.4237922726e7, 0.8511937935e4},
    {0.2499580570e14, 0.4244419664e12, 0.3733650367e10, 0.2245904002e8, 0.1020426050e6, 0.3549632885e3, 1.0}};

constexpr double kTwoOverPi = 0.636619772;

// From |x| = 8 on, with z = 8/x and the angle x - phase:
//   J = sqrt(2/(pi x)) (p(z^2) cos(angle) - z q(z^2) sin(angle)), Y the same with sine and cosine turned.
struct PhaseAmplitude {
  double phase;
  std::array<double, 5> p;
  std::array<double, 5> q;

  double J(double x) const { return Combine(x, CosOfAngle(x), -SinOfAngle(x)); }
  double Y(double x) const { return Combine(x, SinOfAngle(x), CosOfAngle(x)); }

 private:
  // By the sum of two angles: the difference x - phase would round away what a large x has of them.
  double CosOfAngle(double x) const { return Cos(x) * Cos(phase) + Sin(x) * Sin(phase); }
  double SinOfAngle(double x) const { return Sin(x) * Cos(phase) - Cos(x) * Sin(phase); }

  double Combine(double x, double ofP, double ofQ) const {
    const double z = 8 / x;
    return Sqr(kTwoOverPi / x) * (ofP * Polynomial(p, z * z) + z * ofQ * Polynomial(q, z * z));
  }
};

constexpr PhaseAmplitude kFar0 = {
    0.785398164,
    {1.0, -0.1098628627e-2, 0.2734510407e-4, -0.2073370639e-5, 0.2093887211e-6},
    {-0.1562499995e-1, 0.1430488765e-3, -0.6911147651e-5, 0.7621095161e-6, -0.934945152e-7}};
constexpr PhaseAmplitude kFar1 = {2.356194491,
                                  {1.0, 0.183105e-2, -0.3516396496e-4, 0.2457520174e-5, -0.240337019e-6},
                                  {0.04687499995, -0.2002690873e-3, 0.8449199096e-5, -0.88228987e-6, 0.105787412e-6}};

// K less its logarithm, in x^2/4 up to 2.
constexpr std::array kK0 = {-0.57721566, 0.42278420, 0.23069756, 0.3488590e-1, 0.262698e-2, 0.10750e-3, 0.74e-5};
constexpr std::array kK1 = {1.0,           0.15443144,   -0.67278579, -0.18156897,
                            -0.1919402e-1, -0.110404e-2, -0.4686e-4};  // of x K1

// Where the far forms take over.
constexpr double kFarJY = 8;
constexpr double kFarK = 2;

void RequireOrder(int n) {
  if (n < 2) throw NumericFault();
}

// J and I of odd order are odd in x.
double WithSign(double ofMagnitude, int n, double x) { return x < 0 && n % 2 == 1 ? -ofMagnitude : ofMagnitude; }

// J or Y from orders 0 and 1 up to n.
double Climb(int n, double x, double ofOrder0, double ofOrder1) {
  double below = ofOrder0;
  double here = ofOrder1;
  for (int j = 1; j < n; ++j) {
    const double above = j * (2 / x) * here - below;
    below = here;
    here = above;
  }
  return here;
}

// Where a descent to order n has to start so that the top's error vanishes on the way down: where the other solution,
// begun at n, has grown by 1e17 (F. W. J. Olver, J. Res. NBS 71B, 111, 1967). For x <= n.
int DescentStart(int n, double x) {
  double below = 0, here = 1;
  int order = n;
  while (std::abs(here) < 1e17) {
    const double above = order * (2 / x) * here - below;
    below = here;
    here = above;
    ++order;
  }
  return 2 * (order / 2 + 1);
}

// J of order n at x <= n, downward from an order above n in an unknown scale (Miller's method).
double Descend(int n, double x) {
  constexpr double BIGNO = 1e10;
  constexpr double BIGNI = 1e-10;
  double above = 0, here = 1, ofOrderN = 0, evenSum = 0;
  for (int j = DescentStart(n, x); j > 0; --j) {
    const double below = j * (2 / x) * here - above;
    above = here;
    here = below;
    // The scale is unknown anyway, so all of it is scaled down before anything overflows.
    if (std::abs(here) > BIGNO)
      for (double* value : {&here, &above, &ofOrderN, &evenSum}) *value *= BIGNI;
    if (j % 2 == 1) evenSum += here;  // here is of order j - 1
    if (j == n) ofOrderN = above;
  }
  return ofOrderN / (2 * evenSum - here);  // J0 + 2 (J2 + J4 + ...) = 1
}

}  // namespace

double bessj0(double x) {
  const double ax = std::abs(x);
  return ax < kFarJY ? kJ0(x * x) : kFar0.J(ax);
}

double bessj1(double x) {
  const double ax = std::abs(x);
  return ax < kFarJY ? x * kJ1(x * x) : WithSign(kFar1.J(ax), 1, x);
}

double bessy0(double x) { return x < kFarJY ? kY0(x * x) + kTwoOverPi * bessj0(x) * Ln(x) : kFar0.Y(x); }

double bessy1(double x) { return x < kFarJY ? x * kY1(x * x) + kTwoOverPi * (bessj1(x) * Ln(x) - 1 / x) : kFar1.Y(x); }

double bessi0(double x) { return x == 0 ? 1 : BesselI(0, std::abs(x)).Value; }

double bessi1(double x) { return x == 0 ? 0 : WithSign(BesselI(1, std::abs(x)).Value, 1, x); }

double bessk0(double x) {
  if (x <= kFarK) return -Ln(x / 2) * bessi0(x) + Polynomial(kK0, x * x / 4);
  return BesselK(0, x);
}

double bessk1(double x) {
  if (x <= kFarK) return Ln(x / 2) * bessi1(x) + 1 / x * Polynomial(kK1, x * x / 4);
  return BesselK(1, x);
}

double bessj(int n, double x) {
  RequireOrder(n);
  if (x == 0) return 0;
  const double ax = std::abs(x);
  if (IsSmallArgument(n, ax)) return WithSign(AscendingBessel(n, ax, -1).Value, n, x);
  // Going up is stable only while the order is below x; beyond, the other solution takes over, and the way is down.
  return WithSign(ax > n ? Climb(n, ax, bessj0(ax), bessj1(ax)) : Descend(n, ax), n, x);
}

double bessi(int n, double x) {
  RequireOrder(n);
  return x == 0 ? 0 : WithSign(BesselI(n, std::abs(x)).Value, n, x);
}

double bessy(int n, double x) {
  RequireOrder(n);
  // Y grows with its order, so going up is stable at any x.
  return Climb(n, x, bessy0(x), bessy1(x));
}

double bessk(int n, double x) {
  RequireOrder(n);
  return BesselK(n, x);
}

}  // namespace quorvex
