#pragma once

#include "batch/MacroSetup.h"
#include "core/SaveFile.h"
#include "core/SolveData.h"
#include "engine/ModelCollection.h"

namespace quorvex {

// Writes the answers in the spreadsheet layout: the order and values of the structured one in rows of cells, separated
// by the macro's OutputDelimit, without sections and indents. `file` is the one to do it with; a run has one for all
// its outputs. Returns 0 or the number of the file error.
int WriteDelimitedOutput(const ModelCollection& models, const SolveData& data, const MacroSetup& setup,
                         ReplacementFile& file);

}  // namespace quorvex
