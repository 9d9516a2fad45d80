#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "drawing/DrawingSurface.h"

namespace quorvex {

// Lines as they are painted: those of a single step, and the longer ones.
struct PaintedLines {
  std::vector<std::array<DevicePoint, 2>> Steps;
  std::vector<std::vector<DevicePoint>> Longer;

  void Take(std::span<const DevicePoint> line) {
    if (line.size() == 2)
      Steps.push_back({line[0], line[1]});
    else
      Longer.emplace_back(line.begin(), line.end());
  }
};

// The lines that a surface is told by MoveToEx and LineTo, until it paints them together.
class GatheredLines {
 public:
  // A pixel has so many units, a power of two.
  explicit GatheredLines(std::int32_t unitsPerPixel) : units_(unitsPerPixel) {}

  void MoveTo(DevicePoint point) { position_ = point; }
  void LineTo(DevicePoint point);
  bool Empty() const { return points_.empty(); }

  // Whether every line is straight along or down, as ticks and error bars are, or goes so from corner to corner, as a
  // frame does. A curve that is all but level has steps of a unit and is none of these.
  bool RunsAlongOrDown() const;

  // Moves every point, as `where` says.
  template <typename Where>
  void Move(Where where) {
    for (DevicePoint& point : points_) point = where(point);
  }

  // Hands the lines over, none longer than it need be to cover its places, and begins anew.
  PaintedLines Take();

 private:
  std::span<const DevicePoint> Line(std::size_t i) const;

  std::int32_t units_;
  DevicePoint position_;
  std::vector<DevicePoint> points_;  // of the lines, one behind the other; each has two or more
  std::vector<std::size_t> starts_;  // where in them each line begins
};

}  // namespace quorvex
