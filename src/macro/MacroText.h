#pragma once

#include <string>
#include <string_view>

namespace quorvex {

// Deletes every tab of `line` and returns the text left of its first "=", trimmed; the whole trimmed line without "=".
std::string GetLineKey(std::string& line);

// The text right of the first "=", trimmed; empty without one.
std::string GetLineValue(std::string_view line);

// Whether `list` is separated by the separator of other locales, "," for ";" or the other way round, and not by this
// one's.
bool HasForeignSeparator(std::string_view list, char listSeparator);

// Deletes all blanks of `text` and returns the result.
std::string RemoveSpaces(std::string& text);

// Several names, one a line, as a log shows them.
std::string NamesInOneLine(std::string_view lines);

}  // namespace quorvex
