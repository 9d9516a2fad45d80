#include "diagnosis/Ranking.h"

#include <algorithm>
#include <array>
#include <map>
#include <numeric>
#include <optional>
#include <utility>

#include "core/NumberText.h"
#include "engine/InformationCriteria.h"
#include "engine/ModelClass.h"
#include "functions/Elementary.h"

namespace quorvex {
namespace {

constexpr double kSameValues = 1e-8;  // of the spread of Y
constexpr double kNotApart = 2;       // of AICc

// What tells the data of a fit from others, and how they were taken: the total sum of squares is that of the weights,
// too.
std::array<double, 3> DataOf(const ModelClass& model) { return {PointCount(model), model.RST, model.GivenDeviation}; }

// Finds models whose values are the same, numbers being those of the list.
class Twins {
 public:
  explicit Twins(const std::vector<ModelClass*>& models) : models_(models), values_(models.size()) {
    first_.resize(models.size());
    std::iota(first_.begin(), first_.end(), 0u);
    std::vector<std::size_t> byRss = first_;
    std::ranges::stable_sort(byRss, {}, [&](std::size_t i) { return models[i]->RssNorm; });
    for (std::size_t i = 0; i < byRss.size(); ++i)
      for (std::size_t j = i + 1; j < byRss.size() && MayBeSame(byRss[i], byRss[j]); ++j) Join(byRss[i], byRss[j]);
  }

  // The first model of the list that has the same values.
  std::size_t First(std::size_t i) const { return first_[i]; }

 private:
  double Tolerance(std::size_t i) const {
    const DataStatistics& input = models_[i]->Statistics;
    const double spread = input.InputYMax - input.InputYMin;
    return kSameValues * (spread > 0 ? spread : std::abs(input.InputYMax));
  }

  // The roots of the sums of squares differ by no more than the length of what the fits differ by, so that few models
  // are ever evaluated.
  bool MayBeSame(std::size_t i, std::size_t j) const {
    const double apart = std::abs(std::sqrt(models_[j]->RssNorm) - std::sqrt(models_[i]->RssNorm));
    return apart <= 1.01 * Tolerance(i) * std::sqrt(PointCount(*models_[i]));
  }

  const std::vector<double>& ValuesOf(std::size_t i) {
    if (!values_[i])
      values_[i] = models_[i]->ValuesAt(models_[i]->CopyInputDataTo()->X).value_or(std::vector<double>());
    return *values_[i];
  }

  bool AreSame(std::size_t i, std::size_t j) {
    const auto &input = models_[i]->CopyInputDataTo(), &other = models_[j]->CopyInputDataTo();
    if (input != other && *input != *other) return false;
    const std::vector<double>&a = ValuesOf(i), &b = ValuesOf(j);
    const double tolerance = Tolerance(i);
    return !a.empty() &&
           std::ranges::equal(a, b, [tolerance](double x, double y) { return std::abs(x - y) <= tolerance; });
  }

  void Join(std::size_t i, std::size_t j) {
    if (first_[i] == first_[j] || !AreSame(i, j)) return;
    const auto [kept, gone] = std::minmax(first_[i], first_[j]);
    std::ranges::replace(first_, std::size_t{gone}, std::size_t{kept});
  }

  const std::vector<ModelClass*>& models_;
  std::vector<std::optional<std::vector<double>>> values_;
  std::vector<std::size_t> first_;
};

// Differences, weights and groups of models of the same data, which have an AICc, ascending.
void Compare(std::vector<Ranking>& rankings, const std::vector<std::size_t>& models, const Twins& twins, int& groups) {
  double best = rankings[models[0]].AICc, sum = 0, groupBest = best;
  // Minus infinity less itself is none.
  const auto above = [](double value, double other) { return value == other ? 0 : value - other; };
  std::vector<std::size_t> counted;
  ++groups;
  for (const std::size_t i : models) {
    Ranking& ranking = rankings[i];
    ranking.DeltaAICc = above(ranking.AICc, best);
    ranking.AkaikeWeight = Exp(-ranking.DeltaAICc / 2);
    if (above(ranking.AICc, groupBest) > kNotApart) {
      ++groups;
      groupBest = ranking.AICc;
    }
    ranking.Group = groups;
    if (std::ranges::find(counted, twins.First(i)) != counted.end()) continue;
    counted.push_back(twins.First(i));
    sum += ranking.AkaikeWeight;
  }
  for (const std::size_t i : models) rankings[i].AkaikeWeight /= sum;
}

}  // namespace

std::vector<Ranking> RankingOf(const std::vector<ModelClass*>& ranked) {
  std::vector<Ranking> rankings(ranked.size());
  const Twins twins(ranked);
  std::map<std::array<double, 3>, std::vector<std::size_t>> byData;
  for (std::size_t i = 0; i < ranked.size(); ++i) {
    const ModelClass& model = *ranked[i];
    Ranking& ranking = rankings[i];
    ranking.AICc = AICc(model);
    ranking.BIC = BIC(model);
    if (twins.First(i) != i) ranking.SameAs = static_cast<int>(twins.First(i) + 1);
    if (std::isfinite(model.LeaveOneOut)) ranking.LeaveOneOut = model.LeaveOneOut;
    if (std::isfinite(model.CrossValidated)) ranking.CrossValidated = model.CrossValidated;
    ranking.FailedParts = model.FailedParts;
    if (!std::isnan(ranking.AICc)) byData[DataOf(model)].push_back(i);
  }
  // The data of the best ranked model have the first groups.
  std::vector<std::vector<std::size_t>> sets;
  for (auto& [data, models] : byData) sets.push_back(std::move(models));
  std::ranges::sort(sets, {}, [](const auto& models) { return models[0]; });
  int groups = 0;
  for (std::vector<std::size_t>& models : sets) {
    std::ranges::stable_sort(models, {}, [&](std::size_t i) { return rankings[i].AICc; });
    Compare(rankings, models, twins, groups);
  }
  return rankings;
}

std::vector<std::string> RankingWarnings(const std::vector<ModelClass*>& ranked, std::size_t tried) {
  std::vector<std::string> warnings;
  if (ranked.empty()) return warnings;
  const ModelClass& best = *ranked[0];
  if (static_cast<double>(tried) > PointCount(best))
    warnings.push_back(std::to_string(tried) + " models were tried on " + GeneralNumber(PointCount(best)) +
                       " points: the best of so many fits well by chance, too.");
  if (std::ranges::any_of(ranked, [&](const ModelClass* model) { return DataOf(*model) != DataOf(best); }))
    warnings.push_back(
        "Not all of these models were fitted to the same data: AICc, BIC and errors of different data don't compare.");
  const auto without = static_cast<std::size_t>(
      std::ranges::count_if(ranked, [](const ModelClass* model) { return std::isnan(AICc(*model)); }));
  if (without > 0 && without < ranked.size())
    warnings.push_back("Of " + std::to_string(ranked.size()) + " models " + std::to_string(without) +
                       (without == 1 ? " has" : " have") +
                       " too few points for an AICc: ranks by it, Akaike weights and groups compare the others alone.");
  if (std::ranges::any_of(ranked, [](const ModelClass* model) { return model->Loss != LossKind::Squares; }))
    warnings.push_back(
        "AICc, BIC and cross-validation count squares, outliers included: of fits with a robust loss they say little.");
  for (const ModelClass* model : ranked)
    if (model->FailedParts > 0)
      warnings.push_back((model->cfgID.empty() ? model->id : model->cfgID) +
                         " has no cross-validated error: without some of the points, " +
                         std::to_string(model->FailedParts) + (model->FailedParts == 1 ? " part" : " parts") +
                         ", it finds no answer" +
                         (model->DOFError == 1 ? ": they leave no more points than coefficients." : "."));
  return warnings;
}

}  // namespace quorvex
