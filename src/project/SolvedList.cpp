#include "project/SolvedList.h"

#include <algorithm>

namespace quorvex {

std::string SortKeyName(int sortIndex) {
  switch (sortIndex) {
    case kSortByR2:
      return "R^2";
    case kSortByR2Adjust:
      return "Ra^2";
    case kSortByStdErr:
      return "StdErr";
    default:
      return "RSS";
  }
}

double SortKeyValue(const ModelClass& model, int sortIndex) {
  switch (sortIndex) {
    case kSortByR2:
      return model.R2;
    case kSortByR2Adjust:
      return model.R2Adjust;
    case kSortByStdErr:
      return model.StdErr;
    default:
      return model.RSS;
  }
}

bool LargestIsBest(int sortIndex) { return sortIndex == kSortByR2 || sortIndex == kSortByR2Adjust; }

std::string SolutionsCaption(int sortIndex) { return "Available Solutions Sorted By " + SortKeyName(sortIndex); }

std::vector<ModelClass*> RankModels(const ModelCollection& models, int sortIndex) {
  std::vector<ModelClass*> ranked;
  for (const auto& model : models)
    if (model->Solved) ranked.push_back(model.get());
  std::stable_sort(ranked.begin(), ranked.end(), [sortIndex](const ModelClass* a, const ModelClass* b) {
    if (LargestIsBest(sortIndex)) std::swap(a, b);
    return SortKeyValue(*a, sortIndex) < SortKeyValue(*b, sortIndex);
  });
  return ranked;
}

std::vector<Solution> Solutions(Project& project, int sortIndex) {
  std::vector<Solution> list;
  for (ModelClass* model : RankModels(project.Models, sortIndex)) list.push_back({model, nullptr});
  for (InterpClass& curve : project.Interpolations)
    if (curve.Solved) list.push_back({nullptr, &curve});
  return list;
}

std::optional<std::size_t> FirstOf(const std::vector<Solution>& list, const std::vector<Solution>& wanted) {
  const auto found = std::find_first_of(list.begin(), list.end(), wanted.begin(), wanted.end());
  if (found == list.end()) return std::nullopt;
  return static_cast<std::size_t>(found - list.begin());
}

}  // namespace quorvex
