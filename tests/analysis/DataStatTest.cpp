#include <gtest/gtest.h>

#include "NistSets.h"
#include "RecordingPrompter.h"
#include "TemporaryFolder.h"
#include "analysis/DataStat.h"
#include "core/NumberText.h"
#include "sheet/SheetEdit.h"

namespace quorvex {
namespace {

// A file of tests/data as a sheet, "NA" as an empty cell.
DataSheet SheetOf(const std::string& name, std::size_t independentVariables) {
  DataSheet sheet(independentVariables, false);
  std::ifstream file(TestData(name));
  std::string line;
  std::getline(file, line);
  sheet.Headers = Split(line, ',');
  for (std::size_t row = 1; std::getline(file, line); ++row) {
    const std::vector<std::string> fields = Split(line, ',');
    for (std::size_t i = 0; i < fields.size(); ++i)
      if (const auto value = NumericText(fields[i])) sheet.Cells.SetGridCellNumber(row, i + 1, *value);
  }
  return sheet;
}

DataSheet SheetOf(const std::vector<double>& x, const std::vector<double>& y) {
  DataSheet sheet(1, false);
  for (std::size_t i = 0; i < x.size(); ++i) sheet.Cells.SetGridCellNumber(i + 1, 1, x[i]);
  for (std::size_t i = 0; i < y.size(); ++i) sheet.Cells.SetGridCellNumber(i + 1, 2, y[i]);
  return sheet;
}

// One digit in the last place is left to the order of the last roundings.
void ExpectClose(double value, double reference, const std::string& what) {
  EXPECT_NEAR(value, reference, 4e-16 * std::abs(reference)) << what;
}

TEST(DataStat, AgreesWithReferencesOnRealData) {
  std::map<std::string, std::vector<std::vector<std::string>>> files;
  for (const auto& row : TableRows("column_statistics.txt", 10)) files[row[0]].push_back(row);
  for (const auto& [file, rows] : files) {
    RecordingPrompter user;
    const std::optional<DataStat> statistics = ShowDataStat(SheetOf(file, rows.size() - 1), user);
    ASSERT_TRUE(statistics) << file << ": " << user.Last();
    ASSERT_EQ(statistics->Columns.size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const ColumnStatistics& column = statistics->Columns[i];
      const std::string where = file + " " + rows[i][1];
      EXPECT_EQ(column.Variable, rows[i][1]);
      const double counts[] = {static_cast<double>(column.Points), static_cast<double>(column.Missing), column.Maximum,
                               column.Minimum};
      for (std::size_t k = 0; k < 4; ++k) EXPECT_EQ(counts[k], Number(rows[i][2 + k])) << where;
      ExpectClose(column.Range, Number(rows[i][6]), where);
      ExpectClose(column.Average, Number(rows[i][7]), where);
      ExpectClose(column.StandardDeviation, Number(rows[i][8]), where);
      const std::vector<double> correlations = Numbers(rows[i][9]);
      ASSERT_EQ(correlations.size(), i);
      EXPECT_EQ(statistics->Correlation[i][i], 1) << where;
      for (std::size_t j = 0; j < i; ++j) {
        ExpectClose(statistics->Correlation[i][j], correlations[j], where);
        EXPECT_EQ(statistics->Correlation[j][i], statistics->Correlation[i][j]) << where;
      }
    }
  }
}

TEST(DataStat, KeepsItsDigitsWhereDeviationsAreSmall) {
  const struct {
    double First, Low, High;  // First once, then Low and High 500 times
    double Average, StandardDeviation;
  } cases[] = {{1.2, 1.1, 1.3, 1.2, 0.099999999999999977796},
               {1000000.2, 1000000.1, 1000000.3, 1000000.2, 0.10000000003492459655},
               {10000000.2, 10000000.1, 10000000.3, 10000000.2, 0.10000000055879354477}};
  for (const auto& c : cases) {
    std::vector<double> x{c.First};
    for (int i = 0; i < 500; ++i) x.insert(x.end(), {c.Low, c.High});
    const Result<DataStat> statistics = GetDataStat(SheetOf(x, x));
    ASSERT_TRUE(statistics);
    EXPECT_EQ(statistics->Columns[0].Average, c.Average);
    ExpectClose(statistics->Columns[0].StandardDeviation, c.StandardDeviation, std::to_string(c.First));
    EXPECT_EQ(statistics->Correlation[0][1], 1);
  }
  const Result<DataStat> first = GetDataStat(SheetOf({10000001, 10000003, 10000002}, {1, 2, 3}));
  ASSERT_TRUE(first);
  EXPECT_EQ(first->Columns[0].Average, 10000002);
  EXPECT_EQ(first->Columns[0].StandardDeviation, 1);
  EXPECT_EQ(first->Correlation[0][1], 0.5);

  // The mean of these is no double; as the nearest one it would give sqrt(2).
  const Result<DataStat> large = GetDataStat(SheetOf({1e16, 1e16 + 2, 1e16 + 2}, {1, 2, 3}));
  ASSERT_TRUE(large);
  ExpectClose(large->Columns[0].StandardDeviation, std::sqrt(4.0 / 3), "1e16");
}

// The sums of these give 1.0000000000000002 before it is cut off.
TEST(DataStat, KeepsCorrelationsWithinOne) {
  for (const double slope : {5, -5}) {
    const Result<DataStat> statistics = GetDataStat(SheetOf({0, 6, 17}, {0, 6 * slope, 17 * slope}));
    ASSERT_TRUE(statistics);
    EXPECT_EQ(statistics->Correlation[0][1], slope / 5);
  }
}

// By hand, whatever the unit: 1, 2, 4 and 3, 2, 2 deviate by sqrt(7/3) and sqrt(1/3), and correlate by -2/sqrt(7).
TEST(DataStat, DoesNotDependOnTheUnit) {
  for (const int exponent : {-1000, -600, 0, 600, 1000}) {
    const double unit = std::ldexp(1.0, exponent);
    const Result<DataStat> statistics =
        GetDataStat(SheetOf({unit, 2 * unit, 4 * unit}, {3 / unit, 2 / unit, 2 / unit}));
    ASSERT_TRUE(statistics) << exponent;
    ExpectClose(statistics->Columns[0].StandardDeviation / unit, std::sqrt(7.0 / 3), std::to_string(exponent));
    ExpectClose(statistics->Columns[1].StandardDeviation * unit, std::sqrt(1.0 / 3), std::to_string(exponent));
    ExpectClose(statistics->Correlation[0][1], -2 / std::sqrt(7.0), std::to_string(exponent));
  }
  const Result<DataStat> wide = GetDataStat(SheetOf({1e300, 1e-300}, {1, 2}));
  ASSERT_TRUE(wide);
  EXPECT_EQ(wide->Columns[0].Minimum, 1e-300);
}

TEST(DataStat, RefusesWhatHasNoStatistics) {
  const char* const few = "refuse: You need at least 2 points to calculate statistics.";
  const char* const failed = "refuse: An error occurred while calculating the data statistics.";
  const struct {
    std::vector<double> X, Y;
    const char* Said;
  } cases[] = {
      {{}, {}, few},
      {{1}, {2}, few},
      {{1, 2}, {3}, failed},                 // one value has no deviation
      {{1, 2}, {}, failed},                  // nor has an empty column
      {{1, 2, 3}, {0.1, 0.1, 0.1}, failed},  // nor a constant one a correlation
      {{0, 0, 0}, {1, 2, 3}, failed},
      {{5, 5, 6}, {1, 2}, failed},            // constant where both have values
      {{-1.5e308, 1.5e308}, {1, 2}, failed},  // the range overflows
      {{1, 2}, {3, 4}, ""},
  };
  for (const auto& c : cases) {
    RecordingPrompter user;
    EXPECT_EQ(ShowDataStat(SheetOf(c.X, c.Y), user).has_value(), *c.Said == '\0');
    EXPECT_EQ(user.Last(), c.Said);
  }
}

TEST(DataStat, WritesTheRowsOfItsWindow) {
  DataSheet sheet(1, true);
  sheet.Headers[1] = "Dose";
  const double cells[][3] = {{1, 0.5, 9}, {2, 0.25, 9}, {4, 0, 9}, {5, -0.25, 9}};  // standard deviations: no variable
  for (std::size_t row = 0; row < 4; ++row)
    for (std::size_t col = 0; col < 3; ++col) sheet.Cells.SetGridCellNumber(row + 1, col + 1, cells[row][col]);
  sheet.Cells.SetGridCellText(5, 2, "none");
  const Result<DataStat> statistics = GetDataStat(sheet);
  ASSERT_TRUE(statistics);
  LocaleText locale;
  locale.DecimalSeparator = ',';
  locale.ThousandSeparator = '.';
  using Rows = std::vector<std::vector<std::string>>;
  EXPECT_EQ(StatisticsRows(*statistics, locale),
            (Rows{{"Variable", "Number of Points", "Missing Points", "Maximum Value", "Minimum Value", "Range",
                   "Average", "Standard Deviation"},
                  {"X", "4", "1", "5", "1", "4", "3", "1,82574185835055"},
                  {"Dose", "4", "1", "0,5", "-0,25", "0,75", "0,125", "0,322748612183951"}}));
  EXPECT_EQ(CorrelationRows(*statistics, locale),
            (Rows{{"", "X", "Dose"}, {"X", "1", "-0,989949493661166"}, {"Dose", "-0,989949493661166", "1"}}));
  // A pattern is for what is measured, not for what is counted.
  EXPECT_EQ(StatisticsRows(*statistics, locale, "0.00")[2],
            (std::vector<std::string>{"Dose", "4", "1", "0,50", "-0,25", "0,75", "0,12", "0,32"}));
  EXPECT_EQ(CorrelationRows(*statistics, locale, "0.0##")[1], (std::vector<std::string>{"X", "1,0", "-0,99"}));
}

TEST(DataStat, IsExportedAsText) {
  const std::vector<std::vector<std::string>> rows{{"", "X"}, {"X", "1"}};
  TemporaryFolder folder;
  RecordingPrompter user;
  EXPECT_FALSE(ExportTable(rows, user));  // no file chosen
  user.File = folder.Path("r.txt");
  EXPECT_TRUE(ExportTable(rows, user));
  EXPECT_EQ(user.Last(), "save: Data Statistics|Text files (*.txt)|txt");
  EXPECT_EQ(folder.Read("r.txt"), "\tX\r\nX\t1\r\n");
  user.File = folder.Path("missing/r.txt");
  EXPECT_FALSE(ExportTable(rows, user));
  EXPECT_EQ(user.Last(),
            "refuse: Error exporting the data statistics to '" + *user.File + "'. The folder does not exist.");
}

TEST(DataStat, TakesAFullSheet) {
  DataSheet sheet(20, false);
  for (std::size_t row = 1; row <= kMostSheetRows; ++row)
    for (std::size_t col = 1; col <= 21; ++col)
      sheet.Cells.SetGridCellNumber(row, col, static_cast<double>(row * col % 65'537));
  const Result<DataStat> statistics = GetDataStat(sheet);
  ASSERT_TRUE(statistics);
  // Each column holds 1 to 65536 once, since 65537 is prime.
  for (const ColumnStatistics& column : statistics->Columns) {
    EXPECT_EQ(column.Average, 32768.5);
    ExpectClose(column.StandardDeviation, std::sqrt(65536.0 * 65537 / 12), column.Variable);
  }
}

}  // namespace
}  // namespace quorvex
