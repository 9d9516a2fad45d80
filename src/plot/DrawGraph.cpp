#include "plot/DeviceMetrics.h"
#include "plot/DrawAxes.h"
#include "plot/DrawSeries.h"
#include "plot/PlotBoxes.h"
#include "plot/PlotClass.h"

namespace quorvex {
namespace {

// The maps between the axes and the device, for a frame.
void ComputeDeviceScale(const PlotClass& plot, PlotPicture& picture) {
  const DeviceRect& frame = picture.Frame;
  const AxisLimits across = (plot.SwapAxis ? plot.Y : plot.X).Limits();
  const AxisLimits up = (plot.SwapAxis ? plot.X : plot.Y).Limits();
  picture.Horizontal = AxisMap::Between(across.Min, across.Max, across.Log, frame.left, frame.right);
  picture.Vertical = AxisMap::Between(up.Min, up.Max, up.Log, frame.bottom, frame.top);
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
  if (InitPlotWidth == 0 || InitPlotHeight == 0) {
    InitPlotWidth = surface.GetDeviceCaps(DeviceCap::HORZRES);
    InitPlotHeight = surface.GetDeviceCaps(DeviceCap::VERTRES);
  }
  DrawPageBackground(surface, metrics, PlotBackgroundColor);
  const PlotMargins around = MeasurePlot(surface, *this, metrics);
  const DeviceRect frame = ComputePlotRect(around, metrics, Make2DSquare);
  if (frame.width() <= 0 || frame.height() <= 0) return true;  // titles and numbers leave no room
  picture.Frame = frame;
  DrawAxes(surface, *this, metrics, around, picture.Frame);
  ComputeDeviceScale(*this, picture);

  for (const PlotSeries& series : PlotData) {
    if (!series.Displayed() || DrawSeries(surface, series, metrics, picture, SwapAxis)) continue;
    PlotCreated = false;
    prompter.Refuse(kPlotFailure);
    return false;
  }
  for (const PlotSeries& series : PlotData)
    if (series.Style().ShowErrorBars) DrawErrorBars(surface, series, metrics, picture, *this);
  if (Legend.Show) picture.Legend = DrawLegend(surface, *this, metrics, picture.Frame);
  if (FootNote.Show) picture.FootNote = DrawFootNote(surface, *this, metrics);
  if (const SurfaceHandle recording = surface.CloseEnhMetaFile()) MetafileHandle = recording;
  return true;
}

}  // namespace quorvex
