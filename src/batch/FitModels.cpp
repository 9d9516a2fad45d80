#include "batch/FitModels.h"

#include "core/NumberText.h"
#include "diagnosis/CrossValidation.h"
#include "diagnosis/DiagnosisChoices.h"
#include "engine/FitSharingInput.h"

namespace quorvex {
namespace {

// A long name is cut for the label, which has one line.
std::string Shortened(const std::string& text) {
  const std::string first = FirstCharacters(text, 50);
  return first == text ? text : first + "...";
}

}  // namespace

bool FitModels(cfgSolve& form, const ModelCollection& models, const SolveData& data, const MacroSetup& setup,
               const Settings& settings, std::string& log) {
  if (setup.ShowProgress) form.Show(true);
  int count = 0;
  for (const auto& model : models) {
    // A macro may name models of more variables than its data have.
    if (model->NumIndependentVar() > setup.IndependentVariables) model->Solve = false;
    if (model->Solve) ++count;
  }
  int done = 0;
  const auto begin = [&](const ModelClass& model) {
    form.SetParameterCount(model.NumDependentVar());
    form.SetProgress(++done, 2 * count);
    const std::string text = "Solving Model " + (model.cfgID.empty() ? model.id : model.cfgID);
    if (setup.UseDDE) form.DDEText(text);
    form.SetStatusLabel(Shortened(text));
  };
  FitEach(models, data, settings, log, form, begin, [&] { form.SetProgress(++done, 2 * count); });
  if (!form.Aborted && setup.SortKey == kSortByCV) {
    form.SetStatusLabel("Cross-validating the solutions");
    CrossValidate(models, data, setup.CrossValidation, DiagnosisChoices().Seed, settings, form);
  }
  if (form.Aborted) {
    if (setup.UseDDE) form.DDEText("Solution process aborted by user.");
    if (setup.ShowMessageBox) form.ShowMessageBox(kSolutionAborted);
    LogAbort(log);
  }
  form.Show(false);
  return count > 0;
}

}  // namespace quorvex
