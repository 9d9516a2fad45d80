#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "import/DataImport.h"

namespace quorvex {

// Whether blanks end the cells of a text, as they do where most of its first lines with a number have nothing else
// between them, or numbers with blanks between them. Commas may end cells, where they are no decimal ones.
bool BlanksDelimit(std::string_view text, char decimalSeparator);

// The import of a text file.
class TextImport : public DataImport {
 public:
  // The whole file is read once, so that what is imported is what was shown. Fails with the message of it: the file
  // cannot be read, or is empty.
  static Result<std::unique_ptr<TextImport>> Open(const std::string& file, const DataSheet& sheet,
                                                  const LocaleText& locale);

  // Delimit_check: which characters end a cell. A decimal comma ends none unless the user says so. Blanks do where the
  // first lines have nothing else, and then any number of them (DupCheck).
  bool Tab = true, Comma = true, SemiColon = true, Space = false;
  bool DupCheck = false;  // "Treat consecutive delimeters as one"
  // "Interpret "." as decimal symbol". Where the locale does so anyway, no tick reads decimal commas as well, as files
  // from elsewhere have them.
  bool ckLocale = true;

  std::optional<std::size_t> LineCount() const override { return lineCount_; }

  // Where the numbers have decimal commas, to read them so; under such a locale, where commas stand between the columns
  // of a file with points, to split there.
  std::optional<OtherReading> Offer(const LocaleText& locale) const override;
  void TakeOffer(const LocaleText& locale) override;

 protected:
  Reading ReadRows(std::size_t first, std::size_t count, const std::string& marker) const override;
  std::vector<std::string> CommentCells(const CommentLine& comment) const override;

 private:
  struct Separators {
    int Delimiters = 0;
    bool IgnoreConsecutive = false, OverrideDecimal = true;
    char DecimalSeparator = '.';
  };
  Separators Chosen() const;
  // How the file would be split if its commas were, or were not, decimal ones.
  Separators WithCommas(bool decimal) const;
  void NoticeCommas();

  TextImport(const std::string& file, const DataSheet& sheet, const LocaleText& locale, std::string text);

  char decimalSeparator_;
  std::shared_ptr<const std::string> text_, data_;  // as it is, and without comments
  std::string commas_;                              // what shows that the commas are not those of the locale
  std::size_t lineCount_ = 0;
};

}  // namespace quorvex
