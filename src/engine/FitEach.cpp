#include "engine/FitEach.h"

#include "core/Files.h"
#include "engine/FitSideBySide.h"

namespace quorvex {

void FitEach(const ModelCollection& models, const SolveData& data, const Settings& settings, std::string& log,
             SolveProgress& form, const std::function<void(const ModelClass&, int coefficients)>& begin,
             const std::function<void()>& end) {
  SeparateFits fits;
  std::vector<int> coefficients;
  for (const auto& model : models) {
    if (!model->Solve) continue;
    fits.Models.push_back(model.get());
    coefficients.push_back(model->NumDependentVar());
  }
  fits.Fit = [&](std::size_t i, const Settings& own, std::string& ownLog, SolveProgress& ownForm) {
    fits.Models[i]->Fit(data, own, ownLog, ownForm);
  };
  fits.Begin = [&](std::size_t i) { begin(*fits.Models[i], coefficients[i]); };
  fits.End = [&](std::size_t) { end(); };
  FitSideBySide(fits, data, settings, log, form);
}

void LogAbort(std::string& log) { log.append(NL).append("SOLUTION PROCESS ABORTED BY USER.").append(NL); }

}  // namespace quorvex
