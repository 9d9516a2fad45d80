#include <gtest/gtest.h>

#include "equation/IntrinsicFunctions.h"
#include "equation/Parser.h"
#include "usermodels/ModelFunctions.h"

namespace quorvex {
namespace {

// Each word of the language once, with as many arguments as the compiler asks for.
TEST(ModelFunctions, AreThoseOfTheLanguage) {
  for (const std::size_t variables : {1u, 2u}) {
    const std::vector<ModelFunction> functions = ModelFunctions(variables);
    for (const IntrinsicFunction& intrinsic : IntrinsicFunctions()) {
      const auto is = [&](const ModelFunction& function) { return function.Name == intrinsic.Name; };
      ASSERT_EQ(std::ranges::count_if(functions, is), IsFunctionName(intrinsic.Name, variables > 1) ? 1 : 0)
          << intrinsic.Name;
    }
    const Dialect dialect = variables > 1 ? Dialect::SeveralVariables : Dialect::OneVariable;
    for (const ModelFunction& function : functions) {
      const FunctionTemplate words = TemplateOf(function, "", {});
      std::string text = words.Text;
      for (std::size_t at = text.find_first_of(",)"); at != std::string::npos; at = text.find_first_of(",)", at + 2))
        text.insert(at, "x");
      EXPECT_FALSE(Parser(dialect, {}).Compile({text}).ParseError) << text;
      EXPECT_EQ(words.Text[words.Caret - 1], '(');
      EXPECT_FALSE(function.Meaning.empty());
    }
  }
}

TEST(TemplateOf, StandsAroundAnArgument) {
  const LocaleText comma{.DecimalSeparator = ',', .ListSeparator = ';', .ThousandSeparator = '.'};
  const struct {
    ModelFunction function;
    std::string argument;
    LocaleText locale;
    std::string text, inFront;
  } kCases[] = {{{"sin", "u", ""}, "", {}, "sin()", "sin("},
                {{"sin", "u", ""}, "b*x", {}, "sin(b*x)", "sin(b*x)"},
                {{"max", "u,v", ""}, "", {}, "max(,)", "max("},
                {{"if", "condition,u,v", ""}, "x>2", comma, "if(x>2;;)", "if(x>2;"}};
  for (const auto& c : kCases) {
    const FunctionTemplate words = TemplateOf(c.function, c.argument, c.locale);
    EXPECT_EQ(words.Text, c.text);
    EXPECT_EQ(words.Text.substr(0, words.Caret), c.inFront);
  }
}

}  // namespace
}  // namespace quorvex
