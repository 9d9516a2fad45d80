#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>

#include "core/DerivativeKind.h"
#include "core/Result.h"
#include "core/SolveData.h"
#include "diagnosis/Diagnosis.h"
#include "diagnosis/FitGeometry.h"
#include "engine/ModelClass.h"
#include "engine/SolveForm.h"

namespace quorvex {

// Which bands lie around a curve.
enum class BandKind : int { None = 0, Confidence = 1, Prediction = 2, Both = 3 };

// The place of a level in kLimitLevels that bands have where nobody chose another: 95 %.
inline constexpr std::size_t kBandLevel = 2;

// How far the values of a fitted model may be off, at any X. With g the derivatives of the model there with respect to
// its free coefficients, C the inverse of J^T J (FitGeometry), s the standard deviation of an observation of weight 1
// (ModelClass::ErrorDeviation) and t the quantile of the level that the limits of coefficients have, too,
//
//   confidence limits  f(X) -+ t s sqrt(g^T C g)        where the curve is
//   prediction limits  f(X) -+ t s sqrt(1/w + g^T C g)  where one more observation of weight w would be
//
// Each holds for one X at a time, not for a whole curve at once, and as far as the model is straight within its limits.
// Between the points the weight is 1, the mean of all (N. R. Draper & H. Smith, Applied Regression Analysis, 1998,
// 1.4 and 5.1; D. M. Bates & D. G. Watts, Nonlinear Regression Analysis and Its Applications, 1988, 2.3.2).
class Bands {
 public:
  // Of the model with its present coefficients, fitted to these points, whose weights are computed from their standard
  // deviations where they are not there. Fails, with a sentence, where the data don't tell the errors: no derivative at
  // some point, coefficients that they do not determine, no points left over; and where `form` is aborted. Leaves the
  // model as it was.
  static Result<Bands> Of(ModelClass& model, const SolveData& data, DerivativeKind derivativeMethod, SolveForm& form);
  // Kept by a file: the geometry, the deviation and the quantile of each level.
  Bands(FitGeometry geometry, double deviation, const std::array<double, kLimitLevels.size()>& quantiles)
      : geometry_(std::move(geometry)), deviation_(deviation), quantiles_(quantiles) {}

  const FitGeometry& Geometry() const { return geometry_; }
  double Deviation() const { return deviation_; }  // s, in the unit of Y
  const std::array<double, kLimitLevels.size()>& Quantiles() const { return quantiles_; }

  // Standard errors at a place, in the unit of Y: of the model's value, and of the difference between that and an
  // observation of this weight. NaN where the model has no derivative. The model is that of the geometry or a copy, and
  // is left as it was.
  struct Errors {
    double OfFit = NAN, OfObservation = NAN;
  };
  Errors At(ModelClass& model, std::span<const double> x, double weight = 1) const;

  // The limits of one kind around the model's value at x, by the place of a level; NaN where there are none.
  Interval Limits(BandKind kind, std::size_t level, ModelClass& model, std::span<const double> x,
                  double weight = 1) const;

 private:
  FitGeometry geometry_;
  double deviation_;
  std::array<double, kLimitLevels.size()> quantiles_;
};

// Said in the place of bands.
inline constexpr const char* kNoBandsOfInterpolation =
    "An interpolation passes through its points and has no confidence or prediction limits.";

// "95% confidence", "95% prediction".
std::string BandName(BandKind kind, std::size_t level);

}  // namespace quorvex
