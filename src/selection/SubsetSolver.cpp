#include "selection/SubsetSolver.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "core/Limits.h"
#include "core/NumericFault.h"
#include "functions/DoubleDouble.h"
#include "functions/ProbabilityBeyond.h"
#include "linear/Householder.h"

namespace quorvex {
namespace {

constexpr const char* kCovarianceError = "Error in Covariance calculation.";
constexpr const char* kStatisticsError = "Error in fit statistical calculations.";
constexpr const char* kStandardErrorError = "Error in calculating Standard Error.";
constexpr const char* kUnexpectedError = "An unexpected error occurred during the solve process.";

// What is left of Y below this part of it is rounding: the fit is perfect.
constexpr double kNoRest = 0x1p-46;

double PartOf(double rest, double whole) {
  const double part = std::abs(rest) / whole;
  return whole == 0 || part < kNoRest ? 0 : part;
}

double Norm(const double* values, std::size_t n) {
  return std::sqrt(std::inner_product(values, values + n, values, 0.0));
}

// The mean to some 100 bits.
DoubleDouble WeightedMean(const std::vector<double>& values, const std::vector<double>& weights) {
  DoubleDouble sum{0, 0}, all{0, 0};
  for (std::size_t i = 0; i < values.size(); ++i) {
    sum = sum + Product(values[i], weights[i]);
    all = all + DoubleDouble{weights[i], 0};
  }
  // A quotient, and what its product with the weights lacks of the sum.
  const double first = sum.Hi / all.Hi;
  const DoubleDouble rest = sum + DoubleDouble{-first, 0} * all;
  return OrderedSum(first, rest.Hi / all.Hi);
}

}  // namespace

SubsetSolver::SubsetSolver(const SelectionData& data, bool intercept, const SelectionForm& form)
    : points_(data.N()), intercept_(intercept) {
  for (const std::vector<double>& x : data.X) {
    if (form.Aborted()) return;
    columns_.push_back(Measured(x, data.sig));
  }
  columns_.push_back(Measured(data.Y, data.sig));
  const std::size_t p = data.X.size();
  TriangularFactor factor(p + 1);
  ColumnMatrix rows(kBlock + 1, p + 1);
  std::vector<double> root(points_);
  std::transform(data.sig.begin(), data.sig.end(), root.begin(), [](double weight) { return std::sqrt(weight); });
  for (std::size_t first = 0; first < points_; first += kBlock) {
    if (form.Aborted()) return;
    const std::size_t n = std::min(kBlock, points_ - first);
    for (std::size_t j = 0; j <= p; ++j) {
      const std::vector<double>& values = j < p ? data.X[j] : data.Y;
      for (std::size_t i = 0; i < n; ++i) rows(i + 1, j) = root[first + i] * Deviation(values[first + i], columns_[j]);
    }
    factor.Append(rows, n);
  }
  base_ = factor.R();
  for (std::size_t j = 0; j <= p; ++j) columns_[j].Length = Norm(base_.Column(j), p + 1);

  Subset all(p);
  std::iota(all.begin(), all.end(), std::size_t{0});
  if (const Result<SubsetFit> full = Fit(all); full && full->RSS > 0) {
    const double part = PartOf(Factor(all).R()(p, p), Y().Length);
    fullMeanSquare_ = part * part / static_cast<double>(full->DOFError);
  }
}

SubsetSolver::Column SubsetSolver::Measured(const std::vector<double>& values,
                                            const std::vector<double>& weights) const {
  Column column;
  const auto [least, greatest] = std::minmax_element(values.begin(), values.end());
  const double size = std::max(std::abs(*least), std::abs(*greatest));
  column.Unit = size == 0 ? 0 : std::ilogb(size);
  if (intercept_) {
    column.Constant = *least == *greatest;
    std::vector<double> scaled(values.size());
    std::transform(values.begin(), values.end(), scaled.begin(),
                   [&](double value) { return std::scalbn(value, -column.Unit); });
    column.Mean = WeightedMean(scaled, weights);
  }
  column.Exponent = column.Unit;
  double largest = 0;
  for (std::size_t i = 0; i < values.size(); ++i)
    largest = std::max(largest, std::abs(Deviation(values[i], column)) * std::sqrt(weights[i]));
  if (largest > 0) column.Exponent += std::ilogb(largest);
  return column;
}

double SubsetSolver::Deviation(double value, const Column& column) {
  if (column.Constant) return 0;
  const DoubleDouble scaled{std::scalbn(value, -column.Unit), 0};
  return std::scalbn((scaled + DoubleDouble{-column.Mean.Hi, -column.Mean.Lo}).Hi, column.Unit - column.Exponent);
}

TriangularFactor SubsetSolver::Factor(const Subset& order) const {
  const std::size_t m = order.size(), rows = columns_.size();
  TriangularFactor factor(m + 1);
  ColumnMatrix columns(rows + 1, m + 1);
  for (std::size_t j = 0; j <= m; ++j)
    std::copy_n(base_.Column(j < m ? order[j] : Candidates()), rows, columns.Column(j) + 1);
  factor.Append(columns, rows);
  return factor;
}

bool SubsetSolver::Independent(const ColumnMatrix& r, const Subset& order, std::size_t count) const {
  for (std::size_t j = 0; j < count; ++j)
    if (!HasPartOfItsOwn(r(j, j), order[j])) return false;
  return true;
}

SubsetSolver::Quality SubsetSolver::QualityOf(double rest, std::size_t variables) const {
  const double part = PartOf(rest, Y().Length);
  const std::size_t terms = Terms(variables);
  const double dof = static_cast<double>(points_ - terms);
  Quality quality;
  quality.R2 = 1 - part * part;
  quality.RSS = std::scalbn(part * part * Y().Length * Y().Length, 2 * Y().Exponent);
  quality.StdErr = std::scalbn(part * Y().Length / std::sqrt(dof), Y().Exponent);
  quality.Cp = part * part / fullMeanSquare_ + 2.0 * static_cast<double>(terms) - static_cast<double>(points_);
  return quality;
}

Result<SubsetFit> SubsetSolver::Fit(const Subset& variables) const {
  const std::size_t m = variables.size();
  if (Terms(m) >= points_) return Failure{kLeastSquaresError};
  const TriangularFactor factor = Factor(variables);
  const ColumnMatrix& r = factor.R();
  if (!Independent(r, variables, m)) return Failure{kLeastSquaresError};
  std::vector<double> b(r.Column(m), r.Column(m) + m);
  for (std::size_t j = m; j-- > 0;) {
    b[j] /= r(j, j);
    AddMultiple(-b[j], r.Column(j), j, b.data());
  }
  const std::vector<double> variances = factor.InverseDiagonal(m);

  SubsetFit fit;
  fit.Variables = variables;
  fit.DOFError = points_ - Terms(m);
  fit.DOFRegression = m;
  const Quality quality = QualityOf(r(m, m), m);
  fit.R2 = quality.R2;
  fit.RSS = quality.RSS;
  fit.StdErr = quality.StdErr;
  fit.Cp = quality.Cp;
  fit.Total = std::scalbn(Y().Length * Y().Length, 2 * Y().Exponent);
  if (!std::isfinite(fit.Total) || !std::isfinite(fit.RSS)) return Failure{kStatisticsError};
  // In the units of the factor, where nothing leaves the range.
  const Noise noise{PartOf(r(m, m), Y().Length) * Y().Length, static_cast<double>(fit.DOFError)};
  const char* error = nullptr;
  for (std::size_t j = 0; j < m && error == nullptr; ++j)
    error = Judge({b[j], variances[j]}, columns_[variables[j]].Exponent, noise, fit.Coefficients.emplace_back());
  if (intercept_ && error == nullptr) error = Judge(InterceptOf(variables, b, r), 0, noise, fit.Intercept.emplace());
  if (error != nullptr) return Failure{error};
  return fit;
}

// With centred columns it is the mean of Y less what the variables have at their means.
SubsetSolver::Estimate SubsetSolver::InterceptOf(const Subset& variables, const std::vector<double>& b,
                                                 const ColumnMatrix& r) const {
  DoubleDouble value = Y().ScaledMean();
  std::vector<double> u;  // the means over R^T; the square of its length is their share of the variance
  double share = 0;
  for (std::size_t j = 0; j < variables.size(); ++j) {
    const DoubleDouble mean = columns_[variables[j]].ScaledMean();
    value = value + DoubleDouble{-b[j], 0} * mean;
    double rest = mean.Hi;
    for (std::size_t i = 0; i < j; ++i) rest -= r(i, j) * u[i];
    u.push_back(rest / r(j, j));
    share += u[j] * u[j];
  }
  return {value.Hi, 1 / static_cast<double>(points_) + share};  // the weights have mean 1
}

// The coefficient of a column with that exponent, or what went wrong.
const char* SubsetSolver::Judge(const Estimate& estimate, int exponent, const Noise& noise,
                                SubsetCoefficient& coefficient) const {
  const double error = noise.Rest / std::sqrt(noise.Freedom) * std::sqrt(estimate.Variance);
  coefficient.Value = std::scalbn(estimate.Value, Y().Exponent - exponent);
  coefficient.Variance = std::scalbn(estimate.Variance, -2 * exponent);
  coefficient.StandardError = std::scalbn(error, Y().Exponent - exponent);
  if (!std::isfinite(coefficient.Value)) return kLeastSquaresError;
  if (!std::isfinite(coefficient.Variance)) return kCovarianceError;
  if (!std::isfinite(coefficient.StandardError)) return kStandardErrorError;
  if (error == 0) {
    // Of a perfect fit a variable explains something or nothing.
    coefficient.p = std::abs(estimate.Value) / std::sqrt(estimate.Variance) > kNoRest * Y().Length ? 0 : 1;
    return nullptr;
  }
  coefficient.t = estimate.Value / error;
  try {
    coefficient.p = ProbabilityBeyond(coefficient.t * coefficient.t, 1, noise.Freedom);
  } catch (const NumericFault&) {
    return kUnexpectedError;
  }
  return nullptr;
}

// Of the columns behind those of the model the factor has, from the model's last row on, what the model leaves of them.
Result<std::vector<double>> SubsetSolver::EnteringProbabilities(const Subset& in, const Subset& others) const {
  if (Terms(in.size() + 1) >= points_) return Failure{kLeastSquaresError};
  Subset order = in;
  order.insert(order.end(), others.begin(), others.end());
  const TriangularFactor factor = Factor(order);
  const ColumnMatrix& r = factor.R();
  if (!Independent(r, order, in.size())) return Failure{kLeastSquaresError};
  const std::size_t first = in.size(), rows = order.size() + 1;
  const double dof = static_cast<double>(points_ - Terms(in.size() + 1));
  const double* y = r.Column(order.size()) + first;
  std::vector<double> probabilities;
  for (std::size_t j = first; j < order.size(); ++j) {
    const double* x = r.Column(j) + first;
    const double length = Norm(x, rows - first);
    if (!HasPartOfItsOwn(length, order[j])) return Failure{kLeastSquaresError};
    const double explained = std::inner_product(x, x + (rows - first), y, 0.0) / length;
    std::vector<double> rest(y, y + (rows - first));
    AddMultiple(-explained / length, x, rest.size(), rest.data());
    const double left = PartOf(Norm(rest.data(), rest.size()), Y().Length);
    const double part = PartOf(explained, Y().Length);
    try {
      probabilities.push_back(left == 0 ? (part == 0 ? 1 : 0)
                                        : ProbabilityBeyond(part * part / (left * left) * dof, 1, dof));
    } catch (const NumericFault&) {
      return Failure{kUnexpectedError};
    }
  }
  return probabilities;
}

double SubsetSolver::R2OnOthers(std::size_t candidate) const {
  if (Length(candidate) == 0) return 1;
  Subset order;
  for (std::size_t j = 0; j < Candidates(); ++j)
    if (j != candidate) order.push_back(j);
  // One that the others before it explain would take its share of the rounding in the candidate.
  {
    const TriangularFactor factor = Factor(order);
    Subset independent;
    for (std::size_t j = 0; j < order.size(); ++j)
      if (HasPartOfItsOwn(factor.R()(j, j), order[j])) independent.push_back(order[j]);
    order = std::move(independent);
  }
  order.push_back(candidate);
  const double part = std::abs(Factor(order).R()(order.size() - 1, order.size() - 1)) / Length(candidate);
  return part > kLeastPart ? 1 - part * part : 1;
}

std::vector<std::vector<double>> SubsetSolver::Correlation() const {
  const std::size_t count = columns_.size();
  std::vector<std::vector<double>> correlation(count, std::vector<double>(count));
  for (std::size_t i = 0; i < count; ++i) {
    for (std::size_t j = 0; j <= i; ++j) {
      const double* x = base_.Column(i);
      const double r = std::inner_product(x, x + count, base_.Column(j), 0.0) / (Length(i) * Length(j));
      // Rounding may leave a perfect correlation a digit beyond 1.
      correlation[i][j] = correlation[j][i] = i == j ? r / r : std::clamp(r, -1.0, 1.0);
    }
  }
  return correlation;
}

}  // namespace quorvex
