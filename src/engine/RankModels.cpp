#include "engine/RankModels.h"

#include <algorithm>

namespace quorvex {

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

std::vector<ModelClass*> RankModels(const ModelCollection& models, int sortIndex) {
  std::vector<ModelClass*> ranked;
  for (const auto& model : models)
    if (model->Solved) ranked.push_back(model.get());
  // Stable, so that models of equal value keep the order of the catalogue.
  std::stable_sort(ranked.begin(), ranked.end(), [sortIndex](const ModelClass* a, const ModelClass* b) {
    const double x = SortKeyValue(*a, sortIndex), y = SortKeyValue(*b, sortIndex);
    return LargestIsBest(sortIndex) ? x > y : x < y;
  });
  return ranked;
}

}  // namespace quorvex
