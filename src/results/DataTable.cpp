#include "results/DataTable.h"

#include <array>
#include <cmath>
#include <limits>

#include "core/SerialDate.h"
#include "results/PlotPoints.h"
#include "sheet/ColumnNames.h"

namespace quorvex {

DataTable::DataTable(const SolvedItem& solution, const GatheredData& data, const DataSheet& sheet,
                     const LocaleText& locale, NumberPatterns patterns, const LimitsChoice& limits)
    : data_(data), locale_(locale), patterns_(std::move(patterns)), headings_{"Row"} {
  const std::vector<std::string> names = ColumnNames(sheet.Headers);
  headings_.insert(headings_.end(), names.begin(),
                   names.begin() + static_cast<std::ptrdiff_t>(sheet.IndependentVariables) + 1);
  headings_.insert(headings_.end(), {"Calc Y", "Residual", "Abs Residual"});
  if (IsWeighted(data.Points)) headings_.push_back(ColumnTitle(sheet, sheet.IndependentVariables + 2, "SD"));
  for (std::size_t col = 0; col <= sheet.IndependentVariables; ++col) {
    const std::string& pattern = sheet.Formats[col].NumberFormat;
    dates_.push_back(IsDatePattern(pattern) ? pattern : "");
  }
  LimitColumns columns = LimitsAtPoints(solution, data.Points, limits);
  headings_.insert(headings_.end(), columns.Headings.begin(), columns.Headings.end());
  limits_ = std::move(columns.Values);
  std::array<double, kMostIndependentVariables> x;
  for (std::size_t i = 0; i < data.Points.N(); ++i) {
    double y = 0;
    const bool ok = solution.Evaluate(data.Points.Point(i, x), y);
    calculated_.push_back(ok ? y : std::numeric_limits<double>::quiet_NaN());
  }
}

std::string DataTable::Cell(std::size_t row, std::size_t column) const {
  const SolveData& points = data_.Points;
  const auto text = [&](double value, const std::string& pattern) -> std::string {
    return std::isnan(value) ? "ERROR" : patterns_.Text(value, pattern, locale_);
  };
  const auto measured = [&](double value, const std::string& datePattern) {
    if (datePattern.empty()) return text(value, patterns_.Values);
    if (patterns_.Digits != NumberPatterns::kAllDigits) return text(value, datePattern);
    const std::string date = DateEntry(value, datePattern, kIsoDates);
    return date.empty() ? text(value, patterns_.Values) : date;
  };
  if (column == 0) return std::to_string(points.Row[row]);
  if (column <= points.X.size()) return measured(points.X[column - 1][row], dates_[column - 1]);
  const double residual = points.Y[row] - calculated_[row];
  switch (column - points.X.size()) {
    case 1:
      return measured(points.Y[row], dates_.back());
    case 2:
      return text(calculated_[row], patterns_.Values);
    case 3:
      return text(residual, patterns_.Residuals);
    case 4:
      return text(std::abs(residual), patterns_.Residuals);
    default:
      break;
  }
  const std::size_t behind = headings_.size() - column;  // 1 for the last column
  if (behind > limits_.size()) return text(points.SD[row], patterns_.Values);
  const double limit = limits_[limits_.size() - behind][row];
  return std::isnan(limit) ? "" : text(limit, patterns_.Values);
}

}  // namespace quorvex
