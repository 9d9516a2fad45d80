#include "code/Languages.h"
#include "core/NumberText.h"

namespace quorvex {
namespace {

constexpr std::string_view kReserved[] = {
    "False", "None",     "True",  "and",    "as",    "assert", "async",   "await",    "break",
    "class", "continue", "def",   "del",    "elif",  "else",   "except",  "finally",  "for",
    "from",  "global",   "if",    "import", "in",    "is",     "lambda",  "nonlocal", "not",
    "or",    "pass",     "raise", "return", "try",   "while",  "with",    "yield",    "abs",
    "float", "int",      "max",   "min",    "round", "math",   "special", "print",    "repr",
};

constexpr CodeForm kForms[] = {
    {"^", "math.pow($1, $2)"},
    {"\\", "integer_quotient($1, $2)", Binding::Atom, "integer_quotient"},
    {"mod", "integer_remainder($1, $2)", Binding::Atom, "integer_remainder"},
    {"not", "float(~whole($1))", Binding::Atom, "whole"},
    {"and", "float(whole($1) & whole($2))", Binding::Atom, "whole"},
    {"or", "float(whole($1) | whole($2))", Binding::Atom, "whole"},
    {"xor", "float(whole($1) ^ whole($2))", Binding::Atom, "whole"},
    {"eqv", "float(~(whole($1) ^ whole($2)))", Binding::Atom, "whole"},
    {"imp", "float(~whole($1) | whole($2))", Binding::Atom, "whole"},
    {"abs", "abs($1)"},
    {"exp", "math.exp($1)"},
    {"fix", "float(math.trunc($1))"},
    {"int", "float(math.floor($1))"},
    {"floor", "float(math.floor($1))"},
    {"ceil", "float(math.ceil($1))"},
    {"fract", "math.modf($1)[0]"},
    {"log", "math.log($1)"},
    {"ln", "math.log($1)"},
    {"log10", "math.log10($1)"},
    {"rnd", "random_number($1)", Binding::Atom, "random_number"},
    {"sgn", "sign($1)", Binding::Atom, "sign"},
    {"sqr", "math.sqrt($1)"},
    {"cos", "math.cos($1)"},
    {"sin", "math.sin($1)"},
    {"tan", "math.tan($1)"},
    {"arcsin", "math.asin($1)"},
    {"arccos", "math.acos($1)"},
    {"arctan", "math.atan($1)"},
    {"sec", "1.0 / math.cos($1)", Binding::Product},
    {"cosec", "1.0 / math.sin($1)", Binding::Product},
    {"cotan", "1.0 / math.tan($1)", Binding::Product},
    {"arcsec", "math.acos(1.0 / #1)"},
    {"arccosec", "math.asin(1.0 / #1)"},
    {"arccotan", "(math.pi / 2.0 - math.atan($1))"},
    {"hsin", "math.sinh(held($1))", Binding::Atom, "held"},
    {"hcos", "math.cosh(held($1))", Binding::Atom, "held"},
    {"htan", "math.tanh($1)"},
    {"hsec", "1.0 / math.cosh(held($1))", Binding::Product, "held"},
    {"hcosec", "1.0 / math.sinh(held($1))", Binding::Product, "held"},
    {"hcotan", "1.0 / math.tanh($1)", Binding::Product},
    {"harcsin", "math.asinh($1)"},
    {"harccos", "math.acosh($1)"},
    {"harctan", "math.atanh($1)"},
    {"harcsec", "math.acosh(1.0 / #1)"},
    {"harccosec", "math.asinh(1.0 / #1)"},
    {"harccotan", "math.atanh(1.0 / #1)"},
    {"rtod", "#1 / 3.14159265358979 * 180.0", Binding::Product},
    {"dtor", "#1 / 180.0 * 3.14159265358979", Binding::Product},
    {"erf", "math.erf($1)"},
    {"erfc", "math.erfc($1)"},
    {"fact", "math.gamma(whole($1) + 1.0)", Binding::Atom, "whole"},
    {"factln", "math.lgamma(whole($1) + 1.0)", Binding::Atom, "whole"},
    {"gamma", "math.gamma($1)"},
    {"gammaln", "math.lgamma($1)"},
    {"psi", "special.psi(max(1, whole($1)))", Binding::Atom, "special whole"},
    {"max", "max($1, $2)"},
    {"min", "min($1, $2)"},
    {"mag", "math.hypot($1, $2)"},
    {"igamma", "special.gammainc($1, $2)", Binding::Atom, "special"},
    {"igammac", "special.gammaincc($1, $2)", Binding::Atom, "special"},
    {"beta", "special.beta($1, $2)", Binding::Atom, "special"},
    {"poisson", "special.gammaincc($1, $2)", Binding::Atom, "special"},
    {"student", "within_t($1, $2)", Binding::Atom, "within_t"},
    {"chi2", "special.gammainc(#2 / 2.0, #1 / 2.0)", Binding::Atom, "special"},
    {"chi2c", "special.gammaincc(#2 / 2.0, #1 / 2.0)", Binding::Atom, "special"},
    {"jn", "special.jv(whole($1), $2)", Binding::Atom, "special whole"},
    {"yn", "special.yv(whole($1), $2)", Binding::Atom, "special whole"},
    {"in", "special.iv(whole($1), $2)", Binding::Atom, "special whole"},
    {"kn", "special.kv(whole($1), $2)", Binding::Atom, "special whole"},
    {"jnu", "special.jv($1, $2)", Binding::Atom, "special"},
    {"ynu", "special.yv($1, $2)", Binding::Atom, "special"},
    {"djnu", "special.jvp($1, $2)", Binding::Atom, "special"},
    {"dynu", "special.yvp($1, $2)", Binding::Atom, "special"},
    {"inu", "special.iv($1, $2)", Binding::Atom, "special"},
    {"knu", "special.kv($1, $2)", Binding::Atom, "special"},
    {"dinu", "special.ivp($1, $2)", Binding::Atom, "special"},
    {"dknu", "special.kvp($1, $2)", Binding::Atom, "special"},
    {"sphjn", "special.spherical_jn(whole($1), $2)", Binding::Atom, "special whole"},
    {"sphyn", "special.spherical_yn(whole($1), $2)", Binding::Atom, "special whole"},
    {"dsphjn", "special.spherical_jn(whole($1), $2, True)", Binding::Atom, "special whole"},
    {"dsphyn", "special.spherical_yn(whole($1), $2, True)", Binding::Atom, "special whole"},
    {"legendre", "special.lpmv(whole($2), whole($1), $3)", Binding::Atom, "special whole"},
    {"binomial", "at_least($1, $2, $3)", Binding::Atom, "at_least"},
    {"ibeta", "special.betainc($1, $2, $3)", Binding::Atom, "special"},
    {"fdist", "above_f($1, $2, $3)", Binding::Atom, "above_f"},
    {"j0", "special.j0($1)", Binding::Atom, "special"},
    {"j1", "special.j1($1)", Binding::Atom, "special"},
    {"y0", "special.y0($1)", Binding::Atom, "special"},
    {"y1", "special.y1($1)", Binding::Atom, "special"},
    {"i0", "special.i0($1)", Binding::Atom, "special"},
    {"i1", "special.i1($1)", Binding::Atom, "special"},
    {"k0", "special.k0($1)", Binding::Atom, "special"},
    {"k1", "special.k1($1)", Binding::Atom, "special"},
    {"airya", "special.airy($1)[0]", Binding::Atom, "special"},
    {"airyb", "special.airy($1)[2]", Binding::Atom, "special"},
    {"dairya", "special.airy($1)[1]", Binding::Atom, "special"},
    {"dairyb", "special.airy($1)[3]", Binding::Atom, "special"},
};

constexpr CodeDefinition kDefinitions[] = {
    {"special", "from scipy import special"},
    {"whole",
     "def whole(value):\n"
     "    \"\"\"The nearest whole number, ties to even, in 32 bits.\"\"\"\n"
     "    number = round(value)\n"
     "    if not -2**31 <= number < 2**31:\n"
     "        raise OverflowError(value)\n"
     "    return number"},
    {"integer_quotient",
     "def integer_quotient(a, b):\n"
     "    \"\"\"Of the rounded numbers, towards 0.\"\"\"\n"
     "    return float(math.trunc(whole(a) / whole(b)))",
     "whole"},
    {"integer_remainder",
     "def integer_remainder(a, b):\n"
     "    \"\"\"Of the rounded numbers, with the sign of the first.\"\"\"\n"
     "    return math.fmod(whole(a), whole(b))",
     "whole"},
    {"sign",
     "def sign(value):\n"
     "    return float((value > 0) - (value < 0))"},
    {"held",
     "def held(value):\n"
     "    \"\"\"Hyperbolic functions stay as they are beyond 707, where they would overflow.\"\"\"\n"
     "    return max(-707.0, min(707.0, value))"},
    {"within_t",
     "def within_t(t, v):\n"
     "    \"\"\"The chance of a value between -t and t.\"\"\"\n"
     "    return special.betainc(0.5, v / 2.0, t * t / (v + t * t))",
     "special"},
    {"at_least",
     "def at_least(k, n, p):\n"
     "    \"\"\"The chance of k or more successes out of n.\"\"\"\n"
     "    return special.betainc(k, n - k + 1.0, p)",
     "special"},
    {"above_f",
     "def above_f(v1, v2, f):\n"
     "    \"\"\"The chance of a variance ratio above f.\"\"\"\n"
     "    return special.betainc(v2 / 2.0, v1 / 2.0, v2 / (v2 + v1 * f))",
     "special"},
    {"random_number",
     "random_counter = 0\n"
     "\n"
     "\n"
     "def random_number(value):\n"
     "    \"\"\"Begins anew from a negative number, repeats the last one for 0, else draws the next.\"\"\"\n"
     "    global random_counter\n"
     "    if value < 0:\n"
     "        random_counter = struct.unpack(\"<Q\", struct.pack(\"<d\", value))[0]\n"
     "    if value != 0:\n"
     "        random_counter = (random_counter + 0x9E3779B97F4A7C15) % 2**64\n"
     "    bits = random_counter\n"
     "    bits = (bits ^ (bits >> 30)) * 0xBF58476D1CE4E5B9 % 2**64\n"
     "    bits = (bits ^ (bits >> 27)) * 0x94D049BB133111EB % 2**64\n"
     "    return ((bits ^ (bits >> 31)) >> 11) / 2**53",
     "struct"},
    {"struct", "import struct"},
};

// What is imported stands ahead of all functions.
std::string Write(const CodeModel& model, const CodeBody& body, const CodeLanguage& language) {
  std::string imports = "\nimport math\n", functions;
  for (const CodeDefinition* definition : body.Definitions) {
    const bool isImport =
        definition->Text.find("import ") < 20 && definition->Text.find('\n') == std::string_view::npos;
    (isImport ? imports : functions).append(isImport ? "" : "\n\n").append(definition->Text).append("\n");
  }
  return CommentHead(model, body, language) + imports + functions + FunctionText(model, body, language) +
         ProofText(model, body, language);
}

}  // namespace

const CodeLanguage kPython = {
    .Name = "Python",
    .Extension = "py",
    .Comment = "#",
    .Reserved = kReserved,
    .Forms = kForms,
    .Definitions = kDefinitions,
    .Truth = {.OfNumber = "$1 != 0",
              .AsNumber = "(-1.0 if $1 else 0.0)",
              .And = "($1 and $2)",
              .Or = "($1 or $2)",
              .Not = "not ($1)"},
    .Choice = "($2 if $1 else $3)",
    .Save = "($1 := $2)",
    .Frame = {.Function = "\n\ndef $1($2):\n",
              .Constant = "$1 = $2",
              .Support = "$1 = 0.0",
              .Result = "return $1",
              .Proof = "\n\nif __name__ == \"__main__\":\n    # $1 is to give $2\n    print($1)\n"},
    .Number = RealNumber,
    .Write = Write};

}  // namespace quorvex
