#include "equation/gamma.h"

#include <array>
#include <cmath>
#include <cstddef>

#include "core/NumericFault.h"
#include "equation/Elementary.h"
#include "equation/LentzFraction.h"

namespace quorvex {
namespace {

// Single-precision values, kept: the printed results of this program agree to about 7 digits because of them.
constexpr int kMaxRounds = 100;
constexpr double kSettled = 3e-7;

constexpr auto kFactorials = [] {
  std::array<double, 33> table{1};
  for (std::size_t n = 1; n < table.size(); ++n) table[n] = table[n - 1] * static_cast<double>(n);
  return table;
}();

// x^a exp(-x) / Gamma(a), which stands before both the series and the fraction.
double Front(double a, double x) { return Exp(-x + a * Ln(x) - gammln(a)); }

void RequireDomain(double a, double x) {
  if (!(x >= 0 && a > 0)) throw NumericFault();
}

}  // namespace

double gammln(double x) {
  constexpr double kLanczos[] = {76.1800917294715,  -86.5053203294168,   24.0140982408309,
                                 -1.23173957245015, 0.00120865097386618, -5.395239384953e-06};
  if (!(x > 0)) throw NumericFault();
  double series = 1.00000000019001;
  double pole = x;
  for (double coefficient : kLanczos) series += coefficient / ++pole;
  const double base = x + 5.5;
  return (x + 0.5) * Ln(base) - base + Ln(2.506628274631 * series / x);
}

double gser(double a, double x) {
  if (x <= 0) return 0;
  double term = 1 / a;
  double sum = term;
  for (int n = 1; n <= kMaxRounds; ++n) {
    term *= x / (a + n);
    sum += term;
    if (std::abs(term) < std::abs(sum) * kSettled) return sum * Front(a, x);
  }
  throw NumericFault();
}

double gcf(double a, double x) {
  double b = x + 1 - a;
  auto fraction = LentzFraction<double>::OneOver(b);
  for (int n = 1; n <= kMaxRounds; ++n) {
    b += 2;
    const double change = fraction.Step(-n * (n - a), b);
    if (std::abs(change - 1) < kSettled) return Front(a, x) * fraction.Value;
  }
  throw NumericFault();
}

double gammp(double a, double x) {
  RequireDomain(a, x);
  return x < a + 1 ? gser(a, x) : 1 - gcf(a, x);
}

double gammq(double a, double x) {
  RequireDomain(a, x);
  return x < a + 1 ? 1 - gser(a, x) : gcf(a, x);
}

double factrl(int n) {
  if (n < 0) throw NumericFault();
  const auto index = static_cast<std::size_t>(n);
  return index < kFactorials.size() ? kFactorials[index] : Exp(gammln(n + 1.0));
}

double factln(int n) {
  if (n < 0) throw NumericFault();
  return gammln(n + 1.0);
}

}  // namespace quorvex
