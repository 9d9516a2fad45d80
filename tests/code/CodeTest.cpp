#include <gtest/gtest.h>

#include "code/CodeLanguage.h"
#include "code/Languages.h"
#include "core/NumberText.h"
#include "engine/EqClass.h"
#include "engine/MvClass.h"

namespace quorvex {
namespace {

struct Written {
  std::unique_ptr<ModelClass> Model;
  CodeModel Described;

  explicit Written(const std::vector<std::string>& lines, bool several = false)
      : Model(several ? std::unique_ptr<ModelClass>(std::make_unique<MvClass>(LocaleText()))
                      : std::make_unique<EqClass>(LocaleText())),
        Described([&] {
          Model->SetID(lines[0], lines);
          return DescribeForCode(*Model);
        }()) {}
  CodeBody In(const CodeLanguage& language, const std::string& function = "f") const {
    return GenerateBody(Described, language, function);
  }
  std::string Text(const CodeLanguage& language, const std::string& function = "f") const {
    return WriteCode(Described, language, function);
  }
};

// Whole bodies: what a language does with parentheses, truths and branches. That the values are right is for
// scripts/code-check.sh to see, which runs them.
TEST(GenerateBody, KeepsTheOrderOfTheProgram) {
  const struct {
    std::vector<std::string> Lines;
    const char *Python, *R;
  } kCases[] = {
      {{"a-(b-x)-c"}, "a - (b - x) - c", "a - (b - x) - c"},
      {{"a/(b*x)/x"}, "a / (b * x) / x", "a / (b * x) / x"},
      {{"-x^2*a^b"}, "-math.pow(x, 2.0) * math.pow(a, b)", "-x ^ 2 * a ^ b"},
      {{"a^b^x"}, "math.pow(math.pow(a, b), x)", "(a ^ b) ^ x"},
      {{"(-x)^-a"}, "math.pow(-x, -a)", "(-x) ^ (-a)"},
      {{"a-(x<b)"}, "a - (-1.0 if x < b else 0.0)", "a - (if (x < b) -1 else 0)"},
      {{"(x<a)and(x>b)"}, "(-1.0 if (x < a and x > b) else 0.0)", "(if ((x < a && x > b)) -1 else 0)"},
      {{"if(x,a,b)"}, "(a if x != 0 else b)", "(if (x != 0) a else b)"},
      {{"if(x>0,f1,a)*f1", "ln(x)"},
       "((F1 := math.log(x)) if x > 0.0 else a) * F1",
       "(if (x > 0) (F1 <- log(x)) else a) * F1"},
  };
  for (const auto& c : kCases) {
    const Written model(c.Lines);
    EXPECT_EQ(model.In(kPython).Result, c.Python) << c.Lines[0];
    EXPECT_EQ(model.In(kR).Result, c.R) << c.Lines[0];
  }
}

// A language whose expressions know no choice computes only the branch that is taken, too.
TEST(GenerateBody, ChoosesByStatementsWhereItMust) {
  CodeLanguage plain = kPython;
  plain.Choice = plain.Save = {};
  plain.Statements = {.If = "if $1:", .Else = "else:", .End = "end", .Assign = "$1 = $2"};
  const CodeBody body = Written({"a+if(x>0,f1,if(x<part1,-1,x))+f1", "ln(x)"}).In(plain);
  EXPECT_EQ(body.Statements,
            (std::vector<std::string>{"if x > 0.0:", "    F1 = math.log(x)", "    part2 = F1",
                                      "else:", "    if x < part1:", "        part1_1 = -1.0",
                                      "    else:", "        part1_1 = x", "    end", "    part2 = part1_1", "end"}));
  EXPECT_EQ(body.Result, "a + part2 + F1");
}

TEST(GenerateBody, TellsNamesApart) {
  CodeLanguage folding = kPython;
  folding.FoldsCase = true;
  const struct {
    const CodeLanguage& Language;
    std::vector<std::string> Lines;
    const char* Function;
    std::vector<std::string> Coefficients, Variables;
    const char* Named;
    std::size_t Remarks;
  } kCases[] = {
      {kPython, {"a*x+lambda"}, "f", {"a", "lambda_1"}, {"x"}, "f", 1},
      {kPython, {"f+f_1*x"}, "f", {"f", "f_1"}, {"x"}, "f_2", 0},
      {kPython, {"a*x+whole mod 2"}, "class", {"a", "whole_1"}, {"x"}, "class_1", 1},
      {kPython, {"a*x"}, "2 \"x\"; rm -rf *", {"a"}, {"x"}, "f2__x___rm__rf__", 0},
      {kPython, {"a*x"}, "\xC3\xBC", {"a"}, {"x"}, "f__", 0},
      {kPython, {"a*x"}, "", {"a"}, {"x"}, "f", 0},
      {kR, {"TRUE*x+pi*exp(x)"}, "exp", {"True"}, {"x"}, "exp_1", 0},
      {folding, {"f1*X", "a"}, "F1", {"a"}, {"x"}, "F1_1", 0},
  };
  for (const auto& c : kCases) {
    const CodeBody body = Written(c.Lines).In(c.Language, c.Function);
    EXPECT_EQ(body.Coefficients, c.Coefficients) << c.Lines[0];
    EXPECT_EQ(body.Variables, c.Variables) << c.Lines[0];
    EXPECT_EQ(body.Function, c.Named) << c.Lines[0];
    EXPECT_EQ(body.Remarks.size(), c.Remarks) << c.Lines[0];
  }
  EXPECT_EQ(Written({"a*x1+x*x3"}, true).In(kPython).Variables, (std::vector<std::string>{"x1", "x2", "x3"}));
}

std::string WithoutComments(std::string_view text, const CodeLanguage& language) {
  std::string code;
  while (!text.empty()) {
    const std::string line(TakeLine(text));
    if (!line.starts_with(language.Comment)) code += line + "\n";
    EXPECT_FALSE(line.starts_with(language.Comment) && line.ends_with('\\')) << language.Name;
  }
  return code;
}

// Whatever stands in titles, definitions and remarks, the code behind the head is the same.
TEST(WriteCode, KeepsHostileTextsInItsComments) {
  for (const CodeLanguage* language : CodeLanguages()) {
    Written model({"a+b*x"});
    model.Described.Title = model.Described.Definition = "plain";
    const std::string plain = model.Text(*language);
    for (const std::string hostile :
         {"\"\"\" ''' ` */ /* =# #= --> -->", "one\nimport os\rtwo\r\nthree", "\\", "ends in \\\\\n\\",
          "\xE2\x80\xA8print(1)\xE2\x80\xA9print(2)\xC2\x85print(3)", "\x1B[2J\x07\x7F\xC2\x9B",
          "{{ %> <% ?> }} ]]> ${x} \\end{document}", "\xC3\xA4\xC3\xB6\xC3\xBC\xE2\x82\xAC ...", "'); DROP TABLE",
          "coding: none coding=none", "\xE2\x80\xAE\xE2\x81\xA6\xE2\x80\x8F\xEF\xBB\xBF", "\xFF \xE4 \xC3", ""}) {
      model.Described.Title = model.Described.Definition = hostile;
      model.Described.Remarks = {hostile};
      const std::string text = model.Text(*language);
      EXPECT_EQ(WithoutComments(text, *language), WithoutComments(plain, *language)) << language->Name << hostile;
      for (const char* mark : {"*/", "/*", "\"\"\"", "=#", "\x1B", "\xE2\x80\xA8", "\xC2\x85", "\xC2\x9B",
                               "coding:", "coding=", "\xE2\x80\xAE", "\xE2\x81\xA6", "\xEF\xBB\xBF", "\xFF"})
        EXPECT_EQ(text.find(mark), plain.find(mark)) << language->Name << mark;
    }
  }
  EXPECT_EQ(CommentText("a\xE4 \xC3\xA4\tb"), "a\xEF\xBF\xBD \xC3\xA4 b");
}

TEST(WriteCode, TellsWhatALanguageHasNothingFor) {
  const CodeBody body = Written({"a*airya(x)+airya(a)"}).In(kJavaScript);
  EXPECT_EQ(body.Missing, std::vector<std::string>{"airya"});
  EXPECT_EQ(body.Result, "a * airya_of_the_user(x) + airya_of_the_user(a)");
  EXPECT_EQ(body.Remarks,
            std::vector<std::string>{"JavaScript has no function for airya: supply one called airya_of_the_user."});
}

TEST(CodeForFile, GoesByTheEnding) {
  const Written model({"a*x"});
  EXPECT_NE((*CodeForFile(*model.Model, "/tmp/my model.v2.PY")).find("def my_model(x):"), std::string::npos);
  for (const char* name : {"fit", "fit.", "fit.xyz", ".py/fit", ""})
    EXPECT_EQ(CodeForFile(*model.Model, name).error(), UnknownLanguageText(name)) << name;
}

}  // namespace
}  // namespace quorvex
