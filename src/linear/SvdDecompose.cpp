#include "linear/SvdDecompose.h"

#include <algorithm>
#include <cmath>

#include "core/NumericFault.h"
#include "linear/Householder.h"

namespace quorvex {

namespace {

// Sweeps for one singular value. About two are the rule, so one that takes 30 will not settle at all.
constexpr int kMostSweeps = 30;

// sqr(a^2 + b^2), scaled by the larger
double Hypotenuse(double a, double b) {
  const double big = std::max(std::abs(a), std::abs(b)), small = std::min(std::abs(a), std::abs(b));
  if (big == 0) return 0;
  const double ratio = small / big;
  return big * std::sqrt(1 + ratio * ratio);
}

bool AllFinite(const ColumnMatrix& matrix) {
  for (std::size_t j = 0; j < matrix.Columns(); ++j)
    for (std::size_t i = 0; i < matrix.Rows(); ++i)
      if (!std::isfinite(matrix(i, j))) return false;
  return true;
}

// QR of u in echelon form: a column that is all zeros below the rows already used takes no row. Returns the
// reflections, whose number is the rank; number k works on the rows from k and has its z in column k of u.
std::vector<Reflection> Triangularise(ColumnMatrix& u, ColumnMatrix& r) {
  const std::size_t m = u.Rows(), n = u.Columns();
  std::vector<Reflection> reflections;
  std::vector<double> p(m);
  for (std::size_t j = 0; j < n; ++j) {
    const std::size_t k = reflections.size();
    // The rows above k are finished: the reflections so far have made them rows of R.
    std::copy_n(u.Column(j), k, r.Column(j));
    const double* rest = u.Column(j) + k;
    if (std::all_of(rest, rest + (m - k), [](double value) { return value == 0; })) continue;
    std::copy_n(rest, m - k, p.data());
    // As k is at most j, column k of u has been read already and is free for z.
    reflections.push_back(Reflect(p.data(), m - k, u.Column(k) + k));
    r(k, j) = reflections.back().image;
    for (std::size_t later = j + 1; later < n; ++later) reflections.back().Apply(u.Column(later) + k);
  }
  return reflections;
}

// The SVD of a square matrix in progress: matrix = U B V^T with B upper bidiagonal, d its diagonal and e[i] the element
// above d[i].
class SquareSvd {
 public:
  explicit SquareSvd(ColumnMatrix matrix) : n_(matrix.Columns()), d(n_), e(n_), U(n_, n_), V(n_, n_) {
    Bidiagonalise(std::move(matrix));
    // Shifts drive the last element of a block to its singular value first, so the blocks end ever higher up.
    for (std::size_t k = n_; k-- > 0;) Settle(k);
  }

 private:
  // Declared first, since members are made in this order and n_ gives the others their size.
  std::size_t n_;

 public:
  std::vector<double> d, e;
  ColumnMatrix U, V;

 private:
  void Bidiagonalise(ColumnMatrix r) {
    ColumnMatrix leftZ(n_, n_), rightZ(n_, n_);
    std::vector<Reflection> left, right;
    std::vector<double> p(n_);
    // The elements of a row are a column's length apart; a reflection wants them in one piece.
    const auto onRow = [&](std::size_t row, std::size_t from, auto&& work) {
      for (std::size_t j = from; j < n_; ++j) p[j] = r(row, j);
      work(p.data() + from);
      for (std::size_t j = from; j < n_; ++j) r(row, j) = p[j];
    };
    for (std::size_t k = 0; k < n_; ++k) {
      // A reflection from the left clears column k below the diagonal, one from the right row k beyond the element
      // beside it.
      std::copy_n(r.Column(k) + k, n_ - k, p.data());
      left.push_back(Reflect(p.data(), n_ - k, leftZ.Column(k)));
      d[k] = left[k].image;
      for (std::size_t j = k + 1; j < n_; ++j) left[k].Apply(r.Column(j) + k);
      if (k + 1 == n_) break;
      onRow(k, k + 1, [&](double* row) { right.push_back(Reflect(row, n_ - k - 1, rightZ.Column(k))); });
      e[k + 1] = right[k].image;
      for (std::size_t i = k + 1; i < n_; ++i) onRow(i, k + 1, [&](double* row) { right[k].Apply(row); });
    }
    // The products of the reflections, from the last one back: number k then meets rows and columns from k on only, as
    // those before are still those of the unit matrix.
    for (std::size_t k = n_; k-- > 0;) {
      U(k, k) = V(k, k) = 1;
      for (std::size_t j = k; j < n_; ++j) left[k].Apply(U.Column(j) + k);
      for (std::size_t j = k + 1; j < n_ && k < right.size(); ++j) right[k].Apply(V.Column(j) + k + 1);
    }
  }

  // Sweeps until d[k] stands alone, then makes it positive.
  void Settle(std::size_t k) {
    for (int sweeps = 0;;) {
      const std::size_t first = BlockStart(k);
      if (first == k) break;
      const auto zero =
          std::find(d.begin() + static_cast<std::ptrdiff_t>(first), d.begin() + static_cast<std::ptrdiff_t>(k), 0.0);
      const auto at = static_cast<std::size_t>(zero - d.begin());
      // An exact zero on the diagonal splits the block at once; no sweep is needed.
      if (d[k] == 0) {
        ClearColumn(first, k);
      } else if (at < k) {
        ClearRow(at, k);
      } else {
        if (sweeps++ == kMostSweeps) throw NumericFault();
        Sweep(first, k);
      }
    }
    // Singular values are not negative: the sign goes to the column of V.
    if (d[k] < 0) {
      d[k] = -d[k];
      for (std::size_t i = 0; i < n_; ++i) V(i, k) = -V(i, k);
    }
  }

  // The first row of the block that ends at k: no element of e within it is negligible.
  std::size_t BlockStart(std::size_t k) {
    for (std::size_t i = k; i > 0; --i) {
      const double neighbours = std::abs(d[i - 1]) + std::abs(d[i]);
      // Negligible is what changes no bit of its neighbours. That needs no limit, and so holds in any unit.
      if (neighbours + std::abs(e[i]) == neighbours) {
        e[i] = 0;
        return i;
      }
    }
    return 0;
  }

  // Turns (f, g) to (length, 0). Cosine and sine are those of the scaled pair: the length of numbers near the end of
  // the range is not theirs.
  struct Rotation {
    double c = 1, s = 0, length = 0;
    Rotation(double f, double g) {
      const double big = std::max(std::abs(f), std::abs(g));
      if (big == 0) return;
      const double root = Hypotenuse(f / big, g / big);
      c = f / big / root;
      s = g / big / root;
      length = big * root;
    }
    void Apply(double& x, double& y) const {
      const double old = x;
      x = c * old + s * y;
      y = c * y - s * old;
    }
  };

  static void RotateColumns(ColumnMatrix& matrix, std::size_t i, std::size_t j, const Rotation& rotation) {
    for (std::size_t row = 0; row < matrix.Rows(); ++row) rotation.Apply(matrix(row, i), matrix(row, j));
  }

  // d[k] is 0: rotations of column k with those before it clear e[k] and leave column k of the block zero.
  void ClearColumn(std::size_t first, std::size_t k) {
    double f = e[k];
    e[k] = 0;
    for (std::size_t j = k; j-- > first;) {
      const Rotation rotation(d[j], f);
      d[j] = rotation.length;
      f = -rotation.s * e[j];
      if (j > first) e[j] *= rotation.c;
      RotateColumns(V, j, k, rotation);
    }
  }

  // d[at] is 0: rotations of row `at` with those behind it clear e[at + 1], which splits the block.
  void ClearRow(std::size_t at, std::size_t k) {
    double f = e[at + 1];
    e[at + 1] = 0;
    for (std::size_t j = at + 1; j <= k; ++j) {
      const Rotation rotation(d[j], f);
      d[j] = rotation.length;
      if (j < k) {
        f = -rotation.s * e[j + 1];
        e[j + 1] *= rotation.c;
      }
      RotateColumns(U, j, at, rotation);
    }
  }

  // One implicit QR step on the block first..k of B^T B. The shift is the eigenvalue of its last 2 by 2 corner that is
  // nearer to its last element.
  void Sweep(std::size_t first, std::size_t k) {
    double biggest = 0;
    for (std::size_t i = first; i <= k; ++i) biggest = std::max({biggest, std::abs(d[i]), std::abs(e[i])});
    // The shift is made of squares of the elements, which leave the range before these do.
    const int exponent = std::ilogb(biggest);
    const auto scaled = [exponent](double value) { return std::scalbn(value, -exponent); };
    // The last 2 by 2 corner of B^T B, in the elements of B.
    const double y = scaled(d[k - 1]), z = scaled(d[k]), h = scaled(e[k]), g = k - 1 > first ? scaled(e[k - 1]) : 0;
    const double off = y * h, last = z * z + h * h, delta = (y * y + g * g - last) / 2;
    // The root on delta's own side is a sum; the other one would cancel.
    const double towards = delta + std::copysign(Hypotenuse(delta, off), delta);
    // 0 only where delta and off are: then the corner is `last` times the unit matrix.
    const double shift = towards == 0 ? last : last - off * (off / towards);
    const double x = scaled(d[first]);
    // The first column of B^T B less the shift: the rotation that clears it starts the chase.
    double f = x * x - shift, bulge = x * scaled(e[first + 1]);
    if (f == 0 && bulge == 0) {  // squares lost to underflow: a step without shift
      f = d[first];
      bulge = e[first + 1];
    }
    // Rotating columns makes an element below the diagonal, rotating rows moves it above, and so it goes down until it
    // drops out at the end.
    for (std::size_t i = first; i < k; ++i) {
      const Rotation right(f, bulge);  // columns i and i + 1
      if (i > first) e[i] = right.length;
      f = right.c * d[i] + right.s * e[i + 1];
      e[i + 1] = right.c * e[i + 1] - right.s * d[i];
      bulge = right.s * d[i + 1];
      d[i + 1] *= right.c;
      RotateColumns(V, i, i + 1, right);
      const Rotation left(f, bulge);  // rows i and i + 1
      d[i] = left.length;
      f = left.c * e[i + 1] + left.s * d[i + 1];
      d[i + 1] = left.c * d[i + 1] - left.s * e[i + 1];
      if (i + 1 < k) {
        bulge = left.s * e[i + 2];
        e[i + 2] *= left.c;
      }
      RotateColumns(U, i, i + 1, left);
    }
    e[k] = f;
  }
};

// u, which holds the z of the reflections, becomes Q, their product, with zeros in the columns beyond the rank.
void FormQ(const std::vector<Reflection>& reflections, ColumnMatrix& u) {
  const std::size_t m = u.Rows();
  for (std::size_t j = reflections.size(); j < u.Columns(); ++j) std::fill_n(u.Column(j), m, 0.0);
  for (std::size_t k = reflections.size(); k-- > 0;) {
    const Reflection& h = reflections[k];
    for (std::size_t j = k + 1; j < reflections.size(); ++j) h.Apply(u.Column(j) + k);
    double* column = u.Column(k);
    // Column k of the product so far is the unit vector e(k), whose reflection is e(k) - z(k)/half * z.
    const double scale = h.half == 0 ? 0 : -column[k] / h.half;
    std::fill_n(column, k, 0.0);
    for (std::size_t i = k; i < m; ++i) column[i] = h.half == 0 ? 0 : column[i] * scale;
    column[k] += 1;
  }
}

// u = u * square, some rows at a time
void MultiplyInPlace(ColumnMatrix& u, const ColumnMatrix& square) {
  constexpr std::size_t kRows = 128;
  const std::size_t n = u.Columns();
  // A row of the product needs all of the old row, so some rows are finished before they are overwritten.
  ColumnMatrix product(kRows, n);
  for (std::size_t first = 0; first < u.Rows(); first += kRows) {
    const std::size_t count = std::min(kRows, u.Rows() - first);
    for (std::size_t j = 0; j < n; ++j) {
      std::fill_n(product.Column(j), count, 0.0);
      for (std::size_t k = 0; k < n; ++k) AddMultiple(square(k, j), u.Column(k) + first, count, product.Column(j));
    }
    for (std::size_t j = 0; j < n; ++j) std::copy_n(product.Column(j), count, u.Column(j) + first);
  }
}

}  // namespace

void SvdDecompose(ColumnMatrix& u, std::vector<double>& w, ColumnMatrix& v) {
  if (!AllFinite(u)) throw NumericFault();
  const std::size_t n = u.Columns();
  ColumnMatrix r(n, n);
  // First to a triangle: what iterates then has the size of the model, however many points there are.
  const std::vector<Reflection> reflections = Triangularise(u, r);
  // Elements that are finite may still make columns whose length is not.
  if (!AllFinite(r)) throw NumericFault();
  SquareSvd svd(std::move(r));
  w = std::move(svd.d);
  v = std::move(svd.V);
  FormQ(reflections, u);
  MultiplyInPlace(u, svd.U);
}

std::vector<double> SvdBackSubstitute(const ColumnMatrix& u, const std::vector<double>& w, const ColumnMatrix& v,
                                      std::span<const double> b) {
  std::vector<double> a(w.size());
  for (std::size_t j = 0; j < w.size(); ++j) {
    // A direction that the data leave open takes no part: of all solutions this gives the shortest.
    const double term = w[j] == 0 ? 0 : PairwiseDot(u.Column(j), b.data(), b.size()) / w[j];
    AddMultiple(term, v.Column(j), a.size(), a.data());
  }
  return a;
}

}  // namespace quorvex
