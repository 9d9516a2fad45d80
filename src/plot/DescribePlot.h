#pragma once

#include <string>

#include "plot/PlotPage.h"

namespace quorvex {

// What a plot shows, in sentences for those who cannot see it: its axes with their ranges, and each series with its
// points or its model.
std::string DescribePlot(const PlotPage& plot);

}  // namespace quorvex
