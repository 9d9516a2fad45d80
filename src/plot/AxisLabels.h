#pragma once

#include <string>
#include <vector>

#include "plot/AxisScale.h"

namespace quorvex {

// A number pattern that tells the numbers of an axis apart: as many decimals as show each tick to a fiftieth of a step,
// so that equal steps look equal after a zoom, too. With an exponent where the largest number is 1e7 or more, or 1e-7
// or less, and where the axis is logarithmic. Rows have no decimals where none of the ticks needs any.
std::string BuildAutoLabelFormat(const AxisLimits& limits, bool rows = false);

// The numbers at the major ticks, largest first, Ticks + 1 of them. A tick that stands for zero is labelled as exactly
// zero, the last one as exactly Min.
std::vector<std::string> FillAxisLabels(const AxisLimits& limits, const std::string& format);

// Both: with `autoFormat` the pattern in `format` is chosen first. Throws NumericFault for limits without a finite step
// between them.
std::vector<std::string> MakeAxisLabels(const AxisLimits& limits, std::string& format, bool autoFormat,
                                        bool rows = false);

}  // namespace quorvex
