#pragma once

#include <string>
#include <string_view>

#include "core/LocaleText.h"

namespace quorvex {

// What keys of a pocket calculator make of the text that is being entered, which may also be a name.

// A digit is appended, or the decimal separator, once; "pi" takes the place of what is there.
std::string WithNumberKey(std::string entry, std::string_view key, const LocaleText& locale);

// The exponent's "e", once; of 1 where nothing was entered.
std::string WithExponent(std::string entry);

// The sign of the mantissa, or of the exponent behind an "e".
std::string WithSignChanged(std::string entry);

// What is typed while nothing but a number, or nothing, was entered: point and comma both are the locale's decimal
// separator, and + - * / are operators instead of text.
enum class TypedKey { Text, Separator, Operator };
TypedKey MeaningOf(char key, std::string_view entry, const LocaleText& locale);

}  // namespace quorvex
