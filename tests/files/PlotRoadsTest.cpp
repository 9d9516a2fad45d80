// Every way to a new plot, and what all of them have in common.

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Projects.h"
#include "RecordingPrompter.h"
#include "TemporaryFolder.h"
#include "drawing/RecordingSurface.h"
#include "files/PlotDocument.h"
#include "files/PlotFile.h"
#include "files/ProjectFile.h"
#include "results/ColumnsPlot.h"
#include "results/EquationPlot.h"
#include "results/FitLimits.h"
#include "results/PlotPoints.h"
#include "results/ResultPlots.h"
#include "results/SolvedProject.h"

namespace quorvex {
namespace {

using Made = Result<std::unique_ptr<PlotPage>>;

struct Road {
  std::string Name;
  Made Plot;
};

std::vector<Road> Roads(const Settings& settings, const LocaleText& locale) {
  std::vector<Road> roads;
  Project line = LineProject(locale);
  SolveModel(line, "a*x+b", 1);
  AddModel(line, "mine", {locale.DecimalSeparator == ',' ? "F1*0,5+b" : "F1*0.5+b", "a*x"});
  SolveModel(line, "mine", 0);
  std::string log;
  const GatheredData points = GatherData(line.Sheet, PointOrder::OfSheet);
  EXPECT_TRUE(line.Interpolations[0].Fit(points.Points, log));
  line.Interpolations[0].Solved = true;
  const std::vector<SolvedItem> solutions = SolvedItems(line, 0);
  EXPECT_EQ(solutions.size(), 3u);
  const Result<PlotPoints> data = SheetPoints(line.Sheet);
  std::vector<std::string> leftOut;
  roads.push_back({"data", PageOf(DataPlot(data->Points, "X", "Y", settings, locale))});
  roads.push_back({"columns", PageOf(ColumnsPlot{2, {0, 1}, PlotType::Lines}.Make(line.Sheet, settings, locale))});
  roads.push_back({"solutions", PageOf(SolutionsPlot(solutions, data->Points, "X", "Y", settings, locale, leftOut))});
  EXPECT_TRUE(leftOut.empty());
  for (const ResultPlotKind kind : {ResultPlotKind::Model, ResultPlotKind::Residuals, ResultPlotKind::Probability})
    roads.push_back({"result " + std::to_string(static_cast<int>(kind)),
                     PlotOfResults(kind, solutions[0], points, line.Sheet, settings, locale)});
  EquationPlot curve, surface;
  curve.Txt2D = locale.DecimalSeparator == ',' ? "0,5*sin(x)" : "0.5*sin(x)";
  curve.X = {"0", "6", "30"};
  roads.push_back({"equation", curve.Make(settings, locale)});
  surface.ThreeD = true;
  surface.Txt3D = "x1*x2-1";
  surface.Plane = {EquationPlot::Range{"-1", "1", "5"}, EquationPlot::Range{"0", "2", "4"}};
  roads.push_back({"equation in space", surface.Make(settings, locale)});
  const TemporaryFolder folder;
  roads.push_back({"numbers", OpenPlotFile(folder.Write("a.dat", "1 2\n2 4\n3 9\n"), settings, locale)});

  Project plane = PlaneProject(locale);
  SolveModel(plane, "a+b*x1+c*x2", 1);
  const GatheredData space = GatherData(plane.Sheet, PointOrder::OfSheet);
  roads.push_back({"points in space", PageOf(ScatterPlot(space.Points, {"X1", "X2", "Y"}, settings, locale))});
  roads.push_back({"surface", PlotOfResults(ResultPlotKind::Model, SolvedItems(plane, 0)[0], space, plane.Sheet,
                                            settings, locale)});
  return roads;
}

std::string Drawing(PlotPage& plot) {
  RecordingPrompter user;
  RecordingSurface surface(800, 600);
  EXPECT_TRUE(plot.DrawGraph(surface, user)) << user.Last();
  return surface.Text();
}

// Settings that somebody has edited by hand, or that a font dialog, which has sizes up to 512, has left.
Settings Extreme(const char* number) {
  Settings settings;
  for (const std::string font : {"plottitle", "plotlegend", "footnote", "xaxistitle", "yaxisnumber"})
    settings.Set(font + "fontheight", number);
  for (const std::string key :
       {"zaxistitlefontheight3d", "tickpenwidth", "tickpenwidthminor", "tickpenlength", "discreetmarkersize",
        "pointsperplot", "mesh3dcolorscheme", "mesh3dcontourcount", "mesh3dcontourwidth", "mesh3dcontourstyle"})
    settings.Set(key, number);
  for (const char* key : {"xlabelstring", "ylabelstring3d"}) settings.Set(key, "0." + std::string(300, '0'));
  return settings;
}

TEST(NewPlots, ComeBackFromTheirFilesAsTheyWere) {
  for (const LocaleText& locale : {LocaleText(), kCommaLocale})
    for (Settings settings : {Settings(), Extreme("512"), Extreme("-3")})
      for (Road& road : Roads(settings, locale)) {
        ASSERT_TRUE(road.Plot) << road.Name << ": " << road.Plot.error();
        RecordingPrompter user;
        auto document = NewPlotDocument(std::move(*road.Plot), settings, user);
        ASSERT_TRUE(document) << road.Name << ": " << user.Last();
        PlotPage& plot = document->Plot();
        plot.CreateGraph({.Regenerate = true}, user);
        const std::string drawing = Drawing(plot), text = PlotFileText(plot);
        const Made back = ParsePlotFile(text, "p.plt", Settings(), locale);
        ASSERT_TRUE(back) << road.Name << ": " << back.error();
        ASSERT_TRUE((*back)->CreateGraph({.Regenerate = true}, user)) << road.Name;
        EXPECT_EQ(PlotFileText(**back), text) << road.Name;
        EXPECT_EQ(Drawing(**back), drawing) << road.Name;
      }
}

// A template, a change and what takes it back leave the plot as it was, whatever it shows.
TEST(NewPlots, AreAsTheyWereWhenATemplateIsTakenBack) {
  const TemporaryFolder folder;
  const std::string look =
      "x_axis_scale_log = true\nplot_title_text = Look\nx1_axis_scale_min = -9\nlegend_xpos = 20\n";
  for (const LocaleText& locale : {LocaleText(), kCommaLocale}) {
    Settings settings;
    for (Road& road : Roads(settings, locale)) {
      RecordingPrompter user;
      auto document = NewPlotDocument(std::move(*road.Plot), settings, user);
      ASSERT_TRUE(document) << road.Name;
      const std::string drawing = Drawing(document->Plot()), text = PlotFileText(document->Plot());
      EXPECT_FALSE(document->Changed());
      ASSERT_TRUE(document->ApplyTemplate(folder.Write(document->Plot().Angles() ? "a.qv3" : "a.qv2", look)));
      const std::string changed = PlotFileText(document->Plot());
      EXPECT_NE(changed, text);
      ASSERT_TRUE(document->Undo());
      EXPECT_EQ(Drawing(document->Plot()), drawing) << road.Name;
      EXPECT_EQ(PlotFileText(document->Plot()), text) << road.Name;
      ASSERT_TRUE(document->Redo());
      EXPECT_EQ(PlotFileText(document->Plot()), changed) << road.Name;
    }
  }
}

// The limits of a table, of a plot, of both when they come back from their files; by each kind of derivatives other
// bits.
TEST(NewPlots, HaveTheBandsOfTablesByExactDerivatives) {
  Project project = ProjectOf({{1, 2, 3, 4, 5, 6}, {5.1, 3.2, 1.9, 1.3, 0.7, 0.5}});
  AddModel(project, "mine", {"a*exp(b*x)+c"});
  SolveModel(project, "mine", 0);
  const SolvedItem solution = SolvedItems(project, 0)[0];
  const GatheredData points = GatherData(project.Sheet, PointOrder::OfSheet);
  const auto inTable = [&](const SolvedItem& of, DerivativeKind kind) {
    return LimitsAtPoints(of, points.Points, {.Confidence = true, .Prediction = true, .DerivativeMethod = kind}).Values;
  };
  const auto limits = inTable(solution, DerivativeKind::Exact);
  EXPECT_NE(limits, inTable(solution, DerivativeKind::Central));

  Settings settings;
  settings.Set("derivative", "2");
  const Made plot = PlotOfResults(ResultPlotKind::Model, solution, points, project.Sheet, settings, {});
  ASSERT_TRUE(plot) << plot.error();
  for (PlotSeries& series : (*plot)->PlotData)
    if (series.Model() != nullptr) series.Style().Bands = 3;
  const Made back = ParsePlotFile(PlotFileText(**plot), "p.plt", Settings(), {});
  ASSERT_TRUE(back) << back.error();
  for (const Made* each : {&plot, &back}) {
    const auto curve =
        std::ranges::find_if((**each)->PlotData, [](const PlotSeries& s) { return s.Model() != nullptr; });
    ASSERT_NE(curve, (**each)->PlotData.end());
    for (std::size_t i = 0; i < points.Points.N(); ++i) {
      const double x = points.Points.X[0][i];
      const Interval confidence = curve->BandAt(BandKind::Confidence, x), next = curve->BandAt(BandKind::Prediction, x);
      EXPECT_EQ(confidence.Lower, limits[0][i]);
      EXPECT_EQ(confidence.Upper, limits[1][i]);
      EXPECT_EQ(next.Lower, limits[2][i]);
      EXPECT_EQ(next.Upper, limits[3][i]);
    }
  }
  const TemporaryFolder folder;
  ASSERT_EQ(WriteProject(project, folder.Path("p.qvx")), 0);
  Result<Project> reopened = ReadProject(folder.Path("p.qvx"), {});
  ASSERT_TRUE(reopened) << reopened.error();
  EXPECT_EQ(inTable(SolvedItems(*reopened, 0)[0], DerivativeKind::Exact), limits);
}

}  // namespace
}  // namespace quorvex
