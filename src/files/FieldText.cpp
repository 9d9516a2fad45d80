#include "files/FieldText.h"

#include <algorithm>
#include <charconv>
#include <system_error>

#include "core/NumberText.h"

namespace quorvex {

std::string EscapeQuotes(std::string_view text) {
  std::string escaped(text);
  // Fields have no escape for the quote that ends them.
  std::replace(escaped.begin(), escaped.end(), '"', '\'');
  return escaped;
}

std::string EncodeLocaleText(std::string_view text, const LocaleText& locale) {
  return DelocalizeExpression(text, locale);
}

// Unlike LocalizeExpression it drops no thousands separator: what was encoded comes back as it was.
std::string DecodeLocaleText(std::string_view text, const LocaleText& locale) {
  std::string decoded(text);
  for (char& c : decoded) {
    if (c == '.') {
      c = locale.DecimalSeparator;
    } else if (c == ',') {
      c = locale.ListSeparator;
    }
  }
  return decoded;
}

std::optional<int> CountBehindEquals(std::string_view text) {
  const std::size_t equals = text.find('=');
  if (equals == std::string_view::npos) return std::nullopt;
  const std::string_view digits = Trim(text.substr(equals + 1));
  int count = 0;
  const auto [end, error] = std::from_chars(digits.begin(), digits.end(), count);
  if (error != std::errc() || end != digits.end()) return std::nullopt;
  return count;
}

}  // namespace quorvex
