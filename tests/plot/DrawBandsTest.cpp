#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "files/PlotFile.h"
#include "plot/DrawBands.h"
#include "plot/PlotEntries.h"
#include "plot/Plots.h"

namespace quorvex {
namespace {

constexpr int kConfidence = 1, kPrediction = 2, kBoth = 3;

// The line 2x + 1.2 through five points, as in tests/diagnosis; its 95 % limits by R.
PlotClass LinePlot(int bands, const std::string& formula = "a*x+b", std::vector<double> x = {1, 2, 3, 4, 5},
                   std::vector<double> y = {3, 5, 8, 9, 11}) {
  const SolveData points = Points({std::move(x)}, std::move(y));
  auto model = std::make_unique<EqClass>(LocaleText());
  model->SetID("model", {formula});
  std::string log;
  SolveForm form;
  EXPECT_TRUE(model->Fit(points, Settings(), log, form)) << log;
  PlotClass plot = BarePlot();
  PlotSeries series(std::move(model));
  series.Style() = {.LegendText = "line", .DrawColor = 0x0000FF, .Bands = bands};
  series.FittedTo(std::make_shared<const SolveData>(points), DerivativeKind::Richardson);
  plot.PlotData.push_back(std::move(series));
  return plot;
}

// The polygons drawn, a corner a pair.
std::vector<std::vector<DevicePoint>> Polygons(const RecordingSurface& surface) {
  std::vector<std::vector<DevicePoint>> polygons;
  for (const std::string& call : surface.Only({"Polygon"})) {
    std::istringstream text(call.substr(call.find(' ')));
    std::vector<DevicePoint>& corners = polygons.emplace_back();
    for (DevicePoint corner; text >> corner.x >> corner.y;) corners.push_back(corner);
  }
  return polygons;
}

RecordingSurface Drawn(PlotClass& plot, bool automatic = true) {
  RecordingSurface surface(400, 300);
  RecordingPrompter prompter;
  EXPECT_TRUE(plot.CreateGraph({.Auto = automatic, .Regenerate = true, .AutoFormat = true}, prompter));
  plot.RefreshPlot(surface, prompter);
  EXPECT_TRUE(prompter.Said.empty());
  EXPECT_EQ(surface.ObjectCount(), 0U);
  return surface;
}

TEST(DrawBands, FillsBetweenTheLimits) {
  for (const bool swap : {false, true}) {
    PlotClass plot = LinePlot(kBoth);
    plot.SwapAxis = swap;
    const RecordingSurface surface = Drawn(plot);
    const auto polygons = Polygons(surface);
    ASSERT_EQ(polygons.size(), 2U);
    const AxisMap& mapX = swap ? plot.Shown().Vertical : plot.Shown().Horizontal;
    const AxisMap& mapY = swap ? plot.Shown().Horizontal : plot.Shown().Vertical;
    // Prediction lies behind confidence. At x = 1 the band begins and ends.
    const double limits[][2] = {{1.1212347782, 5.2787652218}, {1.927021477887, 4.472978522113}};
    for (std::size_t i = 0; i < 2; ++i) {
      DevicePoint upper{mapX.ToDevice(1), mapY.ToDevice(limits[i][1])}, lower{upper.x, mapY.ToDevice(limits[i][0])};
      if (swap) upper = {upper.y, upper.x}, lower = {lower.y, lower.x};
      EXPECT_EQ(polygons[i].front(), upper) << i << swap;
      EXPECT_EQ(polygons[i].back(), lower) << i << swap;
    }
  }
  PlotClass none = LinePlot(0);
  EXPECT_TRUE(Polygons(Drawn(none)).empty());
}

// All of the band stands where a surface can draw it; what it has no place for on a logarithmic axis is below the
// frame.
TEST(DrawBands, StaysNearTheFrame) {
  for (const bool log : {false, true}) {
    PlotClass plot = LinePlot(kBoth);
    plot.Y.LogScale = log;
    plot.Extrapolate = true;
    plot.X.Min = 0.5, plot.X.Max = 1e6, plot.X.NumMajorTicks = 4;
    plot.Y.Min = 1, plot.Y.Max = 10, plot.Y.NumMajorTicks = log ? 1 : 3;
    const RecordingSurface surface = Drawn(plot, false);
    const DeviceRect frame = plot.Shown().Frame;
    for (const auto& polygon : Polygons(surface))
      for (const DevicePoint& corner : polygon) {
        EXPECT_GE(corner.y, frame.top - frame.height() - 1) << log;
        EXPECT_LE(corner.y, frame.bottom + frame.height() + 1) << log;
      }
  }
}

TEST(DrawBands, IsInterruptedWhereTheModelHasNoDerivative) {
  PlotClass plot = LinePlot(kConfidence, "a*x+b*abs(x-3)^0.5+c", {1, 2, 4, 5, 6}, {1, 2, 5, 5.5, 6});
  plot.PointsPerPlot = 11;
  plot.PlotData[0].Style().Bands = kConfidence;
  const RecordingSurface surface = Drawn(plot);
  EXPECT_GE(Polygons(surface).size(), 1U);
}

TEST(DrawBands, WidenTheScalesOnlySoFar) {
  PlotClass data = LinePlot(0), confidence = LinePlot(kConfidence), prediction = LinePlot(kPrediction);
  Drawn(data), Drawn(confidence), Drawn(prediction);
  EXPECT_EQ(data.Y.Limits(), confidence.Y.Limits().Max > 11.6 ? data.Y.Limits() : confidence.Y.Limits());
  EXPECT_LE(prediction.Y.Min, 1.1212347782);
  EXPECT_GE(prediction.Y.Max, 13.278);
  // Three points about a line say next to nothing at 99 %: half of their range on either side, and no more.
  PlotClass poor = LinePlot(kPrediction, "a*x+b", {1, 2, 3}, {1, 5, 3});
  poor.PlotData[0].Style().BandLevel = 3;
  Drawn(poor);
  EXPECT_EQ(poor.Y.Min, -1);
  EXPECT_EQ(poor.Y.Max, 7);
}

TEST(DrawBands, NamesThemInTheLegend) {
  PlotClass plot = LinePlot(kBoth);
  plot.PlotData[0].Style().BandLevel = 1;
  plot.Legend.Show = true;
  const std::vector<std::string> texts = Drawn(plot).Only({"TextOutA"});
  const auto place = [&](std::string_view text) {
    return std::ranges::find_if(texts, [&](const std::string& call) { return call.ends_with(text); }) - texts.begin();
  };
  EXPECT_LT(place(" line"), place(" 90% confidence"));
  EXPECT_LT(place(" 90% confidence"), place(" 90% prediction"));
  EXPECT_LT(place(" 90% prediction"), std::ssize(texts));
}

// The same picture from the file, to which a plot without bands adds nothing, and the same file again.
TEST(DrawBands, AreKeptInPlotFiles) {
  PlotClass plain = LinePlot(0);
  Drawn(plain);
  EXPECT_EQ(PlotFileText(plain).find("BANDS"), std::string::npos);

  PlotClass plot = LinePlot(kBoth);
  plot.PlotData[0].Style().BandLevel = 3;
  const std::string picture = Drawn(plot).Text(), text = PlotFileText(plot);
  Result<std::unique_ptr<PlotPage>> read = ParsePlotFile(text, "plot.plt", Settings(), LocaleText());
  ASSERT_TRUE(read) << read.error();
  auto& again = dynamic_cast<PlotClass&>(**read);
  EXPECT_EQ(Drawn(again, false).Text(), picture);
  EXPECT_EQ(PlotFileText(again), text);

  // A reader that stops where the data end, and sections that are damaged.
  const std::size_t section = text.find("\"B_BANDS\"");
  ASSERT_NE(section, std::string::npos);
  EXPECT_TRUE(ParsePlotFile(text.substr(0, section), "plot.plt", Settings(), LocaleText()));
  for (const auto& [what, with] : {std::pair{"\"B_BANDS\"\r\n1\r\n", "\"B_BANDS\"\r\n2\r\n"},
                                   {"\"B_BANDS\"\r\n1\r\n3\r\n3", "\"B_BANDS\"\r\n1\r\n4\r\n3"},
                                   {"\"B_BANDS\"\r\n1\r\n3\r\n3", "\"B_BANDS\"\r\n1\r\n3\r\n9"},
                                   {"\"E_BANDS\"", ""}}) {
    std::string damaged = text;
    const std::size_t at = damaged.find(what);
    ASSERT_NE(at, std::string::npos) << what;
    damaged.replace(at, std::string_view(what).size(), with);
    EXPECT_FALSE(ParsePlotFile(damaged, "plot.plt", Settings(), LocaleText())) << with;
  }
}

// As any other field of a series: offered where it applies, and taken back with the plot.
TEST(DrawBands, AreAPropertyOfCurvesOfModels) {
  PlotClass plot = LinePlot(0);
  plot.PlotData.push_back(PointSeries({1, 2}, {1, 2}));
  Drawn(plot);
  PlotEntries entries(plot);
  const auto field = [&](std::size_t series) -> PropertyField& {
    return *std::ranges::find(entries.Series[series].Fields, "cmboBands", &PropertyField::Control);
  };
  EXPECT_TRUE(field(0).Applies);
  EXPECT_FALSE(field(1).Applies);
  field(0).Entry = kConfidence;
  RecordingPrompter user;
  ASSERT_TRUE(entries.Create(plot, user));
  EXPECT_EQ(Polygons(Drawn(plot)).size(), 1U);
  entries.TakeBack(plot);
  EXPECT_TRUE(Polygons(Drawn(plot)).empty());
}

}  // namespace
}  // namespace quorvex
