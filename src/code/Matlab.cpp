#include "code/Languages.h"

namespace quorvex {
namespace {

// Words of the language, and what the code calls, which no coefficient may hide. All of it runs in Octave, too, which
// has some more words.
constexpr std::string_view kReserved[] = {
    "break",
    "case",
    "catch",
    "classdef",
    "continue",
    "else",
    "elseif",
    "end",
    "for",
    "function",
    "global",
    "if",
    "otherwise",
    "parfor",
    "persistent",
    "return",
    "spmd",
    "switch",
    "try",
    "while",
    "do",
    "until",
    "endif",
    "endfor",
    "endwhile",
    "endfunction",
    "endswitch",
    "end_try_catch",
    "unwind_protect",
    "unwind_protect_cleanup",
    "end_unwind_protect",
    "abs",
    "exp",
    "fix",
    "floor",
    "ceil",
    "rem",
    "reallog",
    "realsqrt",
    "realpow",
    "log10",
    "sign",
    "cos",
    "sin",
    "tan",
    "asin",
    "acos",
    "atan",
    "atan2",
    "sinh",
    "cosh",
    "tanh",
    "asinh",
    "acosh",
    "atanh",
    "max",
    "min",
    "hypot",
    "round",
    "mod",
    "bitand",
    "bitor",
    "bitxor",
    "double",
    "erf",
    "erfc",
    "gamma",
    "gammaln",
    "gammainc",
    "psi",
    "beta",
    "betainc",
    "besselj",
    "bessely",
    "besseli",
    "besselk",
    "airy",
    "real",
    "isreal",
    "legendre",
    "numel",
    "arrayfun",
    "error",
    "any",
    "y",
    "assert",
    "pi",
};

constexpr CodeForm kForms[] = {
    {"^whole", "#1 .^ $2", Binding::Power},
    {"^", "realpow($1, $2)"},
    {"<>", "$1 ~= $2"},
    {"\\", "fix(whole($1) ./ whole($2))", Binding::Atom, "whole"},
    {"mod", "rem(whole($1), whole($2))", Binding::Atom, "whole"},
    {"not", "(-1 - whole($1))", Binding::Atom, "whole"},
    {"and", "bits(@bitand, $1, $2)", Binding::Atom, "bits"},
    {"or", "bits(@bitor, $1, $2)", Binding::Atom, "bits"},
    {"xor", "bits(@bitxor, $1, $2)", Binding::Atom, "bits"},
    {"eqv", "(-1 - bits(@bitxor, $1, $2))", Binding::Atom, "bits"},
    {"imp", "bits(@bitor, -1 - whole($1), $2)", Binding::Atom, "bits whole"},
    {"abs", "abs($1)"},
    {"exp", "exp($1)"},
    {"fix", "fix($1)"},
    {"int", "floor($1)"},
    {"floor", "floor($1)"},
    {"ceil", "ceil($1)"},
    {"fract", "rem($1, 1)"},
    {"log", "reallog($1)"},
    {"ln", "reallog($1)"},
    {"log10", "real_value(log10($1))", Binding::Atom, "real_value"},
    {"sgn", "sign($1)"},
    {"sqr", "realsqrt($1)"},
    {"cos", "cos($1)"},
    {"sin", "sin($1)"},
    {"tan", "tan($1)"},
    {"arcsin", "real_value(asin($1))", Binding::Atom, "real_value"},
    {"arccos", "real_value(acos($1))", Binding::Atom, "real_value"},
    {"arctan", "atan($1)"},
    {"sec", "1 ./ cos($1)", Binding::Product},
    {"cosec", "1 ./ sin($1)", Binding::Product},
    {"cotan", "1 ./ tan($1)", Binding::Product},
    {"arcsec", "real_value(acos(1 ./ #1))", Binding::Atom, "real_value"},
    {"arccosec", "real_value(asin(1 ./ #1))", Binding::Atom, "real_value"},
    {"arccotan", "atan2(1, $1)"},
    {"hsin", "sinh(held($1))", Binding::Atom, "held"},
    {"hcos", "cosh(held($1))", Binding::Atom, "held"},
    {"htan", "tanh($1)"},
    {"hsec", "1 ./ cosh(held($1))", Binding::Product, "held"},
    {"hcosec", "1 ./ sinh(held($1))", Binding::Product, "held"},
    {"hcotan", "1 ./ tanh($1)", Binding::Product},
    {"harcsin", "asinh($1)"},
    {"harccos", "real_value(acosh($1))", Binding::Atom, "real_value"},
    {"harctan", "real_value(atanh($1))", Binding::Atom, "real_value"},
    {"harcsec", "real_value(acosh(1 ./ #1))", Binding::Atom, "real_value"},
    {"harccosec", "asinh(1 ./ #1)"},
    {"harccotan", "real_value(atanh(1 ./ #1))", Binding::Atom, "real_value"},
    {"rtod", "#1 ./ 3.14159265358979 .* 180", Binding::Product},
    {"dtor", "#1 ./ 180 .* 3.14159265358979", Binding::Product},
    {"erf", "erf($1)"},
    {"erfc", "erfc($1)"},
    {"fact", "gamma(whole($1) + 1)", Binding::Atom, "whole"},
    {"factln", "gammaln(whole($1) + 1)", Binding::Atom, "whole"},
    {"gamma", "gamma($1)"},
    {"gammaln", "gammaln($1)"},
    {"psi", "psi(max(1, whole($1)))", Binding::Atom, "whole"},
    {"max", "max($1, $2)"},
    {"min", "min($1, $2)"},
    {"mag", "hypot($1, $2)"},
    {"igamma", "gammainc($2, $1)"},
    {"igammac", "gammainc($2, $1, 'upper')"},
    {"poisson", "gammainc($2, $1, 'upper')"},
    {"chi2", "gammainc(#1 ./ 2, #2 ./ 2)"},
    {"chi2c", "gammainc(#1 ./ 2, #2 ./ 2, 'upper')"},
    {"beta", "beta($1, $2)"},
    {"ibeta", "betainc($3, $1, $2)"},
    {"student", "within_t($1, $2)", Binding::Atom, "within_t"},
    {"binomial", "at_least($1, $2, $3)", Binding::Atom, "at_least"},
    {"fdist", "above_f($1, $2, $3)", Binding::Atom, "above_f"},
    {"jn", "besselj(whole($1), $2)", Binding::Atom, "whole"},
    {"yn", "bessely(whole($1), $2)", Binding::Atom, "whole"},
    {"in", "besseli(whole($1), $2)", Binding::Atom, "whole"},
    {"kn", "besselk(whole($1), $2)", Binding::Atom, "whole"},
    {"jnu", "besselj($1, $2)"},
    {"ynu", "bessely($1, $2)"},
    {"inu", "besseli($1, $2)"},
    {"knu", "besselk($1, $2)"},
    {"djnu", "slope_of(@besselj, -1, $1, $2)", Binding::Atom, "slope_of"},
    {"dynu", "slope_of(@bessely, -1, $1, $2)", Binding::Atom, "slope_of"},
    {"dinu", "slope_of(@besseli, 1, $1, $2)", Binding::Atom, "slope_of"},
    {"dknu", "slope_of(@besselk, -1, $1, $2)", Binding::Atom, "slope_of"},
    {"sphjn", "spherical(@besselj, $1, $2)", Binding::Atom, "spherical"},
    {"sphyn", "spherical(@bessely, $1, $2)", Binding::Atom, "spherical"},
    {"dsphjn", "spherical_slope(@besselj, $1, $2)", Binding::Atom, "spherical_slope"},
    {"dsphyn", "spherical_slope(@bessely, $1, $2)", Binding::Atom, "spherical_slope"},
    {"j0", "besselj(0, $1)"},
    {"j1", "besselj(1, $1)"},
    {"y0", "bessely(0, $1)"},
    {"y1", "bessely(1, $1)"},
    {"i0", "besseli(0, $1)"},
    {"i1", "besseli(1, $1)"},
    {"k0", "besselk(0, $1)"},
    {"k1", "besselk(1, $1)"},
    {"airya", "real(airy(0, $1))"},
    {"airyb", "real(airy(2, $1))"},
    {"dairya", "real(airy(1, $1))"},
    {"dairyb", "real(airy(3, $1))"},
    {"legendre", "associated_legendre($1, $2, $3)", Binding::Atom, "associated_legendre"},
};

constexpr CodeDefinition kDefinitions[] = {
    {"whole",
     "function number = whole(value)\n"
     "    % The nearest whole number, ties to even, in 32 bits.\n"
     "    number = round(value);\n"
     "    ties = abs(value - fix(value)) == 0.5;\n"
     "    number(ties) = 2 * round(value(ties) / 2);\n"
     "    if any(~(number(:) >= -2147483648 & number(:) <= 2147483647))\n"
     "        error('no whole number of 32 bits');\n"
     "    end\n"
     "end"},
    {"bits",
     "function value = bits(operation, a, b)\n"
     "    value = operation(mod(whole(a), 4294967296), mod(whole(b), 4294967296));\n"
     "    value = mod(value + 2147483648, 4294967296) - 2147483648;\n"
     "end",
     "whole"},
    {"real_value",
     "function value = real_value(value)\n"
     "    if ~isreal(value)\n"
     "        error('the model has no value here');\n"
     "    end\n"
     "end"},
    {"held",
     "function value = held(value)\n"
     "    % Hyperbolic functions stay as they are beyond 707, where they would overflow.\n"
     "    value = max(-707, min(707, value));\n"
     "end"},
    {"within_t",
     "function value = within_t(t, v)\n"
     "    % The chance of a value between -t and t.\n"
     "    value = betainc(t .* t ./ (v + t .* t), 0.5, v ./ 2);\n"
     "end"},
    {"at_least",
     "function value = at_least(k, n, p)\n"
     "    % The chance of k or more successes out of n.\n"
     "    value = betainc(p, k, n - k + 1);\n"
     "end"},
    {"above_f",
     "function value = above_f(v1, v2, f)\n"
     "    % The chance of a variance ratio above f.\n"
     "    value = betainc(v2 ./ (v2 + v1 .* f), v2 ./ 2, v1 ./ 2);\n"
     "end"},
    {"slope_of",
     "function value = slope_of(bessel, signum, nu, x)\n"
     "    value = nu ./ x .* bessel(nu, x) + signum .* bessel(nu + 1, x);\n"
     "end"},
    {"spherical",
     "function value = spherical(bessel, n, x)\n"
     "    value = realsqrt(pi ./ 2 ./ x) .* bessel(whole(n) + 0.5, x);\n"
     "end",
     "whole"},
    {"spherical_slope",
     "function value = spherical_slope(bessel, n, x)\n"
     "    value = whole(n) ./ x .* spherical(bessel, n, x) - spherical(bessel, whole(n) + 1, x);\n"
     "end",
     "spherical"},
    {"associated_legendre",
     "function value = associated_legendre(l, m, x)\n"
     "    orders = legendre(whole(l), x);\n"
     "    value = orders(whole(m) + 1);\n"
     "end",
     "whole"},
};

// Models that choose take one point at a time, and so does what a function gives a row of orders for.
bool TakesOnePoint(const CodeBody& body) {
  bool takesOne = !body.Choices.empty();
  for (const CodeDefinition* definition : body.Definitions) takesOne |= definition->Name == "associated_legendre";
  return takesOne;
}

constexpr std::string_view kOnePointFunction =
    "\nfunction y = $1($2)\n"
    "    if numel($3) ~= 1\n"
    "        y = arrayfun(@$1, $2);\n"
    "        return\n"
    "    end\n";

std::string Write(const CodeModel& model, const CodeBody& body, const CodeLanguage& language) {
  CodeBody remarked = body;
  remarked.Remarks.push_back("For MATLAB and Octave. The file is to be called " + body.Function +
                             ".m; points may be numbers or arrays of one size.");
  std::string text = CommentHead(model, remarked, language);
  if (model.Proof)
    text += "%\n% " + ProofCall(model, body, language) + " is to give " + PlainNumber(model.Proof->Y) + "\n";
  CodeLanguage framed = language;
  if (TakesOnePoint(body)) framed.Frame.Function = kOnePointFunction;
  return text + FunctionText(model, body, framed) + DefinitionText(body) + ProofText(model, body, language);
}

}  // namespace

const CodeLanguage kMatlab = {.Name = "MATLAB",
                              .Extension = "m",
                              .Comment = "%",
                              .LongestName = 63,
                              .Reserved = kReserved,
                              .Forms = kForms,
                              .Definitions = kDefinitions,
                              .Truth = {.OfNumber = "#1 ~= 0",
                                        .AsNumber = "(-double($1))",
                                        .And = "(($1) & ($2))",
                                        .Or = "(($1) | ($2))",
                                        .Not = "~($1)"},
                              .Times = " .* ",
                              .Over = " ./ ",
                              .Statements = {.If = "if $1", .Else = "else", .End = "end", .Assign = "$1 = $2;"},
                              .Frame = {.Function = "\nfunction y = $1($2)\n",
                                        .Constant = "$1 = $2;",
                                        .Support = "$1 = 0;",
                                        .Result = "y = $1;",
                                        .End = "end\n",
                                        .Proof = "\n%!assert ($1, $2, -1e-10)\n"},
                              .Number = PlainNumber,
                              .Write = Write};

}  // namespace quorvex
