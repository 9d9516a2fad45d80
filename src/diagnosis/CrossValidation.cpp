#include "diagnosis/CrossValidation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <numeric>
#include <optional>
#include <string>

#include "core/Limits.h"
#include "engine/ModelClass.h"
#include "engine/RobustFit.h"
#include "engine/SeededRandom.h"

namespace quorvex {
namespace {

double RootMeanSquare(const std::vector<double>& errors, const std::vector<double>& weights) {
  double sum = 0;
  for (std::size_t i = 0; i < errors.size(); ++i) sum += weights[i] * errors[i] * errors[i];
  return std::sqrt(sum / static_cast<double>(errors.size()));
}

// The points less those of a part, their weights again with mean 1.
SolveData Without(const SolveData& data, const std::vector<std::size_t>& part) {
  std::vector<bool> isLeftOut(data.N());
  for (const std::size_t i : part) isLeftOut[i] = true;
  const auto rest = [&](const auto& column) {
    auto kept = column;
    kept.clear();
    for (std::size_t i = 0; i < column.size(); ++i)
      if (!isLeftOut[i]) kept.push_back(column[i]);
    return kept;
  };
  SolveData others;
  for (const std::vector<double>& column : data.X) others.X.push_back(rest(column));
  others.Y = rest(data.Y);
  others.SD = rest(data.SD);
  others.sig = rest(data.sig);
  const double mean =
      std::accumulate(others.sig.begin(), others.sig.end(), 0.0) / static_cast<double>(others.sig.size());
  for (double& weight : others.sig) weight /= mean;
  others.Row = rest(data.Row);
  others.HasSD = data.HasSD;
  others.UnitDeviation = data.UnitDeviation / std::sqrt(mean);
  return others;
}

// Y minus the predictions at the points of a part. False where the model has none, or none that is finite.
bool PredictionErrors(ModelClass& model, const SolveData& data, const std::vector<std::size_t>& part,
                      std::vector<double>& errors) {
  std::array<double, kMostIndependentVariables> x{};
  for (const std::size_t i : part) {
    double y = 0;
    if (!model.Evaluate(data.Point(i, x), y)) return false;
    errors[i] = data.Y[i] - y;
    if (!std::isfinite(errors[i])) return false;
  }
  return true;
}

// By its weighted sum of squares.
bool IsFittedTo(ModelClass& model, const SolveData& data) {
  if (static_cast<std::size_t>(model.NumIndependentVar()) != data.X.size()) return false;
  const std::optional<std::vector<double>> residuals = model.GenerateResiduals(data);
  if (!residuals) return false;
  const double error = RootMeanSquare(*residuals, data.sig);
  const double known = std::sqrt(model.RssNorm / static_cast<double>(data.N()));
  const double size = std::max(std::abs(model.Statistics.InputYMin), std::abs(model.Statistics.InputYMax));
  constexpr double kSameError = 1e-9, kRounding = 0x1p-44;
  return std::abs(error - known) <= kSameError * known + kRounding * size;
}

double LeaveOneOutError(ModelClass& model, const SolveData& data, DerivativeKind derivativeMethod, SolveForm& form) {
  const std::optional<FitGeometry> geometry = FitGeometry::At(model, data, derivativeMethod, form);
  return geometry ? LeaveOneOutError(model, data, *geometry, derivativeMethod, form) : HUGE_VAL;
}

}  // namespace

double LeaveOneOutError(ModelClass& model, const SolveData& data, const FitGeometry& geometry,
                        DerivativeKind derivativeMethod, SolveForm& form) {
  const std::optional<std::vector<double>> leverages = Leverages(model, data, geometry, derivativeMethod, form);
  std::optional<std::vector<double>> errors = model.GenerateResiduals(data);
  if (!leverages || !errors) return HUGE_VAL;
  // Beyond this nothing but rounding is left of the point's own share.
  constexpr double kLeastShare = 1e-10;
  for (std::size_t i = 0; i < errors->size(); ++i) {
    const double share = 1 - (*leverages)[i];
    if (!(share > kLeastShare)) return HUGE_VAL;
    (*errors)[i] /= share;
  }
  const double error = RootMeanSquare(*errors, data.sig);
  return std::isfinite(error) ? error : HUGE_VAL;
}

std::vector<std::vector<std::size_t>> CrossValidationParts(std::size_t points, int parts, std::uint64_t seed) {
  if (parts < 2 || points < 2) return {};
  std::vector<std::size_t> order(points);
  std::iota(order.begin(), order.end(), 0u);
  SeededRandom(seed).Shuffle(order);
  std::vector<std::vector<std::size_t>> dealt(std::min(static_cast<std::size_t>(parts), points));
  for (std::size_t i = 0; i < points; ++i) dealt[i % dealt.size()].push_back(order[i]);
  return dealt;
}

PartsError CrossValidatedError(const ModelClass& model, const SolveData& data, int parts, std::uint64_t seed,
                               const Settings& settings, SolveForm& form) {
  PartsError result;
  const std::vector<std::vector<std::size_t>> dealt = CrossValidationParts(data.N(), parts, seed);
  if (dealt.empty()) return result;
  Settings ordinary = SettingsOfRefit(model, settings);
  ordinary.TryHarder = false;
  const std::unique_ptr<ModelClass> twin = model.CopyTo();
  std::vector<double> errors(data.N());
  std::size_t done = 0;
  for (const std::vector<std::size_t>& part : dealt) {
    form.ShowWork("Cross-validation of " + model.id, done++, dealt.size());
    model.CopyFitTo(*twin);
    twin->ICCancel();  // one start
    twin->SpecifyICComplete = true;
    form.Paused = false;  // was meant for the fit before, which ended by itself
    std::string log;
    const bool fitted = twin->Fit(Without(data, part), ordinary, log, form);
    if (form.Aborted) return {};
    if (!fitted || !PredictionErrors(*twin, data, part, errors)) ++result.FailedParts;
  }
  const double error = result.FailedParts > 0 ? HUGE_VAL : RootMeanSquare(errors, data.sig);
  result.Error = std::isnan(error) ? HUGE_VAL : error;
  return result;
}

bool CrossValidate(const ModelCollection& models, const SolveData& data, int parts, std::uint64_t seed,
                   const Settings& settings, SolveForm& form) {
  for (const auto& model : models) {
    if (!model->Solved) continue;
    const bool wantsParts = parts >= 2 && std::isnan(model->CrossValidated);
    if ((!std::isnan(model->LeaveOneOut) && !wantsParts) || !IsFittedTo(*model, data)) continue;
    form.Yield();
    if (form.Aborted) return false;
    if (std::isnan(model->LeaveOneOut)) {
      const double error = LeaveOneOutError(*model, data, settings.DerivativeMethod, form);
      if (form.Aborted) return false;
      model->LeaveOneOut = error;
    }
    if (!wantsParts) continue;
    const PartsError error = CrossValidatedError(*model, data, parts, seed, settings, form);
    if (form.Aborted) return false;
    model->CrossValidated = error.Error;
    model->FailedParts = error.FailedParts;
  }
  return true;
}

}  // namespace quorvex
