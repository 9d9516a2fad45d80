#pragma once

#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "core/LocaleText.h"
#include "results/FitInformation.h"
#include "results/TextTable.h"

namespace quorvex {

// The numbers of an exported table, computed once. Columns of residuals are made of two others when they are looked at.
struct TableValues {
  // In place of a number: an equation has none there, or as many as there are roots have been told.
  static constexpr double kError = std::numeric_limits<double>::quiet_NaN();
  static constexpr double kNothing = std::numeric_limits<double>::infinity();

  enum class Kind { Number, Residual, AbsResidual, Extreme };
  struct Column {
    std::string Heading;
    Kind What = Kind::Number;
    std::size_t Source = 0;  // of Numbers
  };

  std::vector<std::vector<double>> Numbers;  // all of one length
  std::size_t Y = 0;                         // which of them are measured, where there are residuals
  std::vector<Column> Columns;
  std::size_t Rows = 0;
};

// The table of values that equations have over chosen inputs, and below it a row that says "END". What has no value
// says "ERROR". Numbers are in the locale's form. Copies share the numbers, so that one can be written to a file while
// another is looked at.
class ExportTable : public TextTable {
 public:
  ExportTable(std::shared_ptr<const TableValues> values, const LocaleText& locale)
      : values_(std::move(values)), locale_(locale) {}

  const NumberPatterns& Patterns() const { return patterns_; }
  void SetPatterns(const NumberPatterns& patterns) { patterns_ = patterns; }

  // The row of "END" included.
  std::size_t RowCount() const override { return values_->Rows + 1; }
  std::size_t ColumnCount() const override { return values_->Columns.size(); }
  std::string Cell(std::size_t row, std::size_t column) const override;
  char DecimalSeparator() const override { return locale_.DecimalSeparator; }
  std::string ColumnHeading(std::size_t column) const override { return values_->Columns[column].Heading; }

 private:
  std::shared_ptr<const TableValues> values_;
  LocaleText locale_;
  NumberPatterns patterns_{.Residuals = "General"};
};

}  // namespace quorvex
