#include <gtest/gtest.h>

#include <cmath>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "TableFile.h"
#include "TemporaryFolder.h"
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

// Reads a file in pieces of some bytes.
DelimitedLines InPieces(const std::string& name, const DelimitedFormat& format, std::size_t piece, int threads = 1) {
  FileLines file(piece);
  DelimitedLines lines;
  EXPECT_EQ(file.Open(name), 0);
  EXPECT_EQ(ReadDelimitedLines(file, format, lines, threads), 0);
  return lines;
}

TEST(ReadDelimitedLines, ReadsTheSameWhateverTheSizeOfThePieces) {
  const TemporaryFolder folder;
  struct Case {
    std::string Text;
    DelimitedFormat Format;
  };
  std::vector<Case> cases;
  for (const auto& row : TableRows("delimited_lines.txt", 4)) {
    DelimitedFormat format;
    format.Delimiters = Delimiters(row[1]);
    format.IgnoreConsecutive = row[2] == "merged";
    cases.push_back({Unescaped(row[0]), format});
  }
  for (const auto& row : TableRows("delimited_decimals.txt", 4)) {
    DelimitedFormat format;
    format.Delimiters = Delimiters(row[1]);
    format.OverrideDecimal = row[2] == "point";
    format.DecimalSeparator = ',';
    cases.push_back({Unescaped(row[0]), format});
  }
  const std::string odd =
      "x;y;\"s;d\"\r\n;\r\n1;2;3\r\n 1e400;1e-400;-1e-400\rNaN;-999;inf\n\n\"-999\"; 1,5 ;1.5\r\n\"a \"\"b\"\"\";" +
      std::string(300, 'w') + ";0x10\n7;8;9";
  std::string wide = "\xFF\xFE";
  for (const char c : odd) wide += {c, '\0'};
  for (const bool holds : {false, true}) {
    for (const std::size_t first : {1, 3, 4, 100}) {
      DelimitedFormat format;
      format.Delimiters = kSemi;
      format.QuotesHold = holds;
      format.MissingMarker = "-999";
      format.FirstLine = first;
      for (const std::string& text : {odd, "\xEF\xBB\xBF" + odd, wide, odd + "\r\n", odd + "\r"}) {
        cases.push_back({text, format});
        cases.push_back({text, format});
        cases.back().Format.LineLimit = 3;
        cases.push_back({text, format});
        cases.back().Format.ColumnLimit = 2;
      }
    }
  }
  for (const Case& c : cases) {
    const std::string name = folder.Write("cells", c.Text);
    WholeFile whole;
    ASSERT_EQ(whole.Read(name), 0);
    const DelimitedLines expected = ParseDelimitedLines(whole.Text(), c.Format);
    for (const std::size_t piece : {1, 2, 3, 5, 7, 64, 300, 1 << 16}) {
      const DelimitedLines lines = InPieces(name, c.Format, piece);
      EXPECT_EQ(Shown(lines), Shown(expected)) << c.Text << " in pieces of " << piece;
      EXPECT_EQ(lines.Rows, expected.Rows) << c.Text << " in pieces of " << piece;
      EXPECT_EQ(lines.Cells.FirstLine, expected.Cells.FirstLine);
    }
  }
}

// From some row on the threads have parts of their own, with texts, empty cells and columns that others don't have.
TEST(ReadDelimitedLines, ReadsTheSameOnAnyNumberOfThreads) {
  const TemporaryFolder folder;
  for (const char* const lineEnd : {"\n", "\r\n", "\r"}) {
    std::string text = "\xEF\xBB\xBFhead\ting" + std::string(lineEnd);
    for (int i = 0; i < 5000; ++i) {
      text += std::to_string(i) + '\t';
      if (i % 13 != 0) text += std::to_string(0.25 * i);
      if (i % 701 == 0) text += "\tnote " + std::to_string(i);
      if (i == 3000) text += "\t1\t2\t" + std::string(2000, 'w');
      text += lineEnd;
    }
    const std::string name = folder.Write("long", text + lineEnd + lineEnd);
    for (const std::size_t first : {1, 2, 1500}) {
      DelimitedFormat format;
      format.FirstLine = first;
      const std::string expected = Shown(ParseDelimitedLines(folder.Read("long"), format));
      for (const std::size_t piece : {60, 5000})
        for (const int threads : {2, 7})
          EXPECT_TRUE(Shown(InPieces(name, format, piece, threads)) == expected) << piece << ' ' << threads;
    }
  }
}

// Behind its first thousand the rows of a long file are stored by many, up to one that is unlike them. Each part that a
// thread reads is long enough here to take a sample of its own.
TEST(ReadDelimitedLines, HasTheCellsOfEachLineInALongFile) {
  const char* const kOdd[] = {"",       "1,2", "1,2,3,4",   "1,2,x,4", "word",     "1,NA,3",
                              "7,8,NA", ",,",  " 1 , 2 ,3", "1,2,,",   "1e400,2,3"};
  DelimitedFormat format;
  format.Delimiters = kComma;
  format.MissingMarker = "NA";
  std::vector<std::string> lines(20'000, "1.5,-2,3e5");
  for (std::size_t i = 0; i < 360; ++i) lines[1000 + i * i / 9] = kOdd[i % std::size(kOdd)];
  std::string text;
  for (const std::string& line : lines) text += line + '\n';
  const DelimitedLines all = ParseDelimitedLines(text, format);
  ASSERT_EQ(all.Rows, lines.size());
  for (std::size_t row = 1; row <= lines.size(); ++row) {
    const DelimitedLines alone = ParseDelimitedLines(lines[row - 1] + '\n', format);
    for (std::size_t col = 1; col <= 5; ++col)
      ASSERT_EQ(all.Cells.GridCellText(row, col), alone.Cells.GridCellText(1, col)) << row << ' ' << lines[row - 1];
  }
  const TemporaryFolder folder;
  EXPECT_TRUE(Shown(InPieces(folder.Write("long", text), format, 100'000, 2)) == Shown(all));
}

// A column that grows step by step is copied again and again, and takes up to twice its memory.
TEST(ReadDelimitedLines, MakesRoomForTheRowsToCome) {
  const TemporaryFolder folder;
  constexpr std::size_t kRows = 20'000;
  std::string text;
  for (std::size_t i = 0; i < kRows; ++i) text += std::to_string(1'000'000 + i) + "\t0.5\n";
  const std::string name = folder.Write("long", text);
  for (const auto& [piece, threads] : {std::pair{10, 1}, {4000, 1}, {1 << 20, 1}, {30'000, 3}}) {
    DelimitedLines lines = InPieces(name, {}, static_cast<std::size_t>(piece), threads);
    ASSERT_EQ(lines.Rows, kRows);
    const std::vector<double> column = lines.Cells.TakeColumn(1, kRows);
    EXPECT_LT(column.capacity(), kRows * 11 / 10) << piece;
    for (std::size_t i = 0; i < kRows; ++i) ASSERT_EQ(column[i], static_cast<double>(1'000'000 + i));
  }
}

}  // namespace
}  // namespace quorvex
