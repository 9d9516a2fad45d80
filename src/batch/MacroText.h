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

// The lines of a text one after the other, ended by CR LF, LF or CR. A line end at the very end adds no empty line.
class LineReader {
 public:
  explicit LineReader(std::string_view text) : rest_(text) {}
  bool AtEnd() const { return rest_.empty(); }
  // The next line without its end; only when not AtEnd.
  std::string_view Next();

 private:
  std::string_view rest_;
};

}  // namespace quorvex
