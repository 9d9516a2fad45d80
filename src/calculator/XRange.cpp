#include "calculator/XRange.h"

#include "core/NumberText.h"

namespace quorvex {

std::string ExactText(double limit, const LocaleText& locale) {
  return LocalizeExpression(ShortestNumber(limit), locale);
}

Result<XRange> ParseXRange(const std::string& min, const std::string& max, const LocaleText& locale) {
  const auto from = NumericText(min, locale.DecimalSeparator), to = NumericText(max, locale.DecimalSeparator);
  if (!from) return Failure{"Please enter a valid number for X min."};
  if (!to) return Failure{"Please enter a number for X max."};
  if (*to <= *from) return Failure{"The value of X Max must be larger than X Min."};
  return XRange{*from, *to};
}

}  // namespace quorvex
