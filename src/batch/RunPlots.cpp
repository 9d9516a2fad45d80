#include "batch/RunPlots.h"

#include <string>
#include <utility>

#include "batch/WritePlot.h"
#include "macro/MacroText.h"
#include "plot/PictureMessages.h"

namespace quorvex {

int RunPlots::Write(const MacroSetup& setup, const ModelCollection& models, const SolveData& unsorted) {
  const MacroPlot plot = MakeMacroPlot(models, unsorted, setup, session_.Preferences, session_.Locale, form_);
  if (!writer_.GoOn()) return writer_.Abort();
  for (const std::string& warning : plot.Warnings) log_.Line("Warning: " + warning);
  if (!plot.Fault.empty()) {
    log_.Fault(NotDrawnText(NamesInOneLine(setup.PlotFile), plot.Fault));
    return kNotDrawn;
  }
  if (plot.Text.empty()) return 0;

  const std::string whyNoPictures = drawer_.WhyNone();
  bool told = whyNoPictures.empty();
  const auto canBe = [&](const std::string& name) {
    if (whyNoPictures.empty() || PictureFormatOf(name) == nullptr) return true;
    if (!std::exchange(told, true)) log_.Line("Warning: " + whyNoPictures);
    return false;
  };
  const auto content = [&](const std::string& name) {
    return PlotContent(plot.Text, name, drawer_, [this] { return writer_.GoOn(); });
  };
  return writer_.Write(setup, content, canBe);
}

}  // namespace quorvex
