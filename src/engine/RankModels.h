#pragma once

#include <array>
#include <string_view>
#include <vector>

#include "engine/ModelCollection.h"

namespace quorvex {

// The keys that solutions are sorted by, by the numbers that settings and macros store. Any other number counts as RSS.
enum SortIndex : int { kSortByRSS = 1, kSortByR2 = 2, kSortByR2Adjust = 3, kSortByStdErr = 4 };
inline constexpr std::array<std::string_view, 4> kSortKeys = {"RSS", "R^2", "Ra^2", "StdErr"};  // from 1

double SortKeyValue(const ModelClass& model, int sortIndex);
// Whether the best fit has the largest key, as R^2 and Ra^2 have it.
bool LargestIsBest(int sortIndex);

// The solved models, the best first, ties in the order of the collection.
std::vector<ModelClass*> RankModels(const ModelCollection& models, int sortIndex);

}  // namespace quorvex
