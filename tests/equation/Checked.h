#pragma once

#include <cmath>
#include <initializer_list>
#include <optional>
#include <string_view>

#include "core/FaultFlags.h"
#include "core/NumericFault.h"
#include "equation/IntrinsicFunctions.h"

namespace quorvex {

// The value of a function of the language, or nothing where it faults, by exception or by the processor's flags.
inline std::optional<double> Checked(const IntrinsicFunction& function, const double* args) {
  RandomState random;
  ClearFaultFlags();
  try {
    const double value = CallFunction(function.Code, args, random);
    if (!FaultFlagsRaised()) return value;
  } catch (const NumericFault&) {
  }
  return std::nullopt;
}

inline std::optional<double> Checked(std::string_view word, std::initializer_list<double> args) {
  return Checked(*FindFunction(word), args.begin());
}

// The same as NaN where it faults: NaN is within no tolerance.
inline double Value(std::string_view word, std::initializer_list<double> args) {
  return Checked(word, args).value_or(NAN);
}

}  // namespace quorvex
