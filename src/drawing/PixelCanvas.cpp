#include "drawing/PixelCanvas.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <tuple>
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

// A line so mirrored that it runs to the right, and more along than down; the picture is mirrored with it.
struct MirroredLine {
  MirroredLine(ExactPoint from, ExactPoint to, const PixelCanvas::Area& clip, std::ptrdiff_t stride)
      : From(from), To(to), Clip(clip), PerColumn(1), PerRow(stride) {
    if (std::abs(To.y - From.y) > std::abs(To.x - From.x)) {
      std::swap(From.x, From.y);
      std::swap(To.x, To.y);
      std::swap(Clip.Left, Clip.Top);
      std::swap(Clip.Right, Clip.Bottom);
      std::swap(PerColumn, PerRow);
    }
    if (To.x < From.x) std::swap(From, To);
    Slope = To.x > From.x ? (To.y - From.y) / (To.x - From.x) : 0;
  }
  double At(int column) const { return From.y + (column - From.x) * Slope; }  // its row there
  std::ptrdiff_t Place(int column, int row) const { return column * PerColumn + row * PerRow; }

  ExactPoint From, To;
  PixelCanvas::Area Clip;
  std::ptrdiff_t PerColumn, PerRow;  // from a pixel to the next
  double Slope;
};

// `share` of 255 of the ink over what is there.
std::uint32_t Mixed(std::uint32_t ground, std::uint32_t ink, std::uint32_t share) {
  const std::uint32_t of256 = share + (share >> 7);
  const auto mixed = [&](std::uint32_t channels) {  // those of other bits between them take the carry
    const std::uint32_t from = ground & channels, to = ink & channels;
    return (from + ((to - from) * of256 >> 8)) & channels;
  };
  const std::uint32_t redBlue = mixed(0x00FF00FF), green = mixed(0x0000FF00);
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
    if (end - begin == 2)  // of nearly every facet
      std::tie(begin[0], begin[1]) = std::minmax({begin[0], begin[1]});
    else
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

// Covers a pixel by its distance from the line: wholly up to half a pixel within the pen's edge, and half a pixel
// outside of it no more. The distance of a thin line is taken straight up and down, and it ends at the nearest column:
// corners are closed so, too, and most outlines are thin.
void PixelCanvas::Cover(ExactPoint from, ExactPoint to, double width, bool thin, bool flatEnds) {
  constexpr double kSmooth = 0.5;
  const MirroredLine line(from, to, clip_, stride_);
  const double steepness = std::sqrt(1 + line.Slope * line.Slope), length = (line.To.x - line.From.x) * steepness;
  const double ux = 1 / steepness, uy = line.Slope * ux;
  const double reach = (thin ? steepness * width : width) / 2 + kSmooth, scale = thin ? 1 : ux;
  // In a column the pen reaches so far up and down, and so many pixels at most.
  const double upDown = reach / scale, beyondEnds = thin ? kSmooth : reach,
               nearEnds = thin ? -kSmooth : reach * std::abs(uy);
  const int most = static_cast<int>(std::min(std::ceil(2 * upDown), 1.0 * (line.Clip.Bottom - line.Clip.Top)));
  const int first = After(line.From.x - beyondEnds, line.Clip.Left, line.Clip.Right);
  const int end = After(line.To.x + beyondEnds, line.Clip.Left, line.Clip.Right);
  Raiser raiser = RaiserOf(end - first, most);
  for (int column = first; column < end; ++column) {
    const double middle = line.At(column), x = column - line.From.x;
    if (middle + upDown < line.Clip.Top || middle - upDown > line.Clip.Bottom) continue;
    const int top = After(middle - upDown, line.Clip.Top, line.Clip.Bottom);
    const int bottom = std::min(top + most, line.Clip.Bottom);
    std::ptrdiff_t place = line.Place(column, top);
    double across = (top - middle) * scale;
    if (x >= nearEnds && column <= line.To.x - nearEnds) {
      constexpr double kCover = 255 * 256;  // a pixel, in whole numbers
      const int edge = static_cast<int>(reach * kCover), step = static_cast<int>(scale * kCover);
      int off = static_cast<int>(across * kCover);
      for (int row = top; row < bottom; ++row, off += step, place += line.PerRow)
        raiser.Raise(place, (edge - std::abs(off)) >> 8);
      continue;
    }
    double along = x * ux + (top - line.From.y) * uy;
    for (int row = top; row < bottom; ++row, across += ux, along += uy, place += line.PerRow) {
      const double beyond = std::max(-along, along - length), outside = std::max(beyond, 0.0);
      const double share = flatEnds ? std::min(reach - std::abs(across), kSmooth - beyond)
                                    : reach - std::sqrt(across * across + outside * outside);
      raiser.Raise(place, static_cast<int>(share * 255));
    }
  }
  Take(raiser);
}

PixelCanvas::Raiser PixelCanvas::RaiserOf(int columns, int rows) {
  const auto room = covered_ + static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows);
  if (places_.size() < room) places_.resize(room);
  return {coverage_.data(), places_.data() + covered_};
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
  const bool patterned = !pen.Pattern.Elements().empty();
  // What is as wide covers all, and its whole numbers have room.
  const double width = std::clamp(pen.Width, 1.0, 10000.0);
  const auto stroke = [&](ExactPoint from, ExactPoint to) {
    Cover(from, to, width, !patterned && width == 1, patterned && pen.FlatEnds);
  };
  const double rim = width;
  std::optional<PatternWalk> pattern;
  if (patterned)
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
