#include "import/TextImport.h"

#include <utility>

#include "core/Files.h"
#include "core/NumberText.h"
#include "core/TextEncoding.h"
#include "import/ImportFailure.h"
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
  text_ = std::make_shared<const std::string>(std::move(text));
  for (std::string_view rest = *text_; !rest.empty(); ++lineCount_) TakeLine(rest);
  Space = DupCheck = BlanksDelimit(*text_, decimalSeparator_);
}

bool BlanksDelimit(std::string_view text, char decimalSeparator) {
  constexpr int kLinesLookedAt = 20;
  std::string_view sample;  // the last of the first lines, since there may be words at the top
  for (int line = 0; line < kLinesLookedAt && !text.empty(); ++line)
    if (const std::string_view next = Trim(TakeLine(text)); !next.empty()) sample = next;
  return sample.find_first_of(decimalSeparator != ',' ? "\t;," : "\t;") == std::string_view::npos &&
         sample.find(' ') != std::string_view::npos;
}

TextImport::Reading TextImport::ReadRows(std::size_t first, std::size_t count, const std::string& marker) const {
  DelimitedFormat format;
  format.Delimiters = (Tab ? kTabDelimiter : 0) | (Comma ? kCommaDelimiter : 0) | (Space ? kSpaceDelimiter : 0) |
                      (SemiColon ? kSemicolonDelimiter : 0);
  format.IgnoreConsecutive = DupCheck;
  // Where the locale has a point, the box that is not ticked says that the file has decimal commas; points are read,
  // too.
  const bool commasToo = !ckLocale && decimalSeparator_ == '.';
  format.OverrideDecimal = ckLocale || commasToo;
  format.DecimalSeparator = commasToo ? ',' : decimalSeparator_;
  format.QuotesHold = true;
  format.MissingMarker = marker;
  format.FirstLine = first;
  format.LineLimit = count;
  return [text = text_, format](const LongWork&) { return ParseDelimitedLines(*text, format).Cells; };
}

}  // namespace quorvex
