#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/LocaleText.h"
#include "core/Prompter.h"
#include "results/FitLimits.h"
#include "solve/SolvedList.h"

namespace quorvex {

// Stands between two results of the evaluation panel.
inline constexpr const char* kEvaluationRule = "___________________________________";

// What the user asks of a solution in the evaluation panel, as it was typed, numbers in the locale's form.
struct EvaluationEntries {
  std::vector<std::string> X;             // one per independent variable
  std::string Y;                          // for a search of roots
  bool RootAtY = false;                   // "Root at Y, Xn" instead of "Value of Y at Xn"
  int Variable = 1;                       // that a search of roots varies, from 1
  bool DyDx = false, Parameters = false;  // also the derivatives at each X
  std::string SearchMin, SearchMax, SearchIntervals;
  LimitsChoice Limits;  // also these of the value
};

// Where a search of roots begins: the range of the input along that variable, in 200 parts.
struct SearchDefaults {
  std::string Min, Max, Intervals;
};
SearchDefaults DefaultSearch(const SolvedItem& solution, int variable, const LocaleText& locale);

// Evaluates, and returns the lines to show, NL between them. Where an entry does not do the user is told why, and there
// is nothing to show. Derivatives are for models alone; an interpolation has none.
// Limits of the value rest on the points that the solution was fitted to.
std::optional<std::string> EvalCommand(const SolvedItem& solution, const EvaluationEntries& entries,
                                       const LocaleText& locale, Prompter& user, const SolveData& data = {});

}  // namespace quorvex
