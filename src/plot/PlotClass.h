#pragma once

#include "plot/PlotPage.h"

namespace quorvex {

// An axis along a frame.
struct FrameAxis : PlotAxis {
  bool ShowMajorGrids = false, ShowMinorGrids = false;
  bool ShowExtraTicks = false;  // on the opposite side of the frame, too
};

// A curve point near a place of the picture: its series in PlotData and its number there, both from 0.
struct CurveHit {
  std::size_t Series = 0, Point = 0;
};

// A plot of two dimensions: curves and points in a frame.
class PlotClass final : public PlotPage {
 public:
  // With the initial values that the settings have for a plot.
  explicit PlotClass(const Settings& settings, const LocaleText& locale = {});

  FrameAxis X, Y;
  bool SwapAxis = false;             // X runs upward
  std::int16_t PointsPerPlot = 100;  // of a curve, 3 to 5000
  bool Make2DSquare = false;

  std::unique_ptr<PlotPage> Clone() const override { return std::make_unique<PlotClass>(*this); }
  void Assign(const PlotPage& other) override { *this = static_cast<const PlotClass&>(other); }
  using PlotPage::Axes;
  std::vector<PlotAxis*> Axes() override { return {&X, &Y}; }
  std::unique_ptr<PlotModes> MakeModes(PlotHost& host, Prompter& prompter) override;
  std::span<const PlotSwitch> Switches() const override;
  std::vector<FieldPage> Fields() override;
  std::vector<PropertyField> SeriesFields(PlotSeries& series) const override;
  void StoreDefaults(Settings& settings) const override;

  // The displayed curve point next to a place of the picture shown, at most `tolerance` units away in each direction.
  std::optional<CurveHit> CurveIsClose(double x, double y, double tolerance) const;

 private:
  bool GenerateTable(PlotSeries& series) const override;
  std::optional<std::string> DrawContents(DrawingSurface& surface, const DeviceMetrics& metrics,
                                          PlotPicture& picture) override;
  double PointsWithin(const DeviceRect& box, const PlotPicture& picture) const override;
};

}  // namespace quorvex
