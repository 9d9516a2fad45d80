#include "plot/DeviceMetrics.h"

#include "core/NumberText.h"

namespace quorvex {

DeviceMetrics DeviceMetrics::Measure(const DrawingSurface& surface, const PageSetup& page, double TickPenLength) {
  DeviceMetrics m;
  const bool printer = surface.IsPrinter();
  m.Width = surface.GetDeviceCaps(printer ? DeviceCap::PHYSICALWIDTH : DeviceCap::HORZRES);
  m.Height = surface.GetDeviceCaps(printer ? DeviceCap::PHYSICALHEIGHT : DeviceCap::VERTRES);
  if (printer) m.Margins = ConvertMargins(page, surface);
  const double pxmmX = m.Width / static_cast<double>(surface.GetDeviceCaps(DeviceCap::HORZSIZE));
  const double pxmmY = m.Height / static_cast<double>(surface.GetDeviceCaps(DeviceCap::VERTSIZE));
  m.Margin4X = RoundToInt32(pxmmX * 4);
  m.Margin4Y = RoundToInt32(pxmmY * 4);
  m.Margin2X = RoundToInt32(pxmmX * 2);
  m.Margin2Y = RoundToInt32(pxmmY * 2);
  m.DevicePpi = RoundToInt32((pxmmY + pxmmX) * 25.4 / 2);
  m.MajorTick = RoundToInt32(TickPenLength * m.DevicePpi);
  m.MinorTick = RoundToInt32(m.MajorTick / 2.0);
  m.PenScale = surface.PenScale();
  m.BlankPaper = printer && !page.PrintBackground;
  return m;
}

DeviceRect DeviceMetrics::TitleArea() const {
  return {Margins.left + Margin2X, Margins.top + Margin2Y, Width - Margins.right - Margin2X,
          Height - Margins.bottom - Margin2Y};
}

std::int32_t DeviceMetrics::MarkerRadius(std::int32_t size) const { return RoundToInt32(size * DevicePpi / 144.0); }

std::int32_t DeviceMetrics::ErrorCap() const { return RoundToInt32(DevicePpi * 0.0625); }

void DrawPageBackground(DrawingSurface& surface, const DeviceMetrics& metrics, std::int32_t colour) {
  if (metrics.BlankPaper) return;
  const SelectedObject pen(surface, surface.CreatePen(0, 1, colour));
  const SelectedObject brush(surface, surface.CreateSolidBrush(colour));
  surface.Rectangle(0, 0, metrics.Width, metrics.Height);
}

}  // namespace quorvex
