#include "drawing/GatheredLines.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstdlib>
#include <utility>

namespace quorvex {
namespace {

// The column or row of pixels that a coordinate lies in.
std::int32_t PixelOf(std::int32_t at, std::int32_t units) {
  assert(std::has_single_bit(static_cast<unsigned>(units)));
  return (at + units / 2) >> std::countr_zero(static_cast<unsigned>(units));
}

// Of the points that follow each other in one column of pixels the first, the lowest, the highest and the last, where
// the line goes up and down there; the same in a row. It covers the very same places, in a fraction of the time where a
// curve has more points than the device pixels.
std::vector<DevicePoint> WithoutRetraced(std::span<const DevicePoint> line, std::int32_t DevicePoint::*same,
                                         std::int32_t DevicePoint::*other, std::int32_t units) {
  std::vector<DevicePoint> kept;
  for (std::size_t first = 0, end = 0; first < line.size(); first = end) {
    const std::int32_t pixel = PixelOf(line[first].*same, units);
    std::size_t low = first, high = first;
    bool exact = true;
    int turns = 0, before = 0;
    for (end = first; end < line.size() && PixelOf(line[end].*same, units) == pixel; ++end) {
      if (line[end].*other < line[low].*other) low = end;
      if (line[end].*other > line[high].*other) high = end;
      exact = exact && line[end].*same == line[first].*same;
      const std::int32_t step = end == first ? 0 : line[end].*other - line[end - 1].*other;
      if (step == 0) continue;
      const int now = step > 0 ? 1 : -1;
      turns += now == -before;
      before = now;
    }
    if (!exact && turns < 2) {  // its own shape, not yet a stroke
      kept.insert(kept.end(), line.begin() + static_cast<std::ptrdiff_t>(first),
                  line.begin() + static_cast<std::ptrdiff_t>(end));
      continue;
    }
    for (const std::size_t i : {first, std::min(low, high), std::max(low, high), end - 1})
      if (kept.empty() || kept.back() != line[i]) kept.push_back(line[i]);
  }
  return kept;
}

// Joins lines that run along one column or row of pixels and follow each other there, as the dashes of a noisy curve do
// by the thousand: one line for each stretch that they cover together, where they cover it again and again. Those that
// share the coordinate itself are always joined.
class StraightLines {
 public:
  StraightLines(PaintedLines& lines, std::int32_t units) : lines_(lines), units_(units) {}

  // Takes a line that lies so, and leaves any other. One that leads nowhere makes no dot.
  bool Take(std::span<const DevicePoint> line) {
    const auto shares = [&](std::int32_t DevicePoint::*coordinate) {
      const std::int32_t pixel = PixelOf(line[0].*coordinate, units_);
      return std::all_of(line.begin(), line.end(),
                         [&](const DevicePoint& point) { return PixelOf(point.*coordinate, units_) == pixel; });
    };
    const bool column = shares(&DevicePoint::x);
    if (!column && !shares(&DevicePoint::y)) return false;
    const auto across = column ? &DevicePoint::x : &DevicePoint::y;
    const std::int32_t pixel = PixelOf(line[0].*across, units_);
    if (column != column_ || pixel != pixel_) Finish();
    column_ = column;
    pixel_ = pixel;
    held_.push_back(line);
    return true;
  }

  void Finish() {
    if (held_.empty()) return;
    const auto across = column_ ? &DevicePoint::x : &DevicePoint::y,
               along = column_ ? &DevicePoint::y : &DevicePoint::x;
    const std::int32_t at = held_[0][0].*across;
    bool exact = true;
    double length = 0, covered = 0;
    stretches_.clear();
    for (const std::span<const DevicePoint> line : held_) {
      std::int32_t low = line[0].*along, high = low;
      for (const DevicePoint& point : line) {
        low = std::min(low, point.*along);
        high = std::max(high, point.*along);
        exact = exact && point.*across == at;
      }
      if (low < high) stretches_.push_back({low, high});
      length += 1.0 * high - low;
    }
    std::sort(stretches_.begin(), stretches_.end());
    std::size_t joined = 0;  // how many of them, at the front
    for (const auto& stretch : stretches_) {
      if (joined > 0 && stretch.first <= stretches_[joined - 1].second)
        stretches_[joined - 1].second = std::max(stretches_[joined - 1].second, stretch.second);
      else
        stretches_[joined++] = stretch;
    }
    stretches_.resize(joined);
    for (const auto& [low, high] : stretches_) covered += 1.0 * high - low;
    if (exact || length > 2 * covered) {
      const std::int32_t where = exact ? at : pixel_ * units_;
      for (const auto& [low, high] : stretches_)
        lines_.Steps.push_back(column_ ? std::array{DevicePoint{where, low}, DevicePoint{where, high}}
                                       : std::array{DevicePoint{low, where}, DevicePoint{high, where}});
    } else {
      for (const std::span<const DevicePoint> line : held_) lines_.Take(line);
    }
    held_.clear();
  }

 private:
  PaintedLines& lines_;
  std::int32_t units_;
  std::vector<std::span<const DevicePoint>> held_;  // all in one column or row of pixels:
  bool column_ = false;
  std::int32_t pixel_ = 0;
  std::vector<std::pair<std::int32_t, std::int32_t>> stretches_;  // from and to
};

}  // namespace

void GatheredLines::LineTo(DevicePoint point) {
  if (points_.empty() || points_.back() != position_) {
    starts_.push_back(points_.size());
    points_.push_back(position_);
  }
  position_ = point;
  points_.push_back(position_);
}

std::span<const DevicePoint> GatheredLines::Line(std::size_t i) const {
  const std::size_t end = i + 1 < starts_.size() ? starts_[i + 1] : points_.size();
  return std::span(points_).subspan(starts_[i], end - starts_[i]);
}

bool GatheredLines::RunsAlongOrDown() const {
  for (std::size_t i = 0; i < starts_.size(); ++i) {
    const std::span<const DevicePoint> line = Line(i);
    bool column = true, row = true, corners = true;
    for (std::size_t p = 1; p < line.size(); ++p) {
      const std::int32_t dx = std::abs(line[p].x - line[p - 1].x), dy = std::abs(line[p].y - line[p - 1].y);
      column = column && dx == 0;
      row = row && dy == 0;
      corners = corners && (dx == 0 || dy == 0) && dx + dy >= units_;
      if (!column && !row && !corners) return false;
    }
  }
  return true;
}

PaintedLines GatheredLines::Take() {
  PaintedLines lines;
  StraightLines straight(lines, units_);
  for (std::size_t i = 0; i < starts_.size(); ++i) {
    const std::span<const DevicePoint> line = Line(i);
    if (straight.Take(line)) continue;
    if (line.size() == 2)
      lines.Take(line);
    else
      lines.Take(WithoutRetraced(WithoutRetraced(line, &DevicePoint::x, &DevicePoint::y, units_), &DevicePoint::y,
                                 &DevicePoint::x, units_));
  }
  straight.Finish();
  points_.clear();
  starts_.clear();
  return lines;
}

}  // namespace quorvex
