#pragma once

#include <functional>
#include <memory>
#include <string>

#include "core/Settings.h"
#include "core/SolveData.h"
#include "engine/ModelCollection.h"
#include "engine/SolveForm.h"

namespace quorvex {

// Fits `model`. Each fit makes its own table of the input; models of one run that have equal ones share the first,
// which `shared` holds from then on.
void FitSharingInput(ModelClass& model, const SolveData& data, const Settings& settings, std::string& log,
                     SolveForm& form, std::shared_ptr<const InputPoints>& shared);

// Fits every model whose `Solve` is set, in the order of the collection, until the form is aborted. `begin` is told
// each before its fit, `end` after it.
void FitEach(const ModelCollection& models, const SolveData& data, const Settings& settings, std::string& log,
             SolveForm& form, const std::function<void(const ModelClass&)>& begin, const std::function<void()>& end);

// What is said where the user ends a run of fits, and its line in the log.
inline constexpr const char* kSolutionAborted = "Solution Process Aborted.";
void LogAbort(std::string& log);

}  // namespace quorvex
