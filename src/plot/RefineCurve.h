#pragma once

#include <vector>

#include "plot/PlotClass.h"

namespace quorvex {

// A curve as it is drawn.
struct Curve {
  std::vector<double> X, Y;
};

// The table of a series, with more points of a model or an interpolation where the line between two of them lies off
// the curve by more than `tolerance` device units: the table alone would cut the peaks of a curve that bends more often
// than it has points. Parts of the curve outside of the frame, and points without a value, are left as they are.
//
// Method: each chord is tried at two places within, and divided where that shows, to at most 12 generations. The places
// are no simple fractions of the chord, so that waves do not meet it just there.
Curve RefineCurve(const PlotSeries& series, const PlotPicture& picture, const PlotClass& plot, double tolerance);

}  // namespace quorvex
