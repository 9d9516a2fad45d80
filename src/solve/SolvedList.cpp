#include "solve/SolvedList.h"

#include <algorithm>
#include <cmath>

#include "core/NumberText.h"
#include "diagnosis/CrossValidation.h"
#include "diagnosis/Ranking.h"
#include "solve/GatherData.h"

namespace quorvex {
namespace {

std::string NumberIn(std::string text, char decimalSeparator) {
  std::ranges::replace(text, '.', decimalSeparator);
  return text;
}

std::string ToldOf(const Ranking& ranking, char decimalSeparator) {
  std::string told;
  if (std::isnan(ranking.AICc))
    told = "AICc is not available: too few points for so many coefficients.";
  else if (std::isinf(ranking.AICc))
    told = "An exact fit.";
  else if (std::isinf(ranking.DeltaAICc))
    told = "Other models fit exactly.";
  else
    told = "AICc " + NumberIn(FormatNumber(ranking.DeltaAICc, "0.00"), decimalSeparator) + " above the best.";
  if (ranking.Group > 0)
    told += "\nGroup " + std::to_string(ranking.Group) + ": the data can hardly tell its models apart.";
  if (ranking.SameAs > 0) told += "\nThe same fitted values as rank " + std::to_string(ranking.SameAs) + ".";
  return told;
}

}  // namespace

std::string SolutionsCaption(int sortIndex) {
  return "Available Solutions Sorted By " + std::string(SortKeyName(sortIndex));
}

bool SolvedItem::Evaluate(std::span<const double> x, double& y) const {
  return Interpolation ? Interpolation->Evaluate(x[0], y) : Model->Evaluate(x, y);
}

bool SolvedItem::Evaluate(std::span<const double> x, double& y, std::string& ErrString) const {
  if (Interpolation) return Interpolation->Evaluate(x[0], y, ErrString);
  if (Model->Evaluate(x, y)) return true;
  ErrString = Model->EvaluationFailure(x);
  return false;
}

std::string_view SolvedItem::SearchEndText() const {
  if (Model == nullptr) return {};
  switch (Model->Ended) {
    case SearchEnd::Unchanged:
      return "unchanged: its last iterations found nothing better";
    case SearchEnd::IterationLimit:
      return "at the iteration limit, before it converged";
    case SearchEnd::Paused:
      return "by Pause, before it converged";
    default:
      return {};
  }
}

std::pair<double, double> SolvedItem::InputRange(int variable) const {
  if (Interpolation) return {Interpolation->InputXMin, Interpolation->InputXMax};
  const VariableStatistics& input = Model->Statistics.X[static_cast<std::size_t>(variable - 1)];
  return {input.InputXMin, input.InputXMax};
}

std::vector<SolvedItem> SolvedItems(Project& project, int sortIndex) {
  std::vector<SolvedItem> list;
  for (ModelClass* model : RankModels(project.Models, sortIndex)) list.push_back({model, nullptr});
  for (InterpClass& curve : project.Interpolations)
    if (curve.Solved) list.push_back({nullptr, &curve});
  return list;
}

std::vector<RankingText> RankingTexts(const std::vector<SolvedItem>& list, char decimalSeparator) {
  std::vector<ModelClass*> models;
  for (const SolvedItem& item : list)
    if (item.Model != nullptr) models.push_back(item.Model);
  std::vector<RankingText> texts;
  for (const Ranking& ranking : RankingOf(models)) {
    RankingText& text = texts.emplace_back();
    text.Told = ToldOf(ranking, decimalSeparator);
    if (ranking.Group > 0) {
      text.Weight = NumberIn(FormatNumber(ranking.AkaikeWeight, "0.000"), decimalSeparator);
      text.Group = std::to_string(ranking.Group);
    }
    if (ranking.SameAs > 0) text.Group.append(text.Group.empty() ? "=" : " =").append(std::to_string(ranking.SameAs));
  }
  return texts;
}

void CompleteSortKeys(Project& project, const Settings& settings) {
  if (!IsRankingKey(settings.Integer("sortindex"))) return;
  if (std::ranges::none_of(project.Models, [](const auto& m) { return m->Solved && std::isnan(m->LeaveOneOut); }))
    return;
  SolveForm unattended;
  CrossValidate(project.Models, GatherData(project.Sheet).Points, 0, 0, settings, unattended);
}

std::string SortKeyText(const SolvedItem& item, int sortIndex, char decimalSeparator, int digits) {
  if (item.Model == nullptr) return "";
  const double key = SortKeyValue(*item.Model, sortIndex);
  if (std::isnan(key)) return "";
  if (std::isinf(key)) return kExactText;
  return NumberIn(GeneralNumber(key, digits), decimalSeparator);
}

std::optional<SolvedItem> FirstSolution(const std::vector<SolvedItem>& selected, Prompter& user) {
  if (!selected.empty()) return selected.front();
  user.Inform("Nothing is solved yet.");
  return std::nullopt;
}

std::optional<std::size_t> FirstOf(const std::vector<SolvedItem>& list, const std::vector<SolvedItem>& wanted) {
  const auto found = std::find_first_of(list.begin(), list.end(), wanted.begin(), wanted.end());
  if (found == list.end()) return std::nullopt;
  return static_cast<std::size_t>(found - list.begin());
}

}  // namespace quorvex
