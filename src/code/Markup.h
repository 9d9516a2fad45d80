#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace quorvex {

// The signs and shapes of a way to write mathematics. $1, $2, $3 are the parts, each of any length.
struct Markup {
  std::string_view Number, TimesTenTo;         // $1; $1 and the exponent $2
  std::string_view Italic, Upright, Operator;  // a name
  std::string_view Subscript, Power, Both;
  std::string_view Fraction, Root, Parentheses, Bars, Floor, Ceiling;
  std::string_view Negative, Sum, Difference, Product, Dot;  // Dot: ahead of a digit
  std::string_view Apply, Comma, Factorial, PrimeSign;
  std::string_view AsNumber, Not, And, Or, Cases;
  std::array<std::string_view, 6> Comparisons;  // from kEqual on
  std::string_view Line;                        // $1 = $2
  std::string_view Further;                     // $1, which begins with the sign of a sum
  std::string_view LineEnd, Whole;
  std::string_view Underscore, Gamma;  // "_" in a name; the name of the function
  std::string (*Greek)(std::size_t letter);
};

// In the order of the alphabet, "varsigma" where Unicode has the final sigma.
inline constexpr std::array kGreekLetters = {
    "alpha", "beta", "gamma", "delta", "epsilon",  "zeta",  "eta", "theta",   "iota", "kappa", "lambda", "mu",   "nu",
    "xi",    "",     "pi",    "rho",   "varsigma", "sigma", "tau", "upsilon", "phi",  "chi",   "psi",    "omega"};
inline constexpr std::size_t kGreekPi = 15;

// Each in a file of its own name.
extern const Markup kLatexMarkup;
extern const Markup kMathMLMarkup;

}  // namespace quorvex
