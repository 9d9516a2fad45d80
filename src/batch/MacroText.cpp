#include "batch/MacroText.h"

#include <algorithm>

#include "core/NumberText.h"

namespace quorvex {

std::string GetLineKey(std::string& line) {
  std::erase(line, '\t');
  const std::string_view text = line;
  return std::string(Trim(text.substr(0, text.find('='))));
}

std::string GetLineValue(std::string_view line) {
  const auto equals = line.find('=');
  return equals == std::string_view::npos ? std::string() : std::string(Trim(line.substr(equals + 1)));
}

std::string RemoveSpaces(std::string& text) {
  std::erase(text, ' ');
  return text;
}

std::string_view LineReader::Next() {
  const auto end = std::min(rest_.find_first_of("\r\n"), rest_.size());
  const std::string_view line = rest_.substr(0, end);
  const std::size_t ending = rest_.substr(end).starts_with("\r\n") ? 2 : end < rest_.size() ? 1 : 0;
  rest_.remove_prefix(end + ending);
  return line;
}

}  // namespace quorvex
