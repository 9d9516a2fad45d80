#include "equation/Dialect.h"

#include <array>
#include <cmath>

#include "core/NumberText.h"
#include "core/NumericFault.h"

namespace quorvex {
namespace {

constexpr int kStatistics = 14;

// In `Stem`, "#" stands for the variable's number; it is dropped with one variable.
struct Word {
  std::string_view Stem;
  Statistic What;
};

constexpr std::array kXWords = {
    Word{"x#min", Statistic::XMin},     Word{"x#max", Statistic::XMax},       Word{"x#mean", Statistic::XMean},
    Word{"x#std", Statistic::XStd},     Word{"x#atymin", Statistic::XAtYMin}, Word{"x#atymax", Statistic::XAtYMax},
    Word{"x#range", Statistic::XRange}, Word{"yatx#min", Statistic::YAtXMin}, Word{"yatx#max", Statistic::YAtXMax},
};
constexpr std::array kYWords = {
    Word{"ymin", Statistic::YMin}, Word{"ymax", Statistic::YMax},     Word{"ymean", Statistic::YMean},
    Word{"ystd", Statistic::YStd}, Word{"yrange", Statistic::YRange},
};

// The first pattern of the table that matches, "#" standing for any run of characters.
Statistic MatchByPattern(std::string_view word) {
  for (const Word& entry : kXWords) {
    const auto mark = entry.Stem.find('#');
    const auto head = entry.Stem.substr(0, mark), tail = entry.Stem.substr(mark + 1);
    if (word.size() >= head.size() + tail.size() && word.starts_with(head) && word.ends_with(tail)) return entry.What;
  }
  return Statistic::YRange;  // not reached: the caller has found the word in the table
}

}  // namespace

std::optional<int> IndependentVariable(std::string_view word, Dialect dialect) {
  if (word.empty() || (word[0] != 'x' && word[0] != 'X')) return std::nullopt;
  if (dialect == Dialect::OneVariable) return word.size() == 1 ? std::optional(0) : std::nullopt;
  if (word.size() != 2 && word.size() != 3) return std::nullopt;
  int number = 0;
  for (const char c : word.substr(1)) {
    if (c < '0' || c > '9') return std::nullopt;
    number = number * 10 + (c - '0');
  }
  if (number < 1 || number > kMostIndependentVariables) return std::nullopt;
  return number;
}

std::optional<SpecialWord> FindSpecialWord(std::string_view text, Dialect dialect) {
  const std::string word = ToLower(text);
  for (const Word& entry : kYWords)
    if (word == entry.Stem) return SpecialWord{entry.What, 1};
  for (const Word& entry : kXWords) {
    const auto mark = entry.Stem.find('#');
    const auto head = entry.Stem.substr(0, mark), tail = entry.Stem.substr(mark + 1);
    if (!word.starts_with(head)) continue;
    std::string_view rest = std::string_view(word).substr(head.size());
    if (dialect == Dialect::OneVariable) {
      if (rest == tail) return SpecialWord{entry.What, 1};
    } else if (rest.size() == tail.size() + 1 && rest[0] >= '1' && rest[0] <= '9' && rest.substr(1) == tail) {
      return SpecialWord{MatchByPattern(word), rest[0] - '0'};
    }
  }
  return std::nullopt;
}

double StatisticValue(SpecialWord word, const DataStatistics& data) {
  switch (word.What) {
    case Statistic::YMin:
      return data.InputYMin;
    case Statistic::YMax:
      return data.InputYMax;
    case Statistic::YMean:
      return data.YMean;
    case Statistic::YStd:
      return data.YStd;
    case Statistic::YRange:
      return std::abs(data.InputYMax - data.InputYMin);
    default:
      break;
  }
  const auto index = static_cast<std::size_t>(word.Variable - 1);
  if (index >= data.X.size()) throw NumericFault();  // a statistic of a variable that the data do not have
  const VariableStatistics& x = data.X[index];
  switch (word.What) {
    case Statistic::XMin:
      return x.InputXMin;
    case Statistic::XMax:
      return x.InputXMax;
    case Statistic::XMean:
      return x.XMean;
    case Statistic::XStd:
      return x.XStd;
    case Statistic::XAtYMin:
      return x.XAtYMin;
    case Statistic::XAtYMax:
      return x.XAtYMax;
    case Statistic::XRange:
      return std::abs(x.InputXMax - x.InputXMin);
    case Statistic::YAtXMin:
      return x.YAtXMin;
    default:
      return x.YAtXMax;
  }
}

std::int16_t SpecialWordCode(SpecialWord word) {
  return static_cast<std::int16_t>(static_cast<int>(word.What) + kStatistics * word.Variable);
}

SpecialWord SpecialWordOf(std::int16_t code) {
  return {static_cast<Statistic>(code % kStatistics), code / kStatistics};
}

}  // namespace quorvex
