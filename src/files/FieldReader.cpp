#include "files/FieldReader.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "core/NumberText.h"

namespace quorvex {

void FieldReader::SkipBlanks() {
  while (at_ < text_.size() && text_[at_] == ' ') ++at_;
}

// A comma or a line end, where one stands here.
bool FieldReader::SkipFieldEnd() {
  if (at_ == text_.size()) return true;
  const char c = text_[at_];
  if (c != ',' && c != '\r' && c != '\n') return false;
  ++at_;
  if (c == '\r' && at_ < text_.size() && text_[at_] == '\n') ++at_;
  return true;
}

FieldReader::Field FieldReader::Next() {
  if (AtEnd()) Fail();
  if (!good_) return {};
  SkipBlanks();
  if (at_ < text_.size() && text_[at_] == '"') {
    // Commas and line ends up to the closing quote belong to the field.
    const std::size_t start = at_ + 1, end = text_.find('"', start);
    if (end == std::string::npos) {
      Fail();
      return {};
    }
    at_ = end + 1;
    SkipBlanks();
    SkipFieldEnd();
    return {std::string_view(text_).substr(start, end - start), true};
  }
  const std::size_t start = at_;
  at_ = std::min(text_.find_first_of(",\r\n", at_), text_.size());
  const std::string_view text = std::string_view(text_).substr(start, at_ - start);
  SkipFieldEnd();
  return {Trim(text)};
}

double FieldReader::Real() {
  // Files have a decimal point whatever the locale is.
  const std::optional<double> value = NumericText(Next().Text);
  if (!value) Fail();
  return value.value_or(0);
}

double FieldReader::AnyReal() {
  using Limits = std::numeric_limits<double>;
  const std::size_t here = at_;
  const std::string_view text = Next().Text;
  for (const double value : {Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN()})
    if (text == ShortestNumber(value)) return value;
  at_ = here;
  return Real();
}

std::int32_t FieldReader::Integer() {
  const double value = Real();
  using Limits = std::numeric_limits<std::int32_t>;
  if (value != std::nearbyint(value) || value < Limits::min() || value > Limits::max()) {
    Fail();
    return 0;
  }
  return static_cast<std::int32_t>(value);
}

bool FieldReader::Boolean() {
  const std::string_view text = Next().Text;
  const bool value = EqualNoCase(text, "#TRUE#");
  if (!value && !EqualNoCase(text, "#FALSE#")) Fail();
  return value;
}

void FieldReader::Expect(std::string_view marker) {
  if (Trim(Next().Text) != marker) Fail();
}

bool FieldReader::Sees(std::string_view text) {
  const std::size_t here = at_;
  const bool same = Next().Text == text;
  at_ = here;
  return same && good_;
}

}  // namespace quorvex
