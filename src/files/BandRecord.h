#pragma once

#include "files/RecordIo.h"
#include "plot/PlotPage.h"

namespace quorvex {

// The bands around the curves of a plot, as its file keeps them: what they are computed from, for the record of a model
// has no room for it. They stand in a section of their own behind the end of the data, where readers that do not know
// them have stopped; a plot without bands has none.
inline constexpr const char* kBands = "BANDS";

void WriteBands(RecordWriter& io, const PlotPage& plot);
// To the series that the plot has by then.
void ReadBands(RecordReader& io, PlotPage& plot);

}  // namespace quorvex
