#include "sheet/ParseDelimitedLines.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "core/NumberText.h"
#include "core/SerialDate.h"
#include "core/TextEncoding.h"
#include "core/ThreadTeam.h"

namespace quorvex {
namespace {

constexpr std::size_t kLongestCell = 255;

// Parts of a piece, each one ending with a line, and about as long as the others.
std::vector<std::string_view> PartsOf(std::string_view piece, std::size_t count) {
  std::vector<std::string_view> parts;
  for (; count > 1; --count) {
    std::size_t end = std::min(piece.find_first_of("\r\n", piece.size() / count), piece.size());
    end = std::min(end + (piece.substr(end, 2) == "\r\n" ? 2 : 1), piece.size());
    parts.push_back(piece.substr(0, end));
    piece.remove_prefix(end);
  }
  parts.push_back(piece);
  return parts;
}

// Takes a text piece by piece, each one ending with a line.
class LineParser {
 public:
  explicit LineParser(const DelimitedFormat& format) : format_(format) {
    lines_.Cells.FirstLine = std::max<std::size_t>(format.FirstLine, 1);
    constexpr std::pair<int, char> kDelimiters[] = {
        {kTabDelimiter, '\t'}, {kCommaDelimiter, ','}, {kSpaceDelimiter, ' '}, {kSemicolonDelimiter, ';'}};
    for (const auto& [bit, character] : kDelimiters) Delimits(character) = (format.Delimiters & bit) != 0;
    blanksPad_ = !Delimits(' ');
    replacePoint_ = !format.AllTexts && format.OverrideDecimal && format.DecimalSeparator != '.';
    pointNumbers_ = !format.AllTexts && (format.DecimalSeparator == '.' || replacePoint_);
  }

  // `behind` is how many bytes are to come behind this piece, as far as that is known.
  void Take(std::string_view piece, std::size_t behind) {
    if (isBeginning_ && piece.starts_with("\xEF\xBB\xBF")) piece.remove_prefix(3);
    isBeginning_ = false;
    at_ = piece.data();
    end_ = at_ + piece.size();
    blanksEnd_ = nullptr;
    for (; line_ < format_.FirstLine && !AtEnd(); ++line_) SkipLine();
    const char* begin = at_;
    while (!IsFull() && !AtEnd()) {
      ParseLine();
      if (lines_.Rows == kSample) {
        sampled_ += static_cast<std::size_t>(at_ - begin);
        begin = at_;
        StoreUsual(lines_.Rows + 1, 0);  // while they have as many columns as when they were read
        MakeRoom(static_cast<std::size_t>(end_ - at_) + behind);
        usualColumns_ = std::min(lines_.Cells.GridLastCol(), kMostUsualColumns);
        usual_.resize(usualColumns_ * kUsualRows);
      }
    }
    StoreUsual(lines_.Rows + 1, 0);
    sampled_ += static_cast<std::size_t>(at_ - begin);
  }
  // The same with a team, whose members take one part after the other.
  void TakeParts(std::string_view piece, ThreadTeam& team) {
    const std::vector<std::string_view> parts = PartsOf(piece, 4 * team.Size());
    std::vector<DelimitedLines> parsed(parts.size());
    std::atomic<std::size_t> next = 0;
    team.Run([&](std::size_t) {
      for (std::size_t i = next++; i < parts.size(); i = next++) {
        LineParser parser(format_);
        parser.usualColumns_ = usualColumns_;
        parser.usual_.resize(usualColumns_ * kUsualRows);
        parser.isBeginning_ = false;
        parser.line_ = format_.FirstLine;
        parser.Take(parts[i], 0);
        parsed[i] = parser.TakeLines();
      }
    });
    for (DelimitedLines& part : parsed) {
      lines_.Cells.AppendBelow(lines_.Rows, std::move(part.Cells));
      lines_.Rows += part.Rows;
    }
  }
  // Whether parts of the lines to come may be parsed by themselves: which lines those are, and how many, is known.
  bool MayPart() const { return lines_.Rows >= kSample && format_.LineLimit == DelimitedFormat().LineLimit; }
  bool IsFull() const { return lines_.Rows >= format_.LineLimit; }

  DelimitedLines TakeLines() { return std::move(lines_); }

 private:
  static constexpr std::size_t kSample = 1000, kUsualRows = 200, kMostUsualColumns = 32;

  bool AtEnd() const { return at_ == end_; }

  // Growing step by step would copy each column and hold twice the memory for a moment. The rows to come are estimated
  // from those so far; a grid of mostly empty cells is left to grow, or it would claim more than it needs.
  void MakeRoom(std::size_t bytesLeft) {
    const std::size_t more = lines_.Rows * bytesLeft / sampled_ * 21 / 20;
    const std::size_t rows = std::min(format_.LineLimit, lines_.Rows + more);
    if (rows * lines_.Cells.GridLastCol() <= sampled_ + bytesLeft) lines_.Cells.Reserve(rows);
  }

  void ParseLine() {
    const std::size_t row = ++lines_.Rows;
    bool isUsual = true;
    const char* at = BehindBlanks(at_);
    std::size_t col = 1;
    while (col <= format_.ColumnLimit) {
      double value = 0;
      const char* end = NumberCell(at, value);
      if (isUsual && (end == nullptr || col > usualColumns_)) {
        isUsual = false;
        StoreUsual(row, col - 1);
      }
      if (end == nullptr)
        end = ParseText(at, row, col);
      else if (isUsual)
        usual_[(col - 1) * kUsualRows + usualRows_] = value;
      else
        lines_.Cells.SetGridCellNumber(row, col, value);
      ++col;
      at = BehindBlanksAtLineEnd(end);
      if (EndsLine(at)) break;
      ++at;
      while (format_.IgnoreConsecutive && at != end_ && Delimits(*at)) ++at;
    }
    at_ = at;
    SkipLine();
    if (!isUsual) return;
    if (col <= usualColumns_) return StoreUsual(row, col - 1);
    if (++usualRows_ == kUsualRows) StoreUsual(row + 1, 0);
  }

  // Puts the usual rows into the columns, with the first `count` cells of `row`, which is behind them.
  void StoreUsual(std::size_t row, std::size_t count) {
    for (std::size_t col = 0; col < usualColumns_; ++col)
      lines_.Cells.AppendNumbers(row - usualRows_, col + 1,
                                 std::span(usual_).subspan(col * kUsualRows, usualRows_ + (col < count ? 1 : 0)));
    usualRows_ = 0;
  }

  void SkipLine() {
    while (!EndsLine(at_)) ++at_;
    if (AtEnd()) return;
    const bool carriageReturn = *at_++ == '\r';
    if (carriageReturn && !AtEnd() && *at_ == '\n') ++at_;
  }

  bool& Delimits(char c) { return delimits_[static_cast<unsigned char>(c)]; }
  bool EndsLine(const char* at) const { return at == end_ || *at == '\n' || *at == '\r'; }
  bool EndsCell(const char* at) { return EndsLine(at) || Delimits(*at); }

  const char* BehindBlanks(const char* at) const {
    while (at != end_ && *at == ' ') ++at;
    return at;
  }

  // Blanks before the line's end delimit nothing. The end of a run of blanks is kept, so that a long run in which each
  // blank is a delimiter is looked through once.
  const char* BehindBlanksAtLineEnd(const char* at) {
    if (at == end_ || *at != ' ' || at < blanksEnd_) return at;
    blanksEnd_ = BehindBlanks(at);
    return EndsLine(blanksEnd_) ? blanksEnd_ : at;
  }

  // Where the cell that begins at `begin` ends, if it is a number as it stands; else null.
  const char* NumberCell(const char* begin, double& value) {
    if (!pointNumbers_) return nullptr;
    if (blanksPad_) begin = BehindBlanks(begin);
    const std::size_t length = LeadingNumber({begin, static_cast<std::size_t>(end_ - begin)}, value);
    if (length == 0 || length > kLongestCell) return nullptr;
    const char* const end = blanksPad_ ? BehindBlanks(begin + length) : begin + length;
    return EndsCell(end) && std::string_view(begin, length) != format_.MissingMarker ? end : nullptr;
  }

  // Stores any other cell and returns where it ends.
  const char* ParseText(const char* begin, std::size_t row, std::size_t col) {
    if (blanksPad_) begin = BehindBlanks(begin);
    const char* end = format_.QuotesHold && begin != end_ && *begin == '"' ? BehindQuotes(begin) : begin;
    while (!EndsCell(end)) ++end;
    StoreText(Trim({begin, static_cast<std::size_t>(end - begin)}), row, col);
    return end;
  }

  // Where a cell that begins with a quote ends, with blanks behind its last one; its beginning where no quote ends it.
  const char* BehindQuotes(const char* const first) {
    for (const char* at = first + 1; !EndsLine(at); ++at) {
      if (*at != '"') continue;
      const char* const end = blanksPad_ ? BehindBlanks(at + 1) : at + 1;
      if (EndsCell(end)) return end;
      if (end != at + 1 || *end != '"') return first;  // text behind a quote: none of them holds anything
      ++at;                                            // two are a quote of the text
    }
    return first;
  }

  // Only cells that are no bare number come here, so a file without quotes pays nothing for those with them.
  void StoreText(std::string_view bytes, std::size_t row, std::size_t col) {
    const std::string decoded = DecodeText(bytes);
    std::string_view cell = decoded;
    if (cell == format_.MissingMarker) return;
    const bool quoted = cell.size() > 1 && cell.front() == '"' && cell.back() == '"';
    if (quoted) cell = Trim(cell.substr(1, cell.size() - 2));
    if (cell.empty() || cell == format_.MissingMarker) return;
    std::string text(cell);
    if (format_.QuotesHold && quoted)
      for (std::size_t at = 0; (at = text.find("\"\"", at)) != std::string::npos; ++at) text.erase(at, 1);
    if (replacePoint_ && !IsDotted(text)) std::replace(text.begin(), text.end(), '.', format_.DecimalSeparator);
    text = CutCellText(std::move(text));
    const auto value = format_.AllTexts ? std::nullopt : NumericText(text, format_.DecimalSeparator);
    if (value) {
      lines_.Cells.SetGridCellNumber(row, col, *value);
    } else {
      lines_.Cells.SetGridCellText(row, col, text);
    }
  }

  // Whether the points of a text are those of a date, "31.12.2026" or "2026.12.31", which no separator replaces.
  static bool IsDotted(const std::string& text) {
    DateColumn date;
    date.Add(text);
    return date.IsDate() && text.find('.') < 5;
  }

  const DelimitedFormat& format_;
  std::array<bool, 256> delimits_{};
  bool replacePoint_ = false;  // each "." stands for the locale's separator
  bool pointNumbers_ = false;  // so a number with "." is a number as it stands
  bool blanksPad_ = false;     // blanks around a cell are none of it
  const char *at_ = nullptr, *end_ = nullptr, *blanksEnd_ = nullptr;

  DelimitedLines lines_;
  bool isBeginning_ = true;
  std::size_t line_ = 1;     // of the text, that comes next, up to the first that is read
  std::size_t sampled_ = 0;  // bytes of the lines that were read

  // Rows of a number in each of the first columns, which is how most of a long file is: they go to the columns by many,
  // and are kept here until then, column by column.
  std::vector<double> usual_;
  std::size_t usualColumns_ = 0, usualRows_ = 0;
};

}  // namespace

std::string CutCellText(std::string text) {
  std::size_t characters = 0, cut = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool beginsCharacter = (text[i] & 0xC0) != 0x80;
    if (beginsCharacter && ++characters == kLongestCell - 2) cut = i;
  }
  return characters <= kLongestCell ? text : text.substr(0, cut) + "...";
}

DelimitedLines ParseDelimitedLines(std::string_view text, const DelimitedFormat& format) {
  LineParser parser(format);
  parser.Take(text, 0);
  return parser.TakeLines();
}

int ReadDelimitedLines(FileLines& file, const DelimitedFormat& format, DelimitedLines& lines, int threads) {
  LineParser parser(format);
  std::optional<ThreadTeam> team;
  std::string_view piece;
  do {
    if (const int error = file.Next(piece); error != 0) return error;
    if (threads > 1 && !team && parser.MayPart()) team.emplace(static_cast<std::size_t>(threads));
    if (team)
      parser.TakeParts(piece, *team);
    else
      parser.Take(piece, file.BytesBehind());
  } while (!piece.empty() && !parser.IsFull());
  lines = parser.TakeLines();
  return 0;
}

}  // namespace quorvex
