#pragma once

#include <functional>
#include <string_view>

#include "batch/MacroFiles.h"
#include "batch/PlotDrawer.h"
#include "batch/RunAnswers.h"
#include "batch/RunCode.h"
#include "batch/RunPlots.h"
#include "batch/RunReports.h"
#include "batch/RunState.h"
#include "batch/cfgSolve.h"
#include "core/Session.h"
#include "macro/MacroLog.h"

namespace quorvex {

// Writes what the runs of a macro ask for: answers, code, plots and reports.
class RunWriter {
 public:
  RunWriter(Session& session, cfgSolve& form, PlotDrawer& drawer, MacroFiles& files, MacroLog& log)
      : form_(form),
        log_(log),
        answers_(session.Locale, form, files, log),
        plots_(session, form, drawer, files, log),
        code_(form, files, log),
        reports_(session, form, drawer, files, log) {}

  // False where something could not be written; `end` tells either way. `macro` is asked for where a report shows it.
  bool Write(RunState& state, const std::function<ReportedMacro()>& macro, RunEnd& end);

 private:
  // `notMade` says what failed where the error is kNotDrawn.
  int WriteFiles(RunState& state, const std::function<ReportedMacro()>& macro, std::string_view& notMade);

  cfgSolve& form_;
  MacroLog& log_;
  RunAnswers answers_;
  RunPlots plots_;
  RunCode code_;
  RunReports reports_;
};

}  // namespace quorvex
