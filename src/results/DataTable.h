#pragma once

#include <string>
#include <vector>

#include "core/LocaleText.h"
#include "results/FitInformation.h"
#include "results/FitLimits.h"
#include "results/TextTable.h"
#include "solve/GatherData.h"
#include "solve/SolvedList.h"

namespace quorvex {

// The Data Table of a solution: for each point its row in the sheet, X, Y, the calculated value, the residual (Y minus
// that) and its magnitude, in the unit of Y, and of weighted data the standard deviation. Where the solution has no
// value the last three say "ERROR". Numbers are in the locale's form; X and Y whose columns show dates are dates, in
// ISO form where all digits are shown. Behind these stand the limits that are asked for, lower and upper, whose cells
// are empty where there are none. The points outlive the table.
class DataTable : public TextTable {
 public:
  DataTable(const SolvedItem& solution, const GatheredData& data, const DataSheet& sheet, const LocaleText& locale,
            NumberPatterns patterns = {}, const LimitsChoice& limits = {});

  void SetPatterns(const NumberPatterns& patterns) { patterns_ = patterns; }

  std::size_t RowCount() const override { return data_.Points.N(); }
  std::size_t ColumnCount() const override { return headings_.size(); }
  std::string Cell(std::size_t row, std::size_t column) const override;
  char DecimalSeparator() const override { return locale_.DecimalSeparator; }
  std::string ColumnHeading(std::size_t column) const override { return headings_[column]; }
  std::string Widest(std::size_t column) const override {
    const bool few = column > 0 && patterns_.Digits == NumberPatterns::kWindowDigits;
    return few ? "-1.234567E-300" : TextTable::Widest(column);
  }
  bool HasDates(std::size_t column) const override {
    return column > 0 && column <= dates_.size() && !dates_[column - 1].empty();
  }

 private:
  const GatheredData& data_;
  LocaleText locale_;
  NumberPatterns patterns_;
  std::vector<std::string> headings_, dates_;  // the date pattern of each X and of Y in the sheet, "" where it has none
  std::vector<double> calculated_;             // NaN where there is no value
  std::vector<std::vector<double>> limits_;    // a column each, NaN where there are none
};

}  // namespace quorvex
