#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/LocaleText.h"
#include "core/Settings.h"
#include "plot/PageSetup.h"
#include "plot/PlotFont.h"
#include "plot/PlotSeries.h"

namespace quorvex {

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

// What plots of two and of three dimensions have in common: the series, the page, its title, legend and footnote.
struct PlotPage {
  PlotPage(const Settings& settings, const LocaleText& locale);

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

  // The size that the positions of legend and footnote relate to, in device units. 0 until the first drawing.
  std::int32_t InitPlotWidth = 0, InitPlotHeight = 0;

  bool PlotCreated = false;          // CreateGraph has finished; nothing is drawn before
  SurfaceHandle MetafileHandle = 0;  // of the last recording

  // Takes all series out.
  void ClearGraph() { PlotData.clear(); }
};

// The font and colour stored under a group of keys, such as "plottitle" or, with the suffix "3d", "xaxistitle"; what
// isn't stored stays as it is.
void ReadFont(const Settings& settings, const std::string& prefix, const std::string& suffix, PlotFont& font,
              std::int32_t& colour);

}  // namespace quorvex
