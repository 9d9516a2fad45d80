#pragma once

#include "files/RecordIo.h"
#include "plot/PlotClass.h"
#include "plot3d/PlotClass3D.h"

namespace quorvex {

// All of a plot but its series, as a plot file holds it. Numbers beyond what a drawing could do anything with come back
// as the nearest that it can.
void WritePlotSettings(RecordWriter& io, const PlotClass& plot);
void WritePlotSettings(RecordWriter& io, const PlotClass3D& plot);
void ReadPlotSettings(RecordReader& io, PlotClass& plot);
void ReadPlotSettings(RecordReader& io, PlotClass3D& plot);

}  // namespace quorvex
