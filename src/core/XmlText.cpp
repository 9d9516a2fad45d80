#include "core/XmlText.h"

#include <algorithm>
#include <cstddef>

#include "core/TextEncoding.h"

namespace quorvex {

std::string XmlText(std::string_view text) {
  constexpr const char* kReplacement = "\xEF\xBF\xBD";
  std::string xml;
  xml.reserve(text.size());
  while (!text.empty()) {
    const std::size_t length = Utf8Length(text);
    const std::string_view character = text.substr(0, std::max<std::size_t>(length, 1));
    text.remove_prefix(character.size());
    const char first = character[0];
    // U+FFFE and U+FFFF are UTF-8, but no characters.
    if (length == 0 || character == "\xEF\xBF\xBE" || character == "\xEF\xBF\xBF")
      xml += kReplacement;
    else if (first == '&')
      xml += "&amp;";
    else if (first == '<')
      xml += "&lt;";
    else if (first == '>')
      xml += "&gt;";
    else if (first == '"')
      xml += "&quot;";
    else if (first == '\t' || first == '\n' || first == '\r')
      xml += ' ';
    else if ((first >= 0 && first < ' ') || first == '\x7F')
      xml += kReplacement;
    else
      xml += character;
  }
  return xml;
}

}  // namespace quorvex
