#include <gtest/gtest.h>

#include <set>

#include "RecordingPrompter.h"
#include "engine/EqClass.h"
#include "engine/InterpClass.h"
#include "engine/MvClass.h"
#include "plot/DescribePlot.h"
#include "results/ResultPlots.h"
#include "results/SolvedProject.h"

namespace quorvex {
namespace {

SolveData Points() {
  SolveData data;
  data.X = {{1, 2, 3, 4}};
  data.Y = {2.5, 4, 6.5, 7};
  data.SD = {0.5, 1, 1, 1};
  data.sig = {1, 1, 1, 1};
  return data;
}

std::unique_ptr<ModelClass> ModelOf(const std::string& text, double a) {
  auto model = std::make_unique<EqClass>(LocaleText());
  model->SetID(text, {text});
  model->SetIC(Points());
  model->SetValue(1, a);
  return model;
}

std::vector<std::string> Names(const PlotPage& plot) {
  std::vector<std::string> names;
  for (const PlotSeries& series : plot.PlotData) names.push_back(series.Style().LegendText);
  return names;
}

std::vector<double> YOf(const PlotSeries& series) {
  const SeriesTable table = series.CopyDataTo();
  return {table.Y.begin(), table.Y.end()};
}

TEST(ModelPlot, ShowsDataAndCurve) {
  const auto model = ModelOf("a*x", 2);
  Result<PlotClass> plot = ModelPlot(model->CopyTo(), model->id, Points(), "Time", "Height", Settings());
  ASSERT_TRUE(plot);
  EXPECT_EQ(Names(*plot), (std::vector<std::string>{"Input Data", "Model a*x"}));
  EXPECT_EQ(plot->X.AxisTitle, "Time");
  const SeriesStyle& data = plot->PlotData[0].Style();
  EXPECT_TRUE(data.DisplayMarker && !data.DisplayLine && !data.ShowErrorBars);
  EXPECT_EQ(plot->PlotData[0].CopyMaXMinErrorDataTo().Max[0], 3);
  EXPECT_EQ(plot->PlotData[1].CopyDataTo().Y.back(), 8);
  RecordingPrompter prompter;
  EXPECT_TRUE(plot->CreateGraph({.Auto = true, .Regenerate = true, .AutoFormat = true}, prompter));

  InterpClass spline;
  std::string log;
  ASSERT_TRUE(spline.Fit(Points(), log));
  plot = ModelPlot(spline, spline.id, Points(), "", "", Settings());
  ASSERT_TRUE(plot);
  EXPECT_EQ(Names(*plot)[1], "Model Cubic Spline");

  const auto broken = ModelOf("a*ln(x-2)", 1);
  EXPECT_EQ(ModelPlot(broken->CopyTo(), broken->id, Points(), "", "", Settings()).error(),
            "An error has occurred generating equation data for equation a*ln(x-2)");
}

SolveData PlanePoints() {
  SolveData data = Points();
  data.X.push_back({0, 1, 0, 1});
  return data;
}

std::unique_ptr<ModelClass> PlaneOf(const std::string& text, double a) {
  auto model = std::make_unique<MvClass>(LocaleText());
  model->SetID(text, {text});
  model->SetIC(PlanePoints());
  model->SetValue(1, a);
  return model;
}

TEST(SurfacePlot, ShowsDataAndSurface) {
  const auto model = PlaneOf("a*x1+x2", 2);
  Settings settings;
  Result<PlotClass3D> plot =
      SurfacePlot(model->CopyTo(), model->id, PlanePoints(), {"Time", "Depth", "Heat"}, settings);
  ASSERT_TRUE(plot);
  EXPECT_EQ(plot->PlotTitle, "Heat against Time and Depth");
  EXPECT_EQ(Names(*plot), (std::vector<std::string>{"Input Data", "Model a*x1+x2"}));
  EXPECT_EQ(plot->X.AxisTitle + plot->Y.AxisTitle + plot->Z.AxisTitle, "TimeDepthHeat");
  const SeriesStyle& data = plot->PlotData[0].Style();
  EXPECT_TRUE(data.DisplayMarker && !data.DisplayLine && !data.ShowErrorBars);
  EXPECT_EQ(plot->PlotData[0].CopyMaXMinErrorDataTo().Max[0], 3);
  EXPECT_EQ(plot->PlotData[0].InputXMax(2), 1);
  const SeriesStyle& surface = plot->PlotData[1].Style();
  EXPECT_TRUE(surface.DisplayLine && surface.ShadeMesh && surface.ShowErrorBars);
  EXPECT_NE(surface.ShadeColor, 0) << "the colour of every value that it shades from";
  const SeriesTable mesh = plot->PlotData[1].CopyDataTo(2);
  EXPECT_EQ(mesh.Y.size(), 900U);
  EXPECT_EQ(mesh.Y.front(), 2);
  EXPECT_EQ(mesh.Y.back(), 9);
  RecordingPrompter prompter;
  EXPECT_TRUE(plot->CreateGraph({.Auto = true, .Regenerate = true, .AutoFormat = true}, prompter));

  settings.Set("zlogscale3d", "true");
  for (const double a : {2.0, -2.0}) {
    plot = SurfacePlot(PlaneOf("a*x1+x2", a), "plane", PlanePoints(), {"", "", ""}, settings);
    ASSERT_TRUE(plot);
    EXPECT_EQ(plot->Z.LogScale, a > 0) << "no surface below 0 on a logarithmic axis";
  }
  const auto broken = PlaneOf("a*ln(x1-2)", 1);
  EXPECT_EQ(SurfacePlot(broken->CopyTo(), broken->id, PlanePoints(), {"", "", ""}, settings).error(),
            "An error has occurred generating equation data for equation a*ln(x1-2)");
}

TEST(ScatterPlot, ShowsPointsInABox) {
  const Result<PlotClass3D> plot = ScatterPlot(PlanePoints(), {"X1", "X2", "Y"}, Settings());
  ASSERT_TRUE(plot);
  EXPECT_EQ(plot->PlotTitle, "Plot");
  EXPECT_EQ(Names(*plot), std::vector<std::string>{"Input Data"});
  EXPECT_TRUE(plot->PlotData[0].Style().ShowErrorBars);
}

TEST(DataPlot, ShowsErrorBarsOfWeightedPoints) {
  SolveData points = Points();
  Result<PlotClass> plot = DataPlot(points, "Time", "Height", Settings());
  ASSERT_TRUE(plot);
  EXPECT_EQ(plot->PlotTitle, "Plot");
  EXPECT_EQ(Names(*plot), std::vector<std::string>{"Input Data"});
  EXPECT_TRUE(plot->PlotData[0].Style().ShowErrorBars);
  EXPECT_EQ(plot->PlotData[0].CopyMaXMinErrorDataTo().Min[0], 2);
  points.SD[0] = 1;  // as without weights
  EXPECT_FALSE(DataPlot(points, "", "", Settings())->PlotData[0].Style().ShowErrorBars);
  points.SD[0] = 1e308, points.Y[0] = 1e308;
  EXPECT_EQ(DataPlot(points, "", "", Settings()).error(), "An error has occurred obtaining the input data.");
}

TEST(SolutionsPlot, TellsItsCurvesApart) {
  std::vector<std::unique_ptr<ModelClass>> models;
  std::vector<SolvedItem> solutions;
  for (int i = 0; i < 21; ++i) {
    models.push_back(ModelOf(i == 3 ? "a*ln(x-2)" : "a*x+" + std::to_string(i), 2));
    solutions.push_back({.Model = models.back().get()});
  }
  InterpClass spline;
  std::string log;
  ASSERT_TRUE(spline.Fit(Points(), log));
  solutions.push_back({.Interpolation = &spline});

  std::vector<std::string> left;
  Result<PlotClass> plot = SolutionsPlot(solutions, Points(), "X", "Y", Settings(), {}, left);
  ASSERT_TRUE(plot);
  EXPECT_EQ(left, std::vector<std::string>{"a*ln(x-2)"});
  ASSERT_EQ(plot->PlotData.size(), 22U);  // the points first
  EXPECT_FALSE(plot->Legend.Show) << "21 curves";
  std::set<std::pair<std::int32_t, int>> looks;
  for (const PlotSeries& series : plot->PlotData) looks.insert({series.Style().DrawColor, series.Style().DrawStyle});
  EXPECT_EQ(looks.size(), 22U);
  EXPECT_EQ(plot->PlotData[1].Style().LegendText, "a*x+0");
  EXPECT_EQ(plot->PlotData.back().Style().LegendText, "Cubic Spline");
  EXPECT_EQ(plot->PlotData[2].CopyDataTo().Y.back(), 9);  // 2 * 4 + 1

  solutions.resize(2);
  plot = SolutionsPlot(solutions, Points(), "X", "Y", Settings(), {}, left);
  EXPECT_TRUE(plot->Legend.Show);
}

std::vector<double> XOf(const PlotSeries& series) {
  const SeriesTable table = series.CopyDataTo();
  return {table.X.begin(), table.X.end()};
}

TEST(ResidualPlot, ShowsResidualsAgainstWhatIsChosen) {
  const auto curve = ModelOf("a*x", 2), surface = PlaneOf("a*x1+x2", 2);
  GatheredData line{.Points = Points()}, plane{.Points = PlanePoints()};
  line.Points.Row = {1, 3, 4, 7};
  // By hand: a*x is 2, 4, 6, 8, and a*x1+x2 is 2, 5, 6, 9 at the points.
  const struct {
    ModelClass& Model;
    const GatheredData& Data;
    std::size_t ScatterType;
    std::vector<double> X, Residuals;
  } cases[] = {
      {*curve, line, 0, {1, 3, 4, 7}, {0.5, 0, 0.5, -1}},     {*curve, line, 1, {1, 2, 3, 4}, {0.5, 0, 0.5, -1}},
      {*curve, line, 2, {2, 4, 6, 8}, {0.5, 0, 0.5, -1}},     {*surface, plane, 0, {1, 2, 3, 4}, {0.5, -1, 0.5, -2}},
      {*surface, plane, 2, {0, 1, 0, 1}, {0.5, -1, 0.5, -2}}, {*surface, plane, 3, {2, 5, 6, 9}, {0.5, -1, 0.5, -2}},
  };
  for (const auto& c : cases) {
    const Result<PlotClass> plot = ResidualPlot(c.Model, c.Data, c.ScatterType, "Depth", Settings());
    ASSERT_TRUE(plot);
    EXPECT_EQ(plot->PlotTitle, "Residual Error for Equation " + c.Model.id);
    EXPECT_EQ(plot->X.AxisTitle + '/' + plot->Y.AxisTitle, "Depth/Residuals");
    EXPECT_EQ(Names(*plot), (std::vector<std::string>{"Residuals", ""}));
    EXPECT_EQ(XOf(plot->PlotData[0]), c.X);
    EXPECT_EQ(YOf(plot->PlotData[0]), c.Residuals);
    const auto [first, last] = std::ranges::minmax(c.X);
    EXPECT_EQ(XOf(plot->PlotData[1]), (std::vector<double>{first, last}));
    EXPECT_EQ(YOf(plot->PlotData[1]), (std::vector<double>{0, 0}));
    EXPECT_TRUE(DescribePlot(*plot).ends_with(" Series \"Zero line\": 2 points."));
  }
  DataSheet sheet(2, true);
  sheet.Headers = {"", "Depth", "Heat", "SD"};
  EXPECT_EQ(ScatterTypes(sheet), (std::vector<std::string>{"Row", "X1", "Depth", "Calculated Heat"}));
  const auto broken = ModelOf("a*ln(x-2)", 1);
  EXPECT_EQ(ResidualPlot(*broken, line, 0, "Row", Settings()).error(),
            "An error occurred creating the Residual Scatter Plot. The plot cannot be created.");
}

// The quantile of 1 - 1/8 is 1.1503493803760079 (mpmath at 50 digits).
TEST(NormalPlot, ShowsSortedResidualsAndTheirLine) {
  const auto model = ModelOf("a*x", 2);
  model->StdErr = 0.5;
  const Result<PlotClass> plot = NormalPlot(*model, Points(), Settings());
  ASSERT_TRUE(plot);
  EXPECT_EQ(plot->PlotTitle, "Residual Normal Probability Plot");
  EXPECT_EQ(plot->X.AxisTitle, "Normal Quantiles");
  EXPECT_EQ(plot->Y.AxisTitle, "Normalized Residuals");
  EXPECT_EQ(Names(*plot), (std::vector<std::string>{"Residuals", "Reference line"}));
  EXPECT_EQ(YOf(plot->PlotData[0]), (std::vector<double>{-2, 0, 1, 1}));
  EXPECT_NEAR(plot->PlotData[0].InputXMax(), 1.1503493803760079, 1e-8);
  const SeriesTable line = plot->PlotData[1].CopyDataTo();
  EXPECT_EQ(line.X[1], plot->PlotData[0].InputXMax());
  EXPECT_EQ(line.Y[1], line.X[1]);
  const auto broken = ModelOf("a*ln(x-2)", 1);
  EXPECT_EQ(NormalPlot(*broken, Points(), Settings()).error(),
            "An error occurred creating the Residual Normal Probability Plot. The plot cannot be created.");
}

std::string Titles(PlotPage& plot) {
  std::string titles;
  for (const PlotAxis* axis : plot.Axes()) titles += (titles.empty() ? "" : ", ") + axis->AxisTitle;
  return titles;
}

TEST(EstimatePreview, DrawsTheModelAtTheEstimates) {
  const auto model = ModelOf("a*x", 1);
  const std::vector<double> estimates = {3};
  const auto curve = EstimatePreview(*model, estimates, Points(), {"Time", "Depth"}, Settings(), {});
  ASSERT_TRUE(curve);
  EXPECT_EQ(Titles(**curve), "Time, Depth");
  EXPECT_EQ(Names(**curve), (std::vector<std::string>{"Input Data", "Model a*x"}));
  EXPECT_EQ((*curve)->PlotData[1].CopyDataTo().Y.back(), 12);
  EXPECT_EQ(model->Values(1), 1) << "the project's model stays as it is";
  EqClass fresh{LocaleText()};  // which has seen no data yet
  fresh.SetID("a*x+xmean", {"a*x+xmean"});
  const auto first = EstimatePreview(fresh, estimates, Points(), {"Time", "Depth"}, Settings(), {});
  ASSERT_TRUE(first);
  EXPECT_EQ((*first)->PlotData[1].CopyDataTo().Y.back(), 14.5);  // 3 * 4 + 2.5
  EXPECT_EQ(EstimatePreview(*ModelOf("a*ln(x-2)", 1), estimates, Points(), {"Time", "Depth"}, Settings(), {}).error(),
            "An error has occurred generating equation data for equation a*ln(x-2)");

  const auto surface =
      EstimatePreview(*PlaneOf("a*x1+x2", 1), estimates, PlanePoints(), {"East", "North", "Depth"}, Settings(), {});
  ASSERT_TRUE(surface);
  EXPECT_EQ(Titles(**surface), "East, North, Depth");
  EXPECT_TRUE((*surface)->Angles());
  EXPECT_EQ(Names(**surface), (std::vector<std::string>{"Input Data", "Model a*x1+x2"}));
  EXPECT_EQ((*surface)->PlotData[1].CopyDataTo().Y.back(), 13);  // 3 * 4 + 1

  SolveData data = PlanePoints();
  data.X.push_back({0, 0, 0, 0});
  MvClass several{LocaleText()};
  several.SetID("a*x1+x2+x3", {"a*x1+x2+x3"});
  const auto values = EstimatePreview(several, estimates, data, {"East", "North", "Age", "Depth"}, Settings(), {});
  ASSERT_TRUE(values);
  EXPECT_EQ(Titles(**values), "Depth, Calculated Depth");
  EXPECT_EQ(Names(**values), (std::vector<std::string>{"Model a*x1+x2+x3", "Reference line"}));
  const SeriesTable points = (*values)->PlotData[0].CopyDataTo(), line = (*values)->PlotData[1].CopyDataTo();
  EXPECT_EQ((std::vector<double>{points.X.begin(), points.X.end()}), data.Y);
  EXPECT_EQ(YOf((*values)->PlotData[0]), (std::vector<double>{3, 7, 9, 13}));
  EXPECT_EQ(line.X[0], 2.5);
  EXPECT_EQ(line.Y[1], 7);
  several.SetID("a*ln(x1-2)+x3", {"a*ln(x1-2)+x3"});
  EXPECT_FALSE(EstimatePreview(several, estimates, data, {"East", "North", "Age", "Depth"}, Settings(), {}));
}

TEST(PlotOfResults, SaysWhyThereIsNone) {
  Project line = LineProject(), plane = PlaneProject(),
          space = ProjectOf({{1, 2, 3, 4, 6}, {1, 3, 2, 5, 4}, {2, 1, 1, 2, 1}, {3, 5, 8, 9, 11}});
  std::string log;
  ASSERT_TRUE(line.Interpolations[0].Fit(GatherData(line.Sheet).Points, log));
  const SolvedItem fit{&SolveModel(line, "a*x+b", 1), nullptr}, spline{nullptr, &line.Interpolations[0]};
  const SolvedItem surface{&SolveModel(plane, "a+b*x1+c*x2", 1), nullptr};
  const SolvedItem many{&SolveModel(space, "a*x1+b*x2+c*x3", 0), nullptr};
  const GatheredData points = GatherData(line.Sheet), tooFew, pairs = GatherData(plane.Sheet),
                     triples = GatherData(space.Sheet);
  using enum ResultPlotKind;
  const struct {
    ResultPlotKind Kind;
    SolvedItem Solution;
    const GatheredData& Data;
    std::string Failure;
  } cases[] = {
      {Model, fit, points, ""},
      {Residuals, fit, points, ""},
      {Probability, fit, points, ""},
      {Model, spline, points, ""},
      {Residuals, spline, points, "An interpolation passes through its points and leaves no residuals."},
      {Probability, spline, points, "An interpolation passes through its points and leaves no residuals."},
      {Residuals, fit, tooFew, "You need at least 2 data points in order to create a plot."},
      {Model, surface, pairs, ""},
      {Probability, surface, pairs, ""},
      {Model, many, triples, "A model of more than two independent variables has no plot."},
      {Residuals, many, triples, ""},
  };
  for (const auto& c : cases) {
    const Project& project = &c.Data == &pairs ? plane : &c.Data == &triples ? space : line;
    const auto plot = PlotOfResults(c.Kind, c.Solution, c.Data, project.Sheet, Settings(), {});
    EXPECT_EQ(plot ? "" : plot.error(), c.Failure);
  }
  plane.Sheet.Headers = {"Time", "", "Heat"};
  const auto titled = PlotOfResults(Model, surface, pairs, plane.Sheet, Settings(), {});
  ASSERT_TRUE(titled);
  std::vector<std::string> titles;
  for (const PlotAxis* axis : (*titled)->Axes()) titles.push_back(axis->AxisTitle);
  EXPECT_EQ(titles, (std::vector<std::string>{"Time", "X2", "Heat"}));
}

TEST(InterpolationsOf, AreTakenFromTheSolvedList) {
  Project line = LineProject();
  const SolvedItem fit{&SolveModel(line, "a*x+b", 1), nullptr}, spline{nullptr, &line.Interpolations[0]};
  RecordingPrompter user;
  EXPECT_EQ(InterpolationsOf({fit, spline}, user), std::vector<SolvedItem>{spline});
  EXPECT_TRUE(user.Said.empty());
  EXPECT_TRUE(InterpolationsOf({fit}, user).empty());
  EXPECT_EQ(user.Last(), "refuse: There are no interpolation models to plot.");
}

TEST(SingleSolution, IsTheOneThatIsSelected) {
  Project line = LineProject();
  const SolvedItem a{&SolveModel(line, "a*x+b", 1), nullptr}, b{&SolveModel(line, "a+b/x", 1), nullptr};
  using enum ResultPlotKind;
  const struct {
    ResultPlotKind Kind;
    std::vector<SolvedItem> Selected;
    std::size_t Variables;
    std::string Refusal;
  } cases[] = {
      {Model, {a}, 2, ""},
      {Residuals, {a}, 1, ""},
      {Probability, {b}, 3, ""},
      {Model, {}, 2, "There are no regression models to plot."},
      {Residuals, {}, 1, "There are no regression models to plot."},
      {Model, {a, b}, 3, "A model of more than two independent variables has no plot."},
      {Model,
       {a, b},
       2,
       "Only one model at a time can be displayed on a 3D plot. Please select a single model from the Available "
       "Solutions list."},
      {Residuals,
       {a, b},
       1,
       "Only one model at a time can be displayed on a Residual Scatter plot. Please select a single model from the "
       "Available Solutions list."},
      {Probability,
       {a, b},
       1,
       "Only one model at a time can be displayed on a Normal Residual plot. Please select a single model from the "
       "Available Solutions list."},
  };
  for (const auto& c : cases) {
    RecordingPrompter user;
    const auto single = SingleSolution(c.Kind, c.Selected, c.Variables, user);
    EXPECT_EQ(user.Last(), c.Refusal.empty() ? "" : "refuse: " + c.Refusal);
    EXPECT_EQ(single, c.Refusal.empty() ? std::optional(c.Selected[0]) : std::nullopt);
  }
}

}  // namespace
}  // namespace quorvex
