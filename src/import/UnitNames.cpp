#include "import/UnitNames.h"

#include <algorithm>
#include <cctype>
#include <iterator>

#include "core/NumberText.h"

namespace quorvex {
namespace {

// Symbols of the SI (Bureau International des Poids et Mesures, The International System of Units, 9th edition, 2019)
// and others in use; those in front take prefixes.
constexpr std::string_view kWithPrefix[] = {
    "m", "g",  "s",   "A",   "K",   "mol",      "cd",           "Hz", "N",  "Pa",  "J", "W", "C",  "V",
    "F", "S",  "T",   "H",   "lm",  "lx",       "Bq",           "Gy", "Sv", "kat", "l", "L", "eV", "bar",
    "M", "Da", "cal", "Ohm", "ohm", "\xCE\xA9", "\xE2\x84\xA6", "sec"};
constexpr std::string_view kAlone[] = {"%",
                                       "\xC2\xB0",
                                       "\xC2\xB0"
                                       "C",
                                       "\xC2\xB0"
                                       "F",
                                       "degC",
                                       "degF",
                                       "deg",
                                       "rad",
                                       "sr",
                                       "min",
                                       "h",
                                       "hr",
                                       "hrs",
                                       "d",
                                       "day",
                                       "days",
                                       "wk",
                                       "yr",
                                       "year",
                                       "years",
                                       "atm",
                                       "Torr",
                                       "torr",
                                       "mmHg",
                                       "psi",
                                       "ppm",
                                       "ppb",
                                       "ppt",
                                       "in",
                                       "ft",
                                       "yd",
                                       "mi",
                                       "mph",
                                       "kmh",
                                       "lb",
                                       "lbs",
                                       "oz",
                                       "gal",
                                       "count",
                                       "counts",
                                       "cts",
                                       "cps",
                                       "cpm",
                                       "a.u.",
                                       "au",
                                       "arb",
                                       "arb.",
                                       "units",
                                       "px",
                                       "dB",
                                       "dBm",
                                       "rpm",
                                       "pH",
                                       "OD",
                                       "U",
                                       "IU",
                                       "s-1",
                                       "1",
                                       "counts/s"};
constexpr std::string_view kPrefixes[] = {"f", "p",  "n", "u", "\xC2\xB5", "\xCE\xBC", "m", "c",
                                          "d", "da", "h", "k", "M",        "G",        "T", "P"};

bool IsSymbol(std::string_view text) {
  // Behind a power, "m2", "m^2", "m-1" or "m**2", is the symbol.
  while (!text.empty() && (std::isdigit(static_cast<unsigned char>(text.back())) || text.back() == '^' ||
                           text.back() == '-' || text.back() == '*'))
    text.remove_suffix(1);
  if (std::ranges::find(kAlone, text) != std::end(kAlone)) return true;
  const auto takesPrefix = [](std::string_view symbol) {
    return std::ranges::find(kWithPrefix, symbol) != std::end(kWithPrefix);
  };
  return takesPrefix(text) || std::ranges::any_of(kPrefixes, [&](std::string_view prefix) {
           return text.starts_with(prefix) && takesPrefix(text.substr(prefix.size()));
         });
}

bool InBrackets(std::string_view text) {
  return text.size() > 2 &&
         ((text.front() == '(' && text.back() == ')') || (text.front() == '[' && text.back() == ']'));
}

}  // namespace

bool IsUnit(std::string_view text) {
  text = Trim(text);
  if (InBrackets(text) || text == "-") return true;
  if (text.empty()) return false;
  // Symbols with signs between them: "mol/l", "m s-1", "kg*m^2".
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of("/ *"), text.size());
    if (const std::string_view symbol = text.substr(0, end); !symbol.empty() && symbol != "1" && !IsSymbol(symbol))
      return false;
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return true;
}

bool AreUnits(const std::vector<std::string>& texts) {
  bool any = false;
  for (const std::string& text : texts) {
    if (Trim(text).empty()) continue;
    if (!IsUnit(text)) return false;
    any = true;
  }
  return any;
}

std::string WithUnit(const std::string& heading, std::string_view unit) {
  unit = Trim(unit);
  if (unit.empty() || unit == "-" || heading.empty()) return heading;
  return heading + ' ' + (InBrackets(unit) ? std::string(unit) : '(' + std::string(unit) + ')');
}

}  // namespace quorvex
