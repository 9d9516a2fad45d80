#include "engine/RankModels.h"

#include <algorithm>
#include <cmath>

#include "engine/InformationCriteria.h"

namespace quorvex {

std::string_view SortKeyName(int sortIndex) {
  const bool known = sortIndex >= 1 && sortIndex <= static_cast<int>(kSortKeys.size());
  return kSortKeys[known ? static_cast<std::size_t>(sortIndex - 1) : 0];
}

double SortKeyValue(const ModelClass& model, int sortIndex) {
  switch (sortIndex) {
    case kSortByR2:
      return model.R2;
    case kSortByR2Adjust:
      return model.R2Adjust;
    case kSortByStdErr:
      return model.StdErr;
    case kSortByAICc:
      return AICc(model);
    case kSortByBIC:
      return BIC(model);
    case kSortByCV: {
      const double error = std::isnan(model.CrossValidated) ? model.LeaveOneOut : model.CrossValidated;
      return std::isfinite(error) ? error : NAN;
    }
    default:
      return model.RSS;
  }
}

bool LargestIsBest(int sortIndex) { return sortIndex == kSortByR2 || sortIndex == kSortByR2Adjust; }

std::vector<ModelClass*> RankModels(const ModelCollection& models, int sortIndex) {
  struct Entry {
    ModelClass* Model;
    double Key;
    int Cost;
  };
  const bool costs = sortIndex == kSortByAICc || sortIndex == kSortByBIC;
  std::vector<Entry> entries;
  for (const auto& model : models)
    if (model->Solved)
      entries.push_back({model.get(), SortKeyValue(*model, sortIndex), costs ? FittedCount(*model) : 0});
  // Stable, so that models of equal value keep the order of the catalogue.
  std::ranges::stable_sort(entries, [largest = LargestIsBest(sortIndex)](const Entry& a, const Entry& b) {
    if (std::isnan(a.Key) || std::isnan(b.Key)) return !std::isnan(a.Key) && std::isnan(b.Key);
    if (a.Key == b.Key) return a.Cost < b.Cost;
    return largest ? a.Key > b.Key : a.Key < b.Key;
  });
  std::vector<ModelClass*> ranked;
  for (const Entry& entry : entries) ranked.push_back(entry.Model);
  return ranked;
}

}  // namespace quorvex
