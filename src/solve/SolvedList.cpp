#include "solve/SolvedList.h"

#include <algorithm>
#include <cmath>

#include "core/NumberText.h"

namespace quorvex {

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

std::string SortKeyText(const SolvedItem& item, int sortIndex, char decimalSeparator, int digits) {
  if (item.Model == nullptr) return "";
  const double key = SortKeyValue(*item.Model, sortIndex);
  if (std::isnan(key)) return "";
  if (std::isinf(key)) return "exact";
  std::string text = GeneralNumber(key, digits);
  std::ranges::replace(text, '.', decimalSeparator);
  return text;
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
