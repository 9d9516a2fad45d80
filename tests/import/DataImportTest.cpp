#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <fstream>
#include <iterator>
#include <limits>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "Paths.h"
#include "RecordingPrompter.h"
#include "RowTexts.h"
#include "TemporaryFolder.h"
#include "core/Files.h"
#include "import/ConnectString.h"
#include "import/DatabaseImport.h"
#include "import/OdbcDatabase.h"
#include "import/TextImport.h"
#include "import/spreadsheet/SpreadsheetImport.h"

namespace quorvex {
namespace {

constexpr const char* kOverwrite = "ask: This operation may overwrite existing data. \r\nDo you want to continue?";
constexpr const char* kNothingAssigned =
    "refuse: You did not assign data columns to any variables, so no data can be imported. To assign a data column in "
    "the file to a variable in the spreadsheet, select the data column and the corresponding variable from the two "
    "lists and click the Assign button. Repeat this procedure for each column in the data file you want to import.";
constexpr const char* kSomeUnassigned =
    "ask: You did not assign data columns to all variables, so there will be no data imported to them. Do you want to "
    "continue?";
constexpr const char* kStartBehindEnd =
    "refuse: The start row you specified is larger than the number of lines in the file.";
constexpr const char* kTooManyRows =
    "inform: The file contains too many data points. Only 65,536 data points will be imported.";
constexpr const char* kTwoTexts = "inform: 2 cells are no numbers, the first of them 'x' in X:1.";
constexpr const char* kSomeUnassignedOfDatabase =
    "ask: You did not assign columns to all variables, so there will be no data imported to them. Do you want to "
    "continue?";

constexpr double kMissing = std::numeric_limits<double>::quiet_NaN();

// A sheet with its user, and the snapshots that were pushed.
struct Desk {
  explicit Desk(std::size_t variables = 1, bool sd = false, char decimal = '.') : Sheet(variables, sd) {
    Locale.DecimalSeparator = decimal;
  }

  SheetEdit Edit() {
    return {Sheet, Locale, User, {}, [this](const UndoLabel& label, const CellRange&) { Undo.push_back(label.Text); }};
  }
  std::unique_ptr<TextImport> OpenText(const std::string& file) {
    auto import = TextImport::Open(file, Sheet, Locale);
    if (!import) {
      User.Refuse(import.error());
      return nullptr;
    }
    EXPECT_TRUE((*import)->Preview());
    return std::move(*import);
  }
  std::vector<std::string> Rows() const { return RowTexts(Sheet.Cells, Sheet.ColumnCount()); }

  DataSheet Sheet;
  LocaleText Locale;
  RecordingPrompter User;
  std::vector<std::string> Undo;
};

using Texts = std::vector<std::string>;

// Splits a file without the program's parser: lines at LF, cells at one character, or at runs of blanks; numbers by
// from_chars, what it does not take whole is missing.
std::vector<std::vector<double>> Parsed(const std::string& file, char delimiter, bool decimalComma) {
  WholeFile content;
  EXPECT_EQ(content.Read(file), 0) << file;
  std::vector<std::vector<double>> rows;
  std::string cell;
  bool ended = true;
  const auto endCell = [&] {
    double value = kMissing;
    const char* const end = cell.data() + cell.size();
    const auto [stop, error] = std::from_chars(cell.data(), end, value);
    rows.back().push_back(error == std::errc() && stop == end && cell != "-999" ? value : kMissing);
    cell.clear();
  };
  for (const char c : std::string(content.Text()) + "\n") {
    if (c == '\r') continue;
    if (ended) rows.emplace_back();
    ended = c == '\n';
    if (c == delimiter || ended) {
      if (delimiter != ' ' || !cell.empty()) endCell();
    } else {
      cell += decimalComma && c == ',' ? '.' : c;
    }
  }
  rows.pop_back();           // behind the last line end
  rows.erase(rows.begin());  // the header
  return rows;
}

// The words of its first line.
Texts Names(const std::string& file, char delimiter) {
  std::string line;
  std::ifstream stream(file);
  std::getline(stream, line);
  std::ranges::replace(line, delimiter, ' ');
  std::istringstream words(line);
  return {std::istream_iterator<std::string>(words), {}};
}

TEST(TextImport, ReadsTheSampleFilesAsTheyAre) {
  enum Delimiter : char { kTab = '\t', kComma = ',', kSemi = ';', kBlanks = ' ' };
  const struct {
    const char* file;
    std::size_t variables;
    bool sd;
    std::size_t rows;
    Delimiter delimiter = kTab;
    const char* marker = "";
    bool decimalComma = false;
  } kFiles[] = {
      {"airquality.csv", 3, false, 153, kComma, "NA"},
      {"airquality_blank.csv", 2, false, 153, kComma},
      {"airquality_wind.txt", 1, false, 153, kTab, " -999 "},
      {"cars.csv", 1, false, 50, kComma},
      {"cars_crlf.csv", 1, false, 50, kComma},
      {"dnase_run1.txt", 1, false, 16},
      {"dnase_sd.txt", 1, true, 8},
      {"ethanol.txt", 2, false, 88},
      {"gamma_spectrum.txt", 1, true, 300},
      {"longley.csv", 6, false, 16, kComma},
      {"mauna_loa_co2.csv", 1, false, 468, kComma},
      {"mcycle.txt", 1, false, 133},
      {"old_faithful.csv", 1, false, 272, kComma},
      {"plant_uptake_sd.txt", 2, true, 14},
      {"pressure.csv", 1, false, 19, kComma},
      {"pressure_decimal_comma.csv", 1, false, 19, kSemi, "", true},
      {"puromycin_treated.txt", 1, false, 12},
      {"puromycin_untreated.txt", 1, false, 11},
      {"stackloss.txt", 3, false, 21},
      {"steam.txt", 1, false, 14, kBlanks},
      {"stormer.txt", 2, false, 23},
      {"trees.txt", 2, false, 31},
      {"weight_loss.txt", 1, false, 52},
      {"women.txt", 1, false, 15},
  };
  for (const auto& c : kFiles) {
    SCOPED_TRACE(c.file);
    const std::string file = TestData(c.file);
    Desk desk(c.variables, c.sd, c.decimalComma ? ',' : '.');
    const auto import = desk.OpenText(file);
    ASSERT_NE(import, nullptr);
    EXPECT_EQ(import->Space, c.delimiter == kBlanks);
    EXPECT_EQ(import->DupCheck, c.delimiter == kBlanks);
    import->ckMissingData = true;
    import->txtMissingData = c.marker;
    import->ImportText = "2";
    const auto preview = import->Preview();
    ASSERT_TRUE(preview);
    EXPECT_EQ(import->FirstDataLine(desk.Locale), 2);
    const std::size_t columns = desk.Sheet.ColumnCount();
    ASSERT_EQ(import->Columns.lstColumns().size(), columns);
    import->Columns.AssignInOrder();
    import->ckHeadings = true;
    EXPECT_EQ(import->Finish(desk.Edit()), ImportOutcome::Imported);
    EXPECT_EQ(desk.Sheet.Headers, Names(file, c.delimiter));
    EXPECT_EQ(desk.User.Said, Texts());
    EXPECT_EQ(desk.Undo, Texts{"&Undo Import"});

    const auto expected = Parsed(file, c.delimiter, c.decimalComma);
    ASSERT_EQ(expected.size(), c.rows);
    EXPECT_EQ(desk.Sheet.Cells.GridLastRow(), c.rows);
    for (std::size_t row = 1; row <= c.rows; ++row) {
      for (std::size_t col = 1; col <= columns; ++col) {
        const double value = col <= expected[row - 1].size() ? expected[row - 1][col - 1] : kMissing;
        EXPECT_EQ(desk.Sheet.Cells.GridCellText(row, col).empty(), std::isnan(value)) << row << ' ' << col;
        EXPECT_EQ(desk.Sheet.Cells.GridCellNumber(row, col), std::isnan(value) ? 0 : value) << row << ' ' << col;
      }
    }
  }
}

TEST(TextImport, ShowsAPreviewAndTheLists) {
  const TemporaryFolder folder;
  std::string lines;
  for (int i = 1; i <= 200; ++i) lines += std::to_string(i) + ",NA\n";
  const std::string exact = folder.Write("exact.txt", lines), more = folder.Write("more.txt", lines + "201,1,2");
  Desk desk;
  EXPECT_EQ(desk.OpenText(exact)->Title(), "Preview of '" + exact + "'");
  const auto import = desk.OpenText(more);
  EXPECT_EQ(import->Title(), "Preview of '" + more + "' (first 200 lines)");
  EXPECT_EQ(import->LineCount(), 201);
  import->ckMissingData = true;
  import->txtMissingData = "NA";
  const auto preview = import->Preview();
  ASSERT_TRUE(preview);
  EXPECT_EQ(preview->GridLastRow(), 200);
  EXPECT_EQ(preview->GridCellText(200, 2), "NA");  // the preview shows what the file has
  ColumnAssignment& columns = import->Columns;
  EXPECT_EQ(columns.lstColumns(), (Texts{"Column 1", "Column 2"}));
  EXPECT_EQ(columns.lstHeaders(), (Texts{"X", "Y"}));
  columns.Assign(2, 1);
  columns.Assign(1, 2);
  EXPECT_EQ(columns.lstHeaders(), (Texts{"X: Column 2", "Y: Column 1"}));
  columns.Assign(2, 2);  // a column goes to one variable
  EXPECT_EQ(columns.lstHeaders(), (Texts{"X", "Y: Column 2"}));
  columns.Assign(1, 1);
  columns.UnAssign(1);
  EXPECT_EQ(columns.lstHeaders(), (Texts{"X", "Y: Column 2"}));
  import->Comma = false;  // and there is one column only
  ASSERT_TRUE(import->Preview());
  EXPECT_EQ(columns.lstHeaders(), (Texts{"X", "Y"}));
  EXPECT_EQ(columns.lstColumns(), Texts{"Column 1"});
}

TEST(TextImport, BeginsWithTheDelimitersOfTheLocale) {
  const TemporaryFolder folder;
  const std::string file = folder.Write("comma.txt", "1,5\t2.5\n");
  const struct {
    char decimal;
    bool comma;
    Texts columns;
    const char* first;
  } kCases[] = {{'.', true, {"Column 1", "Column 2", "Column 3"}, "1"}, {',', false, {"Column 1", "Column 2"}, "1.5"}};
  for (const auto& c : kCases) {
    Desk desk(1, false, c.decimal);
    const auto import = desk.OpenText(file);
    EXPECT_EQ(import->Comma, c.comma);
    EXPECT_EQ(import->Columns.lstColumns(), c.columns);
    EXPECT_EQ(import->Preview()->GridCellText(1, 1), c.first);
  }
  Desk desk(1, false, ',');
  const auto import = desk.OpenText(file);
  EXPECT_EQ(import->Preview()->GridCellNumber(1, 2), 2.5);
  import->ckLocale = false;  // then "2.5" is no number
  EXPECT_EQ(import->Preview()->GridCellNumber(1, 2), 0);
}

TEST(TextImport, ReadsDecimalCommasWhereTheLocaleHasPointsIfTold) {
  const std::string file = TestData("pressure_decimal_comma.csv");
  Desk desk;
  const auto import = desk.OpenText(file);
  EXPECT_EQ(import->Columns.lstColumns().size(), 3);
  import->Comma = import->ckLocale = false;
  const auto preview = import->Preview();
  ASSERT_TRUE(preview);
  EXPECT_EQ(import->Columns.lstColumns().size(), 2);
  EXPECT_EQ(preview->GridCellNumber(2, 2), 0.0002);
  EXPECT_EQ(preview->GridCellNumber(20, 2), 806);
}

TEST(TextImport, KeepsWhatQuotesHold) {
  const TemporaryFolder folder;
  const struct {
    const char* line;
    Texts cells;
  } kCases[] = {
      {R"("Doe, J",1)", {"Doe, J", "1"}},
      {R"("say ""a,b""" , 2)", {"say \"a,b\"", "2"}},
      {R"("","a")", {"", "a"}},
      {R"("open,1,2)", {"\"open", "1", "2"}},
      {R"("a"b,"c,d")", {"\"a\"b", "c,d"}},
      {R"(a "b,c" d)", {"a \"b", "c\" d"}},
      {R"("a""",1)", {"a\"", "1"}},
      {R"(")", {"\""}},
  };
  for (const auto& c : kCases) {
    Desk desk;
    const auto preview = desk.OpenText(folder.Write("runs.txt", c.line))->Preview();
    ASSERT_TRUE(preview);
    EXPECT_EQ(preview->GridLastCol(), c.cells.size()) << c.line;
    for (std::size_t col = 1; col <= c.cells.size(); ++col)
      EXPECT_EQ(preview->GridCellText(1, col), c.cells[col - 1]) << c.line;
  }
}

TEST(TextImport, ReadsUtf16AndRefusesOldSpreadsheets) {
  const TemporaryFolder folder;
  std::string wide = "\xFF\xFE";
  for (const char16_t unit : u"t\t\u00B5A\r\n1\t2\r\n3\t4") {
    if (unit == 0) break;
    wide += static_cast<char>(unit & 0xFF);
    wide += static_cast<char>(unit >> 8);
  }
  Desk desk;
  const auto import = desk.OpenText(folder.Write("wide.txt", wide));
  const auto preview = import->Preview();
  ASSERT_TRUE(preview);
  EXPECT_EQ(RowTexts(*preview, 2), (Texts{"t \xC2\xB5"
                                          "A",
                                          "1 2", "3 4"}));
  const std::string old = folder.Write("old.xls", "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1 and more");
  EXPECT_EQ(desk.OpenText(old), nullptr);
  EXPECT_EQ(desk.User.Last(),
            "refuse: Error importing data from '" + old +
                "'. It is a spreadsheet of type .xls; save it as .xlsx, .ods or .csv and import that.");
}

TEST(TextImport, TakesBlanksAsDelimitersWhereThereIsNothingElse) {
  const TemporaryFolder folder;
  const struct {
    const char* text;
    char decimal;
    bool space;
  } kCases[] = {{"temp  press\n 1   2\n", '.', true},
                {"a b,c d\n1,2\n", '.', false},
                {"a b c\n1\t2 3\n", '.', true},
                {"Run 7 of 9\n1\t2\n3\t4\n", '.', false},
                {"a\tb\n10 000\t2\n", '.', false},
                {"1,5 2,5\n", '.', false},
                {"1,5 2,5\n", ',', true},
                {"1\n2\n", '.', false}};
  for (const auto& c : kCases) {
    Desk desk(1, false, c.decimal);
    const auto import = desk.OpenText(folder.Write("runs.txt", c.text));
    EXPECT_EQ(import->Space, c.space) << c.text;
    EXPECT_EQ(import->DupCheck, c.space) << c.text;
  }
}

TEST(TextImport, TakesADateForTheNumberThatATypedOneIs) {
  const TemporaryFolder folder;
  const std::string text = "day\tvalue\n2020-01-15\t1\n2020/1/16\t2\n2020-02-30\t3\n";
  Desk desk;
  const auto import = desk.OpenText(folder.Write("days.txt", text));
  const auto preview = import->Preview();
  ASSERT_TRUE(preview);
  EXPECT_EQ(preview->GridCellText(2, 1), "2020-01-15");  // as the file has it
  import->Columns.AssignInOrder();
  import->ImportText = "2";
  EXPECT_EQ(import->Finish(desk.Edit()), ImportOutcome::Imported);
  // 15 January 2020 is day 43845: 120 years, 30 leap days (1900 was none, 2020's is to come), 14 days and 2 in front.
  EXPECT_EQ(desk.Rows(), (Texts{"43845 1", "43846 2", "2020-02-30 3"}));
  EXPECT_EQ(desk.Sheet.Cells.GridCellNumber(1, 1), 43845);
}

TEST(TextImport, ReadsTheDatesOfAColumnInTheOrderThatAllOfThemTell) {
  const TemporaryFolder folder;
  const LocaleText us, german{',', ';', '.', '.', ':', DateOrder::DayFirst};
  const struct {
    const char* text;
    const LocaleText& locale;
    Texts rows;
    const char *pattern, *question;
    std::optional<bool> dayFirst = std::nullopt;
  } kCases[] = {
      {"01.02.2026\t1\n31.12.2026\t2\n", us, {"46054 1", "46387 2"}, "dd.mm.yyyy", ""},
      {"01.02.2026\t1\n31.12.2026\t2\n", german, {"46054 1", "46387 2"}, "dd.mm.yyyy", ""},
      {"01/02/2026\t1\n12/31/2026\t2\n", german, {"46024 1", "46387 2"}, "mm/dd/yyyy", ""},
      {"01/02/2026\t1\n02/02/2026\t2\n", us, {"46024 1", "46055 2"}, "mm/dd/yyyy", "01/02/2026"},
      {"01/02/2026\t1\n02/02/2026\t2\n", german, {"46054 1", "46055 2"}, "dd/mm/yyyy", "01/02/2026"},
      {"01/02/2026\t1\n02/02/2026\t2\n", us, {"46054 1", "46055 2"}, "dd/mm/yyyy", "01/02/2026", true},
      {"01.02.2026\t1\n02.02.2026\t2\n", us, {"46054 1", "46055 2"}, "dd.mm.yyyy", "01.02.2026"},
      {"2026-02-01T10:30Z\t1\n2026-02-02\t2\n", us, {"46054.4375 1", "46055 2"}, "yyyy-mm-dd hh:mm", ""},
      {"10:30\t1\n36:00:15.5\t2\n", us, {"0.4375 1", "1.50017939814815 2"}, "[h]:mm:ss.000", ""},
      {"2026-02-01\t1\n5\t2\n", us, {"46054 1", "5 2"}, "General", ""},  // a number that is no date
      {"\"Feb 1\"\t1\n2026-02-30\t2\n", us, {"Feb 1 1", "2026-02-30 2"}, "General", ""},
  };
  for (const auto& c : kCases) {
    Desk desk;
    desk.Locale = c.locale;
    const auto import = desk.OpenText(folder.Write("days.txt", c.text));
    import->Columns.AssignInOrder();
    import->ckDayFirst = c.dayFirst;
    const DateOrderQuestion question = import->AskDateOrder(desk.Locale);
    const std::string asked = c.question;
    EXPECT_EQ(question.Sentence,
              asked.empty() ? "" : "Nothing in column 'Column 1' tells day from month in " + asked + ".");
    EXPECT_EQ(question.DayFirst, !asked.empty() && c.pattern[0] == 'd') << c.text;
    EXPECT_EQ(import->Finish(desk.Edit()), ImportOutcome::Imported);
    EXPECT_EQ(desk.Rows(), c.rows) << c.text;
    EXPECT_EQ(desk.Sheet.Formats[0].NumberFormat, c.pattern) << c.text;
    EXPECT_EQ(desk.Sheet.Formats[1].NumberFormat, "General");
  }
  // A pattern that somebody chose for numbers stays.
  Desk desk;
  desk.Sheet.Formats[0].NumberFormat = "0.00";
  const auto import = desk.OpenText(folder.Write("days.txt", "2026-02-01\t1\n"));
  import->Columns.AssignInOrder();
  EXPECT_EQ(import->Finish(desk.Edit()), ImportOutcome::Imported);
  EXPECT_EQ(desk.Sheet.Formats[0].NumberFormat, "0.00");
}

TEST(DataImport, SuggestsWhatIsObvious) {
  const TemporaryFolder folder;
  const struct {
    const char* text;
    std::size_t firstDataLine;
    Texts headers, named;  // the assignments, and the names that the variables get
  } kCases[] = {
      {"t,p\n1,2\n", 2, {"X: t", "Y: p"}, {"t", "p"}},
      {"made in May\nt,p\ns,Pa\nNA,2\n", 4, {"X: t (s)", "Y: p (Pa)"}, {"t (s)", "p (Pa)"}},
      {"1,2\n3,4\n", 1, {"X: Column 1", "Y: Column 2"}, {"X", "Y"}},
      {"\"made in May\"\n\"t\",\"p of it\"\n\"1.5\",\"2\"\n", 3, {"X: t", "Y: p of it"}, {"t", "p of it"}},
      {"2020-01-15,NA\n2020-01-16,1\n", 1, {"X: Column 1", "Y: Column 2"}, {"X", "Y"}},
      {",p\n1,2\n", 2, {"X: Column 1", "Y: Column 2"}, {"X", "Y"}},
      {"made in May\n1,2\n", 2, {"X: Column 1", "Y: Column 2"}, {"X", "Y"}},
      {"n,t,p\n1,2,3\n", 2, {"X", "Y"}, {"n", "Y"}},
      {"p\n1\n", 2, {"X", "Y"}, {"p", "Y"}},
      {"no,number\nat,all\n", 1, {"X: Column 1", "Y: Column 2"}, {"X", "Y"}},
  };
  for (const auto& c : kCases) {
    Desk desk;
    const auto import = desk.OpenText(folder.Write("runs.txt", c.text));
    const std::size_t line = import->FirstDataLine(desk.Locale);
    EXPECT_EQ(line, c.firstDataLine) << c.text;
    import->ImportText = std::to_string(line);
    import->ReadHeadings(desk.Locale);
    import->Columns.AssignInOrder();
    EXPECT_EQ(import->Columns.lstHeaders(), c.headers) << c.text;
    if (c.headers[0] == "X") import->Columns.Assign(1, 1);
    import->ckHeadings = true;
    EXPECT_EQ(import->Finish(desk.Edit()), ImportOutcome::Imported);
    EXPECT_EQ(desk.Sheet.Headers, c.named) << c.text;
  }
  // Deviations are known by their heading, wherever they stand.
  Desk weighted(2, true);
  const auto sd = weighted.OpenText(folder.Write("sd.txt", "a,y error,b,y\n1,2,3,4\n"));
  sd->ImportText = "2";
  sd->ReadHeadings(weighted.Locale);
  sd->Columns.AssignInOrder();
  EXPECT_EQ(sd->Columns.lstHeaders(), (Texts{"X1: a", "X2: b", "Y: y", "StDev: y error"}));
  // What the user has assigned stays.
  Desk desk;
  const auto import = desk.OpenText(folder.Write("runs.txt", "t,p\n1,2\n"));
  import->Columns.Assign(2, 1);
  import->Columns.AssignInOrder();
  EXPECT_EQ(import->Columns.lstHeaders(), (Texts{"X: Column 2", "Y"}));
  EXPECT_EQ(import->Columns.VariableOf(2), "X");
  EXPECT_EQ(import->Columns.VariableOf(1), "");
}

TEST(DataImport, CountsTheTextsThatItWouldImport) {
  const TemporaryFolder folder;
  const std::string few = folder.Write("few.txt", "x,y,who\n1,NA,Ann\n2020-01-15,-,Bob\n2,n/a,Cy\n3,4,\n");
  const std::string many = folder.Write("many.txt", [] {
    std::string lines;
    for (int i = 1; i <= 999; ++i) lines += "1,2\n";
    return lines + "1,\"so long that it is cut at its twentieth\"\n";
  }());
  struct Case {
    std::string file;
    std::vector<std::size_t> assigned;  // column of each variable
    const char *startRow, *marker;
    const char *sentence, *last;  // the last row, "" where there is nothing to import
  } const kCases[] = {
      {few, {}, "2", "", "6 cells are text: NA, Ann, - and others.", ""},
      {few, {1, 2}, "2", "", "3 cells are text: NA, -, n/a.", "3 4"},
      {few, {1, 2}, "2", "NA", "2 cells are text: -, n/a.", "3 4"},
      {few, {1, 2}, "1", "", "5 cells are text: x, y, NA and others.", "3 4"},
      {few, {1, 2}, "5", "", "", "3 4"},
      {few, {1, 2}, "9", "", "", ""},
      {TestData("airquality.csv"), {1, 4}, "2", "", "44 cells are text: NA.", "223 20"},
      {many, {1, 2}, "1", "", "1 cell is text: so long that it is c...", "1 -"},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.file + ' ' + c.startRow + c.marker);
    Desk desk;
    const auto import = desk.OpenText(c.file);
    for (std::size_t v = 1; v <= c.assigned.size(); ++v) import->Columns.Assign(c.assigned[v - 1], v);
    import->ImportText = c.startRow;
    import->ckMissingData = true;
    import->txtMissingData = c.marker;
    EXPECT_EQ(import->TextsToImport(desk.Locale).Sentence(), c.sentence);
    import->ckTextMissing = true;
    EXPECT_EQ(import->Finish(desk.Edit()) == ImportOutcome::Imported, *c.last != '\0');
    if (*c.last == '\0') continue;
    EXPECT_EQ(desk.User.Said, Texts());
    EXPECT_EQ(desk.Rows().back(), c.last);
    EXPECT_EQ(
        FindTextCells(desk.Sheet.Cells, 1, "", ColumnAssignment(desk.Sheet), {desk.Sheet.Cells, desk.Locale}).Count, 0);
  }
  // What has come in as a text is told with the import.
  Desk desk;
  const auto import = desk.OpenText(few);
  for (const std::size_t i : {1, 2}) import->Columns.Assign(i, i);
  EXPECT_EQ(import->Finish(desk.Edit()), ImportOutcome::Imported);
  EXPECT_EQ(desk.User.Said, Texts{"inform: 5 cells are no numbers, the first of them 'x' in X:1."});
}

TEST(TextImport, ChecksInItsOrder) {
  const TemporaryFolder folder;
  const std::string file = folder.Write("runs.txt", "x,y\n1,10\n2,NA\n3,30\n");
  const struct {
    bool assignX, assignY;
    const char* startRow;
    bool answer;
    ImportOutcome outcome;
    Texts said, rows;
  } kCases[] = {
      {false, false, "9", true, ImportOutcome::Stay, {kNothingAssigned}, {}},
      {true, false, "9", false, ImportOutcome::Stay, {kSomeUnassigned}, {}},
      {true, false, "9", true, ImportOutcome::CorrectStartRow, {kSomeUnassigned, kStartBehindEnd}, {}},
      {true, true, "5", true, ImportOutcome::CorrectStartRow, {kStartBehindEnd}, {}},
      {true, true, "1e300", true, ImportOutcome::CorrectStartRow, {kStartBehindEnd}, {}},
      {true, false, "2", true, ImportOutcome::Imported, {kSomeUnassigned}, {"1 -", "2 -", "3 -"}},
      {false, true, "2", true, ImportOutcome::Imported, {kSomeUnassigned}, {"- 10", "- -", "- 30"}},
      {true, true, "4", true, ImportOutcome::Imported, {}, {"3 30"}},
      {true, true, "3.5", true, ImportOutcome::Imported, {}, {"3 30"}},
      {true, true, "", true, ImportOutcome::Imported, {kTwoTexts}, {"x y", "1 10", "2 -", "3 30"}},
      {true, true, "two", true, ImportOutcome::Imported, {kTwoTexts}, {"x y", "1 10", "2 -", "3 30"}},
      {true, true, "-7", true, ImportOutcome::Imported, {kTwoTexts}, {"x y", "1 10", "2 -", "3 30"}},
  };
  for (const auto& c : kCases) {
    Desk desk;
    desk.User.Answer = c.answer;
    const auto import = desk.OpenText(file);
    if (c.assignX) import->Columns.Assign(1, 1);
    if (c.assignY) import->Columns.Assign(2, 2);
    import->ImportText = c.startRow;
    import->ckMissingData = true;
    import->txtMissingData = "NA";
    EXPECT_EQ(import->Finish(desk.Edit()), c.outcome) << c.startRow;
    EXPECT_EQ(desk.User.Said, c.said);
    EXPECT_EQ(desk.Rows(), c.rows) << c.startRow;
    EXPECT_EQ(desk.Undo.size(), c.outcome == ImportOutcome::Imported ? 1 : 0);
  }
}

TEST(TextImport, ReplacesTheAssignedColumnsAlone) {
  const TemporaryFolder folder;
  const std::string file = folder.Write("new.txt", "7,8\n9,a b\n");
  Desk desk(1, true);
  for (std::size_t row = 1; row <= 4; ++row)
    for (std::size_t col = 1; col <= 3; ++col) desk.Sheet.Cells.SetGridCellNumber(row, col, 1);
  const auto import = desk.OpenText(file);
  import->Columns.Assign(2, 1);
  import->Columns.Assign(1, 3);
  EXPECT_EQ(import->Finish(desk.Edit()), ImportOutcome::Imported);
  EXPECT_EQ(desk.Rows(), (Texts{"8 1 7", "a b 1 9", "- 1 -", "- 1 -"}));
}

TEST(TextImport, ReadsUpTo65536Rows) {
  const TemporaryFolder folder;
  const struct {
    int lines;
    const char* startRow;
    Texts said;
    std::size_t rows;
    double last;
  } kCases[] = {{65'536, "1", {}, 65'536, 65'536},
                {65'537, "2", {}, 65'536, 65'537},
                {65'537, "1", {kTooManyRows}, 65'536, 65'536},
                {200'000, "100001", {kTooManyRows}, 65'536, 165'536},
                {200'000, "200000", {}, 1, 200'000}};
  for (const auto& c : kCases) {
    std::string lines;
    for (int i = 1; i <= c.lines; ++i) lines += std::to_string(i) + '\t' + std::to_string(i * 3) + "\r\n";
    Desk desk;
    const auto import = desk.OpenText(folder.Write("big.txt", lines + "\r\n"));  // a blank line is no data
    import->ImportText = c.startRow;
    import->Columns.Assign(1, 1);
    import->Columns.Assign(2, 2);
    EXPECT_EQ(import->Finish(desk.Edit()), ImportOutcome::Imported);
    EXPECT_EQ(desk.User.Said, c.said) << c.lines;
    EXPECT_EQ(desk.Sheet.Cells.GridLastRow(), c.rows);
    EXPECT_EQ(desk.Sheet.Cells.GridCellNumber(c.rows, 1), c.last);
    EXPECT_EQ(desk.Sheet.Cells.GridCellNumber(c.rows, 2), c.last * 3);
  }
}

TEST(ImportData, AsksAndOpensOrRefuses) {
  const std::string error = "refuse: Error importing data from '";
  const std::string damaged = "'. The file is damaged, or it is no spreadsheet of type .ods or .xlsx.";
  const TemporaryFolder folder;
  const std::string runs = folder.Write("runs.dat", "1\n2\n3"), empty = folder.Write("empty.dat", "");
  const std::string sheets = TestData("spreadsheets/runs.ods"), broken = folder.Write("broken.XLSX", "1,2");
  const std::string missing = folder.Path("missing.dat"), mark = folder.Write("mark.dat", "\xEF\xBB\xBF");
  const struct {
    std::string file;
    bool filled, answer, opens;
    Texts said;
  } kCases[] = {
      {runs, false, false, true, {}},
      {runs, true, true, true, {kOverwrite}},
      {runs, true, false, false, {kOverwrite}},
      {missing, true, false, false, {kOverwrite}},  // asked before the file is looked for
      {missing, false, true, false, {error + missing + "'. The file does not exist."}},
      {folder.Path(""), false, true, false, {error + folder.Path("") + "'. The file cannot be accessed."}},
      {empty, false, true, false, {"refuse: It appears that the file '" + empty + "' contains no data."}},
      {mark, false, true, false, {"refuse: It appears that the file '" + mark + "' contains no data."}},
      {sheets, false, true, true, {}},
      {broken, false, true, false, {error + broken + damaged}},
  };
  for (const auto& c : kCases) {
    Desk desk;
    desk.User.Answer = c.answer;
    if (c.filled) desk.Sheet.Cells.SetGridCellNumber(1, 1, 5);
    EXPECT_EQ(ImportData(c.file, desk.Edit()) != nullptr, c.opens) << c.file;
    EXPECT_EQ(desk.User.Said, c.said);
    EXPECT_EQ(desk.Rows(), c.filled ? Texts{"5 -"} : Texts()) << c.file;
  }
}

TEST(SpreadsheetImport, GoesThroughTheSameSteps) {
  for (const char* name : {"runs.ods", "runs.xlsx"}) {
    const std::string file = TestData(std::string("spreadsheets/") + name);
    Desk desk;
    auto opened = SpreadsheetImport::Open(file, desk.Sheet);
    ASSERT_TRUE(opened) << opened.error();
    SpreadsheetImport& import = **opened;
    EXPECT_EQ(import.Sheets(), (Texts{"Runs", "Second", "Empty one"}));
    EXPECT_EQ(import.ChosenSheet(), "Runs");
    EXPECT_EQ(import.Title(), "Preview of '" + file + "'");
    EXPECT_EQ(import.Preview()->GridCellText(1, 1), "time");
    EXPECT_EQ(import.Columns.lstColumns().size(), 5);
    import.Columns.Assign(1, 1);
    import.Columns.Assign(3, 2);
    import.ImportText = "7";
    EXPECT_EQ(import.Finish(desk.Edit()), ImportOutcome::CorrectStartRow);
    import.ImportText = "2";
    import.ckMissingData = true;
    import.txtMissingData = "4";
    EXPECT_EQ(import.Finish(desk.Edit()), ImportOutcome::Imported);
    EXPECT_EQ(desk.Rows(), (Texts{"1 43845", "2 43846.75", "- -", "- -", "5 0.25"}));
    EXPECT_EQ(desk.User.Said, Texts{kStartBehindEnd});

    EXPECT_FALSE(import.ChooseSheet("None", desk.User));
    EXPECT_EQ(desk.User.Last(), "refuse: Error importing data from '" + file + "'. There is no sheet 'None'.");
    EXPECT_EQ(import.ChosenSheet(), "Runs");
    EXPECT_TRUE(import.ChooseSheet("Second", desk.User));
    EXPECT_EQ(import.Preview()->GridCellText(3, 3), "1");
    EXPECT_EQ(import.Columns.lstHeaders(), (Texts{"X: Column 1", "Y: Column 3"}));
    EXPECT_TRUE(import.ChooseSheet("Empty one", desk.User));
    EXPECT_EQ(import.Preview()->GridLastRow(), 0);
    EXPECT_EQ(import.Finish(desk.Edit()), ImportOutcome::Stay);
    EXPECT_EQ(desk.User.Last(), kNothingAssigned);
  }
}

TEST(SpreadsheetImport, ReadsUpTo65536Rows) {
  const std::string file = TestData("spreadsheets/long.ods");
  Desk desk;
  auto import = SpreadsheetImport::Open(file, desk.Sheet);
  ASSERT_TRUE(import) << import.error();
  EXPECT_EQ((*import)->Title(), "Preview of '" + file + "' (first 200 lines)");
  EXPECT_EQ((*import)->Preview()->GridLastRow(), 200);
  (*import)->Columns.Assign(2, 1);
  (*import)->Columns.Assign(1, 2);
  EXPECT_EQ((*import)->Finish(desk.Edit()), ImportOutcome::Imported);
  EXPECT_EQ(desk.User.Said, Texts{kTooManyRows});
  EXPECT_EQ(desk.Sheet.Cells.GridLastRow(), 65'536);
  (*import)->ImportText = "69999";
  EXPECT_EQ((*import)->Finish(desk.Edit()), ImportOutcome::Imported);
  EXPECT_EQ(desk.Rows(), (Texts{"2 1", "2 1"}));
}

TEST(ConnectString, TakesUserAndPasswordAndIsCalledWithoutThem) {
  const struct {
    const char *source, *user, *password, *connect, *name;
  } kCases[] = {
      {"DSN=lab", "", "", "DSN=lab", "lab"},
      {"DSN=lab", "me", "simple", "DSN=lab;Uid=me;Pwd=simple", "lab"},
      {" Driver=SQLite3;Database=/data/lab.db; ", "", "x", "Driver=SQLite3;Database=/data/lab.db;Pwd=x",
       "/data/lab.db"},
      {"dsn=lab;database=runs", "me", "a;b}c", "dsn=lab;database=runs;Uid=me;Pwd={a;b}}c}", "lab"},
      {"Driver={PostgreSQL Unicode};Pwd={x;DSN=y};Server = box", "", "",
       "Driver={PostgreSQL Unicode};Pwd={x;DSN=y};Server = box", "box"},
      {"Driver={a}}b;c} ;Pwd=x", "", "", "Driver={a}}b;c} ;Pwd=x", "a}b;c"},
      {"secret", "", "", "secret", "database"},
      {"Trusted;DSN=lab", "", "", "Trusted;DSN=lab", "lab"},
      {"Driver={open", "", "", "Driver={open", "open"},
      {"", "me", "", "Uid=me", "database"},
      {" Driver = {a} ; password = x;Server=s; PWD={y;z}}}", "", "",
       "Driver = {a} ; password = x;Server=s; PWD={y;z}}}", "s"},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(ConnectString(c.source, c.user, c.password), c.connect);
    EXPECT_EQ(SourceName(c.source), c.name) << c.source;
    if (*c.source) {
      EXPECT_EQ(SourceName(c.connect), c.name) << c.connect;
    }
  }
}

TEST(MaskPassword, LeavesTheRestAsItIs) {
  const struct {
    const char *connect, *shown;
  } kCases[] = {
      {"DSN=lab;Uid=me;Pwd=simple", "DSN=lab;Uid=me;Pwd=***"},
      {" Driver = {a;Pwd=b} ; password = x;Server=s; PWD={y;z}}};Uid=u;",
       " Driver = {a;Pwd=b} ; password =***;Server=s; PWD=***;Uid=u;"},
      {"Pwd={open;DSN=x", "Pwd=***"},
      {"Pwd", "Pwd"},
      {"lab; Pwd=simple;Trusted;Password=x", "lab; Pwd=***;Trusted;Password=***"},
      {"", ""},
  };
  for (const auto& c : kCases) EXPECT_EQ(MaskPassword(c.connect), c.shown);
}

TEST(DatabaseImport, ReadsATable) {
  const OdbcDatabase lab;
  lab.Query("CREATE TABLE \"my runs\" (x REAL, y REAL)");
  lab.Query("CREATE TABLE many (n INTEGER, m INTEGER)");
  lab.Query("INSERT INTO \"my runs\" VALUES (1, 0.5), (2, -999), (NULL, 1.5)");
  lab.Query(
      "INSERT INTO many WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM c WHERE n < 65540) "
      "SELECT n, n * n FROM c");
  Desk desk;
  DatabaseImport import("lab", lab.ConnectString(), desk.Sheet);
  const auto tables = import.Tables();
  ASSERT_TRUE(tables) << tables.error();
  ASSERT_EQ(tables->size(), 2u);
  EXPECT_EQ(tables->front().Name, "my runs");
  import.Table = tables->front().Quoted;
  EXPECT_EQ(import.Query(), "SELECT * FROM \"my runs\"");
  EXPECT_EQ(import.Preview()->GridLastRow(), 3);
  EXPECT_EQ(import.Finish(desk.Edit()), ImportOutcome::Stay);
  import.Columns.Assign(2, 2);
  import.ckMissingData = true;
  import.txtMissingData = "-999";
  EXPECT_EQ(import.Finish(desk.Edit()), ImportOutcome::Imported);
  EXPECT_EQ(desk.User.Said, (Texts{kNothingAssigned, kSomeUnassignedOfDatabase}));
  EXPECT_EQ(desk.Rows(), (Texts{"- 0.5", "- -", "- 1.5"}));

  import.Columns.Assign(1, 1);
  import.ImportText = "4";  // how long a table is shows where it ends
  EXPECT_EQ(import.Finish(desk.Edit()), ImportOutcome::CorrectStartRow);
  EXPECT_EQ(desk.User.Last(), kStartBehindEnd);
  EXPECT_EQ(desk.Rows(), (Texts{"- 0.5", "- -", "- 1.5"}));
  import.ImportText = "1";
  import.Table = "many";
  EXPECT_EQ(import.Preview()->GridLastRow(), 200);
  EXPECT_EQ(import.Finish(desk.Edit()), ImportOutcome::Imported);
  EXPECT_EQ(desk.User.Last(), kTooManyRows);
  EXPECT_EQ(desk.Sheet.Cells.GridLastRow(), 65'536);
  EXPECT_EQ(desk.Sheet.Cells.GridCellNumber(65'536, 2), 65'536. * 65'536);

  import.Table = "none";
  const auto preview = import.Preview();
  ASSERT_FALSE(preview);
  EXPECT_TRUE(preview.error().starts_with("Error importing data from 'lab'. The query failed")) << preview.error();
  EXPECT_EQ(import.Columns.lstColumns(), Texts());
}

}  // namespace
}  // namespace quorvex
