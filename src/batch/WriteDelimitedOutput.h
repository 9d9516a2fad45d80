#pragma once

#include "batch/DiagnosisRows.h"
#include "batch/LineSink.h"
#include "core/SolveData.h"
#include "engine/ModelCollection.h"
#include "macro/MacroSetup.h"

namespace quorvex {

// Writes the answers in the spreadsheet layout: the order and values of the structured one in rows of cells, separated
// by the macro's OutputDelimit, without sections and indents. Texts of a diagnosis stand in quotes where they hold the
// delimiter.
void WriteDelimitedOutput(const ModelCollection& models, const SolveData& data, const MacroSetup& setup,
                          const RunDiagnoses& diagnoses, const LineSink& line);

}  // namespace quorvex
