#pragma once

#include <span>
#include <vector>

namespace quorvex {

// The discrete Fourier transform of values that are one unit apart,
//
//   F(k) = sum over j of y(j) exp(-2 pi i j k / N),  k = 0 .. N - 1
//
// where N is the smallest power of two that the values fit into, and those beyond their end are 0. Parseval: the sum of
// the squared magnitudes is N times that of the squared values.
struct Spectrum {
  std::vector<double> Frequency;         // k / N, in cycles from one value to the next
  std::vector<double> Magnitude, Phase;  // the phase in radians, from -pi to pi
};

// Method: radix 2 by bit reversal and butterflies, in place on real and imaginary parts side by side; each root of
// unity is computed by itself, so that the error stays at some log2(N) units in the last place of the largest F.
// Throws CalculatorFault where a sum overflows.
Spectrum FourierTransform(std::span<const double> y);

}  // namespace quorvex
