#include "results/ResultPlots.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "engine/UserModel.h"
#include "results/PlotPoints.h"
#include "results/ProfilePlot.h"
#include "sheet/ColumnNames.h"
#include "sheet/PointsNeeded.h"

namespace quorvex {
namespace {

constexpr std::int32_t kBlue = 0xFF0000, kRed = 0x0000FF, kLightBlue = 0xE6C89B, kGray = 0x808080;

// Of several curves, dark enough for thin lines on paper. Their number has no divisor in common with that of the line
// styles, so 35 curves go by before a colour comes in the same style again.
constexpr std::int32_t kCurveColours[] = {kRed, 0x00781E, 0xB000A0, 0x0066CC, 0x808000, 0x2A2A8B, 0x505050};
constexpr int kLineStyles = 5, kMarkerStyles = 10;

PlotSeries Markers(const std::string& legend, std::vector<double> x, std::vector<double> y, const Settings& settings) {
  DataClass points;
  points.GenerateTable({std::move(x)}, std::move(y));
  return Markers(legend, std::move(points), settings);
}

PlotSeries Line(const std::string& name, std::vector<double> x, std::vector<double> y, SeriesStyle style) {
  DataClass line;
  line.id = line.Description = name;
  line.GenerateTable({std::move(x)}, std::move(y));
  return {std::move(line), std::move(style)};
}

// The line on which both coordinates are equal.
PlotSeries ReferenceLine(double from, double to) {
  constexpr const char* kName = "Reference line";
  return Line(kName, {from, to}, {from, to}, {.LegendText = kName, .DrawColor = kRed});
}

// Where points without a residual lie, from the first to the last of others. It explains itself without a legend.
PlotSeries ZeroLine(const std::vector<double>& x) {
  const auto [first, last] = std::minmax_element(x.begin(), x.end());
  return Line("Zero line", {*first, *last}, {0, 0}, {.DrawColor = kGray});
}

std::vector<double> CalculatedValues(const SolveData& data, const std::vector<double>& residuals) {
  std::vector<double> calculated(data.N());
  std::transform(data.Y.begin(), data.Y.end(), residuals.begin(), calculated.begin(), std::minus<>());
  return calculated;
}

// A plot of measured points, with a title for each axis.
template <typename Plot>
Result<Plot> PointPlot(const SolveData& data, const std::vector<std::string>& titles, const Settings& settings,
                       const LocaleText& locale) {
  Plot plot(settings, locale);
  plot.PlotTitle = "Plot";
  for (std::size_t axis = 0; axis < titles.size(); ++axis) plot.Axes()[axis]->AxisTitle = titles[axis];

  Result<PlotSeries> input = PointSeries("Input Data", data, settings);
  if (!input) return Failure{input.error()};
  plot.PlotData.push_back(std::move(*input));
  return plot;
}

std::string NameOf(const SolvedItem& solution) {
  return solution.Model != nullptr ? ShownName(*solution.Model) : solution.Name();
}

// "Height against Time", and "Yield against Acid and Heat" in three dimensions.
std::string TitleOf(const std::vector<const PlotAxis*>& axes) {
  std::string title = axes.back()->AxisTitle + " against " + axes.front()->AxisTitle;
  if (axes.size() > 2) title += " and " + axes[1]->AxisTitle;
  return title;
}

// The same with a model or an interpolation, whose table is made. The failure where it has no value somewhere.
template <typename Plot>
Result<Plot> WithModel(Result<Plot> plot, PlotSeries model, const std::string& name, const std::vector<int>& points) {
  if (!plot) return plot;
  plot->PlotTitle = TitleOf(std::as_const(*plot).Axes());
  plot->PlotData[0].Style().ShowErrorBars = false;
  model.Style().LegendText = "Model " + name;
  if (!MakeTable(model, *plot, points)) return Failure{NoCurveText({name})};
  plot->PlotData.push_back(std::move(model));
  return plot;
}

}  // namespace

PlotSeries Markers(const std::string& legend, DataClass points, const Settings& settings) {
  points.id = points.Description = legend;
  return {std::move(points),
          {.LegendText = legend,
           .DisplayLine = false,
           .DisplayMarker = true,
           .DrawColor = kBlue,
           .MarkerColor = kBlue,
           .MarkerSize = std::clamp(settings.Integer("discreetmarkersize"), 1, 72)}};
}

Result<PlotSeries> PointSeries(const std::string& legend, const SolveData& data, const Settings& settings) {
  DataClass input;
  input.GenerateTable(data.X, data.Y);
  const bool weighted = IsWeighted(data);
  if (weighted && !input.GenerateErrorTable(data.SD)) return Failure{"An error has occurred obtaining the input data."};
  PlotSeries series = Markers(legend, std::move(input), settings);
  series.Style().ShowErrorBars = weighted;
  return series;
}

bool MakeTable(PlotSeries& series, const PlotPage& plot, const std::vector<int>& points) {
  std::vector<TableRange> ranges;
  for (int variable = 1; const int count : points) {
    ranges.push_back(
        {series.InputXMin(variable), series.InputXMax(variable), plot.PlotAtFittedOnly ? kInputPoints : count});
    ++variable;
  }
  return series.GenerateTable(ranges, false);
}

Result<PlotClass> DataPlot(const SolveData& data, const std::string& xTitle, const std::string& yTitle,
                           const Settings& settings, const LocaleText& locale) {
  return PointPlot<PlotClass>(data, {xTitle, yTitle}, settings, locale);
}

Result<PlotClass3D> ScatterPlot(const SolveData& data, const std::vector<std::string>& titles, const Settings& settings,
                                const LocaleText& locale) {
  return PointPlot<PlotClass3D>(data, titles, settings, locale);
}

Result<PlotClass> ModelPlot(PlotSeries curve, const std::string& name, const SolveData& data, const std::string& xTitle,
                            const std::string& yTitle, const Settings& settings, const LocaleText& locale) {
  LookLikeModel(curve.Style(), 1);
  Result<PlotClass> plot = DataPlot(data, xTitle, yTitle, settings, locale);
  const int points = plot ? plot->PointsPerPlot : 0;
  return WithModel(std::move(plot), std::move(curve), name, {points});
}

Result<PlotClass3D> SurfacePlot(std::unique_ptr<ModelClass> model, const std::string& name, const SolveData& data,
                                const std::vector<std::string>& titles, const Settings& settings,
                                const LocaleText& locale) {
  PlotSeries surface(std::move(model));
  LookLikeModel(surface.Style(), 2);
  Result<PlotClass3D> plot = ScatterPlot(data, titles, settings, locale);
  if (!plot) return plot;
  const std::vector<int> points = {plot->XPointsPerPlot, plot->YPointsPerPlot};
  plot = WithModel(std::move(plot), std::move(surface), name, points);
  if (plot && plot->PlotData.back().Model()->ZIsNegative) plot->Z.LogScale = false;
  return plot;
}

Result<PlotClass> SolutionsPlot(const std::vector<SolvedItem>& solutions, const SolveData& data,
                                const std::string& xTitle, const std::string& yTitle, const Settings& settings,
                                const LocaleText& locale, std::vector<std::string>& leftOut) {
  constexpr std::size_t kLongestLegend = 20;
  Result<PlotClass> plot = DataPlot(data, xTitle, yTitle, settings, locale);
  if (!plot) return plot;
  const auto points = std::make_shared<const SolveData>(data);
  std::size_t number = 0;
  for (const SolvedItem& solution : solutions) {
    PlotSeries curve = SeriesOf(solution, points, settings);
    if (!MakeTable(curve, *plot, {plot->PointsPerPlot})) {
      leftOut.push_back(NameOf(solution));
      continue;
    }
    SeriesStyle& style = curve.Style();
    style.LegendText = NameOf(solution);
    style.DisplayLine = true;
    TellApart(style, number++);
    plot->PlotData.push_back(std::move(curve));
  }
  plot->Legend.Show = plot->PlotData.size() <= kLongestLegend + 1;
  return plot;
}

std::string NoLegendText(std::size_t curves) {
  return "A legend of " + std::to_string(curves) +
         " curves would cover the plot, so it is not shown. Legend in the View menu of the plot shows it.";
}

void LookLikeModel(SeriesStyle& style, std::size_t variables) {
  style.DisplayLine = true;
  if (variables == 1) {
    style.DrawColor = kRed;
    return;
  }
  style.ShadeMesh = true;
  style.ShadeColor = kLightBlue;
  style.ShowErrorBars = true;  // a filled surface hides the points behind it
}

void TellApart(SeriesStyle& style, std::size_t number) {
  style.DrawColor = style.MarkerColor = kCurveColours[number % std::size(kCurveColours)];
  style.DrawStyle = static_cast<int>(number % kLineStyles);
  style.MarkerStyle = static_cast<int>(number % kMarkerStyles);
}

void LeaveModelsOnly(PlotPage& plot, const Settings& settings) {
  if (!settings.Flag("plotmodelsonly")) return;
  plot.PlotData.erase(plot.PlotData.begin());
  // Bars to points that are not there would hang in the air.
  for (PlotSeries& model : plot.PlotData) model.Style().ShowErrorBars = false;
}

std::string NoCurveText(const std::vector<std::string>& names) {
  std::string text = "An error has occurred generating equation data for equation ";
  for (std::size_t i = 0; i < names.size(); ++i) text += (i > 0 ? ", " : "") + names[i];
  return text;
}

PlotSeries SeriesOf(const SolvedItem& solution) {
  // A copy, so that a plot shows what it was opened with, whatever becomes of the solution.
  return solution.Model != nullptr ? PlotSeries(solution.Model->CopyTo()) : PlotSeries(*solution.Interpolation);
}

PlotSeries SeriesOf(const SolvedItem& solution, const std::shared_ptr<const SolveData>& points,
                    const Settings& settings) {
  PlotSeries series = SeriesOf(solution);
  series.FittedTo(points, settings.DerivativeMethod);
  return series;
}

void ShowBands(PlotPage& plot, BandKind bands, std::size_t level, std::vector<std::string>& none) {
  for (PlotSeries& series : plot.PlotData) {
    if (series.Data() != nullptr) continue;
    series.Style().Bands = static_cast<std::int32_t>(bands);
    series.Style().BandLevel = static_cast<std::int32_t>(level);
    if (bands == BandKind::None || series.ErrorBands() != nullptr) continue;
    series.Style().Bands = 0;
    none.push_back(series.Style().LegendText + ": " + series.WhyNoBands());
  }
}

std::vector<std::string> ScatterTypes(const DataSheet& sheet) {
  std::vector<std::string> types = ColumnNames(AxisTitles(sheet));
  types.back() = "Calculated " + types.back();
  types.insert(types.begin(), kRowTitle);
  return types;
}

Result<PlotClass> ResidualPlot(ModelClass& model, const GatheredData& data, std::size_t scatterType,
                               const std::string& title, const Settings& settings, const LocaleText& locale) {
  const SolveData& points = data.Points;
  std::optional<std::vector<double>> residuals = model.GenerateResiduals(points);
  if (!residuals) return Failure{"An error occurred creating the Residual Scatter Plot. The plot cannot be created."};
  PlotClass plot(settings, locale);
  plot.PlotTitle = "Residual Error for Equation " + ShownName(model);
  plot.X.AxisTitle = title;
  plot.Y.AxisTitle = "Residuals";
  std::vector<double> against(points.Row.begin(), points.Row.end());
  if (scatterType > points.X.size()) {
    against = CalculatedValues(points, *residuals);
  } else if (scatterType > 0) {
    against = points.X[scatterType - 1];
  } else if (against.empty()) {
    against.resize(points.N());
    std::iota(against.begin(), against.end(), 1.0);
  }
  PlotSeries zero = ZeroLine(against);
  plot.PlotData.emplace_back(Markers("Residuals", std::move(against), std::move(*residuals), settings));
  plot.PlotData.emplace_back(std::move(zero));
  return plot;
}

Result<PlotClass> NormalPlot(ModelClass& model, const SolveData& data, const Settings& settings,
                             const LocaleText& locale) {
  std::optional<NormalTable> table = model.GenerateQQTable(data);
  if (!table || table->Quantiles.empty())
    return Failure{"An error occurred creating the Residual Normal Probability Plot. The plot cannot be created."};
  PlotClass plot(settings, locale);
  plot.PlotTitle = "Residual Normal Probability Plot";
  plot.X.AxisTitle = "Normal Quantiles";
  plot.Y.AxisTitle = "Normalized Residuals";

  PlotSeries line = ReferenceLine(table->Quantiles.front(), table->Quantiles.back());
  plot.PlotData.emplace_back(Markers("Residuals", std::move(table->Quantiles), std::move(table->Sorted), settings));
  plot.PlotData.emplace_back(std::move(line));
  return plot;
}

Result<std::unique_ptr<PlotPage>> PlotOfResults(ResultPlotKind kind, const SolvedItem& solution,
                                                const GatheredData& data, const DataSheet& sheet,
                                                const Settings& settings, const LocaleText& locale,
                                                std::size_t scatterType) {
  const SolveData& points = data.Points;
  if (points.N() < kFewestPointsToPlot) return Failure{kTooFewPointsToPlot};
  if (kind == ResultPlotKind::Model) {
    if (points.X.size() > kMostPlottedVariables) return Failure{kNoPlotOfManyVariables};
    const std::vector<std::string> titles = AxisTitles(sheet);
    Result<std::unique_ptr<PlotPage>> plot =
        points.X.size() == 1
            ? PageOf(ModelPlot(SeriesOf(solution, std::make_shared<const SolveData>(points), settings),
                               NameOf(solution), points, titles[0], titles[1], settings, locale))
            : PageOf(SurfacePlot(solution.Model->CopyTo(), NameOf(solution), points, titles, settings, locale));
    if (plot) ShowDates(**plot, sheet, SheetColumns(sheet));
    return plot;
  }
  if (solution.Model == nullptr) return Failure{"An interpolation passes through its points and leaves no residuals."};
  if (kind == ResultPlotKind::Profile) {
    SolveForm unattended;
    return PageOf(ProfilesPlot(*solution.Model, points, settings, locale, unattended));
  }
  if (kind == ResultPlotKind::Probability) return PageOf(NormalPlot(*solution.Model, points, settings, locale));
  return PageOf(ResidualPlot(*solution.Model, data, scatterType, ScatterTypes(sheet)[scatterType], settings, locale));
}

std::vector<SolvedItem> InterpolationsOf(const std::vector<SolvedItem>& solutions, Prompter& user) {
  std::vector<SolvedItem> found;
  std::copy_if(solutions.begin(), solutions.end(), std::back_inserter(found),
               [](const SolvedItem& item) { return item.Interpolation != nullptr; });
  if (found.empty()) user.Refuse("There are no interpolation models to plot.");
  return found;
}

std::optional<SolvedItem> SingleSolution(ResultPlotKind kind, const std::vector<SolvedItem>& selected,
                                         std::size_t variables, Prompter& user) {
  constexpr const char* kNames[] = {"3D", "Residual Scatter", "Normal Residual"};
  if (selected.empty())
    user.Refuse(kNothingToPlot);
  else if (kind == ResultPlotKind::Model && variables > kMostPlottedVariables)
    user.Refuse(kNoPlotOfManyVariables);
  else if (selected.size() > 1)
    user.Refuse(std::string("Only one model at a time can be displayed on a ") + kNames[static_cast<int>(kind)] +
                " plot. Please select a single model from the Available Solutions list.");
  else
    return selected.front();
  return std::nullopt;
}

Result<std::unique_ptr<PlotPage>> EstimatePreview(const ModelClass& model, std::span<const double> coefficients,
                                                  const SolveData& data, const std::vector<std::string>& titles,
                                                  const Settings& settings, const LocaleText& locale) {
  std::unique_ptr<ModelClass> trial = model.CopyTo();
  const std::string& equation = model.FunctionList(0);
  trial->SetIC(data);  // for the input and its statistics
  for (int i = 1; const double value : coefficients) trial->SetValue(i++, value);
  if (data.X.size() == 1)
    return PageOf(ModelPlot(std::move(trial), equation, data, titles[0], titles[1], settings, locale));
  if (data.X.size() == 2) return PageOf(SurfacePlot(std::move(trial), equation, data, titles, settings, locale));

  const std::optional<std::vector<double>> residuals = trial->GenerateResiduals(data);
  if (!residuals) return Failure{NoCurveText({equation})};
  const auto [least, greatest] = std::minmax_element(data.Y.begin(), data.Y.end());
  auto plot = std::make_unique<PlotClass>(settings, locale);
  plot->PlotTitle = "Calculated and Measured Values";
  plot->X.AxisTitle = titles.back();
  plot->Y.AxisTitle = "Calculated " + titles.back();
  plot->PlotData.emplace_back(Markers("Model " + equation, data.Y, CalculatedValues(data, *residuals), settings));
  plot->PlotData.emplace_back(ReferenceLine(*least, *greatest));
  return std::unique_ptr<PlotPage>(std::move(plot));
}

}  // namespace quorvex
