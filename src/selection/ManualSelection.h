#pragma once

#include <ctime>
#include <optional>

#include "core/Prompter.h"
#include "selection/SelectionReport.h"
#include "selection/SubsetSolver.h"

namespace quorvex {

// The manual procedure: the user marks variables, and each calculation appends its model to a report.
class ManualSelection {
 public:
  ManualSelection(SelectionData data, bool intercept, const LocaleText& locale);

  const SelectionData& Data() const { return data_; }
  const Report& Table() const { return report_; }
  const std::optional<SubsetFit>& Model() const { return model_; }  // of the last calculation

  // Fits the variables and appends to the report. False where it stays as it was, which the user is told.
  bool Calculate(const Subset& variables, const std::tm& moment, Prompter& user);
  // Writes the whole report by other patterns.
  void SetFormat(const SelectionFormat& format);
  // The report for a window.
  Report ShownTable() const;
  const SelectionFormat& Format() const { return format_; }
  bool Export(Prompter& user) const;

 private:
  struct Calculation {
    SubsetFit Fit;
    std::tm Moment;
  };
  void Append(Report& report, const Calculation& calculation, const SelectionFormat& format) const;
  Report TableBy(const SelectionFormat& format) const;

  const SelectionData data_;
  const LocaleText locale_;
  const SubsetSolver solver_;
  SelectionFormat format_;
  std::vector<Calculation> calculations_;  // in the report
  std::optional<SubsetFit> model_;
  Report report_;
};

}  // namespace quorvex
