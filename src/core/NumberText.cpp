#include "core/NumberText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

#include "core/NumericFault.h"
#include "core/SerialDate.h"

namespace quorvex {
namespace {

char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
char UpperAscii(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::string NonFiniteText(double value) {
  if (std::isnan(value)) return "NAN";
  return value < 0 ? "-INF" : "INF";
}

// The digits and sign of a conversion by std::to_chars, in capitals.
template <typename Real, typename... Format>
std::string ToCapitals(Real value, Format... format) {
  char buffer[32];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, format...).ptr;
  std::transform(buffer, end, buffer, UpperAscii);
  return std::string(buffer, end);
}

// A number pattern taken apart: prefix, digits, optional exponent, suffix.
struct NumberPattern {
  std::string_view Prefix, Suffix;
  int IntegerPlaces = 0;      // "0" and "#" before the point
  int IntegerShown = 0;       // digits before the point that are always shown
  int DecimalPlaces = 0;      // digits behind the point at most
  int DecimalsShown = 0;      // and at least
  int ExponentShown = 0;      // digits of the exponent at least; 0 when the pattern has none
  bool ExponentPlus = false;  // a positive exponent bears a sign
  char ExponentMark = 'E';    // or "e", as the pattern has it
  bool TellsNumbers() const;
};

bool IsPlace(char c) { return c == '0' || c == '#'; }

// The decimal mark and a digit behind it.
bool IsFraction(std::string_view text) {
  return text.size() > 1 && (text[0] == '.' || text[0] == ',') && IsPlace(text[1]);
}

// A second mark or an exponent alone would give other numbers than those meant.
bool NumberPattern::TellsNumbers() const {
  const std::string_view before = Trim(Prefix);
  return IntegerPlaces + DecimalPlaces > 0 && !IsFraction(Suffix) && !EqualNoCase(before, "E+") &&
         !EqualNoCase(before, "E-");
}

NumberPattern ParsePattern(std::string_view pattern) {
  NumberPattern parsed;
  std::size_t at = 0;
  const auto here = [&] { return at < pattern.size() ? pattern[at] : '\0'; };
  while (at < pattern.size() && !IsPlace(here()) && !IsFraction(pattern.substr(at))) ++at;
  parsed.Prefix = pattern.substr(0, at);
  for (; IsPlace(here()); ++at) {
    ++parsed.IntegerPlaces;
    if (here() == '0' || parsed.IntegerShown > 0) ++parsed.IntegerShown;  // "0##" shows all three
  }
  if (here() == '.' || IsFraction(pattern.substr(at))) {
    ++at;
    for (; IsPlace(here()); ++at) {
      ++parsed.DecimalPlaces;
      if (here() == '0') parsed.DecimalsShown = parsed.DecimalPlaces;
    }
  }
  if (LowerAscii(here()) == 'e' && at + 2 < pattern.size() && (pattern[at + 1] == '+' || pattern[at + 1] == '-') &&
      IsPlace(pattern[at + 2])) {
    parsed.ExponentMark = here();
    parsed.ExponentPlus = pattern[at + 1] == '+';
    for (at += 2; IsPlace(here()); ++at) ++parsed.ExponentShown;
  }
  parsed.Suffix = pattern.substr(at);
  return parsed;
}

// Digits before and behind the point of a non-negative value rounded to `decimals` places.
struct Digits {
  std::string Integer, Decimals;
};

Digits FixedDigits(double value, int decimals) {
  std::string text(static_cast<std::size_t>(std::numeric_limits<double>::max_exponent10 + decimals + 3), '\0');
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, decimals).ptr;
  text.resize(static_cast<std::size_t>(end - text.data()));
  const auto point = text.find('.');
  if (point == std::string::npos) return {text, ""};
  return {text.substr(0, point), text.substr(point + 1)};
}

// The same for a mantissa with `places` digits before the point; `exponent` goes with it.
Digits ScientificDigits(double value, int places, int decimals, int& exponent) {
  const int behindFirst = places - 1 + decimals;
  std::string text(static_cast<std::size_t>(behindFirst + 12), '\0');
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::scientific, behindFirst).ptr;
  text.resize(static_cast<std::size_t>(end - text.data()));
  const auto mark = text.find('e');
  const char* exponentDigits = text.data() + mark + (text[mark + 1] == '+' ? 2 : 1);
  std::from_chars(exponentDigits, text.data() + text.size(), exponent);
  // 0 keeps its exponent 0 however many places there are.
  if (value != 0) exponent -= places - 1;
  std::string digits;
  std::copy_if(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(mark), std::back_inserter(digits), IsDigit);
  return {digits.substr(0, static_cast<std::size_t>(places)), digits.substr(static_cast<std::size_t>(places))};
}

std::string ExponentText(int exponent, const NumberPattern& pattern) {
  std::string digits = std::to_string(std::abs(exponent));
  const auto shown = static_cast<std::size_t>(pattern.ExponentShown);
  if (digits.size() < shown) digits.insert(0, shown - digits.size(), '0');
  return pattern.ExponentMark + std::string(exponent < 0 ? "-" : pattern.ExponentPlus ? "+" : "") + digits;
}

template <typename Integer>
Integer RoundTo(double value) {
  const double rounded = std::nearbyint(value);  // the rounding mode is never changed: ties to even
  if (!(rounded >= std::numeric_limits<Integer>::min() && rounded <= std::numeric_limits<Integer>::max()))
    throw NumericFault();
  return static_cast<Integer>(rounded);
}

}  // namespace

std::string GeneralNumber(double value, int digits) {
  if (!std::isfinite(value)) return NonFiniteText(value);
  // -0 would show its sign.
  return ToCapitals(value == 0 ? 0.0 : value, std::chars_format::general, digits);
}

std::string ShortestNumber(double value) {
  if (!std::isfinite(value)) return NonFiniteText(value);
  return ToCapitals(value);
}

std::string ShortestNumber(float value) {
  if (!std::isfinite(value)) return NonFiniteText(static_cast<double>(value));
  return ToCapitals(value);
}

bool IsNumberPattern(std::string_view pattern) {
  return ParsePattern(pattern).TellsNumbers() || EqualNoCase(Trim(pattern), "general") || IsDatePattern(pattern);
}

std::string FormatNumber(double value, std::string_view pattern, int generalDigits) {
  if (IsDatePattern(pattern)) return FormatDate(value, pattern);
  const NumberPattern parsed = ParsePattern(pattern);
  if (!parsed.TellsNumbers() || !std::isfinite(value)) return GeneralNumber(value, generalDigits);

  const double size = std::abs(value);
  int exponent = 0;
  Digits digits = parsed.ExponentShown > 0
                      ? ScientificDigits(size, std::max(parsed.IntegerPlaces, 1), parsed.DecimalPlaces, exponent)
                      : FixedDigits(size, parsed.DecimalPlaces);

  while (digits.Decimals.size() > static_cast<std::size_t>(parsed.DecimalsShown) && digits.Decimals.back() == '0')
    digits.Decimals.pop_back();
  // A 0 before the point is shown where the pattern has a "0" there: "#.0" shows ".5".
  if (digits.Integer == "0") digits.Integer.clear();
  const auto shown = static_cast<std::size_t>(parsed.IntegerShown);
  if (digits.Integer.size() < shown) digits.Integer.insert(0, shown - digits.Integer.size(), '0');
  if (digits.Integer.empty() && digits.Decimals.empty()) digits.Integer = "0";  // "#" still shows a zero

  std::string number = digits.Integer;
  if (!digits.Decimals.empty()) number += '.' + digits.Decimals;
  const bool isZero = number.find_first_not_of("0.") == std::string::npos;
  if (parsed.ExponentShown > 0) number += ExponentText(exponent, parsed);

  std::string text(parsed.Prefix);
  if (value < 0 && !isZero) text.insert(0, "-");
  return text.append(number).append(parsed.Suffix);
}

std::optional<double> NumericText(std::string_view text, char decimalSeparator) {
  text = Trim(text);
  double value = 0;
  if (decimalSeparator == '.') {
    if (text.empty() || LeadingNumber(text, value) != text.size()) return std::nullopt;
    return value;
  }
  if (text.find('.') != std::string_view::npos) return std::nullopt;
  std::string pointed(text);
  std::replace(pointed.begin(), pointed.end(), decimalSeparator, '.');
  return NumericText(pointed, '.');
}

std::int16_t RoundToInt16(double value) { return RoundTo<std::int16_t>(value); }
std::int32_t RoundToInt32(double value) { return RoundTo<std::int32_t>(value); }

std::string_view Trim(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string_view TakeLine(std::string_view& rest) {
  const auto end = rest.find_first_of("\r\n");
  const std::string_view line = rest.substr(0, end);
  if (end == std::string_view::npos) {
    rest = {};
  } else {
    rest.remove_prefix(end + (rest.substr(end, 2) == "\r\n" ? 2 : 1));
  }
  return line;
}

std::string ToLower(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), LowerAscii);
  return lower;
}

bool EqualNoCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char left, char right) { return LowerAscii(left) == LowerAscii(right); });
}

bool ContainsNoCase(std::string_view text, std::string_view part) {
  return std::search(text.begin(), text.end(), part.begin(), part.end(),
                     [](char left, char right) { return LowerAscii(left) == LowerAscii(right); }) != text.end();
}

std::size_t CharacterCount(std::string_view text) {
  return static_cast<std::size_t>(
      std::ranges::count_if(text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }));
}

std::string FirstCharacters(std::string_view text, std::size_t count) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool continues = (static_cast<unsigned char>(text[i]) & 0xC0) == 0x80;
    if (!continues && count-- == 0) return std::string(text.substr(0, i));
  }
  return std::string(text);
}

}  // namespace quorvex
