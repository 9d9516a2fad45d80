#pragma once

#include <array>
#include <string_view>
#include <vector>

#include "engine/ModelCollection.h"

namespace quorvex {

// The keys that solutions are sorted by, by the numbers that settings and macros store. Any other number counts as RSS.
enum SortIndex : int {
  kSortByRSS = 1,
  kSortByR2 = 2,
  kSortByR2Adjust = 3,
  kSortByStdErr = 4,
  kSortByAICc = 5,
  kSortByBIC = 6,
  kSortByCV = 7
};
inline constexpr std::array<std::string_view, 7> kSortKeys = {"RSS", "R^2", "Ra^2", "StdErr", "AICc", "BIC", "CV"};

// The word of a key.
std::string_view SortKeyName(int sortIndex);
// The key weighs what a model explains against what it costs, so that models compare by it (diagnosis/Ranking.h).
inline bool IsRankingKey(int sortIndex) { return sortIndex >= kSortByAICc && sortIndex <= kSortByCV; }

// NaN where the model has none. CV is the error of the cross-validation by parts where that was asked for, else of
// leaving out each point; somebody has computed it by then (diagnosis/CrossValidation.h).
double SortKeyValue(const ModelClass& model, int sortIndex);
// Whether the best fit has the largest key, as R^2 and Ra^2 have it.
bool LargestIsBest(int sortIndex);

// The solved models, the best first and those without a key last, ties in the order of the collection. Of exact fits,
// which AICc and BIC can't tell apart, those of fewer coefficients stand first.
std::vector<ModelClass*> RankModels(const ModelCollection& models, int sortIndex);

}  // namespace quorvex
