#include <gtest/gtest.h>

#include "TableFile.h"
#include "core/NumberText.h"
#include "equation/Compile.h"
#include "equation/Evaluator.h"
#include "equation/GenerateTextInfix.h"

namespace quorvex {
namespace {

TEST(GenerateTextInfix, JoinsTheTokensAsTheyWereTyped) {
  const struct {
    std::vector<std::string> Lines;
    std::vector<double> Values;
    int ReplaceOption, AppendParameters;
    const char* Text;
  } cases[] = {
      {{"a * X + Sin( b*x )"}, {1, 2}, 1, 0, "Y = a*X+Sin(b*x)"},
      {{"a*x+b"}, {1.5, -2e-20}, 0, 0, "Y = 1.5*x+-2E-20"},
      {{"A*x+a"}, {0.1}, 0, 0, "Y = 0.1*x+0.1"},
      {{"A*x+a"}, {0.1}, 1, 1, "Y = A*x+a\r\n\r\nA = 0.1"},
      {{"x*xmean+Pi"}, {}, 0, 1, "Y = x*xmean+Pi\r\n"},
      {{"F2+f1", "b*x", "F1^a", "unused*x"}, {3, 4}, 0, 1, "Y = F2+f1\r\nF1 = 4*x\r\nF2 = F1^3\r\n\r\na = 3\r\nb = 4"},
      {{"if(x>=1,-a,x mod 2)"}, {0}, 0, 0, "Y = if(x>=1,-0,x mod 2)"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(GenerateTextInfix(Compile(c.Lines), c.Values, {}, c.ReplaceOption, c.AppendParameters), c.Text);
  }
}

TEST(GenerateTextInfix, ReadsBackUnderTheLocaleThatItWasWrittenIn) {
  const Expression model = Compile({"max(a;1,5)*x"}, Dialect::OneVariable, kGerman);
  const std::string text = GenerateTextInfix(model, std::vector{2.25}, kGerman, 0, 1);
  EXPECT_EQ(text, "Y = max(2,25;1,5)*x\r\n\r\na = 2,25");
}

// The values of a model's text with numbers in the place of its coefficients are those of the model.
TEST(GenerateTextInfix, ReadsBackToTheSameValues) {
  const char* const kModels[] = {"a^2*x+b",
                                 "x^a^2",
                                 "-a^b*x",
                                 "a+2*x",
                                 "x*a-b",
                                 "a*x^b-c",
                                 "a-x-b",
                                 "a mod 3+x",
                                 "2 eqv a+x",
                                 "not a=x",
                                 "1e3 +a*x",
                                 "1e3 -x",
                                 "2e1 mod a+x",
                                 "f1^2+f2-a|b|a-x^b",
                                 "max(a,b)+min(x,-a)",
                                 "if(a<x,b,a)^2",
                                 "abs(x)^a/b",
                                 "(a)^2-x",
                                 "x*a^2 and 7"};  // lines divided by "|"
  for (const LocaleText& locale : {LocaleText(), kGerman}) {
    for (const char* const written : kModels) {
      std::vector<std::string> lines;
      for (const std::string& line : Split(written, '|')) lines.push_back(LocalizeExpression(line, locale));
      const Expression model = Compile(lines, Dialect::OneVariable, locale);
      for (const auto& all : {std::vector<double>{-3, -1.5, 2}, {1e-10, -2e-5, 1e20}, {2, 1e-7, -1}, {-1e-6, 3, 5}}) {
        const std::vector<double> values(all.begin(),
                                         all.begin() + static_cast<std::ptrdiff_t>(model.CoefficientNames.size()));
        std::vector<std::string> again(1);
        const std::string text = GenerateTextInfix(model, values, locale, 0, 0);
        std::string_view rest = text;
        while (!rest.empty()) {
          std::string_view line = TakeLine(rest);
          const std::size_t number = line[0] == 'F' ? static_cast<std::size_t>(line[1] - '0') : 0;
          if (number >= again.size()) again.resize(number + 1);
          again[number] = line.substr(line.find('=') + 2);
        }
        const Expression read = Compile(again, Dialect::OneVariable, locale);
        EXPECT_TRUE(read.CoefficientNames.empty()) << text;
        for (const double x : {-2.0, 0.5, 3.0}) {
          double expected = 0, y = 0;
          const bool has = Evaluator().Evaluate(model, {&x, 1}, values, {}, expected);
          EXPECT_EQ(Evaluator().Evaluate(read, {&x, 1}, {}, {}, y), has) << text;
          EXPECT_EQ(has ? y : 0, has ? expected : 0) << text << " at " << x;
        }
      }
    }
  }
}

}  // namespace
}  // namespace quorvex
