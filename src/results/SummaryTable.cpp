#include "results/SummaryTable.h"

#include <cmath>

#include "diagnosis/Ranking.h"
#include "engine/RankModels.h"
#include "solve/SolvedList.h"

namespace quorvex {

SummaryTable::SummaryTable(const ModelCollection& models, int sortIndex, const LocaleText& locale,
                           const NumberPatterns& patterns)
    : columns_(IsRankingKey(sortIndex) ? kColumns : kDesignedColumns), decimalSeparator_(locale.DecimalSeparator) {
  const auto text = [&](double value, const std::string& pattern) {
    return std::isfinite(value) ? patterns.Text(value, pattern, locale) : std::string();
  };
  const std::vector<ModelClass*> ranked = RankModels(models, sortIndex);
  for (const ModelClass* model : ranked)
    rows_.push_back({std::to_string(rows_.size() + 1), model->id, text(model->StdErr, patterns.Values),
                     text(model->ResSum, patterns.Residuals), text(model->ResAvg, patterns.Residuals),
                     text(model->RSS, patterns.Values), text(model->R2, patterns.Values),
                     text(model->R2Adjust, patterns.Values)});
  if (columns_ == kDesignedColumns) return;
  // Minus infinity is that of an exact fit.
  const auto criterion = [&](double value) {
    return std::isinf(value) ? std::string(kExactText) : text(value, patterns.Values);
  };
  const auto number = [](int value) { return value > 0 ? std::to_string(value) : std::string(); };
  const std::vector<Ranking> rankings = RankingOf(ranked);
  for (std::size_t i = 0; i < rankings.size(); ++i) {
    const Ranking& r = rankings[i];
    const double error = std::isnan(r.CrossValidated) ? r.LeaveOneOut : r.CrossValidated;
    std::size_t column = kDesignedColumns;
    for (std::string cell :
         {criterion(r.AICc), text(r.DeltaAICc, patterns.Values), text(r.AkaikeWeight, patterns.Values),
          criterion(r.BIC), text(error, patterns.Values), number(r.Group), number(r.SameAs)})
      rows_[i][column++] = std::move(cell);
  }
}

std::string SummaryTable::ColumnHeading(std::size_t column) const {
  constexpr std::array<const char*, kColumns> kHeadings = {
      "Rank", "Model",      "StdError",      "Residual Sum", "Residual Avg.", "RSS",   "R^2",    "Ra^2",
      "AICc", "Delta AICc", "Akaike Weight", "BIC",          "CV Error",      "Group", "Same As"};
  return kHeadings[column];
}

}  // namespace quorvex
