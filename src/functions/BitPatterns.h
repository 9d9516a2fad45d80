#pragma once

#include <bit>
#include <cstdint>
#include <limits>

// Doubles as their bits: tests that raise no flag, and choices that are no branches, for code that is to become vector
// instructions. The bits of positive numbers are ordered as the numbers are; infinity follows them, then come the NaNs.
namespace quorvex {

using Bits = std::uint64_t;

[[gnu::always_inline]] constexpr Bits BitsOf(double x) { return std::bit_cast<Bits>(x); }
[[gnu::always_inline]] constexpr double DoubleOf(Bits bits) { return std::bit_cast<double>(bits); }

constexpr Bits kSign = Bits{1} << 63;
constexpr Bits kInfinite = BitsOf(std::numeric_limits<double>::infinity());

[[gnu::always_inline]] constexpr Bits MagnitudeBits(double x) { return BitsOf(x) & ~kSign; }

// all bits or none
[[gnu::always_inline]] constexpr Bits Mask(bool holds) { return holds ? ~Bits{0} : Bits{0}; }

// a where the mask is all bits, b where it is none. Both are computed, whatever the compiler makes of it.
[[gnu::always_inline]] constexpr Bits Select(Bits mask, Bits a, Bits b) { return (a & mask) | (b & ~mask); }
[[gnu::always_inline]] constexpr double Select(Bits mask, double a, double b) {
  return DoubleOf(Select(mask, BitsOf(a), BitsOf(b)));
}

}  // namespace quorvex
