#include "import/TextLines.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>

#include "core/NumberText.h"
#include "sheet/DecimalCommas.h"

namespace quorvex {
namespace {

constexpr std::string_view kSigns[] = {"#", "%", "//", ";", "!"};
constexpr std::size_t kSemicolon = 3, kQuotes = std::size(kSigns);  // a quoted text has the place behind the signs

bool EndsLine(char c) { return c == '\n' || c == '\r'; }
bool Delimits(char c) { return c == '\t' || c == ',' || c == ';' || c == ' '; }

std::string_view WithoutBlanks(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(" \t");
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(" \t") + 1 - begin);
}

// The quote that ends the cell which begins with one at `quote`, npos where none does.
std::size_t EndOfQuotes(std::string_view text, std::size_t quote) {
  constexpr std::size_t kLongest = 4096;
  for (std::size_t at = quote + 1; at < text.size() && at - quote < kLongest; ++at) {
    if (text[at] != '"') continue;
    if (at + 1 < text.size() && text[at + 1] == '"') {
      ++at;
      continue;
    }
    const bool ends = at + 1 == text.size() || Delimits(text[at + 1]) || EndsLine(text[at + 1]);
    return ends ? at : std::string_view::npos;  // text behind a quote: it holds nothing
  }
  return std::string_view::npos;
}

// Which sign the line begins with, as if it were a comment; kQuotes for a line that is one quoted text.
std::optional<std::size_t> SignOf(std::string_view line) {
  line = WithoutBlanks(line);
  if (line.size() > 2 && line.front() == '"')
    return EndOfQuotes(line, 0) == line.size() - 1 && !NumericText(line.substr(1, line.size() - 2))
               ? std::optional(kQuotes)
               : std::nullopt;
  if (line.starts_with('#') && IsMissingWord(line.substr(0, line.find_first_of("\t,; ")))) return std::nullopt;
  for (std::size_t sign = 0; sign < std::size(kSigns); ++sign)
    if (line.starts_with(kSigns[sign])) return sign;
  return std::nullopt;
}

}  // namespace

void JoinQuotedLines(std::string& text) {
  bool beginsCell = true;
  std::size_t kept = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == '"' && beginsCell) {
      if (const std::size_t end = EndOfQuotes(text, at); end != std::string::npos) {
        for (; at < end; ++at) {
          if (text[at] == '\r' && text[at + 1] == '\n') continue;
          text[kept++] = EndsLine(text[at]) ? ' ' : text[at];
        }
      }
    }
    beginsCell = EndsLine(text[at]) || Delimits(text[at]);
    text[kept++] = text[at];
  }
  text.resize(kept);
}

std::vector<CommentLine> FindComments(std::string_view text) {
  std::array<std::vector<CommentLine>, kQuotes + 1> found;
  std::size_t lines = 0, split = 0, whole = 0, semicolons = 0;
  bool numbers = false;
  for (std::string_view rest = text; !rest.empty();) {
    const std::string_view line = TakeLine(rest);
    ++lines;
    // Most lines begin with a digit, a sign or a letter: those are looked at no further.
    const std::size_t begin = line.find_first_not_of(" \t");
    if (begin == std::string_view::npos) continue;
    constexpr std::string_view kFirst = "#%/;!\"";
    const auto sign = kFirst.find(line[begin]) == std::string_view::npos ? std::nullopt : SignOf(line);
    if (sign) {
      found[*sign].push_back({lines, std::string(line)});
    } else {
      ++(line.find_first_of("\t,; ") != std::string_view::npos ? split : whole);
      numbers = numbers || line.find_first_of("0123456789") != std::string_view::npos;
      semicolons += line.find(';') != std::string_view::npos;
    }
  }
  std::vector<CommentLine> comments;
  if (!numbers) return comments;
  if (split < whole) found[kQuotes].clear();  // a single column, of texts maybe
  if (semicolons > 0) found[kSemicolon].clear();
  for (auto& list : found) std::ranges::move(list, std::back_inserter(comments));
  std::ranges::sort(comments, {}, &CommentLine::Line);
  return comments;
}

std::string_view CommentText(std::string_view line) {
  line = WithoutBlanks(line);
  if (line.size() > 1 && line.front() == '"' && line.back() == '"') return line.substr(1, line.size() - 2);
  for (const std::string_view sign : kSigns)
    while (line.starts_with(sign)) line.remove_prefix(sign.size());
  return WithoutBlanks(line);
}

std::string BlankLines(std::string text, const std::vector<CommentLine>& lines) {
  std::size_t line = 0;
  auto next = lines.begin();
  for (std::string_view rest = text; next != lines.end();) {
    const std::string_view read = TakeLine(rest);
    if (++line != next->Line) continue;
    const auto begin = static_cast<std::size_t>(read.data() - text.data());
    std::fill_n(text.begin() + static_cast<std::ptrdiff_t>(begin), read.size(), ' ');
    ++next;
  }
  return text;
}

}  // namespace quorvex
