#include <algorithm>
#include <cmath>
#include <limits>

#include "code/Languages.h"
#include "core/NumberText.h"

namespace quorvex {
namespace {

// The functions are those of OpenFormula by their English names, which every spreadsheet program reads in a cell of an
// English sheet. A minus in front binds tighter than "^" there, so that a power under it stands in parentheses. Logic
// has 32 bits, the highest of which is the sign; the functions take none.
constexpr CodeForm kForms[] = {
    {"neg", "-#1", Binding::Sign},
    {"^", "#1^#2", Binding::Power},
    {"=", "$1 = $2"},
    {"<>", "$1 <> $2"},
    {"\\", "TRUNC(@1/@2)"},
    {"mod", "(SIGN($1)*MOD(ABS(@1), ABS(@2)))"},
    {"not", "(-1 - @1)"},
    {"and", "(MOD(BITAND(MOD(@1, 4294967296), MOD(@2, 4294967296)) + 2147483648, 4294967296) - 2147483648)"},
    {"or", "(MOD(BITOR(MOD(@1, 4294967296), MOD(@2, 4294967296)) + 2147483648, 4294967296) - 2147483648)"},
    {"xor", "(MOD(BITXOR(MOD(@1, 4294967296), MOD(@2, 4294967296)) + 2147483648, 4294967296) - 2147483648)"},
    {"eqv", "(-1 - (MOD(BITXOR(MOD(@1, 4294967296), MOD(@2, 4294967296)) + 2147483648, 4294967296) - 2147483648))"},
    {"imp", "(MOD(BITOR(MOD(-1 - @1, 4294967296), MOD(@2, 4294967296)) + 2147483648, 4294967296) - 2147483648)"},
    {"abs", "ABS($1)"},
    {"exp", "EXP($1)"},
    {"fix", "TRUNC($1)"},
    {"int", "INT($1)"},
    {"floor", "INT($1)"},
    {"ceil", "(-INT(-#1))"},
    {"fract", "(#1 - TRUNC($1))"},
    {"log", "LN($1)"},
    {"ln", "LN($1)"},
    {"log10", "LOG10($1)"},
    {"sgn", "SIGN($1)"},
    {"sqr", "SQRT($1)"},
    {"cos", "COS($1)"},
    {"sin", "SIN($1)"},
    {"tan", "TAN($1)"},
    {"arcsin", "ASIN($1)"},
    {"arccos", "ACOS($1)"},
    {"arctan", "ATAN($1)"},
    {"sec", "1/COS($1)", Binding::Product},
    {"cosec", "1/SIN($1)", Binding::Product},
    {"cotan", "1/TAN($1)", Binding::Product},
    {"arcsec", "ACOS(1/#1)"},
    {"arccosec", "ASIN(1/#1)"},
    {"arccotan", "ATAN2($1, 1)"},
    {"hsin", "SINH(MAX(-707, MIN(707, $1)))"},
    {"hcos", "COSH(MAX(-707, MIN(707, $1)))"},
    {"htan", "TANH($1)"},
    {"hsec", "1/COSH(MAX(-707, MIN(707, $1)))", Binding::Product},
    {"hcosec", "1/SINH(MAX(-707, MIN(707, $1)))", Binding::Product},
    {"hcotan", "1/TANH($1)", Binding::Product},
    {"harcsin", "ASINH($1)"},
    {"harccos", "ACOSH($1)"},
    {"harctan", "ATANH($1)"},
    {"harcsec", "ACOSH(1/#1)"},
    {"harccosec", "ASINH(1/#1)"},
    {"harccotan", "ATANH(1/#1)"},
    {"rtod", "#1/3.14159265358979*180", Binding::Product},
    {"dtor", "#1/180*3.14159265358979", Binding::Product},
    {"erf", "ERF($1)"},
    {"erfc", "ERFC($1)"},
    {"fact", "FACT(@1)"},
    {"factln", "GAMMALN(@1 + 1)"},
    {"gamma", "GAMMA($1)"},
    {"gammaln", "GAMMALN($1)"},
    {"max", "MAX($1, $2)"},
    {"min", "MIN($1, $2)"},
    {"mag", "SQRT(SUMSQ($1, $2))"},
    {"igamma", "GAMMADIST($2, $1, 1, TRUE())"},
    {"igammac", "(1 - GAMMADIST($2, $1, 1, TRUE()))"},
    {"poisson", "(1 - GAMMADIST($2, $1, 1, TRUE()))"},
    {"chi2", "GAMMADIST(#1/2, #2/2, 1, TRUE())"},
    {"chi2c", "(1 - GAMMADIST(#1/2, #2/2, 1, TRUE()))"},
    {"beta", "EXP(GAMMALN($1) + GAMMALN($2) - GAMMALN(#1 + #2))"},
    {"ibeta", "BETADIST($3, $1, $2)"},
    {"student", "BETADIST(#1^2/(#2 + #1^2), 0.5, #2/2)"},
    {"binomial", "BETADIST($3, $1, #2 - #1 + 1)"},
    {"fdist", "BETADIST(#2/(#2 + #1*#3), #2/2, #1/2)"},
    {"jn", "BESSELJ($2, @1)"},
    {"yn", "BESSELY($2, @1)"},
    {"in", "BESSELI($2, @1)"},
    {"kn", "BESSELK($2, @1)"},
    {"j0", "BESSELJ($1, 0)"},
    {"j1", "BESSELJ($1, 1)"},
    {"y0", "BESSELY($1, 0)"},
    {"y1", "BESSELY($1, 1)"},
    {"i0", "BESSELI($1, 0)"},
    {"i1", "BESSELI($1, 1)"},
    {"k0", "BESSELK($1, 0)"},
    {"k1", "BESSELK($1, 1)"},
};

constexpr double kLargestTyped = 9.99999999999999E+307;  // beyond it some programs take a number for a text
constexpr double kSmallest = std::numeric_limits<double>::min();

bool IsTiny(double value) { return value != 0 && std::abs(value) < kSmallest; }

// What no cell takes as a number is the product of one that it takes and a power of 2, which is exact.
std::string SheetNumber(double value) {
  if (IsTiny(value)) return "(" + ShortestNumber(std::ldexp(value, 60)) + "*8.673617379884035E-19)";
  if (std::abs(value) > kLargestTyped) return "(" + ShortestNumber(value / 2) + "*2)";
  return ShortestNumber(value == 0 ? 0 : value);
}

// What becomes of the model's numbers in programs that hold fewer.
std::vector<std::string> NumberRemarks(const CodeModel& model, const CodeBody& body) {
  std::vector<double> numbers = model.Values;
  for (const auto& word : body.DataWords) numbers.push_back(word.second);
  for (const ExprToken& token : model.Compiled.ExprTokens)
    if (token.Type == TokenKind::Literal) numbers.push_back(token.Value);
  std::vector<std::string> remarks;
  if (std::ranges::any_of(numbers, HasFurtherDigits))
    remarks.push_back("Some programs keep 15 digits of a number, and some of these have more.");
  if (std::ranges::any_of(numbers, IsTiny))
    remarks.push_back("Numbers below 2.2250738585072014E-308 are 0 in some programs.");
  if (std::ranges::any_of(numbers, [](double each) { return each == 0 && std::signbit(each); }))
    remarks.push_back("A sheet has no negative zero: it is 0 here.");
  return remarks;
}

constexpr std::size_t kLongestCell = 8192;  // characters that every program takes

std::string Write(const CodeModel& model, const CodeBody& body, const CodeLanguage& language) {
  CodeBody told = body;
  const std::string cells = body.Variables.size() == 1 ? "cell A2" : "cells A2 to " + body.Variables.back();
  if (body.TooLong) {
    told.Remarks.push_back("The model is too long for a formula of a spreadsheet.");
    return CommentHead(model, told, language);
  }
  told.Remarks.push_back("A formula for a cell of any spreadsheet in English, with the values of x in " + cells +
                         "; where numbers have a decimal comma, its commas are to be semicolons, its points commas.");
  if (body.Result.size() > kLongestCell)
    told.Remarks.push_back("It has more than 8192 characters, which some programs refuse.");
  for (std::string& remark : NumberRemarks(model, body)) told.Remarks.push_back(std::move(remark));
  if (model.Proof) {
    std::string proof = "With";
    for (std::size_t v = 0; v < model.Proof->X.size(); ++v)
      proof += (v > 0 ? ", " : " ") + PlainNumber(model.Proof->X[v]) + " in " + body.Variables[v];
    told.Remarks.push_back(proof + " it is to give " + PlainNumber(model.Proof->Y) + ".");
  }
  return CommentHead(model, told, language) + "\n=" + body.Result + "\n";
}

}  // namespace

const CodeLanguage kSpreadsheet = {.Name = "Spreadsheet formula",
                                   .Extension = "txt",
                                   .Comment = "#",
                                   .Forms = kForms,
                                   .Truth = {.OfNumber = "#1 <> 0",
                                             .AsNumber = "IF($1, -1, 0)",
                                             .And = "AND($1, $2)",
                                             .Or = "OR($1, $2)",
                                             .Not = "NOT($1)"},
                                   .Times = "*",
                                   .Over = "/",
                                   .Choice = "IF($1, $2, $3)",
                                   .Rounded = "IF(MOD(#1, 1) = 0.5, 2*ROUND(#1/2, 0), ROUND(#1, 0))",
                                   .Substitutes = true,
                                   .Number = SheetNumber,
                                   .Write = Write};

}  // namespace quorvex
