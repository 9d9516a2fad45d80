#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "import/DataImport.h"

namespace quorvex {

// Whether blanks end the cells of a text, as they do where its first lines have nothing else between them. Commas may,
// where they are no decimal ones.
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

 protected:
  Reading ReadRows(std::size_t first, std::size_t count, const std::string& marker) const override;

 private:
  TextImport(const std::string& file, const DataSheet& sheet, const LocaleText& locale, std::string text);

  char decimalSeparator_;
  std::shared_ptr<const std::string> text_;
  std::size_t lineCount_ = 0;
};

}  // namespace quorvex
