#include <gtest/gtest.h>

#include <utility>

#include "TableFile.h"
#include "core/Files.h"
#include "sheet/ParseDelimitedLines.h"

namespace quorvex {
namespace {

// The cells as one text: "n:" before numbers, "|" between cells, "/" between rows.
std::string Shown(const DelimitedLines& lines) {
  GridCells probe = lines.Cells;  // columns taken out show what their cells are
  std::vector<std::vector<double>> columns(lines.Cells.GridLastCol());
  for (std::size_t col = 0; col < columns.size(); ++col) columns[col] = probe.TakeColumn(col + 1, lines.Rows);
  std::string text;
  for (std::size_t row = 0; row < lines.Rows; ++row) {
    if (row > 0) text += " / ";
    for (std::size_t col = 0; col < columns.size(); ++col) {
      if (col > 0) text += '|';
      if (!std::isnan(columns[col][row])) text += "n:";
      text += lines.Cells.GridCellText(row + 1, col + 1);
    }
  }
  return text;
}

constexpr int kTab = kTabDelimiter, kComma = kCommaDelimiter, kSpace = kSpaceDelimiter, kSemi = kSemicolonDelimiter;

int Delimiters(const std::string& written) {
  int delimiters = 0;
  for (const char c : written) delimiters += c == 't' ? kTab : c == 's' ? kSpace : c == ',' ? kComma : kSemi;
  return delimiters;
}

TEST(ParseDelimitedLines, SplitsLinesIntoCells) {
  for (const auto& row : TableRows("delimited_lines.txt", 4)) {
    DelimitedFormat format;
    format.Delimiters = Delimiters(row[1]);
    format.IgnoreConsecutive = row[2] == "merged";
    EXPECT_EQ(Shown(ParseDelimitedLines(Unescaped(row[0]), format)), Unescaped(row[3])) << row[0];
  }
  EXPECT_EQ(Shown(ParseDelimitedLines("\xEF\xBB\xBF"
                                      "1\tcaf\xE9\tcaf\xC3\xA9",
                                      {})),
            "n:1|caf\xC3\xA9|caf\xC3\xA9");
}

TEST(ParseDelimitedLines, ReadsTheDecimalSeparatorOfTheLocale) {
  for (const auto& row : TableRows("delimited_decimals.txt", 4)) {
    DelimitedFormat format;
    format.Delimiters = Delimiters(row[1]);
    format.OverrideDecimal = row[2] == "point";
    format.DecimalSeparator = ',';
    EXPECT_EQ(Shown(ParseDelimitedLines(Unescaped(row[0]), format)), row[3]) << row[0] << ' ' << row[2];
  }
}

TEST(ParseDelimitedLines, LeavesMarkedCellsEmpty) {
  const struct {
    const char *text, *marker, *cells;
  } kCases[] = {{"-999,-999.0, -999 ,-9990", "-999", "|n:-999||n:-9990"},
                {"NA, NA ,na,NA5", "NA", "||na|NA5"},
                {"0,00,1", "0", "|n:0|n:1"},
                {"a b,1", "a b", "|n:1"},
                {"-999,1", " -999", "n:-999|n:1"},
                {R"("NA","-999","1")", "NA", "|n:-999|n:1"},
                {R"("-999",-999,"2")", "-999", "||n:2"},
                {R"("NA",NA,2)", "\"NA\"", "|NA|n:2"},
                {"ung\xFCltig,\"ung\xFCltig\",2", "ung\u00FCltig", "||n:2"}};  // Windows-1252
  for (const auto& c : kCases) {
    DelimitedFormat format;
    format.Delimiters = kComma;
    format.MissingMarker = c.marker;
    EXPECT_EQ(Shown(ParseDelimitedLines(c.text, format)), c.cells) << c.text;
  }
}

TEST(ParseDelimitedLines, ReadsTheLinesAndColumnsThatAreWanted) {
  const std::string text = "h1\th2\th3\r\n1\t2\t3\r\n4\t5\t6\r\n7\t8\t9";
  const struct {
    std::size_t firstLine, lineLimit, columnLimit, rows;
    const char* cells;
  } kCases[] = {{1, 1, 256, 1, "h1|h2|h3"},
                {2, 100, 2, 3, "n:1|n:2 / n:4|n:5 / n:7|n:8"},
                {3, 1, 3, 1, "n:4|n:5|n:6"},
                {4, 9, 1, 1, "n:7"},
                {5, 9, 9, 0, ""},
                {900, 9, 9, 0, ""}};
  for (const auto& c : kCases) {
    DelimitedFormat format;
    format.FirstLine = c.firstLine;
    format.LineLimit = c.lineLimit;
    format.ColumnLimit = c.columnLimit;
    const DelimitedLines lines = ParseDelimitedLines(text, format);
    EXPECT_EQ(lines.Rows, c.rows);
    EXPECT_EQ(Shown(lines), c.cells);
    EXPECT_EQ(lines.Cells.FirstLine, c.firstLine);
  }
  EXPECT_EQ(ParseDelimitedLines("", {}).Rows, 0u);
}

TEST(ParseDelimitedLines, CutsLongCells) {
  const std::string umlaut = "\xC3\xA4", zeros = "0." + std::string(300, '0');
  const auto repeat = [](const std::string& part, int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += part;
    return text;
  };
  const std::pair<std::string, std::string> kCases[] = {
      {repeat("a", 255), repeat("a", 255)},       {repeat("a", 300), repeat("a", 252) + "..."},
      {repeat(umlaut, 255), repeat(umlaut, 255)}, {repeat(umlaut, 256), repeat(umlaut, 252) + "..."},
      {zeros, zeros.substr(0, 252) + "..."},  // too long even where it would be a number
  };
  for (const auto& [text, cell] : kCases)
    EXPECT_EQ(ParseDelimitedLines("1\t" + text + "\t2", {}).Cells.GridCellText(1, 2), cell);
}

// Lines that would keep the reader busy for hours if each cell looked ahead by itself.
TEST(ParseDelimitedLines, GoesThroughOddFiles) {
  const std::string blanks = std::string(2'000'000, ' ') + "1";
  const std::string returns(2'000'000, '\r');
  DelimitedFormat format;
  format.Delimiters = kSpace;
  format.ColumnLimit = 3'000'000;
  EXPECT_EQ(ParseDelimitedLines("0" + blanks, format).Cells.GridLastCol(), 2'000'001u);
  EXPECT_EQ(ParseDelimitedLines(returns, format).Rows, 2'000'000u);
}

TEST(ParseDelimitedLines, GivesTheSameNumbersWhateverTheFormOfTheFile) {
  const auto read = [](const char* name, const DelimitedFormat& format) {
    WholeFile file;
    EXPECT_EQ(file.Read(TestData(name)), 0) << name;
    return Shown(ParseDelimitedLines(file.Text(), format));
  };
  DelimitedFormat comma, semicolon;
  comma.Delimiters = kComma;
  semicolon.Delimiters = kSemi;
  semicolon.DecimalSeparator = ',';
  EXPECT_EQ(read("cars.csv", comma), read("cars_crlf.csv", comma));
  EXPECT_EQ(read("pressure.csv", comma), read("pressure_decimal_comma.csv", semicolon));
  semicolon.OverrideDecimal = false;
  EXPECT_EQ(read("pressure.csv", comma), read("pressure_decimal_comma.csv", semicolon));

  DelimitedFormat blanks;
  blanks.Delimiters = kSpace;
  blanks.IgnoreConsecutive = true;
  blanks.LineLimit = 3;
  EXPECT_EQ(read("steam.txt", blanks), "temp|press / n:0|n:4.14 / n:10|n:8.52");
}

}  // namespace
}  // namespace quorvex
