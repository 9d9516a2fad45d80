#pragma once

#include <string>
#include <string_view>

namespace quorvex {

// Deletes every tab of `line` and returns the text left of its first "=", trimmed; the whole trimmed line without "=".
std::string GetLineKey(std::string& line);

// The text right of the first "=", trimmed; empty without one.
std::string GetLineValue(std::string_view line);

// Deletes all blanks of `text` and returns the result.
std::string RemoveSpaces(std::string& text);

}  // namespace quorvex
