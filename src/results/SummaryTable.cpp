#include "results/SummaryTable.h"

#include <algorithm>
#include <cmath>

#include "diagnosis/Ranking.h"
#include "engine/RankModels.h"
#include "solve/SolvedList.h"

namespace quorvex {

SummaryTable::SummaryTable(const ModelCollection& models, int sortIndex, const LocaleText& locale,
                           const NumberPatterns& patterns)
    : hasRanking_(IsRankingKey(sortIndex)), decimalSeparator_(locale.DecimalSeparator) {
  const auto text = [&](double value, const std::string& pattern) {
    return std::isfinite(value) ? patterns.Text(value, pattern, locale) : std::string();
  };
  // Minus infinity is that of an exact fit.
  const auto criterion = [&](double value) { return std::isinf(value) ? kExactText : text(value, patterns.Values); };
  const auto number = [](int value) { return value > 0 ? std::to_string(value) : std::string(); };
  const std::vector<ModelClass*> ranked = RankModels(models, sortIndex);
  const std::vector<Ranking> rankings = hasRanking_ ? RankingOf(ranked) : std::vector<Ranking>();
  for (std::size_t i = 0; i < ranked.size(); ++i) {
    const ModelClass& model = *ranked[i];
    std::vector<std::string> cells = {std::to_string(i + 1), model.id};
    if (hasRanking_) {
      const Ranking& r = rankings[i];
      const double error = std::isnan(r.CrossValidated) ? r.LeaveOneOut : r.CrossValidated;
      cells.insert(cells.end(),
                   {criterion(r.AICc), text(r.DeltaAICc, patterns.Values), text(r.AkaikeWeight, patterns.Values),
                    criterion(r.BIC), text(error, patterns.Values), number(r.Group), number(r.SameAs)});
    }
    cells.insert(cells.end(), {text(model.StdErr, patterns.Values), text(model.ResSum, patterns.Residuals),
                               text(model.ResAvg, patterns.Residuals), text(model.RSS, patterns.Values),
                               text(model.R2, patterns.Values), text(model.R2Adjust, patterns.Values)});
    std::ranges::move(cells, rows_.emplace_back().begin());
  }
}

std::string SummaryTable::ColumnHeading(std::size_t column) const {
  constexpr std::array<const char*, kColumns> kHeadings = {
      "Rank",    "Model",    "AICc",         "Delta AICc",    "Akaike Weight", "BIC", "CV Error", "Group",
      "Same As", "StdError", "Residual Sum", "Residual Avg.", "RSS",           "R^2", "Ra^2"};
  return kHeadings[hasRanking_ || column < 2 ? column : column + kColumns - kDesignedColumns];
}

}  // namespace quorvex
