#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/SolveData.h"
#include "equation/DataStatistics.h"

namespace quorvex {

// The two forms of the equation language: one independent variable, x, or up to twenty, x1 to x20.
enum class Dialect { OneVariable, SeveralVariables };

// The variable's number that a word (any case) names: 0 for "x"; 1 to 20 for "x1" to "x20", "x01" to "x09".
std::optional<int> IndependentVariable(std::string_view word, Dialect dialect);

// A word that stands for a statistic of the data.
enum class Statistic : std::int16_t {
  XMin,
  XMax,
  XMean,
  XStd,
  XAtYMin,
  XAtYMax,
  XRange,
  YAtXMin,
  YAtXMax,
  YMin,
  YMax,
  YMean,
  YStd,
  YRange
};

struct SpecialWord {
  Statistic What;
  int Variable;  // 1 to 9; 1 with one variable and for the words about y
};

// The special word that `word` (any case) is, if it is one. With several variables "x1atymin" and "x1atymax" are read
// as "x1min" and "x1max": words with a variable number are matched by pattern, and those patterns come first.
std::optional<SpecialWord> FindSpecialWord(std::string_view word, Dialect dialect);

// The value of a special word. Throws NumericFault for a variable that the data do not have.
double StatisticValue(SpecialWord word, const DataStatistics& data);

// A special word as the 16-bit code of an instruction, and back.
std::int16_t SpecialWordCode(SpecialWord word);
SpecialWord SpecialWordOf(std::int16_t code);

}  // namespace quorvex
