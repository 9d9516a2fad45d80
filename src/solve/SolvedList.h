#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/Prompter.h"
#include "core/Settings.h"
#include "engine/RankModels.h"
#include "project/Project.h"

namespace quorvex {

// Said of an empty list.
inline constexpr const char* kNothingSolvedHint =
    "Nothing is solved yet. Solve Regression in the Solve menu fits models to the data.";

// The caption over the solved list.
std::string SolutionsCaption(int sortIndex);

// An entry of the solved list: a model, or an interpolation, which has one independent variable and no statistics. It
// looks into the project that holds them.
struct SolvedItem {
  ModelClass* Model = nullptr;  // one of the two is null
  InterpClass* Interpolation = nullptr;

  const std::string& Name() const { return Model != nullptr ? Model->id : Interpolation->id; }
  int NumIndependentVar() const { return Model != nullptr ? Model->NumIndependentVar() : 1; }

  // The value at x, one number per independent variable. False, with a text in `ErrString`, where there is none.
  bool Evaluate(std::span<const double> x, double& y) const;
  bool Evaluate(std::span<const double> x, double& y, std::string& ErrString) const;
  // How the search ended, where it did not by converging, to stand behind "The search ended"; else empty.
  std::string_view SearchEndText() const;
  // What found the solution where the ordinary search didn't, to stand behind "Found by"; else empty.
  std::string FoundByText() const { return Model != nullptr ? Model->FoundBy : ""; }
  // The range of the input along a variable, from 1.
  std::pair<double, double> InputRange(int variable) const;

  bool operator==(const SolvedItem&) const = default;
};

// The solved models, the best first, one solved from many starts being one entry; then the solved interpolations in
// their own order.
std::vector<SolvedItem> SolvedItems(Project& project, int sortIndex);

// What stands for a key of minus infinity, that of an exact fit by AICc and BIC.
inline constexpr const char* kExactText = "exact";

// How a model of the list stands among the others (diagnosis/Ranking.h). What is not available is empty.
struct RankingText {
  std::string Weight;  // Akaike's
  std::string Group;   // its number; "2 =1" of a model of group 2 that has the same fitted values as that of rank 1
  std::string Told;    // all of it in sentences, a line each
};

// Of the models of the list, which begins with them.
std::vector<RankingText> RankingTexts(const std::vector<SolvedItem>& list, char decimalSeparator);

// Computes what the models of a project are sorted by where that takes the data, as cross-validation does: of those
// that don't know it since their last fit and were fitted to the data that are in the sheet now.
void CompleteSortKeys(Project& project, const Settings& settings);

// What an entry is sorted by, as a text: "" of an interpolation, which has no statistics, and of a model without that
// key.
std::string SortKeyText(const SolvedItem& item, int sortIndex, char decimalSeparator, int digits);

// The one of the selected entries that a command on one takes; nothing, after a word to the user, where there is none.
std::optional<SolvedItem> FirstSolution(const std::vector<SolvedItem>& selected, Prompter& user);

// The place in `list` of the first entry that is also one of `wanted`.
std::optional<std::size_t> FirstOf(const std::vector<SolvedItem>& list, const std::vector<SolvedItem>& wanted);

}  // namespace quorvex
