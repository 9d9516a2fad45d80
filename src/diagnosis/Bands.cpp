#include "diagnosis/Bands.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "core/NumericFault.h"
#include "functions/InverseTDistribution.h"
#include "sheet/ComputeWeights.h"

namespace quorvex {

Result<Bands> Bands::Of(ModelClass& model, const SolveData& data, DerivativeKind derivativeMethod, SolveForm& form) {
  if (data.sig.size() != data.N()) {
    SolveData weighted = data;
    TakeWeights(weighted);
    return Of(model, weighted, derivativeMethod, form);
  }
  const std::optional<FitGeometry> geometry = FitGeometry::At(model, data, derivativeMethod, form);
  if (!geometry)
    return Failure{
        "There are no confidence or prediction limits, since the model has no value or derivative at some point of the "
        "data."};
  const std::size_t free = geometry->Free().size();
  if (data.N() <= free && model.GivenDeviation == 0)
    return Failure{
        "There are no confidence or prediction limits, since there are no more points than coefficients, which leaves "
        "nothing that could tell how much the points scatter."};
  // Rounding of the derivatives alone makes up the rest.
  if (!(geometry->ReciprocalCondition() > static_cast<double>(free) * std::numeric_limits<double>::epsilon()))
    return Failure{
        "There are no confidence or prediction limits, since the data do not determine all coefficients of the model."};
  return Bands(*geometry, model.ErrorDeviation(), ConfidenceQuantiles(model.ErrorDegrees()));
}

Bands::Errors Bands::At(ModelClass& model, std::span<const double> x, double weight) const {
  const std::vector<double> values = model.CoefficientValues;
  std::vector<double> dyda(values.size()), gradient;
  std::string ErrString;
  bool ok = false;
  try {
    ok = model.Derivative(x, dyda, ErrString);
  } catch (const NumericFault&) {
  }
  model.CoefficientValues = values;  // an attempt that fails leaves them elsewhere
  if (!ok) return {};
  for (const int i : geometry_.Free()) gradient.push_back(dyda[static_cast<std::size_t>(i - 1)]);
  const double variance = geometry_.Variance(gradient);
  if (!std::isfinite(variance)) return {};
  return {deviation_ * std::sqrt(variance), deviation_ * std::sqrt(1 / weight + variance)};
}

Interval Bands::Limits(BandKind kind, std::size_t level, ModelClass& model, std::span<const double> x,
                       double weight) const {
  double y = 0;
  if (!model.Evaluate(x, y)) return {};
  const Errors errors = At(model, x, weight);
  const double half = quantiles_[level] * (kind == BandKind::Confidence ? errors.OfFit : errors.OfObservation);
  return {y - half, y + half};
}

std::string BandName(BandKind kind, std::size_t level) {
  return std::to_string(kLimitLevels[level]) + (kind == BandKind::Confidence ? "% confidence" : "% prediction");
}

}  // namespace quorvex
