#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "core/DerivativeKind.h"
#include "core/SolveData.h"
#include "engine/SolveForm.h"
#include "linear/Matrix.h"
#include "linear/SvdDecompose.h"

namespace quorvex {

class ModelClass;

// What the derivatives of a model at its present coefficients tell: with J the derivatives with respect to the free
// coefficients, a row per point times the root of its weight, and J = Q R, everything comes from R, never from J^T J,
// whose rounding costs twice the digits.
class FitGeometry {
 public:
  // Coefficients that are held or lie on a bound are not free. Derivatives that the user typed are taken, as in the
  // fit. Nothing where the model has no value or derivative at some point, and where `form` is aborted. Leaves the
  // model as it was. `threads` as Settings::Threads counts them; the numbers are the same for any.
  static std::optional<FitGeometry> At(ModelClass& model, const SolveData& data, DerivativeKind derivativeMethod,
                                       SolveForm& form, int threads = 1);

  // The same of the two that a file kept. Nothing where R has no finite lengths.
  static std::optional<FitGeometry> Of(std::vector<int> free, ColumnMatrix r);

  // The free coefficients, by their numbers from 1, in the order of all that follows.
  const std::vector<int>& Free() const { return free_; }
  const ColumnMatrix& R() const { return r_; }  // upper triangle
  // Of J with its columns scaled to equal lengths, least singular value to greatest; 0: singular, 1: nothing is free.
  double ReciprocalCondition() const { return reciprocalCondition_; }
  // Of that, the direction that the data determine least: what each scaled coefficient has part in it, of length 1.
  const std::vector<double>& WeakestDirection() const { return weakest_; }

  // How far the coefficients are from where the sum of squares is least, as a part of the radius within which the data
  // can't tell: the length of the residuals along the columns of J over that of all the rest, each by its degrees of
  // freedom. Some 0.001 and less where a search has converged (D. M. Bates & D. G. Watts, Technometrics 23, 1981). 0
  // where nothing is free or no residual is left, NaN without degrees of freedom.
  double RelativeOffset() const { return relativeOffset_; }

  // (J^T J)^-1: times StdErr^2 (or the given variance) the covariances. Not finite where singular.
  Matrix Covariance() const;
  // The same scaled to a diagonal of 1; NaN where singular.
  Matrix Correlation() const;
  // g^T (J^T J)^-1 g for the gradient of any quantity with respect to the free coefficients. Not finite where singular.
  double Variance(std::span<const double> gradient) const;
  // Its root, also where its own size is beyond a double's.
  double Deviation(std::span<const double> gradient) const;

 private:
  bool Decompose();
  std::vector<double> InUnitsOfErrors(std::span<const double> gradient) const;

  std::vector<int> free_;
  ColumnMatrix r_, scaled_;      // the latter with columns of length 1
  std::vector<double> lengths_;  // of the columns of R, which are those of J
  double reciprocalCondition_ = 0, relativeOffset_ = 0;
  std::vector<double> weakest_;
};

// w_i times the variance of the fit at each point, between 0 and 1: the share that a point has in its own fitted value
// (D. C. Hoaglin & R. E. Welsch, Am. Statistician 32, 1978). In the order of the data. Nothing as for FitGeometry, and
// where the geometry is singular.
std::optional<std::vector<double>> Leverages(ModelClass& model, const SolveData& data, const FitGeometry& geometry,
                                             DerivativeKind derivativeMethod, SolveForm& form, int threads = 1);

}  // namespace quorvex
