#include <gtest/gtest.h>

#include "linear/gaussj.h"

namespace quorvex {
namespace {

// The Hilbert matrix of order 5: its inverse has whole elements, the corner ones 25 and 44100.
TEST(gaussj, InvertsAndSolves) {
  Matrix a(5);
  std::vector<double> b(5);
  for (std::size_t i = 0; i < 5; ++i)
    for (std::size_t j = 0; j < 5; ++j) {
      a(i, j) = 1.0 / static_cast<double>(i + j + 1);
      b[i] += a(i, j);
    }
  ASSERT_TRUE(gaussj(a, 5, b));
  for (const double x : b) EXPECT_NEAR(x, 1, 1e-10);
  EXPECT_NEAR(a(0, 0), 25, 1e-8);
  EXPECT_NEAR(a(4, 4) / 44100, 1, 1e-10);
  EXPECT_NEAR(a(0, 4) / a(4, 0), 1, 1e-10);
}

// The largest elements stand off the diagonal, so that rows are swapped and columns of the inverse have to be swapped
// back: (3, 1), (1, 2), (2, 3) are the pivots, in a cycle that no single swap undoes. The determinant is 215.
TEST(gaussj, PivotsOffTheDiagonal) {
  const double rows[3][3] = {{1, 6, 2}, {0, 1, 5}, {8, 2, 1}};
  const double adjugate[3][3] = {{-9, -2, 28}, {40, -15, -5}, {-8, 46, 1}};
  Matrix a(3);
  std::vector<double> b(3);
  for (std::size_t i = 0; i < 3; ++i)
    for (std::size_t j = 0; j < 3; ++j) {
      a(i, j) = rows[i][j];
      b[i] += rows[i][j] * static_cast<double>(j + 1);
    }
  ASSERT_TRUE(gaussj(a, 3, b));
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_NEAR(b[i], static_cast<double>(i + 1), 1e-14);
    for (std::size_t j = 0; j < 3; ++j) EXPECT_NEAR(a(i, j), adjugate[i][j] / 215, 1e-15) << i << j;
  }
}

TEST(gaussj, RefusesOnlyExactSingularity) {
  Matrix zeroRow(2);
  zeroRow(0, 0) = 1;
  std::vector<double> b(2, 1.0);
  EXPECT_FALSE(gaussj(zeroRow, 2, b));

  Matrix near(2);
  near(0, 0) = near(0, 1) = near(1, 0) = 1;
  near(1, 1) = 1 + 1e-15;
  b = {1, 1};
  EXPECT_TRUE(gaussj(near, 2, b));

  Matrix none(0);
  EXPECT_TRUE(gaussj(none, 0, {}));
}

TEST(covsrt, SpreadsThePackedCovariance) {
  Matrix covar(4);
  covar(0, 0) = 1;
  covar(0, 1) = covar(1, 0) = 2;
  covar(1, 1) = 3;
  const std::vector<int> ia = {0, 1, 0, 1};
  covsrt(covar, ia, 2);
  const double expected[4][4] = {{0, 0, 0, 0}, {0, 1, 0, 2}, {0, 0, 0, 0}, {0, 2, 0, 3}};
  for (std::size_t i = 0; i < 4; ++i)
    for (std::size_t j = 0; j < 4; ++j) EXPECT_EQ(covar(i, j), expected[i][j]) << i << j;
}

}  // namespace
}  // namespace quorvex
