#include "linear/Householder.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "core/Limits.h"
#include "linear/BlockDot.h"

namespace quorvex {

double PairwiseDot(const double* p, const double* q, std::size_t n) {
  if (n <= kBlock) return BlockDot(p, q, n);
  // The first half is made of whole blocks, so that the last block alone may be short.
  const std::size_t half = (n / 2 + kBlock - 1) / kBlock * kBlock;
  return PairwiseDot(p, q, half) + PairwiseDot(p + half, q + half, n - half);
}

void AddMultiple(double factor, const double* p, std::size_t n, double* q) {
  for (std::size_t i = 0; i < n; ++i) q[i] += factor * p[i];
}

void ScaleByPowerOfTwo(double* p, std::size_t n, int exponent) {
  // In two factors, for one alone may lie beyond the range.
  const double half = std::scalbn(1.0, exponent / 2), rest = std::scalbn(1.0, exponent - exponent / 2);
  for (std::size_t i = 0; i < n; ++i) p[i] = p[i] * half * rest;
}

namespace {

double Largest(const double* p, std::size_t n) {
  double largest = 0;
  for (std::size_t i = 0; i < n; ++i) largest = std::max(largest, std::abs(p[i]));
  return largest;
}

}  // namespace

Length LengthOf(const double* p, std::size_t n) {
  const double largest = Largest(p, n);
  if (largest == 0) return {};
  std::vector<double> scaled(p, p + n);
  int exponent = std::ilogb(largest);
  // With the largest element near 1 no square overflows, and those that underflow do not count in the sum.
  ScaleByPowerOfTwo(scaled.data(), n, -exponent);
  const double length = std::sqrt(PairwiseDot(scaled.data(), scaled.data(), n));
  exponent += std::ilogb(length);
  return {std::scalbn(length, -std::ilogb(length)), exponent};
}

void Reflection::Apply(double* q) const {
  if (half != 0) AddMultiple(-(PairwiseDot(z, q, n) / half), z, n, q);
}

// With z = p - image * e1 half is also z.p, and is computed so: for a q that equals p the quotient above is then
// exactly 1.
Reflection Reflect(double* p, std::size_t n, double* z) {
  const double below = Largest(p + 1, n - 1);
  // There is nothing to clear, and a reflection would turn the sign of p[0] for nothing.
  if (below == 0) return {z, n, 0, p[0]};
  const int exponent = std::ilogb(std::max(below, std::abs(p[0])));
  ScaleByPowerOfTwo(p, n, -exponent);
  const double norm = std::sqrt(PairwiseDot(p, p, n));
  // Of the sign that p[0] has not, so that z[0] is a sum of magnitudes and cancels nothing.
  const double image = p[0] > 0 ? -norm : norm;
  std::copy_n(p, n, z);
  z[0] = p[0] - image;
  return {z, n, PairwiseDot(z, p, n), std::scalbn(image, exponent)};
}

}  // namespace quorvex
