#pragma once

#include "functions/BitPatterns.h"

// Numbers as unevaluated sums of two doubles, some 106 bits. Needs rounding to nearest.
// Source: T. J. Dekker, Numer. Math. 18, 1971; D. E. Knuth, The Art of Computer Programming 2, 4.2.2.
namespace quorvex {

struct DoubleDouble {
  double Hi, Lo;
};

// x rounded to 26 of its 53 bits, which leaves no more than 26 for the rest: the two multiply without rounding.
[[gnu::always_inline]] constexpr double UpperHalf(double x) {
  return DoubleOf((BitsOf(x) + 0x400'0000) & 0xFFFF'FFFF'F800'0000);
}

// a + b exactly, where a is 0, a multiple of b's last bit or not the smaller one.
[[gnu::always_inline]] constexpr DoubleDouble OrderedSum(double a, double b) {
  const double sum = a + b;
  return {sum, (a - sum) + b};
}

// a + b exactly, whichever is the smaller one.
[[gnu::always_inline]] constexpr DoubleDouble Sum(double a, double b) {
  const double sum = a + b;
  const double part = sum - a;
  return {sum, (a - (sum - part)) + (b - part)};
}

// a * b exactly.
[[gnu::always_inline]] constexpr DoubleDouble Product(double a, double b) {
  const double aUpper = UpperHalf(a), aLower = a - aUpper, bUpper = UpperHalf(b), bLower = b - bUpper;
  const double product = a * b;
  return {product, ((aUpper * bUpper - product) + (aUpper * bLower + aLower * bUpper)) + aLower * bLower};
}

// These three keep some 100 bits.
[[gnu::always_inline]] constexpr DoubleDouble operator+(DoubleDouble a, DoubleDouble b) {
  const DoubleDouble sum = Sum(a.Hi, b.Hi);
  return OrderedSum(sum.Hi, sum.Lo + (a.Lo + b.Lo));
}

[[gnu::always_inline]] constexpr DoubleDouble operator*(DoubleDouble a, DoubleDouble b) {
  const DoubleDouble product = Product(a.Hi, b.Hi);
  return OrderedSum(product.Hi, product.Lo + (a.Hi * b.Lo + a.Lo * b.Hi));
}

[[gnu::always_inline]] constexpr DoubleDouble operator/(DoubleDouble a, double b) {
  const double quotient = a.Hi / b;
  const DoubleDouble product = Product(quotient, b);
  return OrderedSum(quotient, (((a.Hi - product.Hi) - product.Lo) + a.Lo) / b);
}

}  // namespace quorvex
