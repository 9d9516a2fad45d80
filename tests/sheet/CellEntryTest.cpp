#include <gtest/gtest.h>

#include "RecordingPrompter.h"
#include "sheet/CellEntry.h"

namespace quorvex {
namespace {

constexpr LocaleText kComma = {.DecimalSeparator = ',', .ListSeparator = ';', .DateSeparator = '.'};

// Days from Python's date arithmetic; 1 March 1900 is day 61 in every spreadsheet.
TEST(CellEntry, ReadsNumbersAndDatesOfTheLocale) {
  constexpr struct {
    const char* Text;
    double Point, Comma;  // NaN where it is no entry
  } kCases[] = {{"1.5", 1.5, NAN},
                {"1,5", NAN, 1.5},
                {" -2E3 ", -2000, -2000},
                {"1900-01-01", 2, 2},
                {"1900-03-01", 61, 61},
                {"2026-11-21", 46347, 46347},
                {"2026/11/21", 46347, NAN},
                {"2026.11.21", NAN, 46347},
                {"9999-12-31", 2958465, 2958465},
                {"1899-12-31", NAN, NAN},
                {"2026-02-29", NAN, NAN},
                {"2024-2-29", 45351, 45351},
                {"2026-11/21", NAN, NAN},
                {"2026-11-21 ", 46347, 46347},
                {"2026-11-211", NAN, NAN},
                {"26-11-21", NAN, NAN},
                {"2026--1-1", NAN, NAN},
                {"n/a", NAN, NAN},
                {"1e999", NAN, NAN},
                {"=1", NAN, NAN}};
  for (const auto& c : kCases) {
    for (const auto& [locale, expected] : {std::pair(LocaleText(), c.Point), std::pair(kComma, c.Comma)}) {
      const auto entry = ReadCellEntry(c.Text, locale);
      ASSERT_EQ(entry.has_value(), !std::isnan(expected)) << c.Text << locale.DecimalSeparator;
      if (entry) {
        EXPECT_EQ(*entry->Value, expected) << c.Text;
      }
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
  EXPECT_EQ(EntryText(sheet.Cells, 1, 2, kComma), "0,30000000000000004");
  EXPECT_EQ(ShownText(sheet, 2, 1, kComma), "n.a.");
  EXPECT_EQ(ShownText(sheet, 3, 1, kComma), "");
}

}  // namespace
}  // namespace quorvex
