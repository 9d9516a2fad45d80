#pragma once

#include <functional>
#include <string>
#include <vector>

#include "batch/PlotDrawer.h"
#include "core/LocaleText.h"
#include "core/SaveFile.h"
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

// What stands in the place of a file error's number where a plot cannot be drawn.
inline constexpr int kNotDrawn = -1;
// The file error of a name that can't be one.
inline constexpr int kBadFileName = 52;
// Said of a plot, or of several.
std::string NotDrawnText(const std::string& names, const std::string& why);

// Whether somebody may wait at the other end: neither a file nor the place of one.
bool IsPipeOrDevice(const std::string& path);

// Why a plot can't have that name: its ending is none, or it is a pipe or a device. Returns 0 or the number of the file
// error, and a sentence in `fault`.
int PlotNameError(const std::string& name, const std::string& path, std::string& fault);

// Why a path is none of a file: it leads to a pipe or a device, which nobody may be there to read. Returns 0 or the
// number of the file error, and a sentence about `what`, such as "plot", in `fault`.
int NoFileError(const std::string& what, const std::string& name, const std::string& path, std::string& fault);

// Writes a plot, told by the text of its file, as what the ending of the name asks for; pipes and devices are refused,
// since nobody may be there to read what else would be waited for. Returns 0 or the number of the
// file error, and a sentence in `fault`.
int WritePlot(const std::string& plotText, const std::string& name, PlotDrawer& drawer,
              const std::function<bool()>& goOn, ReplacementFile& file, std::string& fault);

}  // namespace quorvex
