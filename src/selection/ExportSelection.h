#pragma once

#include <optional>

#include "core/Prompter.h"
#include "project/Project.h"
#include "selection/SelectionData.h"
#include "selection/SubsetSolver.h"

namespace quorvex {

// The model as a project: its variables as the columns of X, Y as it was fitted, the standard deviations, and the
// linear model of them, solved. Nothing where that model could not be made.
std::optional<Project> ProjectOf(const SubsetFit& model, const SelectionData& data, const LocaleText& locale);

// The Save as Project command: writes that to a file that the user chooses. False where nothing was written, which the
// user is told.
bool ExportSelection(const SubsetFit& model, const SelectionData& data, const LocaleText& locale, Prompter& user);

}  // namespace quorvex
