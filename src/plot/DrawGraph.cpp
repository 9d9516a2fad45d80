#include <utility>

#include "plot/DeviceMetrics.h"
#include "plot/DrawAxes.h"
#include "plot/DrawSeries.h"
#include "plot/PlotBoxes.h"
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

// The shares of the displayed series' points that lie within a rectangle, added up. Of long series it looks at some.
double PointsWithin(const DeviceRect& box, const PlotClass& plot, const PlotPicture& picture) {
  constexpr std::size_t kEnough = 500;
  double shares = 0;
  for (const PlotSeries& series : plot.PlotData) {
    if (!series.Displayed()) continue;
    SeriesTable table = series.CopyDataTo();
    if (plot.SwapAxis) std::swap(table.X, table.Y);
    const std::size_t stride = table.X.size() / kEnough + 1;
    std::size_t within = 0;
    for (std::size_t i = 0; i < table.X.size(); i += stride)
      within += box.Contains(picture.Horizontal.ToDevice(table.X[i]), picture.Vertical.ToDevice(table.Y[i]));
    shares += static_cast<double>(within * stride) / static_cast<double>(table.X.size());
  }
  return shares;
}

}  // namespace

bool PlotClass::DrawGraph(DrawingSurface& surface, Prompter& prompter, const PageSetup& page) {
  PlotPicture picture;
  return DrawOn(surface, prompter, page, picture);
}

void PlotClass::RefreshPlot(DrawingSurface& window, Prompter& prompter) {
  if (Legend.Dragging || FootNote.Dragging || !PlotCreated) return;
  window.SetMapMode(8);
  window.SetWindowOrgEx(0, 0);
  window.SetViewportOrgEx(0, 0);
  window.SetWindowExtEx(window.ScaleWidth(), window.ScaleHeight());
  window.SetViewportExtEx(window.ScaleWidth(), window.ScaleHeight());
  // Where drawing fails, the mouse must not find what the old picture showed.
  shown_ = {};
  DrawOn(window, prompter, {}, shown_);
}

bool PlotClass::DrawOn(DrawingSurface& surface, Prompter& prompter, const PageSetup& page, PlotPicture& picture) {
  if (!PlotCreated) return false;
  // A window may be so small that it isn't a millimetre wide: there is nothing to see, and nothing wrong.
  if (surface.GetDeviceCaps(DeviceCap::HORZSIZE) <= 0 || surface.GetDeviceCaps(DeviceCap::VERTSIZE) <= 0) return true;
  const DeviceMetrics metrics = DeviceMetrics::Measure(surface, page, static_cast<double>(TickPenLength));
  if (const auto refusal = CheckMargins(metrics.Margins, metrics.Width, metrics.Height)) {
    prompter.Refuse(*refusal);
    return false;
  }
  // The first size is the unit in which the places of legend and footnote are kept.
  if (InitPlotWidth == 0 || InitPlotHeight == 0) {
    InitPlotWidth = surface.GetDeviceCaps(DeviceCap::HORZRES);
    InitPlotHeight = surface.GetDeviceCaps(DeviceCap::VERTRES);
  }
  DrawPageBackground(surface, metrics, PlotBackgroundColor);
  const PlotMargins around = MeasurePlot(surface, *this, metrics);
  DeviceRect frame = ComputePlotRect(around, metrics, Make2DSquare);
  // Its lines are drawn on pixels, and data at its edge belong on them.
  for (std::int32_t* edge : {&frame.left, &frame.top, &frame.right, &frame.bottom}) *edge = surface.OnPixel(*edge);
  if (frame.width() <= 0 || frame.height() <= 0) return true;  // titles and numbers leave no room
  picture.Frame = frame;
  DrawAxes(surface, *this, metrics, around, picture.Frame);
  ComputeDeviceScale(*this, metrics.PenScale, picture);

  for (const PlotSeries& series : PlotData) {
    if (!series.Displayed() || DrawSeries(surface, series, metrics, picture, SwapAxis)) continue;
    PlotCreated = false;
    prompter.Refuse(kPlotFailure);
    return false;
  }
  for (const PlotSeries& series : PlotData)
    if (series.Style().ShowErrorBars) DrawErrorBars(surface, series, metrics, picture, *this);
  if (Legend.Show)
    picture.Legend = DrawLegend(surface, *this, metrics, picture.Frame,
                                [&](const DeviceRect& box) { return PointsWithin(box, *this, picture); });
  if (FootNote.Show) picture.FootNote = DrawFootNote(surface, *this, metrics);
  if (const SurfaceHandle recording = surface.CloseEnhMetaFile()) MetafileHandle = recording;
  return true;
}

}  // namespace quorvex
