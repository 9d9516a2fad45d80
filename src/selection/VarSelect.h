#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "core/LocaleText.h"
#include "core/Prompter.h"

namespace quorvex {

// The procedures that search for the variables which explain Y, in the order of the window.
enum class SelectionProcedure { Forward, Backward, Stepwise, AllSubsets, Manual };

// What Y is replaced by before anything is fitted.
enum class YTransform { None, Square, Root, Ln, Inverse, InverseSquare, InverseRoot, InverseLn };

// By what the combinations of All Subsets are ranked, the best one first.
enum class SubsetRank { R2, RSS, StdErr };

// As the window and the report name them.
inline constexpr std::array<const char*, 5> kProcedureNames = {"Forward Selection", "Backward Elimination",
                                                               "Stepwise Selection", "All Subsets", "Manual Selection"};
inline constexpr std::array<const char*, 8> kYTransformNames = {"None", "Y^2",   "Sqrt(Y)",   "Ln(Y)",
                                                                "1/Y",  "1/Y^2", "1/Sqrt(Y)", "1/Ln(Y)"};
inline constexpr std::array<const char*, 3> kRankNames = {"R^2", "RSS", "Std. Error"};

// The most variables that a combination of All Subsets may have, and that a project has room for.
inline constexpr int kMostVariablesToReturn = 20;

// The names of the columns that a search may choose from: those of X, then with `products` the square of each and the
// product of each two.
std::vector<std::string> CandidateNames(const std::vector<std::string>& headers, std::size_t independentVariables,
                                        bool products);

// The choices of a search. Of a candidate that is on both lists the one that leaves it out counts.
struct VarSelect {
  SelectionProcedure WhichModel = SelectionProcedure::Forward;
  std::size_t NumIV = 0;  // columns of X
  bool Intercept = true;
  bool CrossProducts = false;
  double PToEnter = 0.05, PToRemove = 0.1;
  SubsetRank RankBy = SubsetRank::R2;
  quorvex::YTransform YTransform = quorvex::YTransform::None;
  int VarsToReturn = kMostVariablesToReturn;
  std::vector<bool> Exclude, Include;  // one per candidate

  // Candidates that may enter: those that are not left out, and of these the ones that are not always in.
  std::size_t Candidates() const;
  std::size_t Free() const;

  // Takes what was typed and refuses what no search can be made with, `points` being the rows of the data. Asks before
  // a long search. False where the window stays open.
  bool Accept(const std::string& pToEnter, const std::string& pToRemove, const std::string& varsToReturn,
              std::size_t points, const LocaleText& locale, Prompter& user);

 private:
  bool AcceptLists(Prompter& user) const;
};

}  // namespace quorvex
