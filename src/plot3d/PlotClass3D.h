#pragma once

#include <array>
#include <cstdint>

#include "plot/PlotPage.h"
#include "plot3d/BoxProjection.h"
#include "plot3d/MeshSchemes.h"

namespace quorvex {

// An axis along an edge of a box. Files and templates call TickColor of X XTickColor.
struct BoxAxis : PlotAxis {
  // Lines from its ticks across the planes that it shares with the other two axes, in the order X, Y, Z: of X those on
  // the X-Y and on the X-Z plane, of Z those on the X-Z and on the Y-Z plane.
  struct PlaneGrids {
    bool Major = false, Minor = false;
  };
  std::array<PlaneGrids, 2> Grids;
  std::int32_t TickColor = 0;
};

// A face of the box behind the data.
struct BoxPlane {
  bool Shade = false;
  std::int32_t Color = 0;
};

// A plot of three dimensions: surfaces and points in a box, seen from a direction that the user chooses, without
// perspective. X and Y are the independent variables, which the user knows as X1 and X2; Z, which runs upward, is the
// user's Y. Coordinates cannot be read off it, and nothing zooms.
class PlotClass3D final : public PlotPage {
 public:
  // With the initial values that the settings have for a plot.
  explicit PlotClass3D(const Settings& settings, const LocaleText& locale = {});

  BoxAxis X, Y, Z;
  std::int16_t XPointsPerPlot = 30, YPointsPerPlot = 30;  // nodes of a surface along each axis, 2 to 99

  // Surfaces shaded by value, and their contours.
  bool ShadeMeshByValue = true;
  std::int16_t MeshColorScheme = kSpectrumScheme;
  bool DisplayContourLines = false;
  std::int16_t MeshContourDensity = 10;  // bands, 2 to 50
  bool UseAxisScale = false;             // the colours span the axis and not the surface
  std::int32_t ContourPenColor = 0, ContourPenWidth = 1, ContourPenStyle = 0;

  std::int32_t TickPenstyle = 0;  // kept for files; ticks are solid

  bool Make3DSquare = false;
  BoxPlane BoxXY, BoxYZ, BoxXZ;  // ShadeBoxXY is BoxXY.Shade, BoxXYColor is BoxXY.Color

  // Of error and residual bars: the part above the point or the surface, and the one below.
  std::int32_t ErrorColorAbove = 0x0000C0, ErrorColorBelow = 0xC00000, ErrorColorStyle = 0;

  // The direction of view, in radians; see BoxView. UpdateViewAngle alone changes it.
  double XYAngle = 0, ZAngle = 0;
  // In degrees: 0 to 360 and 0 to 180.
  void UpdateViewAngle(double xyAngleDegrees, double zAngleDegrees);
  // By degrees: round and round about the vertical axis, no farther than the other side of a view from above.
  void Turn(double xyDegrees, double zDegrees);
  const BoxView& View() const { return view_; }

  std::unique_ptr<PlotPage> Clone() const override { return std::make_unique<PlotClass3D>(*this); }
  void Assign(const PlotPage& other) override { *this = static_cast<const PlotClass3D&>(other); }
  using PlotPage::Axes;
  std::vector<PlotAxis*> Axes() override { return {&X, &Y, &Z}; }
  std::array<const BoxAxis*, 3> BoxAxes() const { return {&X, &Y, &Z}; }
  std::unique_ptr<PlotModes> MakeModes(PlotHost& host, Prompter& prompter) override;
  std::span<const PlotSwitch> Switches() const override;
  std::vector<FieldPage> Fields() override;
  std::vector<PropertyField> SeriesFields(PlotSeries& series) const override;
  void StoreDefaults(Settings& settings) const override;
  std::optional<ViewAngles> Angles() const override { return ViewAngles{xyDegrees_, zDegrees_}; }
  void SetAngles(const ViewAngles& angles) override { UpdateViewAngle(angles.XY, angles.Z); }
  bool IsShown(const PlotSeries& series) const override;

 private:
  bool GenerateTable(PlotSeries& series) const override;
  std::optional<std::string> DrawContents(DrawingSurface& surface, const DeviceMetrics& metrics,
                                          PlotPicture& picture) override;
  double PointsWithin(const DeviceRect& box, const PlotPicture& picture) const override;
  BoxProjection Projection(const DeviceRect& frame, std::int32_t penScale) const;

  double xyDegrees_ = 0, zDegrees_ = 0;
  BoxView view_{0, 0};
};

}  // namespace quorvex
