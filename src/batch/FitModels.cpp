#include "batch/FitModels.h"

#include "core/Files.h"

namespace quorvex {
namespace {

// A long name is cut for the label, which has one line: to 50 characters, not bytes.
std::string Shortened(const std::string& text) {
  int characters = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool continues = (static_cast<unsigned char>(text[i]) & 0xC0) == 0x80;
    if (!continues && ++characters > 50) return text.substr(0, i) + "...";
  }
  return text;
}

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
  std::shared_ptr<const InputPoints> shared;
  for (const auto& model : models) {
    if (!model->Solve || form.Aborted) continue;
    form.SetParameterCount(model->NumDependentVar());
    form.SetProgress(++done, 2 * count);
    const std::string text = "Solving Model " + (model->cfgID.empty() ? model->id : model->cfgID);
    if (setup.UseDDE) form.DDEText(text);
    form.SetStatusLabel(Shortened(text));
    model->Fit(data, settings, log, form);
    // Each fit makes its table of the input; models of one run share the first one.
    if (shared != nullptr && *shared == *model->CopyInputDataTo())
      model->CopyInputDataFrom(shared);
    else
      shared = model->CopyInputDataTo();
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
