#include "plot/PixelCanvas.h"

#include <algorithm>
#include <cmath>
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

// The first whole number behind a place, if it lies within the limits.
int After(double place, int least, int most) {
  return place < least ? least : place < most ? static_cast<int>(place) + 1 : most;
}

double Larger(double a, double b) { return a > b ? a : b; }
double Smaller(double a, double b) { return a < b ? a : b; }

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
  Area area = clip_;
  std::ptrdiff_t perColumn = 1, perRow = stride_;
  if (std::abs(to.y - from.y) > std::abs(to.x - from.x)) {  // all mirrored, so that the line runs more along than down
    std::swap(from.x, from.y);
    std::swap(to.x, to.y);
    area = {clip_.Top, clip_.Left, clip_.Bottom, clip_.Right};
    std::swap(perColumn, perRow);
  }
  if (to.x < from.x) std::swap(from, to);
  const double dx = to.x - from.x, dy = to.y - from.y, length = std::sqrt(dx * dx + dy * dy);
  const double ux = length > 0 ? dx / length : 1, uy = length > 0 ? dy / length : 0, slope = uy / ux;

  constexpr double kSmooth = 0.5;
  const bool flatEnds = pen.FlatEnds && !pen.Pattern.Elements().empty();
  const double reach = pen.Width / 2 + kSmooth;
  // In a column the pen reaches so far up and down, and so many pixels at most.
  const double upDown = reach / ux;
  const int most = static_cast<int>(Smaller(std::ceil(2 * upDown), area.Bottom - area.Top));
  const int first = After(from.x - reach, area.Left, area.Right), end = After(to.x + reach, area.Left, area.Right);
  const auto room = covered_ + static_cast<std::size_t>(end - first) * static_cast<std::size_t>(most);
  if (places_.size() < room) places_.resize(room);

  // Without branches, which would often be mistaken and cost more than all the rest.
  std::uint8_t* const coverage = coverage_.data();
  std::ptrdiff_t* next = places_.data() + covered_;
  const auto raise = [&](std::ptrdiff_t place, double share) {
    const auto cover = static_cast<std::uint8_t>(static_cast<int>(Larger(Smaller(share, 1), 0) * 255 + 0.5));
    const std::uint8_t before = coverage[place];
    coverage[place] = before > cover ? before : cover;
    *next = place;
    next += before == 0 && cover != 0;
  };
  for (int column = first; column < end; ++column) {
    const double x = column - from.x;
    const int top = After(from.y + x * slope - upDown, area.Top, area.Bottom);
    const int bottom = std::min(top + most, area.Bottom);
    // Of each pixel, its way along the line and its distance from it.
    double along = x * ux + (top - from.y) * uy, across = (top - from.y) * ux - x * uy;
    std::ptrdiff_t place = column * perColumn + top * perRow;
    const double nearEnd = reach * std::abs(uy);
    if (x >= nearEnd && x <= dx - nearEnd) {
      for (int row = top; row < bottom; ++row, across += ux, place += perRow) raise(place, reach - std::abs(across));
      continue;
    }
    for (int row = top; row < bottom; ++row, along += uy, across += ux, place += perRow) {
      const double beyond = Larger(-along, along - length), outside = Larger(beyond, 0);
      raise(place, flatEnds ? Smaller(reach - std::abs(across), kSmooth - beyond)
                            : reach - std::sqrt(across * across + outside * outside));
    }
  }
  covered_ = static_cast<std::size_t>(next - places_.data());
}

void PixelCanvas::Ink(std::int32_t colour) {
  const std::uint32_t ink = PixelOf(colour);
  for (const std::ptrdiff_t place : std::span(places_).first(covered_)) {
    std::uint8_t& cover = coverage_[static_cast<std::size_t>(place)];
    pixels_[place] = Mixed(pixels_[place], ink, cover);
    cover = 0;
  }
  covered_ = 0;
}

void PixelCanvas::Outline(std::span<const DevicePoint> polygon, const CanvasPen& pen) {
  coverage_.resize(static_cast<std::size_t>(stride_) * static_cast<std::size_t>(height_));
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
