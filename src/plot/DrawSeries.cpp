#include "plot/DrawSeries.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "drawing/Markers.h"
#include "drawing/StyledLines.h"
#include "plot/DevicePoints.h"
#include "plot/RefineCurve.h"

namespace quorvex {

bool DrawSeries(DrawingSurface& surface, const PlotSeries& series, const DeviceMetrics& metrics,
                const PlotPicture& picture, const PlotClass& plot) {
  const SeriesTable table = series.CopyDataTo();
  if (table.Y.empty()) return false;

  const SeriesStyle& style = series.Style();
  const DeviceRect& frame = picture.Frame;
  if (style.DisplayLine) {
    const ClipRectangle clip(surface, frame.left, frame.top, frame.right, frame.bottom);
    const bool refined = series.Data() == nullptr && !plot.PlotAtFittedOnly;
    const Curve curve = refined ? RefineCurve(
                                      table, [&](double x, double& y) { return series.Evaluate(x, y); }, picture, plot,
                                      kInchesOff * metrics.DevicePpi)
                                : Curve();
    const DevicePoints line = refined ? DevicePoints(curve.X, curve.Y, picture, plot.SwapAxis)
                                      : DevicePoints(table.X, table.Y, picture, plot.SwapAxis);
    DrawStyledPolyline(surface, line.Across(), line.Down(), style.DrawStyle, style.DrawWidth, style.DrawColor,
                       metrics.PenScale);
  }
  if (style.DisplayMarker) {
    const std::int32_t radius = metrics.MarkerRadius(style.MarkerSize);
    const ClipRectangle clip(surface, frame.left - radius, frame.top - radius, frame.right + radius,
                             frame.bottom + radius);
    const DevicePoints points(table.X, table.Y, picture, plot.SwapAxis);
    DrawMarkers(surface, points.Across(), points.Down(), style.MarkerColor, style.MarkerStyle, radius,
                metrics.PenScale);
  }
  return true;
}

void DrawErrorBars(DrawingSurface& surface, const PlotSeries& series, const DeviceMetrics& metrics,
                   const PlotPicture& picture, const PlotClass& plot) {
  const ErrorTable bars = series.CopyMaXMinErrorDataTo();
  if (bars.Max.empty()) return;
  const SeriesTable table = series.CopyDataTo();
  const AxisMap& mapX = plot.SwapAxis ? picture.Vertical : picture.Horizontal;
  const AxisMap& mapY = plot.SwapAxis ? picture.Horizontal : picture.Vertical;
  // Where a logarithmic axis has no place for the end of a bar, the bar leaves the frame at the axis' lower end.
  const auto end = [&](double value) {
    return mapY.Log && value <= 0 ? (plot.SwapAxis ? -mapY.OutOfRange : mapY.OutOfRange) : mapY.ToDevice(value);
  };
  const auto line = [&](std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2) {
    if (plot.SwapAxis) {
      std::swap(x1, y1);
      std::swap(x2, y2);
    }
    DrawLine(surface, {x1, y1}, {x2, y2});
  };

  const SeriesStyle& style = series.Style();
  const std::int32_t cap = metrics.ErrorCap();
  const DeviceRect& frame = picture.Frame;
  const ClipRectangle clip(surface, frame.left, frame.top, frame.right, frame.bottom);
  const SelectedObject pen(surface,
                           surface.CreatePen(0, std::max(style.DrawWidth, 1) * metrics.PenScale, style.DrawColor));
  std::optional<DevicePoint> last;
  for (std::size_t i = 0; i < bars.Max.size(); ++i) {
    if (!(table.X[i] >= plot.X.Min && table.X[i] <= plot.X.Max)) continue;
    const std::int32_t x = mapX.ToDevice(table.X[i]), max = end(bars.Max[i]), min = end(bars.Min[i]);
    const DevicePoint point{x, mapY.ToDevice(table.Y[i])};
    if (point == last) continue;
    last = point;
    line(x, max, x, min);
    line(x - cap, max, x + cap, max);
    line(x - cap, min, x + cap, min);
  }
}

}  // namespace quorvex
