#include "engine/TryHarder.h"

#include "engine/FitRun.h"
#include "engine/ModelClass.h"

namespace quorvex {

bool FitHarder(ModelClass& model, const SolveData& data, const Settings& settings, std::string& log, SolveForm& form) {
  return FitRun(model, data, settings, log, form).Nonlinear();
}

}  // namespace quorvex
