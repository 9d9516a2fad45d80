#include "import/TextImport.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/Files.h"
#include "core/NumberText.h"
#include "core/TextEncoding.h"
#include "import/ImportFailure.h"
#include "sheet/DecimalCommas.h"
#include "sheet/ParseDelimitedLines.h"

namespace quorvex {

Result<std::unique_ptr<TextImport>> TextImport::Open(const std::string& file, const DataSheet& sheet,
                                                     const LocaleText& locale) {
  WholeFile content;
  if (const int error = content.Read(file); error != 0) return ImportFailure(file, FileErrorText(error));
  // The mark of compound files, whatever the name says: some programs write a text and call it .xls.
  if (content.Text().starts_with("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"))
    return ImportFailure(file, "It is a spreadsheet of type .xls; save it as .xlsx, .ods or .csv and import that.");
  std::unique_ptr<TextImport> import(new TextImport(file, sheet, locale, std::string(content.Text())));
  if (import->lineCount_ == 0) return Failure{"It appears that the file '" + file + "' contains no data."};
  return import;
}

TextImport::TextImport(const std::string& file, const DataSheet& sheet, const LocaleText& locale, std::string text)
    : DataImport(file, sheet), Comma(locale.DecimalSeparator != ','), decimalSeparator_(locale.DecimalSeparator) {
  if (auto utf8 = DecodeUtf16(text)) text = std::move(*utf8);
  if (text.starts_with("\xEF\xBB\xBF")) text.erase(0, 3);  // a byte order mark is no data
  JoinQuotedLines(text);
  Comments = FindComments(text);
  text_ = data_ = std::make_shared<const std::string>(std::move(text));
  if (!Comments.empty()) data_ = std::make_shared<const std::string>(BlankLines(*text_, Comments));
  for (std::string_view rest = *text_; !rest.empty(); ++lineCount_) TakeLine(rest);
  Space = DupCheck = BlanksDelimit(*data_, decimalSeparator_);
  NoticeCommas();
}

namespace {

// Whether a piece of a line has several numbers with blanks between them. "10 000" is one.
bool AreNumbers(std::string_view piece, char decimalSeparator) {
  std::size_t numbers = 0;
  bool thousands = true;
  for (piece = Trim(piece); !piece.empty(); ++numbers) {
    const std::string_view word = piece.substr(0, piece.find(' '));
    if (!NumericText(word, '.') && !NumericText(word, decimalSeparator)) return false;
    thousands = thousands && (numbers == 0 || (word.size() == 3 && word.find_first_not_of("0123456789") == word.npos));
    piece = Trim(piece.substr(word.size()));
  }
  return numbers > 1 && !thousands;
}

}  // namespace

bool BlanksDelimit(std::string_view text, char decimalSeparator) {
  constexpr int kLinesLookedAt = 200;
  const char* const others = decimalSeparator != ',' ? "\t;," : "\t;";
  struct Votes {
    int For = 0, Against = 0;
  } numbers, words;  // the lines with a number decide, since there may be words at the top
  for (int lines = 0; lines < kLinesLookedAt && !text.empty();) {
    std::string_view line = Trim(TakeLine(text));
    if (line.empty()) continue;
    ++lines;
    Votes& votes = line.find_first_of("0123456789") != line.npos ? numbers : words;
    bool blanks = line.find_first_of(others) == line.npos && line.find(' ') != line.npos;
    while (!blanks && !line.empty()) {
      const std::string_view piece = line.substr(0, line.find_first_of("\t;"));
      blanks = AreNumbers(piece, decimalSeparator);
      line.remove_prefix(std::min(piece.size() + 1, line.size()));
    }
    ++(blanks ? votes.For : votes.Against);
  }
  const Votes& votes = numbers.For + numbers.Against > 0 ? numbers : words;
  return votes.For > votes.Against;
}

TextImport::Separators TextImport::Chosen() const {
  Separators chosen;
  chosen.Delimiters = (Tab ? kTabDelimiter : 0) | (Comma ? kCommaDelimiter : 0) | (Space ? kSpaceDelimiter : 0) |
                      (SemiColon ? kSemicolonDelimiter : 0);
  chosen.IgnoreConsecutive = DupCheck;
  // Where the locale has a point, the box that is not ticked says that the file has decimal commas; points are read,
  // too.
  const bool commasToo = !ckLocale && decimalSeparator_ == '.';
  chosen.OverrideDecimal = ckLocale || commasToo;
  chosen.DecimalSeparator = commasToo ? ',' : decimalSeparator_;
  return chosen;
}

TextImport::Separators TextImport::WithCommas(bool decimal) const {
  Separators separators;
  const bool blanks = decimal && BlanksDelimit(*data_, ',');
  separators.Delimiters =
      kTabDelimiter | kSemicolonDelimiter | (decimal ? 0 : kCommaDelimiter) | (blanks ? kSpaceDelimiter : 0);
  separators.IgnoreConsecutive = blanks;
  return separators;
}

namespace {

DelimitedFormat FormatOf(const auto& separators) {
  DelimitedFormat format;
  format.Delimiters = separators.Delimiters;
  format.IgnoreConsecutive = separators.IgnoreConsecutive;
  format.OverrideDecimal = separators.OverrideDecimal;
  format.DecimalSeparator = separators.DecimalSeparator;
  format.QuotesHold = true;
  return format;
}

}  // namespace

// All lines are looked at, so that a column is known as a whole.
void TextImport::NoticeCommas() {
  if (data_->find(',') == std::string::npos) return;
  const bool decimal = decimalSeparator_ != ',';  // what the locale doesn't expect
  LocaleText other;
  other.DecimalSeparator = decimal ? ',' : '.';
  DelimitedFormat format = FormatOf(WithCommas(decimal));
  format.LineLimit = kMostSheetRows;
  const GridCells cells = ParseDelimitedLines(*data_, format).Cells;
  const std::size_t first = FirstDataRow(cells, other), columns = cells.GridLastCol(), rows = cells.GridLastRow();
  const auto hasWord = [&](std::size_t col) { return first > 1 && GridCells::IsText(cells.Cell(first - 1, col)); };
  if (decimal) {
    DecimalCommas commas = FindDecimalCommas(cells, first, rows);
    // With a single column they may as well stand between two, unless there is a heading of one word.
    if (columns > 1 || (hasWord(1) && cells.GridCellText(first - 1, 1).find_first_of(", ") == std::string::npos))
      commas_ = std::move(commas.Example);
    return;
  }
  format = FormatOf(Chosen());
  format.LineLimit = kMostSheetRows;
  if (columns < 2 || ParseDelimitedLines(*data_, format).Cells.GridLastCol() > 1) return;
  // Two columns without headings could be one of numbers with commas.
  bool certain = columns > 2 || (hasWord(1) && hasWord(2)), numbers = false;
  for (std::size_t col = 1; col <= columns; ++col) {
    for (std::size_t row = first; row <= rows; ++row) {
      const double cell = cells.Cell(row, col);
      if (GridCells::IsEmpty(cell) || GridCells::IsText(cell)) continue;
      numbers = true;
      certain = certain || cell != std::nearbyint(cell);
    }
  }
  std::string_view rest = *data_;
  for (std::size_t line = 1; line < first; ++line) TakeLine(rest);
  if (certain && numbers) commas_ = Trim(TakeLine(rest));
}

std::optional<DataImport::OtherReading> TextImport::Offer(const LocaleText&) const {
  if (commas_.empty()) return std::nullopt;
  if (decimalSeparator_ != ',') return Comma || ckLocale ? DecimalCommaOffer(commas_) : std::nullopt;
  if (Comma) return std::nullopt;
  return OtherReading{"Commas separate the columns: " + EndOfSentence(DecodeText(commas_)), "Split the li&nes there"};
}

void TextImport::TakeOffer(const LocaleText&) {
  const Separators separators = WithCommas(decimalSeparator_ != ',');
  const auto has = [&](int delimiter) { return (separators.Delimiters & delimiter) != 0; };
  Tab = has(kTabDelimiter);
  SemiColon = has(kSemicolonDelimiter);
  Comma = has(kCommaDelimiter);
  Space = has(kSpaceDelimiter);
  DupCheck = separators.IgnoreConsecutive;
  ckLocale = decimalSeparator_ == ',';
}

std::vector<std::string> TextImport::CommentCells(const CommentLine& comment) const {
  const auto split = [&](std::string_view text, const Separators& separators) {
    const GridCells cells = ParseDelimitedLines(text, FormatOf(separators)).Cells;
    std::vector<std::string> words;
    for (std::size_t col = 1; col <= cells.GridLastCol(); ++col) words.push_back(cells.GridCellText(1, col));
    return words;
  };
  const std::string_view text = CommentText(comment.Text);
  const std::size_t columns = Columns.lstColumns().size();
  Separators blanks;
  blanks.Delimiters = kTabDelimiter | kSpaceDelimiter;
  blanks.IgnoreConsecutive = true;
  // The sign may be the name of the first column, "#" for one.
  for (const auto& words : {split(text, Chosen()), split(comment.Text, Chosen()), split(text, blanks)})
    if (words.size() == columns && std::ranges::none_of(words, &std::string::empty)) return words;
  return {};
}

TextImport::Reading TextImport::ReadRows(std::size_t first, std::size_t count, const std::string& marker) const {
  DelimitedFormat format = FormatOf(Chosen());
  format.ColumnLimit = ColumnLimit;
  format.FirstLine = first;
  format.LineLimit = count;
  return [text = ckComments ? data_ : text_, format, marker](const LongWork&) {
    DelimitedFormat marked = format;
    marked.MissingMarker = marker;
    return ParseDelimitedLines(*text, marked).Cells;
  };
}

}  // namespace quorvex
