#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/LocaleText.h"
#include "core/Prompter.h"
#include "core/Settings.h"
#include "plot/DeviceMetrics.h"
#include "plot/PlotAxis.h"
#include "plot/PlotSeries.h"

namespace quorvex {

class PlotHost;
class PlotModes;
struct FieldPage;
struct PropertyField;
struct PlotSwitch;

// The box of a legend or a footnote: LegendTop is Legend.Top, FootNoteTop is FootNote.Top, and so on.
struct PlotBox {
  bool Show = false, ShowShadow = false;
  std::int32_t BorderWidth = 1, BorderColor = 0;
  std::int32_t BorderType = 1;  // 1 a border in BorderColor, 0 none
  std::int32_t AreaType = 0;    // 1 filled with AreaColor, 0 with the plot's background
  std::int32_t AreaColor = 0;
  // In units of InitPlotWidth and InitPlotHeight. Both 0: not yet placed, the drawing chooses.
  float Top = 0, Left = 0;
  float Width = 0, Height = 0;  // as last drawn, in device units
  bool Dragging = false;        // the user is about to place it; RefreshPlot waits for that

  bool Placed() const { return Top != 0 || Left != 0; }
};

// What a drawing of the plot holds where, in device units.
struct PlotPicture {
  DeviceRect Frame;              // around curves, or the box that stands for space
  DeviceRect Legend, FootNote;   // empty where not drawn
  AxisMap Horizontal, Vertical;  // in two dimensions: XScale, XOffset and YScale, YOffset; Y's and X's with SwapAxis
};

// The direction from which a plot of three dimensions is seen, in degrees: XY turns it about its vertical axis, 0 to
// 360, and Z tilts it towards the viewer, 0 to 180.
struct ViewAngles {
  double XY = 0, Z = 0;
  bool operator==(const ViewAngles&) const = default;
};

// A plot: series, page, title, legend, footnote and axes, and what becomes of them in two dimensions as in three. It
// knows nothing of windows or files. Its owner adds series, sets fields and calls CreateGraph, which a change of limits
// or labels needs again; RefreshPlot alone repaints.
class PlotPage {
 public:
  virtual ~PlotPage() = default;

  // A plot of the same series, and becoming such a copy of another plot of the same kind. Tables are to be made anew by
  // CreateGraph.
  virtual std::unique_ptr<PlotPage> Clone() const = 0;
  virtual void Assign(const PlotPage& other) = 0;

  LocaleText Locale;  // of the numbers that the plot shows

  std::vector<PlotSeries> PlotData;  // in drawing order

  std::string PlotTitle;  // with text codes
  PlotFont PlotTitleFont, PlotLegendFont, FootNoteFont;
  std::int32_t PlotTitleColor = 0, PlotLegendColor = 0, FootNoteColor = 0;
  std::int32_t PlotBackgroundColor = 0;  // fills the page

  PlotBox Legend, FootNote;
  std::string FootNoteText;        // lines end with carriage return and line feed
  std::int16_t FootNoteAlign = 2;  // of its lines: 0 left, 1 right, 2 centre

  std::int32_t AxisWidth = 1;  // pens of the frame, ticks and grids
  std::int32_t TickPenWidthMajor = 1, TickPenWidthMinor = 1, TickPenColor = 0;
  float TickPenLength = 0.125F;  // of a major tick, in inches
  std::int32_t MajorGridLineStyle = 0, MinorGridLineStyle = 0;

  bool Extrapolate = false;       // curves and surfaces span the axes instead of the input
  bool PlotAtFittedOnly = false;  // they have only the points of the input

  // The size that the positions of legend and footnote relate to, in device units. 0 until the first drawing.
  std::int32_t InitPlotWidth = 0, InitPlotHeight = 0;

  bool PlotCreated = false;          // CreateGraph has finished; nothing is drawn before
  SurfaceHandle MetafileHandle = 0;  // of the last recording

  // Takes all series out.
  void ClearGraph() { PlotData.clear(); }

  // X and Y, and Z in three dimensions.
  virtual std::vector<PlotAxis*> Axes() = 0;
  std::vector<const PlotAxis*> Axes() const;

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

  // Makes an axis logarithmic, or linear again, and takes all scales from the data. False as CreateGraph, and, with the
  // plot as it was, where the data of the axis have no logarithm.
  bool SetLogScale(PlotAxis& axis, bool log, Prompter& prompter);

  // The scale that the series shown ask for on each axis, which is logarithmic as `log` tells. Nothing where they have
  // none.
  std::optional<std::vector<AxisLimits>> SuggestScale(const std::vector<bool>& log) const;

  // Whether scales and legend take notice of a series.
  virtual bool IsShown(const PlotSeries& series) const { return series.Displayed(); }

  // Draws the whole plot. False while it is not created, where a series cannot be drawn (a message says so, and the
  // plot counts as not created) and where the margins leave no room on a printer's page (with a message, too). `page`
  // matters on a printer alone.
  bool DrawGraph(DrawingSurface& surface, Prompter& prompter, const PageSetup& page = {});

  // Draws the plot on the surface of its window, one unit to a pixel, and keeps where things are. Nothing happens while
  // legend or footnote is dragged or the plot is not created.
  void RefreshPlot(DrawingSurface& window, Prompter& prompter);
  const PlotPicture& Shown() const { return shown_; }

  // What mouse and keys do in a window that shows the plot.
  virtual std::unique_ptr<PlotModes> MakeModes(PlotHost& host, Prompter& prompter) = 0;

  // What the user turns on and off in it.
  virtual std::span<const PlotSwitch> Switches() const = 0;

  // What they set in its properties, page by page, and of one of its series.
  virtual std::vector<FieldPage> Fields() = 0;
  virtual std::vector<PropertyField> SeriesFields(PlotSeries& series) const = 0;

  // Keeps in the settings what new plots begin with, as this one has it.
  virtual void StoreDefaults(Settings& settings) const;

  // From where it is seen; nothing in two dimensions, where it cannot be turned.
  virtual std::optional<ViewAngles> Angles() const { return std::nullopt; }
  virtual void SetAngles(const ViewAngles&) {}

 protected:
  PlotPage(const Settings& settings, const LocaleText& locale);
  PlotPage(const PlotPage&) = default;
  PlotPage(PlotPage&&) = default;
  PlotPage& operator=(const PlotPage&) = default;
  PlotPage& operator=(PlotPage&&) = default;

  // Makes the table of a series anew. False where it has no value at some point.
  virtual bool GenerateTable(PlotSeries& series) const = 0;

  // Draws axes and series, and fills in where they are; the frame stays empty where there is no room for them. The
  // message for what cannot be drawn.
  virtual std::optional<std::string> DrawContents(DrawingSurface& surface, const DeviceMetrics& metrics,
                                                  PlotPicture& picture) = 0;

  // The shares of the points of the series shown that lie within a rectangle of the picture, added up: how much a
  // legend there would hide.
  virtual double PointsWithin(const DeviceRect& box, const PlotPicture& picture) const = 0;

 private:
  // The limits of the input on each axis, over the series shown; 0 and 0 without any. Error bars and bands that are
  // shown count, but for ends that an axis has no place for, which is logarithmic as `log` tells.
  struct DataLimits {
    double Min = 0, Max = 0;
  };
  std::vector<DataLimits> GetDataLimits(const std::vector<bool>& log) const;
  void ResolveAxisScales(bool automatic);
  std::string LogScaleRefusal(std::size_t axis);  // as its properties refuse it
  bool DrawOn(DrawingSurface& surface, Prompter& prompter, const PageSetup& page, PlotPicture& picture);

  PlotPicture shown_;
};

// What is said when a plot cannot be created or drawn.
inline constexpr const char* kPlotFailure =
    "An error occurred creating the plot with the current data and plot settings.";

}  // namespace quorvex
