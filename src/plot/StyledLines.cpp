#include "plot/StyledLines.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "core/NumberText.h"

namespace quorvex {
namespace {

constexpr int kStyles = 5;
constexpr int kWidths = 10;
using ByWidth = std::array<std::int32_t, kWidths>;

constexpr std::int32_t kDot = 4;

// The lengths of a pattern: the long stroke, the gap, and how many dots, each with a gap, follow before it repeats.
struct Pattern {
  ByWidth Long, Gap;
  int Dots;
};
constexpr ByWidth kDashes = {12, 14, 15, 17, 18, 20, 21, 23, 24, 26};
constexpr ByWidth kNarrowGaps = {4, 5, 6, 7, 8, 10, 11, 12, 13, 14};
constexpr std::array<Pattern, kStyles - 1> kPatterns = {{
    {kDashes, kNarrowGaps, 0},
    {{kDot, kDot, kDot, kDot, kDot, kDot, kDot, kDot, kDot, kDot}, kNarrowGaps, 0},
    {{18, 21, 23, 26, 29, 31, 34, 37, 39, 42}, {5, 6, 7, 8, 9, 11, 12, 13, 14, 15}, 1},
    {kDashes, kNarrowGaps, 2},
}};

constexpr std::array<ByWidth, kStyles - 1> kSampleLengths = {{
    {28, 33, 37, 41, 44, 50, 53, 58, 61, 66},
    {28, 31, 34, 37, 40, 46, 49, 52, 55, 58},
    {27, 31, 34, 38, 42, 46, 50, 54, 57, 61},
    {28, 28, 35, 39, 42, 48, 51, 55, 58, 62},
}};

int KnownStyle(int style) { return style >= 0 && style < kStyles ? style : 0; }
std::int32_t KnownWidth(std::int32_t width) { return std::clamp(width, 1, kWidths); }

bool IsInRange(DevicePoint point) {
  const auto within = [](std::int32_t value) { return value > -kOutOfRange && value < kOutOfRange; };
  return within(point.x) && within(point.y);
}

// Strokes and gaps by turns, the first a stroke.
std::vector<double> PatternElements(int style, std::int32_t width, std::int32_t penScale) {
  const auto column = static_cast<std::size_t>(width - 1);
  const Pattern& pattern = kPatterns[static_cast<std::size_t>(style - 1)];
  const double gap = pattern.Gap[column] * penScale;
  std::vector<double> elements = {static_cast<double>(pattern.Long[column] * penScale), gap};
  for (int dot = 0; dot < pattern.Dots; ++dot) elements.insert(elements.end(), {kDot * penScale * 1.0, gap});
  return elements;
}

// The pattern on its way along a polyline.
class PatternWalk {
 public:
  PatternWalk(DrawingSurface& surface, std::vector<double> elements)
      : surface_(surface), elements_(std::move(elements)), remainder_(elements_[0]) {
    for (const double element : elements_) period_ += element;
  }

  void Segment(DevicePoint from, DevicePoint to) {
    const double dx = static_cast<double>(to.x) - from.x, dy = static_cast<double>(to.y) - from.y;
    const double length = std::hypot(dx, dy);
    if (length == 0) return;
    const auto at = [&](double along) {
      return DevicePoint{RoundToInt32(from.x + along * dx / length), RoundToInt32(from.y + along * dy / length)};
    };
    const auto stroke = [&](double start, double end) {
      if (index_ % 2 != 0) return;
      const DevicePoint a = at(start), b = at(end);
      surface_.MoveToEx(a.x, a.y);
      surface_.LineTo(b.x, b.y);
    };
    const auto [enter, leave] = PartInRange(from, to, length);
    double start = 0, end = remainder_;
    while (end <= length) {
      stroke(start, end);
      index_ = index_ + 1 < elements_.size() ? index_ + 1 : 0;
      start = end;
      // Whole patterns out of sight are not walked: a point far off would take hours.
      if (start < enter || start > leave)
        start += std::floor(((start < enter ? enter : length) - start) / period_) * period_;
      end = start + elements_[index_];
    }
    stroke(start, length);
    remainder_ = end - length;
  }

 private:
  // Where along the segment it comes into range and leaves it; both at its end where it never does.
  static std::pair<double, double> PartInRange(DevicePoint from, DevicePoint to, double length) {
    double enter = 0, leave = 1;  // in fractions of the length
    const auto confine = [&](double a, double b) {
      if (a == b) {
        if (std::abs(a) > kOutOfRange) leave = -1;
        return;
      }
      const double low = (-kOutOfRange - a) / (b - a), high = (kOutOfRange - a) / (b - a);
      enter = std::max(enter, std::min(low, high));
      leave = std::min(leave, std::max(low, high));
    };
    confine(from.x, to.x);
    confine(from.y, to.y);
    if (enter > leave) return {length, length};
    return {enter * length, leave * length};
  }

  DrawingSurface& surface_;
  std::vector<double> elements_;
  double period_ = 0;
  std::size_t index_ = 0;  // of the element that the walk is in; the even ones are strokes
  double remainder_;       // of it, still to go
};

}  // namespace

bool DrawStyledPolyline(DrawingSurface& surface, std::span<const std::int32_t> xs, std::span<const std::int32_t> ys,
                        int style, std::int32_t width, std::int32_t colour, std::int32_t penScale) {
  const auto point = [&](std::size_t i) { return DevicePoint{xs[i], ys[i]}; };
  const std::size_t count = std::min(xs.size(), ys.size());
  std::size_t first = 0;
  while (first + 1 < count && !IsInRange(point(first))) ++first;
  if (first + 1 >= count) return false;

  penScale = std::max(penScale, 1);
  width = KnownWidth(width);
  style = KnownStyle(style);
  const SelectedObject pen(surface, surface.CreatePen(0, width * penScale, colour));
  if (style != 0) {
    PatternWalk walk(surface, PatternElements(style, width, penScale));
    for (std::size_t i = first + 1; i < count; ++i) walk.Segment(point(i - 1), point(i));
    return true;
  }
  DevicePoint drawn = point(first);
  surface.MoveToEx(drawn.x, drawn.y);
  for (std::size_t i = first + 1; i < count; ++i) {
    if (point(i) == drawn || !IsInRange(point(i))) continue;
    drawn = point(i);
    surface.LineTo(drawn.x, drawn.y);
  }
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
