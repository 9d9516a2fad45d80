#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "core/LocaleText.h"
#include "core/Result.h"
#include "core/Settings.h"
#include "plot/PlotClass.h"
#include "results/FitInformation.h"
#include "results/TextTable.h"
#include "solve/SolveSeries.h"

namespace quorvex {

// The answers of a series, a row for each fit: number and heading of the column, model, rank, status, the coefficients
// with their standard errors, goodness of fit and the number of points. What a model doesn't have stays empty. Numbers
// are in the locale's form.
class SeriesAnswersTable : public TextTable {
 public:
  SeriesAnswersTable(std::shared_ptr<const SeriesAnswers> answers, const LocaleText& locale,
                     const NumberPatterns& patterns);

  // Sorts the rows by a column: headings by their numbers where they are numbers, before those that are texts. Rows
  // that have nothing there are last, equal ones in the order of the series.
  void Sort(std::size_t column, bool descending);

  std::size_t RowCount() const override { return order_.size(); }
  std::size_t ColumnCount() const override { return columns_.size(); }
  std::string Cell(std::size_t row, std::size_t column) const override;
  char DecimalSeparator() const override { return locale_.DecimalSeparator; }
  std::string ColumnHeading(std::size_t column) const override { return columns_[column].Heading; }
  bool HasTexts(std::size_t column) const override { return columns_[column].Text != nullptr; }
  std::string Widest(std::size_t) const override { return {}; }

 private:
  // Either of the two.
  struct Column {
    std::string Heading;
    std::string (*Text)(const SeriesFit& fit, const SeriesAnswers& answers);
    double (*Number)(const SeriesFit& fit, const std::string& coefficient);
    std::string Coefficient = {};
    bool IsCount = false;
  };

  std::shared_ptr<const SeriesAnswers> answers_;
  LocaleText locale_;
  NumberPatterns patterns_;
  std::vector<Column> columns_;
  std::vector<std::size_t> order_;
};

// What a plot of a series can show: the coefficients, and behind them the goodness of fit.
std::vector<std::string> SeriesQuantities(const SeriesAnswers& answers);

enum class SeriesAxis { Number, Heading };

// One of the SeriesQuantities over the number of the column, or over its heading where that is a number; a series of
// points for each model, those of coefficients with their standard errors as error bars. Fails with a sentence where no
// model has two points.
Result<PlotClass> SeriesPlot(const SeriesAnswers& answers, std::size_t quantity, SeriesAxis axis,
                             const Settings& settings, const LocaleText& locale = {});

}  // namespace quorvex
