#include "core/LocaleText.h"

#include <langinfo.h>
#include <locale.h>

#include <cstdlib>
#include <initializer_list>
#include <memory>
#include <type_traits>

#include "core/NumberText.h"

namespace quorvex {
namespace {

// The first of these environment variables that is set and not empty, as the system's own rule has it.
const char* LocaleName(std::initializer_list<const char*> variables) {
  for (const char* variable : variables) {
    const char* name = std::getenv(variable);
    if (name == nullptr || *name == '\0') continue;
    // The same but for its character set; "C" itself is read from no file.
    return EqualNoCase(name, "C.UTF-8") || EqualNoCase(name, "C.utf8") ? "C" : name;
  }
  return "C";
}

using LocaleHandle = std::unique_ptr<std::remove_pointer_t<locale_t>, decltype(&freelocale)>;

LocaleHandle OpenLocale(int categories, const char* name) {
  // Opened and never set: a global locale would change how the C library reads and writes numbers everywhere.
  return LocaleHandle(newlocale(categories, name, locale_t{}), freelocale);
}

// An item of the locale that is one plain character, else `otherwise`.
char PlainCharacter(const char* item, char otherwise) {
  const bool plain = item[0] > ' ' && item[0] < 0x7F && item[1] == '\0';
  return plain ? item[0] : otherwise;
}

// What stands between the first two conversions of a date or time format such as "%d.%m.%Y".
char SeparatorOfFormat(std::string_view format, char otherwise) {
  if (format.size() < 4 || format[0] != '%' || format[3] != '%') return otherwise;
  return PlainCharacter(std::string(format.substr(2, 1)).c_str(), otherwise);
}

// The order of a date format such as "%d.%m.%Y", "%e/%-m/%y" or "%F".
DateOrder OrderOfFormat(std::string_view format) {
  for (std::size_t i = 1; i < format.size(); ++i) {
    if (format[i - 1] != '%') continue;
    while (i + 1 < format.size() && std::string_view("-_0^EO").find(format[i]) != std::string_view::npos) ++i;
    if (format[i] == 'd' || format[i] == 'e') return DateOrder::DayFirst;
    if (format[i] == 'm' || format[i] == 'b' || format[i] == 'D') return DateOrder::MonthFirst;
    if (format[i] == 'Y' || format[i] == 'y' || format[i] == 'C' || format[i] == 'F') return DateOrder::YearFirst;
  }
  return DateOrder::MonthFirst;
}

}  // namespace

LocaleText ReadUserLocale() {
  LocaleText text;
  if (const auto locale = OpenLocale(LC_NUMERIC_MASK, LocaleName({"LC_ALL", "LC_NUMERIC", "LANG"}))) {
    text.DecimalSeparator = PlainCharacter(nl_langinfo_l(RADIXCHAR, locale.get()), text.DecimalSeparator);
    // A comma cannot both end the whole part of a number and separate numbers.
    if (text.DecimalSeparator == ',') {
      text.ListSeparator = ';';
      text.ThousandSeparator = '.';
    }
    const char thousands = PlainCharacter(nl_langinfo_l(THOUSEP, locale.get()), text.ThousandSeparator);
    if (thousands != text.DecimalSeparator) text.ThousandSeparator = thousands;
  }
  if (const auto locale = OpenLocale(LC_TIME_MASK, LocaleName({"LC_ALL", "LC_TIME", "LANG"}))) {
    text.DateSeparator = SeparatorOfFormat(nl_langinfo_l(D_FMT, locale.get()), text.DateSeparator);
    text.OrderOfDate = OrderOfFormat(nl_langinfo_l(D_FMT, locale.get()));
    text.TimeSeparator = SeparatorOfFormat(nl_langinfo_l(T_FMT, locale.get()), text.TimeSeparator);
  }
  return text;
}

std::string LocalizeExpression(std::string_view text, const LocaleText& locale) {
  if (locale.DecimalSeparator == '.' && locale.ListSeparator == ',' && locale.ThousandSeparator == ',')
    return std::string(text);
  std::string localized;
  localized.reserve(text.size());
  for (const char c : text) {
    if (c == '.') {
      localized += locale.DecimalSeparator;
    } else if (c == ',') {
      localized += locale.ListSeparator;
    } else if (c != locale.ThousandSeparator) {
      localized += c;
    }
  }
  return localized;
}

std::string DelocalizeExpression(std::string_view text, const LocaleText& locale) {
  std::string stored(text);
  for (char& c : stored) {
    if (c == locale.DecimalSeparator) {
      c = '.';
    } else if (c == locale.ListSeparator) {
      c = ',';
    }
  }
  return stored;
}

}  // namespace quorvex
