#include "batch/FitModels.h"

#include "core/Files.h"

namespace quorvex {
namespace {

// A long name is cut for the label, which has one line.
std::string Shortened(const std::string& text) { return text.size() > 50 ? text.substr(0, 50) + "..." : text; }

}  // namespace

bool FitModels(cfgSolve& form, const ModelCollection& models, const SolveData& data, const MacroSetup& setup,
               const Settings& settings, std::string& log) {
  if (setup.ShowProgress) form.Show(true);
  int count = 0;
  for (const auto& model : models) {
    if (model->NumIndependentVar() > setup.IndependentVariables) model->Solve = false;
    if (model->Solve) ++count;
  }
  int done = 0;
  for (const auto& model : models) {
    if (!model->Solve || form.Aborted) continue;
    form.SetProgress(++done, 2 * count);
    const std::string text = "Solving Model " + (model->cfgID.empty() ? model->id : model->cfgID);
    if (setup.UseDDE) form.DDEText(text);
    form.SetStatusLabel(Shortened(text));
    model->Fit(data, settings, log, form);
    form.SetProgress(++done, 2 * count);
  }
  if (form.Aborted) {
    if (setup.UseDDE) form.DDEText("Solution process aborted by user.");
    if (setup.ShowMessageBox) form.ShowMessageBox("Solution Process Aborted.");
    log.append(NL).append("SOLUTION PROCESS ABORTED BY USER.").append(NL);
  }
  form.Show(false);
  return count > 0;
}

}  // namespace quorvex
