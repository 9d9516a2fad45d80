#pragma once

#include "equation/Expression.h"

namespace quorvex {

// The unary and binary operators of the language, by code. Comparisons and logic give -1 and 0 or bits; operators on
// integers round first (ties to even) and throw NumericFault beyond 32 bits and for a division by zero. The faults of
// real arithmetic show in the processor's flags.
double UnaryOperation(int code, double a);
double BinaryOperation(int code, double a, double b);

// What comparisons give.
constexpr double Truth(bool holds) { return holds ? -1.0 : 0.0; }

}  // namespace quorvex
