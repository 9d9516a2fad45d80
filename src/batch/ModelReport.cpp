#include "batch/ModelReport.h"

#include <array>
#include <cmath>

#include "batch/DataReading.h"
#include "core/DateText.h"
#include "core/NumberText.h"
#include "core/Version.h"
#include "diagnosis/ChiSquare.h"
#include "functions/InverseTDistribution.h"
#include "results/FitLimits.h"

namespace quorvex {
std::array<std::string, 2> HeaderLines(const MacroSetup& setup) {
  return {std::string("Quorvex Version ") + kVersion,
          "Quorvex Macro '" + DataSourceText(setup) + "' evaluated on " + DateText(std::time(nullptr))};
}

std::string InputRow(const SolveData& data, std::size_t i, const MacroSetup& setup) {
  std::string row;
  for (const std::vector<double>& column : data.X) row += GeneralNumber(column[i]) + setup.OutputDelimit;
  row += GeneralNumber(data.Y[i]);
  if (setup.Weighted) row += setup.OutputDelimit + GeneralNumber(data.SD[i]);
  return row;
}

std::vector<std::string> CoefficientRows(const ModelClass& model, const MacroSetup& setup) {
  const std::array<double, 4> quantiles = ConfidenceQuantiles(model.ErrorDegrees());
  std::vector<std::string> rows;
  for (int i = 1; i <= model.NumDependentVar(); ++i) {
    const double se = model.StandardError(i);
    std::string row = GeneralNumber(model.Values(i)) + setup.OutputDelimit + GeneralNumber(se);
    for (const double t : quantiles) row += setup.OutputDelimit + GeneralNumber(se * t);
    rows.push_back(std::move(row));
  }
  return rows;
}

std::vector<std::pair<std::string, std::string>> FitStatistics(const ModelClass& model, std::size_t N,
                                                               const MacroSetup& setup) {
  const bool nonlinear = model.SolveType == 0;
  const auto ofNonlinear = [nonlinear](const std::string& value) { return nonlinear ? value : "N/A"; };
  std::vector<std::pair<std::string, std::string>> statistics = {
      {"Number_of_observations", std::to_string(N)},
      {"Solver_type", nonlinear ? "Nonlinear" : "Linear"},
      {"Nonlinear_iteration_limit", ofNonlinear(std::to_string(setup.MaxIterations))},
      {"Diverging_nonlinear_iteration_limit", ofNonlinear(std::to_string(setup.UnchangedIterations))},
      {"Number_of_nonlinear_iterations_performed", ofNonlinear(std::to_string(model.NumIterations))},
      {"Residual_tolerance", ofNonlinear(GeneralNumber(setup.RegressionTolerance))},
      {"Regression_degrees_of_freedom", std::to_string(model.DOFRegression)},
      {"Error_degrees_of_freedom", std::to_string(model.DOFError)},
      {"Total_degrees_of_freedom", std::to_string(std::int64_t{model.DOFRegression} + model.DOFError)},
      {"Sum_of_Residuals", GeneralNumber(model.ResSum)},
      {"Average_Residual", GeneralNumber(model.ResAvg)},
      {"Residual_Sum_of_Squares_(Absolute)", GeneralNumber(model.RSS)},
      {"Residual_Sum_of_Squares_(Relative)", GeneralNumber(model.RssNorm)},
      {"Standard_Error_of_the_Estimate", GeneralNumber(model.StdErr)},
      {"Coefficient_of_Multiple_Determination_(R^2)", FormatNumber(model.R2, "0.0###")},
      {"Proportion_of_Variance_Explained", FormatNumber(100 * model.R2, "##0.0#") + "%"},
      {"Adjusted_coefficient_of_multiple_determination_(Ra^2)", FormatNumber(model.R2Adjust, "0.0###")},
      {"Durbin-Watson_statistic", GeneralNumber(model.Durbin)},
  };
  if (model.Loss != LossKind::Squares) {
    statistics.emplace_back("Loss", kLossNames[static_cast<std::size_t>(model.Loss)]);
    statistics.emplace_back("Loss_scale", GeneralNumber(model.LossScale));
  }
  if (model.GivenDeviation > 0) {
    const ChiSquare chiSquare = ChiSquareOf(model, model.GivenDeviation);
    statistics.emplace_back("Standard_deviations", "Absolute");
    statistics.emplace_back("Reduced_chi-square", GeneralNumber(chiSquare.Reduced));
    statistics.emplace_back("Probability_of_chi-square", GeneralNumber(chiSquare.Probability));
  }
  return statistics;
}

FittedRows TabulateFit(ModelClass& model, const SolveData& data, const MacroSetup& setup,
                       const std::function<void()>& pulse) {
  FittedRows rows;
  if (TableColumns(setup).empty() && !setup.TableMinMaxError) return rows;
  // A range that nobody has set stands for the points of the input.
  if (!model.GenerateTable({TableRange()})) return rows;
  rows.Calculated.reserve(data.N());
  rows.Error.reserve(data.N());
  // With one variable the table has one entry for a run of equal X; with several, one for every point.
  const bool runs = data.X.size() == 1;
  std::size_t entry = 1;
  for (std::size_t i = 0; i < data.N(); ++i) {
    if (!runs)
      entry = i + 1;
    else if (i > 0 && data.X[0][i] != model.XTableData(entry))
      ++entry;
    rows.Calculated.push_back(model.YTableData(entry));
    rows.Error.push_back(data.Y[i] - rows.Calculated.back());
  }
  const LimitsChoice limits{
      .Confidence = setup.TableConfidence, .Prediction = setup.TablePrediction, .DerivativeMethod = setup.Derivatives};
  rows.Limits = LimitsAtPoints({.Model = &model}, data, limits, pulse).Values;
  return rows;
}

std::vector<std::string> TableColumns(const MacroSetup& setup) {
  std::vector<std::string> columns;
  if (setup.TableCalcData) columns.emplace_back("Y_Calc");
  if (setup.TableErrorData) columns.emplace_back("Y_Error");
  if (setup.TableConfidence) columns.insert(columns.end(), {"95%_Confidence_Lower", "95%_Confidence_Upper"});
  if (setup.TablePrediction) columns.insert(columns.end(), {"95%_Prediction_Lower", "95%_Prediction_Upper"});
  return columns;
}

std::string TableRow(const FittedRows& rows, std::size_t i, const MacroSetup& setup) {
  std::vector<std::string> cells;
  if (setup.TableCalcData) cells.push_back(GeneralNumber(rows.Calculated[i]));
  if (setup.TableErrorData) cells.push_back(GeneralNumber(rows.Error[i]));
  for (const std::vector<double>& limits : rows.Limits)
    cells.push_back(std::isnan(limits[i]) ? "N/A" : GeneralNumber(limits[i]));
  std::string row;
  for (const std::string& cell : cells) row += (row.empty() ? "" : setup.OutputDelimit) + cell;
  return row;
}

}  // namespace quorvex
