#include "equation/CodeNames.h"

#include <algorithm>

#include "core/NumberText.h"
#include "equation/IntrinsicFunctions.h"

namespace quorvex {
namespace {

// Keywords, and names of the C library that a compiler knows by itself or by <math.h>.
constexpr std::string_view kC[] = {
    "auto",    "break",    "case",        "char",     "const",  "continue", "default",   "do",        "double",
    "else",    "enum",     "extern",      "float",    "for",    "goto",     "if",        "inline",    "int",
    "long",    "register", "restrict",    "return",   "short",  "signed",   "sizeof",    "static",    "struct",
    "switch",  "typedef",  "union",       "unsigned", "void",   "volatile", "while",     "asm",       "typeof",
    "main",    "abort",    "abs",         "calloc",   "exit",   "fprintf",  "free",      "index",     "labs",
    "malloc",  "memcmp",   "memcpy",      "memset",   "printf", "putchar",  "puts",      "realloc",   "rindex",
    "scanf",   "snprintf", "sprintf",     "sscanf",   "strcat", "strchr",   "strcmp",    "strcpy",    "strlen",
    "tolower", "toupper",  "acos",        "acosh",    "asin",   "asinh",    "atan",      "atan2",     "atanh",
    "cbrt",    "ceil",     "copysign",    "cos",      "cosh",   "drem",     "erf",       "erfc",      "exp",
    "exp10",   "exp2",     "expm1",       "fabs",     "fdim",   "finite",   "floor",     "fma",       "fmax",
    "fmin",    "fmod",     "fpclassify",  "frexp",    "gamma",  "hypot",    "ilogb",     "isfinite",  "isinf",
    "isnan",   "isnormal", "ldexp",       "lgamma",   "llrint", "llround",  "log",       "log10",     "log1p",
    "log2",    "logb",     "lrint",       "lround",   "modf",   "nan",      "nearbyint", "nextafter", "nexttoward",
    "pow",     "pow10",    "remainder",   "remquo",   "rint",   "round",    "scalb",     "scalbln",   "scalbn",
    "signbit", "signgam",  "significand", "sin",      "sincos", "sinh",     "sqrt",      "tan",       "tanh",
    "tgamma",  "trunc",
};
constexpr std::string_view kBasic[] = {
    "and",    "as",       "atn",    "boolean", "byref",  "byte",  "byval",   "call",     "case",    "cdbl",
    "const",  "currency", "date",   "declare", "dim",    "do",    "double",  "each",     "else",    "elseif",
    "end",    "enum",     "eqv",    "erase",   "error",  "exit",  "false",   "for",      "friend",  "function",
    "get",    "gosub",    "goto",   "if",      "imp",    "in",    "input",   "integer",  "is",      "let",
    "like",   "long",     "loop",   "me",      "mod",    "new",   "next",    "not",      "nothing", "null",
    "object", "on",       "open",   "option",  "or",     "print", "private", "property", "public",  "put",
    "redim",  "rem",      "resume", "return",  "select", "set",   "single",  "static",   "step",    "stop",
    "string", "sub",      "then",   "time",    "to",     "true",  "type",    "until",    "variant", "wend",
    "while",  "with",     "write",  "xor",
};

class Namer {
 public:
  explicit Namer(ExprType language) : language_(language) {}

  // `name`, or the first of name_1, name_2, ... that is free; it is taken from now on.
  std::string Take(const std::string& name, CodeNames& names) {
    std::string free = name;
    for (int n = 1; IsTaken(free); ++n) free = name + "_" + std::to_string(n);
    if (free != name) names.Changed.emplace_back(name, free);
    taken_.push_back(free);
    return free;
  }
  void Reserve(const std::string& name) { taken_.push_back(name); }

 private:
  bool Same(std::string_view a, std::string_view b) const {
    return language_ == ExprType::C ? a == b : EqualNoCase(a, b);
  }
  bool IsTaken(std::string_view name) const {
    const auto same = [&](std::string_view other) { return Same(name, other); };
    return std::ranges::any_of(taken_, same) || IsOfTheLanguage(name);
  }
  bool IsOfTheLanguage(std::string_view name) const {
    const bool inC = language_ == ExprType::C;
    const auto known = [&](std::string_view word) {
      return inC ? std::ranges::find(kC, word) != std::end(kC)
                 : std::ranges::find(kBasic, ToLower(word)) != std::end(kBasic);
    };
    // <math.h> has each function for two more types, as sinf and sinl.
    if (known(name) || (inC && (name.ends_with('f') || name.ends_with('l')) && known(name.substr(0, name.size() - 1))))
      return true;
    return std::ranges::any_of(IntrinsicFunctions(), [&](const IntrinsicFunction& function) {
      return function.Word != WrittenIn::NoModel && Same(name, FindCodeFunction(function.Name).CallName(language_));
    });
  }

  const ExprType language_;
  std::vector<std::string> taken_;
};

}  // namespace

CodeNames NamesFor(const Expression& expression, ExprType language, std::string_view function) {
  CodeNames names;
  Namer namer(language);
  // What cannot be renamed is reserved first; the coefficients give way to that, and the code's own names to all of
  // them.
  for (const ExprToken& token : expression.ExprTokens) {
    if (token.Type == TokenKind::SpecialWord) namer.Reserve(token.Name);
    if (token.Type == TokenKind::SaveSupport) namer.Reserve("F" + std::to_string(token.Code));
  }
  for (const std::string& name : expression.CoefficientNames) names.Coefficients.push_back(namer.Take(name, names));
  names.X = namer.Take("x", names);
  names.Result = namer.Take("result", names);
  names.Function = namer.Take(std::string(function), names);
  return names;
}

}  // namespace quorvex
