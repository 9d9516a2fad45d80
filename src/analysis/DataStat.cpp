#include "analysis/DataStat.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <span>

#include "core/NumericFault.h"
#include "core/SaveFile.h"
#include "sheet/CellEntry.h"
#include "sheet/ColumnMean.h"
#include "sheet/ColumnNames.h"
#include "sheet/ComputedCells.h"

namespace quorvex {
namespace {

double SumOfProducts(std::span<const DoubleDouble> a, std::span<const DoubleDouble> b) {
  DoubleDouble sum{0, 0};
  for (std::size_t i = 0; i < a.size(); ++i) sum = sum + a[i] * b[i];
  return sum.Hi;
}

// Numbers by their mean and what they deviate from it, exact but for some 100 bits.
struct Centred {
  explicit Centred(std::span<const double> values) : Mean(ColumnMean(values)) {
    Deviations.reserve(values.size());
    for (const double value : values) Deviations.push_back(DoubleDouble{value, 0} + DoubleDouble{-Mean.Hi, -Mean.Lo});
    SumOfSquares = SumOfProducts(Deviations, Deviations);
  }

  DoubleDouble Mean;
  std::vector<DoubleDouble> Deviations;
  double SumOfSquares;
};

// A column as the sums take it.
struct ScaledColumn {
  explicit ScaledColumn(std::span<const double> cells)
      : Exponent(ScaleExponent(cells)), Cells(Scaled(cells, Exponent)), All(Numbers(Cells)) {}

  int Exponent;               // Cells are those of the sheet times 2^-Exponent, so that squares stay in range
  std::vector<double> Cells;  // NaN where there is no number
  Centred All;

 private:
  static int ScaleExponent(std::span<const double> cells) {
    double largest = 0;
    for (const double cell : cells) largest = std::fmax(largest, std::abs(cell));  // fmax passes over NaN
    return largest == 0 ? 0 : std::ilogb(largest);
  }

  static std::vector<double> Scaled(std::span<const double> cells, int exponent) {
    std::vector<double> scaled;
    scaled.reserve(cells.size());
    for (const double cell : cells) scaled.push_back(std::scalbn(cell, -exponent));
    return scaled;
  }

  static std::vector<double> Numbers(std::span<const double> cells) {
    std::vector<double> numbers;
    std::copy_if(cells.begin(), cells.end(), std::back_inserter(numbers),
                 [](double cell) { return !std::isnan(cell); });
    if (numbers.size() < 2) throw NumericFault();
    return numbers;
  }
};

ColumnStatistics StatisticsOf(std::string variable, std::span<const double> cells, const ScaledColumn& scaled) {
  ColumnStatistics column;
  column.Variable = std::move(variable);
  column.Points = scaled.All.Deviations.size();
  column.Missing = cells.size() - column.Points;
  column.Maximum = -std::numeric_limits<double>::infinity();
  column.Minimum = std::numeric_limits<double>::infinity();
  for (const double cell : cells) {
    column.Maximum = std::fmax(column.Maximum, cell);
    column.Minimum = std::fmin(column.Minimum, cell);
  }
  column.Range = column.Maximum - column.Minimum;
  if (!std::isfinite(column.Range)) throw NumericFault();
  column.Average = std::scalbn(scaled.All.Mean.Hi, scaled.Exponent);
  const double variance = scaled.All.SumOfSquares / static_cast<double>(column.Points - 1);
  column.StandardDeviation = std::scalbn(std::sqrt(variance), scaled.Exponent);
  return column;
}

double Pearson(const Centred& x, const Centred& y) {
  if (x.SumOfSquares == 0 || y.SumOfSquares == 0) throw NumericFault();
  const double r = SumOfProducts(x.Deviations, y.Deviations) / std::sqrt(x.SumOfSquares * y.SumOfSquares);
  return std::clamp(r, -1.0, 1.0);  // rounding may leave a perfect correlation a digit beyond 1
}

// Pearson's coefficient over the rows in which both columns have numbers.
double PairCorrelation(const ScaledColumn& x, const ScaledColumn& y) {
  std::vector<double> xShared, yShared;
  for (std::size_t row = 0; row < x.Cells.size(); ++row) {
    if (std::isnan(x.Cells[row]) || std::isnan(y.Cells[row])) continue;
    xShared.push_back(x.Cells[row]);
    yShared.push_back(y.Cells[row]);
  }
  if (xShared.empty()) throw NumericFault();
  const bool sameRows = xShared.size() == x.All.Deviations.size() && xShared.size() == y.All.Deviations.size();
  // Columns that have numbers in the same rows share the sums that were made of each.
  return sameRows ? Pearson(x.All, y.All) : Pearson(Centred(xShared), Centred(yShared));
}

}  // namespace

Result<DataStat> GetDataStat(const DataSheet& sheet) {
  const std::size_t count = sheet.IndependentVariables + 1;  // standard deviations of Y are no variable
  DataStat statistics;
  std::vector<ScaledColumn> columns;
  try {
    const std::size_t lastRow = sheet.Cells.GridLastRow();
    for (std::size_t i = 0; i < count; ++i) {
      const std::vector<double> cells = CopyColumn(sheet.Cells, i + 1, 1, lastRow);
      columns.emplace_back(cells);
      statistics.Columns.push_back(StatisticsOf(ColumnName(sheet, i + 1), cells, columns.back()));
    }
    statistics.Correlation.assign(count, std::vector<double>(count));
    for (std::size_t i = 0; i < count; ++i)
      for (std::size_t j = 0; j <= i; ++j)
        statistics.Correlation[i][j] = statistics.Correlation[j][i] = PairCorrelation(columns[i], columns[j]);
  } catch (const NumericFault&) {
    return Failure{"An error occurred while calculating the data statistics."};
  }
  return statistics;
}

std::optional<DataStat> ShowDataStat(const DataSheet& sheet, Prompter& user) {
  if (sheet.Cells.GridLastRow() < 2) {
    user.Refuse("You need at least 2 points to calculate statistics.");
    return std::nullopt;
  }
  Result<DataStat> statistics = GetDataStat(sheet);
  if (statistics) return std::move(*statistics);
  user.Refuse(statistics.error());
  return std::nullopt;
}

std::vector<std::vector<std::string>> StatisticsRows(const DataStat& statistics, const LocaleText& locale,
                                                     const std::string& NumberFormat) {
  const auto number = [&](double value) { return ShownNumber(value, NumberFormat, locale); };
  std::vector<std::vector<std::string>> rows = {{"Variable", "Number of Points", "Missing Points", "Maximum Value",
                                                 "Minimum Value", "Range", "Average", "Standard Deviation"}};
  for (const ColumnStatistics& column : statistics.Columns)
    rows.push_back({column.Variable, std::to_string(column.Points), std::to_string(column.Missing),
                    number(column.Maximum), number(column.Minimum), number(column.Range), number(column.Average),
                    number(column.StandardDeviation)});
  return rows;
}

std::vector<std::vector<std::string>> CorrelationRows(const DataStat& statistics, const LocaleText& locale,
                                                      const std::string& NumberFormat) {
  std::vector<std::vector<std::string>> rows(1, {""});
  for (std::size_t i = 0; i < statistics.Columns.size(); ++i) {
    rows[0].push_back(statistics.Columns[i].Variable);
    rows.push_back({statistics.Columns[i].Variable});
    for (const double r : statistics.Correlation[i]) rows.back().push_back(ShownNumber(r, NumberFormat, locale));
  }
  return rows;
}

std::string TableText(const std::vector<std::vector<std::string>>& rows) {
  std::string text;
  for (const auto& row : rows) {
    for (std::size_t i = 0; i < row.size(); ++i) {
      if (i > 0) text += '\t';
      text += row[i];
    }
    text += NL;
  }
  return text;
}

bool ExportTable(const std::vector<std::vector<std::string>>& rows, Prompter& user) {
  const auto name = user.ChooseFileToSave("Data Statistics", "Text files (*.txt)", "txt");
  if (!name) return false;
  const int error = SaveFile(*name, TableText(rows), FileCare::Answer);
  if (error != 0) user.Refuse("Error exporting the data statistics to '" + *name + "'. " + FileErrorText(error));
  return error == 0;
}

}  // namespace quorvex
