#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "RecordingPrompter.h"
#include "files/PlotTemplate.h"
#include "files/PlotTemplateKeys.h"
#include "plot/Plots.h"
#include "plot3d/Boxes.h"
#include "plot3d/Surfaces.h"

namespace quorvex {

inline TemplateSelection Everything(const PlotPage& plot) {
  const std::vector<std::string> groups = TemplateFormatOf(plot).Groups();
  return {groups.begin(), groups.end()};
}

inline std::string Saved(const PlotPage& plot) { return TemplateText(plot, Everything(plot)); }

inline void Apply(PlotPage& plot, const std::string& text) { ApplyTemplateText(plot, text, nullptr); }

// What a template of the plot has for a key.
inline std::string ValueOf(const PlotPage& plot, const std::string& key) {
  const std::string text = "\r\n" + Saved(plot), begin = "\r\n" + key + " = ";
  const auto at = text.find(begin);
  if (at == std::string::npos) return "no line";
  return text.substr(at + begin.size(), text.find('\r', at + begin.size()) - at - begin.size());
}

// With ten series, as many as a template has lines for.
inline PlotClass TenLines() {
  PlotClass plot{Settings()};
  for (int i = 0; i < 10; ++i) plot.PlotData.push_back(PointSeries({1, 2}, {1, 2}));
  return plot;
}

// With a surface and points.
inline PlotClass3D Landscape() {
  PlotClass3D plot = BarePlot3D();
  plot.PlotData.insert(plot.PlotData.begin(), Surface("a+b*x1+c*x2", {0, 1, 3}, {0, 1, 3}));
  return plot;
}

// Numbers and colours that no other field of the plot has, and texts that say where they belong.
class Distinct {
 public:
  std::int32_t Color() { return 0x010203 * ++count_ & 0xFFFFFF; }

  void Font(PlotFont& font, std::int32_t& color, const std::string& of) {
    font.Name = of + " font";
    font.Size = 2 + ++count_ / 4.0;
    color = Color();
  }
  void Axis(PlotAxis& axis, const std::string& name) {
    Font(axis.AxisTitleFont, axis.AxisTitleColor, name + " title");
    axis.AxisTitle = name + " title";
    axis.Min = -0.1 * ++count_;
    axis.Max = 1e100 * ++count_;
    axis.NumMajorTicks = 7;
    axis.NumMinorTicks = 9;
    Font(axis.AxisNumberFont, axis.AxisNumberColor, name + " numbers");
    axis.LabelString = name + " numbers 0.0";
  }
  void Box(PlotBox& box, float percent) {
    box.BorderType = 0;
    box.BorderColor = Color();
    box.BorderWidth = 3;
    box.AreaType = 1;
    box.AreaColor = Color();
    box.Left = percent * 8;
    box.Top = percent * 3;
  }
  void Page(PlotPage& plot) {
    plot.InitPlotWidth = 800;
    plot.InitPlotHeight = 600;
    plot.PlotBackgroundColor = Color();
    Font(plot.PlotTitleFont, plot.PlotTitleColor, "plot title");
    plot.PlotTitle = "plot title";
    Font(plot.PlotLegendFont, plot.PlotLegendColor, "legend");
    Box(plot.Legend, 20);
    Font(plot.FootNoteFont, plot.FootNoteColor, "footnote");
    Box(plot.FootNote, 60);
    plot.FootNoteAlign = 1;
    plot.FootNoteText = "first \\ second\r\nthird";
    int place = 0;
    for (PlotSeries& series : plot.PlotData) {
      SeriesStyle& style = series.Style();
      style.DrawStyle = place % 5;
      style.DrawColor = Color();
      style.DrawWidth = 1 + place % 5;
      style.MarkerStyle = (place + 3) % 10;
      style.MarkerColor = Color();
      style.MarkerSize = 6 + place;
      style.LegendText = "line " + std::to_string(++place);
    }
  }

 private:
  int count_ = 0;
};

inline PlotClass DistinctPlot() {
  PlotClass plot = TenLines();
  Distinct values;
  values.Page(plot);
  values.Axis(plot.X, "X");
  values.Axis(plot.Y, "Y");
  plot.X.NumMajorTicks = 20;
  plot.X.NumMinorTicks = 0;
  plot.PointsPerPlot = 5000;
  plot.AxisWidth = 2;
  plot.TickPenColor = values.Color();
  plot.TickPenWidthMajor = 3;
  plot.TickPenWidthMinor = 4;
  plot.TickPenLength = 0.1F;
  plot.MajorGridLineStyle = 1;
  plot.MinorGridLineStyle = 2;
  return plot;
}

inline PlotClass3D DistinctBox() {
  PlotClass3D plot = Landscape();
  Distinct values;
  values.Page(plot);
  std::int16_t ticks = 2;
  const char* const names[] = {"X1", "X2", "Y"};
  for (BoxAxis* axis : {&plot.X, &plot.Y, &plot.Z}) {
    values.Axis(*axis, names[axis == &plot.Y ? 1 : axis == &plot.Z ? 2 : 0]);
    axis->TickColor = values.Color();
    axis->NumMajorTicks = ticks++;
    axis->NumMinorTicks = ticks++;
  }
  for (BoxPlane* plane : {&plot.BoxXY, &plot.BoxXZ, &plot.BoxYZ}) plane->Color = values.Color();
  plot.UpdateViewAngle(359.5, 12.25);
  plot.XPointsPerPlot = 2;
  plot.YPointsPerPlot = 99;
  plot.PlotData[0].Style().ShadeColor = values.Color();
  plot.MeshColorScheme = 12;
  plot.MeshContourDensity = 50;
  plot.ContourPenColor = values.Color();
  plot.ContourPenStyle = 4;
  plot.ContourPenWidth = 5;
  plot.ErrorColorAbove = values.Color();
  plot.ErrorColorBelow = values.Color();
  return plot;
}

// Answers each question for a text by itself; those without an answer are cancelled.
class Typist : public RecordingPrompter {
 public:
  std::map<std::string, std::string> Typed;  // by what is asked
  std::vector<std::string> Colors;           // questions for colours

  std::optional<std::string> AskText(const std::string& text, const std::string& initial) override {
    RecordingPrompter::AskText(text, initial);
    const auto answer = Typed.find(text);
    return answer != Typed.end() ? std::optional(answer->second) : std::nullopt;
  }
  std::optional<std::string> AskColor(const std::string& text, const std::string& initial) override {
    Colors.push_back(text);
    return RecordingPrompter::AskColor(text, initial);
  }
};

}  // namespace quorvex
