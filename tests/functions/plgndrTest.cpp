#include <gtest/gtest.h>

#include <cmath>

#include "equation/Checked.h"

namespace quorvex {
namespace {

TEST(plgndr, AgreesWithTheDifferentiatedPolynomials) {
  constexpr struct {
    double l, m, x, value;
  } kRows[] = {{0, 0, 0.3, 1},
               {1, 0, -0.7, -0.69999999999999996},
               {1, 1, 0.6, -0.80000000000000002},
               {2, 1, 0.5, -1.299038105676658},
               {2, 2, 0.5, 2.25},
               {3, 2, -0.25, -3.515625},
               {5, 3, 0.9, -27.348930668983652},
               {10, 0, 1, 1},
               {10, 0, -1, 1},
               {7, 7, 0, -135135},
               {12, 5, -0.4, 65945.989187086215},
               {20, 0, 0.1, -0.082077130944527746},
               {20, 19, 0.8, -1.5591370155777666e+19}};  // exact polynomials, differentiated m times, at 50 digits
  for (const auto& row : kRows)                          // some l roundings
    EXPECT_NEAR(Value("legendre", {row.l, row.m, row.x}) / row.value, 1, 1e-16 * (4 + 4 * row.l))
        << row.l << " " << row.m << " " << row.x;
}

TEST(plgndr, RefusesWrongOrdersAndArguments) {
  constexpr double kRows[][3] = {{3, -1, 0.1}, {3, 4, 0.1}, {-1, 0, 0.1}, {3, 1, 1.0000001},
                                 {3, 1, -2},   {4e4, 1, 0}, {200, 200, 0}};
  for (const auto& row : kRows) EXPECT_FALSE(Checked("legendre", {row[0], row[1], row[2]})) << row[0] << " " << row[1];
  EXPECT_EQ(Value("legendre", {32767, 2, 1}), 0);
}

}  // namespace
}  // namespace quorvex
