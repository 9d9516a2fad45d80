#include <gtest/gtest.h>

#include <cfenv>
#include <cmath>
#include <random>

#include "core/FaultFlags.h"
#include "functions/FusedMultiplyAdd.h"

namespace quorvex {
namespace {

// Numbers that are likely to end in a tie, or next to one: few bits at either end of 53, and any.
class Hostile {
 public:
  double Number(int leastExponent, int mostExponent) {
    const Bits any = random_() >> 12, few = random_() >> 62;
    const unsigned place = static_cast<unsigned>(random_() % 52);
    Bits fraction = 0;
    switch (random_() % 6) {
      case 0:
        fraction = any;
        break;
      case 1:
        fraction = few << 50;
        break;  // 1, 1.25, 1.5, 1.75
      case 2:
        fraction = few;
        break;  // 1 and next to it
      case 3:
        fraction = (~Bits{0} >> 12) - few;
        break;  // 2 but for the last bits
      case 4:
        fraction = Bits{1} << place | few;
        break;  // two places
      default:
        fraction = (any << place & (~Bits{0} >> 12));
        break;  // short
    }
    const Bits sign = random_() & kSign;
    const auto range = static_cast<Bits>(mostExponent - leastExponent + 1);
    const Bits exponent = static_cast<Bits>(leastExponent + 1023) + random_() % range;
    return DoubleOf(sign | exponent << 52 | fraction);
  }
  double Addend(double product) {  // of any size beside the product, and near its negative
    const int at = std::ilogb(product);
    switch (random_() % 4) {
      case 0:
        return 0;
      case 1:
        return -product + std::ldexp(Number(0, 0), at - static_cast<int>(random_() % 60));
      case 2:
        return DoubleOf(BitsOf(-product) + random_() % 5 - 2);
      default:
        return Number(at - 120, at + 120);
    }
  }

 private:
  std::mt19937_64 random_{5};
};

// std::fma has the one right answer, by the processor or by the C library.
TEST(FusedMultiplyAdd, BySteps) {
  Hostile hostile;
  ClearFaultFlags();
  int ties = 0;
  for (int i = 0; i < 1'000'000; ++i) {
    const int span = i % 2 == 0 ? 2 : 400;
    const double a = hostile.Number(-span, span), b = hostile.Number(-span / 2, span / 2);
    const double c = hostile.Addend(a * b);
    const double right = std::fma(a, b, c);
    ASSERT_EQ(BitsOf(FusedBySteps()(a, b, c)), BitsOf(right)) << std::hexfloat << a << ' ' << b << ' ' << c;
    ties += right != a * b + c ? 1 : 0;
    const DoubleDouble product = Product(FusedBySteps(), a, b);
    ASSERT_EQ(product.Lo, std::fma(a, b, -product.Hi)) << std::hexfloat << a << ' ' << b;
    ASSERT_EQ(product.Lo, Product(a, b).Lo);
  }
  EXPECT_GT(ties, 100'000);  // they differ from two roundings often enough to tell
  EXPECT_FALSE(FaultFlagsRaised());
}

// Where the product is too small for all its bits, and c too large for them to matter.
TEST(FusedMultiplyAdd, OfProductsThatUnderflow) {
  for (const double a : {0.0, -0.0, 0x1p-1074, -0x1.8p-1060, 0x1.fffffffffffffp-530})
    for (const double b : {0.0, 0x1p-1074, -0x1.23456789abcdep-520, 0x1.fffffffffffffp-500})
      for (const double c : {1.0, -0x1.fffffffffffffp-700, 0x1.0000000000001p-800})
        EXPECT_EQ(BitsOf(FusedBySteps()(a, b, c)), BitsOf(std::fma(a, b, c))) << a << ' ' << b << ' ' << c;
}

}  // namespace
}  // namespace quorvex
