#include "sheet/ParseDelimitedLines.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "core/Files.h"
#include "core/NumberText.h"

namespace quorvex {
namespace {

constexpr std::size_t kLongestCell = 255;

bool IsLineEnd(char c) { return c == '\n' || c == '\r'; }

// At most 255 characters of UTF-8, the last three of a longer text being dots.
std::string CutCellText(std::string text) {
  const auto beginsCharacter = [](char c) { return (c & 0xC0) != 0x80; };
  if (static_cast<std::size_t>(std::count_if(text.begin(), text.end(), beginsCharacter)) <= kLongestCell) return text;
  std::size_t end = 0;
  for (std::size_t characters = 0; characters + 3 <= kLongestCell || !beginsCharacter(text[end]); ++end)
    if (beginsCharacter(text[end])) ++characters;
  return text.substr(0, end) + "...";
}

class LineParser {
 public:
  LineParser(std::string_view text, const DelimitedFormat& format)
      : format_(format), at_(text.data()), end_(text.data() + text.size()) {
    constexpr std::pair<int, char> kDelimiters[] = {
        {kTabDelimiter, '\t'}, {kCommaDelimiter, ','}, {kSpaceDelimiter, ' '}, {kSemicolonDelimiter, ';'}};
    for (const auto& [bit, character] : kDelimiters) Delimits(character) = (format.Delimiters & bit) != 0;
    replacePoint_ = format.OverrideDecimal && format.DecimalSeparator != '.';
    if (replacePoint_) Delimits('.') = Delimits(format.DecimalSeparator);
    pointNumbers_ = format.DecimalSeparator == '.' || (replacePoint_ && !Delimits('.'));
  }

  bool AtEnd() const { return at_ == end_; }
  std::size_t BytesLeft() const { return static_cast<std::size_t>(end_ - at_); }

  void ParseLine(std::size_t row, GridCells& cells) {
    SkipBlanks();
    for (std::size_t col = 1; col <= format_.ColumnLimit; ++col) {
      ParseCell(row, col, cells);
      SkipBlanksAtLineEnd();
      if (AtEnd() || IsLineEnd(*at_)) break;
      ++at_;
      while (format_.IgnoreConsecutive && !AtEnd() && Delimits(*at_)) ++at_;
    }
    SkipLine();
  }

  void SkipLine() {
    while (!AtEnd() && !IsLineEnd(*at_)) ++at_;
    if (AtEnd()) return;
    const bool carriageReturn = *at_++ == '\r';
    if (carriageReturn && !AtEnd() && *at_ == '\n') ++at_;
  }

 private:
  bool& Delimits(char c) { return delimits_[static_cast<unsigned char>(c)]; }
  bool EndsCell(const char* at) { return at == end_ || IsLineEnd(*at) || Delimits(*at); }

  void SkipBlanks() {
    while (!AtEnd() && *at_ == ' ') ++at_;
  }

  // Blanks before the line's end delimit nothing. The end of a run of blanks is kept, so that a long run in which each
  // blank is a delimiter is looked through once.
  void SkipBlanksAtLineEnd() {
    if (AtEnd() || *at_ != ' ' || at_ < blanksEnd_) return;
    blanksEnd_ = std::find_if(at_, end_, [](char c) { return c != ' '; });
    if (blanksEnd_ == end_ || IsLineEnd(*blanksEnd_)) at_ = blanksEnd_;
  }

  // Leaves at_ where the cell ends.
  void ParseCell(std::size_t row, std::size_t col, GridCells& cells) {
    const char* const start = at_;
    if (!Delimits(' ')) SkipBlanks();
    if (pointNumbers_) {
      double value;
      const char* const first = at_;
      const std::size_t length = LeadingNumber({at_, BytesLeft()}, value);
      at_ += length;
      if (!Delimits(' ')) SkipBlanks();
      if (length > 0 && EndsCell(at_) && length <= kLongestCell) {
        if (std::string_view(first, length) != format_.MissingMarker) cells.SetGridCellNumber(row, col, value);
        return;
      }
    }
    at_ = start;
    while (!EndsCell(at_)) ++at_;
    StoreText(Trim(std::string_view(start, static_cast<std::size_t>(at_ - start))), row, col, cells);
  }

  void StoreText(std::string_view bytes, std::size_t row, std::size_t col, GridCells& cells) const {
    if (bytes.empty() || bytes == format_.MissingMarker) return;
    std::string text = DecodeText(bytes);
    if (replacePoint_) std::replace(text.begin(), text.end(), '.', format_.DecimalSeparator);
    text = CutCellText(std::move(text));
    if (const auto value = NumericText(text, format_.DecimalSeparator)) {
      cells.SetGridCellNumber(row, col, *value);
    } else {
      cells.SetGridCellText(row, col, text);
    }
  }

  const DelimitedFormat& format_;
  std::array<bool, 256> delimits_{};
  bool replacePoint_ = false;  // each "." stands for the locale's separator
  bool pointNumbers_ = false;  // so a number with "." is a number as it stands
  const char* at_;
  const char* const end_;
  const char* blanksEnd_ = nullptr;
};

}  // namespace

DelimitedLines ParseDelimitedLines(std::string_view text, const DelimitedFormat& format) {
  constexpr std::size_t kSample = 1000;
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  DelimitedLines lines;
  lines.Cells.FirstLine = std::max<std::size_t>(format.FirstLine, 1);
  LineParser parser(text, format);
  for (std::size_t line = 1; line < format.FirstLine && !parser.AtEnd(); ++line) parser.SkipLine();
  const std::size_t begin = text.size() - parser.BytesLeft();
  while (lines.Rows < format.LineLimit && !parser.AtEnd()) {
    ++lines.Rows;
    parser.ParseLine(lines.Rows, lines.Cells);
    if (lines.Rows == kSample) {
      // Growing step by step would copy each column and hold twice the memory for a moment. The rows to come are
      // estimated from the sample; a grid of mostly empty cells is left to grow, or it would claim more than it needs.
      const std::size_t sampled = text.size() - parser.BytesLeft() - begin;
      const std::size_t rows = std::min(format.LineLimit, kSample + kSample * parser.BytesLeft() / sampled * 21 / 20);
      if (rows * lines.Cells.GridLastCol() <= text.size()) lines.Cells.Reserve(rows);
    }
  }
  return lines;
}

}  // namespace quorvex
