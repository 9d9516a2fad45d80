#include <utility>

#include "plot/DeviceMetrics.h"
#include "plot/DrawAxes.h"
#include "plot/DrawBands.h"
#include "plot/DrawSeries.h"
#include "plot/PlotClass.h"

namespace quorvex {
namespace {

// The maps between the axes and the device, for a frame.
void ComputeDeviceScale(const PlotClass& plot, std::int32_t penScale, PlotPicture& picture) {
  const DeviceRect& frame = picture.Frame;
  const AxisLimits across = (plot.SwapAxis ? plot.Y : plot.X).Limits();
  const AxisLimits up = (plot.SwapAxis ? plot.X : plot.Y).Limits();
  picture.Horizontal = AxisMap::Between(across.Min, across.Max, across.Log, frame.left, frame.right, penScale);
  picture.Vertical = AxisMap::Between(up.Min, up.Max, up.Log, frame.bottom, frame.top, penScale);
}

}  // namespace

// Of long series it looks at some points.
double PlotClass::PointsWithin(const DeviceRect& box, const PlotPicture& picture) const {
  constexpr std::size_t kEnough = 500;
  double shares = 0;
  for (const PlotSeries& series : PlotData) {
    if (!series.Displayed()) continue;
    SeriesTable table = series.CopyDataTo();
    if (SwapAxis) std::swap(table.X, table.Y);
    const std::size_t stride = table.X.size() / kEnough + 1;
    std::size_t within = 0;
    for (std::size_t i = 0; i < table.X.size(); i += stride)
      within += box.Contains(picture.Horizontal.ToDevice(table.X[i]), picture.Vertical.ToDevice(table.Y[i]));
    shares += static_cast<double>(within * stride) / static_cast<double>(table.X.size());
  }
  return shares;
}

std::optional<std::string> PlotClass::DrawContents(DrawingSurface& surface, const DeviceMetrics& metrics,
                                                   PlotPicture& picture) {
  const PlotMargins around = MeasurePlot(surface, *this, metrics);
  DeviceRect frame = ComputePlotRect(around, metrics, Make2DSquare);
  // Its lines are drawn on pixels, and data at its edge belong on them.
  for (std::int32_t* edge : {&frame.left, &frame.top, &frame.right, &frame.bottom}) *edge = surface.OnPixel(*edge);
  if (frame.width() <= 0 || frame.height() <= 0) return std::nullopt;
  picture.Frame = frame;
  ComputeDeviceScale(*this, metrics.PenScale, picture);
  DrawBands(surface, metrics, picture, *this);  // below the grid
  DrawAxes(surface, *this, metrics, around, picture.Frame);
  for (const PlotSeries& series : PlotData)
    if (series.Displayed() && !DrawSeries(surface, series, metrics, picture, *this)) return kPlotFailure;
  for (const PlotSeries& series : PlotData)
    if (series.Style().ShowErrorBars) DrawErrorBars(surface, series, metrics, picture, *this);
  return std::nullopt;
}

}  // namespace quorvex
