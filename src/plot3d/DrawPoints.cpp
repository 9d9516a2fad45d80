#include "plot3d/DrawPoints.h"

#include <algorithm>
#include <cmath>

#include "plot/Markers.h"
#include "plot/StyledLines.h"

namespace quorvex {
namespace {

// Vertical bars, in the colours for what lies above and below.
class Bars {
 public:
  Bars(DrawingSurface& surface, const PlotSeries& series, const PlotClass3D& plot, const DeviceMetrics& metrics,
       const BoxProjection& projection)
      : surface_(surface),
        plot_(plot),
        projection_(projection),
        width_(series.Style().DrawWidth),
        penScale_(metrics.PenScale),
        cap_(metrics.ErrorCap()) {}

  // A bar over a place of the X1-X2 plane, between two values of Y, of which each may lie beyond the limits.
  void Draw(double X1, double X2, double from, double to, bool above) const {
    Line(Place(X1, X2, Height(from)), Place(X1, X2, Height(to)), above);
  }

  // The same with a cap where it ends, unless that is beyond the limits.
  void DrawCapped(double X1, double X2, double from, double to, bool above) const {
    Draw(X1, X2, from, to, above);
    if (!projection_.Contains(X1, X2, to)) return;
    const DevicePoint end = Place(X1, X2, Height(to));
    Line({end.x - cap_, end.y}, {end.x + cap_, end.y}, above);
  }

 private:
  // What a logarithmic axis has no place for lies below its lower end.
  double Height(double value) const {
    const AxisVector& axis = projection_.Axis(2);
    const double plotted = axis.Plotted(value);
    return std::isnan(plotted) ? axis.Min : std::clamp(plotted, axis.Min, axis.Max);
  }

  DevicePoint Place(double X1, double X2, double height) const {
    return projection_.Place(projection_.Axis(0).Plotted(X1), projection_.Axis(1).Plotted(X2), height).Rounded();
  }

  void Line(DevicePoint from, DevicePoint to, bool above) const {
    DrawStyledSegment(surface_, from, to, plot_.ErrorColorStyle, width_,
                      above ? plot_.ErrorColorAbove : plot_.ErrorColorBelow, penScale_);
  }

  DrawingSurface& surface_;
  const PlotClass3D& plot_;
  const BoxProjection& projection_;
  std::int32_t width_, penScale_, cap_;
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
  const Bars bars(surface, data, plot, metrics, projection);
  for (std::size_t i = 0; i < Y.size(); ++i) {
    if (!projection.Contains(X1[i], X2[i], Y[i])) continue;
    bars.DrawCapped(X1[i], X2[i], Y[i], ends.Max[i], true);
    bars.DrawCapped(X1[i], X2[i], Y[i], ends.Min[i], false);
  }
}

void DrawResidualBars3D(DrawingSurface& surface, const PlotSeries& series, const PlotClass3D& plot,
                        const DeviceMetrics& metrics, const BoxProjection& projection) {
  const ModelClass& model = *series.Model();
  const std::span<const double> fitted = model.FittedData();
  const Bars bars(surface, series, plot, metrics, projection);
  for (std::size_t i = 0; i < fitted.size(); ++i) {
    const std::size_t point = i + 1;
    const double X1 = model.InputX(point, 1), X2 = model.InputX(point, 2), Y = model.InputY(point);
    if (projection.Contains(X1, X2, Y) || projection.Contains(X1, X2, fitted[i]))
      bars.Draw(X1, X2, Y, fitted[i], Y > fitted[i]);
  }
}

}  // namespace quorvex
