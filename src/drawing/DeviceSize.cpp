#include "drawing/DeviceSize.h"

namespace quorvex {

std::int32_t DeviceSize::Cap(DeviceCap index) const {
  switch (index) {
    case DeviceCap::HORZSIZE:
      return Millimetres.cx;
    case DeviceCap::VERTSIZE:
      return Millimetres.cy;
    case DeviceCap::HORZRES:
    case DeviceCap::PHYSICALWIDTH:
      return Units.cx;
    case DeviceCap::VERTRES:
    case DeviceCap::PHYSICALHEIGHT:
      return Units.cy;
    case DeviceCap::BITSPIXEL:
      return BitsPerPixel;
    case DeviceCap::LOGPIXELSY:
      return UnitsPerInch;
  }
  return 0;
}

}  // namespace quorvex
