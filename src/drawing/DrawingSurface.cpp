#include "drawing/DrawingSurface.h"

#include <algorithm>
#include <limits>
#include <vector>

#include "core/NumberText.h"

namespace quorvex {

std::int32_t DrawingSurface::PenScale() const {
  constexpr double kScreenTwips = 15;
  const double twips = TwipsPerPixelX();
  return twips == 0 ? 1 : std::max(RoundToInt32(kScreenTwips / twips), 1);
}

namespace {

// A corner of a piece of a triangle, with its place in the ramp.
struct ShadedCorner {
  double x, y, Place;
};

// The part of a polygon whose places are `least` or more.
std::vector<ShadedCorner> From(const std::vector<ShadedCorner>& polygon, double least) {
  std::vector<ShadedCorner> part;
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const ShadedCorner &a = polygon[i], &b = polygon[(i + 1) % polygon.size()];
    if (a.Place >= least) part.push_back(a);
    if ((a.Place < least) == (b.Place < least)) continue;
    const double t = (least - a.Place) / (b.Place - a.Place);
    part.push_back({a.x + t * (b.x - a.x), a.y + t * (b.y - a.y), least});
  }
  return part;
}

}  // namespace

void DrawingSurface::ShadeTriangle(const std::array<DevicePoint, 3>& corners, const std::array<double, 3>& places,
                                   std::span<const std::int32_t> ramp) {
  std::vector<ShadedCorner> rest;
  for (std::size_t i = 0; i < corners.size(); ++i) rest.push_back({1.0 * corners[i].x, 1.0 * corners[i].y, places[i]});
  const auto [least, most] =
      std::minmax_element(rest.begin(), rest.end(), [](const auto& a, const auto& b) { return a.Place < b.Place; });
  const double steps = static_cast<double>(ramp.size());
  const auto step = [&](double place) {
    return std::min(static_cast<std::size_t>(std::clamp(place, 0.0, 1.0) * steps), ramp.size() - 1);
  };
  const std::size_t first = step(least->Place), last = step(most->Place);
  const SelectedObject pen(*this, CreatePen(5, 1, 0));
  // Each colour covers what is left of the triangle, so that no gap can show between two of them.
  for (std::size_t k = first; k <= last; ++k) {
    if (k > first) rest = From(rest, static_cast<double>(k) / steps);
    if (rest.size() < 3) return;
    std::vector<DevicePoint> points;
    for (const ShadedCorner& corner : rest) points.push_back({RoundToInt32(corner.x), RoundToInt32(corner.y)});
    const SelectedObject brush(*this, CreateSolidBrush(ramp[k]));
    Polygon(points);
  }
}

std::int32_t DrawingSurface::OnPixel(std::int32_t at) const {
  const std::int32_t units = UnitsPerPixel(), up = at + units / 2, beyond = up % units;
  return up - (beyond < 0 ? beyond + units : beyond);
}

std::int32_t MulDiv(std::int32_t a, std::int32_t b, std::int32_t c) {
  using Limits = std::numeric_limits<std::int32_t>;
  if (c == 0) return -1;
  std::int64_t product = std::int64_t{a} * b, divisor = c;
  if (divisor < 0) {
    product = -product;
    divisor = -divisor;
  }
  const std::int64_t result = (product + (product < 0 ? -divisor : divisor) / 2) / divisor;
  return result < Limits::min() || result > Limits::max() ? -1 : static_cast<std::int32_t>(result);
}

}  // namespace quorvex
