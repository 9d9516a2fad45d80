#include "drawing/Markers.h"

#include <algorithm>
#include <array>
#include <optional>

#include "drawing/StyledLines.h"

namespace quorvex {
namespace {

enum class Shape { kCircle, kSquare, kDiagonalCross, kUprightCross, kTriangleUp, kTriangleDown };

struct Style {
  Shape Drawn;
  bool Filled = false;
};

constexpr std::array<Style, 10> kStyles = {{{Shape::kCircle},
                                            {Shape::kSquare},
                                            {Shape::kDiagonalCross},
                                            {Shape::kUprightCross},
                                            {Shape::kTriangleUp},
                                            {Shape::kTriangleDown},
                                            {Shape::kCircle, true},
                                            {Shape::kSquare, true},
                                            {Shape::kTriangleUp, true},
                                            {Shape::kTriangleDown, true}}};

class MarkerPen {
 public:
  MarkerPen(DrawingSurface& surface, Style style, std::int32_t radius, SurfaceHandle brush)
      : surface_(surface), style_(style), r_(radius), brush_(brush) {}

  void Draw(DevicePoint p) const {
    switch (style_.Drawn) {
      case Shape::kCircle:
        return surface_.Ellipse(p.x - r_, p.y - r_, p.x + r_, p.y + r_);
      case Shape::kSquare:
        return surface_.Rectangle(p.x - r_, p.y - r_, p.x + r_, p.y + r_);
      case Shape::kDiagonalCross:
        DrawLine(surface_, {p.x - r_, p.y - r_}, {p.x + r_, p.y + r_});
        return DrawLine(surface_, {p.x - r_, p.y + r_}, {p.x + r_, p.y - r_});
      case Shape::kUprightCross:
        DrawLine(surface_, {p.x, p.y - r_}, {p.x, p.y + r_});
        return DrawLine(surface_, {p.x - r_, p.y}, {p.x + r_, p.y});
      case Shape::kTriangleUp:
        return Triangle(p, r_);
      case Shape::kTriangleDown:
        return Triangle(p, -r_);
    }
  }

 private:
  void Triangle(DevicePoint p, std::int32_t up) const {
    const DevicePoint corners[] = {{p.x, p.y - up}, {p.x - r_, p.y + up}, {p.x + r_, p.y + up}};
    if (!style_.Filled) {
      surface_.MoveToEx(corners[0].x, corners[0].y);
      for (const DevicePoint corner : {corners[1], corners[2], corners[0]}) surface_.LineTo(corner.x, corner.y);
      return;
    }
    surface_.Polygon(corners);
    const SurfaceObject inside(surface_, surface_.CreatePolygonRgn(corners, 1));
    surface_.FillRgn(inside, brush_);
  }

  DrawingSurface& surface_;
  Style style_;
  std::int32_t r_;
  SurfaceHandle brush_;
};

}  // namespace

void DrawMarkers(DrawingSurface& surface, std::span<const std::int32_t> xs, std::span<const std::int32_t> ys,
                 std::int32_t colour, int style, std::int32_t radius, std::int32_t penScale) {
  if (style < 0 || style >= static_cast<int>(kStyles.size())) return;
  const Style& known = kStyles[static_cast<std::size_t>(style)];
  constexpr int kHollowBrush = 5;
  const SurfaceObject fill(surface, known.Filled ? surface.CreateSolidBrush(colour) : 0);
  const SurfaceHandle brush = known.Filled ? SurfaceHandle{fill} : surface.GetStockObject(kHollowBrush);
  const SelectedObject pen(surface, surface.CreatePen(0, std::max(penScale, 1), colour));
  const Selection filling(surface, brush);
  const MarkerPen marker(surface, known, surface.OnPixel(radius), brush);

  const std::int32_t range = kOutOfRange * std::max(penScale, 1);
  const auto isFarOff = [&](std::int32_t value) { return value < -range || value > range; };
  std::optional<DevicePoint> drawn;
  for (std::size_t i = 0; i < std::min(xs.size(), ys.size()); ++i) {
    if (isFarOff(xs[i]) || isFarOff(ys[i])) continue;
    const DevicePoint point{surface.OnPixel(xs[i]), surface.OnPixel(ys[i])};
    if (point == drawn) continue;
    marker.Draw(point);
    drawn = point;
  }
}

}  // namespace quorvex
