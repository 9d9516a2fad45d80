#include "drawing/StyledLines.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "core/NumberText.h"
#include "drawing/LinePattern.h"

namespace quorvex {
namespace {

constexpr int kStyles = 5;
constexpr int kWidths = 10;
using ByWidth = std::array<std::int32_t, kWidths>;

constexpr std::array<ByWidth, kStyles - 1> kSampleLengths = {{
    {28, 33, 37, 41, 44, 50, 53, 58, 61, 66},
    {28, 31, 34, 37, 40, 46, 49, 52, 55, 58},
    {27, 31, 34, 38, 42, 46, 50, 54, 57, 61},
    {28, 28, 35, 39, 42, 48, 51, 55, 58, 62},
}};

int KnownStyle(int style) { return style >= 0 && style < kStyles ? style : 0; }
std::int32_t KnownWidth(std::int32_t width) { return std::clamp(width, 1, kWidths); }

bool IsInRange(DevicePoint point, std::int32_t range) {
  const auto within = [&](std::int32_t value) { return value > -range && value < range; };
  return within(point.x) && within(point.y);
}

// A line without the points that lie within a unit of the way between those left; where a pixel has many units nobody
// sees the difference, and a smooth curve of many thousand points is some hundred steps. From the last point kept, each
// later one allows the directions that pass it within a unit; the line goes straight on as long as they have one in
// common and it doesn't turn back.
class Straightener {
 public:
  explicit Straightener(std::vector<DevicePoint>& line) : line_(line) {}

  // Adds the next point. It stays the line's last until another one is straight behind it.
  void Add(DevicePoint point) {
    if (line_.size() < 2) return Start(point);
    Direction to = From(line_[line_.size() - 2], point);
    const double square = to.x * to.x + to.y * to.y;
    if (square < reached_ || Cross(right_, to) < 0 || Cross(to, left_) < 0) return Start(point);
    line_.back() = point;
    reached_ = square;
    Narrow(to);
  }

 private:
  struct Direction {
    double x, y;
  };
  static Direction From(DevicePoint a, DevicePoint b) { return {1.0 * b.x - a.x, 1.0 * b.y - a.y}; }
  static double Cross(Direction a, Direction b) { return a.x * b.y - a.y * b.x; }

  // A step from the last point, which stays.
  void Start(DevicePoint point) {
    line_.push_back(point);
    if (line_.size() < 2) return;
    const Direction to = From(line_[line_.size() - 2], point);
    reached_ = to.x * to.x + to.y * to.y;
    right_ = left_ = {};
    Narrow(to);
  }

  void Narrow(Direction to) {
    if (std::abs(to.x) <= 1 && std::abs(to.y) <= 1) return;  // as good as no way yet
    Direction aside{0, to.x > 0 ? 1.0 : -1.0};               // a unit to the left
    if (std::abs(to.y) > std::abs(to.x)) aside = {to.y > 0 ? -1.0 : 1.0, 0};
    const Direction right{to.x - aside.x, to.y - aside.y}, left{to.x + aside.x, to.y + aside.y};
    const bool first = right_.x == 0 && right_.y == 0;
    if (first || Cross(right_, right) > 0) right_ = right;
    if (first || Cross(left, left_) > 0) left_ = left;
  }

  std::vector<DevicePoint>& line_;
  Direction right_{}, left_{};  // of the directions allowed, the outermost; none while all are
  double reached_ = 0;          // the square of the last step's length
};

}  // namespace

bool DrawStyledPolyline(DrawingSurface& surface, std::span<const std::int32_t> xs, std::span<const std::int32_t> ys,
                        int style, std::int32_t width, std::int32_t colour, std::int32_t penScale) {
  const auto point = [&](std::size_t i) { return DevicePoint{xs[i], ys[i]}; };
  const std::size_t count = std::min(xs.size(), ys.size());
  penScale = std::max(penScale, 1);
  const std::int32_t range = kOutOfRange * penScale;
  std::size_t first = 0;
  while (first + 1 < count && !IsInRange(point(first), range)) ++first;
  if (first + 1 >= count) return false;

  width = KnownWidth(width);
  style = KnownStyle(style);
  std::vector<DevicePoint> line;
  line.reserve(count - first);
  Straightener straightener(line);
  const bool straightens = surface.UnitsPerPixel() > 1;
  for (std::size_t i = first; i < count; ++i) {
    const DevicePoint next = point(i);
    // A pattern walks through places out of range, too, lest it fall out of step.
    if (style == 0 && (!IsInRange(next, range) || (!line.empty() && next == line.back()))) continue;
    if (straightens)
      straightener.Add(next);
    else
      line.push_back(next);
  }

  const SelectedObject pen(surface, surface.CreatePen(0, width * penScale, colour));
  if (style != 0) {
    const double sight = range;
    PatternWalk walk(LinePattern(style, width, penScale), {-sight, -sight, sight, sight});
    const auto exact = [](DevicePoint at) { return ExactPoint{1.0 * at.x, 1.0 * at.y}; };
    const auto stroke = [&](ExactPoint from, ExactPoint to) {
      surface.MoveToEx(RoundToInt32(from.x), RoundToInt32(from.y));
      surface.LineTo(RoundToInt32(to.x), RoundToInt32(to.y));
    };
    for (std::size_t i = 1; i < line.size(); ++i) walk.Segment(exact(line[i - 1]), exact(line[i]), stroke);
    return true;
  }
  surface.MoveToEx(line[0].x, line[0].y);
  for (std::size_t i = 1; i < line.size(); ++i) surface.LineTo(line[i].x, line[i].y);
  return true;
}

bool DrawStyledSegment(DrawingSurface& surface, DevicePoint from, DevicePoint to, int style, std::int32_t width,
                       std::int32_t colour, std::int32_t penScale) {
  const std::int32_t xs[] = {from.x, to.x}, ys[] = {from.y, to.y};
  return DrawStyledPolyline(surface, xs, ys, style, width, colour, penScale);
}

std::int32_t GetLineSampleLength(int style, std::int32_t width, std::int32_t defaultLength, std::int32_t penScale) {
  style = KnownStyle(style);
  if (style == 0) return defaultLength;
  return kSampleLengths[static_cast<std::size_t>(style - 1)][static_cast<std::size_t>(KnownWidth(width) - 1)] *
         std::max(penScale, 1);
}

}  // namespace quorvex
