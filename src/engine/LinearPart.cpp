#include "engine/LinearPart.h"

#include <algorithm>
#include <cmath>

#include "core/NumericFault.h"
#include "linear/Householder.h"
#include "linear/MinimizeInBox.h"

namespace quorvex {
namespace {

// Linear coefficients of nearly dependent columns would be huge and of opposite sign, and no start.
constexpr double kSingular = 1e-9;

}  // namespace

std::optional<LeastSquares> SolveLeastSquares(ColumnMatrix A, std::span<const double> b, double singular) {
  const std::size_t m = A.Rows(), n = A.Columns();
  std::vector<double> lengths(n), w;
  for (std::size_t j = 0; j < n; ++j) {
    lengths[j] = Norm(std::span(A.Column(j), m));
    if (!std::isfinite(lengths[j])) return std::nullopt;
    if (lengths[j] == 0) lengths[j] = 1;
    for (std::size_t i = 0; i < m; ++i) A(i, j) /= lengths[j];
  }
  LeastSquares result{std::vector<double>(n, 0.0), 0};
  ColumnMatrix v;
  try {
    SvdDecompose(A, w, v);
  } catch (const NumericFault&) {
    return std::nullopt;
  }
  const double most = *std::ranges::max_element(w), length = Norm(b);
  std::vector<double> rest(b.begin(), b.end());
  for (std::size_t k = 0; k < n; ++k) {
    if (!(w[k] > singular * most)) continue;
    double along = 0;
    for (std::size_t i = 0; i < m; ++i) along += A(i, k) * b[i];
    for (std::size_t i = 0; i < m; ++i) rest[i] -= along * A(i, k);
    for (std::size_t j = 0; j < n; ++j) result.z[j] += v(j, k) * (along / w[k]) / lengths[j];
  }
  for (const double z : result.z)
    if (!std::isfinite(z)) return std::nullopt;
  result.Remainder = length > 0 ? Norm(rest) / length : 0;
  return result;
}

std::optional<LeastSquares> SolveLeastSquaresInside(const ColumnMatrix& A, std::span<const double> b, double singular,
                                                    const Box& box) {
  const std::size_t m = A.Rows(), n = A.Columns();
  const auto rest = [&](const std::vector<double>& x, const std::vector<bool>& without) {
    std::vector<double> left(b.begin(), b.end());
    for (std::size_t j = 0; j < n; ++j)
      if (!without[j] && x[j] != 0) AddMultiple(-x[j], A.Column(j), m, left.data());
    return left;
  };
  BoxProblem problem;
  problem.Minimum = [&](const std::vector<bool>& free,
                        const std::vector<double>& x) -> std::optional<std::vector<double>> {
    std::vector<std::size_t> which;
    for (std::size_t j = 0; j < n; ++j)
      if (free[j]) which.push_back(j);
    ColumnMatrix part(m, which.size());
    for (std::size_t k = 0; k < which.size(); ++k) std::copy_n(A.Column(which[k]), m, part.Column(k));
    const auto solved = SolveLeastSquares(std::move(part), rest(x, free), singular);
    if (!solved) return std::nullopt;
    std::vector<double> z = x;
    for (std::size_t k = 0; k < which.size(); ++k) z[which[k]] = solved->z[k];
    return z;
  };
  problem.Descent = [&](const std::vector<double>& x) {
    const std::vector<double> left = rest(x, std::vector<bool>(n, false));
    std::vector<double> descent(n);
    for (std::size_t j = 0; j < n; ++j) {
      const double length = Norm(std::span(A.Column(j), m));
      if (length > 0) descent[j] = PairwiseDot(A.Column(j), left.data(), m) / length;
    }
    return descent;
  };
  std::vector<double> start(n, 0.0);
  box.BringInside(start);
  auto z = MinimizeInBox(problem, box, std::move(start));
  return z ? std::optional(LeastSquares{std::move(*z), 0}) : std::nullopt;
}

LinearPart::LinearPart(WeightedResiduals& residuals, const std::vector<bool>& linear) : residuals_(residuals) {
  for (std::size_t j = 0; j < linear.size(); ++j)
    if (linear[j]) which_.push_back(j);
}

bool LinearPart::Solve(std::vector<double>& a, std::vector<double>& r) {
  if (which_.empty()) return residuals_.Residuals(a, r);
  for (const std::size_t j : which_) a[j] = 0;
  if (!residuals_.Fitted(a, none_)) return false;
  const double base = Norm(none_);
  const std::size_t m = none_.size();
  ColumnMatrix columns(m, which_.size());
  std::vector<double> units(which_.size(), 1.0);
  for (std::size_t k = 0; k < which_.size(); ++k) {
    for (int round = 0; round < 2; ++round) {
      a[which_[k]] = units[k];
      if (!residuals_.Fitted(a, one_)) return false;
      for (std::size_t i = 0; i < m; ++i) columns(i, k) = one_[i] - none_[i];
      const double part = Norm(std::span(columns.Column(k), m)) / (base > 0 ? base : 1);
      // A change that drowns in the rest of the model is taken with a unit that shows.
      if (base == 0 || part == 0 || part > 1e-6) break;
      units[k] = 1 / part;
    }
    a[which_[k]] = 0;
  }
  std::vector<double> wanted(m);
  for (std::size_t i = 0; i < m; ++i) wanted[i] = residuals_.Target()[i] - none_[i];
  Box box;
  for (std::size_t k = 0; k < which_.size(); ++k) {
    box.Lower.push_back(residuals_.Bounds().Lower[which_[k]] / units[k]);
    box.Upper.push_back(residuals_.Bounds().Upper[which_[k]] / units[k]);
  }
  auto solved = SolveLeastSquares(columns, wanted, kSingular);
  if (solved && !box.Holds(solved->z)) solved = SolveLeastSquaresInside(columns, wanted, kSingular, box);
  if (!solved) return false;
  for (std::size_t k = 0; k < which_.size(); ++k)
    a[which_[k]] =
        std::clamp(solved->z[k] * units[k], residuals_.Bounds().Lower[which_[k]], residuals_.Bounds().Upper[which_[k]]);
  return residuals_.Residuals(a, r);
}

void LinearPart::Improve(std::vector<double>& a, std::vector<double>& r) {
  if (which_.empty()) return;
  std::vector<double> projected = a, rest;
  if (!Solve(projected, rest) || !(Norm(rest) < Norm(r))) return;
  a.swap(projected);
  r.swap(rest);
}

}  // namespace quorvex
