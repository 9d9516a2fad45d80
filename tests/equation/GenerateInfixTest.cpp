#include <gtest/gtest.h>

#include <regex>

#include "TableFile.h"
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

TEST(GenerateInfix, WritesStatementsOfBothLanguages) {
  for (const auto& row : TableRows("expressions_as_code.txt", 5)) {
    const Expression model = Compile(Split(row[0], '|'));
    const Code basic(model, ExprType::Basic), inC(model, ExprType::C);
    EXPECT_EQ(basic.Statements, row[1]);
    EXPECT_EQ(inC.Statements, row[2]);
    EXPECT_EQ(basic.Functions, row[3]) << row[0];
    EXPECT_EQ(inC.Functions, row[4]) << row[0];
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
  for (const auto& row : TableRows("expressions_as_code.txt", 5)) {
    if (row[0].find('|') != std::string::npos) continue;
    const Expression model = Compile({row[0]});
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
