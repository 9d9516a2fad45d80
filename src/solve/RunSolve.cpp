#include "solve/RunSolve.h"

#include "core/NumberText.h"
#include "diagnosis/CrossValidation.h"
#include "engine/FitSharingInput.h"

namespace quorvex {
namespace {

// Whether other starts may help where a fit failed: with too few points no search begins.
bool MayBeTriedHarder(const ModelClass& model, const SolveData& data) {
  return model.SolveType == 0 && static_cast<std::size_t>(model.NumDependentVar()) < data.N();
}

}  // namespace

bool CanBeSolved(const ModelClass& model, const DataSheet& sheet) {
  return model.IsValidEquation() && static_cast<std::size_t>(model.NumIndependentVar()) == sheet.IndependentVariables;
}

SolveOutcome RunSolve(Project& project, const SolveData& data, const Settings& settings, std::string& log,
                      SolveProgress& form) {
  SolveOutcome outcome;
  for (const auto& model : project.Models) {
    model->Solve = model->Solve && CanBeSolved(*model, project.Sheet);
    if (model->Solve) ++outcome.Asked;
  }
  for (const InterpClass& curve : project.Interpolations)
    if (curve.Solve) ++outcome.Asked;
  if (outcome.Asked == 0) return outcome;
  form.Show(true);
  int done = 0;
  const auto begin = [&](const std::string& id, int parameters) {
    form.Paused = false;  // was meant for the model before, which ended by itself
    form.SetParameterCount(parameters);
    form.SetStatusLabel("Solving Model " + FirstCharacters(id, 45) + "...");
    form.SetProgress(done++, static_cast<int>(outcome.Asked));
    return !form.Aborted;
  };
  Settings harder = settings;  // for a search that has failed
  harder.TryHarder = settings.Flag("tryharder");
  std::shared_ptr<const InputPoints> shared;
  for (const auto& model : project.Models) {
    if (form.Aborted || !model->Solve || !begin(model->id, model->NumDependentVar())) continue;
    const std::size_t told = log.size();
    FailedFit before{{model.get(), nullptr},
                     model->SpecifyICComplete,
                     model->CoefficientValues,
                     model->ICRanges,
                     settings.TryHarder};
    FitSharingInput(*model, data, settings, log, form, shared);
    if (!model->Solved && !form.Aborted && !settings.TryHarder && harder.TryHarder && MayBeTriedHarder(*model, data)) {
      form.Paused = false;
      form.SetStatusLabel("Trying harder: " + FirstCharacters(model->id, 35) + "...");
      log.resize(told);  // what goes on begins with the same search, and tells of it again
      TakeStart(before, *model);
      FitSharingInput(*model, data, harder, log, form, shared);
      before.TriedHarder = true;
    }
    if (model->Solved)
      outcome.Solved.push_back(before.Object);
    else
      outcome.Failed.push_back(std::move(before));
  }
  for (InterpClass& curve : project.Interpolations) {
    if (form.Aborted || !curve.Solve || !begin(curve.id, 0)) continue;
    if (curve.Fit(data, log))
      outcome.Solved.push_back({nullptr, &curve});
    else
      outcome.Failed.push_back({{nullptr, &curve}});
  }
  if (!form.Aborted) form.SetProgress(done, done);
  outcome.Aborted = form.Aborted;
  if (outcome.Aborted) outcome.Failed.clear();
  // An abort from here on leaves the solutions, and those without an error behind the others.
  if (!form.Aborted && IsRankingKey(settings.Integer("sortindex"))) {
    form.SetStatusLabel("Cross-validating the solutions...");
    CrossValidate(project.Models, data, 0, 0, settings, form);
  }

  // What was chosen for this run does not hold for the next.
  for (const auto& model : project.Models) model->Solve = model->SpecifyIC = model->SpecifyICComplete = false;
  for (InterpClass& curve : project.Interpolations) curve.Solve = false;
  form.Show(false);
  if (outcome.Aborted) LogAbort(log);
  return outcome;
}

std::string Summary(const SolveOutcome& outcome) {
  const std::size_t solved = outcome.Solved.size();
  if (outcome.Aborted) return kSolutionAborted;
  if (solved == outcome.Asked) return "Solution was successful.";
  if (outcome.Asked == 1) return "Solution Failed. View log for details.";
  return std::to_string(solved) + " of the " + std::to_string(outcome.Asked) + " models solved.  View log for details.";
}

void TellOutcome(const SolveOutcome& outcome, Prompter& user) {
  if (outcome.Asked == 0) return user.Refuse("There are no equations to solve.");
  user.Inform(Summary(outcome));
}

}  // namespace quorvex
