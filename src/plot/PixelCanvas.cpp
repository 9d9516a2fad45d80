#include "plot/PixelCanvas.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

namespace quorvex {
namespace {

constexpr std::int64_t kUnits = PixelCanvas::kUnitsPerPixel;

std::uint32_t PixelOf(std::int32_t colour) {
  const auto bgr = static_cast<std::uint32_t>(colour);
  return 0xFF000000 | (bgr & 0xFF) << 16 | (bgr & 0xFF00) | (bgr >> 16 & 0xFF);
}

// The quotient rounded down; the divisor is above 0.
std::int64_t FloorDiv(std::int64_t a, std::int64_t b) { return a / b - (a % b < 0); }

// The first pixel whose middle is at a coordinate or after it.
std::int64_t FirstMiddle(std::int64_t at) { return FloorDiv(at + kUnits - 1, kUnits); }

DevicePoint Near(DevicePoint point) {
  constexpr std::int32_t kMost = PixelCanvas::kFarthest;
  return {std::clamp(point.x, -kMost, kMost), std::clamp(point.y, -kMost, kMost)};
}

ExactPoint InPixels(DevicePoint point) { return {point.x / double{kUnits}, point.y / double{kUnits}}; }

// Of twice the triangle's area the share that lies on this side; below 0 on the other. Exact within kFarthest.
std::int64_t Cross(DevicePoint a, DevicePoint b, DevicePoint c) {
  return (std::int64_t{b.x} - a.x) * (std::int64_t{c.y} - a.y) - (std::int64_t{b.y} - a.y) * (std::int64_t{c.x} - a.x);
}

// The part of a row, told by its y, where low < x * a + y * b < high.
class Strip {
 public:
  Strip(double a, double b, double low, double high) : b_(b), low_(low), high_(high) {
    constexpr double kLevel = 1e-9;  // the row runs along the strip: all of it, or what of it the caller sees to
    everywhere_ = std::abs(a) < kLevel;
    inverse_ = everywhere_ ? 0 : 1 / a;
  }
  std::pair<double, double> At(double y) const {
    constexpr double kEnd = std::numeric_limits<double>::infinity();
    if (everywhere_) return {-kEnd, kEnd};
    const double one = (low_ - y * b_) * inverse_, other = (high_ - y * b_) * inverse_;
    return inverse_ > 0 ? std::pair(one, other) : std::pair(other, one);
  }

 private:
  double b_, low_, high_, inverse_;
  bool everywhere_;
};

// `share` of 255 of the ink over what is there.
std::uint32_t Mixed(std::uint32_t ground, std::uint32_t ink, std::uint32_t share) {
  const std::uint32_t of256 = share + (share >> 7), rest = 256 - of256;
  constexpr std::uint32_t kRedBlue = 0x00FF00FF, kGreen = 0x0000FF00;
  const std::uint32_t redBlue = ((ink & kRedBlue) * of256 + (ground & kRedBlue) * rest) >> 8 & kRedBlue;
  const std::uint32_t green = ((ink & kGreen) * of256 + (ground & kGreen) * rest) >> 8 & kGreen;
  return 0xFF000000 | redBlue | green;
}

}  // namespace

PixelCanvas::PixelCanvas(std::uint32_t* pixels, std::ptrdiff_t stride, int width, int height)
    : pixels_(pixels), stride_(stride), width_(width), height_(height) {
  LiftClip();
}

void PixelCanvas::SetClip(const Area& area) {
  clip_.Left = std::clamp(area.Left, 0, width_);
  clip_.Top = std::clamp(area.Top, 0, height_);
  clip_.Right = std::clamp(area.Right, clip_.Left, width_);
  clip_.Bottom = std::clamp(area.Bottom, clip_.Top, height_);
}

// Notes for each row where the edge from a to b crosses it: the first column whose middle is on the edge or right of
// it. The edge is always walked downward and in whole numbers, so that both of its facets get the same.
void PixelCanvas::CrossRows(DevicePoint a, DevicePoint b, const Area& rows, std::size_t corners) {
  if (a.y > b.y) std::swap(a, b);
  const auto first = static_cast<int>(std::clamp<std::int64_t>(FirstMiddle(a.y), rows.Top, rows.Bottom));
  const auto end = static_cast<int>(std::clamp<std::int64_t>(FirstMiddle(b.y), rows.Top, rows.Bottom));
  if (first >= end) return;
  // column = ceil((a.x * dy + (y - a.y) * dx) / (dy * kUnits)) = floor((... + divisor - 1) / divisor), and from there
  // on by the same step from row to row, with the remainder carried.
  const std::int64_t dx = std::int64_t{b.x} - a.x, dy = std::int64_t{b.y} - a.y, divisor = dy * kUnits;
  const std::int64_t start = a.x * dy + (first * kUnits - a.y) * dx + divisor - 1;
  const std::int64_t step = FloorDiv(dx, dy), stepRest = (dx - step * dy) * kUnits;
  std::int64_t column = FloorDiv(start, divisor), rest = start - column * divisor;
  for (int row = first; row < end; ++row) {
    const auto line = static_cast<std::size_t>(row - rows.Top);
    crossings_[line * corners + crossed_[line]++] =
        static_cast<int>(std::clamp<std::int64_t>(column, clip_.Left, clip_.Right));
    column += step;
    rest += stepRest;
    if (rest >= divisor) {
      rest -= divisor;
      ++column;
    }
  }
}

// Calls paint(row, left, right) for each run of pixels inside.
template <typename Paint>
void PixelCanvas::EachRun(std::span<const DevicePoint> polygon, Paint paint) {
  if (polygon.size() < 3) return;
  const auto [top, bottom] =
      std::minmax_element(polygon.begin(), polygon.end(), [](DevicePoint a, DevicePoint b) { return a.y < b.y; });
  Area rows = clip_;
  rows.Top = static_cast<int>(std::clamp<std::int64_t>(FirstMiddle(top->y), clip_.Top, clip_.Bottom));
  rows.Bottom = static_cast<int>(std::clamp<std::int64_t>(FirstMiddle(bottom->y), clip_.Top, clip_.Bottom));
  if (rows.Top >= rows.Bottom) return;

  const auto height = static_cast<std::size_t>(rows.Bottom - rows.Top);
  if (crossings_.size() < height * polygon.size()) crossings_.resize(height * polygon.size());
  crossed_.assign(height, 0);
  for (std::size_t i = 0; i < polygon.size(); ++i)
    CrossRows(Near(polygon[i]), Near(polygon[i + 1 < polygon.size() ? i + 1 : 0]), rows, polygon.size());

  for (std::size_t line = 0; line < height; ++line) {
    int* const begin = &crossings_[line * polygon.size()];
    int* const end = begin + crossed_[line];
    std::sort(begin, end);
    for (int* at = begin; at + 1 < end; at += 2)
      if (at[0] < at[1]) paint(rows.Top + static_cast<int>(line), at[0], at[1]);
  }
}

void PixelCanvas::Fill(std::span<const DevicePoint> polygon, std::int32_t colour) {
  const std::uint32_t pixel = PixelOf(colour);
  EachRun(polygon, [&](int row, int left, int right) { std::fill(Row(row) + left, Row(row) + right, pixel); });
}

void PixelCanvas::Shade(const std::array<DevicePoint, 3>& corners, const std::array<double, 3>& places,
                        std::span<const std::int32_t> ramp) {
  const DevicePoint a = Near(corners[0]), b = Near(corners[1]), c = Near(corners[2]);
  const std::int64_t area = Cross(a, b, c);
  if (area == 0 || ramp.empty()) return;
  // Each corner's weight in a place is the share of the area opposite to it; along a row the weights change evenly.
  const double steps = static_cast<double>(ramp.size()), last = steps - 1, scale = steps / static_cast<double>(area);
  const auto mixed = [&](std::int64_t ofA, std::int64_t ofB, std::int64_t ofC) {
    return (static_cast<double>(ofA) * places[0] + static_cast<double>(ofB) * places[1] +
            static_cast<double>(ofC) * places[2]) *
           scale;
  };
  const auto rise = [](DevicePoint from, DevicePoint to) { return kUnits * (std::int64_t{from.y} - to.y); };
  const double perPixel = mixed(rise(b, c), rise(c, a), rise(a, b));
  EachRun(corners, [&](int row, int left, int right) {
    const DevicePoint middle{static_cast<std::int32_t>(left * kUnits), static_cast<std::int32_t>(row * kUnits)};
    double at = mixed(Cross(b, c, middle), Cross(c, a, middle), Cross(a, b, middle));
    for (std::uint32_t* pixel = Row(row) + left; pixel < Row(row) + right; ++pixel, at += perPixel)
      *pixel = PixelOf(ramp[static_cast<std::size_t>(at > 0 ? std::min(at, last) : 0)]);
  });
}

// Raises the coverage of the pixels that a pen, drawn along a straight line, reaches. Its edge is smoothed over half a
// pixel to either side.
void PixelCanvas::Cover(ExactPoint from, ExactPoint to, const CanvasPen& pen) {
  constexpr double kSmooth = 0.5;
  const bool flatEnds = pen.FlatEnds && !pen.Pattern.Elements().empty();
  const double reach = pen.Width / 2 + kSmooth, ahead = flatEnds ? kSmooth : reach;
  const double dx = to.x - from.x, dy = to.y - from.y, length = std::sqrt(dx * dx + dy * dy);
  const double ux = length > 0 ? dx / length : 1, uy = length > 0 ? dy / length : 0;
  const auto rowAfter = [&](double y) {
    return y < clip_.Top ? clip_.Top : y < clip_.Bottom ? static_cast<int>(y) + 1 : clip_.Bottom;
  };
  const int first = rowAfter(std::min(from.y, to.y) - reach), end = rowAfter(std::max(from.y, to.y) + reach);
  // With `along` the way of a place along the line and `across` its distance from it:
  const Strip alongLine(ux, uy, -ahead, length + ahead), besideLine(-uy, ux, -reach, reach);
  for (int row = first; row < end; ++row) {
    const double y = row - from.y;
    const auto [enter, leave] = alongLine.At(y);
    const auto [enterSide, leaveSide] = besideLine.At(y);
    const double low = std::max(enter, enterSide) + from.x, high = std::min(leave, leaveSide) + from.x;
    if (!(low < high) || low >= clip_.Right || high < clip_.Left) continue;
    const int left = low < clip_.Left ? clip_.Left : static_cast<int>(low) + 1;
    const int right = high < clip_.Right ? static_cast<int>(high) + 1 : clip_.Right;
    if (left >= right) continue;
    covered_.push_back({row, left, right});
    double along = (left - from.x) * ux + y * uy, across = y * ux - (left - from.x) * uy;
    std::uint8_t* const line = &coverage_[static_cast<std::size_t>(row) * static_cast<std::size_t>(width_)];
    for (int column = left; column < right; ++column, along += ux, across -= uy) {
      const double beyond = std::max(-along, along - length);
      double share = reach - std::abs(across);
      if (flatEnds)
        share = std::min(share, kSmooth - beyond);
      else if (beyond > 0)
        share = reach - std::sqrt(across * across + beyond * beyond);
      if (share <= 0) continue;
      const auto cover = static_cast<std::uint8_t>(std::min(share, 1.0) * 255 + 0.5);
      line[column] = std::max(line[column], cover);
    }
  }
}

void PixelCanvas::Ink(std::int32_t colour) {
  const std::uint32_t ink = PixelOf(colour);
  for (const Run& run : covered_) {
    std::uint32_t* const pixels = Row(run.Row);
    std::uint8_t* const line = &coverage_[static_cast<std::size_t>(run.Row) * static_cast<std::size_t>(width_)];
    for (int column = run.Left; column < run.Right; ++column) {
      if (line[column] == 0) continue;
      pixels[column] = Mixed(pixels[column], ink, line[column]);
      line[column] = 0;
    }
  }
  covered_.clear();
}

void PixelCanvas::Outline(std::span<const DevicePoint> polygon, const CanvasPen& pen) {
  coverage_.resize(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_));
  const auto stroke = [&](ExactPoint from, ExactPoint to) { Cover(from, to, pen); };
  const double rim = pen.Width;
  std::optional<PatternWalk> pattern;
  if (!pen.Pattern.Elements().empty())
    pattern.emplace(pen.Pattern, Sight{clip_.Left - rim, clip_.Top - rim, clip_.Right + rim, clip_.Bottom + rim});
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const ExactPoint from = InPixels(polygon[i]), to = InPixels(polygon[i + 1 < polygon.size() ? i + 1 : 0]);
    if (pattern)
      pattern->Segment(from, to, stroke);
    else
      stroke(from, to);
  }
  Ink(pen.Colour);
}

}  // namespace quorvex
