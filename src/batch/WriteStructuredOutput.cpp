#include "batch/WriteStructuredOutput.h"

#include <algorithm>
#include <array>
#include <ctime>

#include "core/Files.h"
#include "core/NumberText.h"
#include "engine/InverseTDistribution.h"

namespace quorvex {
namespace {

std::string Now() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  char text[32];
  return std::string(text, std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local));
}

class Writer {
 public:
  Writer(TextFile& file, const SolveData& data, const MacroSetup& setup) : file_(file), data_(data), setup_(setup) {}

  void Write(const std::vector<ModelClass*>& ranked) {
    Line(0, "B_OUTPUT");
    Line(4, "B_HEADER");
    Line(8, "Quorvex Version " QUORVEX_VERSION);
    Line(8, "Quorvex Macro '" + setup_.DataFile + "' evaluated on " + Now());
    Line(4, "E_HEADER");
    Line(4, "B_COMMENTS");
    Line(0, setup_.Comment);
    Line(4, "E_COMMENTS");
    if (setup_.TableDataFile) InputData();
    Line(4, "B_SOLVEDMODELS");
    int rank = 0;
    for (ModelClass* model : ranked) Model(*model, ++rank);
    Line(4, "E_SOLVEDMODELS");
    Line(0, "E_OUTPUT");
  }

 private:
  void Line(std::size_t indent, std::string_view text) { file_.WriteLine(std::string(indent, ' ').append(text)); }
  void Value(std::string_view name, const std::string& value) { Line(16, std::string(name) + " = " + value); }
  void Value(std::string_view name, double value) { Value(name, GeneralNumber(value)); }
  void Count(std::string_view name, std::int64_t value) { Value(name, std::to_string(value)); }

  void InputData() {
    Line(4, "B_INPUTDATA");
    Line(8, "DataPoints = " + std::to_string(data_.N()));
    for (std::size_t i = 0; i < data_.N(); ++i) {
      std::string row;
      for (const std::vector<double>& column : data_.X) row += GeneralNumber(column[i]) + setup_.OutputDelimit;
      row += GeneralNumber(data_.Y[i]);
      if (setup_.Weighted) row += setup_.OutputDelimit + GeneralNumber(data_.SD[i]);
      Line(8, row);
    }
    Line(4, "E_INPUTDATA");
  }

  void Model(ModelClass& model, int rank) {
    Line(8, "B_MODEL");
    Line(12, "Rank(sorted_by_" + std::string(kSortKeys[static_cast<std::size_t>(setup_.SortKey - 1)]) +
                 ") = " + std::to_string(rank));
    Line(12, "Model_ID = " + (model.cfgID.empty() ? model.id : model.cfgID));
    Line(12, "B_DEFINITION");
    for (int n = 1; n <= 9; ++n)
      if (!model.FunctionList(n).empty()) Value("F" + std::to_string(n), model.FunctionList(n));
    Value("Y", model.FunctionList(0));
    Line(12, "E_DEFINITION");
    Coefficients(model);
    if (setup_.OutputFitInfo) FitInfo(model);
    if (setup_.TableCalcData || setup_.TableErrorData || setup_.TableMinMaxError) Tables(model);
    Line(8, "E_MODEL");
  }

  void Coefficients(const ModelClass& model) {
    Line(12, "B_COEFFICIENTS");
    const std::array<double, 4> quantiles = ConfidenceQuantiles(model.DOFError);
    for (int i = 1; i <= model.NumDependentVar(); ++i) {
      const double se = model.StandardError(i);
      std::string row = GeneralNumber(model.Values(i)) + setup_.OutputDelimit + GeneralNumber(se);
      for (const double t : quantiles) row += setup_.OutputDelimit + GeneralNumber(se * t);
      Value(model.Variables(i), row);
    }
    Line(12, "E_COEFFICIENTS");
  }

  void FitInfo(const ModelClass& model) {
    Line(12, "B_FITINFO");
    Count("Number_of_observations", static_cast<std::int64_t>(data_.N()));
    if (model.SolveType == 0) {
      Value("Solver_type", "Nonlinear");
      Count("Nonlinear_iteration_limit", setup_.MaxIterations);
      Line(16, "Diverging_nonlinear_iteration_limit =" + std::to_string(setup_.UnchangedIterations));
      Count("Number_of_nonlinear_iterations_performed", model.NumIterations);
      Value("Residual_tolerance", setup_.RegressionTolerance);
    } else {
      Value("Solver_type", "Linear");
      for (const char* name : {"Nonlinear_iteration_limit", "Diverging_nonlinear_iteration_limit",
                               "Number_of_nonlinear_iterations_performed", "Residual_tolerance"})
        Value(name, "N/A");
    }
    Count("Regression_degrees_of_freedom", model.DOFRegression);
    Count("Error_degrees_of_freedom", model.DOFError);
    Count("Total_degrees_of_freedom", std::int64_t{model.DOFRegression} + model.DOFError);
    Value("Sum_of_Residuals", model.ResSum);
    Value("Average_Residual", model.ResAvg);
    Value("Residual_Sum_of_Squares_(Absolute)", model.RSS);
    Value("Residual_Sum_of_Squares_(Relative)", model.RssNorm);
    Value("Standard_Error_of_the_Estimate", model.StdErr);
    Value("Coefficient_of_Multiple_Determination_(R^2)", FormatNumber(model.R2, "0.0###"));
    Value("Proportion_of_Variance_Explained", FormatNumber(100 * model.R2, "##0.0#") + "%");
    Value("Adjusted_coefficient_of_multiple_determination_(Ra^2)", FormatNumber(model.R2Adjust, "0.0###"));
    Value("Durbin-Watson_statistic", model.Durbin);
    Line(12, "E_FITINFO");
  }

  void Tables(ModelClass& model) {
    const FittedRows rows = TabulateFit(model, data_);
    if (setup_.TableCalcData || setup_.TableErrorData) {
      Line(12, "B_DATATABLE");
      for (std::size_t i = 0; i < rows.Error.size(); ++i) {
        std::string row;
        if (setup_.TableCalcData) row = GeneralNumber(rows.Calculated[i]);
        if (setup_.TableCalcData && setup_.TableErrorData) row += setup_.OutputDelimit;
        if (setup_.TableErrorData) row += GeneralNumber(rows.Error[i]);
        Line(16, row);
      }
      Line(12, "E_DATATABLE");
    }
    if (setup_.TableMinMaxError) {
      Line(12, "B_MINMAXRESIDUAL");
      if (!rows.Error.empty()) {
        const auto [smallest, largest] = std::minmax_element(rows.Error.begin(), rows.Error.end());
        Value("Minimum_Residual", *smallest);
        Value("Maximum_Residual", *largest);
      }
      Line(12, "E_MINMAXRESIDUAL");
    }
  }

  TextFile& file_;
  const SolveData& data_;
  const MacroSetup& setup_;
};

}  // namespace

std::vector<ModelClass*> RankModels(const ModelCollection& models, int SortKey) {
  std::vector<ModelClass*> ranked;
  for (const auto& model : models)
    if (model->Solved) ranked.push_back(model.get());
  const auto worse = [SortKey](const ModelClass& model) {
    switch (SortKey) {
      case 2:
        return -model.R2;
      case 3:
        return -model.R2Adjust;
      case 4:
        return model.StdErr;
      default:
        return model.RSS;
    }
  };
  std::stable_sort(ranked.begin(), ranked.end(),
                   [&](const ModelClass* a, const ModelClass* b) { return worse(*a) < worse(*b); });
  return ranked;
}

FittedRows TabulateFit(ModelClass& model, const SolveData& data) {
  FittedRows rows;
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
  return rows;
}

int WriteStructuredOutput(const ModelCollection& models, const SolveData& data, const MacroSetup& setup) {
  TextFile file;
  if (const int error = file.Create(setup.OutputFile); error != 0) return error;
  Writer(file, data, setup).Write(RankModels(models, setup.SortKey));
  return file.Close();
}

}  // namespace quorvex
