#include "batch/WriteStructuredOutput.h"

#include <algorithm>

#include "batch/ModelReport.h"
#include "core/NumberText.h"

namespace quorvex {
namespace {

class Writer {
 public:
  Writer(const LineSink& line, const SolveData& data, const MacroSetup& setup, const RunDiagnoses& diagnoses)
      : line_(line), data_(data), setup_(setup), diagnoses_(diagnoses) {}

  void Write(const std::vector<ModelClass*>& ranked, const std::vector<const ModelClass*>& unsolved) {
    Line(0, "B_OUTPUT");
    Line(4, "B_HEADER");
    for (const std::string& line : HeaderLines(setup_)) Line(8, line);
    Line(4, "E_HEADER");
    Line(4, "B_COMMENTS");
    Line(0, setup_.Comment);
    Line(4, "E_COMMENTS");
    if (setup_.TableDataFile) InputData();
    Line(4, "B_SOLVEDMODELS");
    std::size_t rank = 0;
    for (ModelClass* model : ranked) Model(*model, ++rank);
    Line(4, "E_SOLVEDMODELS");
    if (setup_.Diagnostics) OfAll(rank, unsolved);
    Line(0, "E_OUTPUT");
  }

 private:
  void Line(std::size_t indent, std::string_view text) { line_.Take(std::string(indent, ' ').append(text)); }
  void Value(std::string_view name, const std::string& value) { Line(16, std::string(name) + " = " + value); }
  void Value(std::string_view name, double value) { Value(name, GeneralNumber(value)); }

  void InputData() {
    Line(4, "B_INPUTDATA");
    Line(8, "DataPoints = " + std::to_string(data_.N()));
    for (std::size_t i = 0; i < data_.N(); ++i) Line(8, InputRow(data_, i, setup_));
    Line(4, "E_INPUTDATA");
  }

  void Model(ModelClass& model, std::size_t rank) {
    Line(8, "B_MODEL");
    Line(12, "Rank(sorted_by_" + std::string(kSortKeys[static_cast<std::size_t>(setup_.SortKey - 1)]) +
                 ") = " + std::to_string(rank));
    Line(12, "Model_ID = " + (model.cfgID.empty() ? model.id : model.cfgID));
    Line(12, "B_DEFINITION");
    for (int n = 1; n < model.FunctionCount(); ++n)
      if (!model.FunctionList(n).empty()) Value("F" + std::to_string(n), model.FunctionList(n));
    Value("Y", model.FunctionList(0));
    Line(12, "E_DEFINITION");
    Coefficients(model);
    if (setup_.OutputFitInfo) FitInfo(model);
    Tables(model);
    if (setup_.Diagnostics && rank <= diagnoses_.Models.size()) Judge(diagnoses_.Models[rank - 1], model.LossScale);
    Line(8, "E_MODEL");
  }

  void Judge(const Diagnosis& diagnosis, double lossScale) {
    const DiagnosisRows rows = RowsOf(diagnosis, lossScale, setup_);
    Line(12, "B_DIAGNOSIS");
    for (const DiagnosisRow& row : rows.Figures) Cells(16, row);
    for (const DiagnosisTable& table : rows.Tables) {
      Line(16, "B_" + table.Name);
      for (const DiagnosisRow& row : table.Rows) Cells(20, row);
      Line(16, "E_" + table.Name);
    }
    Line(12, "E_DIAGNOSIS");
  }

  void Cells(std::size_t indent, const DiagnosisRow& row) {
    std::string text = row.Name + " = ";
    for (std::size_t i = 0; i < row.Cells.size(); ++i)
      text.append(i > 0 ? setup_.OutputDelimit : "").append(row.Cells[i]);
    Line(indent, text);
  }

  // What stands behind the solved models, of which the last has that rank.
  void OfAll(std::size_t rank, const std::vector<const ModelClass*>& unsolved) {
    Line(4, "B_UNSOLVEDMODELS");
    for (const ModelClass* model : unsolved) {
      if (++rank > diagnoses_.Models.size()) break;
      Line(8, "B_MODEL");
      Line(12, "Model_ID = " + (model->cfgID.empty() ? model->id : model->cfgID));
      Judge(diagnoses_.Models[rank - 1], 0);
      Line(8, "E_MODEL");
    }
    Line(4, "E_UNSOLVEDMODELS");
    Line(4, "B_WARNINGS");
    for (const std::string& warning : diagnoses_.Warnings) Line(8, warning);
    Line(4, "E_WARNINGS");
  }

  void Coefficients(const ModelClass& model) {
    Line(12, "B_COEFFICIENTS");
    const std::vector<std::string> rows = CoefficientRows(model, setup_);
    for (int i = 1; i <= model.NumDependentVar(); ++i) Value(model.Variables(i), rows[static_cast<std::size_t>(i - 1)]);
    Line(12, "E_COEFFICIENTS");
  }

  void FitInfo(const ModelClass& model) {
    Line(12, "B_FITINFO");
    for (const auto& [name, value] : FitStatistics(model, data_.N(), setup_)) {
      // This one label has no blank behind its "=" where it has a number.
      const bool tight = name == "Diverging_nonlinear_iteration_limit" && model.SolveType == 0;
      Line(16, name + (tight ? " =" : " = ") + value);
    }
    Line(12, "E_FITINFO");
  }

  void Tables(ModelClass& model) {
    const FittedRows rows = TabulateFit(model, data_, setup_, line_.Pulse);
    if (!TableColumns(setup_).empty()) {
      Line(12, "B_DATATABLE");
      for (std::size_t i = 0; i < rows.Error.size(); ++i) Line(16, TableRow(rows, i, setup_));
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

  const LineSink& line_;
  const SolveData& data_;
  const MacroSetup& setup_;
  const RunDiagnoses& diagnoses_;
};

}  // namespace

void WriteStructuredOutput(const ModelCollection& models, const SolveData& data, const MacroSetup& setup,
                           const RunDiagnoses& diagnoses, const LineSink& line) {
  Writer(line, data, setup, diagnoses).Write(RankModels(models, setup.SortKey), UnsolvedModels(models));
}

}  // namespace quorvex
