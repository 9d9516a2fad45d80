#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "core/Result.h"
#include "core/Settings.h"
#include "plot/PlotPage.h"
#include "project/Project.h"

namespace quorvex {

// What a project has for a plot that is open, each under its name as the legend: the data of its sheet, and copies of
// its solutions as curves or surfaces where the plot has a place for their variables. A plot of two dimensions takes
// the data of several variables with one X each.
std::vector<PlotSeries> AvailableGraphs(Project& project, const PlotPage& plot, const Settings& settings);

inline constexpr const char* kNoGraphs = "The project has no data or solutions that this plot can show.";

// Those of them that are chosen, by their numbers from 0. Fails where none is, or where one has no value somewhere.
Result<std::vector<PlotSeries>> ChosenGraphs(const std::vector<PlotSeries>& available,
                                             std::span<const std::size_t> chosen, const PlotPage& plot);

}  // namespace quorvex
