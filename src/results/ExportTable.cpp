#include "results/ExportTable.h"

#include <cmath>

namespace quorvex {

std::string ExportTable::Cell(std::size_t row, std::size_t column) const {
  if (row == values_->Rows) return column == 0 ? "END" : "";
  using Kind = TableValues::Kind;
  const TableValues::Column& shown = values_->Columns[column];
  double value = values_->Numbers[shown.Source][row];
  if (value == TableValues::kNothing) return "";
  if (shown.What == Kind::Residual || shown.What == Kind::AbsResidual)
    value = values_->Numbers[values_->Y][row] - value;
  if (!std::isfinite(value)) return "ERROR";
  if (shown.What == Kind::AbsResidual) value = std::abs(value);
  const std::string& pattern = shown.What == Kind::Number ? patterns_.Values : patterns_.Residuals;
  return patterns_.Text(value, pattern, locale_);
}

}  // namespace quorvex
