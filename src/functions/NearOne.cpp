#include "functions/NearOne.h"

#include <cmath>

#include "functions/Elementary.h"

namespace quorvex {
namespace {

constexpr double kSmallRatio = 0.2;

// With r = w/(2 + w), ln(1 + w) is 2 (r + r^3/3 + r^5/5 + ...): the tail r^3/3 + r^5/5 + ... for |r| <= kSmallRatio.
double CubicTail(double r) {
  double power = r * r * r;
  double sum = 0;
  for (int k = 3; k < 27; k += 2) {
    sum += power / k;
    power *= r * r;
  }
  return sum;
}

}  // namespace

double LnOnePlus(double x) {
  const double sum = 1 + x;
  // Ln(sum)/(sum - 1) hardly depends on what rounding has made of the sum, so x times it keeps all digits.
  return sum == 1 ? x : Ln(sum) * (x / (sum - 1));
}

double ExpMinusOne(double x) {
  const double power = Exp(x);
  if (power == 1) return x;
  // By the same device: (power - 1)/Ln(power) hardly depends on the rounding of the power.
  return power == 0 ? -1 : (power - 1) * (x / Ln(power));
}

double LessLnOnePlus(double w) {
  const double r = w / (2 + w);
  // w - 2r is w*r exactly, so that the leading terms cancel before any rounding.
  return std::abs(r) <= kSmallRatio ? w * r - 2 * CubicTail(r) : w - LnOnePlus(w);
}

double Deviance(double n, double m) {
  const double r = (m - n) / (m + n);
  if (std::abs(r) <= kSmallRatio) return (m - n) * r - 2 * n * CubicTail(r);
  return n * (Ln(n) - Ln(m)) + m - n;
}

}  // namespace quorvex
