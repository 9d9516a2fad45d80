#pragma once

#include <string>
#include <string_view>

#include "batch/DiagnosisRows.h"
#include "core/SolveData.h"
#include "macro/MacroReader.h"

namespace quorvex {

// How the log's summary tells of a run.
inline constexpr std::string_view kRunSuccessful = "Run Successful", kRunFailed = "Run Failed",
                                  kRunSkipped = "Run Skipped", kRunIncomplete = "Run Incomplete",
                                  kRunOutOfMemory = "Run Failed: Out of memory";

// How a run ended, for the summary, the status and the line of results.
struct RunEnd {
  std::string_view Summary;  // empty where it doesn't tell of the run
  int Status = 0;
  std::string Message;
};

// What a run is computed from, and what came of it. The runs of a table that are answered alike share one.
struct RunState {
  Macro Given;  // with the parameters of the run in its setup
  SolveData Data, Unsorted;
  RunDiagnoses Diagnoses;
  bool HasModels = false;  // the models tell of the data
  std::string Output;      // of the run that was solved ahead of its turn; empty where that is still to be made

  // Forgets the answer: what it held makes room.
  void Clear();
};

// Another one of the same macro, without an answer, whose models are copies.
RunState TwinOf(const RunState& state);

// Gives a twin the setup of the other, and models without an answer whose setup is that of the other's.
void TakeSetup(RunState& twin, const RunState& state);

}  // namespace quorvex
