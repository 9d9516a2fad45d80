#pragma once

#include <string>

#include "core/Prompter.h"
#include "core/Settings.h"
#include "plot/PlotPage.h"

namespace quorvex {

// Adds to a plot the series of another plot's file, the solutions and the input data of a project, or the numbers of
// any other file, which is told by its first fields. The plot is then ready for CreateGraph with `Regenerate`. Refused,
// and false with the plot as it was, where there is nothing to add or where the file has another number of variables.
bool ImportPlotData(PlotPage& plot, const std::string& fileName, const Settings& settings, Prompter& user);

}  // namespace quorvex
