#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/Prompter.h"
#include "core/Settings.h"
#include "plot/AxisScale.h"
#include "plot/PlotPage.h"

namespace quorvex {

// An axis of a plot. The fields that files and templates call XAxisTitle, XMin, NumXMajorTicks and so on are
// X.AxisTitle, X.Min, X.NumMajorTicks.
struct PlotAxis {
  std::string AxisTitle;    // with text codes
  double Min = 0, Max = 0;  // in data units, on a logarithmic axis too
  bool LogScale = false;
  std::int16_t NumMajorTicks = 10;  // major divisions; decades on a logarithmic axis
  std::int16_t NumMinorTicks = 5;   // divisions of a major one, 0 for none
  bool ShowMajorGrids = false, ShowMinorGrids = false;
  bool ShowExtraTicks = false;  // on the opposite side of the frame, too
  std::string LabelString;      // number pattern of the labels
  PlotFont AxisTitleFont, AxisNumberFont;
  std::int32_t AxisTitleColor = 0, AxisNumberColor = 0;
  std::vector<std::string> Labels;  // at the major ticks, largest value first; CreateGraph makes them

  AxisLimits Limits() const { return {Min, Max, NumMajorTicks, LogScale}; }
  void Take(const AxisLimits& limits);
};

// What a drawing of the plot holds where, in device units.
struct PlotPicture {
  DeviceRect Frame;
  AxisMap Horizontal, Vertical;  // XScale, XOffset and YScale, YOffset: of the Y and the X axis with SwapAxis
  DeviceRect Legend, FootNote;   // empty where not drawn
};

// A curve point near a place of the picture: its series in PlotData and its number there, both from 0.
struct CurveHit {
  std::size_t Series = 0, Point = 0;
};

// A two-dimensional plot: settings, series, scales and the way it is drawn. It knows nothing of windows or files. Its
// owner adds series, sets fields and calls CreateGraph, which a change of limits or labels needs again; RefreshPlot
// alone repaints.
class PlotClass : public PlotPage {
 public:
  // With the initial values that the settings have for a plot.
  explicit PlotClass(const Settings& settings, const LocaleText& locale = {});

  PlotAxis X, Y;
  bool SwapAxis = false;  // X runs upward
  std::int32_t MajorGridLineStyle = 0, MinorGridLineStyle = 0;
  std::int16_t PointsPerPlot = 100;  // of a curve, 3 to 5000
  bool Extrapolate = false;          // curves span the axis instead of the input
  bool PlotAtFittedOnly = false;     // curves have only the points of the input
  bool Make2DSquare = false;

  struct CreateOptions {
    bool Auto = false;        // scales from the data; where a scale has no extent they are, whatever this says
    bool Regenerate = false;  // tables of the curves anew
    bool AutoFormat = false;  // label patterns that suit the scales
  };
  // Resolves scales and labels, makes the curves' tables. False, with a message and nothing to be drawn, where the plot
  // cannot be had with its present data and settings.
  bool CreateGraph(const CreateOptions& options, Prompter& prompter);

  // Whether the label patterns are those that AutoFormat chooses for the present scales; other scales then want theirs.
  bool AutoFormatted() const;

  // Makes an axis logarithmic, or linear again, and takes both scales from the data. False as CreateGraph.
  bool SetLogScale(PlotAxis PlotClass::*axis, bool log, Prompter& prompter);

  // The scales that the displayed series ask for. Nothing where they have none.
  struct Scales {
    AxisLimits X, Y;
  };
  std::optional<Scales> SuggestScale(bool xLog, bool yLog) const;

  // Draws the whole plot. False while it is not created, where a series cannot be drawn (a message says so, and the
  // plot counts as not created) and where the margins leave no room on a printer's page (with a message, too). `page`
  // matters on a printer alone.
  bool DrawGraph(DrawingSurface& surface, Prompter& prompter, const PageSetup& page = {});

  // Draws the plot on the surface of its window, one unit to a pixel, and keeps where things are. Nothing happens while
  // legend or footnote is dragged or the plot is not created.
  void RefreshPlot(DrawingSurface& window, Prompter& prompter);
  const PlotPicture& Shown() const { return shown_; }

  // The displayed curve point next to a place of the picture shown, at most `tolerance` units away in each direction.
  std::optional<CurveHit> CurveIsClose(double x, double y, double tolerance) const;

 private:
  struct DataLimits {
    double XMin = 0, XMax = 0, YMin = 0, YMax = 0;
  };
  DataLimits GetDataLimits() const;
  void ResolveAxisScales(bool automatic);
  bool DrawOn(DrawingSurface& surface, Prompter& prompter, const PageSetup& page, PlotPicture& picture);

  PlotPicture shown_;
};

// What is said when a plot cannot be created or drawn.
inline constexpr const char* kPlotFailure =
    "An error occurred creating the plot with the current data and plot settings.";

}  // namespace quorvex
