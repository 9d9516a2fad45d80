#include "drawing/LinePattern.h"

#include <algorithm>
#include <array>

namespace quorvex {
namespace {

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
constexpr std::array<Pattern, 4> kPatterns = {{
    {kDashes, kNarrowGaps, 0},
    {{kDot, kDot, kDot, kDot, kDot, kDot, kDot, kDot, kDot, kDot}, kNarrowGaps, 0},
    {{18, 21, 23, 26, 29, 31, 34, 37, 39, 42}, {5, 6, 7, 8, 9, 11, 12, 13, 14, 15}, 1},
    {kDashes, kNarrowGaps, 2},
}};

}  // namespace

std::pair<double, double> PartInSight(ExactPoint from, ExactPoint to, const Sight& sight) {
  double enter = 0, leave = 1;
  const auto confine = [&](double start, double length, double low, double high) {
    if (length == 0) {
      if (start < low || start > high) leave = -1;
      return;
    }
    const double a = (low - start) / length, b = (high - start) / length;
    enter = std::max(enter, std::min(a, b));
    leave = std::min(leave, std::max(a, b));
  };
  confine(from.x, to.x - from.x, sight.Left, sight.Right);
  confine(from.y, to.y - from.y, sight.Top, sight.Bottom);
  return {enter, leave};
}

std::vector<std::vector<ExactPoint>> PartsInSight(std::span<const ExactPoint> line, const Sight& sight) {
  std::vector<std::vector<ExactPoint>> parts;
  bool open = false;  // the last part goes on
  for (std::size_t i = 1; i < line.size(); ++i) {
    const ExactPoint from = line[i - 1], to = line[i];
    const auto [enter, leave] = PartInSight(from, to, sight);
    if (enter > leave) {
      open = false;
      continue;
    }
    const auto at = [&](double part) {
      return ExactPoint{from.x + part * (to.x - from.x), from.y + part * (to.y - from.y)};
    };
    if (!open || enter > 0) parts.push_back({at(enter)});
    parts.back().push_back(leave == 1 ? to : at(leave));
    open = leave == 1;
  }
  return parts;
}

LinePattern::LinePattern(int style, std::int32_t width, double scale) {
  if (style < 1 || style > static_cast<int>(kPatterns.size())) return;
  const auto column = static_cast<std::size_t>(std::clamp(width, 1, kWidths) - 1);
  const Pattern& pattern = kPatterns[static_cast<std::size_t>(style - 1)];
  const auto add = [&](std::int32_t stroke) {
    elements_[count_++] = stroke * scale;
    elements_[count_++] = pattern.Gap[column] * scale;
  };
  add(pattern.Long[column]);
  for (int dot = 0; dot < pattern.Dots; ++dot) add(kDot);
}

}  // namespace quorvex
