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

void FitEach(const ModelCollection& models, const SolveData& data, const Settings& settings, std::string& log,
             SolveForm& form, const std::function<void(const ModelClass&)>& begin, const std::function<void()>& end) {
  std::shared_ptr<const InputPoints> shared;
  for (const auto& model : models) {
    if (!model->Solve || form.Aborted) continue;
    form.Paused = false;  // was meant for the model before, which ended by itself
    begin(*model);
    FitSharingInput(*model, data, settings, log, form, shared);
    end();
  }
}

void LogAbort(std::string& log) { log.append(NL).append("SOLUTION PROCESS ABORTED BY USER.").append(NL); }

}  // namespace quorvex
