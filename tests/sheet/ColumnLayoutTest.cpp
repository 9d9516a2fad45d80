#include <gtest/gtest.h>

#include <stdexcept>

#include "sheet/ColumnLayout.h"
#include "sheet/EditedSheet.h"

namespace quorvex {
namespace {

using Said = std::vector<std::string>;

const std::string kExchangeQuestion = "ask: Do you also want to exchange the column headers you defined?";

TEST(SelectedColumnPair, TakesTwoColumnsOverTheSameRows) {
  const struct {
    std::vector<CellRange> selection;
    ColumnPair pair;
  } kCases[] = {
      {{{2, 1, 5, 2}}, {1, 2, 2, 5}},
      {{{1, 1, 4, 1}, {1, 3, 4, 3}}, {1, 3, 1, 4}},
      {{{1, 3, 4, 3}, {1, 1, 4, 1}}, {1, 3, 1, 4}},
  };
  for (const auto& c : kCases) {
    const Result<ColumnPair> pair = SelectedColumnPair(c.selection);
    ASSERT_TRUE(pair) << pair.error();
    EXPECT_EQ(*pair, c.pair);
  }
}

TEST(SelectedColumnPair, SaysWhyAnythingElseIsRefused) {
  const struct {
    std::vector<CellRange> selection;
    const char* refusal;
  } kCases[] = {
      {{}, "You have not selected any cells in the spreadsheet."},
      {{{1, 2, 9, 2}}, "The currently selected range only includes a single column."},
      {{{1, 1, 9, 3}}, "The currently selected range contains more than two columns."},
      {{{1, 1, 9, 1}, {1, 2, 9, 2}, {1, 3, 9, 3}},
       "This operation can only work with at most two selected ranges.  You currently have 3 ranges selected. Hint:  "
       "Make sure you do not have the control key pressed when selecting the FIRST range."},
      {{{1, 1, 4, 1}, {6, 1, 9, 1}}, "The currently selected ranges either overlap or occupy the same column."},
      {{{1, 1, 4, 1}, {2, 1, 9, 1}}, "The currently selected ranges either overlap or occupy the same column."},
      {{{1, 1, 4, 2}, {1, 2, 4, 3}}, "At least one of the two selected ranges contains multiple columns."},
      {{{1, 1, 4, 1}, {1, 2, 5, 2}}, "The currently selected ranges do not contain the same rows."},
      {{{2, 1, 4, 1}, {1, 2, 4, 2}}, "The currently selected ranges do not contain the same rows."},
      {{{1, 1, 4, 1}, {1, 2, 4, 3}}, "At least one of the two selected ranges contains multiple columns."},
  };
  for (const auto& c : kCases) {
    EditedSheet sheet("1 2 3\n4 5 6", 1, true);
    EXPECT_FALSE(mnuEditExchange(sheet.With(c.selection)));
    EXPECT_EQ(sheet.User.Said, Said{"refuse: " + std::string(c.refusal)});
    EXPECT_TRUE(sheet.Untouched());
  }
}

TEST(Exchange, MovesTheSelectedRowsAndTheHeadersWhereWanted) {
  for (const bool withHeaders : {false, true}) {
    EditedSheet sheet("1 a 2\n3 - 4\n5 b -", 1, true);
    sheet.User.Answer = withHeaders;
    EXPECT_TRUE(mnuEditExchange(sheet.With({{2, 3, kMostSheetRows, 3}, {2, 2, kMostSheetRows, 2}})));
    EXPECT_EQ(sheet.Cells(), "1 a 2\n3 4 -\n5 - b\n");
    EXPECT_EQ(sheet.User.Said, Said{kExchangeQuestion});
    EXPECT_EQ(sheet.Sheet.Headers, withHeaders ? (Said{"X", "StDev", "Y"}) : (Said{"X", "Y", "StDev"}));
    EXPECT_EQ(
        sheet.Undo,
        (Snapshots{{withHeaders ? "&Undo Exchange Headers" : "&Undo Exchange", (CellRange{2, 2, kMostSheetRows, 3})}}));
  }
}

TEST(EditHeader, StoresAnyTextUnlessCancelled) {
  const struct {
    std::optional<std::string> typed;
    Said headers;
  } kCases[] = {
      {"Dose, \"mg\"", {"X", "Dose, \"mg\""}}, {"", {"X", ""}}, {"Y", {"X", "Y"}}, {std::nullopt, {"X", "Y"}}};
  for (const auto& c : kCases) {
    EditedSheet sheet("1 2");
    sheet.User.Text = c.typed;
    const bool changes = c.headers != Said{"X", "Y"};
    EXPECT_EQ(EditHeader(sheet.With({}), 2), changes);
    EXPECT_EQ(sheet.User.Said, Said{"text: Enter the column header:|Y"});
    EXPECT_EQ(sheet.Sheet.Headers, c.headers);
    EXPECT_EQ(sheet.Undo.size(), changes ? 1u : 0u);
    if (changes) {
      EXPECT_EQ(sheet.Undo[0].first, "&Undo Edit Header");
    }
    EXPECT_TRUE(FormatDefault(sheet.With({})));
    EXPECT_EQ(sheet.Undo.back().first, "&Undo Default Headers");
    EXPECT_EQ(sheet.Sheet.Headers, (Said{"X", "Y"}));
  }
}

TEST(FormatCells, WorksOnEntireColumns) {
  const std::string question =
      "ask: Formatting must be applied to entire columns. Do you with to change the number format of the columns "
      "included in the current selection?";
  const struct {
    std::vector<CellRange> selection;
    bool answer;
    Said said;
    std::vector<std::string> formats;
  } kCases[] = {
      {{{1, 2, kMostSheetRows, 3}}, false, {}, {"General", "0.00", "0.00"}},
      {{{1, 1, kMostSheetRows, 1}, {1, 3, kMostSheetRows, 3}}, false, {}, {"0.00", "General", "0.00"}},
      {{{4, 2, 4, 2}}, true, {question}, {"General", "0.00", "General"}},
      {{{4, 2, 4, 2}}, false, {question}, {"General", "General", "General"}},
      {{}, true, {"refuse: You have not selected any cells in the spreadsheet."}, {"General", "General", "General"}},
  };
  for (const auto& c : kCases) {
    EditedSheet sheet("1 2 3", 1, true);
    sheet.User.Answer = c.answer;
    const bool changed = FormatCells(sheet.With(c.selection), [](const std::string& format) {
      EXPECT_EQ(format, "General");
      return std::optional<std::string>("0.00");
    });
    EXPECT_EQ(sheet.User.Said, c.said);
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(sheet.Sheet.Formats[i].NumberFormat, c.formats[i]);
    ASSERT_EQ(sheet.Undo.size(), changed ? 1u : 0u);
    if (changed) {
      EXPECT_EQ(sheet.Undo[0].first, "&Undo Format Cells");
    }
  }
}

TEST(FormatCells, ReportsAFailureAndLeavesTheFormats) {
  EditedSheet sheet("1 2");
  EXPECT_FALSE(FormatCells(sheet.WithAll(), [](const std::string&) -> std::optional<std::string> {
    throw std::runtime_error("no dialog");
  }));
  EXPECT_EQ(sheet.User.Said, Said{"refuse: An error ocurred while formatting the cells."});
  EXPECT_FALSE(FormatCells(sheet.WithAll(), [](const std::string&) { return std::optional<std::string>(); }));
  EXPECT_EQ(sheet.Sheet.Formats, std::vector<ColumnFormat>(2));
  EXPECT_TRUE(sheet.Undo.empty());
}

}  // namespace
}  // namespace quorvex
