#pragma once

#include <span>
#include <vector>

#include "core/LocaleText.h"
#include "core/Settings.h"
#include "plot/PlotClass.h"
#include "sheet/DataSheet.h"

namespace quorvex {

// A plot of the data of a sheet with one independent variable as markers, and the curve "Lowess Smooth" through them
// where there is one. X ascends.
PlotClass SmoothPlot(std::span<const double> x, std::span<const double> y, std::span<const double> smooth,
                     const DataSheet& sheet, const Settings& settings, const LocaleText& locale = {});

}  // namespace quorvex
