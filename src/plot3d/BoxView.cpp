#include "plot3d/BoxView.h"

#include <cmath>

namespace quorvex {

BoxView::BoxView(double XYAngle, double ZAngle) {
  const double s = std::sin(XYAngle), c = std::cos(XYAngle), S = std::sin(ZAngle), C = std::cos(ZAngle);
  for (const int p : {-1, 1})
    for (const int q : {-1, 1})
      for (const int r : {-1, 1}) {
        const double halfP = p / 2.0, halfQ = q / 2.0, halfR = r / 2.0, u = s * halfP + c * halfQ;
        corners_[Index({p, q, r})] = {C * u + C * halfR, s * halfQ - c * halfP, C * halfR - S * u};
      }
  // By comparison and not by the signs of sine and cosine, which are dust where they should be zero.
  overTheTop_ = ZAngle > kViewPi / 2;
  const int facing = overTheTop_ ? -1 : 1;
  nearP_ = XYAngle < kViewPi ? facing : -facing;
  nearQ_ = XYAngle > kViewPi / 2 && XYAngle < 3 * kViewPi / 2 ? -facing : facing;
}

}  // namespace quorvex
