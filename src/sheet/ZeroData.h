#pragma once

#include <cstddef>
#include <span>

#include "sheet/SheetEdit.h"

namespace quorvex {

enum class ZeroSign { Negative, Positive };

// Sets every negative, or every positive, number of the chosen columns (counted from 1) to 0.
bool ZeroData(const SheetEdit& edit, ZeroSign sign, std::span<const std::size_t> columns);

}  // namespace quorvex
