#pragma once

#include <array>
#include <cstdint>

#include "plot/AxisScale.h"
#include "plot/PageSetup.h"
#include "plot3d/BoxView.h"

namespace quorvex {

// An axis as it runs over the device: from its origin in the direction of `Angle` (radians, counterclockwise), `Scale`
// device units per data unit, or per decade on a logarithmic axis.
struct AxisVector {
  double OriginX = 0, OriginY = 0, Angle = 0, Scale = 0;
  double Min = 0, Max = 0;  // the limits, as decimal logarithms on a logarithmic axis
  bool Log = false;

  // What is plotted for a data value: itself or its logarithm.
  double Plotted(double value) const;
};

// A place of the device, between the units.
struct DevicePlace {
  double x = 0, y = 0;

  DevicePoint Rounded() const;  // far outside it stays on the way there, within a billion units
};

// The box of a plot on a device, and where data stand in it.
class BoxProjection {
 public:
  // The box seen so, in the largest size that fits into a rectangle at every angle, for axes with these limits.
  BoxProjection(const BoxView& view, const DeviceRect& box, const std::array<AxisLimits, 3>& limits,
                std::int32_t penScale);

  DevicePoint Corner(const BoxView::Ends& at) const;
  const BoxView& View() const { return view_; }
  // The place at a fraction of the edge along `axis` on which the corner `at` lies.
  DevicePlace OnEdge(std::size_t axis, BoxView::Ends at, double fraction) const;
  const AxisVector& Axis(std::size_t axis) const { return axes_[axis]; }

  // Of values as they are plotted.
  DevicePlace Place(double x, double y, double z) const;

  // Of data, in device units. What a logarithmic axis has no place for, and what is no number, is out of range.
  DevicePoint ToDevice(double x, double y, double z) const;

  // Whether data lie within the limits of all axes.
  bool Contains(double x, double y, double z) const;

  std::int32_t PenScale() const { return penScale_; }

 private:
  BoxView view_;
  DeviceRect box_;
  std::array<AxisVector, 3> axes_;
  std::array<std::array<double, 2>, 3> step_;  // device units to the right and down, per plotted unit of each axis
  std::int32_t penScale_;
};

}  // namespace quorvex
