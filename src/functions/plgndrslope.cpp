#include "functions/plgndrslope.h"

#include <cmath>

#include "core/NumericFault.h"
#include "functions/Elementary.h"

namespace quorvex {
namespace {

// s to the power of `sines`, which is -1 or more, times the m-th derivative of Legendre's polynomial of degree l, by
// the recurrence in the degree (DLMF 14.10.3), which is the same for the derivatives.
double Derivative(int l, int m, int sines, double x) {
  if (m > l) return 0;
  const double s = Sqr((1 - x) * (1 + x));
  // 1*3*5*...*(2m-1), and the sines in between, lest one of both products leaves the range.
  double value = sines < 0 ? 1 / s : 1;
  for (int k = 1; k <= m; ++k) value *= (2 * k - 1) * (k <= sines ? s : 1);
  double below = 0;
  for (int degree = m + 1; degree <= l; ++degree) {
    const double next = (x * (2 * degree - 1) * value - (degree + m - 1) * below) / (degree - m);
    below = value;
    value = next;
  }
  return value;
}

}  // namespace

double plgndrslope(int l, int m, double x) {
  if (m < 0 || m > l || !(std::abs(x) <= 1)) throw NumericFault();
  const double rise = Derivative(l, m + 1, m, x);
  const double slope = m == 0 ? rise : rise - m * x * Derivative(l, m, m - 2, x);
  return m % 2 == 0 ? slope : -slope;
}

}  // namespace quorvex
