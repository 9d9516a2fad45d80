#pragma once

#include <optional>
#include <string>
#include <vector>

#include "selection/AllSubsets.h"
#include "selection/SelectionData.h"
#include "selection/SelectionForm.h"
#include "selection/SubsetSolver.h"

namespace quorvex {

// A model that a procedure went through.
struct SelectionStep {
  std::string Heading;  // as in "Step 2 - Variable X3 Entered"
  SubsetFit Fit;
};

// What a search has found, as far as it came.
struct SelectionResult {
  std::vector<SelectionStep> Steps;
  std::vector<RankedSubset> Subsets;  // of All Subsets alone
  std::vector<std::string> Endings;   // lines that say how it ended
  std::optional<std::string> Error;   // that ended it, to be told to the user
  bool Aborted = false;

  // Of the candidates and, last, Y; empty where the search was aborted, or where it can't be computed, which the error
  // says. Then of each candidate R^2 of its regression on the others.
  std::vector<std::vector<double>> Correlation;
  std::vector<double> R2OnOthers;
  std::string CorrelationError, VifError;
};

// The limit of a stepwise search, which may go round in circles.
inline constexpr int kMostSelectionSteps = 500;

// The status of a form at combination i, as in "Processing: 5 of 1024".
std::string CounterStatus(double i, double total, const LocaleText& locale);

// Searches by a procedure other than the manual one:
//
//   Forward    enters the variable with the least p, a later one of equals, while that is not above PToEnter
//   Backward   begins with all and removes the variable with the largest p while that is above PToRemove
//   Stepwise   enters and removes in turns
//   AllSubsets ranks all combinations
//
// p is the probability of |coefficient / standard error| by Student's t, with the variable in the model. Variables that
// are always in are neither entered nor removed.
SelectionResult ExecuteSelection(const SelectionData& data, const VarSelect& choices, const LocaleText& locale,
                                 SelectionForm& form);

}  // namespace quorvex
