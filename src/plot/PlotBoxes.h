#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/PlotText.h"
#include "plot/DeviceMetrics.h"
#include "plot/PlotPage.h"

namespace quorvex {

// Draws the plot's title, as measured, over the middle of the frame or, where it is long, as near to it as it stays
// within the page. Returns where it stands.
DeviceRect DrawPageTitle(DrawingSurface& surface, const PlotPage& plot, const DeviceMetrics& metrics,
                         const PlotText& title, const DeviceRect& frame);

// How much of what is drawn a box there would hide, in any measure.
using HiddenBy = std::function<double(const DeviceRect&)>;

// Draw the legend, a row for each displayed series with a text, and the footnote. A box that nobody has placed yet
// goes into a corner: the legend into that of the frame where it hides least, the upper right one if it can, the
// footnote into the lower left one of the page. Return where it stands, an empty rectangle where there is nothing to
// draw, and write its size into the plot.
DeviceRect DrawLegend(DrawingSurface& surface, PlotPage& plot, const DeviceMetrics& metrics, const DeviceRect& frame,
                      const HiddenBy& hidden);
DeviceRect DrawFootNote(DrawingSurface& surface, PlotPage& plot, const DeviceMetrics& metrics);

// The lines of a footnote, without empty ones at the end.
std::vector<std::string> SplitFootNoteLines(std::string_view text);

}  // namespace quorvex
