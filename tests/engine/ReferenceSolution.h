#pragma once

#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

namespace quorvex {

// Least squares by another road than the program's: columns scaled to length 1, then modified Gram-Schmidt with every
// projection taken off twice. In long double it keeps three digits more, or more yet, than doubles can at the same
// condition; in double it keeps what they can.
template <class Real>
struct ReferenceSolution {
  using Column = std::vector<Real>;

  Column a;            // coefficients
  Column variances;    // the diagonal of the inverse of design^T * design
  Real RSS = 0;        // of the rows as they stand
  Real Condition = 0;  // of the scaled columns, in the 2-norm

  // `columns` of the design and the right-hand side, both already multiplied by the roots of the weights.
  ReferenceSolution(std::vector<Column> columns, Column b) {
    const std::size_t n = columns.size();
    Column scale(n), c(n);
    std::vector<Column> R(n, Column(n)), inverse = R;  // of the scaled columns; upper triangles
    for (std::size_t j = 0; j < n; ++j) {
      scale[j] = Normalise(columns[j]);
      for (std::size_t k = 0; k < 2 * j; ++k) R[k % j][j] += TakeOff(columns[k % j], columns[j]);
      R[j][j] = Normalise(columns[j]);
    }
    for (std::size_t k = 0; k < 2 * n; ++k) c[k % n] += TakeOff(columns[k % n], b);
    RSS = Dot(b, b);
    for (std::size_t j = 0; j < n; ++j)
      for (std::size_t i = j + 1; i-- > 0;) {
        Real sum = i == j ? 1 : 0;
        for (std::size_t k = i + 1; k <= j; ++k) sum -= R[i][k] * inverse[k][j];
        inverse[i][j] = sum / R[i][i];
      }
    for (std::size_t i = 0; i < n; ++i) {
      a.push_back(Dot(inverse[i], c) / scale[i]);
      variances.push_back(Dot(inverse[i], inverse[i]) / (scale[i] * scale[i]));
    }
    Condition = LargestSingularValue(R) * LargestSingularValue(inverse);
  }

 private:
  static Real Dot(const Column& p, const Column& q) {
    Real sum = 0;
    for (std::size_t i = 0; i < p.size(); ++i) sum += p[i] * q[i];
    return sum;
  }
  static Real Normalise(Column& p) {
    const Real length = std::sqrt(Dot(p, p));
    for (Real& value : p) value /= length;
    return length;
  }
  // Clears q of its part along the unit vector p, and returns that part.
  static Real TakeOff(const Column& p, Column& q) {
    const Real part = Dot(p, q);
    for (std::size_t i = 0; i < q.size(); ++i) q[i] -= part * p[i];
    return part;
  }
  // By the power method on triangle^T * triangle.
  static Real LargestSingularValue(const std::vector<Column>& triangle) {
    Column p(triangle.size(), 1);
    Real length = 0;
    for (int round = 0; round < 30; ++round) {
      Column next(p.size());
      for (const Column& row : triangle) {
        const Real product = Dot(row, p);
        for (std::size_t j = 0; j < p.size(); ++j) next[j] += row[j] * product;
      }
      p = next;
      length = Normalise(p);
    }
    return std::sqrt(length);
  }
};

static_assert(std::numeric_limits<long double>::digits >= 64, "as a reference for doubles");

// How many digits of `value` are right.
inline double DigitsOf(long double value, long double reference) {
  const long double error = std::abs(value - reference) / std::abs(reference);
  return error == 0 ? 17 : static_cast<double>(-std::log10(error));
}

}  // namespace quorvex
