#include "macro/MacroFault.h"

#include "core/NumberText.h"
#include "macro/MacroStatements.h"

namespace quorvex {
namespace {

// Sentences that stand alone elsewhere follow a colon here.
std::string BehindColon(std::string text) {
  for (const std::string_view word : {"The ", "No ", "Nothing "})
    if (text.starts_with(word)) text[0] = static_cast<char>(text[0] - 'A' + 'a');
  return text;
}

}  // namespace

std::string ShownFault(const MacroFault& fault) {
  constexpr std::size_t kLongest = 600;
  std::string place;
  if (fault.Line > 0) place = "Line " + std::to_string(fault.Line);
  if (fault.Row > 0) place += (place.empty() ? "Row " : ", row ") + std::to_string(fault.Row);
  if (fault.MoreRows > 0) place += " and " + std::to_string(fault.MoreRows) + " more";
  std::string text = FirstCharacters(fault.Text, kLongest);
  if (text != fault.Text) text += "...";
  if (!text.ends_with('.') && !text.ends_with('?')) text += '.';
  // What is no text at all must not command a terminal: neither by a control character of ASCII nor by one of those
  // from 80 to 9F, which UTF-8 writes as two bytes.
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = [&](std::size_t at) { return at < text.size() ? static_cast<unsigned char>(text[at]) : 0; };
    if (byte(i) < ' ' || byte(i) == 0x7F) text[i] = ' ';
    if (byte(i) == 0xC2 && byte(i + 1) >= 0x80 && byte(i + 1) < 0xA0) text[i] = text[i + 1] = ' ';
  }
  return place.empty() ? text : place + ": " + BehindColon(text);
}

std::size_t MacroNotes::LineOf(std::string_view keyword) const {
  for (auto line = Lines.rbegin(); line != Lines.rend(); ++line)
    if (line->Statement != nullptr && line->Statement->Keyword == keyword) return line->Number;
  return 0;
}

}  // namespace quorvex
