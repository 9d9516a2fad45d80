#include "batch/WriteDelimitedOutput.h"

#include <algorithm>

#include "batch/ModelReport.h"
#include "core/NumberText.h"

namespace quorvex {
namespace {

class Writer {
 public:
  Writer(TextFile& file, const SolveData& data, const MacroSetup& setup) : file_(file), data_(data), setup_(setup) {}

  void Write(const std::vector<ModelClass*>& ranked) {
    for (const std::string& line : HeaderLines(setup_)) file_.WriteLine(line);
    file_.WriteLine("");
    if (!setup_.Comment.empty()) {
      file_.WriteLine(Trim(setup_.Comment));
      file_.WriteLine("");
    }
    if (setup_.TableDataFile) InputData();
    int rank = 0;
    for (ModelClass* model : ranked) Model(*model, ++rank);
  }

 private:
  void Row(const std::vector<std::string>& cells) {
    std::string row;
    for (const std::string& cell : cells) {
      if (!row.empty()) row += setup_.OutputDelimit;
      row += cell;
    }
    file_.WriteLine(row);
  }

  void InputData() {
    Row({"DataPoints", std::to_string(data_.N())});
    std::string heading;
    for (std::size_t v = 1; v <= data_.X.size(); ++v)
      heading += (data_.X.size() == 1 ? "X" : "X" + std::to_string(v)) + setup_.OutputDelimit;
    heading += "Y";
    if (setup_.Weighted) heading += setup_.OutputDelimit + "StDev";
    file_.WriteLine(heading);
    for (std::size_t i = 0; i < data_.N(); ++i) file_.WriteLine(InputRow(data_, i, setup_));
    file_.WriteLine("");
  }

  void Model(ModelClass& model, int rank) {
    Row({"Rank(sorted_by_" + std::string(kSortKeys[static_cast<std::size_t>(setup_.SortKey - 1)]) + ")",
         std::to_string(rank)});
    Row({"Model_ID", model.cfgID.empty() ? model.id : model.cfgID});
    for (int n = 1; n < model.FunctionCount(); ++n)
      if (!model.FunctionList(n).empty()) Row({"F" + std::to_string(n), model.FunctionList(n)});
    Row({"Y", model.FunctionList(0)});
    file_.WriteLine("");
    Row({"Variable", "Value", "StdErr", "68%", "90%", "95%", "99%"});
    const std::vector<std::string> rows = CoefficientRows(model, setup_);
    for (int i = 1; i <= model.NumDependentVar(); ++i) Row({model.Variables(i), rows[static_cast<std::size_t>(i - 1)]});
    if (setup_.OutputFitInfo)
      for (const auto& [name, value] : FitStatistics(model, data_.N(), setup_)) Row({name, value});
    Tables(model);
  }

  void Tables(ModelClass& model) {
    const FittedRows rows = TabulateFit(model, data_, setup_);
    if (const std::vector<std::string> columns = TableColumns(setup_); !columns.empty()) {
      Row(columns);
      for (std::size_t i = 0; i < rows.Error.size(); ++i) file_.WriteLine(TableRow(rows, i, setup_));
    }
    if (setup_.TableMinMaxError) {
      Row({"Min_Residual", "Max_Residual"});
      if (!rows.Error.empty()) {
        const auto [smallest, largest] = std::minmax_element(rows.Error.begin(), rows.Error.end());
        Row({GeneralNumber(*smallest), GeneralNumber(*largest)});
      }
    }
  }

  TextFile& file_;
  const SolveData& data_;
  const MacroSetup& setup_;
};

}  // namespace

void WriteDelimitedOutput(const ModelCollection& models, const SolveData& data, const MacroSetup& setup,
                          TextFile& file) {
  Writer(file, data, setup).Write(RankModels(models, setup.SortKey));
}

}  // namespace quorvex
