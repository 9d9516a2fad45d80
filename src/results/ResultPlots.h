#pragma once

#include <span>
#include <string>
#include <vector>

#include "core/LocaleText.h"
#include "core/Result.h"
#include "core/SolveData.h"
#include "plot/PlotClass.h"
#include "sheet/DataSheet.h"
#include "solve/GatherData.h"
#include "solve/SolvedList.h"

namespace quorvex {

// The plots of a solution, with the settings of a new plot and series of their own. They are ready for
// CreateGraph({.Auto = true, .Regenerate = true, .AutoFormat = true}).

// The input data and the curve through them, of a model with one independent variable or an interpolation; a copy of
// it, which `name` stands for in the legend. Of weighted data the error bars are at hand, but not shown. The failure
// where the curve has no value at some point.
Result<PlotClass> ModelPlot(PlotSeries curve, const std::string& name, const SolveData& data, const std::string& xTitle,
                            const std::string& yTitle, const Settings& settings, const LocaleText& locale = {});

// Measured points as markers, with their standard deviations as error bars where they are weighted.
Result<PlotClass> DataPlot(const SolveData& data, const std::string& xTitle, const std::string& yTitle,
                           const Settings& settings, const LocaleText& locale = {});

// The same with copies of solutions of one independent variable as curves through the points, each in a colour and line
// style of its own where the user chose none. `leftOut` gets the names of those without a value somewhere in the range
// of the data, which are left out. Of more than twenty curves the legend, as long as the page, is not shown.
Result<PlotClass> SolutionsPlot(const std::vector<SolvedItem>& solutions, const SolveData& data,
                                const std::string& xTitle, const std::string& yTitle, const Settings& settings,
                                const LocaleText& locale, std::vector<std::string>& leftOut);

// Said instead of such a curve.
inline constexpr const char* kNoCurveOfSeveralVariables =
    "A model of several independent variables has no plot in two dimensions.";

// The words for models without a value somewhere in the range of the data.
std::string NoCurveText(const std::vector<std::string>& names);

// A copy of what the solved list holds, for a plot.
PlotSeries SeriesOf(const SolvedItem& solution);

// The residuals against their row: `rows` of the sheet, one per point, or, where there are none, the number of the
// point in the data, from 1.
Result<PlotClass> ResidualPlot(ModelClass& model, const SolveData& data, const Settings& settings,
                               const LocaleText& locale = {}, std::span<const std::size_t> rows = {});

// The residuals in units of StdErr against what a normal distribution would have in their places, with the line on
// which such residuals lie.
Result<PlotClass> NormalPlot(ModelClass& model, const SolveData& data, const Settings& settings,
                             const LocaleText& locale = {});

// The plots of a results window.
enum class ResultPlotKind { Model, Residuals, Probability };

// One of them, of the complete rows of a sheet in its order. Fails with the sentence that stands in its place.
Result<PlotClass> PlotOfResults(ResultPlotKind kind, const SolvedItem& solution, const GatheredData& data,
                                const DataSheet& sheet, const Settings& settings, const LocaleText& locale);

// A model with other coefficients, one value each, over the data: with one independent variable its curve through the
// input data; with several, where there is no curve to show, the calculated values against the measured ones and the
// line on which both are equal. The failure where the model has no value at some point.
Result<PlotClass> EstimatePreview(const ModelClass& model, std::span<const double> coefficients, const SolveData& data,
                                  const Settings& settings, const LocaleText& locale = {});

}  // namespace quorvex
