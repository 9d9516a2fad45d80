#include <gtest/gtest.h>

#include <set>

#include "Golden.h"
#include "RecordingPrompter.h"
#include "TemporaryFolder.h"
#include "core/Files.h"
#include "files/PlotTemplate.h"
#include "files/PlotTemplateKeys.h"
#include "plot/Plots.h"
#include "plot3d/Boxes.h"
#include "plot3d/Surfaces.h"

namespace quorvex {
namespace {

TemplateSelection Everything(const PlotPage& plot) {
  const std::vector<std::string> groups = TemplateFormatOf(plot).Groups();
  return {groups.begin(), groups.end()};
}

std::string Saved(const PlotPage& plot) { return TemplateText(plot, Everything(plot)); }

void Apply(PlotPage& plot, const std::string& text) { ApplyTemplateText(plot, text, nullptr); }

// What a template of the plot has for a key.
std::string ValueOf(const PlotPage& plot, const std::string& key) {
  const std::string text = "\r\n" + Saved(plot), begin = "\r\n" + key + " = ";
  const auto at = text.find(begin);
  if (at == std::string::npos) return "no line";
  return text.substr(at + begin.size(), text.find('\r', at + begin.size()) - at - begin.size());
}

// With ten series, as many as a template has lines for.
PlotClass TenLines() {
  PlotClass plot{Settings()};
  for (int i = 0; i < 10; ++i) plot.PlotData.push_back(PointSeries({1, 2}, {1, 2}));
  return plot;
}

// With a surface and points.
PlotClass3D Landscape() {
  PlotClass3D plot = BarePlot3D();
  plot.PlotData.insert(plot.PlotData.begin(), Surface("a+b*x1+c*x2", {0, 1, 3}, {0, 1, 3}));
  return plot;
}

// Numbers, texts and colours that no other field of the plot has.
class Distinct {
 public:
  double Real() { return ++count_ + 0.1; }
  std::string Text() { return "text " + std::to_string(++count_); }
  std::int32_t Color() { return 0x010203 * ++count_ & 0xFFFFFF; }

  void Font(PlotFont& font, std::int32_t& color) {
    font.Name = Text();
    font.Size = 2 + Real() / 16;
    color = Color();
  }
  void Axis(PlotAxis& axis) {
    Font(axis.AxisTitleFont, axis.AxisTitleColor);
    axis.AxisTitle = Text();
    axis.Min = -Real();
    axis.Max = Real() * 1e100;
    axis.NumMajorTicks = 7;
    axis.NumMinorTicks = 9;
    Font(axis.AxisNumberFont, axis.AxisNumberColor);
    axis.LabelString = Text();
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
    Font(plot.PlotTitleFont, plot.PlotTitleColor);
    plot.PlotTitle = Text();
    Font(plot.PlotLegendFont, plot.PlotLegendColor);
    Box(plot.Legend, 20);
    Font(plot.FootNoteFont, plot.FootNoteColor);
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
      style.LegendText = Text();
      ++place;
    }
  }

 private:
  int count_ = 0;
};

PlotClass DistinctPlot() {
  PlotClass plot = TenLines();
  Distinct values;
  values.Page(plot);
  values.Axis(plot.X);
  values.Axis(plot.Y);
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

PlotClass3D DistinctBox() {
  PlotClass3D plot = Landscape();
  Distinct values;
  values.Page(plot);
  std::int16_t ticks = 2;
  for (BoxAxis* axis : {&plot.X, &plot.Y, &plot.Z}) {
    values.Axis(*axis);
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

TEST(PlotTemplate, HasALineForEachFieldAndReadsBackToTheSame) {
  PlotClass flat = TenLines();
  ExpectGolden("Template.qv2", Saved(DistinctPlot()));
  Apply(flat, Saved(DistinctPlot()));
  EXPECT_EQ(Saved(flat), Saved(DistinctPlot()));

  PlotClass3D solid = Landscape();
  ExpectGolden("Template.qv3", Saved(DistinctBox()));
  Apply(solid, Saved(DistinctBox()));
  EXPECT_EQ(Saved(solid), Saved(DistinctBox()));
}

TEST(PlotTemplate, KnowsEachKeyByOneNameOrTwo) {
  const struct {
    const PlotTemplateFormat& Format;
    std::size_t Keys, Twins;
  } kCases[] = {{TemplateFormat2D(), 189, 10}, {TemplateFormat3D(), 134 - 8 + 2 * 9, 10}};
  for (const auto& c : kCases) {
    std::set<std::string> keys, twins;
    for (const TemplateKey& key : c.Format.Keys) {
      keys.insert(key.Key);
      if (!key.Twin.empty()) twins.insert(key.Twin);
    }
    EXPECT_EQ(c.Format.Keys.size(), c.Keys);
    EXPECT_EQ(keys.size(), c.Keys);
    EXPECT_EQ(twins.size(), c.Twins);
    for (const std::string& twin : twins) EXPECT_FALSE(keys.contains(twin)) << twin;
  }
}

// A value that is none of the field's so far.
std::string OtherValue(const TemplateKey& key, const std::string& present) {
  switch (key.Kind) {
    case TemplateKind::Boolean:
      return present == "true" ? "false" : "true";
    case TemplateKind::Color:
      return "(12, 34, 56)";
    case TemplateKind::Text:
      return "other = text";
    default:
      break;
  }
  const double least = key.Least.value_or(-2.5);
  return ShortestNumber(present == ShortestNumber(least) ? least + 1 : least);
}

template <typename Plot>
void ExpectEachKeyByItself(Plot plot) {
  const std::string fresh = Saved(plot);
  for (const TemplateKey& key : TemplateFormatOf(plot).Keys) {
    SCOPED_TRACE(key.Key);
    const std::string present = ValueOf(plot, key.Key), other = OtherValue(key, present);
    const std::string before = "\n" + key.Key + " = " + present + "\r", after = "\n" + key.Key + " = " + other + "\r";
    std::string expected = "\n" + fresh;
    expected.replace(expected.find(before), before.size(), after);
    for (const std::string& name : {key.Key, key.Twin}) {
      if (name.empty()) continue;
      Apply(plot, name + " = " + other);
      EXPECT_EQ("\n" + Saved(plot), expected);
      Apply(plot, fresh);
      EXPECT_EQ(Saved(plot), fresh);
    }
  }
}

TEST(PlotTemplate, SetsWhatItsOneLineSaysAndNothingElse) {
  ExpectEachKeyByItself(DistinctPlot());
  ExpectEachKeyByItself(DistinctBox());
}

}  // namespace
}  // namespace quorvex
