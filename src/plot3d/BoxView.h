#pragma once

#include <array>
#include <cstddef>

namespace quorvex {

// Pi as the view angles have it, so that a quarter turn given in degrees is exactly that.
inline constexpr double kViewPi = 3.14159265358979;

// A corner of the box as seen, in edges of the box from its middle; `Vertical` grows upward.
struct BoxCorner {
  double Depth = 0, Horizontal = 0, Vertical = 0;
};

// A cube of edge 1 around the origin in a parallel projection: X1, X2 and Y run along its edges p, q and r.
class BoxView {
 public:
  // In radians: XYAngle turns the box about its vertical axis, ZAngle tilts it towards the viewer, from a side view at
  // 0 to one from above at a right angle, and on over the top, where the picture stands on its head.
  BoxView(double XYAngle, double ZAngle);

  // Which end of the edges p, q and r a corner lies at: -1 or 1.
  using Ends = std::array<int, 3>;
  const BoxCorner& Corner(const Ends& at) const { return corners_[Index(at)]; }

  // The ends of p and q that are next to the viewer. Of r it is always the upper one: nobody looks from below.
  int NearP() const { return nearP_; }
  int NearQ() const { return nearQ_; }

  // Whether the picture stands on its head.
  bool OverTheTop() const { return overTheTop_; }

 private:
  static std::size_t Index(const Ends& at) {
    return static_cast<std::size_t>((at[0] > 0 ? 4 : 0) + (at[1] > 0 ? 2 : 0) + (at[2] > 0 ? 1 : 0));
  }

  std::array<BoxCorner, 8> corners_;
  int nearP_, nearQ_;
  bool overTheTop_;
};

// Calls `draw` with each of the twelve edges: the axis it runs along, and its two ends.
template <typename Draw>
void EachEdge(Draw draw) {
  constexpr std::size_t kAxes = 3;
  for (std::size_t axis = 0; axis < kAxes; ++axis)
    for (const int first : {-1, 1})
      for (const int second : {-1, 1}) {
        BoxView::Ends from;
        from[axis] = -1;
        from[(axis + 1) % kAxes] = first;
        from[(axis + 2) % kAxes] = second;
        BoxView::Ends to = from;
        to[axis] = 1;
        draw(axis, from, to);
      }
}

}  // namespace quorvex
