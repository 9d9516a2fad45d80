#pragma once

#include <string>

#include "core/Settings.h"
#include "core/SolveData.h"
#include "engine/SolveForm.h"

namespace quorvex {

class ModelClass;

// Solves a nonlinear model as ModelClass::Fit does and goes on, by a trust region search and from other starts, where
// that failed or its answer is in doubt: not converged, a coefficient not determined (the derivatives, their columns
// scaled to equal lengths, have a reciprocal condition below 1e-10), no better than a constant, or from estimates that
// were not read off the data, since another start may end lower. ModelClass::Fit goes this way where
// Settings::TryHarder is set; without it nothing of this runs. Who wants to go on after failures alone fits without it
// first.
//
// In this order: the initial estimates (TrustRegion.h); starts that the data suggest (ModelShape.h, DataFeatures.h,
// StartSampler.h), the linear coefficients solved for (LinearPart.h); the initial estimates with other signs and orders
// of magnitude. The smallest sum wins, and the ordinary search begins there once more. Numbers are drawn from a fixed
// seed: the same bits on every run and every machine.
//
// The model's FoundBy says afterwards in plain words what worked, such as "starts suggested by the data"; it is empty
// where the answer is that of the ordinary search, and where there is none. The log has the same in a line that begins
// with "Found by: ". The initial estimates stay as the user gave them.
//
// `form` shows the searches as iterations, is given its turn at each and between blocks of points, and is heard: an
// abort ends everything with an unsolved model, a pause takes the best found so far.
bool FitHarder(ModelClass& model, const SolveData& data, const Settings& settings, std::string& log, SolveForm& form);

}  // namespace quorvex
