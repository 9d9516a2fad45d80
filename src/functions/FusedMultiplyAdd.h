#pragma once

#include <cstddef>
#include <type_traits>

#include "functions/BitPatterns.h"
#include "functions/DoubleDouble.h"

// a*b + c rounded once. It has one right answer: the instruction gives it where the processor has one, and elsewhere it
// is put together from other operations, so that the bits are the same on every machine. That takes some 40 operations
// in place of one, without a branch, so that it is vectorised as well.
//
// Needs rounding to nearest, and a product that neither overflows nor has bits below 2^-1074, but where c, or what the
// result is added to, is so large that they don't matter. A result of 0 may have the other sign.
//
// Where a fused operation cannot round at all, fewer steps replace it: OfWhole(a, b, c) is for a*b that a double holds,
// Whole(a, b, c) for a*b + c that one holds.
namespace quorvex {

// Inlined into functions for processors that have the instruction (core/VectorWidth.h) alone.
struct FusedByInstruction {
  [[gnu::always_inline]] double operator()(double a, double b, double c) const { return __builtin_fma(a, b, c); }
  [[gnu::always_inline]] static double OfWhole(double a, double b, double c) { return __builtin_fma(a, b, c); }
  [[gnu::always_inline]] static double Whole(double a, double b, double c) { return __builtin_fma(a, b, c); }
};

// Source: S. Boldo & G. Melquiond, Emulation of FMA and correctly rounded sums, IEEE Trans. Computers 57, 2008: of
// three numbers whose sum it is, the two small ones are added with rounding to odd, which the last rounding then cannot
// take for a tie.
struct FusedBySteps {
  [[gnu::always_inline]] double operator()(double a, double b, double c) const {
    const DoubleDouble product = Product(a, b);
    const DoubleDouble sum = Sum(c, product.Hi);
    return sum.Hi + RoundedToOdd(Sum(sum.Lo, product.Lo));
  }
  [[gnu::always_inline]] static double OfWhole(double a, double b, double c) { return a * b + c; }
  [[gnu::always_inline]] static double Whole(double a, double b, double c) {
    const double aUpper = UpperHalf(a), aLower = a - aUpper, bUpper = UpperHalf(b), bLower = b - bUpper;
    return ((aUpper * bUpper + c) + (aUpper * bLower + aLower * bUpper)) + aLower * bLower;
  }

 private:
  // The sum towards zero, its last bit set where that is not exact.
  [[gnu::always_inline]] static double RoundedToOdd(DoubleDouble sum) {
    const Bits rest = BitsOf(sum.Lo) << 1;
    const Bits inexact = (rest | (Bits{0} - rest)) >> 63;
    const Bits beyond = (BitsOf(sum.Hi) ^ BitsOf(sum.Lo)) >> 63 & inexact;
    return DoubleOf((BitsOf(sum.Hi) - beyond) | inexact);
  }
};

#ifdef __FP_FAST_FMA  // every processor that the program is compiled for has the instruction
constexpr std::size_t kLanesWithoutFusion = 0;
#else
constexpr std::size_t kLanesWithoutFusion = 2;
#endif

// What loops over vectors of n doubles take.
template <std::size_t n>
using Fused = std::conditional_t<(n > kLanesWithoutFusion), FusedByInstruction, FusedBySteps>;

// a * b exactly.
template <class Fma>
[[gnu::always_inline]] inline DoubleDouble Product(Fma fma, double a, double b) {
  const double product = a * b;
  return {product, fma.Whole(a, b, -product)};
}

}  // namespace quorvex
