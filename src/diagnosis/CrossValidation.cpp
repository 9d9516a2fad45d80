#include "diagnosis/CrossValidation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <memory>
#include <numeric>
#include <optional>
#include <stop_token>
#include <string>
#include <utility>

#include "core/Limits.h"
#include "core/ParallelRuns.h"
#include "diagnosis/TaskForm.h"
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
bool IsFittedTo(ModelClass& model, const SolveData& data, SolveForm& form, int threads) {
  if (static_cast<std::size_t>(model.NumIndependentVar()) != data.X.size()) return false;
  const std::optional<std::vector<double>> residuals = model.GenerateResiduals(data, form, threads);
  if (!residuals) return false;
  const double error = RootMeanSquare(*residuals, data.sig);
  const double known = std::sqrt(model.RssNorm / static_cast<double>(data.N()));
  const double size = std::max(std::abs(model.Statistics.InputYMin), std::abs(model.Statistics.InputYMax));
  constexpr double kSameError = 1e-9, kRounding = 0x1p-44;
  return std::abs(error - known) <= kSameError * known + kRounding * size;
}

// The fits of models to what each part leaves, side by side.
class FitsOfParts {
 public:
  FitsOfParts(std::vector<const ModelClass*> models, const SolveData& data, int parts, std::uint64_t seed,
              const Settings& settings, SolveForm& form)
      : models_(std::move(models)),
        data_(data),
        dealt_(CrossValidationParts(data.N(), parts, seed)),
        settings_(settings),
        form_(form),
        found_(models_.size()) {
    settings_.TryHarder = false;
    settings_.Threads = ThreadsOfEach(settings.Threads, dealt_.size() * models_.size());
  }

  // Tells `take` of each model, by its number and in their order, on the calling thread. False where the form is
  // aborted.
  bool Run(int threads, const std::function<void(std::size_t, PartsError)>& take) {
    const std::size_t parts = dealt_.size();
    OrderedTasks tasks{.Count = models_.size() * parts, .Ahead = 2 * std::max(parts, std::size_t{64})};
    tasks.Prepare = [&](std::size_t i) {
      if (i % parts == 0) found_[i / parts] = {std::vector<double>(data_.N()), std::vector<char>(parts)};
      return true;
    };
    tasks.Do = [&](std::size_t i, std::stop_token stop) {
      TaskForm own(std::move(stop));
      Found& found = found_[i / parts];
      found.HasAnswer[i % parts] = Fit(*models_[i / parts], dealt_[i % parts], found.Errors, own);
    };
    std::size_t done = 0;
    tasks.Finish = [&](std::size_t i) {
      ++done;
      if (done % parts == 0) take(i / parts, Take(found_[i / parts]));
      return true;
    };
    tasks.KeepGoing = [&] {
      form_.ShowWork("Cross-validation of " + models_[done / parts]->id, done % parts, parts);
      form_.Yield();
      return !form_.Aborted;
    };
    return RunInOrder(tasks, threads);
  }

 private:
  struct Found {
    std::vector<double> Errors;   // at all points
    std::vector<char> HasAnswer;  // each part
  };

  bool Fit(const ModelClass& model, const std::vector<std::size_t>& part, std::vector<double>& errors,
           SolveForm& form) const {
    // A twin for each part: what a model remembers of one evaluation must not reach another.
    const std::unique_ptr<ModelClass> twin = model.CopyTo();
    twin->ICCancel();  // one start
    twin->SpecifyICComplete = true;
    std::string log;
    return twin->Fit(Without(data_, part), SettingsOfRefit(model, settings_), log, form) &&
           PredictionErrors(*twin, data_, part, errors);
  }
  PartsError Take(Found& found) const {
    PartsError result;
    result.FailedParts = static_cast<int>(std::ranges::count(found.HasAnswer, 0));
    const double error = result.FailedParts > 0 ? HUGE_VAL : RootMeanSquare(found.Errors, data_.sig);
    result.Error = std::isnan(error) ? HUGE_VAL : error;
    found = {};
    return result;
  }

  const std::vector<const ModelClass*> models_;
  const SolveData& data_;
  const std::vector<std::vector<std::size_t>> dealt_;
  Settings settings_;
  SolveForm& form_;
  std::vector<Found> found_;
};

}  // namespace

double LeaveOneOutError(ModelClass& model, const SolveData& data, const FitGeometry& geometry,
                        DerivativeKind derivativeMethod, SolveForm& form, int threads) {
  const std::optional<std::vector<double>> leverages =
      Leverages(model, data, geometry, derivativeMethod, form, threads);
  std::optional<std::vector<double>> errors = model.GenerateResiduals(data, form, threads);
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
  FitsOfParts({&model}, data, parts, seed, settings, form).Run(settings.Threads, [&](std::size_t, PartsError error) {
    result = error;
  });
  return result;
}

bool CrossValidate(const ModelCollection& models, const SolveData& data, int parts, std::uint64_t seed,
                   const Settings& settings, SolveForm& form) {
  std::vector<ModelClass*> asked;
  const auto wantsParts = [&](const ModelClass& model) { return parts >= 2 && std::isnan(model.CrossValidated); };
  for (const auto& model : models)
    if (model->Solved && (std::isnan(model->LeaveOneOut) || wantsParts(*model))) asked.push_back(model.get());
  std::vector<char> isFitted(asked.size());
  const int each = ThreadsOfEach(settings.Threads, asked.size());
  const auto leaveOneOut = [&](std::size_t i, SolveForm& own) {
    ModelClass& model = *asked[i];
    isFitted[i] = IsFittedTo(model, data, own, each);
    if (!isFitted[i] || !std::isnan(model.LeaveOneOut)) return;
    const auto geometry = FitGeometry::At(model, data, settings.DerivativeMethod, own, each);
    const double error =
        geometry ? LeaveOneOutError(model, data, *geometry, settings.DerivativeMethod, own, each) : HUGE_VAL;
    if (!own.Aborted) model.LeaveOneOut = error;
  };
  if (!RunTasks(asked.size(), settings.Threads, form, "Leaving out each point: model", leaveOneOut)) return false;
  std::vector<ModelClass*> divided;
  for (std::size_t i = 0; i < asked.size(); ++i)
    if (isFitted[i] && wantsParts(*asked[i])) divided.push_back(asked[i]);
  return FitsOfParts({divided.begin(), divided.end()}, data, parts, seed, settings, form)
      .Run(settings.Threads, [&](std::size_t i, PartsError error) {
        divided[i]->CrossValidated = error.Error;
        divided[i]->FailedParts = error.FailedParts;
      });
}

}  // namespace quorvex
