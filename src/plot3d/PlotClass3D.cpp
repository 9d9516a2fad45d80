#include "plot3d/PlotClass3D.h"

#include <algorithm>
#include <cmath>

#include "plot3d/BoxModes.h"

namespace quorvex {
namespace {

// X1 from left to right, X2 from the front to the back, seen from somewhat above.
constexpr double kFirstXYAngle = 140, kFirstZAngle = 30;
constexpr std::int32_t kLightGrey = 0xF0F0F0;

std::int16_t Between(std::int32_t value, std::int32_t least, std::int32_t most) {
  return static_cast<std::int16_t>(std::clamp(value, least, most));
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
  Extrapolate = settings.Flag("extrapolate3d");
  ShadeMeshByValue = settings.Flag("shade3dmeshbyvalue");
  MeshColorScheme = Between(settings.Integer("mesh3dcolorscheme"), 0, kMeshSchemes - 1);
  DisplayContourLines = settings.Flag("display3dcontourlines");
  MeshContourDensity = Between(settings.Integer("mesh3dcontourcount"), 2, 50);
  UseAxisScale = settings.Flag("useaxisscale");
  ContourPenColor = settings.Integer("mesh3dcontourcolor");
  ContourPenWidth = Between(settings.Integer("mesh3dcontourwidth"), 1, 10);
  ContourPenStyle = Between(settings.Integer("mesh3dcontourstyle"), 0, 4);
  Make3DSquare = settings.Flag("make3dsquare");
  BoxXY.Color = BoxYZ.Color = BoxXZ.Color = kLightGrey;
  UpdateViewAngle(kFirstXYAngle, kFirstZAngle);
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
  return series.Displayed() || (series.Model() != nullptr && series.Style().ShadeMesh != 0);
}

}  // namespace quorvex
