#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Require.h"
#include "core/SolveData.h"
#include "equation/Evaluator.h"
#include "equation/Parser.h"

namespace quorvex {

// A model's lines, one per line of the text: the model line, then F1 to F9.
inline std::vector<std::string> ModelLines(std::string_view text) {
  constexpr std::size_t kMostLines = 10;
  std::vector<std::string> lines(1);
  for (const char c : text) {
    if (c != '\n')
      lines.back() += c;
    else if (lines.size() < kMostLines)
      lines.emplace_back();
    else
      break;
  }
  return lines;
}

// Evaluates at a few places, ordinary and evil. Neighbouring coefficients and variables get different values. A value
// is finite, and where there is none `y` is left alone.
inline void EvaluateAround(const Expression& expression) {
  constexpr double kValues[] = {0, 1.5, -2.25, 7, 1e-300, 32767, -1e308};
  constexpr std::size_t kShifts[] = {0, 1, 3, 5};
  const auto value = [&](std::size_t i) { return kValues[i % std::size(kValues)]; };

  DataStatistics statistics{.InputYMin = -3, .InputYMax = 9, .YMean = 2.5, .YStd = 1.25};
  statistics.X = {{0.5, 20, 8, 2, 1, 19, -3, 9}, {-1, 1, 0, 0, 0, 0, 0, 0}};
  Evaluator evaluator;
  std::vector<double> a(expression.CoefficientNames.size());
  std::array<double, kMostIndependentVariables> x;
  for (const std::size_t ofX : kShifts) {
    for (std::size_t v = 0; v < x.size(); ++v) x[v] = value(ofX + v);
    for (const std::size_t ofA : kShifts) {
      for (std::size_t i = 0; i < a.size(); ++i) a[i] = value(ofA + i);
      constexpr double kUntouched = 1234.5;
      double y = kUntouched;
      if (evaluator.Evaluate(expression, x, a, statistics, y))
        Require(std::isfinite(y), "a value that is no number");
      else
        Require(y == kUntouched, "a value without success");
    }
  }
}

// Compiles the text in both dialects and with point and comma for decimals, and evaluates what is accepted.
inline int FuzzModelText(const std::uint8_t* data, std::size_t size) {
  const std::vector<std::string> lines = ModelLines({reinterpret_cast<const char*>(data), size});
  constexpr LocaleText kComma = {.DecimalSeparator = ',', .ListSeparator = ';', .ThousandSeparator = '.'};
  for (const Dialect dialect : {Dialect::OneVariable, Dialect::SeveralVariables}) {
    for (const LocaleText& locale : {LocaleText(), kComma}) {
      const Expression expression = Parser(dialect, locale).Compile(lines);
      if (expression.ParseError) {
        Require(!expression.IsValidEquation, "a valid equation with an error");
        const bool told = !expression.ParseErrorMessage.empty();
        Require(told || expression.CyclicError || expression.FuncMissing, "an error without a reason");
        Require(!told || (expression.PublicTokenPointerStart >= 0 && expression.PublicTokenPointerLength >= 0),
                "an error without a place");
        continue;
      }
      Require(std::ranges::is_sorted(expression.CoefficientNames), "coefficients out of order");
      EvaluateAround(expression);
    }
  }
  return 0;
}

}  // namespace quorvex
