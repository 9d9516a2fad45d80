#include <gtest/gtest.h>

#include <cmath>

#include "equation/Checked.h"

namespace quorvex {
namespace {

TEST(betai, AgreesWithReferenceToTheStoppingLimit) {
  constexpr struct {
    double a, b, x, value;
  } kRows[] = {
      {0.5, 0.5, 0.01, 0.063768560858519849},  {0.5, 0.5, 0.4999, 0.49993633802233884},
      {0.5, 0.5, 0.5001, 0.50006366197766116}, {1, 3, 0.2, 0.48800000000000002},
      {2, 3, 0.42, 0.55904687999999997},       {2, 3, 0.43, 0.57590802999999999},
      {2.5, 0.5, 0.6, 0.1274640081581163},     {2.5, 0.5, 0.7, 0.20311066372005491},
      {5, 0.5, 0.9, 0.31664291502001231},      {0.1, 7, 0.001, 0.63546026962893346},
      {20, 30, 0.3, 0.069987093300507363},     {20, 30, 0.4, 0.50770019965764801},
      {20, 30, 0.5, 0.92379611401926098},      {150, 0.5, 0.99, 0.082748003254080496},
      {300, 400, 0.43, 0.53186763252570125},   {1000, 1000, 0.49, 0.18555265943151145}};  // mpmath at 50 digits
  for (const auto& row : kRows) {
    const bool direct = row.x < (row.a + 1) / (row.a + row.b + 2);
    EXPECT_NEAR(Value("ibeta", {row.a, row.b, row.x}), row.value, 3e-7 * (direct ? row.value : 1 - row.value))
        << row.a << " " << row.b << " " << row.x;
  }
}

TEST(betai, IsExactAtBothEnds) {
  for (double a : {0.5, 3.0, 1e4}) {
    EXPECT_EQ(Value("ibeta", {a, 0.5, 0}), 0);
    EXPECT_EQ(Value("ibeta", {a, 0.5, 1}), 1);
  }
}

TEST(betai, GivesTheDistributionsTheirClosedForms) {
  constexpr double kPi = 3.14159265358979;
  for (double t : {0.1, 1.0, 3.0, 100.0}) {
    EXPECT_NEAR(Value("student", {t, 1}), 2 / kPi * std::atan(t), 3e-7) << t;  // Cauchy
    EXPECT_NEAR(Value("student", {t, 2}), t / std::sqrt(2 + t * t), 3e-7) << t;
    EXPECT_NEAR(Value("fdist", {2, 2, t}), 1 / (1 + t), 3e-7 / (1 + t)) << t;
  }
  EXPECT_EQ(Value("student", {0, 5}), 0);
  // At least k heads of n: 1 - (1-p)^n for k = 1, and p^n for k = n.
  EXPECT_NEAR(Value("binomial", {1, 5, 0.3}), 1 - std::pow(0.7, 5), 3e-7);
  EXPECT_NEAR(Value("binomial", {5, 5, 0.3}), std::pow(0.3, 5), 3e-7 * std::pow(0.3, 5));
}

TEST(betai, FaultsOutsideItsDomainAndBeyondItsRounds) {
  constexpr struct {
    const char* word;
    double a, b, x;
  } kRows[] = {{"ibeta", 1, 1, -1e-9},   {"ibeta", 1, 1, 1.0000001}, {"ibeta", 0, 1, 0.5},  {"ibeta", 1, -2, 0.5},
               {"ibeta", 1e5, 1e5, 0.5}, {"binomial", 0, 5, 0.5},    {"student", 1, -2, 0}, {"fdist", 1, 1, -3}};
  for (const auto& row : kRows) EXPECT_FALSE(Checked(row.word, {row.a, row.b, row.x})) << row.word << " " << row.a;
}

}  // namespace
}  // namespace quorvex
