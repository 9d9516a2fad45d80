#include "batch/RunState.h"

#include <algorithm>
#include <memory>

namespace quorvex {

void RunState::Clear() {
  Data = Unsorted = SolveData();
  Diagnoses = {};
  HasModels = false;
  Output.clear();
  for (const auto& model : Given.Models) model->CopyInputDataFrom(std::make_shared<const InputPoints>());
}

RunState TwinOf(const RunState& state) {
  RunState twin;
  const Macro& macro = state.Given;
  twin.Given = {.Text = macro.Text,
                .Setup = macro.Setup,
                .Models = {},
                .Deferred = macro.Deferred,
                .DeferredIDs = macro.DeferredIDs,
                .DeferredReports = macro.DeferredReports,
                .BlockCount = macro.BlockCount,
                .ModelsCreated = macro.ModelsCreated};
  for (const auto& model : macro.Models) {
    ModelClass* const copy = twin.Given.Models.Add(std::to_string(twin.Given.Models.size()), model->CopyTo());
    const auto redirect = [&](auto& deferred) {
      for (auto& one : deferred)
        if (one.Model == model.get()) one.Model = copy;
    };
    redirect(twin.Given.Deferred);
    redirect(twin.Given.DeferredIDs);
    redirect(twin.Given.DeferredReports);
  }
  return twin;
}

void TakeSetup(RunState& twin, const RunState& state) {
  twin.Given.Setup = state.Given.Setup;
  twin.Output.clear();
  auto to = twin.Given.Models.begin();
  for (const auto& model : state.Given.Models) model->CopyFitTo(**to++);
}

}  // namespace quorvex
