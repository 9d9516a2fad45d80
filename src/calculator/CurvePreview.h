#pragma once

#include "plot/PlotClass.h"

namespace quorvex {

// Lets a small plot show nothing but this curve, on linear axes. False, with a message, where it cannot be drawn.
bool PreviewCurve(PlotClass& plot, PlotSeries curve, const Settings& settings, Prompter& user);

}  // namespace quorvex
