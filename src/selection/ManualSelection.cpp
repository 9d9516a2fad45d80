#include "selection/ManualSelection.h"

#include <utility>

#include "selection/ExportSelection.h"

namespace quorvex {
namespace {

// Rows of one calculation beside those of its coefficients: head, variance, headings, and what parts it from the last.
constexpr std::size_t kRowsBesideCoefficients = 12;

}  // namespace

ManualSelection::ManualSelection(SelectionData data, bool intercept, const LocaleText& locale)
    : data_(std::move(data)),
      locale_(locale),
      solver_(data_, intercept, SelectionForm()),
      report_(locale.DecimalSeparator) {}

bool ManualSelection::Calculate(const Subset& variables, const std::tm& moment, Prompter& user) {
  const auto refuse = [&](const std::string& text) {
    user.Refuse(text);
    return false;
  };
  if (variables.empty()) return refuse("Please select the variables you want to include.");
  const std::size_t terms = solver_.Terms(variables.size());
  if (terms >= data_.N())
    return refuse("You do not have enough data points for the selected number of independent variables.");
  Result<SubsetFit> fit = solver_.Fit(variables);
  if (!fit) return refuse(fit.error());
  if (report_.RowCount() + kRowsBesideCoefficients + terms > kMostReportRows) {
    if (!user.Ask("Maximum number of rows encountered in the table. Clear table and continue?")) return false;
    calculations_.clear();
    report_ = Report(locale_.DecimalSeparator);
  }
  model_ = *fit;
  calculations_.push_back({std::move(*fit), moment});
  Append(report_, calculations_.back(), format_);
  return true;
}

void ManualSelection::Append(Report& report, const Calculation& calculation, const SelectionFormat& format) const {
  if (report.RowCount() > 0) report.Add(RowKind::Line, {""});
  AddReportHead(report, SelectionProcedure::Manual, calculation.Moment);
  AddStep(report, {"", calculation.Fit}, data_, locale_, format);
}

Report ManualSelection::TableBy(const SelectionFormat& format) const {
  Report report(locale_.DecimalSeparator);
  for (const Calculation& calculation : calculations_) Append(report, calculation, format);
  return report;
}

void ManualSelection::SetFormat(const SelectionFormat& format) {
  format_ = format;
  report_ = TableBy(format);
}

Report ManualSelection::ShownTable() const { return TableBy(ForWindow(format_)); }

bool ManualSelection::Export(Prompter& user) const {
  if (model_) return ExportSelection(*model_, data_, locale_, user);
  user.Refuse("Please select the variables you want to include and perform a calculation before saving.");
  return false;
}

}  // namespace quorvex
