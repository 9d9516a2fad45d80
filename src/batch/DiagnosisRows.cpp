#include "batch/DiagnosisRows.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "core/NumberText.h"
#include "diagnosis/ProfileRemarks.h"

namespace quorvex {
namespace {

std::string Number(double value) {
  if (std::isnan(value)) return "N/A";
  if (std::isinf(value)) return value < 0 ? "-Infinity" : "Infinity";
  return GeneralNumber(value);
}

std::string Count(int count) { return count > 0 ? std::to_string(count) : "N/A"; }

class Rows {
 public:
  Rows(const Diagnosis& diagnosis, double lossScale, const MacroSetup& setup)
      : diagnosis_(diagnosis), lossScale_(lossScale), setup_(setup) {}

  DiagnosisRows Make() {
    Judgement();
    if (diagnosis_.Judgement.Kind == VerdictKind::Failed) return std::move(rows_);
    Errors();
    Rank();
    States();
    Limits("LIMITS_SYMMETRIC", [](const auto& one) { return std::optional(one.Symmetric); });
    Limits("LIMITS_PROFILE", [](const auto& one) -> std::optional<LimitsByLevel> {
      if constexpr (requires { one.Profile; })
        return one.Profile;
      else
        return std::nullopt;
    });
    Remarks();
    Limits("LIMITS_BOOTSTRAP",
           [](const auto& one) { return one.Bootstrapped ? std::optional(one.Bootstrapped->Limits) : std::nullopt; });
    Spread();
    Correlations();
    Quantities();
    return std::move(rows_);
  }

 private:
  using Cells = std::vector<std::string>;

  void Figure(std::string name, std::string value) { rows_.Figures.push_back({std::move(name), {std::move(value)}}); }
  void Figure(std::string name, double value) { Figure(std::move(name), Number(value)); }

  void Judgement() {
    const Verdict& verdict = diagnosis_.Judgement;
    Figure("Verdict", VerdictWord(verdict.Kind));
    Figure("Search", verdict.Ended);
    for (std::size_t i = 0; i < verdict.Reasons.size(); ++i)
      Figure("Reason_" + std::to_string(i + 1), verdict.Reasons[i]);
    for (std::size_t i = 0; i < verdict.Notes.size(); ++i) Figure("Note_" + std::to_string(i + 1), verdict.Notes[i]);
  }

  void Errors() {
    Figure("Standard_deviations", diagnosis_.AbsoluteDeviations ? "Absolute" : "Relative");
    if (setup_.Weighted) {
      Figure("Reduced_chi-square", diagnosis_.ReducedChiSquare);
      Figure("Probability_of_chi-square", diagnosis_.ChiSquareProbability);
    }
    Figure("Loss", std::string(kLossNames[static_cast<std::size_t>(setup_.Loss)]));
    if (setup_.Loss != LossKind::Squares) {
      Figure("Loss_scale", lossScale_);
      Outliers();
    }
    Figure("Condition", diagnosis_.Condition);
  }

  void Outliers() {
    Figure("Outliers", std::to_string(diagnosis_.Outliers.size()));
    if (diagnosis_.Outliers.empty()) return;
    Cells rows;
    for (const std::size_t row : diagnosis_.Outliers) rows.push_back(std::to_string(row));
    rows_.Figures.push_back({"Outlier_rows", std::move(rows)});
  }

  void Rank() {
    const Ranking& rank = diagnosis_.Rank;
    Figure("AICc", rank.AICc);
    Figure("AICc_above_the_best", rank.DeltaAICc);
    Figure("Akaike_weight", rank.AkaikeWeight);
    Figure("BIC", rank.BIC);
    Figure("Group", Count(rank.Group));
    if (rank.SameAs > 0) Figure("Same_curve_as_rank", std::to_string(rank.SameAs));
    Figure("Leave-one-out_error", rank.LeaveOneOut);
    if (setup_.CrossValidation > 0) Figure("Cross-validated_error", rank.CrossValidated);
    if (setup_.Bootstrap > 0) Figure("Bootstrap_failures", std::to_string(diagnosis_.BootstrapFailures));
  }

  void Add(DiagnosisTable table) {
    if (!table.Rows.empty()) rows_.Tables.push_back(std::move(table));
  }

  void States() {
    DiagnosisTable table{"STATES", {"State"}, {}};
    for (const CoefficientDiagnosis& one : diagnosis_.Coefficients) table.Rows.push_back({one.Name, {StateWord(one)}});
    Add(std::move(table));
  }

  // A row for each coefficient and quantity that has limits of this kind.
  template <typename LimitsOf>
  void Limits(std::string name, const LimitsOf& limitsOf) {
    DiagnosisTable table{std::move(name), {}, {}};
    for (const int level : kLimitLevels)
      for (const char* end : {"% lower", "% upper"}) table.Columns.push_back(std::to_string(level) + end);
    const auto add = [&](const auto& one) {
      const std::optional<LimitsByLevel> limits = limitsOf(one);
      if (!limits) return;
      Cells cells;
      for (const Interval& interval : *limits)
        for (const double end : {interval.Lower, interval.Upper}) cells.push_back(Number(end));
      table.Rows.push_back({one.Name, std::move(cells)});
    };
    for (const CoefficientDiagnosis& one : diagnosis_.Coefficients)
      if (!one.IsHeld) add(one);
    for (const QuantityDiagnosis& one : diagnosis_.Quantities) add(one);
    Add(std::move(table));
  }

  // Of the profiles.
  void Remarks() {
    DiagnosisTable table{"REMARKS_PROFILE", {"Remark"}, {}};
    for (const CoefficientDiagnosis& one : diagnosis_.Coefficients)
      for (std::string& remark : ProfileRemarks(one)) table.Rows.push_back({one.Name, {std::move(remark)}});
    Add(std::move(table));
  }

  void Spread() {
    DiagnosisTable table{"BOOTSTRAP", {"Bias", "StdErr"}, {}};
    const auto add = [&table](const auto& one) {
      if (one.Bootstrapped)
        table.Rows.push_back({one.Name, {Number(one.Bootstrapped->Bias), Number(one.Bootstrapped->StdErr)}});
    };
    std::ranges::for_each(diagnosis_.Coefficients, add);
    std::ranges::for_each(diagnosis_.Quantities, add);
    Add(std::move(table));
  }

  void Correlations() {
    const std::vector<std::string>& names = diagnosis_.CorrelationNames;
    if (diagnosis_.Correlation.Order() != names.size()) return;
    DiagnosisTable table{"CORRELATIONS", names, {}};
    for (std::size_t i = 0; i < names.size(); ++i) {
      Cells cells;
      for (std::size_t j = 0; j < names.size(); ++j) cells.push_back(Number(diagnosis_.Correlation(i, j)));
      table.Rows.push_back({names[i], std::move(cells)});
    }
    Add(std::move(table));
  }

  void Quantities() {
    DiagnosisTable table{"QUANTITIES", {"Value", "StdErr", "Expression"}, {}};
    for (const QuantityDiagnosis& one : diagnosis_.Quantities)
      table.Rows.push_back({one.Name,
                            {Number(one.Value), Number(one.StdErr),
                             one.Fault.empty() ? one.Expression : one.Expression + ": " + one.Fault}});
    Add(std::move(table));
  }

  const Diagnosis& diagnosis_;
  const double lossScale_;
  const MacroSetup& setup_;
  DiagnosisRows rows_;
};

}  // namespace

std::vector<const ModelClass*> UnsolvedModels(const ModelCollection& models) {
  std::vector<const ModelClass*> unsolved;
  for (const auto& model : models)
    if (model->Solve && !model->Solved) unsolved.push_back(model.get());
  return unsolved;
}

DiagnosisRows RowsOf(const Diagnosis& diagnosis, double lossScale, const MacroSetup& setup) {
  return Rows(diagnosis, lossScale, setup).Make();
}

const char* VerdictWord(VerdictKind kind) {
  constexpr const char* kWords[] = {"Sound", "Doubtful", "Failed"};
  return kWords[static_cast<std::size_t>(kind)];
}

const char* StateWord(const CoefficientDiagnosis& coefficient) {
  return coefficient.IsHeld        ? "held"
         : coefficient.IsAtMinimum ? "at minimum"
         : coefficient.IsAtMaximum ? "at maximum"
                                   : "free";
}

}  // namespace quorvex
