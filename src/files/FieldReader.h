#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace quorvex {

// Reads the fields of project, plot and model files, one after the other. A field ends at a comma or a line end; one
// that starts with a double quote runs to the next double quote, over line ends too. Blanks in front are skipped.
// Beyond that lines mean nothing, only the order of the fields does.
//
// A field that is not what was asked for, or not there, makes the reader fail for good: it then gives empty texts and
// zeros, and Good() says so. So a record is read straight through and looked at once; only a loop whose count comes
// from the file asks Good() at each turn.
class FieldReader {
 public:
  // `text` as DecodeText gives it.
  explicit FieldReader(std::string text) : text_(std::move(text)) {}

  struct Field {
    std::string_view Text;  // without quotes; unquoted, without blanks at its end
    bool Quoted = false;
  };
  Field Next();

  std::string Text() { return std::string(Next().Text); }
  double Real();           // finite, with a decimal point
  double AnyReal();        // also infinite or no number, as FieldWriter writes them
  std::int32_t Integer();  // of 32 bits
  bool Boolean();          // #TRUE# or #FALSE#
  // Fails unless the next field has this text, blanks around it aside.
  void Expect(std::string_view marker);

  // Whether the next field has this text, to the letter; it stays the next. Fails where Next() would.
  bool Sees(std::string_view text);

  // Whether no field is left.
  bool AtEnd() const { return at_ == text_.size(); }
  bool Good() const { return good_; }
  void Fail() { good_ = false; }

 private:
  void SkipBlanks();
  bool SkipFieldEnd();

  std::string text_;
  std::size_t at_ = 0;
  bool good_ = true;
};

}  // namespace quorvex
