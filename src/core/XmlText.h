#pragma once

#include <string>
#include <string_view>

namespace quorvex {

// A text between tags or quotes of XML or HTML: with what would be markup written as references, and U+FFFD for bytes
// that are not UTF-8 and for characters that no XML document may hold. Blanks of any kind are blanks.
std::string XmlText(std::string_view text);

}  // namespace quorvex
