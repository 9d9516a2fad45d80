#pragma once

#include <optional>
#include <string>
#include <vector>

#include "project/Project.h"

namespace quorvex {

// The keys that solutions are sorted by, by the numbers that settings and macros store. Any other number counts as RSS.
enum SortIndex : int { kSortByRSS = 1, kSortByR2 = 2, kSortByR2Adjust = 3, kSortByStdErr = 4 };

std::string SortKeyName(int sortIndex);  // "RSS", "R^2", "Ra^2", "StdErr"
double SortKeyValue(const ModelClass& model, int sortIndex);
// Whether the best fit has the largest key, as R^2 and Ra^2 have it.
bool LargestIsBest(int sortIndex);

// The caption over the solved list.
std::string SolutionsCaption(int sortIndex);

// The solved models, the best first; ties in the order of the collection. One solved from many starts is one entry.
std::vector<ModelClass*> RankModels(const ModelCollection& models, int sortIndex);

// An entry of the solved list: a model, or an interpolation, which has no statistics.
struct Solution {
  ModelClass* Model = nullptr;
  InterpClass* Curve = nullptr;

  const std::string& id() const { return Model != nullptr ? Model->id : Curve->id; }
  bool operator==(const Solution&) const = default;
};

// The ranked models, then the solved interpolations in their own order.
std::vector<Solution> Solutions(Project& project, int sortIndex);

// The place in `list` of the first entry that is also one of `wanted`.
std::optional<std::size_t> FirstOf(const std::vector<Solution>& list, const std::vector<Solution>& wanted);

}  // namespace quorvex
