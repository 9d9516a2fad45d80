#include "files/PlotSettingsRecord.h"

#include <type_traits>

namespace quorvex {
namespace {

constexpr int kStyles = 5;               // of lines
constexpr double kWidest = 5;            // pen, in units of line weight
constexpr double kMostDivisions = 1000;  // more decades than there are doubles
constexpr double kMostMinorTicks = 20;   // of a division
constexpr double kLongestTick = 10;      // inches
constexpr double kFarthest = 1e6;        // device units, for a place on the page as for its size

template <typename Io, typename Font, typename Color>
void ListFont(Io& io, const std::string& of, Font& font, Color& color) {
  Section(io, of + "FONT", [&] {
    io(font.Name);
    io.Clamped(font.Size, kSmallestFont, kLargestFont);
    io(font.Bold);
    io(font.Italic);
    io(color);
  });
}

template <typename Io, typename Plot>
void ListFonts(Io& io, Plot& plot) {
  for (char name = 'X'; auto* axis : plot.Axes()) {
    ListFont(io, name + std::string("AXISTITLE"), axis->AxisTitleFont, axis->AxisTitleColor);
    ListFont(io, name + std::string("AXISNUMBER"), axis->AxisNumberFont, axis->AxisNumberColor);
    ++name;
  }
  ListFont(io, "PLOTLEGEND", plot.PlotLegendFont, plot.PlotLegendColor);
  ListFont(io, "PLOTTITLE", plot.PlotTitleFont, plot.PlotTitleColor);
  ListFont(io, "FOOTNOTE", plot.FootNoteFont, plot.FootNoteColor);
}

template <typename Io, typename Plot>
void ListPage(Io& io, Plot& plot) {
  io(plot.PlotAtFittedOnly);
  io(plot.PlotTitle);
  io(plot.PlotBackgroundColor);
}

template <typename Io, typename Plot>
void ListFrameGeneral(Io& io, Plot& plot) {
  io.Clamped(plot.PointsPerPlot, 3, 5000);
  ListPage(io, plot);
  io(plot.TickPenColor);
  io.Clamped(plot.TickPenWidthMajor, 1, kWidest);
  io.Clamped(plot.TickPenWidthMinor, 1, kWidest);
  io.Clamped(plot.TickPenLength, 0, kLongestTick);
  io.Clamped(plot.AxisWidth, 1, kWidest);
  io(plot.Extrapolate);
  io(plot.Make2DSquare);
  io(plot.SwapAxis);
}

template <typename Io, typename Plot>
void ListBoxGeneral(Io& io, Plot& plot) {
  io.Clamped(plot.XPointsPerPlot, 2, kMostMeshDivisions);
  io.Clamped(plot.YPointsPerPlot, 2, kMostMeshDivisions);
  ListPage(io, plot);
  io(plot.TickPenstyle);
  io(plot.TickPenColor);
  io.Clamped(plot.TickPenWidthMajor, 1, kWidest);
  io.Clamped(plot.TickPenLength, 0, kLongestTick);
  ViewAngles angles = *plot.Angles();
  io.Clamped(angles.XY, 0, 360);
  io.Clamped(angles.Z, 0, 180);
  if constexpr (!std::is_const_v<Plot>) plot.SetAngles(angles);
  for (auto* plane : {&plot.BoxXY, &plot.BoxYZ, &plot.BoxXZ}) {
    io(plane->Color);
    io(plane->Shade);
  }
  io(plot.ShadeMeshByValue);
  io.Clamped(plot.MeshColorScheme, 0, kMeshSchemes - 1);
  io(plot.DisplayContourLines);
  io.Clamped(plot.MeshContourDensity, 2, 50);
  io(plot.ContourPenColor);
  io.Clamped(plot.ContourPenWidth, 1, 10);
  io.Clamped(plot.ContourPenStyle, 0, kStyles - 1);
  io(plot.UseAxisScale);
  io(plot.Extrapolate);
  io(plot.ErrorColorAbove);
  io(plot.ErrorColorBelow);
  io.Clamped(plot.ErrorColorStyle, 0, kStyles - 1);
  io(plot.Make3DSquare);
}

template <typename Io, typename Axis>
void ListDivisions(Io& io, Axis& axis) {
  io(axis.LabelString);
  io.Clamped(axis.NumMajorTicks, 1, kMostDivisions);
  io.Clamped(axis.NumMinorTicks, 0, kMostMinorTicks);
}

template <typename Io, typename Axis>
void ListLimits(Io& io, Axis& axis) {
  io(axis.Max);
  io(axis.Min);
}

template <typename Io, typename Plot>
void ListFrameAxes(Io& io, Plot& plot) {
  for (auto* axis : {&plot.X, &plot.Y}) {
    ListDivisions(io, *axis);
    io(axis->ShowExtraTicks);
    io(axis->ShowMajorGrids);
    io(axis->ShowMinorGrids);
    io(axis->AxisTitle);
    ListLimits(io, *axis);
    io(axis->LogScale);
  }
  io.Clamped(plot.MajorGridLineStyle, 0, kStyles - 1);
  io.Clamped(plot.MinorGridLineStyle, 0, kStyles - 1);
}

template <typename Io, typename Plot>
void ListBoxAxes(Io& io, Plot& plot) {
  for (auto* axis : {&plot.X, &plot.Y, &plot.Z}) {
    ListDivisions(io, *axis);
    for (auto& plane : axis->Grids) io(plane.Major);
    for (auto& plane : axis->Grids) io(plane.Minor);
    io(axis->LogScale);
    io(axis->TickColor);
    io(axis->AxisTitle);
    ListLimits(io, *axis);
  }
}

template <typename Io, typename Box>
void ListBox(Io& io, Box& box) {
  io(box.Show);
  io.Clamped(box.Top, -kFarthest, kFarthest);
  io.Clamped(box.Left, -kFarthest, kFarthest);
  io(box.ShowShadow);
  io.Clamped(box.BorderType, 0, 1);
  io(box.BorderColor);
  io.Clamped(box.BorderWidth, 1, kWidest);
  io.Clamped(box.AreaType, 0, 1);
  io(box.AreaColor);
}

template <typename Io, typename Plot>
void ListSettings(Io& io, Plot& plot) {
  constexpr bool isFrame = std::is_same_v<std::remove_const_t<Plot>, PlotClass>;
  Section(io, "SETTINGS", [&] {
    Section(io, "INITPLOTSIZE", [&] {
      io.Clamped(plot.InitPlotWidth, 0, kFarthest);
      io.Clamped(plot.InitPlotHeight, 0, kFarthest);
    });
    ListFonts(io, plot);
    Section(io, "GENERAL", [&] {
      if constexpr (isFrame)
        ListFrameGeneral(io, plot);
      else
        ListBoxGeneral(io, plot);
    });
    Section(io, "AXIS", [&] {
      if constexpr (isFrame)
        ListFrameAxes(io, plot);
      else
        ListBoxAxes(io, plot);
    });
    Section(io, "LEGEND", [&] { ListBox(io, plot.Legend); });
    Section(io, "FOOTNOTE", [&] {
      ListBox(io, plot.FootNote);
      io.Clamped(plot.FootNoteAlign, 0, 2);
      Section(io, "FOOTNOTETEXT", [&] { io(plot.FootNoteText); });
    });
  });
}

}  // namespace

void WritePlotSettings(RecordWriter& io, const PlotClass& plot) { ListSettings(io, plot); }
void WritePlotSettings(RecordWriter& io, const PlotClass3D& plot) { ListSettings(io, plot); }
void ReadPlotSettings(RecordReader& io, PlotClass& plot) { ListSettings(io, plot); }
void ReadPlotSettings(RecordReader& io, PlotClass3D& plot) { ListSettings(io, plot); }

}  // namespace quorvex
