#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "core/NumericFault.h"
#include "linear/SvdDecompose.h"

namespace quorvex {
namespace {

ColumnMatrix FromRows(const std::vector<std::vector<double>>& rows) {
  ColumnMatrix matrix(rows.size(), rows[0].size());
  for (std::size_t i = 0; i < rows.size(); ++i)
    for (std::size_t j = 0; j < rows[i].size(); ++j) matrix(i, j) = rows[i][j];
  return matrix;
}

std::vector<double> SingularValues(ColumnMatrix matrix) {
  std::vector<double> w;
  ColumnMatrix v;
  SvdDecompose(matrix, w, v);
  std::sort(w.rbegin(), w.rend());
  return w;
}

TEST(SvdDecompose, GivesKnownSingularValues) {
  // mpmath at 50 digits, of the entries as rounded to doubles
  const struct {
    std::vector<std::vector<double>> rows;
    std::vector<double> w;
  } cases[] = {
      {{{3, 0}, {0, -4}}, {4, 3}},
      {{{1, 2, 3}, {4, 5, 6}, {7, 8, 10}, {1, 0, 1}, {2, 2, 2}},
       {17.782984692794782698, 1.0772986093517629088, 0.77774232372631346201}},
      {{{1, 1. / 2, 1. / 3, 1. / 4},
        {1. / 2, 1. / 3, 1. / 4, 1. / 5},
        {1. / 3, 1. / 4, 1. / 5, 1. / 6},
        {1. / 4, 1. / 5, 1. / 6, 1. / 7}},
       {1.5002142800592428117, 0.16914122022145004103, 0.0067382736057607222822, 0.000096702304022600176023}},
  };
  for (const auto& c : cases) {
    const std::vector<double> w = SingularValues(FromRows(c.rows));
    for (std::size_t j = 0; j < w.size(); ++j) EXPECT_NEAR(w[j], c.w[j], 1e-15 * c.w[0]) << j;
  }
}

// u W v^T is the matrix, to rounding of its norm, and u^T u and v^T v are unit matrices.
void ExpectDecomposition(const ColumnMatrix& matrix) {
  ColumnMatrix u = matrix, v;
  std::vector<double> w;
  SvdDecompose(u, w, v);
  const std::size_t m = matrix.Rows(), n = matrix.Columns();
  double biggest = 0, off = 0, skew = 0;
  for (std::size_t i = 0; i < m; ++i) {
    for (std::size_t j = 0; j < n; ++j) {
      double sum = 0;
      for (std::size_t k = 0; k < n; ++k) sum += u(i, k) * w[k] * v(j, k);
      off = std::max(off, std::abs(sum - matrix(i, j)));
      biggest = std::max(biggest, std::abs(matrix(i, j)));
    }
  }
  for (std::size_t j = 0; j < n; ++j) {
    EXPECT_GE(w[j], 0);
    for (std::size_t k = 0; k < n; ++k) {
      double uu = 0, vv = 0;
      for (std::size_t i = 0; i < m; ++i) uu += u(i, j) * u(i, k);
      for (std::size_t i = 0; i < n; ++i) vv += v(i, j) * v(i, k);
      if (w[j] > 0 && w[k] > 0) skew = std::max(skew, std::abs(uu - (j == k)));
      skew = std::max(skew, std::abs(vv - (j == k)));
    }
  }
  const double size = std::numeric_limits<double>::epsilon() * static_cast<double>(n);
  EXPECT_LT(off, 4 * size * biggest * std::sqrt(static_cast<double>(m * n)));
  EXPECT_LT(skew, 16 * size);
}

TEST(SvdDecompose, RebuildsMatricesOfAnyShapeAndScale) {
  std::mt19937 random(7);
  const auto next = [&random] { return static_cast<double>(random()) / 2147483648.0 - 1; };
  for (const std::size_t n : {1U, 2U, 3U, 7U, 21U}) {
    for (const std::size_t m : {n, n + 1, 5 * n, std::size_t{1000}, std::max<std::size_t>(n / 2, 1)}) {
      for (const double grade : {1.0, 1e-3, 1e3, 1e10, 1e-14}) {  // factor from one column to the next
        for (const double scale : {1.0, 1e150, 1e-150}) {
          if (static_cast<double>(n) * std::abs(std::log10(grade)) > 150) continue;
          SCOPED_TRACE(std::to_string(m) + " by " + std::to_string(n));
          ColumnMatrix matrix(m, n);
          for (std::size_t j = 0; j < n; ++j)
            for (std::size_t i = 0; i < m; ++i) matrix(i, j) = next() * scale * std::pow(grade, static_cast<double>(j));
          ExpectDecomposition(matrix);
        }
      }
    }
  }
}

// Upper bidiagonal as they come: on the way an element inside the diagonal becomes 0, the square of the shift
// underflows or both elements of a rotation do.
TEST(SvdDecompose, RebuildsMatricesWhoseDiagonalUnderflows) {
  const std::vector<std::vector<double>> cases[] = {
      {{1.75, 1, 0}, {0, 1e-170, 1.34}, {0, 0, 1.34e-300}},
      {{1.8, 1, 0, 0}, {0, 5e-171, 1.8, 0}, {0, 0, 1.8e-284, 1.8}, {0, 0, 0, 1.8e-154}},
      {{1.5, 1, 0, 0}, {0, 5e-324, 5e-9, 0}, {0, 0, 1.5, 1}, {0, 0, 0, 1e-16}},
      {{1.4, 1, 0}, {0, 5e-324, 1}, {0, 0, 1}},
  };
  for (const auto& rows : cases) ExpectDecomposition(FromRows(rows));
}

TEST(SvdDecompose, LeavesExactZerosOfExactDependence) {
  const struct {
    std::vector<std::vector<double>> rows;
    int zeros;
  } cases[] = {
      {{{0.1, 0.1}, {0.7, 0.7}, {1e9, 1e9}, {-3, -3}}, 1},            // two columns the same
      {{{0.1, 2, 0.1}, {0.7, 3, 0.7}, {1e9, 5, 1e9}, {3, 7, 3}}, 1},  // with another between them
      {{{0, 1, 2}, {0, 3, 5}, {0, 4, 7}}, 1},                         // a column of zeros, first
      {{{1, 2, 0}, {3, 5, 0}, {4, 7, 0}}, 1},                         // and last
      {{{0.3, 0.1, 1}}, 2},                                           // fewer rows than columns
      {{{0, 0}, {0, 0}}, 2},
      {{{1, 1}, {1, 1.0000000000000002}}, 0},  // nearly the same is not the same
  };
  for (const auto& c : cases) {
    const std::vector<double> w = SingularValues(FromRows(c.rows));
    EXPECT_EQ(std::count(w.begin(), w.end(), 0.0), c.zeros) << c.rows[0][0] << " " << c.rows[0][1];
  }
}

TEST(SvdDecompose, RefusesEntriesThatAreNotFinite) {
  for (const double bad : {std::nan(""), std::numeric_limits<double>::infinity()}) {
    ColumnMatrix u = FromRows({{1, 2}, {3, bad}, {5, 7}}), v;
    std::vector<double> w;
    EXPECT_THROW(SvdDecompose(u, w, v), NumericFault);
  }
}

TEST(SvdBackSubstitute, SolvesAndLeavesOutZeroSingularValues) {
  ColumnMatrix u = FromRows({{2, 0}, {0, 0}, {0, 0}}), v;
  std::vector<double> w;
  SvdDecompose(u, w, v);
  EXPECT_EQ(SvdBackSubstitute(u, w, v, std::vector<double>{6, 5, 4}), (std::vector<double>{3, 0}));
}

}  // namespace
}  // namespace quorvex
