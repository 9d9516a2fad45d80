#include "batch/WriteDelimitedOutput.h"

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
    for (const std::string& line : HeaderLines(setup_)) line_.Take(line);
    line_.Take("");
    if (!setup_.Comment.empty()) {
      line_.Take(Trim(setup_.Comment));
      line_.Take("");
    }
    if (setup_.TableDataFile) InputData();
    std::size_t rank = 0;
    for (ModelClass* model : ranked) Model(*model, ++rank);
    if (setup_.Diagnostics) OfAll(rank, unsolved);
  }

 private:
  void Row(const std::vector<std::string>& cells) {
    std::string row;
    for (const std::string& cell : cells) {
      if (!row.empty()) row += setup_.OutputDelimit;
      row += cell;
    }
    line_.Take(row);
  }

  void InputData() {
    Row({"DataPoints", std::to_string(data_.N())});
    std::string heading;
    for (std::size_t v = 1; v <= data_.X.size(); ++v)
      heading += (data_.X.size() == 1 ? "X" : "X" + std::to_string(v)) + setup_.OutputDelimit;
    heading += "Y";
    if (setup_.Weighted) heading += setup_.OutputDelimit + "StDev";
    line_.Take(heading);
    for (std::size_t i = 0; i < data_.N(); ++i) line_.Take(InputRow(data_, i, setup_));
    line_.Take("");
  }

  void Model(ModelClass& model, std::size_t rank) {
    Row({"Rank(sorted_by_" + std::string(kSortKeys[static_cast<std::size_t>(setup_.SortKey - 1)]) + ")",
         std::to_string(rank)});
    Row({"Model_ID", model.cfgID.empty() ? model.id : model.cfgID});
    for (int n = 1; n < model.FunctionCount(); ++n)
      if (!model.FunctionList(n).empty()) Row({"F" + std::to_string(n), model.FunctionList(n)});
    Row({"Y", model.FunctionList(0)});
    line_.Take("");
    Row({"Variable", "Value", "StdErr", "68%", "90%", "95%", "99%"});
    const std::vector<std::string> rows = CoefficientRows(model, setup_);
    for (int i = 1; i <= model.NumDependentVar(); ++i) Row({model.Variables(i), rows[static_cast<std::size_t>(i - 1)]});
    if (setup_.OutputFitInfo)
      for (const auto& [name, value] : FitStatistics(model, data_.N(), setup_)) Row({name, value});
    Tables(model);
    if (setup_.Diagnostics && rank <= diagnoses_.Models.size()) Judge(diagnoses_.Models[rank - 1], model.LossScale);
  }

  void Judge(const Diagnosis& diagnosis, double lossScale) {
    const DiagnosisRows rows = RowsOf(diagnosis, lossScale, setup_);
    for (const DiagnosisRow& row : rows.Figures) Cells(row.Name, row.Cells);
    for (const DiagnosisTable& table : rows.Tables) {
      Cells(table.Name, table.Columns);
      for (const DiagnosisRow& row : table.Rows) Cells(row.Name, row.Cells);
    }
  }

  // What stands behind the solved models, of which the last has that rank.
  void OfAll(std::size_t rank, const std::vector<const ModelClass*>& unsolved) {
    for (const ModelClass* model : unsolved) {
      if (++rank > diagnoses_.Models.size()) break;
      Cells("Unsolved_model", {model->cfgID.empty() ? model->id : model->cfgID});
      Judge(diagnoses_.Models[rank - 1], 0);
    }
    for (const std::string& warning : diagnoses_.Warnings) Cells("Warning", {warning});
  }

  void Cells(const std::string& name, const std::vector<std::string>& cells) {
    std::string row = Quoted(name);
    for (const std::string& cell : cells) row += setup_.OutputDelimit + Quoted(cell);
    line_.Take(row);
  }

  std::string Quoted(const std::string& text) const {
    if (text.find(setup_.OutputDelimit) == std::string::npos && text.find('"') == std::string::npos) return text;
    std::string quoted = "\"";
    for (const char c : text) quoted.append(c == '"' ? 2 : 1, c);
    return quoted += '"';
  }

  void Tables(ModelClass& model) {
    const FittedRows rows = TabulateFit(model, data_, setup_, line_.Pulse);
    if (const std::vector<std::string> columns = TableColumns(setup_); !columns.empty()) {
      Row(columns);
      for (std::size_t i = 0; i < rows.Error.size(); ++i) line_.Take(TableRow(rows, i, setup_));
    }
    if (setup_.TableMinMaxError) {
      Row({"Min_Residual", "Max_Residual"});
      if (!rows.Error.empty()) {
        const auto [smallest, largest] = std::minmax_element(rows.Error.begin(), rows.Error.end());
        Row({GeneralNumber(*smallest), GeneralNumber(*largest)});
      }
    }
  }

  const LineSink& line_;
  const SolveData& data_;
  const MacroSetup& setup_;
  const RunDiagnoses& diagnoses_;
};

}  // namespace

void WriteDelimitedOutput(const ModelCollection& models, const SolveData& data, const MacroSetup& setup,
                          const RunDiagnoses& diagnoses, const LineSink& line) {
  Writer(line, data, setup, diagnoses).Write(RankModels(models, setup.SortKey), UnsolvedModels(models));
}

}  // namespace quorvex
