#include "solve/RunSolve.h"

#include "core/NumberText.h"
#include "engine/FitSharingInput.h"

namespace quorvex {
namespace {

std::string Summary(std::size_t solved, std::size_t asked) {
  if (solved == asked) return "Solution was successful.";
  if (asked == 1) return "Solution Failed. View log for details.";
  return std::to_string(solved) + " of the " + std::to_string(asked) + " models solved.  View log for details.";
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
  std::shared_ptr<const InputPoints> shared;
  for (const auto& model : project.Models) {
    if (form.Aborted || !model->Solve || !begin(model->id, model->NumDependentVar())) continue;
    FitSharingInput(*model, data, settings, log, form, shared);
    if (model->Solved) outcome.Solved.push_back({model.get(), nullptr});
  }
  for (InterpClass& curve : project.Interpolations) {
    if (form.Aborted || !curve.Solve || !begin(curve.id, 0)) continue;
    if (curve.Fit(data, log)) outcome.Solved.push_back({nullptr, &curve});
  }
  if (!form.Aborted) form.SetProgress(done, done);
  outcome.Aborted = form.Aborted;

  // What was chosen for this run does not hold for the next.
  for (const auto& model : project.Models) model->Solve = model->SpecifyIC = model->SpecifyICComplete = false;
  for (InterpClass& curve : project.Interpolations) curve.Solve = false;
  form.Show(false);
  if (outcome.Aborted) LogAbort(log);
  return outcome;
}

void TellOutcome(const SolveOutcome& outcome, Prompter& user) {
  if (outcome.Asked == 0) return user.Refuse("There are no equations to solve.");
  user.Inform(outcome.Aborted ? kSolutionAborted : Summary(outcome.Solved.size(), outcome.Asked));
}

}  // namespace quorvex
