#pragma once

#include <optional>
#include <string_view>

#include "core/SolveData.h"

namespace quorvex {

// The quantity of the data that a rule for initial estimates scales by: "n", "ymin", "ymax", "yavg", "(ymax-ymin)", and
// of the independent variable `variable` (from 1), named without a number: "xmin", "xmax", "xavg", "(xmax-xmin)".
// Nothing for any other name, or for one about X where `variable` is nothing. Throws NumericFault where the data do not
// have that variable, or no point.
std::optional<double> QuantityOf(std::string_view name, const SolveData& data, std::optional<int> variable);

}  // namespace quorvex
