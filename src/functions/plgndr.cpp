#include "functions/plgndr.h"

#include <cmath>

#include "core/NumericFault.h"
#include "functions/Elementary.h"

namespace quorvex {

double plgndr(int l, int m, double x) {
  if (m < 0 || m > l || !(std::abs(x) <= 1)) throw NumericFault();
  const double sine = Sqr((1 - x) * (1 + x));
  double value = 1;  // P(m, m) = (-1)^m 1*3*5*...*(2m-1) sine^m
  for (int odd = 1; odd < 2 * m; odd += 2) value *= -odd * sine;
  // P(m-1, m) is 0, so that the recurrence can start at once.
  double below = 0;
  for (int degree = m + 1; degree <= l; ++degree) {
    const double next = (x * (2 * degree - 1) * value - (degree + m - 1) * below) / (degree - m);
    below = value;
    value = next;
  }
  return value;
}

}  // namespace quorvex
