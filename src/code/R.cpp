#include "code/Languages.h"

namespace quorvex {
namespace {

constexpr std::string_view kReserved[] = {
    // Words of the language.
    "if", "else", "repeat", "while", "function", "for", "next", "break", "TRUE", "FALSE", "NULL", "Inf", "NaN", "NA",
    "NA_integer_", "NA_real_", "NA_complex_", "NA_character_", "in", "pi",
    // Functions that are called here: one of the user's that is called like them would call itself.
    "abs", "acos", "acosh", "asin", "asinh", "atan", "atanh", "beta", "besselI", "besselJ", "besselK", "besselY",
    "bitwAnd", "bitwOr", "bitwXor", "ceiling", "cos", "cosh", "digamma", "exp", "factorial", "floor", "gamma", "is",
    "lfactorial", "lgamma", "log", "log10", "max", "min", "pbeta", "pchisq", "pgamma", "pnorm", "print", "round",
    "sign", "sin", "sinh", "sqrt", "stop", "sys", "tan", "tanh", "trunc"};

constexpr CodeForm kForms[] = {
    {"^", "#1 ^ #2", Binding::Power},
    {"\\", "integer_quotient($1, $2)", Binding::Atom, "integer_quotient"},
    {"mod", "integer_remainder($1, $2)", Binding::Atom, "integer_remainder"},
    {"not", "-1 - whole($1)", Binding::Sum, "whole"},
    {"and", "bits(bitwAnd, $1, $2)", Binding::Atom, "bits"},
    {"or", "bits(bitwOr, $1, $2)", Binding::Atom, "bits"},
    {"xor", "bits(bitwXor, $1, $2)", Binding::Atom, "bits"},
    {"eqv", "-1 - bits(bitwXor, $1, $2)", Binding::Sum, "bits"},
    {"imp", "bits(bitwOr, -1 - whole($1), $2)", Binding::Atom, "bits"},
    {"abs", "abs($1)"},
    {"exp", "exp($1)"},
    {"fix", "trunc($1)"},
    {"int", "floor($1)"},
    {"floor", "floor($1)"},
    {"ceil", "ceiling($1)"},
    {"fract", "fraction($1)", Binding::Atom, "fraction"},
    {"log", "log($1)"},
    {"ln", "log($1)"},
    {"log10", "log10($1)"},
    {"sgn", "sign($1)"},
    {"sqr", "sqrt($1)"},
    {"cos", "cos($1)"},
    {"sin", "sin($1)"},
    {"tan", "tan($1)"},
    {"arcsin", "asin($1)"},
    {"arccos", "acos($1)"},
    {"arctan", "atan($1)"},
    {"sec", "1 / cos($1)", Binding::Product},
    {"cosec", "1 / sin($1)", Binding::Product},
    {"cotan", "1 / tan($1)", Binding::Product},
    {"arcsec", "acos(1 / #1)"},
    {"arccosec", "asin(1 / #1)"},
    {"arccotan", "pi / 2 - atan($1)", Binding::Sum},
    {"hsin", "sinh(held($1))", Binding::Atom, "held"},
    {"hcos", "cosh(held($1))", Binding::Atom, "held"},
    {"htan", "tanh($1)"},
    {"hsec", "1 / cosh(held($1))", Binding::Product, "held"},
    {"hcosec", "1 / sinh(held($1))", Binding::Product, "held"},
    {"hcotan", "1 / tanh($1)", Binding::Product},
    {"harcsin", "asinh($1)"},
    {"harccos", "acosh($1)"},
    {"harctan", "atanh($1)"},
    {"harcsec", "acosh(1 / #1)"},
    {"harccosec", "asinh(1 / #1)"},
    {"harccotan", "atanh(1 / #1)"},
    {"rtod", "#1 / 3.14159265358979 * 180", Binding::Product},
    {"dtor", "#1 / 180 * 3.14159265358979", Binding::Product},
    {"erf", "error_function($1)", Binding::Atom, "error_function"},
    {"erfc", "2 * pnorm(-sqrt(2) * #1)", Binding::Product},
    {"fact", "factorial(whole($1))", Binding::Atom, "whole"},
    {"factln", "lfactorial(whole($1))", Binding::Atom, "whole"},
    {"gamma", "gamma($1)"},
    {"gammaln", "lgamma($1)"},
    {"psi", "digamma(max(1, whole($1)))", Binding::Atom, "whole"},
    {"max", "max($1, $2)"},
    {"min", "min($1, $2)"},
    {"mag", "magnitude($1, $2)", Binding::Atom, "magnitude"},
    {"igamma", "pgamma($2, $1)"},
    {"igammac", "pgamma($2, $1, lower.tail = FALSE)"},
    {"beta", "beta($1, $2)"},
    {"poisson", "pgamma($2, $1, lower.tail = FALSE)"},
    {"student", "within_t($1, $2)", Binding::Atom, "within_t"},
    {"chi2", "pchisq($1, $2)"},
    {"chi2c", "pchisq($1, $2, lower.tail = FALSE)"},
    {"jn", "of_parity(besselJ, whole($1), $2)", Binding::Atom, "of_parity whole"},
    {"yn", "besselY($2, whole($1))", Binding::Atom, "whole"},
    {"in", "of_parity(besselI, whole($1), $2)", Binding::Atom, "of_parity whole"},
    {"kn", "besselK($2, whole($1))", Binding::Atom, "whole"},
    {"jnu", "besselJ($2, $1)"},
    {"ynu", "besselY($2, $1)"},
    {"djnu", "slope_of(besselJ, -1, $1, $2)", Binding::Atom, "slope_of"},
    {"dynu", "slope_of(besselY, -1, $1, $2)", Binding::Atom, "slope_of"},
    {"inu", "besselI($2, $1)"},
    {"knu", "besselK($2, $1)"},
    {"dinu", "slope_of(besselI, 1, $1, $2)", Binding::Atom, "slope_of"},
    {"dknu", "slope_of(besselK, -1, $1, $2)", Binding::Atom, "slope_of"},
    {"sphjn", "spherical(besselJ, $1, $2)", Binding::Atom, "spherical"},
    {"sphyn", "spherical(besselY, $1, $2)", Binding::Atom, "spherical"},
    {"dsphjn", "spherical_slope(besselJ, $1, $2)", Binding::Atom, "spherical_slope"},
    {"dsphyn", "spherical_slope(besselY, $1, $2)", Binding::Atom, "spherical_slope"},
    {"legendre", "legendre(whole($1), whole($2), $3)", Binding::Atom, "legendre whole"},
    {"binomial", "at_least($1, $2, $3)", Binding::Atom, "at_least"},
    {"ibeta", "pbeta($3, $1, $2)"},
    {"fdist", "above_f($1, $2, $3)", Binding::Atom, "above_f"},
    {"j0", "besselJ(abs($1), 0)"},
    {"j1", "of_parity(besselJ, 1, $1)", Binding::Atom, "of_parity"},
    {"y0", "besselY($1, 0)"},
    {"y1", "besselY($1, 1)"},
    {"i0", "besselI(abs($1), 0)"},
    {"i1", "of_parity(besselI, 1, $1)", Binding::Atom, "of_parity"},
    {"k0", "besselK($1, 0)"},
    {"k1", "besselK($1, 1)"},
};

constexpr CodeDefinition kDefinitions[] = {
    {"whole",
     "# The nearest whole number, ties to even, in 32 bits.\n"
     "whole <- function(value) {\n"
     "    number <- round(value)\n"
     "    if (is.nan(number) || number < -2^31 || number >= 2^31) stop(\"no whole number of 32 bits: \", value)\n"
     "    number\n"
     "}"},
    {"integer_quotient",
     "# Of the rounded numbers, towards 0.\n"
     "integer_quotient <- function(a, b) trunc(whole(a) / whole(b))",
     "whole"},
    {"integer_remainder",
     "# Of the rounded numbers, with the sign of the first.\n"
     "integer_remainder <- function(a, b) whole(a) - whole(b) * trunc(whole(a) / whole(b))",
     "whole"},
    {"bits",
     "# By halves of 16 bits, for whole numbers of R have no -2^31.\n"
     "bits <- function(operation, a, b) {\n"
     "    a <- whole(a) %% 2^32\n"
     "    b <- whole(b) %% 2^32\n"
     "    value <- operation(a %/% 2^16, b %/% 2^16) * 2^16 + operation(a %% 2^16, b %% 2^16)\n"
     "    if (value < 2^31) value else value - 2^32\n"
     "}",
     "whole"},
    {"fraction", "fraction <- function(value) value - trunc(value)"},
    {"held",
     "# Hyperbolic functions stay as they are beyond 707, where they would overflow.\n"
     "held <- function(value) max(-707, min(707, value))"},
    {"error_function", "error_function <- function(value) sign(value) * pgamma(value * value, 0.5)"},
    {"magnitude",
     "magnitude <- function(a, b) {\n"
     "    larger <- max(abs(a), abs(b))\n"
     "    if (larger == 0) 0 else larger * sqrt((a / larger)^2 + (b / larger)^2)\n"
     "}"},
    {"within_t",
     "# The chance of a value between -t and t.\n"
     "within_t <- function(t, v) pbeta(t * t / (v + t * t), 0.5, v / 2)"},
    {"at_least",
     "# The chance of k or more successes out of n.\n"
     "at_least <- function(k, n, p) pbeta(p, k, n - k + 1)"},
    {"above_f",
     "# The chance of a variance ratio above f.\n"
     "above_f <- function(v1, v2, f) pbeta(v2 / (v2 + v1 * f), v2 / 2, v1 / 2)"},
    {"of_parity",
     "# Odd or even as its order is.\n"
     "of_parity <- function(bessel, n, x) (if (x < 0 && n %% 2 == 1) -1 else 1) * bessel(abs(x), n)"},
    {"slope_of", "slope_of <- function(bessel, sign, nu, x) nu / x * bessel(x, nu) + sign * bessel(x, nu + 1)"},
    {"spherical", "spherical <- function(bessel, n, x) sqrt(pi / 2 / x) * bessel(x, whole(n) + 0.5)", "whole"},
    {"spherical_slope",
     "spherical_slope <- function(bessel, n, x) {\n"
     "    whole(n) / x * spherical(bessel, n, x) - spherical(bessel, whole(n) + 1, x)\n"
     "}",
     "spherical"},
    {"legendre",
     "# The associated polynomial, with the sign (-1)^m.\n"
     "legendre <- function(l, m, x) {\n"
     "    if (m < 0 || m > l || abs(x) > 1) return(NaN)\n"
     "    value <- 1\n"
     "    for (i in seq_len(m)) value <- -value * (2 * i - 1) * sqrt((1 - x) * (1 + x))\n"
     "    before <- 0\n"
     "    for (n in m + seq_len(l - m)) {\n"
     "        above <- (x * (2 * n - 1) * value - (n + m - 1) * before) / (n - m)\n"
     "        before <- value\n"
     "        value <- above\n"
     "    }\n"
     "    value\n"
     "}"},
};

}  // namespace

const CodeLanguage kR = {.Name = "R",
                         .Extension = "r",
                         .Comment = "#",
                         .Reserved = kReserved,
                         .Forms = kForms,
                         .Definitions = kDefinitions,
                         .Truth = {.OfNumber = "#1 != 0",
                                   .AsNumber = "(if ($1) -1 else 0)",
                                   .And = "($1 && $2)",
                                   .Or = "($1 || $2)",
                                   .Not = "!($1)"},
                         .Choice = "(if ($1) $2 else $3)",
                         .Save = "($1 <- $2)",
                         .Frame = {.Function = "\n$1 <- function($2) {\n",
                                   .Constant = "$1 <- $2",
                                   .Support = "$1 <- 0",
                                   .Result = "$1",
                                   .End = "}\n",
                                   .Proof = "\n# $1 is to give $2\nif (sys.nframe() == 0) print($1, digits = 15)\n"},
                         .Number = PlainNumber,
                         .Write = WriteFramed};

}  // namespace quorvex
