#include <gtest/gtest.h>

#include "EditedSheet.h"
#include "sheet/PasteSpecial.h"

namespace quorvex {
namespace {

using Said = std::vector<std::string>;

TEST(PasteText, TellsOnceWhatIsNoNumberAndWhatIsLeftOut) {
  const std::string kAsks = "ask: The first row holds headings. Use them as column names?";
  const struct {
    const char* text;
    CellPlace at;
    const char* cells;
    const char* headers;  // afterwards
    Said said;
    bool answer = true;
    CellOrder order = CellOrder::Kept;
  } kCases[] = {
      {"1\t2\n3\t4\n", {1, 1}, "1 2\n3 4\n", "X Y", {}},
      {"speed\tdist\n4\t2\n7\t4\n", {1, 1}, "4 2\n7 4\n", "speed dist", {kAsks}},
      {"speed\tdist\n4\t2\n",
       {1, 1},
       "speed dist\n4 2\n",
       "X Y",
       {kAsks, "inform: 2 cells are no numbers, the first of them 'speed' in X:1."},
       false},
      {"dist\n2\n4\n", {2, 2}, "- -\n- 2\n- 4\n", "X dist", {kAsks}},  // the names of the columns it comes to
      {"speed\t4\t7\ndist\t2\t4\n", {1, 1}, "4 2\n7 4\n", "speed dist", {kAsks}, true, CellOrder::Rotated},
      {"day\tozone\n1\t41\n2\tNA\n3\tNA\n",
       {1, 1},
       "1 41\n2 NA\n3 NA\n",
       "day ozone",
       {kAsks, "inform: 2 cells are no numbers, the first of them 'NA' in ozone:2."}},
      {"1\tn/a\n", {1, 1}, "1 n/a\n", "X Y", {"inform: 1 cell is no number: 'n/a' in Y:1."}},
      // No headings: missing values, a title above several columns, texts alone, a number among them.
      {"NA\tNA\n1\t2\n",
       {1, 1},
       "NA NA\n1 2\n",
       "X Y",
       {"inform: 2 cells are no numbers, the first of them 'NA' in X:1."}},
      {"Run1\t\n1\t2\n", {1, 1}, "Run1 -\n1 2\n", "X Y", {"inform: 1 cell is no number: 'Run1' in X:1."}},
      {"a\tb\nc\td\n", {1, 1}, "a b\nc d\n", "X Y", {"inform: 4 cells are no numbers, the first of them 'a' in X:1."}},
      {"a\t5\n1\t2\n", {1, 1}, "a 5\n1 2\n", "X Y", {"inform: 1 cell is no number: 'a' in X:1."}},
      {"1\t2\t3\t\n4\t5\t6\t7\t \n\t\t\t\t\n",
       {1, 1},
       "1 2\n4 5\n",
       "X Y",
       {"inform: 2 columns beyond the project's were left out; Columns in the Data menu makes room for more."}},
      {"1\t2\n3\t4\n",
       {1, 2},
       "- 1\n- 3\n",
       "X Y",
       {"inform: 1 column beyond the project's was left out; Columns in the Data menu makes room for more."}},
      {"1\n2\nx\n",
       {1, 1},
       "1 2\n",
       "X Y",
       {"inform: 1 column beyond the project's was left out; Columns in the Data menu makes room for more."},
       true,
       CellOrder::Rotated},
      {"a text that is quite long\n",
       {1, 1},
       "a text that is quite long -\n",
       "X Y",
       {"inform: 1 cell is no number: 'a text that is quite...' in X:1."}},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.text);
    EditedSheet sheet("");
    sheet.User.Answer = c.answer;
    EXPECT_TRUE(PasteText(sheet.WithAll(), c.text, c.at.Row, c.at.Col, c.order, UndoOperation::Paste));
    EXPECT_EQ(sheet.Cells(), c.cells);
    EXPECT_EQ(sheet.Sheet.Headers[0] + " " + sheet.Sheet.Headers[1], c.headers);
    EXPECT_EQ(sheet.User.Said, c.said);
    EXPECT_EQ(sheet.Undo.size(), 1u);
  }
}

TEST(PasteText, CountsTheRowsBehindTheSheetsLast) {
  EditedSheet sheet("");
  EXPECT_TRUE(
      PasteText(sheet.WithAll(), "1\n2\n3\n4\n\n\n", kMostSheetRows - 1, 1, CellOrder::Kept, UndoOperation::Paste));
  EXPECT_EQ(sheet.User.Said, Said{"inform: 2 rows beyond the sheet's last, 65,536, were left out."});
  // Headings need no row.
  sheet.User.Said.clear();
  EXPECT_TRUE(PasteText(sheet.WithAll(), "t\n1\n2\n", kMostSheetRows - 1, 1, CellOrder::Kept, UndoOperation::Paste));
  EXPECT_EQ(sheet.User.Said.size(), 1u);
  EXPECT_EQ(sheet.Sheet.Cells.GridCellNumber(kMostSheetRows, 1), 2);
}

}  // namespace
}  // namespace quorvex
