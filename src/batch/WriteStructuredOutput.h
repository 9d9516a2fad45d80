#pragma once

#include "batch/MacroSetup.h"
#include "core/SaveFile.h"
#include "core/SolveData.h"
#include "engine/ModelCollection.h"

namespace quorvex {

// Writes the answers in the structured layout: nested B_ and E_ sections, indented. `file` is the one to do it
// with; a run has one for all its outputs. Returns 0 or the number of the file error.
int WriteStructuredOutput(const ModelCollection& models, const SolveData& data, const MacroSetup& setup,
                          ReplacementFile& file);

}  // namespace quorvex
