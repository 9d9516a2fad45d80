// What an import makes of the text it is given before the user says anything: comments, headings, units, where the data
// begins, and which commas are decimal ones.

#include <gtest/gtest.h>

#include "Paths.h"
#include "RecordingPrompter.h"
#include "RowTexts.h"
#include "TemporaryFolder.h"
#include "import/TextImport.h"
#include "import/UnitNames.h"
#include "import/spreadsheet/SpreadsheetImport.h"
#include "sheet/DecimalCommas.h"

namespace quorvex {
namespace {

using Texts = std::vector<std::string>;

// A text that is imported as it is proposed.
struct Proposed {
  explicit Proposed(const std::string& text, char decimal = '.') {
    Locale.DecimalSeparator = decimal;
    Import = std::move(*TextImport::Open(Folder.Write("runs.txt", text), Sheet, Locale));
    Read();
  }
  void Read() {
    EXPECT_TRUE(Import->Preview());
    Import->ImportText = std::to_string(Import->FirstDataLine(Locale));
    Import->ReadHeadings(Locale);
  }
  // All columns, into as many variables.
  Texts Rows() {
    const std::size_t columns = Import->Columns.lstColumns().size();
    DataSheet sheet(std::max<std::size_t>(columns, 2) - 1, false);
    TextImport import = *Import;
    import.Columns = ColumnAssignment(sheet);
    import.Columns.SetColumns(columns);
    for (std::size_t col = 1; col <= columns; ++col) import.Columns.Assign(col, col);
    RecordingPrompter user;
    EXPECT_EQ(import.Finish({sheet, Locale, user, {}, [](const UndoLabel&, const CellRange&) {}}),
              ImportOutcome::Imported);
    return RowTexts(sheet.Cells, columns);
  }

  TemporaryFolder Folder;
  DataSheet Sheet{1, false};
  LocaleText Locale;
  std::unique_ptr<TextImport> Import;
};

TEST(TextImport, TakesEachLineForWhatItIs) {
  const struct {
    const char* text;
    const char* firstLine;
    Texts columns, rows;
    std::size_t comments = 0;
  } kCases[] = {
      // Comments, in front, between and behind; headings in them, and below.
      {"# made in May\n# x y sd\n1 2 3\n4 5 6\n", "3", {"x", "y", "sd"}, {"1 2 3", "4 5 6"}, 2},
      {"# made in May\nx,y\n1,2\n# a pause, of 5 min\n3,4\n", "3", {"x", "y"}, {"1 2", "3 4"}, 2},
      {"% t\tv\n%\n\n1\t2\n3\t4\n% end", "4", {"t", "v"}, {"1 2", "3 4"}, 3},
      {"// t, v\n1, 2\n//3, 4\n5, 6\n", "2", {"t", "v"}, {"1 2", "5 6"}, 2},
      {"; t v\n1,2\n", "2", {"t", "v"}, {"1 2"}, 1},
      {"! one\n! two words\n1 2\n", "3", {"two", "words"}, {"1 2"}, 2},
      {"  # x y\n\t# s V\n1 2\n", "3", {"x (s)", "y (V)"}, {"1 2"}, 2},
      {"\"lamp off, 20 C\"\nx,y\n1,2\n\"lamp on\"\n3,4\n", "3", {"x", "y"}, {"1 2", "3 4"}, 2},
      {"x,y\n# s,V\n\n1,2\n", "4", {"x (s)", "y (V)"}, {"1 2"}, 1},
      // Signs that are none of a comment.
      {"#,x,y\n1,2,3\n2,4,5\n", "2", {"#", "x", "y"}, {"1 2 3", "2 4 5"}, 1},
      {"x,y\n#N/A,1\n2,3\n4,#DIV/0!\n", "2", {"x", "y"}, {"#N/A 1", "2 3", "4 #DIV/0!"}},
      {"#1,2\n#2,3\n5,6\n", "3", {"Column 1", "Column 2"}, {"5 6"}, 2},
      {"#1,2\n#2,3\n", "1", {"Column 1", "Column 2"}, {"#1 2", "#2 3"}},
      {";1;2\n;3;4\n1;5;6\n", "1", {"Column 1", "Column 2", "Column 3"}, {"- 1 2", "- 3 4", "1 5 6"}},
      {"\"a\"\n\"b\"\n3\n", "3", {"b"}, {"3"}},
      // What instruments write above their numbers.
      {"Model,XY 3000\nSerial,12345\nDate,2020-01-15\n\ntime,volts\ns,mV\n0,1.5\n1,1.25\n2,1\n3,0.5\n4,0.25\n5,0\n",
       "7",
       {"time (s)", "volts (mV)"},
       {"0 1.5", "1 1.25", "2 1", "3 0.5", "4 0.25", "5 0"}},
      {"Serial,12345\nsample,value\na,1\nb,2\n", "3", {"sample", "value"}, {"a 1", "b 2"}},
      {"2,2\nx,y\n1,2\n3,4\n", "3", {"x", "y"}, {"1 2", "3 4"}},
      {"Measured on 15 May at 25 C\n\nt  p\n(s)  [Pa]\n1  2\n3  4\n", "5", {"t (s)", "p [Pa]"}, {"1 2", "3 4"}},
      {"x,y\n\n\n1,2\n", "4", {"x", "y"}, {"1 2"}},
      // Lines that are data, whatever words are in them.
      {"x,y\nNA,1\n2,-\n3,4\n", "2", {"x", "y"}, {"NA 1", "2 -", "3 4"}},
      {"NA,1\nNA,NA\n3,4\n5,6\n7,8\n", "1", {"Column 1", "Column 2"}, {"NA 1", "NA NA", "3 4", "5 6", "7 8"}},
      {"1,2\n3,4\nbad,data\n5,6\n7,8\n", "1", {"Column 1", "Column 2"}, {"1 2", "3 4", "bad data", "5 6", "7 8"}},
      {"x,y\n1,low\n<2,5\n3,4\n5,6\n7,8\n", "2", {"x", "y"}, {"1 low", "<2 5", "3 4", "5 6", "7 8"}},
      {"x,y\n1,2\nx,y\n3,4\n5,6\n", "2", {"x", "y"}, {"1 2", "x y", "3 4", "5 6"}},
      {"T,V\n1,2\n", "2", {"T", "V"}, {"1 2"}},
      {"x,y\n", "1", {"Column 1", "Column 2"}, {"x y"}},
      {"1\t 2  3\n4\t5  6\n", "1", {"Column 1", "Column 2", "Column 3"}, {"1 2 3", "4 5 6"}},
      {"a,b\r1,2\r3,4\r", "2", {"a", "b"}, {"1 2", "3 4"}},
      // Quotes with line ends in them.
      {"\"t\n(s)\",\"p\r\nin, \"\"Pa\"\"\"\n1,2\n\"3\n\",4\n", "2", {"t (s)", "p in, \"Pa\""}, {"1 2", "3 4"}},
      {"\"open,y\n1,2\n3,4\n", "2", {"\"open", "y"}, {"1 2", "3 4"}},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.text);
    Proposed proposed(c.text);
    EXPECT_EQ(proposed.Import->ImportText, c.firstLine);
    EXPECT_EQ(proposed.Import->Columns.lstColumns(), c.columns);
    EXPECT_EQ(proposed.Rows(), c.rows);
    EXPECT_EQ(proposed.Import->CommentCount(), c.comments);
  }
}

TEST(TextImport, ShowsCommentsAndTakesThemForDataIfTold) {
  Proposed proposed("# made, in May\nx,y\n1,2\n#3,4\n");
  TextImport& import = *proposed.Import;
  EXPECT_EQ(RowTexts(*import.Preview(), 2), (Texts{"# made, in May -", "x y", "1 2", "#3,4 -"}));
  EXPECT_TRUE(import.IsComment(4) && !import.IsComment(3));
  EXPECT_EQ(import.CommentSentence(), "2 lines are comments: # made, in May.");
  EXPECT_EQ(import.TextsToImport(proposed.Locale).Count, 0);
  import.ckComments = false;
  EXPECT_EQ(RowTexts(*import.Preview(), 2), (Texts{"# made in May", "x y", "1 2", "#3 4"}));
  EXPECT_FALSE(import.IsComment(4));
  EXPECT_EQ(import.TextsToImport(proposed.Locale).Count, 1);
  EXPECT_EQ(proposed.Rows(), (Texts{"1 2", "#3 4"}));
}

TEST(TextImport, KeepsAllRowsBesideManyComments) {
  std::string text;
  for (int i = 1; i <= 65'536; ++i) text += std::to_string(i) + ",1\n# " + std::to_string(i) + '\n';
  text.insert(0, "# x y\n");
  Proposed fewer(text + "1,2\n3,4\n5,6\n");
  EXPECT_EQ(fewer.Import->CommentCount(), 65'537);
  const Texts rows = fewer.Rows();
  ASSERT_EQ(rows.size(), 65'536);
  EXPECT_EQ(rows.back(), "65536 1");
}

TEST(TextImport, OffersDecimalCommasByWholeColumns) {
  const std::string commas = "The numbers have decimal commas: ", columns = "Commas separate the columns: ";
  const struct {
    const char* text;
    char decimal;
    std::string notice;   // "" for none
    Texts columns, rows;  // once it is taken
  } kCases[] = {
      {"t;p\n0;0,5\n20;0,0012\n", '.', commas + "0,5.", {"t", "p"}, {"0 0.5", "20 0.0012"}},
      {"1,5\t2,5\nNA\t3\n", '.', commas + "1,5.", {"Column 1", "Column 2"}, {"1.5 2.5", "NA 3"}},
      {"# x y\n1,5  2,5\n2  3,5\n", '.', commas + "1,5.", {"x", "y"}, {"1.5 2.5", "2 3.5"}},
      {"y\n1,5\n2,5\n", '.', commas + "1,5.", {"y"}, {"1.5", "2.5"}},
      {"t;p\n1,5E3;-,5\n2;1\n", '.', commas + "1,5E3.", {"t", "p"}, {"1500 -0.5", "2 1"}},
      // Cells that are no decimal commas, or not all of them.
      {"1;0,5;NA\n2;1.5;3\n3;2,5;4\n", '.', "", {}, {}},
      {"1,234;5.6\n2,345;7\n", '.', "", {}, {}},
      {"5;6,7\n1;2,3,4\n", '.', "", {}, {}},
      {"1, 2, 3\n4, 5, 6\n", '.', "", {}, {}},
      {"1,5\n2,5\n", '.', "", {}, {}},
      {"made in May\n1,5\n2,5\n", '.', "", {}, {}},
      {"x,y\n1,2\n", '.', "", {}, {}},
      {"t;p\n0;0,5\n", ',', "", {}, {}},
      // The other way round.
      {"speed,dist\n4,2\n4,10\n", ',', columns + "4,2.", {"speed", "dist"}, {"4 2", "4 10"}},
      {"1,2,3\n4,5,6\n", ',', columns + "1,2,3.", {"Column 1", "Column 2", "Column 3"}, {"1 2 3", "4 5 6"}},
      {"0,1.5\n1,2.5\n", ',', columns + "0,1.5.", {"Column 1", "Column 2"}, {"0 1.5", "1 2.5"}},
      {"4,2\n4,10\n", ',', "", {}, {}},
      {"x\n4,2\n4,10\n", ',', "", {}, {}},
      {"1.5\t2,5\n", ',', "", {}, {}},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.text);
    Proposed proposed(c.text, c.decimal);
    auto offer = proposed.Import->Offer(proposed.Locale);
    EXPECT_EQ(offer ? offer->Notice : "", c.notice);
    if (!offer || c.notice.empty()) continue;
    proposed.Import->TakeOffer(proposed.Locale);
    proposed.Read();
    EXPECT_FALSE(proposed.Import->Offer(proposed.Locale));
    EXPECT_EQ(proposed.Import->Columns.lstColumns(), c.columns);
    EXPECT_EQ(proposed.Rows(), c.rows);
  }
}

TEST(SpreadsheetImport, OffersDecimalCommasOfTexts) {
  DataSheet sheet(1, false);
  LocaleText locale;
  auto import = std::move(*SpreadsheetImport::Open(TestData("spreadsheets/commas.ods"), sheet));
  ASSERT_TRUE(import->Preview());
  import->ImportText = std::to_string(import->FirstDataLine(locale));
  import->ReadHeadings(locale);
  EXPECT_EQ(import->Columns.lstColumns(), (Texts{"t", "p", "note"}));
  LocaleText commas;
  commas.DecimalSeparator = ',';
  EXPECT_FALSE(import->Offer(commas));  // they are numbers there
  const auto offer = import->Offer(locale);
  ASSERT_TRUE(offer);
  EXPECT_EQ(offer->Notice, "The numbers have decimal commas: 1,5.");
  import->TakeOffer(locale);
  EXPECT_FALSE(import->Offer(locale));
  const auto preview = import->Preview();
  EXPECT_EQ(RowTexts(*preview, 2), (Texts{"t p", "0.5 1.5", "1.5 -0.25", "2 NA"}));
  EXPECT_EQ(preview->GridCellText(3, 3), "1,5");  // in a column of other texts
}

TEST(IsUnit, KnowsUnitsFromNames) {
  for (const char* unit : {"s", "mV", "(any)", "[arb]", "-", "kg*m^2", "mol/l", "m s-1", "1/s",
                           "\xC2\xB5"
                           "A",
                           "%", "keV", "Pa"})
    EXPECT_TRUE(IsUnit(unit)) << unit;
  for (const char* name : {"", "time", "x", "y", "sd", "volts", "speed", "dist", "energy", "T1x", "Ozone", "()"})
    EXPECT_FALSE(IsUnit(name)) << name;
  EXPECT_EQ(WithUnit("t", "s"), "t (s)");
  EXPECT_EQ(WithUnit("t", " [s] "), "t [s]");
  EXPECT_EQ(WithUnit("n", "-"), "n");
}

}  // namespace
}  // namespace quorvex
