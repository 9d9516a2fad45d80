#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "batch/DiagnosisRows.h"
#include "core/SolveData.h"
#include "engine/ModelCollection.h"

namespace quorvex {

// A run as its line in the result file tells of it.
struct RunResult {
  std::size_t Number = 1;                                       // of its row in the whole table, from 1
  std::vector<std::pair<std::string, std::string>> Parameters;  // name and value
  std::string Data;                                             // the source as answers name it
  std::string Series;                                           // name of its column in the data; else empty
  int Status = 0;                                               // of this run
  std::string Message;                                          // why it is not 0, a sentence; else empty
};

// The line: one JSON object, without a line end, as docs/result-schema.json has it. The models are those to be solved,
// ranked by the setup's SortKey, and behind them what was not solved in the order of the collection. With its
// Diagnostics each has its diagnosis.
std::string ResultLine(const RunResult& run, const ModelCollection& models, const SolveData& data,
                       const MacroSetup& setup, const RunDiagnoses& diagnoses);
// The same of a run that came to no models.
std::string ResultLine(const RunResult& run);
// What its line begins with, by number and parameters alone.
std::string ResultBeginning(const RunResult& run);

}  // namespace quorvex
