#include <gtest/gtest.h>

#include "TableFile.h"
#include "core/NumberText.h"
#include "sheet/CellEntry.h"

namespace quorvex {
namespace {

constexpr LocaleText kComma = {',', ';', '.', '.', ':', DateOrder::DayFirst};

TEST(CellEntry, ReadsNumbersAndDatesOfTheLocale) {
  for (const auto& row : TableRows("cell_entries.txt", 3)) {
    for (const auto& [locale, expected] : {std::pair(LocaleText(), row[1]), std::pair(kComma, row[2])}) {
      const auto entry = ReadCellEntry(row[0], locale);
      EXPECT_EQ(entry ? ShortestNumber(*entry->Value) : "none", expected) << row[0] << locale.DecimalSeparator;
    }
  }
  EXPECT_FALSE(ReadCellEntry("  ", {})->Value);
}

TEST(CellEntry, ShowsByThePatternAndEditsEveryDigit) {
  DataSheet sheet(1, false);
  sheet.Formats[1].NumberFormat = "0.00";
  for (const std::size_t col : {1u, 2u}) sheet.Cells.SetGridCellNumber(1, col, 0.1 + 0.2);
  sheet.Cells.SetGridCellText(2, 1, "n.a.");
  EXPECT_EQ(ShownText(sheet, 1, 1, kComma), "0,3");
  EXPECT_EQ(ShownText(sheet, 1, 2, kComma), "0,30");
  EXPECT_EQ(EntryText(sheet, 1, 2, kComma), "0,30000000000000004");
  EXPECT_EQ(ShownText(sheet, 2, 1, kComma), "n.a.");
  sheet.Formats[0].NumberFormat = "dd.mm.yyyy";
  sheet.Cells.SetGridCellNumber(1, 1, 46348.4375);
  EXPECT_EQ(ShownText(sheet, 1, 1, kComma), "22.11.2026");
  EXPECT_EQ(EntryText(sheet, 1, 1, kComma), "22.11.2026 10:30");
  EXPECT_EQ(FullText(sheet, 1, 1, kComma), "2026-11-22 10:30");
  sheet.Cells.SetGridCellNumber(1, 1, 1e7);  // of no year that a date has
  EXPECT_EQ(EntryText(sheet, 1, 1, kComma), "1E+07");
  EXPECT_EQ(ShownText(sheet, 3, 1, kComma), "");
}

}  // namespace
}  // namespace quorvex
