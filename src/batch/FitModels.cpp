#include "batch/FitModels.h"

#include "core/Files.h"
#include "diagnosis/CrossValidation.h"
#include "engine/FitEach.h"
#include "sheet/ComputeWeights.h"

namespace quorvex {
namespace {

// Takes the form away, with what is said where the user ended the work.
void EndWork(cfgSolve& form, const MacroSetup& setup, std::string& log) {
  if (form.Aborted) {
    if (setup.UseDDE) form.DDEText("Solution process aborted by user.");
    if (setup.ShowMessageBox) form.ShowMessageBox(kSolutionAborted);
    LogAbort(log);
  }
  form.Show(false);
}

void Warn(const std::vector<std::string>& warnings, std::string& log) {
  for (const std::string& warning : warnings) log.append("Warning: " + warning).append(NL);
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
  const auto begin = [&](const ModelClass& model, int coefficients) {
    form.SetParameterCount(coefficients);
    form.SetProgress(++done, 2 * count);
    const std::string text = "Solving Model " + (model.cfgID.empty() ? model.id : model.cfgID);
    if (setup.UseDDE) form.DDEText(text);
    form.ShowStatus(text);
  };
  if (settings.AbsoluteDeviations) Warn(DeviationWarnings(data), log);
  FitEach(models, data, settings, log, form, begin, [&] { form.SetProgress(++done, 2 * count); });
  if (!form.Aborted && setup.SortKey == kSortByCV) {
    form.SetStatusLabel("Cross-validating the solutions");
    CrossValidate(models, data, setup.CrossValidation, DiagnosisChoices().Seed, settings, form);
  }
  EndWork(form, setup, log);
  return count > 0;
}

DiagnosisChoices ChoicesOf(const MacroSetup& setup) {
  return {.ProfileLimits = setup.ProfileLimits,
          .Bootstrap = setup.Bootstrap,
          .ResampleCases = setup.ResampleCases,
          .CrossValidation = setup.CrossValidation};
}

RunDiagnoses DiagnoseModels(cfgSolve& form, const ModelCollection& models, const SolveData& data,
                            const MacroSetup& setup, const Settings& settings, std::string& log) {
  if (setup.ShowProgress) form.Show(true);
  constexpr const char* kDiagnosing = "Diagnosing models";
  if (setup.UseDDE) form.DDEText(kDiagnosing);
  form.ShowStatus(kDiagnosing);
  log.append(kDiagnosing).append(NL);
  RunDiagnoses diagnoses;
  diagnoses.Models = Diagnose(models, data, ChoicesOf(setup), setup.SortKey, settings, form, diagnoses.Warnings);
  if (form.Aborted) diagnoses = {};
  Warn(diagnoses.Warnings, log);
  // The log has these already.
  if (settings.AbsoluteDeviations && !form.Aborted)
    for (std::string& warning : DeviationWarnings(data)) diagnoses.Warnings.push_back(std::move(warning));
  EndWork(form, setup, log);
  return diagnoses;
}

}  // namespace quorvex
