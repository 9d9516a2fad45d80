#pragma once

#include <string>

#include "core/Settings.h"
#include "core/SolveData.h"
#include "engine/SolveForm.h"

namespace quorvex {

class ModelClass;

// Solves a nonlinear model as ModelClass::Fit does and, where that fails or ends at a place that is no answer, from
// other starts and by another search. ModelClass::Fit goes this way where Settings::TryHarder is set; without it
// nothing of this runs.
//
// The model's FoundBy says afterwards in plain words what worked, such as "starts read off the data (4 of 40
// searches)"; it is empty where the ordinary search solved the model, and where nothing did. The log has the same in a
// line that begins with "Found by: ".
//
// `form` shows the searches as iterations, is given its turn at each and between blocks of points, and is heard: an
// abort ends everything with an unsolved model, a pause takes the best found so far.
bool FitHarder(ModelClass& model, const SolveData& data, const Settings& settings, std::string& log, SolveForm& form);

}  // namespace quorvex
