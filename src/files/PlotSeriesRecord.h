#pragma once

#include "files/RecordIo.h"
#include "plot/PlotSeries.h"

namespace quorvex {

// The series of a plot as its file holds them, for as many independent variables as the plot has: one in two
// dimensions, two in three. Tables of curves and surfaces are not kept, since a model comes back ready to be evaluated.

void WritePlotSeries(RecordWriter& io, const PlotSeries& series, std::size_t variables);

// The next series. Nothing, and the reader failed, where there is none that a plot could show.
std::optional<PlotSeries> ReadPlotSeries(RecordReader& io, std::size_t variables, const LocaleText& locale);

}  // namespace quorvex
