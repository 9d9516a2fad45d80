#include <gtest/gtest.h>

#include <algorithm>

#include "code/CodeLanguage.h"
#include "code/Formula.h"
#include "equation/Catalogue.h"
#include "equation/IntrinsicFunctions.h"
#include "equation/Parser.h"

namespace quorvex {
namespace {

struct Compiled {
  Expression Code;
  CodeModel Model;

  explicit Compiled(std::vector<std::string> lines, int variables = 1)
      : Code([&] {
          lines.resize(10);
          return Parser(variables > 1 ? Dialect::SeveralVariables : Dialect::OneVariable, {}).Compile(lines);
        }()),
        Model{.Title = "",
              .Definition = lines[0],
              .Remarks = {},
              .Compiled = Code,
              .Values = {},
              .Statistics = {},
              .Variables = variables,
              .Proof = {}} {
    EXPECT_FALSE(Code.ParseError) << lines[0] << Code.ParseErrorMessage;
    Model.Values.assign(Code.CoefficientNames.size(), -1.5e-9);
  }
};

// The right-hand side of the model, or whole lines where there are several.
std::string Latex(const Compiled& model) {
  std::string text = LatexFormula(model.Model);
  const std::string head = "\\begin{aligned}\ny &= ", end = "\n\\end{aligned}";
  EXPECT_TRUE(text.starts_with(head) && text.ends_with(end)) << text;
  return text.substr(head.size(), text.size() - head.size() - end.size());
}

TEST(LatexFormula, HasTheParenthesesThatItNeeds) {
  const struct {
    const char *Line, *Text;
  } kCases[] = {
      {"a*x^2+b*exp(-c*x)/(1+d*x)", R"(a\,x^{2} + \frac{b\,\mathrm{e}^{-c\,x}}{1 + d\,x})"},
      {"a-(b-x)-(-c)", R"(a - \left(b - x\right) - \left(-c\right))"},
      {"a*(b+x)*-c", R"(a\,\left(b + x\right)\,\left(-c\right))"},
      {"-a*x+(-(b*x))", R"(-a\,x + \left(-b\,x\right))"},
      {"-x^2+(-x)^2", R"(-x^{2} + \left(-x\right)^{2})"},
      {"(a^b)^x+a^(b^x)+(a/b)^x", R"(\left(a^{b}\right)^{x} + a^{b^{x}} + \left(\frac{a}{b}\right)^{x})"},
      {"sin(x)^2/(a/b)", R"(\frac{\left(\sin{\left(x\right)}\right)^{2}}{\frac{a}{b}})"},
      {"2*3*x*10^-a", R"(2\cdot 3\,x\cdot 10^{-a})"},
      {"1.5e-9^x+x*2e20", R"(\left(1.5\times 10^{-9}\right)^{x} + x\cdot 2\times 10^{20})"},
      {"sqr(abs(x))^3", R"(\left(\sqrt{\left|x\right|}\right)^{3})"},
      {"fact(x+1)+pi", R"(\left(x + 1\right)! + \pi)"},
      {"a*(x<b)", R"(a\,\left(-\left[x < b\right]\right))"},
      {"if((x>1)and(not(x=3)),a,x)",
       R"(\begin{cases} a & \text{if } x > 1 \land \neg \left(x = 3\right) \\ x & \text{otherwise} \end{cases})"},
      {"if(x,a,b)^2", R"(\left(\begin{cases} a & \text{if } x \ne 0 \\ b & \text{otherwise} \end{cases}\right)^{2})"},
      {"binomial(2,a,x)", R"(\mathrm{I}_{x}{\left(2, a - 2 + 1\right)})"},
      {"dknu(a,x)", R"(\mathrm{K}_{a}^{\prime }{\left(x\right)})"},
  };
  for (const auto& c : kCases) EXPECT_EQ(Latex(Compiled({c.Line})), c.Text) << c.Line;
  EXPECT_EQ(Latex(Compiled({"a*f2", "x", "x+f1"})), "a\\,F_{2} \\\\\nF_{1} &= x \\\\\nF_{2} &= x + F_{1}");
}

TEST(LatexFormula, BreaksWideSumsAheadOfASign) {
  std::string line = "a*exp(x)";
  for (int i = 0; i < 40; ++i) line += "-b*sin(x)^2";
  const std::string text = Latex(Compiled({line}));
  std::size_t lines = 1;
  for (std::size_t at = 0; (at = text.find(" \\\\\n&\\quad {} - b", at)) != std::string::npos; ++at) ++lines;
  EXPECT_GT(lines, 5U);
  EXPECT_LT(lines, 12U);
}

TEST(Formula, TellsNamesApart) {
  const Compiled model({"a1+a_1+alpha2+k_cat+vm+_q+x1_+x+F_1+e*exp(x1)"}, 2);
  std::vector<std::string> named;
  const std::vector<std::string> names = LatexCoefficients(model.Model);
  for (std::size_t i = 0; i < names.size(); ++i) named.push_back(model.Code.CoefficientNames[i] + " " + names[i]);
  std::ranges::sort(named);
  EXPECT_EQ(named,
            (std::vector<std::string>{"F_1 \\mathrm{F\\_1}", "_q \\mathrm{\\_q}", "a1 a_{1}", "a_1 \\mathrm{a\\_1}",
                                      "alpha2 \\alpha_{2}", "e e", "k_cat k_{\\mathrm{cat}}", "vm \\mathrm{vm}", "x x",
                                      "x1_ \\mathrm{x1\\_}"}));
  EXPECT_EQ(LatexCoefficients(Compiled({"x1*x"}).Model).front(), "x_{1}");
  EXPECT_EQ(LatexNumber(-1.5e-9), "-1.5\\times 10^{-9}");
  EXPECT_EQ(LatexNumber(0.1 + 0.2), "0.3");
  EXPECT_EQ(LatexNumber(1e20), "1\\times 10^{20}");
}

TEST(MathMLFormula, HasTheSameParts) {
  const std::string text = MathMLFormula(Compiled({"a1*(x<2)/-b"}).Model);
  EXPECT_NE(text.find("<mfrac><mrow><msub><mrow><mi>a</mi></mrow><mrow><mn>1</mn></mrow></msub>"
                      "<mspace width=\"0.17em\"></mspace><mrow><mo>(</mo><mo form=\"prefix\">&#x2212;</mo><mrow>"
                      "<mo>[</mo><mi>x</mi><mo>&lt;</mo><mn>2</mn><mo>]</mo></mrow><mo>)</mo></mrow></mrow>"
                      "<mrow><mo form=\"prefix\">&#x2212;</mo><mi>b</mi></mrow></mfrac>"),
            std::string::npos)
      << text;
}

// What opens is closed in its order: braces, \left and \begin; tags.
std::string Unclosed(std::string_view text, bool isXml) {
  std::vector<std::string> open;
  const auto close = [&](const std::string& what) {
    if (open.empty() || open.back() != what) return false;
    open.pop_back();
    return true;
  };
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::string_view rest = text.substr(i);
    const auto word = [&](std::string_view head, char end) {
      return std::string(rest.substr(head.size(), rest.find(end) - head.size()));
    };
    bool good = true;
    if (isXml && rest.starts_with("</"))
      good = close(word("</", '>'));
    else if (isXml && rest[0] == '<')
      open.push_back(word("<", '>').substr(0, rest.substr(1).find_first_of(" >")));
    else if (isXml && rest[0] == '&')
      good = rest.find(';') < 10;
    else if (!isXml && rest.starts_with("\\begin{"))
      open.push_back(word("\\begin{", '}'));
    else if (!isXml && rest.starts_with("\\end{"))
      good = close(word("\\end{", '}'));
    else if (!isXml && rest.starts_with("\\left") && !rest.starts_with("\\leftarrow"))
      open.push_back("left");
    else if (!isXml && rest.starts_with("\\right"))
      good = close("left");
    if (!isXml && rest[0] == '{') open.push_back("{");
    if (!isXml && rest[0] == '}') good = close("{");
    if (!good) return std::string(rest);
    // The braces of an environment's name are no group.
    if (!isXml && (rest.starts_with("\\begin{") || rest.starts_with("\\end{"))) i += rest.find('}');
  }
  return open.empty() ? "" : open.back();
}

TEST(Formula, ClosesWhatItOpens) {
  std::vector<std::string> lines;
  for (const CatalogueModel& row : Catalogue(1)) lines.push_back(row.Definition.substr(row.Definition.find('=') + 1));
  for (const IntrinsicFunction& function : IntrinsicFunctions()) {
    if (!function.Call) continue;
    const std::string name(function.Name);
    lines.push_back("a-(b*" + name + "(x" + (function.Arguments > 1 ? ",(x<1)" : "") +
                    (function.Arguments > 2 ? ",-x" : "") + ")^2)");
  }
  for (const char* word : {"mod", "\\", "xor", "eqv", "imp", "and", "or"})
    lines.push_back("if((x)" + std::string(word) + "(3)<=2,not(x),((x>1)" + word + "(x<>2)))");
  for (const std::string& line : lines) {
    const Compiled model({line});
    EXPECT_EQ(Unclosed(LatexFormula(model.Model), false), "") << line;
    EXPECT_EQ(Unclosed(MathMLFormula(model.Model), true), "") << line;
  }
}

TEST(Formula, TellsWhatIsNoCommonNotation) {
  EXPECT_TRUE(FormulaNotes(Compiled({"a*exp(x)"}).Model).empty());
  EXPECT_EQ(FormulaNotes(Compiled({"(x)mod(2)+fix(x)"}).Model).size(), 2U);
}

// Operands that are written twice would double the text with each level.
TEST(Formula, StaysWithinBounds) {
  std::string line = "x";
  for (int i = 0; i < 200; ++i) line = "student(" + line + ",2)";
  const Compiled model({line});
  EXPECT_LT(MathMLFormula(model.Model).size(), 1'000'000U);
  EXPECT_EQ(FormulaNotes(model.Model).front(), "What is too long to be read stands as dots.");
}

}  // namespace
}  // namespace quorvex
