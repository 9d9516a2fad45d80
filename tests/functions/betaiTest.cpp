#include <gtest/gtest.h>

#include <cmath>

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

// Values by mpmath at 60 digits. They are near 0 because a parameter is, beyond the mean, too.
TEST(betai, KeepsItsDigitsAtSmallParameters) {
  const struct {
    const char* word;
    std::vector<double> arguments;
    double value;
  } kRows[] = {
      {"ibeta", {2, 1e-20, 0.9}, 1.4025850929940458e-20},
      {"ibeta", {0.5, 1e-20, 0.9}, 3.6368929184641337e-20},
      {"ibeta", {5.9079, 1.41059711e-8, 0.9107744}, 7.7859772376777135e-9},
      {"ibeta", {3, 1e-5, 0.999}, 5.4096146840350774e-5},
      {"ibeta", {0.25, 0.09, 0.7}, 0.30549948233516447},
      {"ibeta", {40, 0.001, 0.98}, 0.00031195809256143102},
      {"ibeta", {1e-9, 1e-9, 0.5}, 0.5},
      {"ibeta", {1, 1e-7, 0.75}, 1.3862942650292922e-7},
      {"ibeta", {1000, 1e-10, 0.9995}, 5.5992524324695744e-11},
      {"student", {0.0002, 1e-8}, 1.4436354609209101e-8},
      {"student", {1, 1e-12}, 1.4508657738418807e-11},
      {"igammac", {1e-300, 1e-5}, 1.0935719800043696e-299},
      {"igammac", {1e-20, 1}, 2.1938393439552026e-21},
      {"igammac", {1e-12, 1e-100}, 2.2968129360812711e-10},
      {"igammac", {0.09, 1.05}, 0.019869336725188338},
      {"chi2c", {1, 2e-8}, 5.5977359770995871e-9},
  };
  for (const auto& row : kRows)
    EXPECT_NEAR(Checked(*FindFunction(row.word), row.arguments.data()).value_or(0) / row.value, 1, 1e-9)
        << row.word << " " << row.value;
}

TEST(betai, FaultsOutsideItsDomain) {
  constexpr struct {
    const char* word;
    double a, b, x;
  } kRows[] = {{"ibeta", 1, 1, -1e-9},  {"ibeta", 1, 1, 1.0000001}, {"ibeta", 0, 1, 0.5}, {"ibeta", 1, -2, 0.5},
               {"binomial", 0, 5, 0.5}, {"student", 1, -2, 0},      {"fdist", 1, 1, -3}};
  for (const auto& row : kRows) EXPECT_FALSE(Checked(row.word, {row.a, row.b, row.x})) << row.word << " " << row.a;
}

}  // namespace
}  // namespace quorvex
