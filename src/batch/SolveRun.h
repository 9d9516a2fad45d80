#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "batch/RunState.h"
#include "batch/cfgSolve.h"
#include "core/LocaleText.h"
#include "core/Settings.h"
#include "sheet/SeriesData.h"

namespace quorvex {

// Where a run is read and computed: in its turn with the form and the log of all runs, or ahead of it with its own.
struct RunSite {
  const Settings& Preferences;
  const LocaleText& Locale;
  const SeriesData* Series;  // null where the runs are no series
  bool InTable;              // the runs have numbers
  cfgSolve& Form;
  std::string& Log;
  std::function<void()> BeforeWaiting;  // prints the log before a database is waited for
};

// Reads the data of run number `run`, from 0, and fits its models. False where there is nothing to be written; `end` is
// set where that is no abort.
bool SolveRun(RunState& state, std::size_t run, const RunSite& site, RunEnd& end);

// What depends on the answer alone and is missing yet: diagnoses, and whether there is a solution where one is
// required. False as above.
bool JudgeRun(RunState& state, const RunSite& site, RunEnd& end);

}  // namespace quorvex
