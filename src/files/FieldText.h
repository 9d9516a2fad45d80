#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/LocaleText.h"

namespace quorvex {

// A text as it may stand between double quotes: each double quote becomes an apostrophe.
std::string EscapeQuotes(std::string_view text);

// Model text for a file: the locale's decimal separator becomes ".", its list separator ",".
std::string EncodeLocaleText(std::string_view text, const LocaleText& locale);

// Model text from a file, in the locale's form: "." becomes the decimal separator, "," the list separator.
std::string DecodeLocaleText(std::string_view text, const LocaleText& locale);

// The whole number behind the first "=" of a text such as "columns=4"; nothing where there is none.
std::optional<int> CountBehindEquals(std::string_view text);

}  // namespace quorvex
