#pragma once

#include <charconv>
#include <cmath>
#include <span>
#include <string_view>

namespace quorvex {

// A second reading of the catalogue's formulas, to hold the closed forms against: straight from the text, in extended
// precision, with none of the program's own parser or functions. Outside a function's domain it gives NaN or infinity.
class FormulaText {
 public:
  // x has one value per variable, a one per coefficient.
  static long double Evaluate(std::string_view text, std::span<const double> x, std::span<const long double> a) {
    FormulaText formula(text, x, a);
    const long double value = formula.Sum();
    return formula.text_.empty() ? value : NAN;
  }

 private:
  FormulaText(std::string_view text, std::span<const double> x, std::span<const long double> a)
      : text_(text), x_(x), a_(a) {}

  bool Take(std::string_view start) {
    if (!text_.starts_with(start)) return false;
    text_.remove_prefix(start.size());
    return true;
  }

  long double Sum() {
    long double sum = Product();
    for (;;) {
      if (Take("+"))
        sum += Product();
      else if (Take("-"))
        sum -= Product();
      else
        return sum;
    }
  }

  long double Product() {
    long double product = Signed();
    for (;;) {
      if (Take("*"))
        product *= Signed();
      else if (Take("/"))
        product /= Signed();
      else
        return product;
    }
  }

  long double Signed() { return Take("-") ? -PowerOf() : PowerOf(); }

  long double PowerOf() {
    long double base = Primary();
    while (Take("^")) base = std::pow(base, Primary());
    return base;
  }

  long double Bracket() {
    const long double inner = Sum();
    return Take(")") ? inner : NAN;
  }

  long double Primary() {
    if (Take("(")) return Bracket();
    if (Take("ln(")) return std::log(Bracket());
    if (Take("exp(")) return std::exp(Bracket());
    if (Take("sqr(")) return std::sqrt(Bracket());
    if (Take("cos(")) return std::cos(Bracket());
    if (Take("sin(")) return std::sin(Bracket());
    if (Take("x")) return x_[x_.size() == 1 ? 0 : static_cast<std::size_t>(Number()) - 1];
    if (!text_.empty() && text_[0] >= 'a' && text_[0] <= 'u') {
      const auto index = static_cast<std::size_t>(text_[0] - 'a');
      text_.remove_prefix(1);
      return index < a_.size() ? a_[index] : NAN;
    }
    return Number();
  }

  long double Number() {
    double value = NAN;
    const auto end = std::from_chars(text_.data(), text_.data() + text_.size(), value).ptr;
    text_.remove_prefix(static_cast<std::size_t>(end - text_.data()));
    return value;
  }

  std::string_view text_;
  std::span<const double> x_;
  std::span<const long double> a_;
};

}  // namespace quorvex
