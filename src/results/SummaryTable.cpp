#include "results/SummaryTable.h"

#include <cmath>

#include "engine/RankModels.h"

namespace quorvex {

SummaryTable::SummaryTable(const ModelCollection& models, int sortIndex, const LocaleText& locale,
                           const NumberPatterns& patterns)
    : decimalSeparator_(locale.DecimalSeparator) {
  const auto text = [&](double value, const std::string& pattern) {
    return std::isfinite(value) ? patterns.Text(value, pattern, locale) : std::string();
  };
  for (const ModelClass* model : RankModels(models, sortIndex))
    rows_.push_back({std::to_string(rows_.size() + 1), model->id, text(model->StdErr, patterns.Values),
                     text(model->ResSum, patterns.Residuals), text(model->ResAvg, patterns.Residuals),
                     text(model->RSS, patterns.Values), text(model->R2, patterns.Values),
                     text(model->R2Adjust, patterns.Values)});
}

std::string SummaryTable::ColumnHeading(std::size_t column) const {
  constexpr std::array<const char*, kColumns> kHeadings = {"Rank",          "Model", "StdError", "Residual Sum",
                                                           "Residual Avg.", "RSS",   "R^2",      "Ra^2"};
  return kHeadings[column];
}

}  // namespace quorvex
