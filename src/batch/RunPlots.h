#pragma once

#include "batch/MacroFiles.h"
#include "batch/NamedOutputs.h"
#include "batch/PlotDrawer.h"
#include "batch/cfgSolve.h"
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
      : session_(session), form_(form), drawer_(drawer), log_(log), writer_(kPlotOutputs, form, files, log) {}

  // Writes the plots that the setup asks for, of the models and the points of a run as their source has them. Returns
  // what NamedWriter does. What could be no plot at all is no error.
  int Write(const MacroSetup& setup, const ModelCollection& models, const SolveData& unsorted);

 private:
  Session& session_;
  cfgSolve& form_;
  PlotDrawer& drawer_;
  MacroLog& log_;
  NamedWriter writer_;
};

}  // namespace quorvex
