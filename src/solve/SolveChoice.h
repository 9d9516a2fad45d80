#pragma once

#include <array>
#include <string_view>

#include "core/Result.h"
#include "core/Settings.h"

namespace quorvex {

// Which models a solve takes, by the numbers that settings store.
enum class ModelSelection : int { SingleModel = 0, Groups = 1, AllModels = 2, LastSolvedModels = 3 };

// The setup of a solve.
struct SolveChoice {
  int SolveType = 0;  // 0 nonlinear, 1 linear
  ModelSelection Models = ModelSelection::SingleModel;
  bool UseAsDefault = false;  // from now on, without being asked
  bool TryHarder = false;     // of the nonlinear solver, from the first search on
  // Given standard deviations are taken at their word; else they tell ratios.
  bool AbsoluteDeviations = false;
  LossKind Loss = LossKind::Squares;
  double LossScale = 0;  // of the loss; 0: from the residuals

  bool operator==(const SolveChoice&) const = default;
};

// The choice that the user has stored; what is stored but out of range counts as the first of its kind.
SolveChoice StoredSolveChoice(const Settings& settings);

// Stores a choice that is to be the default, after which the user is not asked any more.
void StoreSolveChoice(Settings& settings, const SolveChoice& choice);

// The losses as windows name them.
inline constexpr std::array<const char*, kLossNames.size()> kLossTexts = {"Squares (least squares)", "Huber", "Soft L1",
                                                                          "Cauchy", "Bisquare"};

// The scale that a user typed, 0 for none; a sentence where it is no number above 0.
Result<double> ReadLossScale(std::string_view text, char decimalSeparator);

}  // namespace quorvex
