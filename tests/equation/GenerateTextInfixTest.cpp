#include <gtest/gtest.h>

#include "equation/Compile.h"
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
      {{"if(x>=1,-a,x mod 2)"}, {0}, 0, 0, "Y = if(x>=1,-0,xmod2)"},
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

}  // namespace
}  // namespace quorvex
