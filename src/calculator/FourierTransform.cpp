#include "calculator/FourierTransform.h"

#include <bit>
#include <cmath>
#include <numbers>
#include <utility>

#include "calculator/CalculatorFault.h"
#include "functions/Elementary.h"

namespace quorvex {
namespace {

using std::numbers::pi;

// Real and imaginary parts by turns.
using Interleaved = std::vector<double>;

void ReverseBits(Interleaved& data, std::size_t n) {
  for (std::size_t i = 1, j = 0; i < n; ++i) {
    std::size_t bit = n / 2;
    for (; (j & bit) != 0; bit /= 2) j ^= bit;
    j |= bit;
    if (i >= j) continue;
    std::swap(data[2 * i], data[2 * j]);
    std::swap(data[2 * i + 1], data[2 * j + 1]);
  }
}

// From transforms of `half` values beside each other to those of twice as many.
void Butterflies(Interleaved& data, std::size_t n, std::size_t half) {
  for (std::size_t k = 0; k < half; ++k) {
    const double angle = pi * static_cast<double>(k) / static_cast<double>(half);
    const double re = Cos(angle), im = -Sin(angle);
    for (std::size_t at = k; at < n; at += 2 * half) {
      double *const a = &data[2 * at], *const b = &data[2 * (at + half)];
      const double bRe = b[0] * re - b[1] * im, bIm = b[0] * im + b[1] * re;
      b[0] = a[0] - bRe;
      b[1] = a[1] - bIm;
      a[0] += bRe;
      a[1] += bIm;
    }
  }
}

// The angle of a point in the plane, by its quadrant.
double Angle(double re, double im) {
  if (re > 0) return Atn(im / re);
  if (re < 0) return Atn(im / re) + (im < 0 ? -pi : pi);
  return im > 0 ? pi / 2 : im < 0 ? -pi / 2 : 0;
}

}  // namespace

Spectrum FourierTransform(std::span<const double> y) {
  const std::size_t n = std::bit_ceil(y.size());
  Interleaved data(2 * n);
  for (std::size_t j = 0; j < y.size(); ++j) data[2 * j] = y[j];
  ReverseBits(data, n);
  for (std::size_t half = 1; half < n; half *= 2) Butterflies(data, n, half);

  Spectrum spectrum;
  for (std::size_t k = 0; k < n; ++k) {
    const double re = Finite(data[2 * k]), im = Finite(data[2 * k + 1]);
    spectrum.Frequency.push_back(static_cast<double>(k) / static_cast<double>(n));
    spectrum.Magnitude.push_back(Finite(std::hypot(re, im)));
    spectrum.Phase.push_back(Angle(re, im));
  }
  return spectrum;
}

}  // namespace quorvex
