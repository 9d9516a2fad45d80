#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace quorvex {

// A place between device units, or between pixels.
struct ExactPoint {
  double x = 0, y = 0;
  bool operator==(const ExactPoint&) const = default;
};

// A rectangle outside of which nothing can be seen.
struct Sight {
  double Left, Top, Right, Bottom;
};

// What of the straight way between two places comes in sight, in fractions of the way; nothing where the first is above
// the second.
std::pair<double, double> PartInSight(ExactPoint from, ExactPoint to, const Sight& sight);

// What of a line through places comes in sight, in pieces that go on as far as they are seen.
std::vector<std::vector<ExactPoint>> PartsInSight(std::span<const ExactPoint> line, const Sight& sight);

// The pattern of a line style: 1 dash, 2 dot, 3 dash-dot, 4 dash-dot-dot; no elements for any other, a solid line. The
// width is 1 to 10; what lies outside takes the nearer of the two. Lengths are those on a screen times `scale`.
class LinePattern {
 public:
  LinePattern() = default;
  LinePattern(int style, std::int32_t width, double scale);

  // Strokes and gaps by turns, the first a stroke.
  std::span<const double> Elements() const { return std::span(elements_).first(count_); }

 private:
  std::array<double, 6> elements_{};
  std::size_t count_ = 0;
};

// A pattern on its way along a polyline, round whose corners it runs on.
class PatternWalk {
 public:
  // The pattern must have elements.
  PatternWalk(const LinePattern& pattern, const Sight& sight)
      : pattern_(pattern), sight_(sight), remainder_(pattern.Elements()[0]) {
    for (const double element : pattern.Elements()) period_ += element;
  }

  // Walks on to the next corner, with a call of stroke(start, end) for each stroke or part of one.
  template <typename Stroke>
  void Segment(ExactPoint from, ExactPoint to, Stroke stroke) {
    const double dx = to.x - from.x, dy = to.y - from.y, length = std::hypot(dx, dy);
    if (length == 0) return;
    const auto at = [&](double along) {
      return ExactPoint{from.x + along * dx / length, from.y + along * dy / length};
    };
    const auto [first, last] = PartInSight(from, to, sight_);
    const bool seen = first <= last;
    const double enter = seen ? first * length : length, leave = seen ? last * length : length;
    const std::span<const double> elements = pattern_.Elements();
    double start = 0, end = remainder_;
    while (end <= length) {
      if (index_ % 2 == 0) stroke(at(start), at(end));
      index_ = index_ + 1 < elements.size() ? index_ + 1 : 0;
      start = end;
      // Whole patterns out of sight are not walked: a point far off would take hours.
      if (start < enter || start > leave)
        start += std::floor(((start < enter ? enter : length) - start) / period_) * period_;
      end = start + elements[index_];
    }
    if (index_ % 2 == 0) stroke(at(start), at(length));
    remainder_ = end - length;
  }

 private:
  LinePattern pattern_;
  Sight sight_;
  double period_ = 0;
  std::size_t index_ = 0;  // of the element that the walk is in; the even ones are strokes
  double remainder_;       // of it, still to go
};

}  // namespace quorvex
