#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "core/LocaleText.h"
#include "core/Prompter.h"
#include "core/Result.h"
#include "sheet/DataSheet.h"

namespace quorvex {

// What is said of one column, in the column's own unit.
struct ColumnStatistics {
  std::string Variable;     // its header
  std::size_t Points = 0;   // cells with a number
  std::size_t Missing = 0;  // the others, down to the last row of the sheet that is in use
  double Maximum = 0, Minimum = 0;
  double Range = 0;              // Maximum - Minimum
  double Average = 0;            // sum / Points
  double StandardDeviation = 0;  // sqrt(sum of (x - Average)^2 / (Points - 1))
};

// The Statistics command: a summary of every X and Y column, and how they are correlated.
struct DataStat {
  std::vector<ColumnStatistics> Columns;

  // Pearson's coefficient of each pair of columns, over the rows in which both have a number:
  //   r = sum (x - mean x)(y - mean y) / sqrt(sum (x - mean x)^2 * sum (y - mean y)^2)
  // Symmetric, 1 on the diagonal.
  std::vector<std::vector<double>> Correlation;
};

// Computes all of that, with sums of some 100 bits, so that results are good to the last digit or two however large the
// values are beside their deviations. Fails where a column has fewer than two numbers, where it is constant, alone or
// over the rows it shares with another, and where a range overflows.
Result<DataStat> GetDataStat(const DataSheet& sheet);

// The same as the command: refuses a sheet of fewer than two rows, and tells of a failure.
std::optional<DataStat> ShowDataStat(const DataSheet& sheet, Prompter& user);

// The cells of the window's two grids, headings in the first row, numbers by a pattern and in the user's locale.
std::vector<std::vector<std::string>> StatisticsRows(const DataStat& statistics, const LocaleText& locale,
                                                     const std::string& NumberFormat = "General");
std::vector<std::vector<std::string>> CorrelationRows(const DataStat& statistics, const LocaleText& locale,
                                                      const std::string& NumberFormat = "General");

// A grid as text: tabs between cells, NL behind each row.
std::string TableText(const std::vector<std::vector<std::string>>& rows);

// Writes that to a file that the user chooses. False where nothing was written, of which an error is told.
bool ExportTable(const std::vector<std::vector<std::string>>& rows, Prompter& user);

}  // namespace quorvex
