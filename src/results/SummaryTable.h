#pragma once

#include <array>
#include <string>
#include <vector>

#include "core/LocaleText.h"
#include "engine/ModelCollection.h"
#include "results/FitInformation.h"
#include "results/TextTable.h"

namespace quorvex {

// The solved models of a project on one page, the best by the sort index first: rank, name and goodness of fit.
// Interpolations have none and are left out. The patterns write the columns that are not of residuals and those that
// are; what cannot be computed stays empty. Numbers are in the locale's form. Sorted by AICc, BIC or CV, the table also
// tells, behind the names, how each model stands among the others (diagnosis/Ranking.h).
class SummaryTable : public TextTable {
 public:
  SummaryTable(const ModelCollection& models, int sortIndex, const LocaleText& locale, const NumberPatterns& patterns);

  std::size_t RowCount() const override { return rows_.size(); }
  std::size_t ColumnCount() const override { return hasRanking_ ? kColumns : kDesignedColumns; }
  std::string Cell(std::size_t row, std::size_t column) const override { return rows_[row][column]; }
  char DecimalSeparator() const override { return decimalSeparator_; }
  std::string ColumnHeading(std::size_t column) const override;
  bool HasTexts(std::size_t column) const override { return column <= 1; }
  std::string Widest(std::size_t /*column*/) const override { return {}; }  // there are some hundred rows at most

 private:
  static constexpr std::size_t kDesignedColumns = 8, kColumns = 15;
  bool hasRanking_;
  std::vector<std::array<std::string, kColumns>> rows_;
  char decimalSeparator_;
};

}  // namespace quorvex
