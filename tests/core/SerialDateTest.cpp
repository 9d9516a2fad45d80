#include <gtest/gtest.h>

#include <cmath>

#include "TableFile.h"
#include "core/NumberText.h"
#include "core/SerialDate.h"

namespace quorvex {
namespace {

constexpr LocaleText kUs, kGerman = {',', ';', '.', '.', ':', DateOrder::DayFirst};
constexpr LocaleText kBritish = {.OrderOfDate = DateOrder::DayFirst};
constexpr LocaleText kSwedish = {.DateSeparator = '-', .OrderOfDate = DateOrder::YearFirst};

TEST(ReadDate, IsExactToTheMillisecondBothWays) {
  for (const auto& row : TableRows("serial_dates.txt", 2)) {
    const double expected = *NumericText(row[1]);
    for (const LocaleText& locale : {kUs, kGerman, kSwedish}) {
      const auto date = ReadDate(row[0], locale);
      ASSERT_TRUE(date) << row[0];
      EXPECT_EQ(date->Days, expected) << row[0];
    }
    EXPECT_EQ(FormatDate(expected, "yyyy-mm-ddThh:mm:ss.000"), row[0]);
    // Another pattern, read in another order, is the same moment.
    const std::string german = DateEntry(expected, "dd.mm.yyyy", kGerman);
    const auto back = ReadDate(german, kGerman);
    ASSERT_TRUE(back) << german;
    EXPECT_EQ(back->Days, expected) << german;
  }
}

TEST(ReadDate, TakesTheLocalesOrderAndNothingThatIsNoDate) {
  constexpr double kNone = -1e9;
  const double nov22 = 46348, ten30 = 10.5 / 24;
  const struct {
    const char* text;
    double us, german, british, swedish;
  } kCases[] = {
      {"2026-11-22", nov22, nov22, nov22, nov22},
      {" 2026-11-22T10:30Z ", nov22 + ten30, nov22 + ten30, nov22 + ten30, nov22 + ten30},
      {"2026/11/22", nov22, kNone, nov22, kNone},
      {"2026.11.22", kNone, nov22, kNone, kNone},
      {"11/22/2026", nov22, kNone, kNone, kNone},
      {"22.11.2026", kNone, nov22, kNone, kNone},
      {"22/11/2026", kNone, kNone, nov22, kNone},
      {"22-11-2026 10:30", kNone, nov22 + ten30, nov22 + ten30, kNone},
      {"11/22/2026 10:30 PM", nov22 + 22.5 / 24, kNone, kNone, kNone},
      {"1-2-2000", 36527, 36557, 36557, kNone},
      {"10:30", ten30, ten30, ten30, ten30},
      {"10:30:15,25", 37815.25 / 86400, 37815.25 / 86400, 37815.25 / 86400, 37815.25 / 86400},
      {"36:00", 1.5, 1.5, 1.5, 1.5},
      {"-1:30", -1.5 / 24, -1.5 / 24, -1.5 / 24, -1.5 / 24},
      {"12:15 am", 0.25 / 24, 0.25 / 24, 0.25 / 24, 0.25 / 24},
  };
  for (const auto& c : kCases) {
    const auto days = [&](const LocaleText& locale) {
      const auto date = ReadDate(c.text, locale);
      return date ? date->Days : kNone;
    };
    EXPECT_EQ(days(kUs), c.us) << c.text;
    EXPECT_EQ(days(kGerman), c.german) << c.text;
    EXPECT_EQ(days(kBritish), c.british) << c.text;
    EXPECT_EQ(days(kSwedish), c.swedish) << c.text;
  }
  for (const char* text : {"",
                           "-",
                           "31.02.2026",
                           "02/31/2026",
                           "2026-02-29",
                           "0000-01-01",
                           "10000-01-01",
                           "26-11-22",
                           "22.11.26",
                           "24:61",
                           "10:60",
                           "10:30:60",
                           "10:5",
                           "10:",
                           ":30",
                           "10:30:",
                           "10:30:15.",
                           "10:30x",
                           "13:00 PM",
                           "0:30 AM",
                           "10:30 XM",
                           "2026-11-22 24:00",
                           "2026-11-22 36:00",
                           "2026-11-22T",
                           "2026-11-22x",
                           "2026-11-22 10",
                           "-2026-11-22",
                           "1.2.3",
                           "2026-11",
                           "2026-1122",
                           "2026-11-22T10:30+01:00",
                           "99999999:00",
                           "--1:30",
                           "1/2-2000",
                           "12",
                           "1e5"})
    for (const LocaleText& locale : {kUs, kGerman, kBritish, kSwedish}) EXPECT_FALSE(ReadDate(text, locale)) << text;
}

// A number in a date pattern; 46348.4376 is 10:30:08.640 of 22 November 2026.
TEST(FormatDate, ShowsWhatThePatternAsksFor) {
  const struct {
    double days;
    const char *pattern, *text;
  } kCases[] = {
      {46348.4376, "dd.mm.yyyy", "22.11.2026"},
      {46348.4376, "dd.MM.yyyy HH:mm", "22.11.2026 10:30"},
      {46348.4376, "d/m/yy h:mm:ss", "22/11/26 10:30:09"},
      {46348.4376, "hh:mm:ss,00", "10:30:08.64"},
      {46348.4376, "mmm yyyy", "Nov 2026"},
      {46348.4376, "d\\. mmmm \"of\" yyyy", "22. November of 2026"},
      {46348.9, "h:mm AM/PM", "9:36 PM"},
      {46348.01, "h AM/PM", "12 AM"},
      {1.5, "[h]:mm", "36:00"},
      {-1.5 / 24, "[h]:mm:ss", "-1:30:00"},
      {0.5, "[mm]:ss", "720:00"},
      {0.5, "[ss]", "43200"},
      {37815.2496 / 86400, "mm:ss.000", "30:15.250"},
      {46348 + 86399.9996 / 86400, "yyyy-mm-dd hh:mm:ss.000", "2026-11-23 00:00:00.000"},
      {46348 + 86399.999 / 86400, "yyyy-mm-dd", "2026-11-22"},
      {37800 / 86400.0 - 1e-14, "hh:mm", "10:30"},
      {-0.25, "yyyy-mm-dd hh:mm", "1899-12-29 18:00"},
      {3e6, "yyyy-mm-dd", "3000000"},
      {-7e5, "yyyy-mm-dd", "-700000"},
      {1e300, "hh:mm", "1E+300"},
      {1e300, "[h]:mm", "1E+300"},
      {std::nan(""), "yyyy-mm-dd", "NAN"},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(FormatDate(c.days, c.pattern), c.text) << c.pattern;
    EXPECT_EQ(FormatNumber(c.days, c.pattern), c.text) << c.pattern;
    EXPECT_TRUE(IsNumberPattern(c.pattern)) << c.pattern;
  }
  EXPECT_EQ(FormatDate(0.5, "hh:mm:ss.0", ','), "12:00:00,0");
  for (const char* number :
       {"General", "0.00", "0.0 s", "s.0",    "mm",  "ss",  "yy",  "m/s",   "d",   "ss.0", "m",
        "d",       "",     " - ",   "0.0 mm", "yyy", "ddd", "hhh", "mmmmm", "[y]", "[h",   "hh:mm:ss.0000000",
        "mm/s 0",  "x",    "\"",    "#",      "E+00"})
    EXPECT_FALSE(IsDatePattern(number)) << number;
}

TEST(DateEntry, ReadsBackToTheSameNumber) {
  const struct {
    double days;
    const char* pattern;
    const LocaleText& locale;
    const char* text;
  } kCases[] = {
      {46348, "dd.mm.yyyy", kGerman, "22.11.2026"},
      {46348, "mm/dd/yyyy", kGerman, "2026-11-22"},  // which a German entry would read another way
      {46348, "dd/mm/yyyy", kUs, "2026-11-22"},
      {46348, "mm/dd/yyyy", kUs, "11/22/2026"},
      {46348, "mmm yyyy", kUs, "2026-11-22"},
      {46348.4375, "yyyy-mm-dd", kUs, "2026-11-22 10:30"},
      {46348 + 37815.25 / 86400, "dd.mm.yyyy", kGerman, "22.11.2026 10:30:15,250"},
      {46348.4375, "hh:mm", kUs, "2026-11-22 10:30"},
      {0.4375, "hh:mm", kUs, "10:30"},
      {1.5, "[h]:mm", kUs, "36:00"},
      {-1.5 / 24, "[h]:mm", kUs, "-1:30"},
      {37815.25025 / 86400, "hh:mm", kUs, "10:30:15.250250"},
      {46348.000000000007, "yyyy-mm-dd", kUs, ""},
      {1e7, "yyyy-mm-dd", kUs, ""},
      {46348, "0.00", kUs, ""},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(DateEntry(c.days, c.pattern, c.locale), c.text) << c.pattern;
    const auto back = ReadDate(c.text, c.locale);
    EXPECT_EQ(back.has_value(), c.text[0] != 0);
    EXPECT_EQ(back ? back->Days : c.days, c.days) << c.text;
  }
}

TEST(DateColumn, DecidesTheOrderByAllCells) {
  constexpr auto kMonth = DateOrder::MonthFirst, kDay = DateOrder::DayFirst, kYear = DateOrder::YearFirst;
  const struct {
    std::vector<const char*> cells;
    DateOrder us, german;
    bool ambiguous;
    char separator;
  } kCases[] = {
      {{"Date", "01.02.2026", "31.12.2026"}, kDay, kDay, false, '.'},
      {{"01/02/2026 10:00", "12/31/2026 11:00"}, kMonth, kMonth, false, '/'},
      {{"01/02/2026", "03/04/2026"}, kMonth, kDay, true, '/'},
      {{"01.02.2026", "03.04.2026"}, kDay, kDay, true, '.'},
      {{"05/05/2026"}, kDay, kDay, false, '/'},
      {{"13/01/2026", "01/13/2026"}, kYear, kYear, false, '/'},  // they contradict each other
      {{"31/02/2026", "01/02/2026"}, kMonth, kDay, true, '/'},   // no date tells nothing
      {{"2026-01-02"}, kMonth, kDay, false, '/'},
  };
  for (const auto& c : kCases) {
    DateColumn column;
    for (const char* cell : c.cells) column.Add(cell);
    EXPECT_EQ(column.IsAmbiguous(), c.ambiguous) << c.cells[0];
    EXPECT_EQ(column.Locale(kUs, column.Expected(kUs)).OrderOfDate, c.us) << c.cells[0];
    EXPECT_EQ(column.Locale(kGerman, column.Expected(kGerman)).OrderOfDate, c.german) << c.cells[0];
    EXPECT_EQ(column.Locale(kUs, kYear).DateSeparator, c.separator) << c.cells[0];
  }
}

}  // namespace
}  // namespace quorvex
