#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/LocaleText.h"

namespace quorvex {

// The default text of a real, in logs, reports and macro output: 15 significant digits as C's "%.15G" gives them
// ("0.1", "1E-10", "1E+20"), negative zero as "0". Always with a decimal point. With 7 digits, the text of a 32-bit
// real.
std::string GeneralNumber(double value, int digits = 15);

// The shortest text that reads back to the same 64-bit or 32-bit value, its exponent written with "E"; negative
// zero is "-0". For fields of files.
std::string ShortestNumber(double value);
std::string ShortestNumber(float value);

// `value` by a number pattern such as "0.0###", "##0.0#", "0.000000E+00", "0.0E+00" or "General": "0" is a digit that
// is always shown, "#" one that is shown when needed. After "E+" the exponent always has a sign, after "E-" only a
// minus; "e" instead of "E" is written so. A comma before a digit is a decimal point, for so do half of all users type
// it. Text before and behind the digits stands as it is, "%" too. A date pattern (SerialDate.h) shows the number as a
// date. What IsNumberPattern doesn't take is "General", which is GeneralNumber of so many digits. Rounds as printf
// rounds, ties by the exact binary value; what rounds to zero has no sign. With a decimal point.
std::string FormatNumber(double value, std::string_view pattern, int generalDigits = 15);

// Whether a pattern has digits, with no more than one decimal mark and not of an exponent alone, says "General" or
// shows dates; any other does nothing that its writer can have meant.
bool IsNumberPattern(std::string_view pattern);

// A text is numeric when the whole of it, trimmed, is an optional sign, digits with at most one decimal separator, and
// an optional exponent. The value, 0 where it is too small for a double; nothing where the text is not numeric or its
// value too large.
std::optional<double> NumericText(std::string_view text, char decimalSeparator = '.');

// The number at the start of `text`, as in NumericText with a decimal point, leading blanks not allowed: stores the
// value and returns how many characters it takes, 0 where there is none. For readers that go through a text only once.
std::size_t LeadingNumber(std::string_view text, double& value);

// Nearest integer, ties to even. Throws NumericFault where the result does not fit.
std::int16_t RoundToInt16(double value);
std::int32_t RoundToInt32(double value);

// Text helpers that every reader shares. Case folding is of ASCII letters only.
std::string_view Trim(std::string_view text);       // blanks at both ends, tabs stay
std::string_view TakeLine(std::string_view& rest);  // the next line without its end: CR LF, LF or CR
std::string ToLower(std::string_view text);
bool EqualNoCase(std::string_view a, std::string_view b);
bool ContainsNoCase(std::string_view text, std::string_view part);

// How many characters, not bytes, a UTF-8 text has.
std::size_t CharacterCount(std::string_view text);

// The first `count` characters, not bytes, of a UTF-8 text; the whole of a shorter one.
std::string FirstCharacters(std::string_view text, std::size_t count);

}  // namespace quorvex
