#include "core/SerialDate.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "core/NumberText.h"

namespace quorvex {
namespace {

using std::chrono::sys_days;
constexpr sys_days kDayZero = std::chrono::year(1899) / 12 / 30;
constexpr std::int64_t kSecondsOfDay = 86400, kMillisecondsOfDay = 1000 * kSecondsOfDay;
constexpr int kLastYear = 9999, kMostDecimals = 6;

// Takes the parts of a date or time off the front of a text.
class DateReader {
 public:
  DateReader(std::string_view text, const LocaleText& locale) : rest_(Trim(text)), locale_(locale) {}

  std::optional<SerialDate> Read() {
    const bool negative = Take('-');
    const std::size_t firstDigits = rest_.find_first_not_of("0123456789");
    if (firstDigits == 0 || firstDigits == std::string_view::npos) return std::nullopt;
    if (rest_[firstDigits] != ':') {
      if (negative || !ReadDay(firstDigits)) return std::nullopt;
      if (rest_.empty()) return Result(1);
      if (!Take('T') && !TakeBlanks()) return std::nullopt;
    }
    if (!ReadTime() || !rest_.empty()) return std::nullopt;
    read_.Form.Elapsed = !read_.Form.HasDate && (negative || hours_ >= 24);
    if (read_.Form.HasDate && hours_ >= 24) return std::nullopt;
    return Result(negative ? -1 : 1);
  }

 private:
  SerialDate Result(int sign) {
    // One division of an exact number of milliseconds: the nearest double, as the way back expects it.
    const auto whole = static_cast<double>(day_ * kMillisecondsOfDay + milliseconds_);
    read_.Days = sign * (whole + belowMilliseconds_) / static_cast<double>(kMillisecondsOfDay);
    return read_;
  }

  bool Take(char c) {
    if (!rest_.starts_with(c)) return false;
    rest_.remove_prefix(1);
    return true;
  }
  bool TakeBlanks() {
    const std::size_t before = rest_.size();
    rest_ = Trim(rest_);
    return rest_.size() < before;
  }
  // A number of `least` to `most` digits, and no more than those; -1 where there is none.
  int TakeNumber(std::size_t least, std::size_t most) {
    const auto digits = std::min(rest_.find_first_not_of("0123456789"), rest_.size());
    int number = -1;
    if (digits < least || digits > most) return -1;
    std::from_chars(rest_.data(), rest_.data() + digits, number);
    rest_.remove_prefix(digits);
    return number;
  }

  bool ReadDay(std::size_t firstDigits) {
    const bool yearFirst = firstDigits == 4;
    if (!yearFirst && locale_.OrderOfDate == DateOrder::YearFirst) return false;
    const int first = TakeNumber(yearFirst ? 4 : 1, yearFirst ? 4 : 2);
    if (first < 0 || rest_.empty() || (rest_[0] != '-' && rest_[0] != locale_.DateSeparator)) return false;
    const char separator = rest_[0];
    Take(separator);
    const int second = TakeNumber(1, 2);
    if (second < 0 || !Take(separator)) return false;
    const int third = TakeNumber(yearFirst ? 1 : 4, yearFirst ? 2 : 4);
    if (third < 0) return false;
    const bool dayFirst = locale_.OrderOfDate == DateOrder::DayFirst;
    const int y = yearFirst ? first : third;
    const int m = yearFirst || dayFirst ? second : first;
    const int d = yearFirst ? third : dayFirst ? first : second;
    const std::chrono::year_month_day date(std::chrono::year(y), std::chrono::month(static_cast<unsigned>(m)),
                                           std::chrono::day(static_cast<unsigned>(d)));
    if (!date.ok() || y < 1) return false;
    day_ = (sys_days(date) - kDayZero).count();
    read_.Form.HasDate = true;
    read_.Form.Order = yearFirst ? DateOrder::YearFirst : locale_.OrderOfDate;
    read_.Form.Separator = separator;
    return true;
  }

  bool ReadTime() {
    hours_ = TakeNumber(1, read_.Form.HasDate ? 2 : 7);
    if (hours_ < 0 || !Take(':')) return false;
    const int minutes = TakeNumber(2, 2);
    if (minutes < 0 || minutes > 59) return false;
    read_.Form.HasTime = true;
    int seconds = 0;
    if (Take(':')) {
      seconds = TakeNumber(2, 2);
      if (seconds < 0 || seconds > 59) return false;
      read_.Form.HasSeconds = true;
      if ((Take('.') || Take(',')) && !ReadDecimals()) return false;
    }
    if (!ReadEnd()) return false;
    milliseconds_ += ((hours_ * std::int64_t{60} + minutes) * 60 + seconds) * 1000;
    return true;
  }

  bool ReadDecimals() {
    const std::size_t digits = std::min(rest_.find_first_not_of("0123456789"), rest_.size());
    if (digits == 0) return false;
    std::string thousandths(rest_.substr(0, digits));
    rest_.remove_prefix(digits);
    read_.Form.Decimals = static_cast<int>(std::min<std::size_t>(digits, kMostDecimals));
    thousandths.resize(std::max<std::size_t>(digits, 3), '0');
    std::from_chars(thousandths.data(), thousandths.data() + 3, milliseconds_);
    belowMilliseconds_ = NumericText("0." + thousandths.substr(3)).value_or(0);
    return true;
  }

  // What may follow a time: the Z behind a date, or AM or PM.
  bool ReadEnd() {
    if (read_.Form.HasDate && Take('Z')) return true;
    const std::string_view end = Trim(rest_);
    if (end.empty()) return true;
    const bool afternoon = EqualNoCase(end, "PM");
    if ((!afternoon && !EqualNoCase(end, "AM")) || hours_ < 1 || hours_ > 12) return false;
    hours_ = hours_ % 12 + (afternoon ? 12 : 0);
    rest_ = {};
    return true;
  }

  std::string_view rest_;
  const LocaleText& locale_;
  SerialDate read_;
  std::int64_t day_ = 0, milliseconds_ = 0;
  double belowMilliseconds_ = 0;
  int hours_ = 0;
};

// A piece of a date pattern.
struct Piece {
  enum Kind { Literal, Year, Month, Day, Hour, Minute, Second, HalfOfDay } What;
  std::string_view Text;  // of a literal
  int Letters = 0;
  bool Elapsed = false;
  int Decimals = 0;  // of seconds
};

struct DatePattern {
  std::vector<Piece> Pieces;
  const Piece* Find(Piece::Kind what, bool elapsed = false) const {
    const auto found = std::ranges::find_if(
        Pieces, [&](const Piece& piece) { return piece.What == what && (!elapsed || piece.Elapsed); });
    return found == Pieces.end() ? nullptr : &*found;
  }
  bool HasDate() const { return Find(Piece::Year) || Find(Piece::Month) || Find(Piece::Day); }
  bool HasTime() const { return Find(Piece::Hour) || Find(Piece::Minute) || Find(Piece::Second); }
  bool IsElapsed() const {
    return std::ranges::any_of(Pieces, [](const Piece& piece) { return piece.Elapsed; });
  }
  int Decimals() const {
    const Piece* const second = Find(Piece::Second);
    return second ? second->Decimals : 0;
  }
};

class PatternReader {
 public:
  explicit PatternReader(std::string_view pattern) : rest_(pattern) {}

  std::optional<DatePattern> Read() {
    while (!rest_.empty())
      if (!TakeDecimals() && !TakeLetters() && !TakeLiteral()) return std::nullopt;
    int parts = 0, longest = 0;
    for (const Piece& piece : read_.Pieces) {
      if (piece.What == Piece::Literal) continue;
      ++parts;
      longest = std::max(longest, piece.What == Piece::HalfOfDay || piece.Elapsed ? 3 : piece.Letters);
    }
    // "m/s" is a unit, "mm" alone is one too, and "ss.0" is digits behind letters, as number patterns have always had
    // it.
    if (parts == 0 || longest < 2 || (parts == 1 && (longest < 3 || read_.Decimals() > 0))) return std::nullopt;
    FindMinutes();
    return std::move(read_);
  }

 private:
  bool TakeDecimals() {
    if (read_.Pieces.empty() || read_.Pieces.back().What != Piece::Second || read_.Pieces.back().Decimals > 0 ||
        rest_.size() < 2 || (rest_[0] != '.' && rest_[0] != ',') || rest_[1] != '0')
      return false;
    const std::size_t end = std::min(rest_.find_first_not_of('0', 1), rest_.size());
    if (end - 1 > kMostDecimals) return false;
    read_.Pieces.back().Decimals = static_cast<int>(end - 1);
    rest_.remove_prefix(end);
    return true;
  }

  bool TakeLetters() {
    struct Letter {
      char Is;
      Piece::Kind What;
      int Most;
    };
    constexpr Letter kLetters[] = {{'y', Piece::Year, 4},
                                   {'m', Piece::Month, 4},
                                   {'d', Piece::Day, 2},
                                   {'h', Piece::Hour, 2},
                                   {'s', Piece::Second, 2}};
    if (EqualNoCase(rest_.substr(0, 5), "AM/PM")) {
      read_.Pieces.push_back({Piece::HalfOfDay, {}});
      rest_.remove_prefix(5);
      return true;
    }
    const bool elapsed = rest_[0] == '[';
    const std::string letters = ToLower(rest_.substr(elapsed ? 1 : 0, 6));
    const auto letter = std::ranges::find_if(kLetters, [&](const Letter& l) { return letters.starts_with(l.Is); });
    if (letter == std::end(kLetters)) return false;
    const auto count = std::min(letters.find_first_not_of(letter->Is), letters.size());
    const int number = static_cast<int>(count);
    if (number > letter->Most || (letter->Is == 'y' && number % 2 != 0)) return false;
    if (elapsed && (letter->Is == 'y' || letter->Is == 'd' || number > 2 || letters[count] != ']')) return false;
    const bool minutes = elapsed && letter->Is == 'm';
    read_.Pieces.push_back({minutes ? Piece::Minute : letter->What, {}, number, elapsed});
    rest_.remove_prefix(count + (elapsed ? 2 : 0));
    return true;
  }

  bool TakeLiteral() {
    std::string_view text = rest_.substr(0, 1);
    std::size_t taken = 1;
    if (rest_[0] == '"') {
      const std::size_t end = rest_.find('"', 1);
      if (end == std::string_view::npos) return false;
      text = rest_.substr(1, end - 1);
      taken = end + 1;
    } else if (rest_[0] == '\\' && rest_.size() > 1) {
      text = rest_.substr(1, 1);
      taken = 2;
    } else if (std::string_view(" -/.:,T").find(rest_[0]) == std::string_view::npos) {
      return false;
    }
    read_.Pieces.push_back({Piece::Literal, text});
    rest_.remove_prefix(taken);
    return true;
  }

  // An m behind hours or before seconds is minutes.
  void FindMinutes() {
    std::vector<Piece*> parts;
    for (Piece& piece : read_.Pieces)
      if (piece.What != Piece::Literal && piece.What != Piece::HalfOfDay) parts.push_back(&piece);
    for (std::size_t i = 0; i < parts.size(); ++i) {
      const bool behindHours = i > 0 && parts[i - 1]->What == Piece::Hour;
      const bool beforeSeconds = i + 1 < parts.size() && parts[i + 1]->What == Piece::Second;
      if (parts[i]->What == Piece::Month && parts[i]->Letters <= 2 && (behindHours || beforeSeconds))
        parts[i]->What = Piece::Minute;
    }
  }

  std::string_view rest_;
  DatePattern read_;
};

std::string Padded(std::int64_t number, int digits) {
  std::string text = std::to_string(number);
  const auto shown = static_cast<std::size_t>(digits);
  if (text.size() < shown) text.insert(0, shown - text.size(), '0');
  return text;
}

constexpr const char* kMonths[] = {"January", "February", "March",     "April",   "May",      "June",
                                   "July",    "August",   "September", "October", "November", "December"};

// A moment in the smallest unit that its pattern shows.
struct Moment {
  std::chrono::year_month_day Date{kDayZero};
  std::int64_t Seconds = 0;  // of the day or, where they are elapsed, of all
  std::int64_t Fraction = 0;
};

std::string PieceText(const Piece& piece, const Moment& moment, bool halves, char decimalSeparator) {
  const std::int64_t hours = moment.Seconds / 3600, minutes = moment.Seconds / 60;
  const unsigned month = static_cast<unsigned>(moment.Date.month());
  switch (piece.What) {
    case Piece::Literal:
      return std::string(piece.Text);
    case Piece::Year:
      return Padded(static_cast<int>(moment.Date.year()) % (piece.Letters == 2 ? 100 : 10000), piece.Letters);
    case Piece::Month:
      if (piece.Letters > 2)
        return std::string(kMonths[month - 1]).substr(0, piece.Letters == 3 ? 3 : std::string::npos);
      return Padded(month, piece.Letters);
    case Piece::Day:
      return Padded(static_cast<unsigned>(moment.Date.day()), piece.Letters);
    case Piece::Hour:
      if (piece.Elapsed) return Padded(hours, piece.Letters);
      return Padded(halves ? (hours + 11) % 12 + 1 : hours % 24, piece.Letters);
    case Piece::Minute:
      return Padded(piece.Elapsed ? minutes : minutes % 60, piece.Letters);
    case Piece::Second:
      return Padded(piece.Elapsed ? moment.Seconds : moment.Seconds % 60, piece.Letters) +
             (piece.Decimals > 0 ? decimalSeparator + Padded(moment.Fraction, piece.Decimals) : "");
    case Piece::HalfOfDay:
      return hours % 24 < 12 ? "AM" : "PM";
  }
  return "";
}

std::string FormatBy(const DatePattern& pattern, double days, char decimalSeparator) {
  constexpr double kMostElapsed = 1e9;
  const bool elapsed = pattern.IsElapsed() && !pattern.HasDate();
  if (!(std::abs(days) <= kMostElapsed)) return GeneralNumber(days);
  // What is left out is cut off, but a last bit that is missing to a full minute costs no minute.
  const int decimals = pattern.Find(Piece::Second) ? pattern.Decimals() : 3;
  std::int64_t unitsOfSecond = 1;
  for (int i = 0; i < decimals; ++i) unitsOfSecond *= 10;
  const std::int64_t unitsOfDay = kSecondsOfDay * unitsOfSecond;
  auto units =
      static_cast<std::int64_t>(std::nearbyint((elapsed ? std::abs(days) : days) * static_cast<double>(unitsOfDay)));
  std::int64_t day = units / unitsOfDay;
  if (day * unitsOfDay > units) --day;  // division cuts towards zero
  Moment moment;
  if (pattern.HasDate()) {
    constexpr auto kFirst = (sys_days(std::chrono::year(1) / 1 / 1) - kDayZero).count();
    constexpr auto kLast = (sys_days(std::chrono::year(kLastYear) / 12 / 31) - kDayZero).count();
    if (day < kFirst || day > kLast) return GeneralNumber(days);
    moment.Date = std::chrono::year_month_day(kDayZero + std::chrono::days(day));
  }
  if (!elapsed) units -= day * unitsOfDay;
  moment.Seconds = units / unitsOfSecond;
  moment.Fraction = units % unitsOfSecond;
  std::string text = elapsed && days < 0 && units > 0 ? "-" : "";
  for (const Piece& piece : pattern.Pieces)
    text += PieceText(piece, moment, pattern.Find(Piece::HalfOfDay) != nullptr, decimalSeparator);
  return text;
}

// The order of a pattern with a day and a month in numbers; that with the year first for any other.
DateOrder OrderOf(const DatePattern& pattern) {
  const Piece *const year = pattern.Find(Piece::Year), *const month = pattern.Find(Piece::Month),
                     *const day = pattern.Find(Piece::Day);
  if (!month || !day || month->Letters > 2 || (year && year < month && year < day)) return DateOrder::YearFirst;
  return day < month ? DateOrder::DayFirst : DateOrder::MonthFirst;
}

}  // namespace

void DateForm::Join(const DateForm& other) {
  if (!HasDate && other.HasDate) {
    HasDate = true;
    Order = other.Order;
    Separator = other.Separator;
  }
  HasTime |= other.HasTime;
  HasSeconds |= other.HasSeconds;
  Elapsed |= other.Elapsed;
  Decimals = std::max(Decimals, other.Decimals);
}

std::string DateForm::Pattern() const {
  std::string pattern;
  if (HasDate) {
    std::array<std::string, 3> parts{"yyyy", "mm", "dd"};
    if (Order == DateOrder::DayFirst) parts = {"dd", "mm", "yyyy"};
    if (Order == DateOrder::MonthFirst) parts = {"mm", "dd", "yyyy"};
    pattern = parts[0] + Separator + parts[1] + Separator + parts[2];
  }
  if (HasDate && HasTime) pattern += ' ';
  if (HasTime) pattern += Elapsed && !HasDate ? "[h]:mm" : "hh:mm";
  if (HasSeconds) pattern += ":ss";
  if (Decimals > 0) pattern += Decimals <= 3 ? ".000" : ".000000";
  return pattern;
}

std::optional<SerialDate> ReadDate(std::string_view text, const LocaleText& locale) {
  return DateReader(text, locale).Read();
}

bool IsDatePattern(std::string_view pattern) { return PatternReader(pattern).Read().has_value(); }

std::string FormatDate(double days, std::string_view pattern, char decimalSeparator) {
  const std::optional<DatePattern> read = PatternReader(pattern).Read();
  return read ? FormatBy(*read, days, decimalSeparator) : GeneralNumber(days);
}

std::string DateEntry(double days, std::string_view pattern, const LocaleText& locale) {
  const std::optional<DatePattern> read = PatternReader(pattern).Read();
  if (!read) return "";
  DateForm form;
  form.HasDate = read->HasDate() || (!read->IsElapsed() && (days < 0 || days >= 1));
  form.Elapsed = !form.HasDate;
  if (const DateOrder order = OrderOf(*read); order == locale.OrderOfDate && order != DateOrder::YearFirst) {
    form.Order = order;
    form.Separator = locale.DateSeparator;
  }
  form.HasTime = read->HasTime() || form.Elapsed;
  form.HasSeconds = read->Find(Piece::Second) != nullptr;
  form.Decimals = read->Decimals();
  const auto fits = [&](std::string& text) {
    text = FormatDate(days, form.Pattern(), locale.DecimalSeparator);
    const std::optional<SerialDate> back = ReadDate(text, locale);
    return back && back->Days == days;
  };
  std::string text;
  if (fits(text)) return text;
  form.HasTime = true;
  if (fits(text)) return text;
  form.HasSeconds = true;
  if (fits(text)) return text;
  for (form.Decimals = 3; form.Decimals <= kMostDecimals; form.Decimals += 3)
    if (fits(text)) return text;
  return "";
}

void DateColumn::Add(std::string_view text) {
  text = Trim(text);
  const std::size_t mark = text.find_first_not_of("0123456789");
  if (mark == 0 || mark == std::string_view::npos || text[mark] == ':') return;
  const auto readIn = [&](DateOrder order) {
    return ReadDate(text, {.DateSeparator = text[mark], .OrderOfDate = order});
  };
  const std::optional<SerialDate> month = readIn(DateOrder::MonthFirst);
  const bool yearFirst = month && month->Form.Order == DateOrder::YearFirst;
  const std::optional<SerialDate> day = yearFirst ? month : readIn(DateOrder::DayFirst);
  if (!month && !day) return;
  if (separator_ == '-') separator_ = text[mark];
  seen_ = true;
  if (yearFirst) return;
  yearLast_ = true;
  if (!month) monthFirst_ = false;
  if (!day) dayFirst_ = false;
  if (month && day && month->Days != day->Days) {
    differ_ = true;
    if (either_.empty()) either_ = text;
  }
}

LocaleText DateColumn::Locale(LocaleText locale, DateOrder ambiguous) const {
  if (separator_ != '-') locale.DateSeparator = separator_;  // which is read besides "-"
  if (!yearLast_) return locale;
  locale.OrderOfDate = !monthFirst_ && !dayFirst_ ? DateOrder::YearFirst
                       : !monthFirst_             ? DateOrder::DayFirst
                       : !dayFirst_               ? DateOrder::MonthFirst
                       : differ_                  ? ambiguous
                                                  : DateOrder::DayFirst;
  return locale;
}

DateOrder DateColumn::Expected(const LocaleText& locale) const {
  return separator_ == '.' || locale.OrderOfDate == DateOrder::YearFirst ? DateOrder::DayFirst : locale.OrderOfDate;
}

}  // namespace quorvex
