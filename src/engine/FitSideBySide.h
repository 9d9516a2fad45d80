#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "core/Settings.h"
#include "core/SolveData.h"
#include "engine/ModelClass.h"
#include "engine/SolveProgress.h"

namespace quorvex {

// Models to be fitted to the same data, which know nothing of each other, and what is told of each, by its number.
struct SeparateFits {
  std::vector<ModelClass*> Models;
  // Fits one, on any thread, with settings, a log and a form that are its own.
  std::function<void(std::size_t, const Settings&, std::string& log, SolveProgress& form)> Fit;
  // On the calling thread, in order: before a fit and behind it, as if each began when the one before it ended.
  std::function<void(std::size_t)> Begin, End;
};

// Does the fits on as many threads as the settings allow; one after the other on the calling thread where that is one,
// or where there is too little to do for two. The answers, the log and the calls are the same either way, and all
// models share one table of the input. `form` is the user's and gets its turns on the calling thread. It shows the fit
// whose turn it is; a pause is meant for all that are under way. Where it is aborted, the fit whose turn it was is the
// last one with an account and an End, and later models stay what they were.
void FitSideBySide(const SeparateFits& fits, const SolveData& data, const Settings& settings, std::string& log,
                   SolveProgress& form);

}  // namespace quorvex
