#include "solve/RunSolve.h"

#include "core/NumberText.h"
#include "diagnosis/CrossValidation.h"
#include "engine/FitEach.h"
#include "engine/FitSideBySide.h"

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
  const bool triesHarder = settings.Flag("tryharder");  // where a search has failed
  SeparateFits fits;
  std::vector<FailedFit> starts;
  for (const auto& model : project.Models) {
    if (!model->Solve) continue;
    fits.Models.push_back(model.get());
    starts.push_back({{model.get(), nullptr},
                      model->SpecifyICComplete,
                      model->CoefficientValues,
                      model->ICRanges,
                      settings.TryHarder});
  }
  fits.Fit = [&](std::size_t i, const Settings& given, std::string& account, SolveProgress& own) {
    ModelClass& model = *fits.Models[i];
    const std::size_t told = account.size();
    model.Fit(data, given, account, own);
    if (model.Solved || own.Aborted || given.TryHarder || !triesHarder || !MayBeTriedHarder(model, data)) return;
    Settings harder = given;
    harder.TryHarder = true;
    own.Paused = false;
    own.SetStatusLabel("Trying harder: " + FirstCharacters(model.id, 35) + "...");
    account.resize(told);  // what goes on begins with the same search, and tells of it again
    TakeStart(starts[i], model);
    model.Fit(data, harder, account, own);
    starts[i].TriedHarder = true;
  };
  // By what was noted before: the model itself may be in the hands of another thread.
  fits.Begin = [&](std::size_t i) { begin(fits.Models[i]->id, static_cast<int>(starts[i].Values.size())); };
  fits.End = [&](std::size_t i) {
    if (fits.Models[i]->Solved)
      outcome.Solved.push_back(starts[i].Object);
    else
      outcome.Failed.push_back(std::move(starts[i]));
  };
  FitSideBySide(fits, data, settings, log, form);
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
