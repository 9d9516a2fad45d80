#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "batch/MacroFiles.h"
#include "batch/PlotDrawer.h"
#include "batch/cfgSolve.h"
#include "core/SaveFile.h"
#include "core/Session.h"
#include "core/SolveData.h"
#include "engine/ModelCollection.h"
#include "macro/MacroLog.h"
#include "macro/MacroSetup.h"

namespace quorvex {

// The plots of a macro's runs.
class RunPlots {
 public:
  RunPlots(Session& session, cfgSolve& form, PlotDrawer& drawer, MacroFiles& files, MacroLog& log)
      : session_(session), form_(form), drawer_(drawer), files_(files), log_(log) {}

  // Writes the plots that the setup asks for, of the models and the points of a run as their source has them. Returns
  // 0, or the number of the file error of the last plot that could not be written, or kNotDrawn; the others are there.
  // What could be no plot at all is no error.
  int Write(const MacroSetup& setup, const ModelCollection& models, const SolveData& unsorted);

 private:
  int WriteOne(const std::string& name, const std::string& text, std::string& fault);
  bool GoOn();

  Session& session_;
  cfgSolve& form_;
  PlotDrawer& drawer_;
  MacroFiles& files_;
  MacroLog& log_;
  ReplacementFile file_{FileCare::Answer};
};

// Why a plot may not be written over what the macro reads or writes; nothing where it may.
std::optional<std::string> RefusePlot(const std::string& name, MacroFiles& files);

}  // namespace quorvex
