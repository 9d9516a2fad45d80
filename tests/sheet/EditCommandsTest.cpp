#include <gtest/gtest.h>

#include "RecordingClipboard.h"
#include "sheet/CellEntry.h"
#include "sheet/EditCommands.h"
#include "sheet/EditedSheet.h"
#include "sheet/PasteSpecial.h"
#include "sheet/PointsNeeded.h"
#include "sheet/TypeInCell.h"

namespace quorvex {
namespace {

using Command = std::function<bool(const SheetEdit&, Clipboard&)>;
using Said = std::vector<std::string>;

const Command kRotated = [](const SheetEdit& edit, Clipboard& board) {
  return PasteSpecial(edit, board.Text(), CellOrder::Rotated);
};
const Command kPasteSpecial = [](const SheetEdit& edit, Clipboard& board) {
  return PasteSpecial(edit, board.Text(), CellOrder::Kept);
};
const Command kCopyRotated = [](const SheetEdit& edit, Clipboard& board) {
  const auto text = CopySpecial(edit, CellOrder::Rotated);
  if (text) board.SetText(*text);
  return text.has_value();
};
const Command kClear = [](const SheetEdit& edit, Clipboard&) { return ClearSelection(edit); };
const Command kInsert = [](const SheetEdit& edit, Clipboard&) { return InsertRows(edit); };
const Command kDelete = [](const SheetEdit& edit, Clipboard&) { return DeleteSelection(edit); };
const Command kIncomplete = [](const SheetEdit& edit, Clipboard&) { return DeleteIncompleteRows(edit); };
const Command kClearGrid = [](const SheetEdit& edit, Clipboard&) { return ClearGrid(edit); };

constexpr std::size_t kEnd = kMostSheetRows;
constexpr CellRange kCorner{1, 1, 1, 1};

TEST(EditCommands, RefuseSeveralRangesEachByItsName) {
  const struct {
    const char* name;
    Command command;
  } kCases[] = {
      {"Cut", EditCut},
      {"Copy", EditCopy},
      {"Paste", EditPaste},
      {"Paste Special", kPasteSpecial},
      {"Copy Special", kCopyRotated},
      {"Clear", kClear},
      {"Insert", kInsert},
      {"Delete", kDelete},
  };
  for (const auto& c : kCases) {
    for (const std::vector<CellRange>& selection :
         {std::vector<CellRange>{}, std::vector<CellRange>{{1, 1, 1, 1}, {2, 2, 2, 2}}}) {
      EditedSheet sheet("1 2\n3 4");
      RecordingClipboard board;
      board.Held = "7";
      EXPECT_FALSE(c.command(sheet.With(selection), board)) << c.name;
      EXPECT_EQ(sheet.User.Said, Said{"refuse: Invalid range selection. The '" + std::string(c.name) +
                                      "' command cannot be used on multiple selections."});
      EXPECT_TRUE(sheet.Untouched());
      EXPECT_EQ(board.Held, "7");
    }
  }
}

TEST(EditCommands, ChangeTheSheetUnderTheirLabels) {
  const struct {
    Command command;
    const char* before;
    CellRange selection;
    const char* clipboard;
    const char* after;
    const char* label;
    CellRange extent;
    const char* held = nullptr;  // by the clipboard afterwards, where that is new
  } kCases[] = {
      {EditCut, "1 2\n3 4\n5 6", {2, 1, 3, 1}, "", "1 2\n- 4\n- 6\n", "Cut", {2, 1, 3, 1}, "3\r\n5\r\n"},
      {EditPaste, "1 2\n3 4\n5 6", {2, 1, 2, 1}, "7\t\n\t8\n", "1 2\n7 -\n- 8\n", "Paste", {2, 1, 3, 2}},
      // The third column and what is selected below the corner have no part in it; a text stays one, a date is days.
      {EditPaste, "1 2", {1, 2, 9, 2}, "2000-01-01\t5\r\nx\t5", "1 36526\n- x\n", "Paste", {1, 2, 2, 2}},
      {kRotated, "1 2", kCorner, "7\t8\t9\n-\t\t3\n", "7 -\n8 -\n9 3\n", "Paste Rotated", {1, 1, 3, 2}},
      {kRotated, "1 2\n3 4\n5 6", {1, 2, 1, 2}, "7\t8\n1\t2\t3\n", "1 7\n3 8\n5 6\n", "Paste Rotated", {1, 2, 2, 2}},
      {kPasteSpecial, "1 2", {2, 1, 2, 1}, "3\t4\t5\n", "1 2\n3 4\n", "Paste Special", {2, 1, 2, 2}},
      {kClear, "1 2\nt 4", {1, 1, kEnd, 1}, "", "- 2\n- 4\n", "Clear Selection", {1, 1, kEnd, 1}},
      {kInsert, "1 2\n3 4", {2, 2, 3, 2}, "", "1 2\n- -\n- -\n3 4\n", "Insert Row(s)", {2, 2, 3, 2}},
      {kDelete, "1 2\n3 4\n5 6", {1, 2, 2, 2}, "", "5 6\n", "Delete Selection", {1, 2, 2, 2}},
      {kDelete, "1 2\n3 4", {2, 1, kEnd, 1}, "", "1 2\n", "Delete Selection", {2, 1, 2, 1}},
      {kIncomplete, "1 2\n- 4\n5 -\n- -\nt 6", kCorner, "", "1 2\n- -\nt 6\n", "Delete Incomplete Rows", {1, 1, 5, 2}},
      {kClearGrid, "1 2\nt 4", kCorner, "", "", "Clear Sheet", {1, 1, 2, 2}},
  };
  for (const auto& c : kCases) {
    EditedSheet sheet(c.before);
    RecordingClipboard board;
    board.Held = c.clipboard;
    EXPECT_TRUE(c.command(sheet.With({c.selection}), board)) << c.label;
    EXPECT_EQ(sheet.Cells(), c.after) << c.label;
    EXPECT_EQ(sheet.Undo, (Snapshots{{std::string("&Undo ") + c.label, c.extent}})) << c.label;
    EXPECT_EQ(sheet.WhenRemembered, std::string(c.before) + "\n") << c.label;
    EXPECT_EQ(board.Held, c.held != nullptr ? c.held : c.clipboard) << c.label;
  }
}

TEST(EditCommands, LeaveTheSheetAloneWhereThereIsNothingToDo) {
  const std::string full =
      "refuse: The maximum number of rows that the spreadsheet can contain is 65,536. The number of selected rows "
      "cannot be inserted.";
  const struct {
    Command command;
    CellRange selection;
    const char* clipboard;
    Said said;
  } kCases[] = {
      {EditPaste, kCorner, "", {}},
      {EditPaste, {1, 3, 1, 3}, "5", {}},
      {kDelete, {3, 1, 9, 1}, "", {}},
      {kIncomplete, kCorner, "", {"inform: There were no incomplete rows to delete."}},
      {kInsert, {1, 1, 65'534, 1}, "", {full}},
      {kClearGrid, kCorner, "", {"ask: This operation will clear all existing data. \r\nDo you want to continue?"}},
  };
  for (const auto& c : kCases) {
    EditedSheet sheet("1 2\n3 4");
    sheet.User.Answer = false;
    RecordingClipboard board;
    board.Held = c.clipboard;
    EXPECT_FALSE(c.command(sheet.With({c.selection}), board));
    EXPECT_EQ(sheet.User.Said, c.said);
    EXPECT_TRUE(sheet.Untouched());
  }
}

TEST(InsertRows, LeavesTheLastRowOfTheGridFree) {
  const struct {
    std::size_t used, selected;
    bool fits;
  } kCases[] = {{65'534, 1, true}, {65'535, 1, false}, {65'536, 1, false}, {2, 65'533, true}, {2, 65'534, false}};
  for (const auto& c : kCases) {
    EditedSheet sheet("");
    sheet.Sheet.Cells.SetGridCellNumber(c.used, 1, 1);
    EXPECT_EQ(InsertRows(sheet.With({{1, 1, c.selected, 1}})), c.fits) << c.used << " " << c.selected;
    EXPECT_EQ(sheet.Sheet.Cells.GridLastRow(), c.used + (c.fits ? c.selected : 0));
    EXPECT_EQ(sheet.User.Said.size(), c.fits ? 0u : 1u);
  }
}

TEST(DeleteIncompleteRows, LooksAtAllXAndYButNotAtDeviations) {
  EditedSheet sheet("1 2 3 -\n1 - 3 4\n1 2 - 4\n- - - 4\n- 2 - -\n5 6 7 8", 2, true);
  EXPECT_TRUE(DeleteIncompleteRows(sheet.With({})));
  EXPECT_EQ(sheet.Cells(), "1 2 3 -\n- - - 4\n5 6 7 8\n");
  EXPECT_EQ(sheet.User.Said, Said{"inform: 3 incomplete rows were deleted."});
}

TEST(EditCopy, WritesWhatPasteReadsBackInTheLocale) {
  EditedSheet sheet("0.1 -1E-300\ntext -\n- 7");
  sheet.Locale = {',', ';', '.', '.', ':'};
  const double third = 1.0 / 3;
  sheet.Sheet.Cells.SetGridCellNumber(3, 1, third);
  RecordingClipboard board;
  EXPECT_TRUE(EditCopy(sheet.With({{1, 1, 3, 2}}), board));
  EXPECT_EQ(board.Held, "0,1\t-1E-300\r\ntext\t\r\n0,3333333333333333\t7\r\n");
  const std::string cells = sheet.Cells();
  EXPECT_TRUE(kCopyRotated(sheet.With({{1, 1, 3, 2}}), board));
  EXPECT_EQ(board.Held, "0,1\ttext\t0,3333333333333333\r\n-1E-300\t\t7\r\n");
  sheet.Sheet.Cells = GridCells();
  EXPECT_TRUE(kRotated(sheet.With({{1, 1, 1, 1}}), board));
  EXPECT_EQ(sheet.Cells(), cells);
  EXPECT_EQ(sheet.Sheet.Cells.GridCellNumber(3, 1), third);
}

TEST(CopyGrid, TakesTheSheetAsFarAsItIsUsed) {
  EditedSheet sheet("1 -\n- t\tu");
  RecordingClipboard board;
  EXPECT_TRUE(CopyGrid(sheet.With({}), board));
  EXPECT_EQ(board.Held, "1\t\r\n\tt u\r\n");
  EXPECT_TRUE(EditCopy(sheet.With({{2, 2, kMostSheetRows, 2}}), board));
  EXPECT_EQ(board.Held, "t u\r\n");  // a tab would make two cells of it
  EXPECT_TRUE(EditCopy(sheet.With({{2, 1, 3, 1}}), board));
  EXPECT_EQ(board.Held, "\r\n\r\n");
  EXPECT_FALSE(CopyGrid(EditedSheet("").With({}), board));
}

TEST(EditPaste, StopsAtTheLastRow) {
  EditedSheet sheet("");
  RecordingClipboard board;
  board.Held = "1\n2\n3\n";
  EXPECT_TRUE(EditPaste(sheet.With({{kMostSheetRows - 1, 1, kMostSheetRows - 1, 1}}), board));
  EXPECT_EQ(sheet.Sheet.Cells.GridLastRow(), kMostSheetRows);
  EXPECT_EQ(sheet.Sheet.Cells.GridCellNumber(kMostSheetRows, 1), 2);
}

TEST(TypeInCell, TakesNumbersDatesAndNothing) {
  const struct {
    const char *text, *cells, *label;
  } kCases[] = {
      {" 2,5 ", "2.5 2\n", "&Undo Typing \" 2,5 \" in X:1"},
      {"", "- 2\n", "&Undo Typing \"\" in X:1"},
      {"2026.11.21", "46347 2\n", "&Undo Typing \"2026.11.21\" in X:1"},
      {"1", "1 2\n", nullptr},  // it stands there already
  };
  for (const auto& c : kCases) {
    EditedSheet sheet("1 2");
    sheet.Locale = {',', ';', '.', '.', ':'};
    EXPECT_TRUE(TypeInCell(sheet.With({}), 1, 1, c.text));
    EXPECT_EQ(sheet.Cells(), c.cells) << c.text;
    ASSERT_EQ(sheet.Undo.size(), c.label ? 1u : 0u) << c.text;
    if (!c.label) continue;
    EXPECT_EQ(sheet.Undo[0].first, c.label);
    EXPECT_EQ(sheet.Undo[0].second, (CellRange{1, 1, 1, 1}));
  }
}

// A date shows as one where nobody chose a pattern and no number would turn into a date.
TEST(TypeInCell, ShowsADateAsOne) {
  const LocaleText german{',', ';', '.', '.', ':', DateOrder::DayFirst};
  const struct {
    const char *before, *format, *text;
    const LocaleText& locale;
    const char *cells, *pattern;
  } kCases[] = {
      {"- 2", "General", "22.11.2026", german, "46348 2\n", "dd.mm.yyyy"},
      {"1 2", "General", "2026-11-22", german, "46348 2\n", "yyyy-mm-dd"},
      {"- 2", "General", "11/22/2026 10:30", LocaleText(), "46348.4375 2\n", "mm/dd/yyyy hh:mm"},
      {"- 2", "General", "10:30:00", LocaleText(), "0.4375 2\n", "hh:mm:ss"},
      {"- 2", "General", "36:00", LocaleText(), "1.5 2\n", "[h]:mm"},
      {"- 2\n7 3", "General", "2026-11-22", LocaleText(), "46348 2\n7 3\n", "General"},
      {"- 2\ntext 3", "General", "2026-11-22", LocaleText(), "46348 2\ntext 3\n", "yyyy-mm-dd"},
      {"- 2", "0.00", "2026-11-22", LocaleText(), "46348 2\n", "0.00"},
      {"- 2", "hh:mm", "2026-11-22", LocaleText(), "46348 2\n", "hh:mm"},
  };
  for (const auto& c : kCases) {
    EditedSheet sheet(c.before);
    sheet.Locale = c.locale;
    sheet.Sheet.Formats[0].NumberFormat = c.format;
    EXPECT_TRUE(TypeInCell(sheet.With({}), 1, 1, c.text));
    EXPECT_EQ(sheet.Cells(), c.cells) << c.text;
    EXPECT_EQ(sheet.Sheet.Formats[0].NumberFormat, c.pattern) << c.text;
    EXPECT_EQ(sheet.Sheet.Formats[1].NumberFormat, "General");
    EXPECT_EQ(sheet.Undo.size(), 1u);
    // The editor opens with a text that changes nothing.
    EXPECT_TRUE(TypeInCell(sheet.With({}), 1, 1, EntryText(sheet.Sheet, 1, 1, sheet.Locale)));
    EXPECT_EQ(sheet.Undo.size(), 1u) << c.text;
  }
}

TEST(EditCommands, CopyAndPasteDatesToTheBit) {
  const LocaleText german{',', ';', '.', '.', ':', DateOrder::DayFirst};
  for (const LocaleText& locale : {LocaleText(), german}) {
    for (const char* pattern : {"General", "dd.mm.yyyy", "mm/dd/yyyy hh:mm", "hh:mm:ss.000", "[h]:mm", "mmm yyyy"}) {
      EditedSheet sheet("46348 46348.4375\n0.1 1.5\n-3.25 2958465.9999999884\n46348.000000000007 1E9");
      sheet.Locale = locale;
      for (ColumnFormat& format : sheet.Sheet.Formats) format.NumberFormat = pattern;
      RecordingClipboard board;
      const CellRange all{1, 1, 4, 2};
      EditCopy(sheet.With({all}), board);
      EditedSheet other("- -");
      other.Locale = locale;
      EXPECT_TRUE(EditPaste(other.With({{1, 1, 1, 1}}), board));
      for (std::size_t row = 1; row <= 4; ++row)
        for (const std::size_t col : {1u, 2u})
          EXPECT_EQ(other.Sheet.Cells.Cell(row, col), sheet.Sheet.Cells.Cell(row, col)) << pattern << board.Held;
    }
  }
}

TEST(EditCommands, PasteReadsTheDatesOfAColumnAlike) {
  const LocaleText german{',', ';', '.', '.', ':', DateOrder::DayFirst};
  const struct {
    const char* text;
    LocaleText locale;
    const char* cells;
    const char* patterns[2];
    std::vector<std::string> said = {};
  } kCases[] = {
      // A column that holds another number isn't shown as dates.
      {"Tag\t1,5\n22.11.2026\t10:30\n23.11.2026 10:30\t11:00\n",
       german,
       "Tag 1.5\n46348 0.4375\n46349.4375 0.458333333333333\n",
       {"dd.mm.yyyy hh:mm", "General"},
       {"inform: 1 cell is no number: 'Tag' in X:1."}},
      // The 13th tells the order of the 3rd.
      {"03/04/2026\t1\n13/04/2026\t2\n", LocaleText(), "46115 1\n46125 2\n", {"dd/mm/yyyy", "General"}},
      {"03/04/2026\t1\n03/05/2026\t2\n", LocaleText(), "46085 1\n46086 2\n", {"mm/dd/yyyy", "General"}},
      {"22.11.2026\t1\n", LocaleText(), "46348 1\n", {"dd.mm.yyyy", "General"}},
      {"11/22/2026\t1\n", german, "46348 1\n", {"mm/dd/yyyy", "General"}},
      // Times have decimals of their own.
      {"Tag\tTemp\n22.11.2026 10:30\t1,5\n23.11.2026 12:00\t2\n",
       LocaleText(),
       "46348.4375 1.5\n46349.5 2\n",
       {"dd.mm.yyyy hh:mm", "General"},
       {"ask: The numbers have decimal commas: 1,5. Read them as numbers?",
        "ask: The first row holds headings. Use them as column names?"}},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.text);
    EditedSheet sheet("-");
    sheet.Locale = c.locale;
    RecordingClipboard board;
    board.Held = c.text;
    EXPECT_TRUE(EditPaste(sheet.With({{1, 1, 1, 1}}), board));
    EXPECT_EQ(sheet.Cells(), c.cells);
    for (const std::size_t col : {0u, 1u}) EXPECT_EQ(sheet.Sheet.Formats[col].NumberFormat, c.patterns[col]);
    EXPECT_EQ(sheet.User.Said, c.said);
    EXPECT_EQ(sheet.Undo.size(), 1u);
  }
}

TEST(TypeInCell, RefusesAnythingElse) {
  EditedSheet sheet("1 2");
  EXPECT_FALSE(TypeInCell(sheet.With({}), 1, 2, "2001-02-29"));
  EXPECT_EQ(sheet.User.Said, Said{"refuse: Invalid entry."});
  EXPECT_TRUE(sheet.Untouched());
}

TEST(PointsNeeded, AreThreeToSolve) {
  RecordingPrompter user;
  EXPECT_TRUE(EnoughPointsToSolve(3, user));
  EXPECT_TRUE(user.Said.empty());
  EXPECT_FALSE(EnoughPointsToSolve(2, user));
  EXPECT_EQ(user.Last(), "refuse: You need at least 3 data points in order to obtain a solution.");
}

}  // namespace
}  // namespace quorvex
