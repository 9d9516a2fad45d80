#include "plot3d/PlotClass3D.h"

#include <algorithm>
#include <cmath>

#include "plot/PlotDefaults.h"
#include "plot3d/BoxModes.h"
#include "plot3d/DrawBox.h"
#include "plot3d/DrawPoints.h"
#include "plot3d/DrawSurface.h"

namespace quorvex {
namespace {

// X1 from left to right, X2 from the front to the back, seen from somewhat above.
constexpr double kFirstXYAngle = 140, kFirstZAngle = 30;
constexpr std::int32_t kLightGrey = 0xF0F0F0;

constexpr const char* kNoLogScale =
    "An error occurred because a portion of the predicted curve crosses the zero axis, and cannot be plotted on log "
    "scale";

template <typename Io, typename Plot>
void ListDefaults(const Io& io, Plot& plot) {
  io("extrapolate3d", plot.Extrapolate);
  io("make3dsquare", plot.Make3DSquare);
  io("shade3dmeshbyvalue", plot.ShadeMeshByValue);
  io("mesh3dcolorscheme", plot.MeshColorScheme, 0, kMeshSchemes - 1);
  io("display3dcontourlines", plot.DisplayContourLines);
  io("mesh3dcontourcount", plot.MeshContourDensity, 2, 50);
  io("useaxisscale", plot.UseAxisScale);
  io("mesh3dcontourcolor", plot.ContourPenColor);
  io("mesh3dcontourwidth", plot.ContourPenWidth, 1, 10);
  io("mesh3dcontourstyle", plot.ContourPenStyle, 0, 4);
}

}  // namespace

PlotClass3D::PlotClass3D(const Settings& settings, const LocaleText& locale) : PlotPage(settings, locale) {
  X.Read(settings, "x", "3d");
  Y.Read(settings, "y", "3d");
  Z.Read(settings, "z", "3d");
  X.AxisTitle = "X1";
  Y.AxisTitle = "X2";
  Z.AxisTitle = "Y";
  for (BoxAxis* axis : {&X, &Y, &Z}) axis->TickColor = TickPenColor;
  ListDefaults(ReadDefaults(settings), *this);
  BoxXY.Color = BoxYZ.Color = BoxXZ.Color = kLightGrey;
  UpdateViewAngle(kFirstXYAngle, kFirstZAngle);
}

void PlotClass3D::StoreDefaults(Settings& settings) const {
  PlotPage::StoreDefaults(settings);
  X.Store(settings, "x", "3d");
  Y.Store(settings, "y", "3d");
  Z.Store(settings, "z", "3d");
  ListDefaults(KeepDefaults(settings), *this);
}

void PlotClass3D::UpdateViewAngle(double xyAngleDegrees, double zAngleDegrees) {
  xyDegrees_ = xyAngleDegrees;
  zDegrees_ = zAngleDegrees;
  XYAngle = kViewPi * xyAngleDegrees / 180;
  ZAngle = kViewPi * zAngleDegrees / 180;
  view_ = BoxView(XYAngle, ZAngle);
}

void PlotClass3D::Turn(double xyDegrees, double zDegrees) {
  constexpr double kRound = 360;
  const double turned = std::fmod(xyDegrees_ + xyDegrees, kRound);
  UpdateViewAngle(turned < 0 ? turned + kRound : turned, std::clamp(zDegrees_ + zDegrees, 0.0, kRound / 2));
}

std::unique_ptr<PlotModes> PlotClass3D::MakeModes(PlotHost& host, Prompter&) {
  return std::make_unique<BoxModes>(*this, host);
}

bool PlotClass3D::IsShown(const PlotSeries& series) const {
  return series.Displayed() || (series.Model() != nullptr && series.Style().ShadeMesh);
}

bool PlotClass3D::GenerateTable(PlotSeries& series) const {
  const auto range = [&](const BoxAxis& axis, int variable, int points) {
    const double least = series.InputXMin(variable), most = series.InputXMax(variable);
    if (!PlotAtFittedOnly) return TableRange{axis.Min, axis.Max, points, axis.LogScale};
    // A mesh has two points of a variable, be they the same.
    return least < most ? TableRange{} : TableRange{least, most, 2};
  };
  return series.GenerateTable({range(X, 1, XPointsPerPlot), range(Y, 2, YPointsPerPlot)}, Extrapolate) &&
         (!series.Style().ShowErrorBars || series.GenerateErrorTable());
}

BoxProjection PlotClass3D::Projection(const DeviceRect& frame, std::int32_t penScale) const {
  return {view_, frame, {X.Limits(), Y.Limits(), Z.Limits()}, penScale};
}

// Of long series it looks at some points.
double PlotClass3D::PointsWithin(const DeviceRect& box, const PlotPicture& picture) const {
  constexpr std::size_t kEnough = 500;
  const BoxProjection projection = Projection(picture.Frame, 1);
  double shares = 0;
  for (const PlotSeries& series : PlotData) {
    if (!IsShown(series)) continue;
    const SeriesTable first = series.CopyDataTo(1), second = series.CopyDataTo(2);
    const std::size_t stride = first.Y.size() / kEnough + 1;
    std::size_t within = 0;
    for (std::size_t i = 0; i < first.Y.size(); i += stride) {
      const DevicePoint at = projection.ToDevice(first.X[i], second.X[i], first.Y[i]);
      within += box.Contains(at.x, at.y);
    }
    shares += static_cast<double>(within * stride) / static_cast<double>(first.Y.size());
  }
  return shares;
}

std::optional<std::string> PlotClass3D::DrawContents(DrawingSurface& surface, const DeviceMetrics& metrics,
                                                     PlotPicture& picture) {
  const BoxMargins around = MeasureBox(surface, *this, metrics);
  const DeviceRect frame = ComputeBoxRect(around, metrics, Make3DSquare);
  if (frame.width() <= 0 || frame.height() <= 0) return std::nullopt;
  picture.Frame = frame;
  const BoxProjection box = Projection(frame, metrics.PenScale);
  DrawBox(surface, *this, metrics, around, box, frame);

  // A surface covers points behind and before it alike.
  for (const PlotSeries& series : PlotData)
    if (series.Data() != nullptr) DrawScatter(surface, series, metrics, box);
  for (const PlotSeries& series : PlotData) {
    if (series.Model() == nullptr || !IsShown(series)) continue;
    if (Z.LogScale && series.Model()->ZIsNegative) return kNoLogScale;
    constexpr std::int32_t kFewestBits = 16;  // for colours without steps
    if (MeshColorScheme == kTrueColorScheme && ShadeMeshByValue && series.Style().ShadeMesh != 0 &&
        surface.GetDeviceCaps(DeviceCap::BITSPIXEL) < kFewestBits)
      MeshColorScheme = kSpectrumScheme;
    if (!DrawSurface(surface, series, *this, metrics, box)) return kPlotFailure;
  }
  for (const PlotSeries& series : PlotData)
    if (series.Data() != nullptr && series.Style().ShowErrorBars) DrawErrorBars3D(surface, series, *this, metrics, box);
  for (const PlotSeries& series : PlotData)
    if (series.Model() != nullptr && series.Style().ShowErrorBars)
      DrawResidualBars3D(surface, series, *this, metrics, box);
  DrawBoxFrontEdges(surface, *this, box);
  return std::nullopt;
}

}  // namespace quorvex
