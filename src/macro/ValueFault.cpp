#include "macro/ValueFault.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <variant>

#include "core/NumberText.h"

namespace quorvex {
namespace {

void AddWord(std::string& list, std::string_view word) { list.append(list.empty() ? "" : ", ").append(word); }

std::string ListOf(std::span<const std::string_view> words) {
  std::string list;
  for (const std::string_view word : words) AddWord(list, word);
  return list;
}

constexpr double kMostInteger = std::numeric_limits<std::int16_t>::max();  // that a statement takes

// Each kind of value says what it wanted where it was given something else.
class Wanted {
 public:
  Wanted(const MacroStatement& statement, std::string_view value, const LocaleText& locale)
      : statement_(statement), value_(value), locale_(locale), number_(NumericText(value, locale.DecimalSeparator)) {}

  std::string operator()(const LinesValue&) const { return {}; }
  std::string operator()(const TextValue&) const {
    if (value_.empty() || statement_.Least <= 0 || number_.value_or(0) >= statement_.Least) return {};
    return "is no number from " + GeneralNumber(statement_.Least) + " on";
  }
  std::string operator()(const LimitValue<double>&) const { return number_ ? "" : "is no number, and does nothing"; }
  std::string operator()(const LimitValue<int>&) const {
    return IsWithin(1, 32000) ? "" : "is no number from 1 to 32000";
  }
  template <typename Number>
  std::string operator()(const NumberValue<Number>& wanted) const {
    return NumberWithin(statement_, value_, locale_) ? "" : "is not " + std::string(wanted.Wanted);
  }
  std::string operator()(const VariablesValue&) const {
    // One that is read and out of range ends the run.
    if (IsWithin(-kMostInteger, kMostInteger)) return {};
    return "is no number from " + GeneralNumber(statement_.Least) + " to " + GeneralNumber(statement_.Most);
  }
  std::string operator()(const FlagValue&) const { return NoFlag(); }
  std::string operator()(const WordsValue& words) const {
    std::string list;
    for (const MacroWord& word : words.Words) AddWord(list, word.Word);
    const auto isKnown = [&](std::string_view part) {
      return std::ranges::any_of(words.Words, [&](const MacroWord& word) { return ContainsNoCase(part, word.Word); });
    };
    constexpr std::string_view kBetween = ",; ";
    for (std::size_t at = 0; (at = value_.find_first_not_of(kBetween, at)) != std::string_view::npos;) {
      const std::size_t end = std::min(value_.find_first_of(kBetween, at), value_.size());
      const std::string_view part = value_.substr(at, end - at);
      if (!isKnown(part)) return "names '" + std::string(part) + "', which is none of " + list;
      at = end;
    }
    return {};
  }
  std::string operator()(const ChoiceValue& choice) const {
    if (choice.Words.empty()) return NoFlag();
    MacroSetup read;
    const bool isOther = !choice.Otherwise.empty() && choice.Read(read, value_);
    return isOther || IsOneOf(choice.Words) ? "" : "is none of " + WordsOf(choice);
  }
  std::string operator()(const DerivativesValue& derivatives) const {
    return IsOneOf(derivatives.Words) ? "" : "is none of " + ListOf(derivatives.Words);
  }

 private:
  bool IsWithin(double least, double most) const {
    return number_ && std::nearbyint(*number_) >= least && std::nearbyint(*number_) <= most;
  }
  bool IsOneOf(std::span<const std::string_view> words) const {
    return std::ranges::any_of(words, [&](std::string_view word) { return EqualNoCase(word, value_); });
  }
  std::string NoFlag() const {
    const bool isFlag = EqualNoCase(value_, "true") || EqualNoCase(value_, "false");
    return isFlag ? "" : "counts as False: it is neither True nor False";
  }

  const MacroStatement& statement_;
  std::string_view value_;
  const LocaleText& locale_;
  std::optional<double> number_;
};

}  // namespace

std::string WordsOf(const ChoiceValue& choice) {
  std::string words = ListOf(choice.Words);
  if (!choice.Otherwise.empty()) AddWord(words, choice.Otherwise);
  return words;
}

std::string ValueFault(const MacroStatement& statement, std::string_view value, const LocaleText& locale) {
  const std::string why = std::visit(Wanted(statement, value, locale), statement.Value);
  if (why.empty()) return {};
  constexpr std::size_t kLongest = 100;
  std::string shown = FirstCharacters(value, kLongest);
  if (shown.size() < value.size()) shown += "...";
  return "'" + std::string(statement.Keyword) + " = " + shown + "' " + why + ".";
}

}  // namespace quorvex
