#include <gtest/gtest.h>

#include <numeric>

#include "TableFile.h"
#include "core/Files.h"
#include "sheet/ArrangeData.h"
#include "sheet/ComputeWeights.h"
#include "sheet/LoadGridData.h"
#include "sheet/ParseDelimitedLines.h"

namespace quorvex {
namespace {

using Columns = std::vector<std::vector<double>>;

GridCells Commas(std::string_view text, std::size_t firstLine = 1, std::string_view marker = "") {
  DelimitedFormat format;
  format.Delimiters = kCommaDelimiter;
  format.FirstLine = firstLine;
  format.MissingMarker = marker;
  return ParseDelimitedLines(text, format).Cells;
}

GridCells File(const char* name, DelimitedFormat format) {
  WholeFile file;
  EXPECT_EQ(file.Read(TestData(name)), 0) << name;
  format.FirstLine = 2;
  return ParseDelimitedLines(file.Text(), format).Cells;
}

TEST(ArrangeData, PutsColumnsWhereTheListSaysSo) {
  for (const auto& row : TableRows("column_orders.txt", 4)) {
    GridCells cells = Commas("a,b,c,d");
    const bool ok = row[3] != "refused";
    EXPECT_EQ(ArrangeData(cells, row[0], std::stoul(row[1]), row[2][0]), ok) << row[0];
    std::string shown;
    for (std::size_t col = 1; col <= 4; ++col) {
      const std::string text = cells.GridCellText(1, col);
      shown += text.empty() ? "-" : text;
    }
    EXPECT_EQ(shown, ok ? row[3] : "abcd") << row[0];
  }
}

TEST(LoadGridData, TakesCompleteRowsAndFlagsPartialOnes) {
  for (const auto& row : TableRows("complete_rows.txt", 5)) {
    SCOPED_TRACE(row[0]);
    const auto loaded = LoadGridData(Commas(Unescaped(row[0])), {.IndependentVariables = std::stoul(row[1])});
    ASSERT_TRUE(loaded);
    Columns X(std::stoul(row[1]));
    const std::vector<std::string> written = Split(row[2], '|');
    for (std::size_t v = 0; v < written.size(); ++v) X[v] = Numbers(written[v]);
    EXPECT_EQ(loaded->Points.X, X);
    EXPECT_EQ(loaded->Points.Y, Numbers(row[3]));
    EXPECT_EQ(loaded->Points.SD, std::vector<double>(loaded->Points.N(), 1));
    EXPECT_EQ(loaded->HadPartialRow, row[4] == "partial");
  }
}

TEST(LoadGridData, SortsByXAndKeepsTheOrderOfEqualOnes) {
  const auto loaded =
      LoadGridData(Commas("2,1,.1\n1,2,.2\n2,3,\n,4,.4\n1,5,.5\n-1,6,0"), {.Weighted = true, .KeepUnsorted = true});
  ASSERT_TRUE(loaded);
  EXPECT_EQ(loaded->Points.X, (Columns{{-1, 1, 1, 2, 2}}));
  EXPECT_EQ(loaded->Points.Y, (std::vector<double>{6, 2, 5, 1, 3}));
  EXPECT_EQ(loaded->Points.SD, (std::vector<double>{0, .2, .5, .1, 1}));
  EXPECT_EQ(loaded->Unsorted.X, (Columns{{2, 1, 2, 1, -1}}));
  EXPECT_EQ(loaded->Unsorted.Y, (std::vector<double>{1, 2, 3, 5, 6}));
  EXPECT_EQ(loaded->Unsorted.SD, (std::vector<double>{.1, .2, 1, .5, 0}));
}

// So many that no sort is stable by chance, and that they are sorted in several parts.
TEST(LoadGridData, KeepsTheOrderOfManyEqualX) {
  constexpr std::size_t kRows = 600'000;
  GridCells cells;
  for (std::size_t row = 1; row <= kRows; ++row) {
    cells.SetGridCellNumber(row, 1, static_cast<double>(row * 7 % 3));
    cells.SetGridCellNumber(row, 2, static_cast<double>(row));
  }
  const auto loaded = LoadGridData(cells, {});
  ASSERT_TRUE(loaded);
  const SolveData& data = loaded->Points;
  ASSERT_EQ(data.N(), kRows);
  for (std::size_t i = 1; i < kRows; ++i)
    ASSERT_LT(std::pair(data.X[0][i - 1], data.Y[i - 1]), std::pair(data.X[0][i], data.Y[i])) << i;
  for (std::size_t i = 0; i < kRows; ++i) ASSERT_EQ(static_cast<double>(data.Row[i]), data.Y[i]);

  // Whoever ends it on the way gets nothing.
  std::size_t asked = 0, last = SIZE_MAX;
  const LoadOptions options{.KeepGoing = [&] { return asked++ < last; }};
  EXPECT_TRUE(LoadGridData(cells, options));
  const std::size_t inAll = asked;
  EXPECT_GT(inAll, 10u);
  for (last = 0; last < inAll; last += 4) {
    asked = 0;
    EXPECT_FALSE(LoadGridData(cells, options)) << last;
  }
}

TEST(LoadGridData, NamesTheFirstTextOfAPoint) {
  const struct {
    const char* text;
    std::size_t firstLine, variables;
    const char* message;
  } kCases[] = {
      {"x,y\n1,2", 1, 1, "Line 1: 'x' is not a number."},
      {"x,y\n1,2\n\n3,4 %", 2, 1, "Line 4: '4 %' is not a number."},
      {"1,2,a\n1,b,c", 1, 1, "Line 1: 'a' is not a number."},
      {"1,b,sd,\nc,1,1", 1, 2, "Line 1: 'b' is not a number."},
      {"a,\n,b\n1,1e999", 1, 1, "Line 3: '1e999' is not a number."},
  };
  for (const auto& c : kCases) {
    const auto loaded =
        LoadGridData(Commas(c.text, c.firstLine), {.IndependentVariables = c.variables, .Weighted = true});
    ASSERT_FALSE(loaded) << c.text;
    EXPECT_EQ(loaded.error(), c.message);
  }
}

// Counts of rows and missing values are those told with the data; the sums were taken with another program (awk).
TEST(LoadGridData, ReadsRealFiles) {
  DelimitedFormat tabs, commas;
  commas.Delimiters = kCommaDelimiter;
  DelimitedFormat marked = commas, coded = tabs;
  marked.MissingMarker = "NA";
  coded.MissingMarker = "-999";
  const struct {
    const char* name;
    DelimitedFormat format;
    const char* order;
    LoadOptions options;
    std::size_t points;
    double sumY;
    bool partial;
  } kCases[] = {
      {"airquality.csv", marked, "x1,x2,x3,y", {.IndependentVariables = 3}, 111, 4673, true},
      {"airquality.csv", marked, "skip,x,skip,y", {}, 116, 4887, true},
      {"airquality_blank.csv", commas, "x,skip,y", {}, 116, 4887, true},
      {"airquality_wind.txt", coded, "default", {}, 116, 4887, true},
      {"mcycle.txt", tabs, "default", {}, 133, -3397.6, false},
      {"plant_uptake_sd.txt", tabs, "default", {.IndependentVariables = 2, .Weighted = true}, 14, 380.98332, false},
  };
  for (const auto& c : kCases) {
    GridCells cells = File(c.name, c.format);
    ASSERT_TRUE(ArrangeData(cells, c.order, c.options.IndependentVariables, ','));
    const auto loaded = LoadGridData(std::move(cells), c.options);
    ASSERT_TRUE(loaded) << loaded.error();
    const SolveData& data = loaded->Points;
    EXPECT_EQ(data.N(), c.points) << c.name;
    EXPECT_NEAR(std::accumulate(data.Y.begin(), data.Y.end(), 0.0), c.sumY, 1e-9) << c.name;
    EXPECT_EQ(loaded->HadPartialRow, c.partial) << c.name;
    EXPECT_EQ(c.options.IndependentVariables == 1, std::is_sorted(data.X[0].begin(), data.X[0].end())) << c.name;
  }
  const auto unmarked = LoadGridData(File("airquality.csv", commas), {.IndependentVariables = 3});
  ASSERT_FALSE(unmarked);
  EXPECT_EQ(unmarked.error(), "Line 6: 'NA' is not a number.");
}

TEST(ComputeWeights, HasTheMeanOneAndKeepsTheLimits) {
  const struct {
    std::vector<double> SD, weights;
  } kCases[] = {
      {{}, {}},
      {{1, 1, 1}, {1, 1, 1}},
      {{0, 0}, {1, 1}},
      {{2, -1}, {0.4, 1.6}},        // 1/4 and 1 over 5/8
      {{0, 0.5}, {0.4, 1.6}},       // 0 counts as weight 1
      {{9e-151, 0.5}, {0.4, 1.6}},  // and so does what is next to 0
      {{-2e150, 0.5}, {0.4, 1.6}},  // or huge
      {{1e-150, 1}, {2, 2e-300}},   // the limits themselves are taken as they are
      {{1e150, 1}, {2e-300, 2}},
  };
  for (const auto& c : kCases) {
    const std::vector<double> weights = ComputeWeights(c.SD);
    ASSERT_EQ(weights.size(), c.weights.size());
    for (std::size_t i = 0; i < weights.size(); ++i) EXPECT_NEAR(weights[i] / c.weights[i], 1, 1e-15) << c.SD[0];
  }
}

}  // namespace
}  // namespace quorvex
