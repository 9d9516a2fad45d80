#include <gtest/gtest.h>

#include "RecordingPrompter.h"
#include "TemporaryFolder.h"
#include "import/spreadsheet/SpreadsheetFile.h"
#include "results/SaveResults.h"

namespace quorvex {
namespace {

TEST(SaveEvaluation, WritesTheFileOrSaysWhyNot) {
  const TemporaryFolder folder;
  RecordingPrompter user;
  EXPECT_FALSE(SaveEvaluation("a\r\n", user));
  EXPECT_EQ(user.Said, std::vector<std::string>{"save: Save As|Text files (*.txt)|txt|Eval"});
  user.File = folder.Path("Eval.txt");
  EXPECT_TRUE(SaveEvaluation("a\r\n", user));
  EXPECT_EQ(folder.Read("Eval.txt"), "a\r\n");
  user.File = folder.Path("missing/Eval.txt");
  EXPECT_FALSE(SaveEvaluation("a", user));
  EXPECT_EQ(user.Last(), "refuse: Error writing to '" + *user.File + "'. The folder does not exist.");
}

TEST(SaveTable, WritesTheFormThatTheNameAsksFor) {
  const TemporaryFolder folder;
  RecordingPrompter user;
  Report report;
  report.Add(RowKind::Line, {"Y = ", "a*x"});
  for (const char* name : {"a.txt", "a.HTML", "a.htm", "a"}) {
    user.File = folder.Path(name);
    EXPECT_TRUE(SaveTable(report, "Fit Information", user));
    const bool html = std::string(name).size() > 1 && name[2] != 't';
    EXPECT_EQ(folder.Read(name), html ? Html(report) : TabSeparated(report)) << name;
  }
}

// By the rules of RFC 4180 and of Markdown's tables.
TEST(SaveTable, WritesTablesForOtherPrograms) {
  const TemporaryFolder folder;
  RecordingPrompter user;
  const auto saved = [&](const TextTable& table, const char* name) {
    user.File = folder.Path(name);
    EXPECT_TRUE(SaveTable(table, "Fit Information", user));
    return folder.Read(name);
  };
  for (const char separator : {'.', ','}) {
    const std::string half = std::string("0") + separator + "5", d = separator == ',' ? ";" : ",";
    Report report(separator);
    report.Add(RowKind::Line, {"Y = ", "a*x1, \"b\"; <c>"});
    report.Add(RowKind::Line, {});
    report.Add(RowKind::Heading, {"Variance"});
    report.Add(RowKind::ColumnHeadings, {"Source", "Prob|F"});
    report.Add(RowKind::Values, {"Error", half});
    report.Add(RowKind::Values, {"Total"});
    EXPECT_EQ(saved(report, "a.csv"), "Y = " + d + "\"a*x1, \"\"b\"\"; <c>\"\r\n\r\nVariance\r\nSource" + d +
                                          "Prob|F\r\nError" + d + half + "\r\nTotal\r\n");
    EXPECT_EQ(saved(report, "a.MD"),
              "Y = a\\*x1, \"b\"; \\<c\\>  \r\n\r\n## Variance\r\n\r\n| Source | Prob\\|F |\r\n| :-- | --: |\r\n"
              "| Error | " +
                  half + " |\r\n| Total |  |\r\n");
    EXPECT_EQ(saved(TableExcerpt(report, 4, 1, 1, 1), "b.csv"), half + "\r\n");
    EXPECT_EQ(saved(TableExcerpt(report, 4, 1, 1, 1), "b.md"), "|  |\r\n| :-- |\r\n| " + half + " |\r\n");
  }
  EXPECT_EQ(saved(Report(), "empty.csv") + saved(Report(), "empty.md"), "");
  EXPECT_NE(user.Said[0].find(";;CSV files (*.csv);;OpenDocument spreadsheets (*.ods);;Markdown files (*.md);;"),
            std::string::npos);
}

TEST(SaveTable, WritesSpreadsheetsThatReadBack) {
  const TemporaryFolder folder;
  RecordingPrompter user;
  user.File = folder.Path("a.ods");
  Report report(',');
  report.Add(RowKind::Line, {"Y = ", "a<b & \"c\" \x01\xFF>"});
  report.Add(RowKind::Line, {});
  report.Add(RowKind::Values, {"Error", "-1,5E-300", "0,1"});
  ASSERT_TRUE(SaveTable(report, "Fit Information", user));
  const auto sheets = ListSheets(*user.File);
  ASSERT_TRUE(sheets) << sheets.error();
  const Result<GridCells> cells = ReadSheet(*user.File, sheets->at(0));
  ASSERT_TRUE(cells) << cells.error();
  EXPECT_EQ(cells->GridLastRow(), 3u);
  EXPECT_EQ(cells->GridCellText(1, 2), "a<b & \"c\" \uFFFD\uFFFD>");
  EXPECT_EQ(cells->GridCellNumber(3, 2), -1.5e-300);
  EXPECT_EQ(cells->GridCellNumber(3, 3), 0.1);
}

// A column of dates, another of numbers, and texts that look like dates where none are meant.
class DatedTable : public Report {
 public:
  bool HasDates(std::size_t column) const override { return column == 1; }
};

TEST(SaveTable, WritesDatesThatReadBackFromSpreadsheets) {
  const TemporaryFolder folder;
  RecordingPrompter user;
  user.File = folder.Path("a.ods");
  // 36526 is 1 January 2000, 46348 is 22 November 2026.
  const struct {
    const char* Text;
    double Days;
  } kRows[] = {{"2000-01-01", 36526},
               {"2026-11-22 18:00", 46348.75},
               {"2026-11-22 00:00:45", 46348 + 45 / 86400.0},
               {"06:00", 0.25},
               {"36:00:00", 1.5},
               {"0.125", 0.125},
               {"2000-01-01 00:00:43.200", 36526.0005}};
  DatedTable table;
  for (const auto& row : kRows) table.Add(RowKind::Values, {"2000-01-01", row.Text, "1"});
  ASSERT_TRUE(SaveTable(table, "Data Table", user));
  const auto sheets = ListSheets(*user.File);
  ASSERT_TRUE(sheets) << sheets.error();
  const Result<GridCells> cells = ReadSheet(*user.File, sheets->at(0));
  ASSERT_TRUE(cells) << cells.error();
  for (std::size_t row = 0; row < std::size(kRows); ++row) {
    EXPECT_EQ(cells->GridCellText(row + 1, 1), "2000-01-01");
    EXPECT_EQ(cells->GridCellNumber(row + 1, 2), kRows[row].Days) << kRows[row].Text;
  }
}

}  // namespace
}  // namespace quorvex
