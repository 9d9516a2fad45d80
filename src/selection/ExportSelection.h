#pragma once

#include <optional>

#include "core/Prompter.h"
#include "project/Project.h"
#include "selection/ExecuteSelection.h"
#include "selection/SelectionData.h"
#include "selection/SubsetSolver.h"

namespace quorvex {

// The model as a project: its variables as the columns of X, Y as it was fitted, the standard deviations, and the
// linear model of them, solved. Nothing where that model could not be made.
std::optional<Project> ProjectOf(const SubsetFit& model, const SelectionData& data, const LocaleText& locale);

// The Save as Project command: writes that to a file that the user chooses. False where nothing was written, which the
// user is told.
bool ExportSelection(const SubsetFit& model, const SelectionData& data, const LocaleText& locale, Prompter& user);

// The same of what a search found: its last model, or of All Subsets combination number `chosen`, from 0, of the
// ranking, the best one where there is none of that number.
bool ExportResult(const SelectionResult& result, const SelectionData& data, const VarSelect& choices,
                  std::size_t chosen, const LocaleText& locale, Prompter& user);

}  // namespace quorvex
