#include "batch/RunPlots.h"

#include <optional>
#include <utility>

#include "batch/WritePlot.h"
#include "core/NumberText.h"
#include "engine/FitEach.h"
#include "macro/BatchStatus.h"
#include "macro/MacroText.h"
#include "plot/PictureMessages.h"

namespace quorvex {

std::optional<std::string> RefusePlot(const std::string& name, MacroFiles& files) {
  std::optional<std::string> refusal = files.RefuseInput("plot", name);
  return refusal ? refusal : files.RefuseOther(Writing::Plot, name);
}

bool RunPlots::GoOn() {
  form_.Yield();
  return !form_.Aborted;
}

int RunPlots::Write(const MacroSetup& setup, const ModelCollection& models, const SolveData& unsorted) {
  const MacroPlot plot = MakeMacroPlot(models, unsorted, setup, session_.Preferences, session_.Locale, form_);
  if (!GoOn()) {
    LogAbort(log_.Text);
    return kNotDrawn;
  }
  for (const std::string& warning : plot.Warnings) log_.Line("Warning: " + warning);
  if (!plot.Fault.empty()) {
    log_.Fault(NotDrawnText(NamesInOneLine(setup.PlotFile), plot.Fault));
    return kNotDrawn;
  }
  if (plot.Text.empty()) return 0;

  const std::string whyNoPictures = drawer_.WhyNone();
  bool told = whyNoPictures.empty();
  int error = 0;
  for (std::string_view names = setup.PlotFile; !names.empty();) {
    const std::string name(TakeLine(names));
    if (!whyNoPictures.empty() && PictureFormatOf(name) != nullptr) {
      if (!std::exchange(told, true)) log_.Line("Warning: " + whyNoPictures);
      continue;
    }
    if (setup.UseDDE) form_.DDEText("Writing plot file '" + name + " '");
    log_.Line("Writing plot to " + name);
    std::string fault;
    const int failed = WriteOne(name, plot.Text, fault);
    // Of an end that was asked for the log speaks once, whatever was still to be drawn.
    if (!GoOn() && (failed != 0 || !names.empty())) {
      LogAbort(log_.Text);
      return kNotDrawn;
    }
    if (!fault.empty()) log_.Fault(fault);
    if (failed != 0) error = failed;
  }
  return error;
}

int RunPlots::WriteOne(const std::string& name, const std::string& text, std::string& fault) {
  if (const std::optional<std::string> refusal = RefusePlot(name, files_)) {
    fault = *refusal;
    return kAccessError;
  }
  const int failed = WritePlot(
      text, name, drawer_, [this] { return GoOn(); }, file_, fault);
  if (failed == 0) files_.NoteWritten(Writing::Plot, name);
  return failed;
}

}  // namespace quorvex
