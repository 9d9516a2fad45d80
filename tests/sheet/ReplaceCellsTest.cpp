#include <gtest/gtest.h>

#include <optional>

#include "EditedSheet.h"
#include "sheet/ReplaceCells.h"

namespace quorvex {
namespace {

using Said = std::vector<std::string>;

constexpr auto kRows = SearchOrder::ByRows;

TEST(ReplaceCells, ReplacesInNumbersAndTextsInOneStep) {
  const struct {
    const char* before;
    ReplaceCells replace;
    const char* after;
    std::optional<CellRange> extent;  // nothing where no cell changes
    const char* said;
    char decimal = '.';
    std::optional<CellRange> selection = {};  // where only that is meant
  } kCases[] = {
      {"NA 1\n2 NA", {{"NA", true, kRows}, ""}, "- 1\n2 -\n", CellRange{1, 1, 2, 2}, "2 cells were replaced."},
      {"-999 1\n2 -999.5",
       {{"-999", true, kRows}, ""},
       "- 1\n2 -999.5\n",
       CellRange{1, 1, 1, 1},
       "1 cell was replaced."},
      {"1999 1\n2 99",
       {{"99", false, kRows}, "8"},
       "189 1\n2 8\n",
       CellRange{1, 1, 2, 2},
       "2 cells were replaced."},  // from the left
      {"aba 1\nBa ab",
       {{"A", false, kRows}, "xy"},
       "xybxy 1\nBxy xyb\n",
       CellRange{1, 1, 2, 2},
       "3 cells were replaced."},
      {"5mg 1", {{"mg", false, kRows}, ""}, "5 1\n", CellRange{1, 1, 1, 1}, "1 cell was replaced."},
      {"1.5 1", {{",5", false, kRows}, ",25"}, "1.25 1\n", CellRange{1, 1, 1, 1}, "1 cell was replaced.", ','},
      {"2;5 1", {{";", false, kRows}, ","}, "2.5 1\n", CellRange{1, 1, 1, 1}, "1 cell was replaced.", ','},
      {"1 1\n1 1",
       {{"1", true, kRows}, "2"},
       "1 2\n1 1\n",
       CellRange{1, 2, 1, 2},
       "1 cell was replaced.",
       '.',
       CellRange{1, 2, 1, 2}},
      {"15 5\n5 1",
       {{"5", false, kRows}, "x"},
       "15 5\n5 1\n",
       std::nullopt,
       "0 cells were replaced. 3 cells were left as they are: '1x' in X:1 would be no number."},
      {"5a 5",
       {{"5", false, kRows}, "x"},
       "xa 5\n",
       CellRange{1, 1, 1, 1},
       "1 cell was replaced. 1 cell was left as it is: 'x' in Y:1 would be no number."},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.before);
    EditedSheet sheet(c.before);
    sheet.Locale.DecimalSeparator = c.decimal;
    const CellRange selection = c.selection.value_or(CellRange());
    EXPECT_EQ(c.replace.ReplaceAll(sheet.With({selection}), c.selection.has_value()), c.extent.has_value());
    EXPECT_EQ(sheet.Cells(), c.after);
    EXPECT_EQ(sheet.User.Said, Said{"inform: " + std::string(c.said)});
    EXPECT_EQ(sheet.Undo, (c.extent ? Snapshots{{"&Undo Replace", *c.extent}} : Snapshots()));
  }
}

TEST(ReplaceCells, ShowsTheDatesThatItMakes) {
  const struct {
    const char *before, *pattern;
    ReplaceCells replace;
    const char *after, *patternAfter;
  } kCases[] = {
      {"2026-11-22x 1\nNA 2", "General", {{"x", false, kRows}, ""}, "46348 1\nNA 2\n", "yyyy-mm-dd"},
      {"2026_11_22 1\n2026_11_23 2", "General", {{"_", false, kRows}, "-"}, "46348 1\n46349 2\n", "yyyy-mm-dd"},
      {"2026_11_22 1\n7 2", "General", {{"_", false, kRows}, "-"}, "46348 1\n7 2\n", "General"},
      {"46348 1\n46349 2", "yyyy-mm-dd", {{"2026", false, kRows}, "2027"}, "46713 1\n46714 2\n", "yyyy-mm-dd"},
      {"46348 1\n46349 2", "yyyy-mm-dd", {{"2026", false, kRows}, "x"}, "46348 1\n46349 2\n", "yyyy-mm-dd"},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.before);
    EditedSheet sheet(c.before);
    sheet.Sheet.Formats[0].NumberFormat = c.pattern;
    c.replace.ReplaceAll(sheet.WithAll(), false);
    EXPECT_EQ(sheet.Cells(), c.after);
    EXPECT_EQ(sheet.Sheet.Formats[0].NumberFormat, c.patternAfter);
  }
}

TEST(ReplaceCells, FindsAnEntireCellByWhatIsShownToo) {
  EditedSheet sheet("0.12345 1");
  sheet.Sheet.Formats[0].NumberFormat = "0.00";
  EXPECT_FALSE((ReplaceCells{{"0.12", true, kRows}, "9"}.ReplaceAll(sheet.With({{1, 2, 1, 2}}), true)));
  EXPECT_EQ(sheet.User.Said, Said{"refuse: Quorvex could not find the specified data."});
  EXPECT_TRUE((ReplaceCells{{"0.12", true, kRows}, "9"}.ReplaceAll(sheet.WithAll(), false)));
  EXPECT_EQ(sheet.Cells(), "9 1\n");
}

TEST(ReplaceCells, GoesFromCellToCell) {
  EditedSheet sheet("NA 1\n2 NA\n3 NAN");
  const ReplaceCells replace{{"NA", true, kRows}, "7"};
  const SheetEdit edit = sheet.WithAll();
  EXPECT_EQ(replace.ReplaceNext(edit, {3, 1}), (CellPlace{1, 1}));  // no match there: goes to the next
  EXPECT_TRUE(sheet.Untouched());
  EXPECT_EQ(replace.ReplaceNext(edit, {1, 1}), (CellPlace{2, 2}));
  EXPECT_EQ(replace.ReplaceNext(edit, {2, 2}), std::nullopt);
  EXPECT_EQ(sheet.Cells(), "7 1\n2 7\n3 NAN\n");
  EXPECT_EQ(sheet.Undo.size(), 2u);
  EXPECT_TRUE(sheet.User.Said.empty());
  EXPECT_EQ(replace.ReplaceNext(edit, {2, 2}), std::nullopt);
  EXPECT_EQ(sheet.User.Said, Said{"refuse: Quorvex could not find the specified data."});
  EXPECT_EQ((ReplaceCells{{"2", false, kRows}, "z"}.ReplaceNext(edit, {2, 1})), (CellPlace{2, 1}));
  EXPECT_EQ(sheet.User.Last(), "refuse: 'z' in X:2 would be no number. It is left as it is.");
}

}  // namespace
}  // namespace quorvex
