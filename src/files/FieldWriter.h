#pragma once

#include <string>
#include <string_view>
#include <type_traits>

#include "core/Files.h"
#include "core/NumberText.h"
#include "files/FieldText.h"

namespace quorvex {

// Writes the fields of project, plot and model files, as FieldReader reads them: texts in double quotes, reals as the
// shortest text of the same value, whatever the locale.
class FieldWriter {
 public:
  // One line, its fields separated by commas: texts, reals, integers, Booleans.
  template <typename... Fields>
  void Line(const Fields&... fields) {
    (Field(fields), ...);
    EndLine();
  }

  // The same piece by piece.
  template <typename T>
  void Field(const T& field) {
    if (behindAnother_) text_ += ',';
    behindAnother_ = true;
    if constexpr (std::is_same_v<T, bool>) {
      text_ += field ? "#TRUE#" : "#FALSE#";
    } else if constexpr (std::is_integral_v<T>) {
      text_ += std::to_string(field);
    } else if constexpr (std::is_floating_point_v<T>) {
      text_ += ShortestNumber(field);
    } else {
      text_.append("\"").append(EscapeQuotes(field)).append("\"");
    }
  }
  void EmptyField() {
    if (behindAnother_) text_ += ',';
    behindAnother_ = true;
  }
  void EndLine() {
    text_ += NL;
    behindAnother_ = false;
  }

  const std::string& Text() const { return text_; }

 private:
  std::string text_;
  bool behindAnother_ = false;
};

}  // namespace quorvex
