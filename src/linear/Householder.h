#pragma once

#include <cstddef>

namespace quorvex {

// What decompositions by Householder reflections are made of (A. S. Householder, J. ACM 5, 1958).

// Sum of products, halved down to blocks: its error grows with log(n) rather than n.
double PairwiseDot(const double* p, const double* q, std::size_t n);

// q = q + factor * p
void AddMultiple(double factor, const double* p, std::size_t n, double* q);

// p = p * 2^exponent, exactly where the result has the digits for it; |exponent| below 2000
void ScaleByPowerOfTwo(double* p, std::size_t n, int exponent);

// The length of a vector, fraction * 2^exponent with a fraction from 1 to below 2: in range whatever the unit. Zero for
// a vector of zeros.
struct Length {
  double fraction = 0;
  int exponent = 0;
};
Length LengthOf(const double* p, std::size_t n);

// A reflection H = I - z z^T / half of vectors of n elements; H = I where half is 0.
struct Reflection {
  const double* z = nullptr;
  std::size_t n = 0;
  double half = 0;   // |z|^2 / 2
  double image = 0;  // H p = (image, 0, ..., 0) for the p it was made from

  void Apply(double* q) const;
};

// The reflection that clears all of p but its first element; its z is written to `z`, which doesn't overlap p. p is
// left scaled by a power of 2, lest its squares overflow. A q that equals p is cleared to exact zeros, too.
Reflection Reflect(double* p, std::size_t n, double* z);

}  // namespace quorvex
