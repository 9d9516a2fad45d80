#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/LocaleText.h"

namespace quorvex {

// Dates and times as numbers: the days since 30 December 1899, as spreadsheets count them, and a time of day as the
// fraction of a day. 1 March 1900 is day 61 in all of them; those that count a 29 February of that year, which never
// was, have other numbers for the two months before it. The calendar is the Gregorian one for all years from 1 to 9999.

// How a date or a time was written, which tells how its column is to be shown.
struct DateForm {
  bool HasDate = false;
  DateOrder Order = DateOrder::YearFirst;
  char Separator = '-';
  bool HasTime = false, HasSeconds = false;
  int Decimals = 0;      // of the seconds
  bool Elapsed = false;  // without a date, and no time of day: 24 hours or more, or less than none

  // Both in one column: as much of a time as either has.
  void Join(const DateForm& other);
  // The date pattern of such a column, "dd.mm.yyyy hh:mm" for one.
  std::string Pattern() const;
};

struct SerialDate {
  double Days = 0;
  DateForm Form;
};

// Reads the whole of a text, trimmed: a date, a time or both, "T" or a blank between them. A date has a year of four
// digits first ("2026-11-22") or, unless the locale's order is with the year first, last and day and month in that
// order; between them stands "-" or the locale's date separator. A time is hours, minutes and perhaps seconds with
// decimals ("10:30:15.25"), with AM or PM behind it where that is meant, or with the Z of an ISO time, which changes
// nothing. Without a date the hours may be any number, and "-" may stand before them. Exact to the millisecond and
// back. Nothing where the text is anything else or there is no such day or minute.
std::optional<SerialDate> ReadDate(std::string_view text, const LocaleText& locale);

// For texts in ISO form, which has one order.
inline constexpr LocaleText kIsoDates = {.DateSeparator = '-', .OrderOfDate = DateOrder::YearFirst};

// Whether a pattern shows dates or times: yyyy or yy, m or mm or mmm or mmmm (names), d or dd, h or hh, m or mm beside
// hours or seconds for minutes, s or ss, ss.000 with decimals, [h], [m] or [s] for elapsed ones, AM/PM; letters of
// either case. Between them "-/.:,", blanks, T, what stands in double quotes and what follows a backslash. Single
// letters, and two alone, may be units and are no pattern.
bool IsDatePattern(std::string_view pattern);

// A serial day by such a pattern, rounded to the last decimal of the seconds that it shows; what it leaves out is cut
// off. GeneralNumber where the day is of no year from 1 to 9999, or an elapsed time beyond 1e9 days.
std::string FormatDate(double days, std::string_view pattern, char decimalSeparator = '.');

// A serial day of a column with a date pattern as a text that ReadDate reads back to the same number: in the order and
// with the parts that the pattern has, where the locale reads that order, else in ISO form. "" where no such text of
// up to six decimals of a second gives the number.
std::string DateEntry(double days, std::string_view pattern, const LocaleText& locale);

// What the texts of a column tell of the order of its dates, where that isn't known: "31.12.2026" has the day first,
// and then so has "01.02.2026" in the same column.
class DateColumn {
 public:
  // A cell; those that are no dates tell nothing.
  void Add(std::string_view text);

  bool IsDate() const { return seen_; }  // some cell was one
  // Nothing tells the order, and it makes a difference.
  bool IsAmbiguous() const { return differ_ && monthFirst_ && dayFirst_; }
  // The first that may be read either way; "" where there is none.
  const std::string& Either() const { return either_; }

  // The locale that reads the column: with its separator and its order. That is `ambiguous` where nothing tells it, and
  // none but the year first where its dates contradict each other.
  LocaleText Locale(LocaleText locale, DateOrder ambiguous) const;
  // The order that the user of the locale expects of ambiguous dates: its own, but between dots the day comes first.
  DateOrder Expected(const LocaleText& locale) const;

 private:
  bool seen_ = false, yearLast_ = false, differ_ = false;
  bool monthFirst_ = true, dayFirst_ = true;  // still possible
  char separator_ = '-';
  std::string either_;
};

}  // namespace quorvex
