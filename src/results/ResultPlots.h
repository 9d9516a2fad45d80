#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/LocaleText.h"
#include "core/Prompter.h"
#include "core/Result.h"
#include "core/SolveData.h"
#include "plot/PlotClass.h"
#include "plot3d/PlotClass3D.h"
#include "sheet/DataSheet.h"
#include "solve/GatherData.h"
#include "solve/SolvedList.h"

namespace quorvex {

// The plots of a solution, with the settings of a new plot and series of their own. They are ready for
// CreateGraph({.Auto = true, .Regenerate = true, .AutoFormat = true}).

// A plot by what plots of two and of three dimensions have in common.
template <typename Plot>
Result<std::unique_ptr<PlotPage>> PageOf(Result<Plot> plot) {
  if (!plot) return Failure{plot.error()};
  return std::unique_ptr<PlotPage>(std::make_unique<Plot>(std::move(*plot)));
}

// Points that are shown as markers.
PlotSeries Markers(const std::string& legend, DataClass points, const Settings& settings);

// How many independent variables a plot can show.
inline constexpr std::size_t kMostPlottedVariables = 2;

// The input data and the curve through them, of a model with one independent variable or an interpolation; a copy of
// it, which `name` stands for in the legend. Of weighted data the error bars are at hand, but not shown. The failure
// where the curve has no value at some point.
Result<PlotClass> ModelPlot(PlotSeries curve, const std::string& name, const SolveData& data, const std::string& xTitle,
                            const std::string& yTitle, const Settings& settings, const LocaleText& locale = {});

// The same for a model of two variables: its surface, and between it and the points their residuals. The titles are
// those of X1, X2 and Y. The axis of Y, which the settings may want logarithmic, is linear where the surface reaches 0.
Result<PlotClass3D> SurfacePlot(std::unique_ptr<ModelClass> model, const std::string& name, const SolveData& data,
                                const std::vector<std::string>& titles, const Settings& settings,
                                const LocaleText& locale = {});

// Measured points as markers, with their standard deviations as error bars where they are weighted.
Result<PlotSeries> PointSeries(const std::string& legend, const SolveData& data, const Settings& settings);

// Makes the table of a curve or surface over its input, with so many points along each variable. False where it has no
// value somewhere.
bool MakeTable(PlotSeries& series, const PlotPage& plot, const std::vector<int>& points);

// A plot of them.
Result<PlotClass> DataPlot(const SolveData& data, const std::string& xTitle, const std::string& yTitle,
                           const Settings& settings, const LocaleText& locale = {});

// The same in three dimensions.
Result<PlotClass3D> ScatterPlot(const SolveData& data, const std::vector<std::string>& titles, const Settings& settings,
                                const LocaleText& locale = {});

// DataPlot with copies of solutions of one independent variable as curves through the points, each in a colour and line
// style of its own where the user chose none. `leftOut` gets the names of those without a value somewhere in the range
// of the data, which are left out. Of more than twenty curves the legend, as long as the page, is not shown; the user
// is told so by NoLegendText.
Result<PlotClass> SolutionsPlot(const std::vector<SolvedItem>& solutions, const SolveData& data,
                                const std::string& xTitle, const std::string& yTitle, const Settings& settings,
                                const LocaleText& locale, std::vector<std::string>& leftOut);

std::string NoLegendText(std::size_t curves);

// The look of a curve (of one variable) or surface (of two) that has a plot for itself.
void LookLikeModel(SeriesStyle& style, std::size_t variables);
// Gives one of several series the colour, line style and marker that tell it apart from those of other numbers.
void TellApart(SeriesStyle& style, std::size_t number);

// Said where there is nothing that a plot could show, and instead of a curve or surface.
inline constexpr const char* kNothingToPlot = "There are no regression models to plot.";
inline constexpr const char* kNoPlotOfManyVariables = "A model of more than two independent variables has no plot.";

// Takes the input data, which come first, out of a plot of models, where the settings ask for PlotModelsOnly.
void LeaveModelsOnly(PlotPage& plot, const Settings& settings);

// The words for models without a value somewhere in the range of the data.
std::string NoCurveText(const std::vector<std::string>& names);

// A copy of what the solved list holds, for a plot; with the points that it was fitted to, from which the curve of a
// model can have bands.
PlotSeries SeriesOf(const SolvedItem& solution);
PlotSeries SeriesOf(const SolvedItem& solution, const std::shared_ptr<const SolveData>& points,
                    const Settings& settings);

// The bands that the curves of a plot are to have, by a BandKind and the place of a level. `none` gets the curves that
// have none, and why, a sentence each.
void ShowBands(PlotPage& plot, BandKind bands, std::size_t level, std::vector<std::string>& none);

// What residuals can be shown against: the row of the sheet, each independent variable, and the calculated values.
std::vector<std::string> ScatterTypes(const DataSheet& sheet);

// The residuals against one of the ScatterTypes, by its number from 0, and the line of 0; `title` stands at the axis.
// Of points that were not gathered in the order of a sheet the row is their number, from 1.
Result<PlotClass> ResidualPlot(ModelClass& model, const GatheredData& data, std::size_t scatterType,
                               const std::string& title, const Settings& settings, const LocaleText& locale = {});

// The residuals in units of StdErr against what a normal distribution would have in their places, with the line on
// which such residuals lie.
Result<PlotClass> NormalPlot(ModelClass& model, const SolveData& data, const Settings& settings,
                             const LocaleText& locale = {});

// The plots of a results window, and that of its profiles in one, which macros draw.
enum class ResultPlotKind { Model, Residuals, Probability, Profile };

// One of them, of the complete rows of a sheet in its order; residuals against one of the ScatterTypes. Fails with the
// sentence that stands in its place.
Result<std::unique_ptr<PlotPage>> PlotOfResults(ResultPlotKind kind, const SolvedItem& solution,
                                                const GatheredData& data, const DataSheet& sheet,
                                                const Settings& settings, const LocaleText& locale,
                                                std::size_t scatterType = 0);

// The interpolations among the entries of the solved list. Refused where there are none.
std::vector<SolvedItem> InterpolationsOf(const std::vector<SolvedItem>& solutions, Prompter& user);

// The one of the selected solutions that a plot of its own can be made of: of its residuals, or, of two independent
// variables, of its surface. Nothing, and refused, where there are none or several, or too many variables.
std::optional<SolvedItem> SingleSolution(ResultPlotKind kind, const std::vector<SolvedItem>& selected,
                                         std::size_t variables, Prompter& user);

// A model with other coefficients, one value each, over the data: with one or two independent variables its curve or
// surface with the input data; with more, where there is neither, the calculated values against the measured ones and
// the line on which both are equal. The titles are those of the X's and Y. The failure where the model has no value at
// some point.
Result<std::unique_ptr<PlotPage>> EstimatePreview(const ModelClass& model, std::span<const double> coefficients,
                                                  const SolveData& data, const std::vector<std::string>& titles,
                                                  const Settings& settings, const LocaleText& locale = {});

}  // namespace quorvex
