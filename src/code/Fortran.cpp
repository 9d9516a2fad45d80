#include <algorithm>

#include "code/Languages.h"
#include "core/NumberText.h"

namespace quorvex {
namespace {

// The language knows no reserved words, but who reads the code does. What it calls may not be hidden.
constexpr std::string_view kReserved[] = {
    "module",    "contains",  "function",  "end",       "if",      "then",      "else",      "implicit",  "none",
    "private",   "public",    "double",    "precision", "integer", "real",      "result",    "return",    "call",
    "do",        "program",   "use",       "print",     "stop",    "error",     "abs",       "exp",       "aint",
    "mod",       "log",       "log10",     "sqrt",      "cos",     "sin",       "tan",       "asin",      "acos",
    "atan",      "atan2",     "sinh",      "cosh",      "tanh",    "asinh",     "acosh",     "atanh",     "erf",
    "erfc",      "gamma",     "log_gamma", "max",       "min",     "hypot",     "merge",     "dble",      "iand",
    "ior",       "ieor",      "not",       "nint",      "value",   "bessel_j0", "bessel_j1", "bessel_jn", "bessel_y0",
    "bessel_y1", "bessel_yn",
};

constexpr CodeForm kForms[] = {
    {"^whole", "#1 ** $2", Binding::Power},
    {"^", "power($1, $2)", Binding::Atom, "power"},
    {"<>", "$1 /= $2"},
    {"\\", "dble(integer_quotient($1, $2))", Binding::Atom, "integer_quotient"},
    {"mod", "dble(integer_remainder($1, $2))", Binding::Atom, "integer_remainder"},
    {"not", "dble(not(whole($1)))", Binding::Atom, "whole"},
    {"and", "dble(iand(whole($1), whole($2)))", Binding::Atom, "whole"},
    {"or", "dble(ior(whole($1), whole($2)))", Binding::Atom, "whole"},
    {"xor", "dble(ieor(whole($1), whole($2)))", Binding::Atom, "whole"},
    {"eqv", "dble(not(ieor(whole($1), whole($2))))", Binding::Atom, "whole"},
    {"imp", "dble(ior(not(whole($1)), whole($2)))", Binding::Atom, "whole"},
    {"abs", "abs($1)"},
    {"exp", "exp($1)"},
    {"fix", "aint($1)"},
    {"int", "lower_whole($1)", Binding::Atom, "lower_whole"},
    {"floor", "lower_whole($1)", Binding::Atom, "lower_whole"},
    {"ceil", "(-lower_whole(-#1))", Binding::Atom, "lower_whole"},
    {"fract", "mod($1, 1.0d0)"},
    {"log", "log($1)"},
    {"ln", "log($1)"},
    {"log10", "log10($1)"},
    {"sgn", "signum($1)", Binding::Atom, "signum"},
    {"sqr", "sqrt($1)"},
    {"cos", "cos($1)"},
    {"sin", "sin($1)"},
    {"tan", "tan($1)"},
    {"arcsin", "asin($1)"},
    {"arccos", "acos($1)"},
    {"arctan", "atan($1)"},
    {"sec", "1.0d0 / cos($1)", Binding::Product},
    {"cosec", "1.0d0 / sin($1)", Binding::Product},
    {"cotan", "1.0d0 / tan($1)", Binding::Product},
    {"arcsec", "acos(1.0d0 / #1)"},
    {"arccosec", "asin(1.0d0 / #1)"},
    {"arccotan", "atan2(1.0d0, $1)"},
    {"hsin", "sinh(held($1))", Binding::Atom, "held"},
    {"hcos", "cosh(held($1))", Binding::Atom, "held"},
    {"htan", "tanh($1)"},
    {"hsec", "1.0d0 / cosh(held($1))", Binding::Product, "held"},
    {"hcosec", "1.0d0 / sinh(held($1))", Binding::Product, "held"},
    {"hcotan", "1.0d0 / tanh($1)", Binding::Product},
    {"harcsin", "asinh($1)"},
    {"harccos", "acosh($1)"},
    {"harctan", "atanh($1)"},
    {"harcsec", "acosh(1.0d0 / #1)"},
    {"harccosec", "asinh(1.0d0 / #1)"},
    {"harccotan", "atanh(1.0d0 / #1)"},
    {"rtod", "#1 / 3.14159265358979d0 * 180.0d0", Binding::Product},
    {"dtor", "#1 / 180.0d0 * 3.14159265358979d0", Binding::Product},
    {"erf", "erf($1)"},
    {"erfc", "erfc($1)"},
    {"fact", "gamma(whole($1) + 1.0d0)", Binding::Atom, "whole"},
    {"factln", "log_gamma(whole($1) + 1.0d0)", Binding::Atom, "whole"},
    {"gamma", "gamma($1)"},
    {"gammaln", "log_gamma($1)"},
    {"psi", "digamma($1)", Binding::Atom, "digamma"},
    {"max", "max($1, $2)"},
    {"min", "min($1, $2)"},
    {"mag", "hypot($1, $2)"},
    {"jn", "bessel_jn(whole($1), $2)", Binding::Atom, "whole"},
    {"yn", "bessel_yn(whole($1), $2)", Binding::Atom, "whole"},
    {"j0", "bessel_j0($1)"},
    {"j1", "bessel_j1($1)"},
    {"y0", "bessel_y0($1)"},
    {"y1", "bessel_y1($1)"},
};

constexpr CodeDefinition kDefinitions[] = {
    {"whole",
     "! The nearest whole number, ties to even, in 32 bits.\n"
     "integer function whole(number)\n"
     "  double precision, intent(in) :: number\n"
     "  if (.not. (number >= -2147483648.0d0 .and. number <= 2147483647.0d0)) error stop 'no whole number of 32 bits'\n"
     "  whole = nint(number)\n"
     "  if (abs(number - aint(number)) == 0.5d0) whole = 2 * nint(number / 2.0d0)\n"
     "end function whole"},
    {"integer_quotient",
     "! Of the rounded numbers, towards 0.\n"
     "integer function integer_quotient(a, b)\n"
     "  double precision, intent(in) :: a, b\n"
     "  if (whole(b) == 0) error stop 'division by zero'\n"
     "  integer_quotient = whole(a) / whole(b)\n"
     "end function integer_quotient",
     "whole"},
    {"integer_remainder",
     "! Of the rounded numbers, with the sign of the first.\n"
     "integer function integer_remainder(a, b)\n"
     "  double precision, intent(in) :: a, b\n"
     "  if (whole(b) == 0) error stop 'division by zero'\n"
     "  integer_remainder = mod(whole(a), whole(b))\n"
     "end function integer_remainder",
     "whole"},
    {"power",
     "! A negative base has a value where the exponent is a whole number.\n"
     "double precision function power(base, exponent)\n"
     "  double precision, intent(in) :: base, exponent\n"
     "  if (base < 0.0d0 .and. exponent == aint(exponent)) then\n"
     "    power = (-base) ** exponent\n"
     "    if (mod(exponent, 2.0d0) /= 0.0d0) power = -power\n"
     "  else\n"
     "    power = base ** exponent\n"
     "  end if\n"
     "end function power"},
    {"lower_whole",
     "! The largest whole number not above this one, of any size.\n"
     "double precision function lower_whole(number)\n"
     "  double precision, intent(in) :: number\n"
     "  lower_whole = aint(number)\n"
     "  if (lower_whole > number) lower_whole = lower_whole - 1.0d0\n"
     "end function lower_whole"},
    {"signum",
     "double precision function signum(number)\n"
     "  double precision, intent(in) :: number\n"
     "  signum = merge(1.0d0, 0.0d0, number > 0.0d0) - merge(1.0d0, 0.0d0, number < 0.0d0)\n"
     "end function signum"},
    {"held",
     "! Hyperbolic functions stay as they are beyond 707, where they would overflow.\n"
     "double precision function held(number)\n"
     "  double precision, intent(in) :: number\n"
     "  held = max(-707.0d0, min(707.0d0, number))\n"
     "end function held"},
    {"digamma",
     "! Of a whole number.\n"
     "double precision function digamma(number)\n"
     "  double precision, intent(in) :: number\n"
     "  integer :: k\n"
     "  digamma = -0.5772156649015329d0\n"
     "  do k = 1, whole(number) - 1\n"
     "    digamma = digamma + 1.0d0 / k\n"
     "  end do\n"
     "end function digamma",
     "whole"},
};

// Without the "d" a number would have half the digits.
std::string DoubleNumber(double value) {
  std::string text = ShortestNumber(value);
  const auto exponent = text.find('E');
  if (exponent != std::string::npos) {
    text[exponent] = 'd';
    return text;
  }
  return text + (text.find('.') == std::string::npos ? ".0d0" : "d0");
}

// A line of Fortran has 132 characters. What goes on does so behind "&", at a blank where there is one.
constexpr std::size_t kLineLength = 120;

std::string Continued(std::string_view indent, std::string_view line) {
  std::string text(indent);
  while (indent.size() + line.size() > kLineLength) {
    const auto blank = line.rfind(' ', kLineLength - indent.size());
    const std::size_t length = blank == std::string_view::npos || blank < 20 ? kLineLength - indent.size() : blank;
    text.append(line.substr(0, length)).append("&\n").append(indent).append("    &");
    line.remove_prefix(length);
    if (indent.size() + line.size() <= kLineLength) break;
  }
  return text.append(line).append("\n");
}

// Comments go on in further ones.
std::string WithinLines(std::string_view comments) {
  std::string text;
  while (!comments.empty()) {
    std::string_view line = TakeLine(comments);
    while (line.size() > kLineLength) {
      std::size_t length = kLineLength;
      while (length > kLineLength - 4 && (static_cast<unsigned char>(line[length]) & 0xC0) == 0x80) --length;
      text.append(line.substr(0, length)).append("\n! ");
      line.remove_prefix(length);
    }
    text.append(line).append("\n");
  }
  return text;
}

std::string Write(const CodeModel& model, const CodeBody& body, const CodeLanguage& language) {
  std::string module = body.Function + "_code";
  while (std::ranges::find(body.Coefficients, module) != body.Coefficients.end()) module += '_';
  std::string text = CommentHead(model, body, language);
  if (model.Proof) {
    text += "!\n! This prints " + PlainNumber(model.Proof->Y) + ":\n!\n! program proof\n!   use " + module +
            "\n!   print *, " + ProofCall(model, body, language) + "\n! end program proof\n";
  }
  text = WithinLines(text) + "\nmodule " + module + "\n  implicit none\n  private\n  public :: " + body.Function +
         "\ncontains\n\n";
  text += Continued("  ", "double precision function " + body.Function + "(" + CommaList(body.Variables) + ")");
  text += Continued("    ", "double precision, intent(in) :: " + CommaList(body.Variables));
  for (const std::string& word : body.Missing)
    text += Continued("    ", "double precision, external :: " + word + "_of_the_user");
  for (const std::string& line : FunctionLines(model, body, language)) {
    const std::size_t blanks = line.find_first_not_of(' ');
    text += Continued(std::string(4 + std::min<std::size_t>(blanks, 40), ' '), line.substr(blanks));
  }
  text += "  end function " + body.Function + "\n";
  for (const CodeDefinition* definition : body.Definitions) {
    text += '\n';
    for (std::string_view lines = definition->Text; !lines.empty();)
      text.append("  ").append(TakeLine(lines)).append("\n");
  }
  return text + "\nend module " + module + "\n";
}

}  // namespace

const CodeLanguage kFortran = {
    .Name = "Fortran",
    .Extension = "f90",
    .Comment = "!",
    .FoldsCase = true,
    .LongestName = 57,  // of 63, for the module's name is longer than the function's
    .Reserved = kReserved,
    .Forms = kForms,
    .Definitions = kDefinitions,
    .Truth = {.OfNumber = "#1 /= 0.0d0",
              .AsNumber = "merge(-1.0d0, 0.0d0, $1)",
              .And = "($1 .and. $2)",
              .Or = "($1 .or. $2)",
              .Not = "(.not. ($1))"},
    .Statements = {.If = "if ($1) then", .Else = "else", .End = "end if", .Assign = "$1 = $2"},
    .Frame = {.Constant = "double precision, parameter :: $1 = $2",
              .Support = "double precision :: $1",
              .Choice = "double precision :: $1",
              .SupportAtFirst = "$1 = 0.0d0",
              .Result = "$2 = $1"},
    .Number = DoubleNumber,
    .Write = Write};

}  // namespace quorvex
