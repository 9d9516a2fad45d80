#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>
#include <string_view>

namespace quorvex {

// The generator behind the word "rnd". Its owner is whoever evaluates, so that two evaluations don't disturb each
// other. A 64-bit counter is scrambled by shifts and multiplications (SplitMix64: Steele, Lea & Flood, OOPSLA 2014), in
// integers alone, so every machine draws the same numbers.
class RandomState {
 public:
  // A number in [0, 1). A negative x starts the sequence afresh from x and draws its first number, 0 repeats the last
  // number, a positive x draws the next one.
  double Draw(double x);

 private:
  std::uint64_t counter_ = 0;
};

// Where a user may write the word of a function: models of one variable have every word but the two that the compiler
// emits on its own, and models of several variables know no "erfc" either.
enum class WrittenIn { AnyModel, OneVariable, NoModel };

// A function of the equation language.
struct IntrinsicFunction {
  std::string_view Name;  // the word, in lower case
  int Code;               // its number in the compiled form, 1 to 91
  int Arguments;
  // Its value at args[0] to args[Arguments - 1], in written order. Null for if, endtrue and endif, which are control
  // flow. Arguments may be any double. A fault throws NumericFault or shows in the processor's flags
  // (core/FaultFlags.h); where there is none of either the result is finite, if the arguments are.
  double (*Call)(const double* args, RandomState& random);
  WrittenIn Word = WrittenIn::AnyModel;
};

// All 91 in order of code.
std::span<const IntrinsicFunction> IntrinsicFunctions();

// The function of a word in lower case, or null. Knows all 91 words.
const IntrinsicFunction* FindFunction(std::string_view word);

// Whether a user may write the word (in lower case) as a function, in a model of one or of several variables.
bool IsFunctionName(std::string_view word, bool severalVariables);

// The value of function `code`, 1 to 91 but for the control flow 45 to 47, as Call tells it.
double CallFunction(int code, const double* args, RandomState& random);

// What stands for x in the hyperbolic functions: they hold it within 707, where e^x is still a double.
inline double HeldHyperbolic(double x) { return std::clamp(x, -707.0, 707.0); }

// e^x - e^-x from its two terms, or from its power series where they would leave few digits of each other.
[[gnu::always_inline]] inline double HyperbolicDifference(double x, double rising, double falling) {
  constexpr double kFactorials[] = {1, 6, 120, 5040, 362880, 39916800, 6227020800, 1307674368000};
  double sum = 0;
  for (int i = 8; i-- > 0;) sum = sum * (x * x) + 2 / kFactorials[i];
  return std::abs(x) < 0.5 ? x * sum : rising - falling;
}

// The angle of the point (X, Y) in (-pi, pi], by the program's 15-digit pi; 0 at the origin. Mind the order: X first.
double Atn2(double X, double Y);

}  // namespace quorvex
