#include "solve/FailedFit.h"

#include "diagnosis/WhyFailed.h"

namespace quorvex {
namespace {

std::string WhyInterpolationFailed(const InterpClass& curve) {
  const auto [fewest, most] = curve.PointsTaken();
  const std::size_t count = curve.NumInputX();
  if (count >= fewest && count <= most) return "A sum on the way is beyond the range of numbers.";
  return curve.id + " takes " + (count < fewest ? "no fewer" : "no more") + " than " +
         CountOfPoints(count < fewest ? fewest : most) + " of different X; the data have " + std::to_string(count) +
         ".";
}

}  // namespace

void TakeStart(const FailedFit& fit, ModelClass& model) {
  model.SpecifyICComplete = fit.OwnEstimates;
  if (!fit.OwnEstimates) return;
  model.CoefficientValues = fit.Values;
  model.ICRanges = fit.Ranges;
}

std::unique_ptr<ModelClass> AtItsStart(const FailedFit& fit, const SolveData& data) {
  std::unique_ptr<ModelClass> model = fit.Object.Model->CopyTo();
  model->SetIC(data);  // takes the input, too, of which a model may name statistics
  TakeStart(fit, *model);
  return model;
}

std::string WhyFailed(const FailedFit& fit, const SolveData& data, const LocaleText& locale) {
  if (fit.Object.Model == nullptr) return WhyInterpolationFailed(*fit.Object.Interpolation);
  return WhyFailed(*fit.Object.Model, *AtItsStart(fit, data), data, locale);
}

}  // namespace quorvex
