#include <gtest/gtest.h>

#include "EditedSheet.h"
#include "sheet/FindCell.h"

namespace quorvex {
namespace {

TEST(FindCell, SearchesBehindTheActiveCellAndAllAround) {
  EditedSheet sheet("12 1.5\n- 2\n1.5 Blank\n21 -\n");
  sheet.Locale.DecimalSeparator = ',';
  constexpr auto rows = SearchOrder::ByRows, columns = SearchOrder::ByColumns;
  const struct {
    FindCell Find;
    CellPlace Active, Found;
  } cases[] = {
      {{"2", false, rows}, {1, 1}, {2, 2}},       {{"2", false, columns}, {1, 1}, {4, 1}},
      {{"2", false, columns}, {4, 1}, {2, 2}},    {{"2", true, rows}, {2, 2}, {2, 2}},
      {{"1,5", false, rows}, {1, 2}, {3, 1}},     {{"1,5", false, rows}, {3, 1}, {1, 2}},
      {{"1,5", true, columns}, {1, 1}, {3, 1}},   {{"blank", false, rows}, {1, 1}, {3, 2}},
      {{"BLANK", true, columns}, {4, 2}, {3, 2}}, {{"12", false, rows}, {9, 1}, {1, 1}},
      {{"12", false, columns}, {9, 2}, {1, 1}},
  };
  for (const auto& c : cases) {
    const std::optional<CellPlace> found = c.Find.FindNext(sheet.Sheet, c.Active, sheet.Locale, sheet.User);
    ASSERT_TRUE(found) << c.Find.FindWhat;
    EXPECT_EQ(found->Row, c.Found.Row) << c.Find.FindWhat;
    EXPECT_EQ(found->Col, c.Found.Col) << c.Find.FindWhat;
  }
  EXPECT_TRUE(sheet.User.Said.empty());

  const FindCell absent[] = {{"lank", true, rows}, {"1.5", false, rows}, {"", false, columns}, {"", true, rows}};
  for (const FindCell& find : absent) {
    sheet.User.Said.clear();
    EXPECT_FALSE(find.FindNext(sheet.Sheet, {2, 1}, sheet.Locale, sheet.User));
    EXPECT_EQ(sheet.User.Said, std::vector<std::string>{"refuse: Quorvex could not find the specified data."});
  }
}

TEST(FindCell, SearchesWhatIsShownAndWhatIsThere) {
  EditedSheet sheet("1.5 1.50\n0.12345 2\n");
  sheet.Sheet.Formats[0].NumberFormat = "0.00";
  const struct {
    const char* What;
    CellPlace Found;
  } cases[] = {{"1.50", {1, 1}}, {"1.5", {1, 2}}, {"0.12", {2, 1}}, {"0.12345", {2, 1}}};
  for (const auto& c : cases)
    EXPECT_EQ((FindCell{c.What, true, SearchOrder::ByRows}.FindNext(sheet.Sheet, {1, 1}, sheet.Locale, sheet.User)),
              c.Found)
        << c.What;
}

TEST(FindCell, FindsADateByAnyOfItsTexts) {
  EditedSheet sheet("46347 1\n46348.4375 2\n");
  sheet.Locale = {',', ';', '.', '.', ':', DateOrder::DayFirst};
  sheet.Sheet.Formats[0].NumberFormat = "dd.mm.yy";
  for (const char* what : {"22.11.26", "22.11.2026", "22.11.2026 10:30", "2026-11-22", "46348,4375"})
    EXPECT_EQ((FindCell{what, false, SearchOrder::ByRows}.FindNext(sheet.Sheet, {1, 1}, sheet.Locale, sheet.User)),
              (CellPlace{2, 1}))
        << what;
}

TEST(GoToCell, ReadsAReference) {
  EditedSheet sheet("", 2, true);  // X1, X2, Y, StDev
  sheet.Sheet.Headers[1] = "Dose: mg";
  const struct {
    const char* Reference;
    CellPlace Place;
  } cases[] = {{"A1", {1, 1}},  {" d65536 ", {65536, 4}}, {"$B$12", {12, 2}},     {"B$12", {12, 2}},
               {"y:7", {7, 3}}, {"X1:3", {3, 1}},         {"dose: mg:4", {4, 2}}, {"StDev : 2", {2, 4}}};
  for (const auto& c : cases) {
    const std::optional<CellPlace> place = GoToCell(sheet.Sheet, c.Reference, sheet.User);
    ASSERT_TRUE(place) << c.Reference;
    EXPECT_EQ(*place, c.Place) << c.Reference;
  }
  sheet.Sheet.Headers = {"rate", "Rate", "rate", ""};
  EXPECT_EQ(GoToCell(sheet.Sheet, "rate (column 3):5", sheet.User), (CellPlace{5, 3}));
  EXPECT_EQ(GoToCell(sheet.Sheet, "rate:5", sheet.User), (CellPlace{5, 2}));  // the only one called so
  EXPECT_EQ(GoToCell(sheet.Sheet, "Column 4:5", sheet.User), (CellPlace{5, 4}));
  for (const char* const bad : {"", "A", "12", "E1", "A0", "A65537", "A-1", "A1.5", "AA1", "1A", "Y:", ":3", "Z:3",
                                "A1:B2", "$", "A1 2", "A99999999999999999999999"}) {
    sheet.User.Said.clear();
    EXPECT_FALSE(GoToCell(sheet.Sheet, bad, sheet.User)) << bad;
    EXPECT_EQ(sheet.User.Said, std::vector<std::string>{"refuse: Invalid cell reference."}) << bad;
  }
}

}  // namespace
}  // namespace quorvex
