#pragma once

#include <optional>
#include <string>

#include "sheet/SheetEdit.h"

namespace quorvex {

enum class FactorMode { Scale, Translate };

// The selection that Scale and Translate change; refused unless it is one range.
std::optional<CellRange> FactorRange(const SheetEdit& edit);

// What the dialog asks for in its mode.
std::string FactorPrompt(FactorMode mode);

// Multiplies each number of the range by the factor, or adds it. `ScaleText` is the factor as typed in the user's
// locale. Refused as a whole where a result would overflow.
bool ApplyFactor(const SheetEdit& edit, const CellRange& range, FactorMode mode, const std::string& ScaleText);

}  // namespace quorvex
