#include "plot3d/DrawPoints.h"

#include <algorithm>
#include <cmath>

#include "drawing/Markers.h"
#include "drawing/StyledLines.h"

namespace quorvex {
namespace {

// Vertical bars, all of those above their points or surface, or all below.
class Bars {
 public:
  Bars(DrawingSurface& surface, const PlotSeries& series, const PlotClass3D& plot, const DeviceMetrics& metrics,
       const BoxProjection& projection, bool above)
      : surface_(surface),
        projection_(projection),
        style_(plot.ErrorColorStyle),
        width_(std::max(series.Style().DrawWidth, 1)),
        colour_(above ? plot.ErrorColorAbove : plot.ErrorColorBelow),
        penScale_(metrics.PenScale),
        cap_(metrics.ErrorCap()),
        pen_(surface, surface.CreatePen(0, width_ * penScale_, colour_)) {}

  // A bar over a place of the X1-X2 plane, between two values of Y, of which each may lie beyond the limits.
  void Draw(double X1, double X2, double from, double to) const {
    Line(Place(X1, X2, Height(from)), Place(X1, X2, Height(to)));
  }

  // The same with a cap where it ends, unless that is beyond the limits.
  void DrawCapped(double X1, double X2, double from, double to) const {
    Draw(X1, X2, from, to);
    if (!projection_.Contains(X1, X2, to)) return;
    const DevicePoint end = Place(X1, X2, Height(to));
    Line({end.x - cap_, end.y}, {end.x + cap_, end.y});
  }

 private:
  // Within the limits. What a logarithmic axis has no place for lies below its lower end.
  double Height(double value) const {
    const AxisVector& axis = projection_.Axis(2);
    const double plotted = axis.Plotted(value);
    return std::isnan(plotted) ? axis.Min : std::clamp(plotted, axis.Min, axis.Max);
  }

  DevicePoint Place(double X1, double X2, double height) const {
    return projection_.Place(projection_.Axis(0).Plotted(X1), projection_.Axis(1).Plotted(X2), height).Rounded();
  }

  void Line(DevicePoint from, DevicePoint to) const {
    if (style_ != 0) {
      DrawStyledSegment(surface_, from, to, style_, width_, colour_, penScale_);
      return;
    }
    surface_.MoveToEx(from.x, from.y);
    surface_.LineTo(to.x, to.y);
  }

  DrawingSurface& surface_;
  const BoxProjection& projection_;
  std::int32_t style_, width_, colour_, penScale_, cap_;
  SelectedObject pen_;  // for solid bars, many of which are drawn in one go
};

}  // namespace

void DrawScatter(DrawingSurface& surface, const PlotSeries& data, const DeviceMetrics& metrics,
                 const BoxProjection& projection) {
  const SeriesTable table = data.CopyDataTo(1);
  const std::span<const double> X1 = table.X, X2 = data.CopyDataTo(2).X, Y = table.Y;
  std::vector<std::int32_t> xs, ys;
  xs.reserve(Y.size());
  ys.reserve(Y.size());
  for (std::size_t i = 0; i < Y.size(); ++i) {
    if (!projection.Contains(X1[i], X2[i], Y[i])) continue;
    const DevicePoint point = projection.ToDevice(X1[i], X2[i], Y[i]);
    xs.push_back(point.x);
    ys.push_back(point.y);
  }

  const SeriesStyle& style = data.Style();
  if (style.DisplayLine)
    DrawStyledPolyline(surface, xs, ys, style.DrawStyle, style.DrawWidth, style.DrawColor, metrics.PenScale);
  if (style.DisplayMarker)
    DrawMarkers(surface, xs, ys, style.MarkerColor, style.MarkerStyle, metrics.MarkerRadius(style.MarkerSize),
                metrics.PenScale);
}

void DrawErrorBars3D(DrawingSurface& surface, const PlotSeries& data, const PlotClass3D& plot,
                     const DeviceMetrics& metrics, const BoxProjection& projection) {
  const ErrorTable ends = data.CopyMaXMinErrorDataTo();
  if (ends.Max.empty()) return;
  const SeriesTable table = data.CopyDataTo(1);
  const std::span<const double> X1 = table.X, X2 = data.CopyDataTo(2).X, Y = table.Y;
  for (const bool above : {true, false}) {
    const Bars bars(surface, data, plot, metrics, projection, above);
    const std::span<const double> end = above ? ends.Max : ends.Min;
    for (std::size_t i = 0; i < Y.size(); ++i)
      if (projection.Contains(X1[i], X2[i], Y[i])) bars.DrawCapped(X1[i], X2[i], Y[i], end[i]);
  }
}

void DrawResidualBars3D(DrawingSurface& surface, const PlotSeries& series, const PlotClass3D& plot,
                        const DeviceMetrics& metrics, const BoxProjection& projection) {
  const ModelClass& model = *series.Model();
  const std::span<const double> fitted = model.FittedData();
  for (const bool above : {true, false}) {
    const Bars bars(surface, series, plot, metrics, projection, above);
    for (std::size_t i = 0; i < fitted.size(); ++i) {
      const double X1 = model.InputX(i + 1, 1), X2 = model.InputX(i + 1, 2), Y = model.InputY(i + 1);
      if (Y == fitted[i] || (Y > fitted[i]) != above) continue;
      if (projection.Contains(X1, X2, Y) || projection.Contains(X1, X2, fitted[i])) bars.Draw(X1, X2, Y, fitted[i]);
    }
  }
}

}  // namespace quorvex
