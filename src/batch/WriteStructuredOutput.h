#pragma once

#include "batch/MacroSetup.h"
#include "core/Files.h"
#include "core/SolveData.h"
#include "engine/ModelCollection.h"

namespace quorvex {

// Writes the answers in the structured layout: nested B_ and E_ sections, indented.
void WriteStructuredOutput(const ModelCollection& models, const SolveData& data, const MacroSetup& setup,
                           TextFile& file);

}  // namespace quorvex
