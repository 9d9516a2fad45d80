#pragma once

#include "plot/PlotHost.h"

namespace quorvex {

struct DeviceStep {
  double Right = 0, Down = 0;
};

// How far an arrow key moves things over a plot, in device units: ten pixels of a screen, one with Shift. Any other key
// moves nothing.
DeviceStep KeyStep(int key, bool shift, const PlotHost& host);

}  // namespace quorvex
