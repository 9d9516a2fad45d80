#include "engine/RankModels.h"

#include <algorithm>

namespace quorvex {

std::vector<ModelClass*> RankModels(const ModelCollection& models, int SortKey) {
  std::vector<ModelClass*> ranked;
  for (const auto& model : models)
    if (model->Solved) ranked.push_back(model.get());
  const auto worse = [SortKey](const ModelClass& model) {
    switch (SortKey) {
      case 2:
        return -model.R2;
      case 3:
        return -model.R2Adjust;
      case 4:
        return model.StdErr;
      default:
        return model.RSS;
    }
  };
  std::stable_sort(ranked.begin(), ranked.end(),
                   [&](const ModelClass* a, const ModelClass* b) { return worse(*a) < worse(*b); });
  return ranked;
}

}  // namespace quorvex
