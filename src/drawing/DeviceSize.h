#pragma once

#include "drawing/DrawingSurface.h"

namespace quorvex {

// The size of a device that is all page, and what it says of itself by that.
struct DeviceSize {
  DeviceExtent Units, Millimetres;
  std::int32_t UnitsPerInch = 0;  // down
  std::int32_t BitsPerPixel = 24;

  std::int32_t Cap(DeviceCap index) const;
};

}  // namespace quorvex
