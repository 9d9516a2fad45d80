#include "plot3d/BoxProjection.h"

#include <algorithm>
#include <cmath>

#include "drawing/StyledLines.h"

namespace quorvex {
namespace {

// The diagonal of the unit cube: a box of that share of a rectangle fits into it at every angle. Its half, the distance
// of a corner from the middle, sets the middle.
constexpr double kDiagonal = 1.732, kHalfDiagonal = 0.866;
constexpr double kFarthest = 1e9;

constexpr std::array<BoxView::Ends, 3> kAxisEnds = {{{1, -1, -1}, {-1, 1, -1}, {-1, -1, 1}}};

}  // namespace

double AxisVector::Plotted(double value) const { return Log ? std::log10(value) : value; }

DevicePoint DevicePlace::Rounded() const {
  const auto unit = [](double at) {
    return static_cast<std::int32_t>(std::lrint(std::clamp(at, -kFarthest, kFarthest)));
  };
  return {unit(x), unit(y)};
}

BoxProjection::BoxProjection(const BoxView& view, const DeviceRect& box, const std::array<AxisLimits, 3>& limits,
                             std::int32_t penScale)
    : view_(view), box_(box), penScale_(penScale) {
  const DevicePoint origin = Corner({-1, -1, -1});
  for (std::size_t axis = 0; axis < axes_.size(); ++axis) {
    AxisVector& vector = axes_[axis];
    const AxisLimits& scale = limits[axis];
    vector.Log = scale.Log;
    vector.Min = vector.Plotted(scale.Min);
    vector.Max = vector.Plotted(scale.Max);
    vector.OriginX = origin.x;
    vector.OriginY = origin.y;
    const DevicePoint end = Corner(kAxisEnds[axis]);
    const double dx = end.x - origin.x, dy = origin.y - end.y;
    vector.Angle = std::atan2(dy, dx);
    vector.Scale = std::hypot(dx, dy) / (vector.Max - vector.Min);
    step_[axis] = {vector.Scale * std::cos(vector.Angle), -vector.Scale * std::sin(vector.Angle)};
  }
}

DevicePoint BoxProjection::Corner(const BoxView::Ends& at) const {
  const double kx = box_.width() / kDiagonal, ky = box_.height() / -kDiagonal;
  const BoxCorner& corner = view_.Corner(at);
  return DevicePlace{kx * corner.Horizontal + (box_.left + kx * kHalfDiagonal),
                     ky * corner.Vertical + (box_.top - ky * kHalfDiagonal)}
      .Rounded();
}

DevicePlace BoxProjection::OnEdge(std::size_t axis, BoxView::Ends at, double fraction) const {
  at[axis] = -1;
  const DevicePoint from = Corner(at);
  at[axis] = 1;
  const DevicePoint to = Corner(at);
  return {from.x + fraction * (to.x - from.x), from.y + fraction * (to.y - from.y)};
}

DevicePlace BoxProjection::Place(double x, double y, double z) const {
  x -= axes_[0].Min;
  y -= axes_[1].Min;
  z -= axes_[2].Min;
  return {x * step_[0][0] + y * step_[1][0] + z * step_[2][0] + axes_[0].OriginX,
          x * step_[0][1] + y * step_[1][1] + z * step_[2][1] + axes_[0].OriginY};
}

DevicePoint BoxProjection::ToDevice(double x, double y, double z) const {
  const DevicePlace place = Place(axes_[0].Plotted(x), axes_[1].Plotted(y), axes_[2].Plotted(z));
  const std::int32_t out = kOutOfRange * penScale_;
  if (!std::isfinite(place.x) || !std::isfinite(place.y)) return {out, out};
  return place.Rounded();
}

bool BoxProjection::Contains(double x, double y, double z) const {
  const std::array<double, 3> values = {x, y, z};
  for (std::size_t axis = 0; axis < axes_.size(); ++axis) {
    const double plotted = axes_[axis].Plotted(values[axis]);
    if (!(plotted >= axes_[axis].Min && plotted <= axes_[axis].Max)) return false;
  }
  return true;
}

}  // namespace quorvex
