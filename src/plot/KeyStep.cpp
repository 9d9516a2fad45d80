#include "plot/KeyStep.h"

#include "plot/PlotModes.h"

namespace quorvex {

DeviceStep KeyStep(int key, bool shift, const PlotHost& host) {
  constexpr double kPixelTwips = 15;
  const double twips = shift ? kPixelTwips : 10 * kPixelTwips;
  const double right = twips / host.TwipsPerPixelX(), down = twips / host.TwipsPerPixelY();
  switch (key) {
    case PlotModes::kLeftArrow:
      return {-right, 0};
    case PlotModes::kRightArrow:
      return {right, 0};
    case PlotModes::kUpArrow:
      return {0, -down};
    case PlotModes::kDownArrow:
      return {0, down};
    default:
      return {};
  }
}

}  // namespace quorvex
