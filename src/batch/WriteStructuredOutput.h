#pragma once

#include "batch/DiagnosisRows.h"
#include "batch/LineSink.h"
#include "core/SolveData.h"
#include "engine/ModelCollection.h"
#include "macro/MacroSetup.h"

namespace quorvex {

// Writes the answers in the structured layout: nested B_ and E_ sections, indented. With the setup's Diagnostics each
// model's section ends with its diagnosis, and behind them stand those without a solution, and the warnings.
void WriteStructuredOutput(const ModelCollection& models, const SolveData& data, const MacroSetup& setup,
                           const RunDiagnoses& diagnoses, const LineSink& line);

}  // namespace quorvex
