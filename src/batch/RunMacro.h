#pragma once

#include <string>

#include "batch/MacroRequest.h"
#include "batch/PlotDrawer.h"
#include "batch/cfgSolve.h"
#include "core/Session.h"

namespace quorvex {

// How an unattended run ended.
struct MacroOutcome {
  bool Normal = false;  // normal termination; a run with failures in it may still end normally
  int Status = 0;       // BatchStatus, 0 for success
  std::string Message;  // a sentence for the user that no log could take
};

// The whole unattended mode: reads the macro file, then reads data, fits, writes and keeps the log. The macro's solver
// limits replace those of the session. Failures end in the status, never in an exception.
MacroOutcome RunMacro(const MacroRequest& request, Session& session, cfgSolve& form, PlotDrawer& drawer);

}  // namespace quorvex
