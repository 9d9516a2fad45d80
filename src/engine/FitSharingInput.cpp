#include "engine/FitSharingInput.h"

#include "core/Files.h"

namespace quorvex {

void FitSharingInput(ModelClass& model, const SolveData& data, const Settings& settings, std::string& log,
                     SolveForm& form, std::shared_ptr<const InputPoints>& shared) {
  model.Fit(data, settings, log, form);
  if (shared != nullptr && *shared == *model.CopyInputDataTo())
    model.CopyInputDataFrom(shared);
  else
    shared = model.CopyInputDataTo();
}

void LogAbort(std::string& log) { log.append(NL).append("SOLUTION PROCESS ABORTED BY USER.").append(NL); }

}  // namespace quorvex
