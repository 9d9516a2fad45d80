#include <gtest/gtest.h>

#include <cmath>

#include "equation/Checked.h"

namespace quorvex {
namespace {

// Reference values: mpmath at 50 digits.

TEST(gammln, IsGoodToTheLanczosBound) {
  constexpr struct {
    double x, value;
  } kRows[] = {{1e-300, 690.77552789821371}, {1e-05, 11.512919692895826},
               {0.5, 0.57236494292470009},   {1, 0},
               {1.5, -0.12078223763524522},  {2, 0},
               {3.3, 0.9870985778947344},    {10, 12.80182748008147},
               {33, 81.557959456115037},     {171, 706.57306224578735},
               {100000, 1051287.7089736569}, {1e+305, 7.0128845336318389e+307}};
  // 3e-10 is the absolute bound of the six-term formula with 15-digit coefficients; the rest is rounding of a large ln.
  for (const auto& row : kRows) EXPECT_NEAR(Value("gammaln", {row.x}), row.value, 3e-10 + 2e-15 * row.value) << row.x;
}

TEST(gammp, AndItsComplementAgreeToTheStoppingLimit) {
  constexpr struct {
    double a, x, p, q;
  } kRows[] = {{0.1, 1.1, 0.97939922179065971, 0.020600778209340292},
               {0.5, 1e-10, 1.1283791670579e-5, 0.99998871620832942},
               {0.5, 0.5, 0.6826894921370859, 0.3173105078629141},
               {0.5, 1.4999, 0.91672520396251584, 0.083274796037484159},
               {0.5, 1.5, 0.9167354833364496, 0.083264516663550402},
               {0.5, 30, 0.99999999999999051, 9.4857375710738484e-15},
               {0.5, 700, 1, 2.1010145162642175e-306},
               {1, 1, 0.63212055882855768, 0.36787944117144232},
               {1, 2, 0.86466471676338731, 0.13533528323661269},
               {0.001, 0.5, 0.99943993334352925, 5.6006665647074989e-4},
               {3.7, 4.69, 0.74073959572733985, 0.25926040427266015},
               {3.7, 4.7, 0.74216585897765175, 0.25783414102234825},
               {3.7, 4.71, 0.74358606592986006, 0.25641393407013994},
               {10, 2, 4.6498075017263808e-5, 0.99995350192498274},
               {10, 10, 0.54207028552814779, 0.45792971447185221},
               {10, 30, 0.99999287824913718, 7.1217508628155771e-6},
               {50, 51, 0.57439485951685964, 0.42560514048314036},
               {50, 50.9, 0.56891646433085643, 0.43108353566914357},
               {100, 60, 1.4815276326460468e-6, 0.99999851847236735},
               {100, 150, 0.99999407545966452, 5.9245403354839158e-6},
               {390, 380, 0.31070706082216535, 0.68929293917783465},
               {5000, 5100, 0.92067111892238102, 0.079328881077618977}};
  // The side that is summed is good, relatively, to its stopping limit of 3e-7 and what is left then: little of the
  // fraction, and of the series up to 3.5 times its last term, since at a = 390 the terms fall by a quarter only. The
  // other side is its difference from 1.
  for (const auto& row : kRows) {
    const bool series = row.x < row.a + 1;
    const double limit = !series ? 5e-7 : row.a > 20 ? 1.1e-6 : 3e-7;
    EXPECT_NEAR(Value("igamma", {row.a, row.x}), row.p, limit * (series ? row.p : row.q)) << row.a << " " << row.x;
    EXPECT_NEAR(Value("igammac", {row.a, row.x}), row.q, limit * (series ? row.p : row.q)) << row.a << " " << row.x;
  }
}

TEST(gammp, GivesTheDistributionsTheirPrintedValues) {
  // Abramowitz & Stegun, tables 7.1 (erf), 26.7 (chi-square) and 26.7's Poisson sums; erfc(-1) = 2 - erfc(1).
  constexpr struct {
    const char* word;
    double a, b, value, tolerance;
  } kRows[] = {{"erf", 0, 0, 0, 0},
               {"erf", 1, 0, 0.8427007929, 3e-7},
               {"erf", -0.5, 0, -0.5204998778, 3e-7},
               {"erfc", 0, 0, 1, 0},
               {"erfc", 2, 0, 0.004677734981, 3e-7 * 0.0047},
               {"erfc", -1, 0, 1.8427007929, 3e-7},
               {"erfc", 30, 0, 0, 0},
               {"chi2", 3.841, 1, 0.95, 3e-5},
               {"chi2c", 18.307, 10, 0.05, 3e-6},
               {"poisson", 3, 2, 0.67667642, 3e-7},  // at most 2 events where 2 are expected: 5 exp(-2)
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

TEST(gamma, FaultsOutsideItsDomainAndBeyondItsTerms) {
  constexpr struct {
    const char* word;
    double a, x;
  } kRows[] = {{"gamma", -0.5, 0}, {"gamma", -1.5, 0},    {"gamma", 0, 0},         {"gamma", 171.7, 0},
               {"gammaln", 0, 0},  {"gammaln", 1e306, 0}, {"fact", -1, 0},         {"fact", 171, 0},
               {"fact", 40000, 0}, {"factln", -1, 0},     {"igamma", 0, 1},        {"igamma", 1, -1e-9},
               {"igammac", -1, 1}, {"igamma", 400, 400},  {"igammac", 8000, 8001}, {"poisson", 0, 1},
               {"chi2", -1, 2},    {"erf", 1e200, 0},     {"beta", 1, 0}};
  for (const auto& row : kRows) EXPECT_FALSE(Checked(row.word, {row.a, row.x})) << row.word << " " << row.a;
}

}  // namespace
}  // namespace quorvex
