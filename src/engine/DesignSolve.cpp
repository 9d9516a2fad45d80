#include "engine/DesignSolve.h"

#include <algorithm>
#include <cmath>
#include <tuple>

#include "core/FaultFlags.h"
#include "core/NumericFault.h"
#include "equation/ClosedForms.h"
#include "functions/Elementary.h"
#include "linear/Householder.h"

namespace quorvex {

namespace {

// Whether one column is a multiple of the other. Quotients of columns in true proportion are roundings of one number,
// so they are equal.
bool InProportion(const double* p, const double* q, std::size_t n) {
  std::size_t i = 0;
  while (i < n && p[i] == 0 && q[i] == 0) ++i;
  if (i == n) return true;
  const double ratio = p[i] / q[i];
  if (!std::isfinite(ratio)) return false;
  for (++i; i < n; ++i)
    if (q[i] == 0 ? p[i] != 0 : p[i] / q[i] != ratio) return false;
  return true;
}

// Whether the basis has fewer than `wanted` distinct rows. Data with more show that within their first rows, as a rule.
bool FewerDistinctRows(const ColumnMatrix& basis, std::size_t wanted) {
  const auto same = [&basis](std::size_t i, std::size_t k) {
    std::size_t j = 0;
    while (j < basis.Columns() && basis(i, j) == basis(k, j)) ++j;
    return j == basis.Columns();
  };
  std::vector<std::size_t> distinct;
  for (std::size_t i = 0; i < basis.Rows() && distinct.size() < wanted; ++i)
    if (std::none_of(distinct.begin(), distinct.end(), [&](std::size_t k) { return same(i, k); }))
      distinct.push_back(i);
  return distinct.size() < wanted;
}

// Clears a column of a basis that is exactly singular, where rounding would leave traces of it; what the other columns
// then give is refused for the singular value of 0.
void ClearDependentColumn(ColumnMatrix& basis) {
  const std::size_t m = basis.Rows(), n = basis.Columns();
  bool dependent = FewerDistinctRows(basis, n);
  for (std::size_t j = 1; j < n; ++j)
    for (std::size_t k = 0; k < j; ++k) dependent |= InProportion(basis.Column(k), basis.Column(j), m);
  if (dependent) std::fill_n(basis.Column(n - 1), m, 0.0);
}

// The basis functions as columns. Throws NumericFault where one has no value.
ColumnMatrix Design(const CatalogueModel& model, std::span<const std::vector<double>> X, std::size_t n) {
  ColumnMatrix design(n, model.Basis.size());
  std::vector<const double*> x;
  std::vector<double*> basis;
  for (const auto& column : X) x.push_back(column.data());
  for (std::size_t j = 0; j < design.Columns(); ++j) basis.push_back(design.Column(j));
  ClearFaultFlags();
  BasisFunctions(model, x.data(), n, basis.data());
  if (FaultFlagsRaised()) throw NumericFault();
  return design;
}

// Where a column of the decomposed matrix comes from: column number Column of the design over 2^Exponent.
struct Place {
  std::size_t Column;
  int Exponent;
};

// The design as it is decomposed: the longest column first, whatever the order in which the model names its terms, and
// each divided by the power of 2 next below its length, which loses no digit. Columns of zeros come last.
ColumnMatrix Arrange(const ColumnMatrix& design, std::vector<Place>& places) {
  const std::size_t m = design.Rows(), n = design.Columns();
  std::vector<Length> lengths(n);
  places.resize(n);
  for (std::size_t j = 0; j < n; ++j) {
    lengths[j] = LengthOf(design.Column(j), m);
    places[j] = {j, lengths[j].exponent};
  }
  std::stable_sort(places.begin(), places.end(), [&](const Place& a, const Place& b) {
    const auto rank = [&](const Place& place) {
      const Length& length = lengths[place.Column];
      return std::tuple(length.fraction != 0, length.exponent, length.fraction);
    };
    return rank(a) > rank(b);
  });
  ColumnMatrix arranged(m, n);
  for (std::size_t k = 0; k < n; ++k) {
    std::copy_n(design.Column(places[k].Column), m, arranged.Column(k));
    ScaleByPowerOfTwo(arranged.Column(k), m, -places[k].Exponent);
  }
  return arranged;
}

// The design and what it is to meet, each row times the root of its weight.
struct WeightedDesign {
  ColumnMatrix A;
  std::vector<double> b;
};

WeightedDesign Weighted(const CatalogueModel& model, std::span<const std::vector<double>> X, std::span<const double> yT,
                        std::span<const double> sig) {
  const std::size_t m = yT.size();
  ColumnMatrix design = Design(model, X, m);
  const std::size_t n = design.Columns();
  ClearDependentColumn(design);
  // The look for proportional columns may have divided by 0, which is no fault of the fit.
  ClearFaultFlags();
  std::vector<double> b(m), root(m);
  for (std::size_t i = 0; i < m; ++i) root[i] = Sqr(sig[i]);
  for (std::size_t i = 0; i < m; ++i) b[i] = root[i] * yT[i];
  for (std::size_t j = 0; j < n; ++j)
    for (std::size_t i = 0; i < m; ++i) design(i, j) *= root[i];
  if (FaultFlagsRaised()) throw NumericFault();
  return {std::move(design), std::move(b)};
}

LinearSolution Solve(ColumnMatrix design, std::vector<double> b) {
  const std::size_t m = design.Rows(), n = design.Columns();
  std::vector<Place> places;
  design = Arrange(design, places);
  ColumnMatrix u = design, v;
  LinearSolution solution;
  SvdDecompose(u, solution.w, v);
  std::vector<double> a = SvdBackSubstitute(u, solution.w, v, b);
  // What is left is solved for once more. Rounding is then in proportion to the residuals, not to all of b, which
  // counts for a coefficient that few of the points decide.
  for (std::size_t k = 0; k < n; ++k) AddMultiple(-a[k], design.Column(k), m, b.data());
  const std::vector<double> rest = SvdBackSubstitute(u, solution.w, v, b);
  solution.a.resize(n);
  solution.v = ColumnMatrix(n, n);
  for (std::size_t k = 0; k < n; ++k) {
    // Back to the order and the units of the model.
    const auto [column, exponent] = places[k];
    solution.a[column] = std::scalbn(a[k] + rest[k], -exponent);
    for (std::size_t j = 0; j < n; ++j) solution.v(column, j) = std::scalbn(v(k, j), -exponent);
  }
  if (FaultFlagsRaised()) throw NumericFault();
  return solution;
}

}  // namespace

LinearSolution DesignSolve(const CatalogueModel& model, std::span<const std::vector<double>> X,
                           std::span<const double> yT, std::span<const double> sig) {
  auto [A, b] = Weighted(model, X, yT, sig);
  return Solve(std::move(A), std::move(b));
}

LinearSolution DesignSolveInside(const CatalogueModel& model, std::span<const std::vector<double>> X,
                                 std::span<const double> yT, std::span<const double> sig, const Box& box) {
  const WeightedDesign all = Weighted(model, X, yT, sig);
  const ColumnMatrix& A = all.A;
  const std::size_t m = A.Rows(), n = A.Columns();
  const auto left = [&](const std::vector<double>& x, const std::vector<bool>& without) {
    std::vector<double> rest = all.b;
    for (std::size_t j = 0; j < n; ++j)
      if (!without[j] && x[j] != 0) AddMultiple(-x[j], A.Column(j), m, rest.data());
    return rest;
  };
  const auto solveFor = [&](const std::vector<bool>& free, const std::vector<double>& x) {
    std::vector<std::size_t> which;
    for (std::size_t j = 0; j < n; ++j)
      if (free[j]) which.push_back(j);
    ColumnMatrix part(m, which.size());
    for (std::size_t k = 0; k < which.size(); ++k) std::copy_n(A.Column(which[k]), m, part.Column(k));
    const LinearSolution of = Solve(std::move(part), left(x, free));
    LinearSolution among{x, ColumnMatrix(n, which.size()), of.w};
    for (std::size_t k = 0; k < which.size(); ++k) {
      among.a[which[k]] = of.a[k];
      for (std::size_t c = 0; c < which.size(); ++c) among.v(which[k], c) = of.v(k, c);
    }
    return among;
  };
  BoxProblem problem;
  problem.Minimum = [&](const std::vector<bool>& free, const std::vector<double>& x) {
    return std::optional(solveFor(free, x).a);
  };
  problem.Descent = [&](const std::vector<double>& x) {
    const std::vector<double> rest = left(x, std::vector<bool>(n, false));
    std::vector<double> descent(n);
    for (std::size_t j = 0; j < n; ++j) {
      const Length length = LengthOf(A.Column(j), m);
      if (length.fraction == 0) continue;
      std::vector<double> unit(A.Column(j), A.Column(j) + m);
      ScaleByPowerOfTwo(unit.data(), m, -length.exponent);
      descent[j] = PairwiseDot(unit.data(), rest.data(), m);
    }
    return descent;
  };
  std::vector<double> x(n, 0.0);
  box.BringInside(x);
  x = *MinimizeInBox(problem, box, std::move(x));
  std::vector<bool> free(n);
  for (std::size_t j = 0; j < n; ++j) free[j] = box.Lower[j] < x[j] && x[j] < box.Upper[j];
  if (std::ranges::find(free, true) == free.end()) return {x, ColumnMatrix(n, 0), {}};
  LinearSolution solution = solveFor(free, x);
  solution.a = std::move(x);
  return solution;
}

}  // namespace quorvex
