#include "results/EquationPlot.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <span>

#include "core/NumberText.h"
#include "engine/UserModel.h"
#include "equation/Parser.h"
#include "plot/PlotClass.h"
#include "plot3d/PlotClass3D.h"
#include "results/ResultPlots.h"

namespace quorvex {
namespace {

// The range of a variable, which is called "X", "X1" or "X2" and has no more than `most` points.
Result<TableRange> RangeOf(const EquationPlot::Range& texts, const std::string& name, int most, char separator) {
  const auto enter = [&](const std::string& what) {
    return Failure{"Please enter a valid value for " + name + ' ' + what + '.'};
  };
  const auto min = NumericText(texts.Min, separator), max = NumericText(texts.Max, separator),
             points = NumericText(texts.Divisions, separator);
  constexpr int kFewest = 3;
  if (!min) return enter("Min");
  if (!max) return enter("Max");
  if (!points || *points != std::trunc(*points) || *points < kFewest || *points > most)
    return enter("Divisions (" + std::to_string(kFewest) + '-' + std::to_string(most) + ')');
  if (*max <= *min) return Failure{name + " Max must be greater than " + name + " Min."};
  return TableRange{*min, *max, static_cast<int>(*points)};
}

// What a compiled equation has or lacks that its plot cannot do with or without; nothing where it is fine.
std::optional<std::string> FaultOf(const Expression& equation, bool threeD) {
  if (equation.HasCoefficients)
    return "It appears to contain variable coefficients, which cannot be assigned values when plotting an equation. ";
  if (!threeD) {
    if (!equation.HasIndependentVar) return "It does not appear to contain the independent variable X. ";
    return std::nullopt;
  }
  if (!equation.HasIndependentVar) return "It does not appear to contain the independent variables X1 and X2. ";
  if (equation.NumIndependentVar < 2) return "It does not appear to contain both independent variables X1 and X2. ";
  if (equation.NumIndependentVar > 2) return "It contains more than the two independent variables X1 and X2. ";
  if (!equation.VarsInOrder) return "At least one of the independent variables is missing. ";
  return std::nullopt;
}

// Why the equation cannot be plotted; "" where it can.
std::string WhyNoEquation(const std::string& text, bool threeD, const LocaleText& locale) {
  const Expression equation = Parser(threeD ? Dialect::SeveralVariables : Dialect::OneVariable, locale).Compile({text});
  // No data are there that words such as "xmean" could speak of.
  const bool compiles = !equation.ParseError && !AsksForStatistics(equation);
  const auto fault = compiles ? FaultOf(equation, threeD) : std::optional<std::string>("");
  return fault ? "The equation you entered is not valid. " + *fault + "Please check the equation syntax." : "";
}

// The corners of the ranges as points, which give a model its limits.
SolveData Corners(std::span<const TableRange> ranges) {
  SolveData data;
  if (ranges.size() == 1) {
    data.X = {{ranges[0].Min, ranges[0].Max}};
  } else {
    const TableRange &x1 = ranges[0], &x2 = ranges[1];
    data.X = {{x1.Min, x1.Min, x1.Max, x1.Max}, {x2.Min, x2.Max, x2.Min, x2.Max}};
  }
  data.Y.resize(data.X[0].size());
  return data;
}

// A model whose input is its own table over the ranges.
Result<std::unique_ptr<ModelClass>> ModelOver(const std::vector<TableRange>& ranges, const std::string& text,
                                              const LocaleText& locale) {
  std::unique_ptr<ModelClass> model = NewModelFor(ranges.size(), locale);
  model->SetID(text, {text});
  const Failure noData{"Could not generate data, please check your input."};
  const bool tooWide = std::any_of(ranges.begin(), ranges.end(),
                                   [](const TableRange& range) { return !std::isfinite(range.Max - range.Min); });
  if (tooWide || !model->SetIC(Corners(ranges))) return noData;
  if (!model->GenerateTable(ranges)) return Failure{"Error evaluating equation, please check your input."};
  SolveData table;
  for (int variable = 1; variable <= static_cast<int>(ranges.size()); ++variable) {
    const SeriesTable columns = model->CopyDataTo(variable);
    table.X.emplace_back(columns.X.begin(), columns.X.end());
    table.Y.assign(columns.Y.begin(), columns.Y.end());
  }
  if (!model->SetIC(table)) return noData;
  return model;
}

std::unique_ptr<PlotPage> Curve(int points, const Settings& settings, const LocaleText& locale) {
  auto plot = std::make_unique<PlotClass>(settings, locale);
  plot->PointsPerPlot = static_cast<std::int16_t>(points);
  plot->X.AxisTitle = "X";
  plot->Y.AxisTitle = "Y";
  return plot;
}

std::unique_ptr<PlotPage> Surface(int points1, int points2, const PlotSeries& surface, const Settings& settings,
                                  const LocaleText& locale) {
  auto plot = std::make_unique<PlotClass3D>(settings, locale);
  plot->XPointsPerPlot = static_cast<std::int16_t>(points1);
  plot->YPointsPerPlot = static_cast<std::int16_t>(points2);
  plot->X.AxisTitle = "X1";
  plot->Y.AxisTitle = "X2";
  plot->Z.AxisTitle = "Y";
  // The settings may want the axis logarithmic, where no surface can reach 0.
  if (surface.InputYMin() <= 0) plot->Z.LogScale = false;
  return plot;
}

}  // namespace

Result<std::unique_ptr<PlotPage>> EquationPlot::Make(const Settings& settings, const LocaleText& locale) const {
  const std::string& text = ThreeD ? Txt3D : Txt2D;
  if (Trim(text).empty()) return Failure{"Please enter a valid equation."};
  std::vector<TableRange> ranges;
  for (std::size_t i = 0; i < (ThreeD ? Plane.size() : 1); ++i) {
    constexpr int kMostCurvePoints = 5000;
    const Result<TableRange> range =
        ThreeD ? RangeOf(Plane[i], "X" + std::to_string(i + 1), kMostMeshDivisions, locale.DecimalSeparator)
               : RangeOf(X, "X", kMostCurvePoints, locale.DecimalSeparator);
    if (!range) return Failure{range.error()};
    ranges.push_back(*range);
  }
  if (const std::string why = WhyNoEquation(text, ThreeD, locale); !why.empty()) return Failure{why};
  Result<std::unique_ptr<ModelClass>> model = ModelOver(ranges, text, locale);
  if (!model) return Failure{model.error()};

  PlotSeries series(std::move(*model));
  LookLikeModel(series.Style(), ranges.size());
  series.Style().LegendText = text;
  std::unique_ptr<PlotPage> plot = ThreeD ? Surface(ranges[0].NumPoints, ranges[1].NumPoints, series, settings, locale)
                                          : Curve(ranges[0].NumPoints, settings, locale);
  plot->PlotTitle = "Plot";
  plot->PlotAtFittedOnly = false;  // the divisions were asked for
  plot->PlotData.push_back(std::move(series));
  return plot;
}

}  // namespace quorvex
