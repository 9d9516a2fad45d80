#include <gtest/gtest.h>

#include <algorithm>

#include "engine/MvClass.h"
#include "plot3d/Boxes.h"
#include "plot3d/PlotClass3D.h"

namespace quorvex {
namespace {

// A model, by default with the input of the bare plot.
PlotSeries Surface(const std::string& text,
                   const SolveData& input = Points({{0, 10, 5}, {-2, 2, 0}}, {100, 500, 250})) {
  auto model = std::make_unique<MvClass>(LocaleText());
  model->SetID("model", {text});
  model->SetIC(input);
  PlotSeries series(std::move(model));
  series.Style().ShadeMesh = true;
  return series;
}

TEST(PlotClass3D, TakesTheSettings) {
  Settings settings;
  for (const auto& [key, value] : {std::pair{"xlabelstring3d", "0.000"},
                                   {"zlogscale3d", "true"},
                                   {"extrapolate3d", "true"},
                                   {"make3dsquare", "true"},
                                   {"display3dcontourlines", "true"},
                                   {"useaxisscale", "true"},
                                   {"shade3dmeshbyvalue", "false"},
                                   {"mesh3dcolorscheme", "13"},
                                   {"mesh3dcontourcount", "25"},
                                   {"mesh3dcontourcolor", "255"},
                                   {"mesh3dcontourstyle", "2"},
                                   {"mesh3dcontourwidth", "3"},
                                   {"zaxistitlecolor3d", "77"},
                                   {"yaxisnumberfontheight3d", "14"}})
    settings.Set(key, value);
  const PlotClass3D plot(settings);
  EXPECT_EQ(plot.X.LabelString, "0.000");
  EXPECT_TRUE(plot.Z.LogScale && plot.Extrapolate && plot.Make3DSquare && plot.DisplayContourLines &&
              plot.UseAxisScale && !plot.ShadeMeshByValue);
  EXPECT_EQ(plot.MeshColorScheme, 13);
  EXPECT_EQ(plot.MeshContourDensity, 25);
  EXPECT_EQ(plot.ContourPenColor, 255);
  EXPECT_EQ(plot.ContourPenStyle, 2);
  EXPECT_EQ(plot.ContourPenWidth, 3);
  EXPECT_EQ(plot.Z.AxisTitleColor, 77);
  EXPECT_EQ(plot.Y.AxisNumberFont.Size, 14);

  const PlotClass3D fresh{Settings()};
  EXPECT_EQ(fresh.MeshColorScheme, kSpectrumScheme);
  EXPECT_EQ(fresh.MeshContourDensity, 10);
  EXPECT_EQ(fresh.X.AxisTitle + fresh.Y.AxisTitle + fresh.Z.AxisTitle, "X1X2Y");
}

TEST(PlotClass3D, TakesItsScalesFromWhatIsShown) {
  RecordingPrompter prompter;
  PlotClass3D plot = BarePlot3D();
  ASSERT_TRUE(plot.CreateGraph({.Auto = true}, prompter));
  EXPECT_EQ(plot.X.Limits(), (AxisLimits{0, 10, 10}));
  EXPECT_EQ(plot.Y.Limits(), (AxisLimits{-2, 2, 8}));
  EXPECT_EQ(plot.Z.Limits(), (AxisLimits{100, 500, 8}));
  EXPECT_EQ(plot.SuggestScale({false, true, true}),
            (std::vector<AxisLimits>{{0, 10, 10}, {-2, 2, 8}, {100, 1000, 1, true}}))
      << "X2 crosses zero and stays linear";

  plot.PlotData.push_back(CloudSeries({{40}, {50}}, {60}));
  plot.PlotData[1].Style().DisplayMarker = false;
  ASSERT_TRUE(plot.CreateGraph({.Auto = true}, prompter));
  EXPECT_EQ(plot.X.Max, 10) << "what is not shown has no part in it";

  // A surface that is only filled is shown as well; without it nothing is, and the scales are those of nothing.
  plot.ClearGraph();
  plot.PlotData.push_back(Surface("10*x1+20*x2"));
  plot.PlotData[0].Style().DisplayLine = false;
  ASSERT_TRUE(plot.CreateGraph({.Auto = true, .Regenerate = true}, prompter));
  EXPECT_EQ(plot.Z.Limits(), (AxisLimits{100, 500, 8}));
  plot.PlotData[0].Style().ShadeMesh = false;
  ASSERT_TRUE(plot.CreateGraph({.Auto = true, .Regenerate = true}, prompter));
  EXPECT_EQ(plot.Z.Limits(), (AxisLimits{-1, 1, 10}));
  EXPECT_TRUE(prompter.Said.empty());
}

TEST(PlotClass3D, RoundsChosenLimitsToDecades) {
  RecordingPrompter prompter;
  PlotClass3D plot = BarePlot3D();
  ASSERT_TRUE(plot.CreateGraph({.Auto = true}, prompter));
  plot.Z.LogScale = true;
  plot.Z.Min = 0;  // has no logarithm: the data's takes its place
  plot.Z.Max = 3000;
  plot.X.Max = 7;
  ASSERT_TRUE(plot.CreateGraph({}, prompter));
  EXPECT_EQ(plot.Z.Limits(), (AxisLimits{100, 10000, 2, true}));
  EXPECT_EQ(plot.Z.NumMinorTicks, 10);
  EXPECT_EQ(plot.X.Max, 7) << "a linear axis stays as it is";
}

TEST(PlotClass3D, MakesMeshesOverTheAxes) {
  RecordingPrompter prompter;
  PlotClass3D plot = BarePlot3D();
  plot.XPointsPerPlot = 3;
  plot.YPointsPerPlot = 2;
  plot.PlotData.push_back(Surface("10*x1+x2"));
  plot.PlotData[1].Style().ShowErrorBars = true;
  ASSERT_TRUE(plot.CreateGraph({.Auto = true, .Regenerate = true}, prompter));
  const auto values = [&](std::span<const double> column) { return std::vector(column.begin(), column.end()); };
  EXPECT_EQ(values(plot.PlotData[1].CopyDataTo(1).X), (std::vector<double>{0, 0, 5, 5, 10, 10}));
  EXPECT_EQ(values(plot.PlotData[1].CopyDataTo(2).X), (std::vector<double>{-2, 2, -2, 2, -2, 2}));
  EXPECT_EQ(values(plot.PlotData[1].CopyDataTo(1).Y), (std::vector<double>{-2, 2, 48, 52, 98, 102}));
  EXPECT_EQ(values(plot.PlotData[1].Model()->FittedData()), (std::vector<double>{-2, 102, 50}));

  plot.X.Min = -10;
  plot.X.Max = 30;
  ASSERT_TRUE(plot.CreateGraph({.Regenerate = true}, prompter));
  EXPECT_EQ(plot.PlotData[1].CopyDataTo(1).X[5], 10) << "no farther than the data";
  plot.Extrapolate = true;
  ASSERT_TRUE(plot.CreateGraph({.Regenerate = true}, prompter));
  EXPECT_EQ(plot.PlotData[1].CopyDataTo(1).X[5], 30);
  plot.PlotAtFittedOnly = true;
  ASSERT_TRUE(plot.CreateGraph({.Regenerate = true}, prompter));
  EXPECT_EQ(plot.PlotData[1].NumTablePoints(), 9U) << "three values of each variable";
}

TEST(PlotClass3D, TellsWhyASurfaceCannotBeDrawn) {
  const struct {
    const char *what, *model, *message;
    bool created;
  } kCases[] = {
      {"crosses zero", "x2",
       "An error occurred because a portion of the predicted curve crosses the zero axis, and "
       "cannot be plotted on log scale",
       true},
      {"touches zero", "x1",
       "An error occurred because a portion of the predicted curve crosses the zero axis, and "
       "cannot be plotted on log scale",
       true},
      {"no value", "log(x2)", kPlotFailure, false},
      {"all is well", "x1+1", "", true},
  };
  for (const auto& c : kCases) {
    PlotClass3D plot = BarePlot3D();
    plot.PlotData.push_back(Surface(c.model));
    plot.Z.LogScale = true;
    RecordingPrompter prompter;
    EXPECT_EQ(plot.CreateGraph({.Auto = true, .Regenerate = true}, prompter), c.created) << c.what;
    RecordingSurface surface;
    EXPECT_EQ(plot.DrawGraph(surface, prompter), *c.message == '\0') << c.what;
    EXPECT_EQ(plot.DrawGraph(surface, prompter), *c.message == '\0') << c.what;
    EXPECT_EQ(prompter.Said.size(), *c.message == '\0' ? 0U : 1U) << c.what << ": once is enough";
    EXPECT_TRUE(prompter.Said.empty() || prompter.Last() == std::string("refuse: ") + c.message) << c.what;
    EXPECT_EQ(surface.ObjectCount(), 0U) << c.what;
    // A linear axis has room for all of them.
    if (!c.created) continue;
    EXPECT_TRUE(plot.SetLogScale(plot.Z, false, prompter)) << c.what;
    EXPECT_TRUE(plot.DrawGraph(surface, prompter)) << c.what;
  }
}

TEST(PlotClass3D, DrawsWhatThereIsOfPointsWithoutExtent) {
  const struct {
    const char* what;
    std::vector<double> X1, X2, Y;
  } kCases[] = {{"one place", {3, 3, 3}, {-2, -2, -2}, {5, 5, 5}},
                {"one X1", {3, 3, 3}, {-2, 0, 2}, {1, 2, 4}},
                {"one X2", {1, 2, 3}, {7, 7, 7}, {1, 2, 4}},
                {"one pair", {0, 0, 0}, {0, 0, 0}, {1, 2, 4}},
                {"far off", {1e9, 1e9, 1e9}, {1e-9, 1e-9, 1e-9}, {1e9, 1e9, 1e9}},
                {"a single point", {3}, {-2}, {5}}};
  for (const auto& c : kCases)
    for (int options = 0; options < 32; ++options) {
      const auto where = testing::Message() << c.what << ", " << options;
      PlotClass3D plot{Settings()};
      plot.PlotData.push_back(CloudSeries({c.X1, c.X2}, c.Y));
      plot.PlotData.push_back(Surface("x1+x2", Points({c.X1, c.X2}, c.Y)));
      plot.PlotData[1].Style().DisplayLine = plot.PlotData[1].Style().ShowErrorBars = true;
      plot.PlotAtFittedOnly = (options & 1) != 0;
      plot.Extrapolate = (options & 2) != 0;
      plot.PlotData[1].Style().ShadeMesh = (options & 4) != 0;
      plot.DisplayContourLines = (options & 8) != 0;
      plot.MeshColorScheme = (options & 16) != 0 ? kTrueColorScheme : kSpectrumScheme;
      RecordingPrompter prompter;
      ASSERT_TRUE(plot.CreateGraph({.Auto = true, .Regenerate = true, .AutoFormat = true}, prompter)) << where;
      RecordingSurface surface(800, 600);
      EXPECT_TRUE(plot.DrawGraph(surface, prompter)) << where;
      EXPECT_TRUE(prompter.Said.empty()) << where;
      const std::vector<std::string> texts = surface.Only({"TextOutA"});
      for (const char* title : {" X1", " X2", " Y"})
        EXPECT_TRUE(std::ranges::any_of(texts, [&](const auto& text) { return text.ends_with(title); })) << where;
    }
}

TEST(PlotClass3D, LeavesTrueColorToDevicesThatHaveTheColors) {
  for (const std::int32_t bits : {8, 16, 24}) {
    PlotClass3D plot = BarePlot3D();
    plot.PlotData.push_back(Surface("100+40*x1"));
    plot.MeshColorScheme = kTrueColorScheme;
    RecordingPrompter prompter;
    ASSERT_TRUE(plot.CreateGraph({.Auto = true, .Regenerate = true}, prompter));
    RecordingSurface surface;
    surface.Caps[DeviceCap::BITSPIXEL] = bits;
    EXPECT_TRUE(plot.DrawGraph(surface, prompter));
    EXPECT_EQ(plot.MeshColorScheme, bits < 16 ? kSpectrumScheme : kTrueColorScheme) << bits;
    EXPECT_EQ(surface.Only({"ShadeTriangle"}).empty(), bits < 16) << bits;
  }
}

TEST(PlotClass3D, DrawsPointsFirstThenSurfacesThenBars) {
  PlotClass3D plot = BarePlot3D();
  plot.PlotData.insert(plot.PlotData.begin(), Surface("100+40*x1"));
  plot.PlotData[0].Style().ShowErrorBars = true;
  plot.PlotData[1].Style().MarkerStyle = 1;
  plot.XPointsPerPlot = plot.YPointsPerPlot = 2;
  plot.ShadeMeshByValue = false;
  RecordingPrompter prompter;
  ASSERT_TRUE(plot.CreateGraph({.Auto = true, .Regenerate = true}, prompter));
  RecordingSurface surface;
  EXPECT_TRUE(plot.DrawGraph(surface, prompter));
  std::string order;
  for (const std::string& call : surface.Calls) {
    const char kind = call.starts_with("Rectangle") ? 'm' : call.starts_with("Polygon ") ? 's' : 0;
    const bool bar = call.find(" " + std::to_string(plot.ErrorColorBelow) + " =") != std::string::npos;
    if (kind != 0 && !order.ends_with(kind)) order += kind;
    if (bar && !order.ends_with('b')) order += 'b';
  }
  EXPECT_EQ(order, "msb") << "the page, itself a rectangle, and markers; the surface; bars";
}

TEST(PlotClass3D, TurnsRoundAndRoundButNotOverTheFarSide) {
  PlotClass3D plot{Settings()};
  plot.UpdateViewAngle(350, 170);
  plot.Turn(15, 15);
  EXPECT_EQ(plot.Angles(), (ViewAngles{5, 180}));
  plot.Turn(-10, -200);
  EXPECT_EQ(plot.Angles(), (ViewAngles{355, 0}));
  plot.UpdateViewAngle(90, 45);
  EXPECT_EQ(plot.XYAngle, 3.14159265358979 / 2);
  EXPECT_EQ(plot.ZAngle, 3.14159265358979 / 4);
}

}  // namespace
}  // namespace quorvex
