#include <gtest/gtest.h>

#include <numeric>

#include "TableFile.h"
#include "equation/Parser.h"

namespace quorvex {
namespace {

Expression Compile(std::vector<std::string> lines, Dialect dialect = Dialect::OneVariable, LocaleText locale = {}) {
  return Parser(dialect, locale).Compile(lines);
}

// The instruction list as text: names in postfix order, coefficients with their number.
std::string Postfix(const Expression& expression) {
  std::string text;
  for (const ExprToken& token : expression.ExprTokens) {
    if (!text.empty()) text += ' ';
    text += token.Name;
    if (token.Type == TokenKind::Coefficient) text += "#" + std::to_string(token.Index);
  }
  return text;
}

std::string Joined(const std::vector<std::string>& names) {
  return std::accumulate(names.begin(), names.end(), std::string(),
                         [](const std::string& a, const std::string& b) { return a.empty() ? b : a + "," + b; });
}

TEST(Parser, EmitsPostfixWithItsPrecedence) {
  for (const auto& row : TableRows("expressions_postfix.txt", 2)) EXPECT_EQ(Postfix(Compile({row[0]})), row[1]);
  EXPECT_EQ(Postfix(Compile({"a*x\t+ \r\nb"})), "a#1 x * b#2 +");
}

TEST(Parser, RefusesWithTheFirstErrorAndItsPlace) {
  for (const auto& row : TableRows("expressions_refused.txt", 4)) {
    SCOPED_TRACE(row[0]);
    const Expression e = Compile({row[0]});
    EXPECT_TRUE(e.ParseError && !e.IsValidEquation);
    EXPECT_EQ(e.ParseErrorMessage, row[1]);
    EXPECT_EQ(e.PublicTokenPointerStart, Number(row[2]));
    EXPECT_EQ(e.PublicTokenPointerLength, Number(row[3]));
    EXPECT_EQ(e.PublicSubFunctionPointer, 0);
  }
}

TEST(Parser, NamesTheLineOfAnErrorInASupportingFunction) {
  Expression e = Compile({"a*F2+b", "", "x+*2"});
  EXPECT_EQ(e.ParseErrorMessage, "Unexpected token '*'.");
  EXPECT_EQ(e.PublicSubFunctionPointer, 2);
  EXPECT_EQ(e.PublicTokenPointerStart, 2);
  // Behind a reference, positions count without the token that was read ahead ("+", here).
  e = Compile({"F1+a)", "x"});
  EXPECT_EQ(e.ParseErrorMessage, "Unexpected token ')'.");
  EXPECT_EQ(e.PublicSubFunctionPointer, 0);
  EXPECT_EQ(e.PublicTokenPointerStart, 3);
  // A text that leaves its parentheses is read on in the line of its reference, whose beginning is the least place.
  e = Compile({"F1*a", "x)rate"});
  EXPECT_EQ(e.ParseErrorMessage, "Unexpected token 'rate'.");
  EXPECT_EQ(e.PublicSubFunctionPointer, 0);
  EXPECT_EQ(e.PublicTokenPointerStart, 0);
}

TEST(Parser, CompilesASupportingFunctionOnceAndRecallsIt) {
  EXPECT_EQ(Postfix(Compile({"F1+f1*a", "x^2"})), "x 2 ^ savef1 f1 a#1 * +");
  EXPECT_EQ(Postfix(Compile({"F1*F2", "F2+a", "x*b"})), "x b#2 * savef2 a#1 + savef1 f2 *");
  EXPECT_FALSE(Compile({"a*x", "(((", "F1"}).ParseError);  // never referenced, never read
}

TEST(Parser, KnowsCyclesAndMissingFunctions) {
  Expression e = Compile({"F1+a*x", "F2", "F1"});
  EXPECT_TRUE(e.ParseError && e.CyclicError && e.ParseErrorMessage.empty() && !e.FuncMissing);
  e = Compile({"F2*a*x", "x"});
  EXPECT_TRUE(e.ParseError && e.FuncMissing && e.ParseErrorMessage.empty() && !e.CyclicError);
}

// What a second text on the same object recalls was compiled into the first one's list.
TEST(Parser, IsForOneTextOnly) {
  Parser parser(Dialect::OneVariable, {});
  parser.Compile({"F1*a", "x"});
  EXPECT_EQ(Postfix(parser.Compile({"F1*a", "x"})), "f1 a#1 *");
}

constexpr struct {
  const char* Text;
  bool Valid, HasX, HasCoefficients;
  const char* Names;
} kModels[] = {
    {"a+b", false, false, true, "a,b"},     {"2*x", false, true, false, ""},
    {"A*x+a", true, true, true, "A"},       {"b*X+A*x1+a10+a2+_z", true, true, true, "A,_z,a10,a2,b,x1"},
    {"y*x+z*u", true, true, true, "u,y,z"}, {"Gamma1*x+GAMMA1", true, true, true, "Gamma1"},
};

TEST(Parser, SortsCoefficientsByCharacterCodeAndKeepsTheFirstSpelling) {
  for (const auto& c : kModels) {
    const Expression e = Compile({c.Text});
    EXPECT_FALSE(e.ParseError) << c.Text;
    EXPECT_EQ(e.IsValidEquation, c.Valid) << c.Text;
    EXPECT_EQ(e.HasIndependentVar, c.HasX) << c.Text;
    EXPECT_EQ(e.HasCoefficients, c.HasCoefficients) << c.Text;
    EXPECT_EQ(Joined(e.CoefficientNames), c.Names) << c.Text;
  }
}

constexpr struct {
  const char *Text, *Postfix;
  int Variables;
  bool InOrder;
} kSeveral[] = {
    {"a*x1+b*x2", "a#1 x1 * b#2 x2 * +", 2, true},
    {"a*X03+x3*x1", "a#1 x3 * x3 x1 * +", 3, false},
    {"a*x20", "a#1 x20 *", 20, false},
    {"x*a*x0*x21*x1", "x#2 a#1 * x0#3 * x21#4 * x1 *", 1, true},
    {"a*x2mean*x1atymin+x1", "a#1 x2mean * x1atymin * x1 +", 1, true},
    {"a*xmean*x1", "a#1 xmean#2 * x1 *", 1, true},
};

TEST(Parser, ReadsSeveralVariables) {
  for (const auto& c : kSeveral) {
    const Expression e = Compile({c.Text}, Dialect::SeveralVariables);
    EXPECT_EQ(Postfix(e), c.Postfix);
    EXPECT_EQ(e.NumIndependentVar, c.Variables) << c.Text;
    EXPECT_EQ(e.VarsInOrder, c.InOrder) << c.Text;
  }
  EXPECT_EQ(Compile({"erfc(x1)*a"}, Dialect::SeveralVariables).ParseErrorMessage, "Unexpected token '('.");
  EXPECT_FALSE(Compile({"erfc(x)*a"}).ParseError);
}

TEST(Parser, ReadsTheLocalesSeparators) {
  const LocaleText german{',', ';', '.', '.', ':'};
  EXPECT_EQ(Postfix(Compile({"max(a;1,5)*pi"}, Dialect::OneVariable, german)), "a#1 1,5 max 3,14159265358979 *");
  const Expression e = Compile({"a*1.5"}, Dialect::OneVariable, german);
  EXPECT_EQ(e.ParseErrorMessage, "Unexpected token '.'.");
  EXPECT_EQ(e.PublicTokenPointerStart, 3);
}

TEST(Parser, KeepsTheSourceTokensWithTheirLines) {
  std::string text;
  for (const SourceToken& token : Compile({"A*f1+Pi", "max(x,Beta1)"}).SourceTokens)
    text += token.Text + "@" + std::to_string(token.Owner) + " ";
  EXPECT_EQ(text, "~A@0 *@0 max@1 (@1 x@1 ,@1 ~Beta1@1 )@1 f1@0 +@0 Pi@0 ");
}

TEST(Parser, RefusesWhatIsTooDeepOrTooLong) {
  EXPECT_EQ(Compile({std::string(100000, '(')}).ParseErrorMessage, "The expression is nested too deeply.");
  EXPECT_EQ(Compile({std::string(100000, '-') + "x"}).ParseErrorMessage, "The expression is nested too deeply.");
  std::string sum = "a";
  for (int i = 0; i < 20000; ++i) sum += "+x";
  EXPECT_EQ(Compile({sum}).ParseErrorMessage, "The expression is too long.");
}

}  // namespace
}  // namespace quorvex
