#include "macro/MacroText.h"

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

bool HasForeignSeparator(std::string_view list, char listSeparator) {
  const char foreign = listSeparator == ',' ? ';' : ',';
  return list.find(listSeparator) == std::string_view::npos && list.find(foreign) != std::string_view::npos;
}

std::string RemoveSpaces(std::string& text) {
  std::erase(text, ' ');
  return text;
}

std::string NamesInOneLine(std::string_view lines) {
  std::string line;
  while (!lines.empty()) line.append(line.empty() ? "" : ", ").append(TakeLine(lines));
  return line;
}

}  // namespace quorvex
