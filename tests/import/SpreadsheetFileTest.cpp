#include <gtest/gtest.h>
#include <zlib.h>

#include <string>
#include <utility>
#include <vector>

#include "Paths.h"
#include "TemporaryFolder.h"
#include "core/Files.h"
#include "fuzz/Spreadsheet.h"
#include "import/spreadsheet/SpreadsheetFile.h"

namespace quorvex {
namespace {

std::string File(const std::string& name) { return TestData("spreadsheets/" + name); }

std::string Content(const std::string& name) {
  WholeFile file;
  EXPECT_EQ(file.Read(File(name)), 0);
  return std::string(file.Text());
}

// The rows of a sheet: "n:" before numbers, "|" between cells.
std::vector<std::string> Rows(const std::string& file, const std::string& sheet) {
  const Result<GridCells> cells = ReadSheet(file, sheet);
  if (!cells) return {cells.error()};
  GridCells probe = *cells;  // columns taken out show what their cells are
  std::vector<std::string> rows(cells->GridLastRow());
  for (std::size_t col = 1; col <= cells->GridLastCol(); ++col) {
    const std::vector<double> column = probe.TakeColumn(col, rows.size());
    for (std::size_t row = 0; row < rows.size(); ++row) {
      const bool isNumber = !GridCells::IsEmpty(column[row]) && !GridCells::IsText(column[row]);
      rows[row] += (col > 1 ? "|" : "") + std::string(isNumber ? "n:" : "") + cells->GridCellText(row + 1, col);
    }
  }
  return rows;
}

TEST(ReadSheet, ReadsBothFormatsAlike) {
  const struct {
    const char *file, *cellC5;
  } kFiles[] = {{"runs.ods", ""},
                {"runs.xlsx", ""},  // a formula whose result was not saved
                {"office.xlsx", ""},
                {"office.ods", "n:43845"}};  // LibreOffice has worked that formula out
  for (const auto& c : kFiles) {
    const std::string file = File(c.file);
    const auto sheets = ListSheets(file);
    ASSERT_TRUE(sheets) << sheets.error();
    EXPECT_EQ(*sheets, (std::vector<std::string>{"Runs", "Second", "Empty one"})) << file;
    // 15 January 2020 is day 43845: 120 years, 30 leap days (1900 was none, 2020's is to come), 14 days and 2 in front.
    const std::vector<std::string> runs = {"time|signal|when|valid|note",
                                           "n:1|n:0.1|n:43845|n:1|half-life µ",
                                           "n:2|n:-2.5E-08|n:43846.75|n:0|ab",
                                           "||||",
                                           std::string("n:4||") + c.cellC5 + "|n:1|n:7.5",
                                           "n:5|n:123456789.123457|n:0.25||in place"};
    EXPECT_EQ(Rows(file, "Runs"), runs) << file;
    const auto second = Rows(file, "Second");
    EXPECT_EQ(second, (std::vector<std::string>{"|||", "|||", "||n:1|n:2", "||n:3|n:4", "||n:2|", "||n:6|"})) << file;
    EXPECT_EQ(Rows(file, "Empty one"), std::vector<std::string>()) << file;
    EXPECT_EQ(Rows(file, "runs")[0], "Error importing data from '" + file + "'. There is no sheet 'runs'.");
  }
}

TEST(ReadSheet, ReadsNumbersToTheLastBit) {
  for (const char* file : {"runs.ods", "runs.xlsx"}) {
    const auto cells = ReadSheet(File(file), "Runs");
    ASSERT_TRUE(cells) << cells.error();
    EXPECT_EQ(cells->GridCellNumber(6, 2), 123456789.123456789) << file;
    EXPECT_EQ(cells->GridCellNumber(3, 2), -2.5e-8) << file;
  }
}

TEST(ReadSheet, SaysInOneSentenceWhyItCannot) {
  const std::string kDamaged = "The file is damaged, or it is no spreadsheet of type .ods or .xlsx.";
  const TemporaryFolder folder;
  std::string flipped = Content("office.ods");
  flipped[flipped.find("content.xml") + 400] ^= 0x10;
  const struct {
    std::string file, reason;
  } kCases[] = {
      {folder.Path("missing.ods"), "The file does not exist."},
      {folder.Path("no/where.ods"), "The folder does not exist."},
      {folder.Write("empty.xlsx", ""), kDamaged},
      {folder.Write("text.xlsx", "x,y\n1,2\n"), kDamaged},
      {folder.Write("cut.xlsx", Content("runs.xlsx").substr(0, 2000)), kDamaged},
      {folder.Write("begin.ods", Content("runs.ods").substr(500)), kDamaged},
      {folder.Write("flipped.ods", flipped), kDamaged},
      {folder.Write("old.xlsx", Content("protected.xlsx").substr(0, 500)), kDamaged},
      {File("entities.ods"), kDamaged},
      {File("protected.ods"), "The file is protected by a password."},
      {File("protected.xlsx"), "The file is protected by a password."},
      {File("repeated.ods"), "The spreadsheet is too large."},
      {File("endless.ods"), "The spreadsheet is too large."},
      {File("far.xlsx"), "The spreadsheet is too large."},
      {File("rows.xlsx"), "The spreadsheet is too large."},
  };
  for (const auto& c : kCases)
    EXPECT_EQ(Rows(c.file, "Sheet1")[0], "Error importing data from '" + c.file + "'. " + c.reason);
}

TEST(ReadSheet, SurvivesAnyDamage) {
  const TemporaryFolder folder;
  for (const char* name : {"runs.ods", "office.xlsx"}) {
    const std::string good = Content(name);
    for (std::size_t at = 0; at < good.size(); at += 37) {
      std::string bad = good;
      bad[at] = static_cast<char>(bad[at] ^ (at % 255 + 1));
      for (const std::string& content : {bad, good.substr(0, at)}) {
        const std::string file = folder.Write(name, content);
        const auto sheets = ListSheets(file);
        if (sheets) {
          EXPECT_FALSE(sheets->empty());
          ReadSheet(file, sheets->front());
        } else {
          EXPECT_TRUE(sheets.error().starts_with("Error importing data from '")) << sheets.error();
        }
      }
    }
  }
}

// An archive of one entry, content.xml, that unpacks to `opening` and 64 MiB of blanks for each of `pieces`, and takes
// a thousandth of that.
std::string Bomb(const std::string& opening, std::size_t pieces) {
  constexpr std::size_t kBlanks = 1 << 26;
  std::string packed(1 << 20, 0);
  const std::string blanks(kBlanks, ' ');
  z_stream stream{};
  deflateInit2(&stream, 9, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
  const auto pack = [&](const std::string& text) {  // to a whole byte, and with no look back to what was before
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FULL_FLUSH);
    return packed.substr(0, packed.size() - stream.avail_out);
  };
  std::string data = pack(opening);
  const std::string piece = pack(blanks);
  deflateEnd(&stream);
  for (std::size_t i = 0; i < pieces; ++i) data += piece;

  const std::string name = "content.xml";
  const std::string sizes = LittleEndian(0, 4) + LittleEndian(data.size(), 4) + LittleEndian(pieces * kBlanks, 4) +
                            LittleEndian(name.size(), 2);
  const std::string about =
      LittleEndian(20, 2) + LittleEndian(0, 2) + LittleEndian(8, 2) + LittleEndian(0, 4) + sizes + LittleEndian(0, 2);
  const std::string entry = "PK\3\4" + about + name + data;
  const std::string directory = "PK\1\2" + LittleEndian(20, 2) + about + LittleEndian(0, 14) + name;
  return entry + directory + "PK\5\6" + LittleEndian(0, 4) + LittleEndian(1, 2) + LittleEndian(1, 2) +
         LittleEndian(directory.size(), 4) + LittleEndian(entry.size(), 4) + LittleEndian(0, 2);
}

std::string Repeated(const std::string& text, std::size_t times) {
  std::string all;
  while (times-- > 0) all += text;
  return all;
}

// An archive of entries that are not packed, each its name and its content.
std::string Archive(const std::vector<std::pair<std::string, std::string>>& entries) {
  std::string text;
  for (const auto& [name, content] : entries) text += name + '\n' + content + '\0';
  return ArchiveOf(text);
}

// content.xml with a table "Sheet1" of these rows.
std::string OpenDocument(const std::string& rows) {
  return Archive({{"content.xml",
                   "<c xmlns:t='urn:table:1.0' xmlns:o='urn:office:1.0' xmlns:x='urn:text:1.0'>"
                   "<t:table t:name='Sheet1'>" +
                       rows + "</t:table></c>"}});
}

// A workbook whose first sheet is "Sheet1".
std::string OpenXml(const std::string& settings, const std::string& sheets, const std::string& relations,
                    const std::string& styles, const std::string& rows) {
  const std::string office = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
  const auto related = [&](const char* id, const char* type, const char* target) {
    return std::string("<Relationship Id='") + id + "' Type='" + office + type + "' Target='" + target + "'/>";
  };
  return Archive({{"[Content_Types].xml", "<Types/>"},
                  {"_rels/.rels",
                   "<Relationships xmlns='urn:r'>" + related("r", "/officeDocument", "book.xml") + "</Relationships>"},
                  {"book.xml", "<workbook xmlns='urn:m' xmlns:r='" + office + "'>" + settings +
                                   "<sheets><sheet name='Sheet1' r:id='s'/>" + sheets + "</sheets></workbook>"},
                  {"_rels/book.xml.rels", "<Relationships xmlns='urn:r'>" + related("s", "/worksheet", "sheet.xml") +
                                              related("t", "/styles", "styles.xml") + relations + "</Relationships>"},
                  {"styles.xml", "<styleSheet xmlns='urn:m'>" + styles + "</styleSheet>"},
                  {"sheet.xml", "<worksheet xmlns='urn:m'><sheetData>" + rows + "</sheetData></worksheet>"}});
}

// A few bytes may ask for billions of cells or steps. None of these takes as much as a second or 200 MB.
TEST(ReadSheet, BoundsWhatAFileCanAskFor) {
  const TemporaryFolder folder;
  const std::string empty =
      "<t:table-row t:number-rows-repeated='2147483647'>"
      "<t:table-cell o:value-type='string' o:string-value=' ' t:number-columns-repeated='2147483647'/>"
      "<t:table-cell o:value-type='date' o:date-value='' t:number-columns-repeated='2147483647'/></t:table-row>";
  const std::string row = "<t:table-row><t:table-cell o:value-type='float' o:value='7'/></t:table-row>";
  const std::string far =
      "<t:table-row><t:table-cell t:number-columns-repeated='400'/><t:table-cell "
      "o:value-type='float' o:value='7' t:number-columns-repeated='2147483647'/></t:table-row>";
  std::string names;
  for (int i = 0; i < 700'000; ++i) names += "<n" + std::to_string(i) + "/>";
  const std::string tooLarge = "The spreadsheet is too large.";
  const struct {
    const char* what;
    std::string content, reason;  // "" where it is read
  } kCases[] = {
      {"repeated blanks.ods", OpenDocument(row + empty), ""},
      {"behind the last column.ods", OpenDocument(row + far), tooLarge},
      {"nested.ods", OpenDocument(row + Repeated("<t:table-row>", 1'000'000)), tooLarge},
      {"names.ods", OpenDocument(row + names), tooLarge},
      {"tables.ods", OpenDocument(row + "</t:table>" + Repeated("<t:table/>", 100'000) + "<t:table>"), tooLarge},
      {"sheets.xlsx", OpenXml("", Repeated("<sheet name='a' r:id='s'/>", 100'000), "", "", ""), tooLarge},
      {"relations.xlsx", OpenXml("", "", Repeated("<Relationship Id='a' Type='b' Target='c'/>", 100'000), "", ""), ""},
      {"nested.xlsx", OpenXml("", "", "", "", Repeated("<row>", 1'000'000)), tooLarge},
  };
  for (const auto& c : kCases) {
    const std::string file = folder.Write(c.what, c.content);
    const auto sheets = ListSheets(file);
    const auto cells = sheets ? ReadSheet(file, "Sheet1") : Failure{sheets.error()};
    EXPECT_EQ(cells ? "" : cells.error(),
              c.reason.empty() ? "" : "Error importing data from '" + file + "'. " + c.reason);
  }
}

// 1 January 1904 is day 1462; 15 January 2020 is 43845, which counted from there is 42383.
TEST(ReadSheet, CountsDatesFromWhereTheFileDoes) {
  const TemporaryFolder folder;
  const std::string styles =
      "<numFmts><numFmt numFmtId='164' formatCode='yyyy\\-mm\\-dd hh:mm'/>"
      "<numFmt numFmtId='165' formatCode='[hh]:mm:ss'/><numFmt numFmtId='166' formatCode='0.0 &quot;days&quot;'/>"
      "<numFmt numFmtId='167' formatCode='[$-407]mmmm'/><numFmt numFmtId='168' formatCode='mm:ss.0'/></numFmts>"
      "<cellStyleXfs><xf numFmtId='14'/></cellStyleXfs><cellXfs><xf numFmtId='0'/><xf numFmtId='14'/>"
      "<xf numFmtId='164'/><xf numFmtId='165'/><xf numFmtId='166'/><xf numFmtId='167'/><xf numFmtId='168'/>"
      "<xf numFmtId='20'/></cellXfs>";
  std::string row = "<row>";
  for (const char* style : {"0", "1", "2", "3", "4", "5", "6", "7", "99"})
    row += std::string("<c s='") + style + "'><v>42383.5</v></c>";
  row += "<c s='1' t='d'><v>2020-01-15</v></c><c s='1' t='str'><v>none</v></c></row>";
  const std::string same = "n:42383.5|", moved = "n:43845.5|", rest = "n:43845|none";
  const struct {
    const char* settings;
    std::string shown;
  } kCases[] = {
      {"<workbookPr date1904='1'/>", same + moved + moved + same + same + moved + same + same + same + rest},
      {"<workbookPr date1904='true'/>", same + moved + moved + same + same + moved + same + same + same + rest},
      {"<workbookPr date1904='0'/>", Repeated(same, 9) + rest},
      {"", Repeated(same, 9) + rest},
  };
  for (const auto& c : kCases) {
    const std::string file = folder.Write("dates.xlsx", OpenXml(c.settings, "", "", styles, row));
    EXPECT_EQ(Rows(file, "Sheet1"), std::vector<std::string>{c.shown}) << c.settings;
    EXPECT_EQ(ReadSheet(file, "Sheet1")->DatePatterns,
              (std::vector<std::string>{"", "yyyy-mm-dd", "yyyy-mm-dd hh:mm", "[h]:mm:ss", "", "yyyy-mm-dd", "hh:mm:ss",
                                        "hh:mm", "", "yyyy-mm-dd", ""}));
  }
}

TEST(ReadSheet, UnpacksNoMoreThanItMust) {
  const TemporaryFolder folder;
  const struct {
    const char* opening;
    std::size_t pieces;
  } kCases[] = {{"<t>", 10}, {"<t a='", 2}};  // a long text, and a tag, which the parser would hold whole
  for (const auto& c : kCases) {
    const std::string file = folder.Write("bomb.ods", Bomb(c.opening, c.pieces));
    EXPECT_EQ(ListSheets(file).error(), "Error importing data from '" + file + "'. The spreadsheet is too large.");
  }
}

}  // namespace
}  // namespace quorvex
