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

// An entry of the solved list: a model, or an interpolation, which has no statistics.
struct SolvedItem {
  ModelClass* Model = nullptr;
  InterpClass* Interpolation = nullptr;

  const std::string& Name() const { return Model != nullptr ? Model->id : Interpolation->id; }
  bool operator==(const SolvedItem&) const = default;
};

// The solved models, the best first, one solved from many starts being one entry; then the solved interpolations in
// their own order.
std::vector<SolvedItem> SolvedItems(Project& project, int sortIndex);

// The place in `list` of the first entry that is also one of `wanted`.
std::optional<std::size_t> FirstOf(const std::vector<SolvedItem>& list, const std::vector<SolvedItem>& wanted);

}  // namespace quorvex
