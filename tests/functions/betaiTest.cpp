#include <gtest/gtest.h>

#include "equation/Checked.h"

namespace quorvex {
namespace {

TEST(betai, IsExactAtBothEnds) {
  for (double a : {0.5, 3.0, 1e4}) {
    EXPECT_EQ(Value("ibeta", {a, 0.5, 0}), 0);
    EXPECT_EQ(Value("ibeta", {a, 0.5, 1}), 1);
  }
}

TEST(betai, GivesTheDistributionsTheirClosedForms) {
  constexpr double kPi = 3.14159265358979;
  for (double t : {0.1, 1.0, 3.0, 100.0}) {
    EXPECT_NEAR(Value("student", {t, 1}), 2 / kPi * std::atan(t), 1e-9) << t;  // Cauchy
    EXPECT_NEAR(Value("student", {t, 2}), t / std::sqrt(2 + t * t), 1e-9) << t;
    EXPECT_NEAR(Value("fdist", {2, 2, t}), 1 / (1 + t), 1e-9 / (1 + t)) << t;
  }
  EXPECT_EQ(Value("student", {0, 5}), 0);
  // At least k heads of n: 1 - (1-p)^n for k = 1, and p^n for k = n.
  EXPECT_NEAR(Value("binomial", {1, 5, 0.3}), 1 - std::pow(0.7, 5), 1e-9);
  EXPECT_NEAR(Value("binomial", {5, 5, 0.3}), std::pow(0.3, 5), 1e-9 * std::pow(0.3, 5));
}

}  // namespace
}  // namespace quorvex
