#include <gtest/gtest.h>

#include "EditedSheet.h"
#include "sheet/DecimalCommas.h"
#include "sheet/PasteSpecial.h"

namespace quorvex {
namespace {

using Columns = std::vector<std::size_t>;

TEST(DecimalCommas, FillAWholeColumn) {
  const struct {
    const char* cells;
    Columns columns;
    const char* example;
  } kCases[] = {
      {"1,5 2\n2 NA\n-0,25E-3 3", {1}, "1,5"},
      {"- 7,5\n2 8\n- nan", {2}, "7,5"},
      {"1,5 +,5\n2,5 -1,25", {1, 2}, "1,5"},
      {"1,5\n2,5x", {}, ""},       // another text
      {"1,5\n1,2,3", {}, ""},      // a list
      {"1,5\n2,", {}, ""},         // a comma at the end
      {"1,5\n2.5", {}, ""},        // a point in the column
      {"1,5 2\n2,5 2.5", {}, ""},  // or in another
      {"12 13\n14 15", {}, ""},
      {"", {}, ""},
  };
  for (const auto& c : kCases) {
    const EditedSheet sheet(c.cells);
    const DecimalCommas commas = FindDecimalCommas(sheet.Sheet.Cells, 1, sheet.Sheet.Cells.GridLastRow());
    EXPECT_EQ(commas.Columns, c.columns) << c.cells;
    EXPECT_EQ(commas.Example, c.example) << c.cells;
  }
  EditedSheet sheet("t p\n1,5 2,5\n2 NA\n-0,25 3,5");
  ReadDecimalCommas(sheet.Sheet.Cells, {1}, 2, 9);
  EXPECT_EQ(sheet.Cells(), "t p\n1.5 2,5\n2 NA\n-0.25 3,5\n");
}

TEST(PasteText, OffersToReadDecimalCommas) {
  const std::string question = "ask: The numbers have decimal commas: 1,5. Read them as numbers?";
  const struct {
    const char* text;
    char decimal;
    bool answer, asks;
    const char* cells;
  } kCases[] = {
      {"1,5\t2\n2,5\t3", '.', true, true, "1.5 2\n2.5 3\n"},
      {"1,5\t2\n2,5\t3", '.', false, true, "1,5 2\n2,5 3\n"},
      {"1,5\t2\n2;5\t3", '.', true, false, "1,5 2\n2;5 3\n"},
      {"1,5\t2\n2,5\t3", ',', true, false, "1.5 2\n2.5 3\n"},
  };
  for (const auto& c : kCases) {
    EditedSheet sheet("");
    sheet.Locale.DecimalSeparator = c.decimal;
    sheet.User.Answer = c.answer;
    EXPECT_TRUE(PasteText(sheet.With({{1, 1, 1, 1}}), c.text, 1, 1, CellOrder::Kept, UndoOperation::Paste));
    EXPECT_EQ(sheet.Cells(), c.cells);
    EXPECT_EQ(std::ranges::count(sheet.User.Said, question), c.asks ? 1 : 0) << c.text;
  }
  // Below headings, and where they become a row.
  EditedSheet sheet("");
  EXPECT_TRUE(PasteText(sheet.WithAll(), "t\tp\n1,5\t2", 1, 1, CellOrder::Kept, UndoOperation::Paste));
  EXPECT_EQ(sheet.Sheet.Cells.GridCellNumber(sheet.Sheet.Cells.GridLastRow(), 1), 1.5);
  EditedSheet rotated("");
  EXPECT_TRUE(PasteText(rotated.WithAll(), "1,5\t2,5\n3\t4", 1, 1, CellOrder::Rotated, UndoOperation::PasteRotated));
  EXPECT_EQ(rotated.Cells(), "1.5 3\n2.5 4\n");
}

}  // namespace
}  // namespace quorvex
