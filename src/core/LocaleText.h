#pragma once

#include <string>
#include <string_view>

namespace quorvex {

// What comes first where a date is written in numbers; with the year last, the day or the month.
enum class DateOrder { MonthFirst, DayFirst, YearFirst };

// The separators of the user's locale, one character each, and the order of its dates. The program reads them once at
// start and hands them down; nothing below asks the C library, whose locale may change at any time.
struct LocaleText {
  char DecimalSeparator = '.';
  char ListSeparator = ',';
  char ThousandSeparator = ',';
  char DateSeparator = '/';
  char TimeSeparator = ':';
  DateOrder OrderOfDate = DateOrder::MonthFirst;

  bool operator==(const LocaleText&) const = default;
};

// What LC_ALL, LC_NUMERIC or LANG of the environment ask for; the defaults above where that locale isn't installed or
// its separator is not one plain character. The list separator is ";" where the decimal separator is ",", else ",".
LocaleText ReadUserLocale();

// A stored formula ("." for decimals, "," between arguments) in the locale's form: "." becomes the decimal separator,
// "," the list separator, and the thousands separator is dropped. Unchanged where the separators are ".", "," and ",".
std::string LocalizeExpression(std::string_view text, const LocaleText& locale);

// The way back: the locale's decimal separator becomes ".", its list separator ",".
std::string DelocalizeExpression(std::string_view text, const LocaleText& locale);

}  // namespace quorvex
