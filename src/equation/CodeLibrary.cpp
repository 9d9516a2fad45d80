#include "equation/CodeLibrary.h"

#include <algorithm>
#include <cassert>
#include <iterator>
#include <set>

#include "core/Files.h"

namespace quorvex {
namespace {

// The seed and the sequence are those of RandomState, so that the exported code draws the program's numbers.
constexpr std::string_view kRandomInC =
    "static unsigned long long counter;\n"
    "union { double value; unsigned long long bits; } seed;\n"
    "unsigned long long bits;\n"
    "if (arg < 0.0) {\n"
    "    seed.value = arg;\n"
    "    counter = seed.bits;\n"
    "}\n"
    "if (arg != 0.0) counter += 0x9E3779B97F4A7C15ULL;\n"
    "bits = counter;\n"
    "bits = (bits ^ (bits >> 30)) * 0xBF58476D1CE4E5B9ULL;\n"
    "bits = (bits ^ (bits >> 27)) * 0x94D049BB133111EBULL;\n"
    "bits ^= bits >> 31;\n"
    "return (double)(bits >> 11) / 9007199254740992.0;";

// With x - 1 and 1 - x in place of 1/x, whose rounding counts near 1.
constexpr std::string_view kArcSecInC =
    "double angle = 2.0 * atan(sqrt(fabs(arg) - 1.0) / sqrt(fabs(arg) + 1.0));\n"
    "return arg < 0.0 ? 4.0 * atan(1.0) - angle : angle;";
constexpr std::string_view kArcSechInC =
    "double t = (1.0 - arg) / arg;\n"
    "return log1p(t + sqrt(t) * sqrt(t + 2.0));";

// BASIC's texts stand as they have always been exported, with an arcsec, arccosec and arccotan that differ from the
// language's; the C texts compute what the program computes. "n%" is a parameter that is a whole number: C libraries
// that have jn and yn declare them so.
// clang-format off
constexpr CodeFunction kFunctions[] = {
    {"abs", "abs", "fabs", {}, {}, {}, "arg"},
    {"exp", "exp", "exp", {}, {}, {}, "arg"},
    {"fix", "fix", {}, "Truncation", {}, "return trunc(arg);", "arg"},
    {"int", "int", "floor", {}, {}, {}, "arg"},
    {"fract", {}, {}, "Fractional Part", "fract = cdbl(arg) - cdbl(fix(arg))", "return arg - trunc(arg);", "arg"},
    {"log", "log", "log", {}, {}, {}, "arg"},
    {"ln", "log", "log", "Natural Log", "ln = log(arg)", {}, "arg"},
    {"log10", {}, "log10", "Log Base 10", "log10 = log(arg) / log(10#)", {}, "arg"},
    {"rnd", "rnd", {}, "Random Number", {}, kRandomInC, "arg"},
    {"sgn", "sgn", {}, "Sign", {}, "return (arg > 0.0) - (arg < 0.0);", "arg"},
    {"sqr", "sqr", {}, "Square Root", {}, "return sqrt(arg);", "arg"},
    {"cos", "cos", "cos", {}, {}, {}, "arg"},
    {"sin", "sin", "sin", {}, {}, {}, "arg"},
    {"tan", "tan", "tan", {}, {}, {}, "arg"},
    {"arcsin", {}, {}, "Inverse Sine", "arcsin = atn(arg / sqr(-arg * arg + 1#))", "return asin(arg);", "arg"},
    {"arccos", {}, {}, "Inverse Cosine", "arccos = atn(-arg / sqr(-arg * arg + 1#)) + 2# * atn(1)", "return acos(arg);", "arg"},
    {"arctan", {}, {}, "Inverse Tangent", "arctan = atn(arg)", "return atan(arg);", "arg"},
    {"sec", {}, {}, "Secant", "sec = 1# / cos(arg)", "return 1.0 / cos(arg);", "arg"},
    {"cosec", {}, {}, "Cosecant", "cosec = 1# / sin(arg)", "return 1.0 / sin(arg);", "arg"},
    {"cotan", {}, {}, "Cotangent", "cotan = 1# / tan(arg)", "return 1.0 / tan(arg);", "arg"},
    {"arcsec", {}, {}, "Inverse Secant", "arcsec = atn(arg / sqr(arg * arg - 1#)) + sgn(sgn(arg) - 1#) * 1.570796327", kArcSecInC, "arg"},
    {"arccosec", {}, {}, "Inverse Cosecant", "arccosec = atn(arg / sqr(arg * arg - 1#)) + (sgn(arg) - 1#) * 1.570796327", "return asin(1.0 / arg);", "arg"},
    {"arccotan", {}, {}, "Inverse Cotangent", "arccotan = atn(arg) + 1.570796327", "return arg > 1.0 ? atan(1.0 / arg) : 2.0 * atan(1.0) - atan(arg);", "arg"},
    {"hsin", {}, {}, "Hyperbolic Sine", "hsin = (exp(arg) - exp(-arg)) / 2#", "return sinh(arg);", "arg"},
    {"hcos", {}, {}, "Hyperbolic Cosine", "hcos = (exp(arg) + exp(-arg)) / 2.0", "return cosh(arg);", "arg"},
    {"htan", {}, {}, "Hyperbolic Tangent", "htan = (exp(arg) - exp(-arg)) / (exp(arg) + exp(-arg))", "return tanh(arg);", "arg"},
    {"hsec", {}, {}, "Hyperbolic Secant", "hsec = 2# / (exp(arg) + exp(-arg))", "return 1.0 / cosh(arg);", "arg"},
    {"hcosec", {}, {}, "Hyperbolic Cosecant", "hcosec = 2# / (exp(arg) - exp(-arg))", "return 1.0 / sinh(arg);", "arg"},
    {"hcotan", {}, {}, "Hyperbolic Cotangent", "hcotan = (exp(arg) + exp(-arg)) / (exp(arg) - exp(-arg))", "return 1.0 / tanh(arg);", "arg"},
    {"harcsin", {}, {}, "Inverse Hyperbolic Sine", "harcsin = log(arg + sqr(arg * arg + 1#))", "return asinh(arg);", "arg"},
    {"harccos", {}, {}, "Inverse Hyperbolic Cosine", "harccos = log(arg + sqr(arg * arg - 1#))", "return acosh(arg);", "arg"},
    {"harctan", {}, {}, "Inverse Hyperbolic Tangent", "harctan = log((1# + arg) / (1# - arg)) / 2#", "return atanh(arg);", "arg"},
    {"harcsec", {}, {}, "Inverse Hyperbolic Secant", "harcsec = log((sqr(-arg * arg + 1#) + 1#) / arg)", kArcSechInC, "arg"},
    {"harccosec", {}, {}, "Inverse Hyperbolic Cosecant", "harccosec = log((sgn(arg) * sqr(arg * arg + 1#) + 1#) / arg)", "return asinh(1.0 / arg);", "arg"},
    {"harccotan", {}, {}, "Inverse Hyperbolic Cotangent", "harccotan = log((arg + 1#) / (arg - 1#)) / 2#", "return copysign(log1p(2.0 / (fabs(arg) - 1.0)) / 2.0, arg);", "arg"},
    {"rtod", {}, {}, "Radians to Degrees", "rtod = arg * 180.0 / 3.14159265358979 ", "return arg * 180.0 / 3.14159265358979;", "arg"},
    {"dtor", {}, {}, "Degrees to Radians", "dtor = arg * 3.14159265358979 / 180.0", "return arg * 3.14159265358979 / 180.0;", "arg"},
    {"erf", {}, "erf", "Error Function", {}, {}, "arg"},
    {"erfc", {}, "erfc", "Error Compliment Function", {}, {}, "arg"},
    {"fact", {}, {}, "Factorial", {}, {}, "arg"},
    {"factln", {}, {}, "Natural Log of the Factorial", {}, {}, "arg"},
    {"gamma", {}, {}, "Gamma Function", {}, {}, "arg"},
    {"gammaln", {}, {}, "Natural Log of the Gamma Function", {}, {}, "arg"},
    {"psi", {}, {}, "Psi Function", {}, {}, "arg"},
    {"if", {}, {}, "If", "if cond then evalif = trueexp else evalif = falseexp", "return cond != 0.0 ? trueexp : falseexp;", "cond trueexp falseexp"},
    {"igamma", {}, {}, "Incomplete Gamma Function", {}, {}, "a x"},
    {"igammac", {}, {}, "Incomplete Gamma Compliment Function", {}, {}, "a x"},
    {"beta", {}, {}, "Beta Function", {}, {}, "z w"},
    {"poisson", {}, {}, "Cumulative Poisson Distribution", {}, {}, "k n"},
    {"student", {}, {}, "Student's Distribution", {}, {}, "t v"},
    {"chi2", {}, {}, "Chi-Square Distribution", {}, {}, "x2 v"},
    {"chi2c", {}, {}, "Chi-Square Compliment Distribution", {}, {}, "x2 v"},
    {"jn", {}, {}, "Bessel Function J of Integer Order", {}, {}, "n% x"},
    {"yn", {}, {}, "Bessel Function Y of Integer Order", {}, {}, "n% x"},
    {"in", {}, {}, "Modified Bessel Function I of Integer Order", {}, {}, "n x"},
    {"kn", {}, {}, "Modified Bessel Function K of Integer Order", {}, {}, "n x"},
    {"jnu", {}, {}, "Bessel Function J of Fractional Order", {}, {}, "nu x"},
    {"ynu", {}, {}, "Bessel Function Y of Fractional Order", {}, {}, "nu x"},
    {"djnu", {}, {}, "Derivative of Bessel Function J of Fractional Order", {}, {}, "nu x"},
    {"dynu", {}, {}, "Derivative of Bessel Function Y of Fractional Order", {}, {}, "nu x"},
    {"inu", {}, {}, "Modified Bessel Function I of Fractional Order", {}, {}, "nu x"},
    {"knu", {}, {}, "Modified Bessel Function K of Fractional Order", {}, {}, "nu x"},
    {"dinu", {}, {}, "Derivative of Modified Bessel Function I of Fractional Order", {}, {}, "nu x"},
    {"dknu", {}, {}, "Derivative of Modified Bessel Function K of Fractional Order", {}, {}, "nu x"},
    {"sphjn", {}, {}, "Spherical Bessel Function J", {}, {}, "n x"},
    {"sphyn", {}, {}, "Spherical Bessel Function Y", {}, {}, "n x"},
    {"dsphjn", {}, {}, "Derivative of Spherical Bessel Function J", {}, {}, "n x"},
    {"dsphyn", {}, {}, "Derivative of Spherical Bessel Function Y", {}, {}, "n x"},
    {"max", {}, {}, "Maximum", "if a >= b then max = a else max = b", "return a >= b ? a : b;", "a b"},
    {"min", {}, {}, "Minimum", "if a >= b then min = b else min = a", "return a >= b ? b : a;", "a b"},
    {"mag", {}, {}, "Magnitude", "mag = sqr(a^2+b^2)", "return hypot(a, b);", "a b"},
    {"legendre", {}, {}, "Associated Legendre Polynomial", {}, {}, "l m x"},
    {"binomial", {}, {}, "Cumulative Binomial Distribution", {}, {}, "k n p"},
    {"ibeta", {}, {}, "Incomplete Beta Function", {}, {}, "a b x"},
    {"fdist", {}, {}, "F-Distribution", {}, {}, "v1 v2 f"},
    {"j0", {}, {}, "Bessel Function J of Order 0", {}, {}, "arg"},
    {"j1", {}, {}, "Bessel Function J of Order 1", {}, {}, "arg"},
    {"y0", {}, {}, "Bessel Function Y of Order 0", {}, {}, "arg"},
    {"y1", {}, {}, "Bessel Function Y of Order 1", {}, {}, "arg"},
    {"i0", {}, {}, "Modified Bessel Function I of Order 0", {}, {}, "arg"},
    {"i1", {}, {}, "Modified Bessel Function I of Order 1", {}, {}, "arg"},
    {"k0", {}, {}, "Modified Bessel Function K of Order 0", {}, {}, "arg"},
    {"k1", {}, {}, "Modified Bessel Function K of Order 1", {}, {}, "arg"},
    {"airya", {}, {}, "Airy Function A", {}, {}, "arg"},
    {"airyb", {}, {}, "Airy Function B", {}, {}, "arg"},
    {"dairya", {}, {}, "Derivative of Airy Function A", {}, {}, "arg"},
    {"dairyb", {}, {}, "Derivative of Airy Function B", {}, {}, "arg"},
    {"floor", {}, "floor", "Floor", "floor = cdbl(int(arg))", {}, "arg"},
    {"ceil", {}, "ceil", "Ceiling", "ceil = cdbl(-int(-arg))", {}, "arg"},
};
// clang-format on

// Words whose definition goes by another name: the target languages have the word for something else.
struct OtherName {
  std::string_view Word, Basic, C;
};
constexpr OtherName kOtherNames[] = {{"if", "evalif", "evalif"}, {"max", "max", "maximum"}, {"min", "min", "minimum"}};

std::string_view DefinedName(const CodeFunction& function, ExprType language) {
  const auto* other = std::ranges::find(kOtherNames, function.Word, &OtherName::Word);
  if (other == std::end(kOtherNames)) return function.Word;
  return language == ExprType::C ? other->C : other->Basic;
}

void Line(std::string& file, std::string_view text = {}) { file.append(text).append(NL); }

// Each piece of `text` that `separator` ends, the last one included.
template <typename Use>
void ForEachPiece(std::string_view text, char separator, Use use) {
  while (true) {
    const auto end = text.find(separator);
    use(text.substr(0, end));
    if (end == std::string_view::npos) return;
    text.remove_prefix(end + 1);
  }
}

std::string BasicHeader(const CodeFunction& function) {
  std::string header = "public function " + std::string(DefinedName(function, ExprType::Basic)) + "(";
  if (function.Word == "if") return header + "cond as boolean, trueexp as variant, falseexp as variant) as variant";
  const std::string type = function.BasicBody.empty() ? "variant" : "double";
  // Of the functions that the user supplies, those of three arguments alone have a list of parameters.
  if (!function.BasicBody.empty() || std::ranges::count(function.Parameters, ' ') == 2) {
    const std::size_t start = header.size();
    ForEachPiece(function.Parameters, ' ', [&](std::string_view name) {
      if (header.size() > start) header += ", ";
      header.append(name).append(" as ") += type;
    });
  }
  return header + ") as " + type;
}

// What comes with the exported file stays within it, so that two files can be linked; what the user supplies does not.
std::string CHeader(const CodeFunction& function) {
  std::string header =
      (function.CBody.empty() ? "double " : "static double ") + std::string(DefinedName(function, ExprType::C)) + "(";
  const std::size_t start = header.size();
  ForEachPiece(function.Parameters, ' ', [&](std::string_view name) {
    if (header.size() > start) header += ", ";
    if (name.ends_with('%')) {
      header.append("int ").append(name.substr(0, name.size() - 1));
    } else {
      header.append("double ").append(name);
    }
  });
  return header + ")";
}

void DefineInBasic(const CodeFunction& function, std::string& file) {
  Line(file);
  Line(file, BasicHeader(function));
  const std::string comment = "'Function to compute " + std::string(function.Subject);
  if (function.BasicBody.empty()) {
    Line(file, comment + ".");
    Line(file, "'This function must be supplied by the user.");
  } else {
    Line(file, comment);
    Line(file, "    " + std::string(function.BasicBody));
  }
  Line(file, "end function");
}

void DefineInC(const CodeFunction& function, std::string& file) {
  Line(file);
  Line(file, CHeader(function));
  Line(file, "{");
  const std::string comment = "    /* Function to compute " + std::string(function.Subject);
  if (function.CBody.empty()) {
    Line(file, comment + ". */");
    Line(file, "    /* This function must be supplied by the user. */");
    ForEachPiece(function.Parameters, ' ', [&](std::string_view name) {
      if (name.ends_with('%')) name.remove_suffix(1);
      Line(file, "    (void)" + std::string(name) + ";");
    });
    Line(file, "    return NAN;");
  } else {
    Line(file, comment + " */");
    ForEachPiece(function.CBody, '\n', [&](std::string_view line) { Line(file, "    " + std::string(line)); });
  }
  Line(file, "}");
}

// Each word of the list once; what the language has itself needs no definition.
template <typename Define>
void ForEachNeeded(std::span<const std::string> FnList, ExprType language, Define define) {
  std::set<std::string_view> done;
  for (const std::string& word : FnList) {
    const CodeFunction& function = FindCodeFunction(word);
    const std::string_view body = language == ExprType::C ? function.CBody : function.BasicBody;
    if (done.insert(word).second && (function.OwnName(language).empty() || !body.empty())) define(function);
  }
}

}  // namespace

std::string_view CodeFunction::CallName(ExprType language) const {
  return OwnName(language).empty() ? DefinedName(*this, language) : OwnName(language);
}

const CodeFunction& FindCodeFunction(std::string_view word) {
  const auto* row = std::ranges::find(kFunctions, word, &CodeFunction::Word);
  assert(row != std::end(kFunctions));
  return *row;
}

void WriteBasicLibrary(std::span<const std::string> FnList, std::string& file) {
  ForEachNeeded(FnList, ExprType::Basic, [&](const CodeFunction& function) { DefineInBasic(function, file); });
}

void WriteCLibrary(std::span<const std::string> FnList, std::string& file) {
  ForEachNeeded(FnList, ExprType::C, [&](const CodeFunction& function) { DefineInC(function, file); });
}

void WriteCPrototypes(std::span<const std::string> FnList, std::string& file) {
  ForEachNeeded(FnList, ExprType::C, [&](const CodeFunction& function) { Line(file, CHeader(function) + ";"); });
}

}  // namespace quorvex
