#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "code/CodeLanguage.h"
#include "code/Languages.h"
#include "core/NumberText.h"
#include "equation/Parser.h"

namespace quorvex {
namespace {

Expression Compile(std::vector<std::string> lines, bool several = false) {
  lines.resize(10);
  return Parser(several ? Dialect::SeveralVariables : Dialect::OneVariable, {}).Compile(lines);
}

CodeModel Described(const Expression& compiled, int variables = 1) {
  CodeModel model{.Title = "",
                  .Definition = "",
                  .Remarks = {},
                  .Compiled = compiled,
                  .Values = {},
                  .Statistics = {},
                  .Variables = variables,
                  .Proof = {}};
  for (std::size_t i = 0; i < compiled.CoefficientNames.size(); ++i) model.Values.push_back(i % 2 == 0 ? -1.5 : 2.5e-9);
  return model;
}

// A minus in front binds tighter than "^" there; logic is a function; values stand in place of names.
TEST(Spreadsheet, KeepsTheOrderOfTheProgram) {
  const struct {
    std::vector<std::string> Lines;
    const char* Formula;
  } kCases[] = {
      {{"-x^2"}, "-(A2^2)"},
      {{"(-x)^2-x^2"}, "(-A2)^2 - A2^2"},
      {{"2^-x^a"}, "2^(-(A2^(-1.5)))"},
      {{"a^x+b*a"}, "(-1.5)^A2 + 2.5E-09*(-1.5)"},
      {{"if((x>1)and(not(x=2)),a,ln(x))"}, "IF(AND(A2 > 1, NOT(A2 = 2)), -1.5, LN(A2))"},
      {{"2*(x<>1)"}, "2*IF(A2 <> 1, -1, 0)"},
      {{"(x)mod(3)"}, "(SIGN(A2)*MOD(ABS(IF(MOD(A2, 1) = 0.5, 2*ROUND(A2/2, 0), ROUND(A2, 0))), ABS(3)))"},
      {{"f1*f1-f2", "x+1", "1/x"}, "(A2 + 1)*(A2 + 1) - (1/A2)"},
  };
  for (const auto& c : kCases) {
    const Expression compiled = Compile(c.Lines);
    EXPECT_EQ(GenerateBody(Described(compiled), kSpreadsheet, "f").Result, c.Formula) << c.Lines[0];
  }
  const Expression several = Compile({"a*x3-x1"}, true);
  EXPECT_EQ(GenerateBody(Described(several, 3), kSpreadsheet, "f").Result, "-1.5*C2 - A2");
}

// A cell takes no number below the normal ones, and some programs none above 9.99999999999999E+307.
TEST(Spreadsheet, WritesNumbersThatNoCellTakes) {
  const Expression compiled = Compile({"a*x+b"});
  CodeModel model = Described(compiled);
  const struct {
    double Value;
    const char *Text, *Remark;
  } kCases[] = {
      {5e-324, "(5.696189077778436E-306*8.673617379884035E-19)", "# Numbers below 2.2250738585072014E-308 are 0 in"},
      {-1.6e308, "(-8E+307*2)", ""},
      {-0.0, "0", "# A sheet has no negative zero: it is 0 here."},
      {9.99e307, "9.99E+307", ""},
      {0.1 + 0.2, "0.30000000000000004", "# Some programs keep 15 digits of a number, and some of these have more."},
  };
  for (const auto& c : kCases) {
    model.Values = {c.Value, 2};
    const std::string text = WriteCode(model, kSpreadsheet, "f");
    EXPECT_NE(text.find("\n=" + std::string(c.Text) + "*A2 + 2\n"), std::string::npos) << text;
    EXPECT_NE(text.find(c.Remark), std::string::npos) << text;
    EXPECT_EQ(std::ranges::count(text, '#'), *c.Remark == '\0' ? 3 : 4) << text;
  }
}

TEST(Spreadsheet, RefusesWhatGrowsBeyondAnyCell) {
  std::vector<std::string> lines(10, "x*x*x*x");
  for (std::size_t i = 0; i < 9; ++i) {
    const std::string next = "f" + std::to_string(i + 1);
    lines[i] = next;
    for (int k = 0; k < 20; ++k) lines[i] += "*" + next;
  }
  const Expression compiled = Compile(lines);
  const std::string text = WriteCode(Described(compiled), kSpreadsheet, "f");
  EXPECT_NE(text.find("# The model is too long for a formula of a spreadsheet.\n"), std::string::npos);
  EXPECT_EQ(text.find("\n="), std::string::npos);
}

// A line has 132 characters, a name 63, and case tells no names apart.
TEST(Fortran, KeepsToItsLinesAndNames) {
  std::string sum = "value*sum1", nested = "x";
  for (int i = 0; i < 60; ++i) {
    sum += "+coefficient" + std::to_string(i) + "*exp(-x^" + std::to_string(i) + ".5)";
    nested = "exp(" + nested + ")";
  }
  const std::string name(100, 'n');
  for (const std::string& line : {sum, nested, nested + "+if(x>" + nested + ",f1,x)", name + "*x+" + name + "b"}) {
    const Expression compiled = Compile({line, "if(x>2," + sum + ",1)"});
    CodeModel model = Described(compiled);
    model.Title = std::string(300, 'T') + "\xC3\xA4" + std::string(300, 't') + "\n&";
    model.Definition = line;
    model.Proof = CodeProof{{1.5}, 2.5};
    const std::string text = WriteCode(model, kFortran, name);
    std::string_view rest = text;
    while (!rest.empty()) EXPECT_LE(TakeLine(rest).size(), 132U) << line;
    const CodeBody body = GenerateBody(model, kFortran, name);
    EXPECT_LE(body.Function.size(), 58U);  // the module's name is longer
    for (const std::string& each : body.Coefficients) EXPECT_LE(each.size(), 63U);
    EXPECT_EQ(std::set<std::string>(body.Coefficients.begin(), body.Coefficients.end()).size(), model.Values.size());
  }
  const Expression compiled = Compile({"value*x+whole^x"});
  EXPECT_EQ(GenerateBody(Described(compiled), kFortran, "WHOLE").Function, "WHOLE_2");
  EXPECT_EQ(GenerateBody(Described(compiled), kFortran, "f").Result, "value_1 * x + power(whole_1, x)");
  const Expression signs = Compile({"a--x-(-x)*b+-x^2"});  // of two signs in a row it knows nothing
  EXPECT_EQ(GenerateBody(Described(signs), kFortran, "f").Result, "a - (-x) - (-x * b) + (-x ** 2)");
}

// What no expression can say stands ahead of it, and a supporting function with the branch that computes it.
TEST(Languages, ChooseByStatementsWhereTheyMust) {
  const Expression compiled = Compile({"a*x^2-if(x>0,f1,2^x)", "ln(x)"});
  const struct {
    const CodeLanguage& Language;
    std::vector<std::string> Statements;
    const char* Result;
  } kCases[] = {
      {kJulia, {}, "a * x ^ 2 - (x > 0.0 ? (F1 = log(x)) : 2.0 ^ x)"},
      {kMatlab,
       {"if x > 0", "    F1 = reallog(x);", "    part1 = F1;", "else", "    part1 = realpow(2, x);", "end"},
       "a .* x .^ 2 - part1"},
      {kFortran,
       {"if (x > 0.0d0) then", "    F1 = log(x)", "    part1 = F1", "else", "    part1 = power(2.0d0, x)", "end if"},
       "a * x ** 2 - part1"},
      {kRust,
       {"if x > 0.0 {", "    F1 = f64::ln(x);", "    part1 = F1;", "} else {", "    part1 = f64::powf(2.0, x);", "}"},
       "a * f64::powi(x, 2) - part1"},
  };
  for (const auto& c : kCases) {
    const CodeBody body = GenerateBody(Described(compiled), c.Language, "f");
    EXPECT_EQ(body.Statements, c.Statements) << c.Language.Name;
    EXPECT_EQ(body.Result, c.Result) << c.Language.Name;
    EXPECT_TRUE(body.Unset.empty());
  }
  const Expression unset = Compile({"if(x>0,f1,2)+f1", "ln(x)"});
  EXPECT_EQ(GenerateBody(Described(unset), kRust, "f").Unset, std::vector<std::string>{"F1"});
}

}  // namespace
}  // namespace quorvex
