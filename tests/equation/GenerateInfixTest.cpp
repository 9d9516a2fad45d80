#include <gtest/gtest.h>

#include <regex>

#include "equation/Compile.h"
#include "equation/GenerateInfix.h"

namespace quorvex {
namespace {

struct Code {
  Code(const Expression& model, ExprType language, const LocaleText& locale = {}) {
    std::vector<std::string> statements, functions;
    GenerateInfix(model, language, locale, statements, functions);
    for (const std::string& statement : statements) Statements += (Statements.empty() ? "" : "|") + statement;
    for (const std::string& word : functions) Functions += (Functions.empty() ? "" : " ") + word;
  }
  std::string Statements, Functions;
};

const struct {
  std::vector<std::string> Lines;
  const char *Basic, *C;
  const char* BasicFunctions = "";
  const char* CFunctions = "";
} kOneVariable[] = {
    {{"a*x+b"}, "result = ((a * x) + b)", "result = ((a * x) + b);"},
    {{"a^x-b"}, "result = ((a ^ x) - b)", "result = ((pow(a , x)) - b);"},
    {{"a/x\\b"}, "result = ((a / x) \\ b)", "result = ((a / x) / b);"},
    {{"a mod x"}, "result = (a mod x)", "result = (fmod(a , x));"},
    {{"a=x"}, "result = (a = x)", "result = (a == x);"},
    {{"a<>x"}, "result = (a <> x)", "result = (a != x);"},
    {{"a<x"}, "result = (a < x)", "result = (a < x);"},
    {{"a>x"}, "result = (a > x)", "result = (a > x);"},
    {{"a<=x"}, "result = (a <= x)", "result = (a <= x);"},
    {{"a>=x"}, "result = (a >= x)", "result = (a >= x);"},
    {{"a and x"}, "result = (a and x)", "result = (a && x);"},
    {{"a or x"}, "result = (a or x)", "result = (a ||x);"},
    {{"a xor x"}, "result = (a xor x)", "result = (a ^ x);"},
    {{"1+(a eqv x)"}, "result = (1 + (a eqv x))", "result = (1 + (Unsupported Function: eqv));"},
    {{"1+(a imp x)"}, "result = (1 + (a imp x))", "result = (1 + (Unsupported C Function: imp));"},
    {{"-x^a"}, "result = -((x ^ a))", "result = -((pow(x , a)));"},
    {{"not a=x"}, "result = Not((a = x))", "result = !((a == x));"},
    {{"a*ln(x)+log(x)"}, "result = ((a * log(x)) + log(x))", "result = ((a * log(x)) + log(x));"},
    {{"log10(x)*sqr(a)"}, "result = (log10(x) * sqr(a))", "result = (log10(x) * sqr(a));", "log10", "sqr"},
    {{"abs(x)+int(a)"}, "result = (abs(x) + int(a))", "result = (fabs(x) + floor(a));"},
    {{"max(a,x)-min(mag(a,x),x)"},
     "result = (max(a,x) - min(mag(a,x),x))",
     "result = (maximum(a,x) - minimum(mag(a,x),x));",
     "max mag min",
     "max mag min"},
    {{"legendre(2,1,x)*binomial(a,3,x)"},
     "result = (legendre(2,1,x) * binomial(a,3,x))",
     "result = (legendre(2,1,x) * binomial(a,3,x));",
     "legendre binomial",
     "legendre binomial"},
    {{"erf(x)*erfc(a)"}, "result = (erf(x) * erfc(a))", "result = (erf(x) * erfc(a));", "erf erfc", ""},
    {{"if(x>0,if(x,a,1),x)+if(a,1,2)"},
     "result = (evalif((x > 0),evalif(x,a,1),x) + evalif(a,1,2))",
     "result = (evalif((x > 0),evalif(x,a,1),x) + evalif(a,1,2));",
     "if",
     "if"},
    {{"f1*F2+F1", "a*x", "f1+1"},
     "F1 = (a * x)|F2 = (F1 + 1)|result = ((F1 * F2) + F1)",
     "F1 = (a * x);|F2 = (F1 + 1);|result = ((F1 * F2) + F1);"},
    {{"A*x+a"}, "result = ((A * x) + A)", "result = ((A * x) + A);"},  // declared once, as first written
    {{"a*X-XMean"}, "result = ((a * x) - xmean)", "result = ((a * x) - xmean);"},
    // Whole numbers must not divide, or overflow, as integers of C do; a leading 0 would make them octal.
    {{"x^(1/2)"}, "result = (x ^ (1 / 2))", "result = (pow(x , ((double)1 / 2)));"},
    // A sign binds more loosely than a power in BASIC, and Not than everything.
    {{"(-x)^2+2^-x"}, "result = (((-(x)) ^ 2) + (2 ^ (-(x))))", "result = ((pow(-(x) , 2)) + (pow(2 , -(x))));"},
    {{"(not x)+a"}, "result = ((Not(x)) + a)", "result = (!(x) + a);"},
    {{"-1/2*x"}, "result = (((-(1)) / 2) * x)", "result = (((double)-(1) / 2) * x);"},
    {{"(1<x)+1"}, "result = ((1 < x) + 1)", "result = ((double)(1 < x) + 1);"},
    {{"010+x*2147483648"}, "result = (010 + (x * 2147483648))", "result = (010.0 + (x * 2147483648.0));"},
    {{"1.2.3+x+(1.5E+3)"}, "result = ((0 + x) + 1.5E+3)", "result = ((0 + x) + 1.5E+3);"},
};

TEST(GenerateInfix, WritesStatementsOfBothLanguages) {
  for (const auto& c : kOneVariable) {
    const Expression model = Compile(c.Lines);
    const Code basic(model, ExprType::Basic), inC(model, ExprType::C);
    EXPECT_EQ(basic.Statements, c.Basic);
    EXPECT_EQ(basic.Functions, c.BasicFunctions) << c.Lines[0];
    EXPECT_EQ(inC.Statements, c.C);
    EXPECT_EQ(inC.Functions, c.CFunctions) << c.Lines[0];
  }
}

TEST(GenerateInfix, TakesSeveralVariablesFromAnArray) {
  const Expression model = Compile({"a*x1+X02^x20"}, Dialect::SeveralVariables);
  EXPECT_EQ(Code(model, ExprType::Basic).Statements, "result = ((a * x(1)) + (x(2) ^ x(20)))");
  EXPECT_EQ(Code(model, ExprType::C).Statements, "result = ((a * x[1]) + (pow(x[2] , x[20])));");
}

TEST(GenerateInfix, WritesADecimalPointUnderEveryLocale) {
  const Expression model = Compile({"max(a;1,5)*pi*x"}, Dialect::OneVariable, kGerman);
  EXPECT_EQ(Code(model, ExprType::C, kGerman).Statements, "result = ((maximum(a,1.5) * 3.14159265358979) * x);");
}

// The BASIC statement is close enough to the equation language to be read back: it must compile to the instructions it
// was made from.
TEST(GenerateInfix, WritesBasicThatReadsBackAsTheSameModel) {
  for (const auto& c : kOneVariable) {
    if (c.Lines.size() > 1) continue;
    const Expression model = Compile(c.Lines);
    std::string text = Code(model, ExprType::Basic).Statements.substr(std::string("result = ").size());
    text = std::regex_replace(text, std::regex("evalif"), "if");
    const Expression again = Compile({text});
    ASSERT_EQ(again.ExprTokens.size(), model.ExprTokens.size()) << text;
    for (std::size_t i = 0; i < model.ExprTokens.size(); ++i) {
      const ExprToken &token = model.ExprTokens[i], &read = again.ExprTokens[i];
      EXPECT_EQ(read.Type, token.Type) << text;
      EXPECT_EQ(read.Index, token.Index) << text;
      EXPECT_EQ(read.Value, token.Value) << text;
      if (token.Type == TokenKind::Literal) continue;  // one that the parser took for 0 is written so
      EXPECT_EQ(read.Name == "log" ? "ln" : read.Name, token.Name == "log" ? "ln" : token.Name) << text;
    }
  }
}

}  // namespace
}  // namespace quorvex
