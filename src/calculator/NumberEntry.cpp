#include "calculator/NumberEntry.h"

#include "core/NumberText.h"

namespace quorvex {
namespace {

constexpr std::string_view kPiText = "3.1415926535897932";

std::size_t ExponentOf(std::string_view entry) { return entry.find_first_of("eE"); }

}  // namespace

std::string WithNumberKey(std::string entry, std::string_view key, const LocaleText& locale) {
  if (key == "pi") return LocalizeExpression(kPiText, locale);
  if (key != ".") return entry.append(key);
  const bool complete = entry.find(locale.DecimalSeparator) != std::string::npos || ExponentOf(entry) < entry.size();
  return complete ? entry : entry + locale.DecimalSeparator;
}

std::string WithExponent(std::string entry) {
  if (entry.empty()) entry = "1";
  return ExponentOf(entry) < entry.size() ? entry : entry + 'e';
}

std::string WithSignChanged(std::string entry) {
  const std::size_t exponent = ExponentOf(entry);
  const std::size_t at = exponent < entry.size() ? exponent + 1 : 0;
  if (at < entry.size() && (entry[at] == '-' || entry[at] == '+'))
    entry.replace(at, 1, entry[at] == '+' ? "-" : "");
  else
    entry.insert(at, "-");
  return entry;
}

TypedKey MeaningOf(char key, std::string_view entry, const LocaleText& locale) {
  const bool isNumber = Trim(entry).empty() || NumericText(entry, locale.DecimalSeparator);
  if (!isNumber) return TypedKey::Text;
  if (key == '.' || key == ',') return TypedKey::Separator;
  return std::string_view("+-*/").find(key) != std::string_view::npos ? TypedKey::Operator : TypedKey::Text;
}

}  // namespace quorvex
