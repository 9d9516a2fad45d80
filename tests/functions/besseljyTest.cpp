#include <gtest/gtest.h>

#include "equation/Checked.h"

namespace quorvex {
namespace {

TEST(sphbes, HasItsClosedFormsInTheLowestOrders) {
  for (double x : {1e-3, 0.5, 1.0, 1.999, 2.0, 7.5, 40.0, 200.0}) {
    const double s = std::sin(x), c = std::cos(x);
    // sqrt(pi/2) has 8 digits: 3e-8, of the modulus, which is 1/x and for slopes and order 1 at most (1 + 1/x)/x.
    const double limit = 3e-8 / x;
    EXPECT_NEAR(Value("sphjn", {0, x}), s / x, limit * std::min(x, 1.0)) << x;
    EXPECT_NEAR(Value("sphyn", {0, x}), -c / x, limit) << x;
    EXPECT_NEAR(Value("dsphjn", {0, x}), c / x - s / x / x, limit * (1 + 1 / x)) << x;
    EXPECT_NEAR(Value("dsphyn", {0, x}), s / x + c / x / x, limit * (1 + 1 / x)) << x;
    EXPECT_NEAR(Value("sphyn", {1, x}), -c / x / x - s / x, limit * (1 + 1 / x)) << x;
  }
}

// sqrt(2/(pi x)) sin(x), and with -cos(x).
TEST(bessjy, HasItsClosedFormsOfOrderOneHalfUpToTheEndOfTheDoubles) {
  for (const double x : {30.0, 1e5, 1e300, 3e307, 1.7e308}) {
    const double modulus = std::sqrt(2 / 3.141592653589793) / std::sqrt(x);
    EXPECT_NEAR(Value("jnu", {0.5, x}), modulus * std::sin(x), modulus * 1e-14) << x;
    EXPECT_NEAR(Value("ynu", {0.5, x}), -modulus * std::cos(x), modulus * 1e-14) << x;
  }
}

TEST(airy, VanishesOnTheRightAndHasItsValuesAtZero) {
  EXPECT_EQ(Value("airya", {1e300}), 0);
  EXPECT_NEAR(Value("airya", {104}) / 7.4e-309, 1, 0.01);
  EXPECT_EQ(Value("dairya", {105}), 0);
  EXPECT_NEAR(Value("airya", {0}), 0.35502805388781724, 1e-8);
  EXPECT_NEAR(Value("dairyb", {0}), 0.44828835735382636, 1e-8);
}

}  // namespace
}  // namespace quorvex
