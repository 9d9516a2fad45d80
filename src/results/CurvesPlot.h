#pragma once

#include <memory>
#include <vector>

#include "plot/PlotPage.h"

namespace quorvex {

// A plot of curves that were computed, each of several in a colour and line style of its own.
std::unique_ptr<PlotPage> CurvesPlot(std::vector<PlotSeries> curves, const Settings& settings,
                                     const LocaleText& locale);

}  // namespace quorvex
