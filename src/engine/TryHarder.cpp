#include "engine/TryHarder.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "core/Files.h"
#include "core/NumberText.h"
#include "engine/BlockTeam.h"
#include "engine/DataFeatures.h"
#include "engine/FitRun.h"
#include "engine/LinearPart.h"
#include "engine/ModelClass.h"
#include "engine/ModelShape.h"
#include "engine/SeededRandom.h"
#include "engine/StartSampler.h"
#include "engine/TrustRegion.h"
#include "engine/WeightedResiduals.h"

namespace quorvex {
namespace {

// Bounds of the work, and the seed: docs/macros.md tells them.
constexpr std::uint64_t kSeed = 20240229;
constexpr std::size_t kMostUserStarts = 10;  // of a sweep
constexpr std::size_t kRoughPoints = 200;    // that starts are judged by
constexpr std::size_t kSearchPoints = 2000;  // that searches use; the last one has all
constexpr std::size_t kSamplesPerCoefficient = 1000, kMostSamples = 8000, kLeastSamples = 60;
constexpr std::size_t kSampleWork = 10000000;                // values of the model for rough merits, at most
constexpr std::size_t kBestSamples = 20, kBestOfParts = 20;  // that a rough search starts from
constexpr std::size_t kRefined = 8;                          // of these, searched to the end
constexpr int kRoughIterations = 20, kIterations = 300;

constexpr double kUndetermined = 1e-10;  // reciprocal condition below which a coefficient counts as not determined
constexpr double kSame = 1e-6;           // minima that differ by less, in parts of the length, are the same
constexpr double kExact = 1e-13;         // of the length of y: there is nothing left to find

struct Found {
  std::vector<double> a;     // free coefficients
  double Length = HUGE_VAL;  // of the residuals
  bool Determined = false;
  std::string How;  // empty for the ordinary search
  int Times = 0;    // that searches have led there
};

class HarderFit {
 public:
  HarderFit(ModelClass& model, const SolveData& data, const Settings& settings, std::string& log, SolveForm& form)
      : model_(model), data_(data), settings_(settings), log_(log), form_(form) {}

  bool Run();

 private:
  bool CanGoOn() const;
  std::string WhyDoubtful();
  void Search();
  void FromUserStarts(WeightedResiduals& residuals);
  void FromSamples(const std::vector<std::vector<double>>& samples, const std::string& how, WeightedResiduals& rough,
                   WeightedResiduals& residuals);
  TrustRegionEnd SearchFrom(WeightedResiduals& residuals, std::vector<double> a, TrustRegionPlan plan, bool project);
  void Offer(WeightedResiduals& residuals, const TrustRegionEnd& end, const std::string& how);
  bool Ended() const { return form_.Aborted || form_.Paused || best_.Length <= kExact * Norm(target_); }
  bool Accept();
  bool AcceptAsFound(const std::vector<double>& all);
  std::size_t SampleCount(std::size_t coefficients, std::size_t points) const;
  void Line(std::string_view text) { log_.append(text).append(NL); }

  ModelClass& model_;
  const SolveData& data_;
  const Settings& settings_;
  std::string& log_;
  SolveForm& form_;

  std::vector<std::vector<double>> starts_;  // the user's, all coefficients
  bool startFromData_ = false;
  std::vector<double> target_;
  std::vector<CoefficientRole> roles_;
  std::vector<bool> linear_;
  Found best_;
  int searches_ = 0;
};

bool HarderFit::CanGoOn() const {
  const bool anyFree = std::ranges::any_of(model_.Coefficients, [](const Coefficient& c) { return !c.IsHeld(); });
  const bool placed =
      std::ranges::all_of(model_.Coefficients, [](const Coefficient& c) { return BoundsFault(c).empty(); });
  return anyFree && placed && model_.NumInputX() > 0 && static_cast<std::size_t>(model_.NumDependentVar()) < data_.N();
}

bool HarderFit::Run() {
  const bool given = model_.SpecifyICComplete;
  const std::vector<double> values = model_.CoefficientValues;
  const bool solved = FitRun(model_, data_, settings_, log_, form_).Nonlinear();
  if (form_.Aborted || !CanGoOn() || (solved && model_.Ended == SearchEnd::Paused)) return solved;
  startFromData_ = !given && !model_.UserType && !model_.ForceRuleEstimate;
  const std::string doubt = solved ? WhyDoubtful() : "the search failed";
  if (doubt.empty()) return true;

  starts_ = BuildICSets(model_.ICRanges);
  if (starts_.size() == 1 && given) starts_ = {values};
  starts_.resize(std::min(starts_.size(), kMostUserStarts));
  if (model_.HasBounds())
    for (std::vector<double>& start : starts_) model_.BringFreeInside(start);
  const ModelSetup setup = model_;
  const FitResult result = model_;
  const std::string message = model_.ErrorMessage;
  Line("Trying harder, since " + doubt);
  form_.ShowConverging(true);
  if (solved) {
    best_.a = WeightedResiduals(model_, data_, form_).FreeOf(model_.CoefficientValues);
    best_.Determined = true;
  }
  Search();
  const bool accepted = !form_.Aborted && Accept();
  // The ranges that the user gave, and what he asked for, stay his.
  static_cast<ModelSetup&>(model_) = setup;
  if (accepted || form_.Aborted) model_.Failure.clear();
  if (form_.Aborted) return model_.Solved = false;
  form_.ShowConverging(false);
  if (accepted) return true;
  static_cast<FitResult&>(model_) = result;
  model_.ErrorMessage = message;
  Line(solved ? "Nothing better was found: the solution above stands." : "Trying harder found no solution.");
  log_ += NL;
  return solved;
}

// Why a solution of the ordinary search is none that can be trusted; empty where there is no reason.
std::string HarderFit::WhyDoubtful() {
  if (model_.Ended == SearchEnd::IterationLimit) return "the search did not converge";
  if (model_.RssNorm > 0 && model_.RssNorm >= model_.RST) return "the solution is no better than a constant";
  const std::vector<double> all = model_.CoefficientValues;
  WeightedResiduals residuals(model_, data_, form_, settings_.Threads);
  const std::vector<double> a = residuals.FreeOf(all);
  const bool determined = DeterminationAt(residuals, a).ReciprocalCondition >= kUndetermined;
  model_.CoefficientValues = all;
  if (form_.Aborted) return {};
  if (!determined) return "a coefficient is not determined by the data";
  return startFromData_ ? "" : "another start may end lower";
}

void HarderFit::Search() {
  const SolveData searched = Thinned(data_, kSearchPoints), roughly = Thinned(data_, kRoughPoints);
  WeightedResiduals residuals(model_, searched, form_), rough(model_, roughly, form_);
  target_ = residuals.Target();
  if (!best_.a.empty()) {
    std::vector<double> r;
    if (residuals.Residuals(best_.a, r)) best_.Length = Norm(r);
    best_.Determined = DeterminationAt(residuals, best_.a).ReciprocalCondition >= kUndetermined;
  }
  SeededRandom random(kSeed);
  roles_ = FindRoles(model_, data_, random, form_);
  for (const CoefficientRole& role : roles_) linear_.push_back(role.Linear);
  FromUserStarts(residuals);
  if (Ended()) return;

  const std::size_t count = SampleCount(roles_.size(), roughly.N());
  std::vector<std::vector<double>> samples = StartsByData(roles_, FindFeatures(searched), count, random);
  if (model_.HasBounds()) BringInside(samples, residuals.Bounds(), random);
  FromSamples(samples, "starts suggested by the data", rough, residuals);
  if (Ended() || best_.Times > 2) return;
  samples.clear();
  for (const std::vector<double>& start : starts_)
    for (std::vector<double>& a : StartsAround(residuals.FreeOf(start), count / (2 * starts_.size()) + 1, random))
      samples.push_back(std::move(a));
  if (model_.HasBounds()) BringInside(samples, residuals.Bounds(), random);
  FromSamples(samples, "other signs and orders of magnitude of the initial estimates", rough, residuals);
}

std::size_t HarderFit::SampleCount(std::size_t coefficients, std::size_t points) const {
  const auto linear = static_cast<std::size_t>(std::ranges::count(linear_, true));
  const std::size_t each = points * (linear + 2);
  const std::size_t wanted = std::min(kSamplesPerCoefficient * (coefficients - linear + 1), kMostSamples);
  return std::clamp(std::min(wanted, kSampleWork / each), kLeastSamples, kMostSamples);
}

TrustRegionEnd HarderFit::SearchFrom(WeightedResiduals& residuals, std::vector<double> a, TrustRegionPlan plan,
                                     bool project) {
  ++searches_;
  form_.SetIterationLabel("Trying harder: search " + std::to_string(searches_));
  LinearPart part(residuals, linear_);
  if (project && part.Count() > 0)
    plan.Improve = [&](std::vector<double>& trial, std::vector<double>& r) {
      part.Improve(trial, r);
      return true;
    };
  return TrustRegionSearch(residuals, std::move(a), plan, form_);
}

// Takes what a search led to where it is better than all before.
void HarderFit::Offer(WeightedResiduals& residuals, const TrustRegionEnd& end, const std::string& how) {
  if (!std::isfinite(end.Length)) return;
  if (std::isfinite(best_.Length) && std::abs(end.Length - best_.Length) <= kSame * best_.Length) {
    ++best_.Times;
    return;
  }
  // Between a place that leaves a coefficient open and one that doesn't, the former has to be better by far.
  const bool determined = DeterminationAt(residuals, end.a).ReciprocalCondition >= kUndetermined;
  const double handicap = determined == best_.Determined ? 1 : determined ? 0.5 : 2;
  if (end.Length * handicap > best_.Length) return;
  best_ = {end.a, end.Length, determined, how, 1};
  form_.SetResidualLabel("Merit Function: " +
                         GeneralNumber(end.Length / residuals.Unit() * end.Length / residuals.Unit()));
}

void HarderFit::FromUserStarts(WeightedResiduals& residuals) {
  const int before = searches_;
  for (const std::vector<double>& start : starts_)
    for (const double radius : {1.0, 100.0, 0.1}) {
      if (Ended()) return;
      const bool project = radius < 1;
      Offer(residuals,
            SearchFrom(residuals, residuals.FreeOf(start), {.FirstRadius = radius, .Iterations = kIterations}, project),
            "a trust region search from the initial estimates");
    }
  Line("Trust region searches from the initial estimates: " + std::to_string(searches_ - before));
}

void HarderFit::FromSamples(const std::vector<std::vector<double>>& samples, const std::string& how,
                            WeightedResiduals& rough, WeightedResiduals& residuals) {
  struct Start {
    double Length;
    std::vector<double> a;
  };
  LinearPart part(rough, linear_);
  std::vector<Start> starts;
  std::vector<double> r;
  const std::size_t length = std::max<std::size_t>(samples.size() / kBestOfParts, 1);
  std::vector<Start> bestOfPart;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    if (form_.Aborted || form_.Paused) return;
    std::vector<double> a = samples[i];
    if (i % length == 0) bestOfPart.push_back({HUGE_VAL, {}});
    if (!part.Solve(a, r)) continue;
    starts.push_back({Norm(r), std::move(a)});
    if (starts.back().Length < bestOfPart.back().Length) bestOfPart.back() = starts.back();
  }
  // The best of all, and the best of some parts, lest one poor minimum have all the searches.
  std::ranges::stable_sort(starts, {}, &Start::Length);
  starts.resize(std::min(starts.size(), kBestSamples));
  for (Start& start : bestOfPart)
    if (!start.a.empty() && std::ranges::none_of(starts, [&](const Start& other) { return other.a == start.a; }))
      starts.push_back(std::move(start));

  const int before = searches_;
  for (Start& start : starts) {
    if (form_.Aborted || form_.Paused) return;
    TrustRegionEnd end =
        SearchFrom(rough, start.a, {.FirstRadius = 1, .Iterations = kRoughIterations, .Tolerance = 1e-6}, true);
    start = {end.Length, std::move(end.a)};
  }
  std::ranges::stable_sort(starts, {}, &Start::Length);
  std::size_t refined = 0;
  double last = -1;
  for (const Start& start : starts) {
    if (Ended() || refined == kRefined) break;
    if (!std::isfinite(start.Length)) break;
    // What ended at the same place on the way needs no second search, but tells that the place is easily found.
    if (last >= 0 && std::abs(start.Length - last) <= 1e-5 * last) {
      if (refined == 1) ++best_.Times;
      continue;
    }
    last = start.Length;
    ++refined;
    Offer(residuals, SearchFrom(residuals, start.a, {.FirstRadius = 1, .Iterations = kIterations}, true), how);
  }
  Line("Searches from " + how + ": " + std::to_string(searches_ - before) + " of " + std::to_string(samples.size()) +
       " starts");
}

// Solves from the best found as from an initial estimate, so that the answer is that of any other fit. False where
// nothing was found that is better than what was there before.
bool HarderFit::Accept() {
  if (best_.How.empty()) return false;
  WeightedResiduals residuals(model_, data_, form_, settings_.Threads);
  if (data_.N() > kSearchPoints) {
    // The searches had some of the points alone.
    const TrustRegionEnd end = SearchFrom(residuals, best_.a, {.FirstRadius = 1, .Iterations = kIterations}, false);
    if (form_.Aborted || !std::isfinite(end.Length)) return false;
    best_.a = end.a;
  }
  residuals.Put(best_.a);
  std::vector<double> r;
  if (!best_.Determined) {
    // No better than a constant and open besides: a flat place far from everything, and no solution.
    double mean = 0, constant = 0, left = 0;
    if (!residuals.Residuals(best_.a, r)) return false;
    for (std::size_t i = 0; i < data_.N(); ++i) mean += data_.sig[i] * data_.Y[i] / static_cast<double>(data_.N());
    for (std::size_t i = 0; i < data_.N(); ++i) {
      const double d = std::sqrt(data_.sig[i]) * (data_.Y[i] - mean) * residuals.Unit();
      constant += d * d;
      left += r[i] * r[i];
    }
    if (!(left < 0.99 * constant)) return false;
  }
  Line("Found by: " + best_.How);
  log_ += NL;
  std::vector<double> all = starts_[0];
  for (int i = 1, j = 0; i <= model_.NumDependentVar(); ++i)
    if (!model_.IsHeld(i)) all[static_cast<std::size_t>(i - 1)] = best_.a[static_cast<std::size_t>(j++)];
  for (std::size_t i = 0; i < all.size(); ++i) model_.ICRanges[i] = {all[i], all[i], 1};
  model_.CoefficientValues = all;
  model_.SpecifyICComplete = true;
  bool solved = FitRun(model_, data_, settings_, log_, form_).Nonlinear();
  if (form_.Aborted) return false;
  if (!solved) solved = AcceptAsFound(all);
  if (solved) model_.FoundBy = best_.How;
  return solved;
}

// The best found as it stands, with statistics of its own, where the ordinary search has no way to begin there.
bool HarderFit::AcceptAsFound(const std::vector<double>& all) {
  model_.CoefficientValues = all;
  WeightedResiduals residuals(model_, data_, form_, settings_.Threads);
  const Determination determination = DeterminationAt(residuals, best_.a);
  model_.CoefficientValues = all;
  model_.Variances.assign(all.size(), 0.0);
  if (determination.Variances.empty()) return false;
  for (int i = 1, j = 0; i <= model_.NumDependentVar(); ++i)
    if (!model_.IsHeld(i)) model_.SetCovariance(i, determination.Variances[static_cast<std::size_t>(j++)]);
  BlockTeam team(model_, data_.N(), settings_.Threads);
  if (!model_.GetGoodnessOfFit(data_, static_cast<int>(residuals.FreeCount()), form_, team)) return false;
  model_.SweepCount = 0;
  model_.ErrorInfo = true;
  model_.Ended = SearchEnd::Converged;
  model_.ErrorMessage.clear();
  best_.How += ", with the coefficients as found there, where the ordinary search fails";
  Line("The ordinary search fails there: the coefficients stand as they were found.");
  if (!best_.Determined) {
    best_.How += "; the data leave some of them open";
    Line("The data leave some of them open.");
  }
  Line("Residual Sum of Squares = " + GeneralNumber(model_.RSS));
  Line("Solution Complete");
  log_ += NL;
  return model_.Solved = true;
}

}  // namespace

bool FitHarder(ModelClass& model, const SolveData& data, const Settings& settings, std::string& log, SolveForm& form) {
  return HarderFit(model, data, settings, log, form).Run();
}

}  // namespace quorvex
