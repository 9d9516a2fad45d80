#include "engine/DesignSolve.h"

#include <algorithm>
#include <cmath>

#include "core/FaultFlags.h"
#include "core/NumericFault.h"
#include "equation/ClosedForms.h"
#include "equation/Elementary.h"

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

}  // namespace

LinearSolution DesignSolve(const CatalogueModel& model, std::span<const std::vector<double>> X,
                           std::span<const double> yT, std::span<const double> sig) {
  const std::size_t m = yT.size();
  ColumnMatrix u = Design(model, X, m);
  ClearDependentColumn(u);
  ClearFaultFlags();
  std::vector<double> b(m), root(m);
  for (std::size_t i = 0; i < m; ++i) root[i] = Sqr(sig[i]);
  for (std::size_t i = 0; i < m; ++i) b[i] = root[i] * yT[i];
  for (std::size_t j = 0; j < u.Columns(); ++j)
    for (std::size_t i = 0; i < m; ++i) u(i, j) *= root[i];
  LinearSolution solution;
  SvdDecompose(u, solution.w, solution.v);
  solution.a = SvdBackSubstitute(u, solution.w, solution.v, b);
  if (FaultFlagsRaised()) throw NumericFault();
  return solution;
}

}  // namespace quorvex
