#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <stop_token>
#include <string>
#include <vector>

#include "batch/MacroFiles.h"
#include "batch/RunState.h"
#include "core/Session.h"
#include "macro/MacroLog.h"
#include "macro/ParameterFile.h"
#include "macro/SubstituteParameters.h"
#include "sheet/SeriesData.h"

namespace quorvex {

// Tells which runs of a table have to be solved anew, by what their parameters changed since the run before.
class ChangedInputs {
 public:
  struct Changes {
    bool Inputs = false;   // the run has to be solved anew
    bool Reports = false;  // what is told of the answer has to be computed anew
  };
  // Of the run whose parameters have been put into the macro.
  Changes Note(Macro& macro);

 private:
  std::vector<std::string> texts_ = std::vector<std::string>(SubstitutedFields().size());
  std::vector<Box> bounds_;
  std::vector<std::vector<DerivedQuantity>> reports_;
};

// A run of a table that may be solved before its turn.
struct RunAhead {
  std::unique_ptr<RunState> State;  // null where it is to be solved in its turn
  ChangedInputs::Changes Changes;
  bool IsSolved = false;  // there is something to be written
  bool IsOutOfMemory = false;
  std::string Log;
  std::vector<std::string> Told;  // what a process waiting on the runs reads
  RunEnd End;
};

// Solves runs of a table ahead of their turn, in memory alone. Nothing of them depends on the runs before: left to
// their turn are those of a database, whose queries may change it, and those whose data file was not there when all
// began, since the run before may write it. No run writes a file that was.
class RunsAhead {
 public:
  // `state` is that of the first run, before any parameters. `series` is null where the runs are none.
  RunsAhead(const RunState& state, const ParameterTable& table, const SeriesData* series, const MacroFiles& files,
            const Session& session, int threads, std::size_t runs);

  // On how many threads runs first to end - 1 are solved: on the calling one alone where it is no use.
  static int Threads(const RunState& state, const ParameterTable& table, std::size_t first, std::size_t end,
                     const SeriesData* series, const Session& session);

  // How many runs at most are held in memory.
  std::size_t Ahead() const { return ahead_; }
  // In the order of the runs, on the thread that has their turns.
  RunAhead Prepare(std::size_t run);
  // On any thread.
  void Solve(RunAhead& ahead, std::size_t run, std::stop_token stop) const;
  // Takes back the state of a run that no run to come needs.
  void Return(std::unique_ptr<RunState> state) { free_.push_back(std::move(state)); }

 private:
  const ParameterTable& table_;
  const SeriesData* const series_;
  const MacroFiles& files_;
  const LocaleText& locale_;
  std::size_t ahead_;
  Settings preferences_;  // of a run among others
  RunState state_;        // of the run prepared last
  MacroSetup written_;
  int status_ = 0;
  MacroLog log_{written_, status_};
  ChangedInputs changed_;
  std::vector<std::unique_ptr<RunState>> free_;
};

}  // namespace quorvex
