#pragma once

#include <cstdint>
#include <string>

#include "core/NumberText.h"

namespace quorvex {

// A number on the calculator's stack.
class Numberclass {
 public:
  explicit Numberclass(double value, const LocaleText& locale = {}) { SetValue(value, locale); }

  std::int16_t id = 0;     // given by the stack, in the order of pushing
  std::string LegendText;  // how it came about

  double Value() const { return value_; }
  // Its legend becomes its text.
  void SetValue(double value, const LocaleText& locale) {
    value_ = value;
    LegendText = TextOf(value, locale);
  }

  static std::string TextOf(double value, const LocaleText& locale) {
    return LocalizeExpression(GeneralNumber(value), locale);
  }

 private:
  double value_ = 0;
};

}  // namespace quorvex
