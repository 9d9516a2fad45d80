#pragma once

#include <string>
#include <vector>

#include "core/Prompter.h"
#include "core/Settings.h"
#include "engine/SolveProgress.h"
#include "solve/FailedFit.h"

namespace quorvex {

// Whether a model can be solved on the sheet: it has as many independent variables.
bool CanBeSolved(const ModelClass& model, const DataSheet& sheet);

struct SolveOutcome {
  std::size_t Asked = 0;           // objects to be solved
  std::vector<SolvedItem> Solved;  // those of them that are, in the order of the collections
  std::vector<FailedFit> Failed;   // those that are not, where the run was not aborted
  bool Aborted = false;
};

// Solves the models that can be solved, and the interpolations, whose `Solve` is set, behind the progress window, in
// the order of the collections. A nonlinear search that fails is tried harder, where the settings want that. `log`
// grows by an account of each fit. After the run nothing is asked for any more, and initial estimates that a user gave
// are used up.
SolveOutcome RunSolve(Project& project, const SolveData& data, const Settings& settings, std::string& log,
                      SolveProgress& form);

// How a run went that had something to solve.
std::string Summary(const SolveOutcome& outcome);

// Tells that, or refuses where nothing could be solved.
void TellOutcome(const SolveOutcome& outcome, Prompter& user);

}  // namespace quorvex
