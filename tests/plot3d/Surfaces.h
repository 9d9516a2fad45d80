#pragma once

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "drawing/RecordingSurface.h"
#include "engine/MvClass.h"
#include "engine/Points.h"
#include "plot/DeviceMetrics.h"
#include "plot3d/PlotClass3D.h"

namespace quorvex {

// The surface of a model of x1 and x2, whose coefficients are 1, over a mesh.
inline PlotSeries Surface(const std::string& text, const TableRange& X1, const TableRange& X2,
                          const SeriesStyle& style = {}) {
  auto model = std::make_unique<MvClass>(LocaleText());
  model->SetID("model", {text});
  model->SetIC(Points({{0, 1, 2}, {0, 2, 1}}, {0, 1, 2}));
  for (int i = 1; i <= model->NumDependentVar(); ++i) model->SetValue(i, 1);
  model->GenerateTable({X1, X2}, true);
  PlotSeries series(std::move(model));
  series.Style() = style;
  return series;
}

// A plot whose axes go from 0 to 1, seen at angles in degrees.
inline PlotClass3D UnitBox(double XYAngle, double ZAngle) {
  PlotClass3D plot{Settings()};
  for (PlotAxis* axis : plot.Axes()) axis->Max = 1;
  plot.UpdateViewAngle(XYAngle, ZAngle);
  return plot;
}

// Both angles have the sine 0.6 and the cosine 0.8.
inline constexpr double kThreeFourFive = 36.86989764584402;
// From the side X2 runs to the right and Y up, from above X2 to the right and X1 down.
inline constexpr double kFacingX2 = 90, kFromTheSide = 0, kFromAbove = 90;

// The box on a device, its edges 1000 units long: the origin is 500 in each direction from the middle at (866, 866).
inline BoxProjection Thousand(const PlotClass3D& plot) {
  return {plot.View(), {0, 0, 1732, 1732}, {plot.X.Limits(), plot.Y.Limits(), plot.Z.Limits()}, 1};
}

// Where it shows a place of the unit box at the angles of kThreeFourFive: with u = 0.6 p + 0.8 q, 1000 (0.6 q - 0.8 p)
// to the right and 1000 (0.8 r - 0.6 u) up from the middle.
inline DevicePoint Seen(double X1, double X2, double Y) {
  return {RoundToInt32(966 + 600 * X2 - 800 * X1), RoundToInt32(846 - 800 * Y + 360 * X1 + 480 * X2)};
}

// Keeps the polygons of a drawing with what they are drawn with, and checks that they are facets of a surface.
class FacetSurface : public RecordingSurface {
 public:
  struct Facet {
    std::vector<DevicePoint> Corners;
    std::optional<std::int32_t> Fill;
    SurfacePen Pen;
  };
  std::vector<Facet> Facets;

  FacetSurface() : RecordingSurface(1732, 1732) {}

  void SetFacets(bool joined) override {
    RecordingSurface::SetFacets(joined);
    joined_ = joined;
  }
  void Polygon(std::span<const DevicePoint> points) override {
    RecordingSurface::Polygon(points);
    Facets.push_back({{points.begin(), points.end()}, Objects().Brush().Colour, Objects().Pen()});
    allJoined_ = allJoined_ && joined_;
  }
  // Nothing is left over, and everything was drawn as facets.
  bool IsTidy() const { return ObjectCount() == 0 && allJoined_ && !joined_; }

 private:
  bool joined_ = false, allJoined_ = true;
};

// How far a polygon reaches.
inline DeviceRect Bounds(const std::vector<DevicePoint>& corners) {
  DeviceRect bounds{corners[0].x, corners[0].y, corners[0].x, corners[0].y};
  for (const DevicePoint& corner : corners)
    bounds = {std::min(bounds.left, corner.x), std::min(bounds.top, corner.y), std::max(bounds.right, corner.x),
              std::max(bounds.bottom, corner.y)};
  return bounds;
}

// What a polygon covers, in square units.
inline double Area(const std::vector<DevicePoint>& corners) {
  double twice = 0;
  for (std::size_t i = 0; i < corners.size(); ++i) {
    const DevicePoint a = corners[i], b = corners[(i + 1) % corners.size()];
    twice += 1.0 * a.x * b.y - 1.0 * b.x * a.y;
  }
  return std::abs(twice) / 2;
}

}  // namespace quorvex
