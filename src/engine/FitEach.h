#pragma once

#include <functional>
#include <string>

#include "core/Settings.h"
#include "core/SolveData.h"
#include "engine/ModelCollection.h"
#include "engine/SolveProgress.h"

namespace quorvex {

// Fits every model whose `Solve` is set, side by side, until the form is aborted. `begin` is told each in the order of
// the collection with the number of its coefficients, while another thread may be fitting it, `end` that its fit is
// over.
void FitEach(const ModelCollection& models, const SolveData& data, const Settings& settings, std::string& log,
             SolveProgress& form, const std::function<void(const ModelClass&, int coefficients)>& begin,
             const std::function<void()>& end);

// What is said where the user ends a run of fits, and its line in the log.
inline constexpr const char* kSolutionAborted = "Solution Process Aborted.";
void LogAbort(std::string& log);

}  // namespace quorvex
