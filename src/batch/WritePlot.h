#pragma once

#include <functional>
#include <string>
#include <vector>

#include "batch/PlotDrawer.h"
#include "core/LocaleText.h"
#include "core/Result.h"
#include "core/SolveData.h"
#include "engine/ModelCollection.h"
#include "engine/SolveForm.h"
#include "macro/MacroSetup.h"

namespace quorvex {

// A plot that a macro asks for.
struct MacroPlot {
  std::string Text;                   // of its file; empty where there is none
  std::vector<std::string> Warnings;  // what it does without, or why there is none, a sentence each
  std::string Fault;                  // why it cannot be drawn, a sentence
};

// The plot of a run's solved models and points, in the order of their source: the one that the desktop program shows
// where it opens the run's project and plots the models that the macro names. The look is that of new plots, and then
// the one of the macro's template. Where the form is aborted it has no text.
MacroPlot MakeMacroPlot(const ModelCollection& models, const SolveData& unsorted, const MacroSetup& setup,
                        Settings& settings, const LocaleText& locale, SolveForm& form);

// Why the file of a template cannot be read, in a sentence; empty where it can.
std::string TemplateFault(const std::string& name);

// Said of a plot, or of several.
std::string NotDrawnText(const std::string& names, const std::string& why);

// What goes into a file of that name: the plot, told by the text of its own file, as the ending asks for it. Fails with
// a sentence. `goOn` is asked while it is drawn.
Result<std::string> PlotContent(const std::string& plotText, const std::string& name, PlotDrawer& drawer,
                                const std::function<bool()>& goOn);

}  // namespace quorvex
