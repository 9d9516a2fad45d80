#pragma once

#include <functional>
#include <vector>

#include "plot/PlotClass.h"

namespace quorvex {

// A curve as it is drawn.
struct Curve {
  std::vector<double> X, Y;
};

// The value of a curve at x. False where it has none.
using CurveValue = std::function<bool(double x, double& y)>;

// How far a curve's line may lie off the curve.
inline constexpr double kInchesOff = 0.0025;

// The table of a curve, with more points of it where the line between two of them lies off the curve by more than
// `tolerance` device units: the table alone would cut the peaks of a curve that bends more often than it has points.
// Parts of the curve outside of the frame, and points without a value, are left as they are.
//
// Method: each chord is tried at two places within, and divided where that shows, to at most 12 generations. The places
// are no simple fractions of the chord, so that waves do not meet it just there.
Curve RefineCurve(const SeriesTable& table, const CurveValue& value, const PlotPicture& picture, const PlotClass& plot,
                  double tolerance);

}  // namespace quorvex
