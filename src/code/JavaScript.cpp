#include "code/Languages.h"

namespace quorvex {
namespace {

constexpr std::string_view kReserved[] = {
    "arguments", "async",       "await",      "break",     "case",     "catch",     "class",   "const",
    "continue",  "debugger",    "default",    "delete",    "do",       "else",      "enum",    "eval",
    "export",    "extends",     "false",      "finally",   "for",      "function",  "if",      "implements",
    "import",    "in",          "instanceof", "interface", "let",      "new",       "null",    "of",
    "package",   "private",     "protected",  "public",    "return",   "static",    "super",   "switch",
    "this",      "throw",       "true",       "try",       "typeof",   "var",       "void",    "while",
    "with",      "yield",       "undefined",  "NaN",       "Infinity", "Math",      "Number",  "BigInt",
    "DataView",  "ArrayBuffer", "RangeError", "console",   "module",   "exports",   "require", "window",
    "document",  "location",    "top",        "name",      "self",     "globalThis"};

constexpr CodeForm kForms[] = {
    {"^", "Math.pow($1, $2)"},
    {"\\", "integer_quotient($1, $2)", Binding::Atom, "integer_quotient"},
    {"mod", "integer_remainder($1, $2)", Binding::Atom, "integer_remainder"},
    {"not", "(~whole($1))", Binding::Atom, "whole"},
    {"and", "(whole($1) & whole($2))", Binding::Atom, "whole"},
    {"or", "(whole($1) | whole($2))", Binding::Atom, "whole"},
    {"xor", "(whole($1) ^ whole($2))", Binding::Atom, "whole"},
    {"eqv", "(~(whole($1) ^ whole($2)))", Binding::Atom, "whole"},
    {"imp", "(~whole($1) | whole($2))", Binding::Atom, "whole"},
    {"abs", "Math.abs($1)"},
    {"exp", "Math.exp($1)"},
    {"fix", "Math.trunc($1)"},
    {"int", "Math.floor($1)"},
    {"floor", "Math.floor($1)"},
    {"ceil", "Math.ceil($1)"},
    {"fract", "fraction($1)", Binding::Atom, "fraction"},
    {"log", "Math.log($1)"},
    {"ln", "Math.log($1)"},
    {"log10", "Math.log10($1)"},
    {"rnd", "random_number($1)", Binding::Atom, "random_number"},
    {"sgn", "Math.sign($1)"},
    {"sqr", "Math.sqrt($1)"},
    {"cos", "Math.cos($1)"},
    {"sin", "Math.sin($1)"},
    {"tan", "Math.tan($1)"},
    {"arcsin", "Math.asin($1)"},
    {"arccos", "Math.acos($1)"},
    {"arctan", "Math.atan($1)"},
    {"sec", "1.0 / Math.cos($1)", Binding::Product},
    {"cosec", "1.0 / Math.sin($1)", Binding::Product},
    {"cotan", "1.0 / Math.tan($1)", Binding::Product},
    {"arcsec", "Math.acos(1.0 / #1)"},
    {"arccosec", "Math.asin(1.0 / #1)"},
    {"arccotan", "Math.PI / 2.0 - Math.atan($1)", Binding::Sum},
    {"hsin", "Math.sinh(held($1))", Binding::Atom, "held"},
    {"hcos", "Math.cosh(held($1))", Binding::Atom, "held"},
    {"htan", "Math.tanh($1)"},
    {"hsec", "1.0 / Math.cosh(held($1))", Binding::Product, "held"},
    {"hcosec", "1.0 / Math.sinh(held($1))", Binding::Product, "held"},
    {"hcotan", "1.0 / Math.tanh($1)", Binding::Product},
    {"harcsin", "Math.asinh($1)"},
    {"harccos", "Math.acosh($1)"},
    {"harctan", "Math.atanh($1)"},
    {"harcsec", "Math.acosh(1.0 / #1)"},
    {"harccosec", "Math.asinh(1.0 / #1)"},
    {"harccotan", "Math.atanh(1.0 / #1)"},
    {"rtod", "#1 / 3.14159265358979 * 180.0", Binding::Product},
    {"dtor", "#1 / 180.0 * 3.14159265358979", Binding::Product},
    {"fact", "factorial($1)", Binding::Atom, "factorial"},
    {"psi", "digamma($1)", Binding::Atom, "digamma"},
    {"max", "Math.max($1, $2)"},
    {"min", "Math.min($1, $2)"},
    {"mag", "Math.hypot($1, $2)"},
};

constexpr CodeDefinition kDefinitions[] = {
    {"whole",
     "// The nearest whole number, ties to even, in 32 bits.\n"
     "function whole(value) {\n"
     "    let number = Math.floor(value);\n"
     "    const rest = value - number;\n"
     "    if (rest > 0.5 || (rest === 0.5 && number % 2 !== 0)) number += 1;\n"
     "    if (!(number >= -2147483648 && number <= 2147483647)) throw new RangeError(\"no whole number of 32 bits: \" "
     "+ "
     "value);\n"
     "    return number;\n"
     "}"},
    {"integer_quotient",
     "// Of the rounded numbers, towards 0.\n"
     "function integer_quotient(a, b) {\n"
     "    return Math.trunc(whole(a) / whole(b));\n"
     "}",
     "whole"},
    {"integer_remainder",
     "// Of the rounded numbers, with the sign of the first.\n"
     "function integer_remainder(a, b) {\n"
     "    return whole(a) % whole(b);\n"
     "}",
     "whole"},
    {"fraction",
     "function fraction(value) {\n"
     "    return value - Math.trunc(value);\n"
     "}"},
    {"held",
     "// Hyperbolic functions stay as they are beyond 707, where they would overflow.\n"
     "function held(value) {\n"
     "    return Math.max(-707, Math.min(707, value));\n"
     "}"},
    {"factorial",
     "function factorial(value) {\n"
     "    let n = whole(value), product = n < 0 ? NaN : 1;\n"
     "    for (; n > 1 && product < Infinity; n -= 1) product *= n;\n"
     "    return product;\n"
     "}",
     "whole"},
    {"digamma",
     "// Of a whole number.\n"
     "function digamma(value) {\n"
     "    let sum = -0.5772156649015329;\n"
     "    for (let n = whole(value) - 1; n >= 1; n -= 1) sum += 1 / n;\n"
     "    return sum;\n"
     "}",
     "whole"},
    {"random_number",
     "var random_counter = 0n;\n"
     "\n"
     "// Begins anew from a negative number, repeats the last one for 0, else draws the next.\n"
     "function random_number(value) {\n"
     "    if (value < 0) {\n"
     "        const view = new DataView(new ArrayBuffer(8));\n"
     "        view.setFloat64(0, value);\n"
     "        random_counter = view.getBigUint64(0);\n"
     "    }\n"
     "    if (value !== 0) random_counter = BigInt.asUintN(64, random_counter + 0x9E3779B97F4A7C15n);\n"
     "    let bits = random_counter;\n"
     "    bits = BigInt.asUintN(64, (bits ^ (bits >> 30n)) * 0xBF58476D1CE4E5B9n);\n"
     "    bits = BigInt.asUintN(64, (bits ^ (bits >> 27n)) * 0x94D049BB133111EBn);\n"
     "    return Number((bits ^ (bits >> 31n)) >> 11n) / 9007199254740992;\n"
     "}"},
};

}  // namespace

const CodeLanguage kJavaScript = {.Name = "JavaScript",
                                  .Extension = "js",
                                  .Comment = "//",
                                  .Reserved = kReserved,
                                  .Forms = kForms,
                                  .Definitions = kDefinitions,
                                  .Truth = {.OfNumber = "#1 !== 0",
                                            .AsNumber = "($1 ? -1.0 : 0.0)",
                                            .And = "($1 && $2)",
                                            .Or = "($1 || $2)",
                                            .Not = "!($1)"},
                                  .Choice = "($1 ? $2 : $3)",
                                  .Save = "($1 = $2)",
                                  .Frame = {.Function = "\nfunction $1($2) {\n",
                                            .Constant = "const $1 = $2;",
                                            .Support = "let $1 = 0.0;",
                                            .Result = "return $1;",
                                            .End = "}\n\n// For require(); a page has the function by its name.\nif "
                                                   "(typeof module !== \"undefined\") module.exports = { $1 };\n",
                                            .Proof = "\n// $1 is to give $2\nif (typeof require !== \"undefined\" && "
                                                     "require.main === module) console.log($1);\n"},
                                  .Number = RealNumber,
                                  .Write = WriteFramed};

}  // namespace quorvex
