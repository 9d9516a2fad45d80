#pragma once

#include <algorithm>
#include <array>
#include <cmath>

#include "plot3d/BoxProjection.h"

namespace quorvex {

// A direction over the device, of length 1; y grows downward.
struct Direction {
  double x = 0, y = 0;
  double Times(double otherX, double otherY) const { return x * otherX + y * otherY; }
};

// A rectangle turned about its middle, such as that of a text along a slanted axis.
struct TurnedBox {
  DevicePlace Middle;
  double Width = 0, Height = 0;
  Direction Along = {1, 0};  // of its width

  static TurnedBox Upright(const DeviceRect& rect) {
    return {{(rect.left + rect.right) / 2.0, (rect.top + rect.bottom) / 2.0}, 1.0 * rect.width(), 1.0 * rect.height()};
  }
  // That of a line, without a height.
  static TurnedBox Line(DevicePoint from, DevicePoint to) {
    const double dx = to.x - from.x, dy = to.y - from.y, length = std::hypot(dx, dy);
    return {{from.x + dx / 2, from.y + dy / 2},
            length,
            0,
            length == 0 ? Direction{1, 0} : Direction{dx / length, dy / length}};
  }

  Direction Across() const { return {-Along.y, Along.x}; }

  // How far it reaches from its middle in a direction.
  double Reach(Direction towards) const {
    return (std::abs(towards.Times(Along.x, Along.y)) * Width +
            std::abs(towards.Times(Across().x, Across().y)) * Height) /
           2;
  }

  // Two of them lie apart where they do so in the direction of a side of one of them.
  bool Overlaps(const TurnedBox& other) const {
    const double dx = other.Middle.x - Middle.x, dy = other.Middle.y - Middle.y;
    const std::array<Direction, 4> sides = {Along, Across(), other.Along, other.Across()};
    return std::ranges::none_of(
        sides, [&](Direction side) { return std::abs(side.Times(dx, dy)) >= Reach(side) + other.Reach(side); });
  }
};

}  // namespace quorvex
