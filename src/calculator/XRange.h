#pragma once

#include <string>

#include "core/LocaleText.h"
#include "core/Result.h"

namespace quorvex {

// A range of X.
struct XRange {
  double Min = 0, Max = 0;
};

// A limit for a field, from which it is read back to the last bit.
std::string ExactText(double limit, const LocaleText& locale);

// The range as typed in the user's locale; fails with what is wrong with it.
Result<XRange> ParseXRange(const std::string& min, const std::string& max, const LocaleText& locale);

}  // namespace quorvex
