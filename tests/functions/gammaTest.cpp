#include <gtest/gtest.h>

#include <cmath>

#include "equation/Checked.h"

namespace quorvex {
namespace {

TEST(gammp, GivesTheDistributionsTheirPrintedValues) {
  // Abramowitz & Stegun, tables 7.1 (erf), 26.7 (chi-square) and 26.7's Poisson sums; erfc(-1) = 2 - erfc(1).
  constexpr struct {
    const char* word;
    double a, b, value, tolerance;
  } kRows[] = {{"erf", 0, 0, 0, 0},
               {"erf", 1, 0, 0.8427007929, 1e-9},
               {"erf", -0.5, 0, -0.5204998778, 1e-9},
               {"erfc", 0, 0, 1, 0},
               {"erfc", 2, 0, 0.004677734981, 1e-9 * 0.0047},
               {"erfc", -1, 0, 1.8427007929, 1e-9},
               {"erfc", 30, 0, 0, 0},
               {"chi2", 3.841, 1, 0.95, 3e-5},
               {"chi2c", 18.307, 10, 0.05, 3e-6},
               {"poisson", 3, 2, 0.67667642, 5e-9},  // at most 2 events where 2 are expected: 5 exp(-2)
               {"beta", 2, 3, 1.0 / 12, 3e-10 / 4},
               {"beta", 0.5, 0.5, 3.14159265358979, 3e-9}};
  for (const auto& row : kRows) EXPECT_NEAR(Value(row.word, {row.a, row.b}), row.value, row.tolerance) << row.word;
}

TEST(factrl, IsATableUpTo32AndTenDigitsAbove) {
  constexpr struct {
    double n, value, tolerance;
  } kRows[] = {{0, 1, 0},
               {5, 120, 0},
               {22, 1124000727777607680000.0, 0},
               {32, 2.6313083693369353e35, 4e-16},  // some ten products, each rounded
               {33, 8.6833176188118865e36, 3e-10},
               {170, 7.2574156153079990e306, 3e-10},
               {2.5, 2, 0},
               {3.5, 24, 0}};
  for (const auto& row : kRows) EXPECT_NEAR(Value("fact", {row.n}) / row.value, 1, row.tolerance) << row.n;
  EXPECT_NE(Value("fact", {33}), 33 * Value("fact", {32}));
  EXPECT_NEAR(Value("factln", {170}), std::log(7.2574156153079990e306), 1e-9);
}

TEST(gamma, FaultsOutsideItsDomainAndBeyondDoubles) {
  constexpr struct {
    const char* word;
    double a, x;
  } kRows[] = {{"gamma", -0.5, 0},    {"gamma", -1.5, 0},   {"gamma", 0, 0},    {"gamma", 171.7, 0}, {"gammaln", 0, 0},
               {"gammaln", 1e306, 0}, {"fact", -1, 0},      {"fact", 171, 0},   {"fact", 40000, 0},  {"factln", -1, 0},
               {"igamma", 0, 1},      {"igamma", 1, -1e-9}, {"igammac", -1, 1}, {"poisson", 0, 1},   {"chi2", 1, -2},
               {"chi2", -1, 2},       {"beta", 1, 0},       {"gammaln", -1, 0}};
  for (const auto& row : kRows) EXPECT_FALSE(Checked(row.word, {row.a, row.x})) << row.word << " " << row.a;
}

}  // namespace
}  // namespace quorvex
