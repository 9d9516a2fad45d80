#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "equation/Parser.h"

namespace quorvex {

// A model's lines in compiled form; a line that does not parse fails the test.
inline Expression Compile(const std::vector<std::string>& lines, Dialect dialect = Dialect::OneVariable,
                          const LocaleText& locale = {}) {
  Expression expression = Parser(dialect, locale).Compile(lines);
  EXPECT_FALSE(expression.ParseError) << lines[0] << ": " << expression.ParseErrorMessage;
  return expression;
}

constexpr LocaleText kGerman{',', ';', '.', '.', ':'};

}  // namespace quorvex
