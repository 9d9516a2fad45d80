#include "equation/betai.h"

#include <cmath>

#include "core/NumericFault.h"
#include "equation/Elementary.h"
#include "equation/LentzFraction.h"
#include "equation/gamma.h"

namespace quorvex {

double betacf(double a, double b, double x) {
  constexpr int kMaxRounds = 100;
  constexpr double kSettled = 3e-7;
  auto fraction = LentzFraction<double>::OneOver(1);
  fraction.Step(-(a + b) * x / (a + 1), 1);
  for (int m = 1; m <= kMaxRounds; ++m) {
    const double a2m = a + 2 * m;
    fraction.Step(m * (b - m) * x / ((a2m - 1) * a2m), 1);
    const double change = fraction.Step(-(a + m) * (a + b + m) * x / (a2m * (a2m + 1)), 1);
    if (std::abs(change - 1) < kSettled) return fraction.Value;
  }
  throw NumericFault();
}

double betai(double a, double b, double x) {
  if (!(x >= 0 && x <= 1)) throw NumericFault();
  const bool atAnEnd = x == 0 || x == 1;
  const double front = atAnEnd ? 0 : Exp(gammln(a + b) - gammln(a) - gammln(b) + a * Ln(x) + b * Ln(1 - x));
  if (x < (a + 1) / (a + b + 2)) return front * betacf(a, b, x) / a;
  return 1 - front * betacf(b, a, 1 - x) / b;
}

}  // namespace quorvex
