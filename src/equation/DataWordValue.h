#pragma once

#include <optional>

#include "equation/Evaluator.h"

namespace quorvex {

// The number that a word such as "xmean" stands for; nothing where the data do not have that variable.
inline std::optional<double> DataWordValue(const ExprToken& word, const DataStatistics& statistics) {
  Expression alone;
  alone.ExprTokens = {word};
  double value = 0;
  if (!Evaluator().Evaluate(alone, {}, {}, statistics, value)) return std::nullopt;
  return value;
}

}  // namespace quorvex
