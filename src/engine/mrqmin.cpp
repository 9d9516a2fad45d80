#include "engine/mrqmin.h"

#include <algorithm>
#include <cmath>

#include "core/Limits.h"
#include "core/NumericFault.h"
#include "engine/ModelClass.h"
#include "engine/SolveForm.h"
#include "equation/BlockOperations.h"
#include "equation/Expression.h"
#include "linear/BlockDot.h"
#include "linear/TriangularFactor.h"
#include "linear/gaussj.h"

namespace quorvex {
namespace {

// By how much a variance may exceed what it would be without the other coefficients (D. W. Marquardt, Technometrics 12,
// 1970) before it is computed anew: the sums lose as many digits, and numerical derivatives, right to ten, half as
// many.
constexpr double kInflation = 1e4;

bool AllFinite(std::span<const double> values) {
  return std::all_of(values.begin(), values.end(), [](double v) { return std::isfinite(v); });
}

}  // namespace

LevenbergMarquardt::LevenbergMarquardt(ModelClass& model, const SolveData& data, int derivativeMethod, SolveForm& form)
    : model_(model), data_(data), form_(form), points_(model, data, derivativeMethod), wt_(kBlock), wdy_(kBlock) {}

bool LevenbergMarquardt::mrqmin(std::vector<double>& a, const std::vector<int>& ia, Matrix& covar, Matrix& alpha,
                                double& chisq, double& alamda) {
  if (a.size() > kMostCoefficients) {
    model_.ErrorMessage = "A model may have " + std::to_string(kMostCoefficients) + " coefficients at most.";
    throw NumericFault();
  }
  // Curvature and gradient at the start; every later step has those of the last trial that was accepted.
  if (alamda < 0) {
    mfit_ = static_cast<std::size_t>(std::count_if(ia.begin(), ia.end(), [](int free) { return free != 0; }));
    beta_.assign(a.size(), 0.0);
    da_.assign(a.size(), 0.0);
    alamda = 0.001;
    const Pass start = mrqcof(a, ia, alpha, beta_, chisq);
    if (start == Pass::Aborted) return false;
    if (start == Pass::NoValue) throw NumericFault();
    ochisq_ = chisq;
    atry_ = a;
  }
  for (std::size_t j = 0; j < mfit_; ++j) {
    for (std::size_t k = 0; k < mfit_; ++k) covar(j, k) = alpha(j, k);
    // The damping is in proportion to the diagonal, so that a step does not depend on the units of the coefficients.
    covar(j, j) = alpha(j, j) * (1.0 + alamda);
    // Some 300 rejections in a row take alamda, which has no upper bound, out of range: that ends the search here.
    if (!std::isfinite(covar(j, j))) throw NumericFault();
    da_[j] = beta_[j];
  }
  // da_ goes in as the gradient and comes out as the step, covar goes in as the damped curvature and comes out
  // inverted.
  if (!gaussj(covar, mfit_, da_)) {
    model_.ErrorMessage = "Singular matrix encountered in gaussian elimination.";
    throw NumericFault();
  }
  if (alamda == 0.0) {
    // Without damping gaussj has left the plain inverse. "Not less", since a NaN must count as inflated, too.
    bool inflated = false;
    for (std::size_t j = 0; j < mfit_; ++j) inflated = inflated || !(std::abs(alpha(j, j) * covar(j, j)) < kInflation);
    covsrt(covar, ia, mfit_);
    return !inflated || TakeVariances(a, ia, covar);
  }
  // da_ is packed: it holds the free coefficients alone.
  std::size_t j = 0;
  for (std::size_t l = 0; l < a.size(); ++l)
    if (ia[l] != 0) atry_[l] = a[l] + da_[j++];
  if (!AllFinite(atry_)) throw NumericFault();

  // covar and da_ are free again and take the curvature and gradient of the trial, to become alpha and beta if it is
  // better.
  const Pass trial = mrqcof(atry_, ia, covar, da_, chisq);
  if (trial == Pass::Aborted) return false;
  if (trial == Pass::Complete && chisq < ochisq_) {
    // Less damping leads towards the Gauss-Newton step, which converges fast near the minimum.
    alamda *= 0.1;
    ochisq_ = chisq;
    for (std::size_t row = 0; row < mfit_; ++row)
      for (std::size_t col = 0; col < mfit_; ++col) alpha(row, col) = covar(row, col);
    beta_ = da_;
    a = atry_;
  } else {
    // No better, or the model has no value somewhere: the next step is shorter, and that is all there is to tell.
    alamda *= 10.0;
    chisq = ochisq_;
    model_.ErrorMessage.clear();
  }
  return true;
}

// Gives the form its turn, and hears whether its user still wants the fit.
bool LevenbergMarquardt::Aborted() {
  form_.Pulse();
  return form_.Aborted;
}

// The normal equations and the merit function at `a`. The model is left holding `a`.
LevenbergMarquardt::Pass LevenbergMarquardt::mrqcof(const std::vector<double>& a, const std::vector<int>& ia,
                                                    Matrix& alpha, std::vector<double>& beta, double& chisq) {
  for (std::size_t j = 0; j < mfit_; ++j) {
    for (std::size_t k = 0; k <= j; ++k) alpha(j, k) = 0.0;
    beta[j] = 0.0;
  }
  chisq = 0.0;
  for (std::size_t i = 0; i < a.size(); ++i) model_.SetValue(static_cast<int>(i) + 1, a[i]);

  for (std::size_t first = 0; first < data_.N(); first += kBlock) {
    // Once for each block: often enough for a click to be felt, and too seldom to cost time.
    if (Aborted()) return Pass::Aborted;
    const std::size_t n = std::min(kBlock, data_.N() - first);
    if (!points_.Compute(first, n)) return Pass::NoValue;
    const double* const sig = data_.sig.data() + first;
    double* const dy = points_.Values();
    BinaryOverBlock(kSubtract, {data_.Y.data() + first, 0}, {dy, 0}, n, dy);
    BinaryOverBlock(kMultiply, {dy, 0}, {sig, 0}, n, wdy_.data());
    for (std::size_t l = 0, j = 0; l < a.size(); ++l) {
      if (ia[l] == 0) continue;
      BinaryOverBlock(kMultiply, {points_.By(l), 0}, {sig, 0}, n, wt_.data());
      for (std::size_t m = 0, k = 0; m <= l; ++m)
        if (ia[m] != 0) alpha(j, k++) += BlockDot(wt_.data(), points_.By(m), n);
      beta[j++] += BlockDot(wt_.data(), dy, n);
    }
    chisq += BlockDot(wdy_.data(), dy, n);
  }
  // Only the lower triangle is summed; the matrix is symmetric.
  for (std::size_t j = 0; j < mfit_; ++j)
    for (std::size_t k = 0; k < j; ++k) alpha(k, j) = alpha(j, k);

  bool finite = std::isfinite(chisq) && AllFinite(std::span(beta).first(mfit_));
  for (std::size_t j = 0; j < mfit_; ++j)
    for (std::size_t k = 0; k <= j; ++k) finite = finite && std::isfinite(alpha(j, k));
  if (!finite) throw NumericFault();
  return Pass::Complete;
}

// Puts the variances, as a QR of the derivatives gives them, into the diagonal of the covariance. Where that is
// singular to the last digit, or a model with random numbers has no value this time, the diagonal stays as it is. False
// where the form is aborted.
bool LevenbergMarquardt::TakeVariances(const std::vector<double>& a, const std::vector<int>& ia, Matrix& covar) {
  // The last trial may have been rejected, and the model still holds it.
  for (std::size_t i = 0; i < a.size(); ++i) model_.SetValue(static_cast<int>(i) + 1, a[i]);
  std::vector<std::size_t> free;
  for (std::size_t l = 0; l < a.size(); ++l)
    if (ia[l] != 0) free.push_back(l);
  TriangularFactor factor(mfit_);
  ColumnMatrix rows(kBlock + 1, mfit_);  // row 0 is the factor's own
  for (std::size_t first = 0; first < data_.N(); first += kBlock) {
    if (Aborted()) return false;
    const std::size_t n = std::min(kBlock, data_.N() - first);
    if (!points_.ComputeSharp(first, n)) return true;
    points_.TakeWeighted(first, n, free, rows);
    factor.Append(rows, n);
  }
  const std::vector<double> variances = factor.InverseDiagonal();
  if (!AllFinite(variances)) return true;
  for (std::size_t j = 0; j < mfit_; ++j) covar(free[j], free[j]) = variances[j];
  return true;
}

}  // namespace quorvex
