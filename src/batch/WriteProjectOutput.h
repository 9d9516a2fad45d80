#pragma once

#include <string>

#include "core/LocaleText.h"
#include "core/SolveData.h"
#include "engine/ModelCollection.h"
#include "macro/MacroSetup.h"

namespace quorvex {

// Writes the answers as a project file that the desktop opens: the points in the order of their source, the macro's
// comment as notes, its limits, the user-defined and the solved models. Returns 0 or the number of the file error.
int WriteProjectOutput(const ModelCollection& models, const SolveData& unsorted, const MacroSetup& setup,
                       const LocaleText& locale, const std::string& path);

}  // namespace quorvex
