#include "core/JsonText.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "core/NumberText.h"
#include "core/TextEncoding.h"

namespace quorvex {

std::string JsonText(std::string_view text) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string json = "\"";
  json.reserve(text.size() + 2);
  while (!text.empty()) {
    const std::size_t length = Utf8Length(text);
    const std::string_view character = text.substr(0, std::max<std::size_t>(length, 1));
    text.remove_prefix(character.size());
    const auto code = static_cast<unsigned char>(character[0]);
    if (length == 0)
      json += "\xEF\xBF\xBD";
    else if (code == '"' || code == '\\')
      json.append("\\").append(character);
    else if (code < ' ' || code == 0x7F)  // the latter is allowed as it stands, but no sight for a terminal
      json.append("\\u00").append(1, kDigits[code / 16]).append(1, kDigits[code % 16]);
    else
      json += character;
  }
  return json += '"';
}

std::string JsonNumber(double value) { return std::isfinite(value) ? ShortestNumber(value) : "null"; }

}  // namespace quorvex
