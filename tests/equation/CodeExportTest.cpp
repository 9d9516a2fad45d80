#include <gtest/gtest.h>

#include <regex>

#include "Golden.h"
#include "TableFile.h"
#include "TemporaryFolder.h"
#include "core/NumberText.h"
#include "equation/Checked.h"
#include "equation/CodeExport.h"
#include "equation/Compile.h"
#include "equation/Evaluator.h"
#include "equation/ExportNotes.h"

namespace quorvex {
namespace {

std::tm At(int year, int month, int day, int hour, int minute, int second) {
  std::tm t{};
  t.tm_year = year - 1900;
  t.tm_mon = month - 1;
  t.tm_mday = day;
  t.tm_hour = hour;
  t.tm_min = minute;
  t.tm_sec = second;
  return t;
}

std::string Source(const Expression& model, const std::vector<double>& Values, ExprType language,
                   const std::string& name, const std::tm& created = At(2026, 11, 21, 4, 30, 12)) {
  DataStatistics statistics;
  statistics.X[0].XMean = 2.5;
  statistics.InputYMin = -1;
  statistics.InputYMax = 3;
  return FunctionSource({model, Values, statistics, 0.987654321, 0.9, 1e-5, LocaleText()}, language, name, created);
}

TEST(FunctionSource, WritesTheWholeFile) {
  const Expression one = Compile({"A*arcsin(f1)+if(x>xmean,a,Base)*yrange", "x/4"});
  const Expression several = Compile({"a*x1^b+max(x2,erf(x3))"}, Dialect::SeveralVariables);
  ExpectGolden("FunctionOneVariable.bas", Source(one, {1.5, -2e-20}, ExprType::Basic, "curve"));
  ExpectGolden("FunctionOneVariable.c", Source(one, {1.5, -2e-20}, ExprType::C, "curve"));
  ExpectGolden("FunctionSeveralVariables.bas", Source(several, {3, 0.25}, ExprType::Basic, "surface"));
  ExpectGolden("FunctionSeveralVariables.c", Source(several, {3, 0.25}, ExprType::C, "surface"));
}

TEST(FunctionSource, DatesItselfInEnglishOnATwelveHourClock) {
  const struct {
    std::tm Created;
    const char *Date, *Time;
  } cases[] = {{At(2026, 1, 2, 0, 5, 9), "Jan 2 2026", "12:05:09 AM"},
               {At(2027, 12, 31, 12, 0, 0), "Dec 31 2027", "12:00:00 PM"},
               {At(2026, 5, 10, 11, 59, 59), "May 10 2026", "11:59:59 AM"},
               {At(2026, 9, 10, 23, 0, 1), "Sep 10 2026", "11:00:01 PM"}};
  const Expression model = Compile({"a*x"});
  for (const auto& c : cases) {
    const std::string text = Source(model, {1}, ExprType::Basic, "f", c.Created);
    EXPECT_NE(text.find(std::string("'Date Created: ") + c.Date + "\r\n'Time Created: " + c.Time + "\r\n"),
              std::string::npos)
        << text;
  }
}

// In BASIC case makes no difference to a name.
TEST(FunctionSource, ChangesNamesThatClashInBasic) {
  const std::string text =
      Source(Compile({"Result*x1+X*x2+dim"}, Dialect::SeveralVariables), {1, 2, 3}, ExprType::Basic, "x");
  for (const char* line :
       {"public function x_2(x_1() as double) as double\r\n", "'array x_1(), where x_1(1) = x1, et.\r\n",
        "'The name x is taken, so it is written x_1.\r\n'The name result is taken, so it is written result_1.\r\n",
        "    const Result as double = 1\r\n    const X as double = 2\r\n    const dim_1 as double = 3\r\n",
        "    result_1 = (((Result * x_1(1)) + (X * x_1(2))) + dim_1)\r\nx_2 = result_1\r\n"})
    EXPECT_NE(text.find(line), std::string::npos) << line << text;
}

TEST(ExportNotes, TellWhereValuesPart) {
  const struct {
    const char* Text;
    std::size_t InC, InBasic, InSpreadsheets;
  } kCases[] = {{"a*x", 0, 0, 0},
                {"a*(x>1)", 1, 0, 1},
                {"x>a", 1, 0, 1},
                {"(x>1)*(x<a)", 1, 0, 1},
                {"if(x>1,a,x)", 0, 0, 0},
                {"if(x,a,x)", 0, 0, 0},
                {"if(x>1 and not x=a,a,x)", 0, 0, 1},
                {"if(x and 4,a,1)", 1, 0, 2},
                {"a+(x xor 1)", 1, 0, 1},
                {"max(x>1,a)", 1, 0, 1},
                {"x\\a+x mod 2", 1, 0, 1},
                {"arcsec(x)+a*arccotan(x)", 0, 2, 0}};
  for (const auto& c : kCases) {
    const Expression model = Compile({c.Text});
    EXPECT_EQ(CodeNotes(model, ExprType::C).size(), c.InC) << c.Text;
    EXPECT_EQ(CodeNotes(model, ExprType::Basic).size(), c.InBasic) << c.Text;
    EXPECT_EQ(SpreadsheetNotes(model).size(), c.InSpreadsheets) << c.Text;
  }
  EXPECT_NE(Source(Compile({"arcsec(x)*a"}), {1}, ExprType::Basic, "f")
                .find("'The function arcsec has other values here than in Quorvex.\r\n"),
            std::string::npos);
}

TEST(FunctionName, IsAllowedInBothLanguages) {
  const std::pair<const char*, const char*> names[] = {{"/home/me/My curve.v2.c", "My_curve"},
                                                       {"fit.bas", "fit"},
                                                       {"C:\\out\\2nd.c", "f2nd"},
                                                       {"_x.c", "f_x"},
                                                       {".c", "f_c"},
                                                       {"folder/", "f"}};
  for (const auto& [file, name] : names) EXPECT_EQ(FunctionName(file), name) << file;
}

constexpr std::pair<const char*, const char*> kClashes[] = {
    {"double*x1+for*x2+result*f1", "curve"},
    {"result*x1+result_1*x2+x*f1^1", "result"},
    {"maximum*x1+pow*x2+trunc*x3^1+max(x1,0)-x1+fix(x1)-x1", "exp"},
    {"a*x1+b*x2+c*x3", "if"},
    {"a*x1+b*x2+c*x3", "x"},
    {"a*x1+b*x2+c*x3", "sinf"},
    {"a*x1+b*x2+c*x3", "printf"},
    {"a*x1+b*x2+c*x3", "main"},
    {"a*x1+b*x2+c*f1", "F1"}};

// Compiles the exported functions with a C compiler, every warning an error, and runs them.
TEST(FunctionSource, GivesCThatComputesWhatTheProgramDoes) {
  const TemporaryFolder folder;
  const std::vector<double> Values = {1.5, -0.75};
  DataStatistics statistics;
  statistics.X[0].XMean = 2.5;
  statistics.InputYMin = -1;
  statistics.InputYMax = 3;
  std::string declarations = "#include <stdio.h>\n", calls, sources;
  std::vector<std::string> labels;
  std::vector<double> expected;
  int number = 0;
  for (const auto& row : TableRows("expressions_exported.txt", 4)) {
    const double first = Number(row[1]), last = Number(row[2]);
    const int points = std::stoi(row[3]);
    const Expression model = Compile({row[0], "a*x", "x-f1"});
    const std::vector<double> values(Values.begin(),
                                     Values.begin() + static_cast<std::ptrdiff_t>(model.CoefficientNames.size()));
    const std::string name = "model" + std::to_string(++number);
    sources += " " + folder.Write(name + ".c", Source(model, values, ExprType::C, name));
    declarations += "double " + name + "(double x);\n";
    Evaluator evaluator;
    for (int i = 0; i < points; ++i) {
      const double x = first + (last - first) * i / (points - 1);
      double y = NAN;
      evaluator.Evaluate(model, {&x, 1}, values, statistics, y);
      expected.push_back(y);
      labels.push_back(row[0] + " at " + GeneralNumber(x));
    }
    calls += "  for (int i = 0; i < " + row[3] + "; ++i) printf(\"%.17g\\n\", " + name + "(" + row[1] + " + (" +
             row[2] + " - " + row[1] + ") * (double)i / " + std::to_string(points - 1) + "));\n";
  }
  const Expression several = Compile({"a*x1-b*x2/x3"}, Dialect::SeveralVariables);
  sources += " " + folder.Write("several.c", Source(several, Values, ExprType::C, "several"));
  declarations += "double several(double x[]);\n";
  calls += "  { double x[] = {0, 2, 3, 5}; printf(\"%.17g\\n\", several(x)); }\n";
  expected.push_back(1.5 * 2 + 0.75 * 3 / 5);
  labels.push_back("several variables");
  // Names that clash with the export's own, with C's or with the variable: what they are is x1 + 2*x2 + 3*x3.
  for (const auto& [text, function] : kClashes) {
    const Expression model = Compile({text, "x3*1"}, Dialect::SeveralVariables);
    const std::string source = Source(model, {1, 2, 3}, ExprType::C, function);
    std::smatch found;
    ASSERT_TRUE(std::regex_search(source, found, std::regex("\ndouble (\\w+)\\(double \\w+\\[\\]\\)")));
    sources += " " + folder.Write("clash" + std::to_string(++number) + ".c", source);
    declarations += "double " + found[1].str() + "(double x[]);\n";
    calls += "  { double x[] = {0, 2, 3, 5}; printf(\"%.17g\\n\", " + found[1].str() + "(x)); }\n";
    expected.push_back(2 + 2 * 3 + 3 * 5);
    labels.push_back(text + std::string(" in ") + function);
    EXPECT_NE(source.find(" is taken, so it is written "), std::string::npos) << labels.back();
  }
  sources += " " + folder.Write("main.c", declarations + "int main(void) {\n" + calls + "  return 0;\n}\n");

  const std::string program = folder.Path("models");
  const std::string compile =
      "cc -std=c99 -Wall -Wextra -pedantic -Werror -o " + program + sources + " -lm >" + folder.Path("log") + " 2>&1";
  ASSERT_EQ(std::system(compile.c_str()), 0) << folder.Read("log");
  ASSERT_EQ(std::system((program + " >" + folder.Path("out")).c_str()), 0);
  const std::string output = folder.Read("out");
  std::string_view rest = output;
  std::size_t compared = 0;
  for (std::size_t i = 0; i < expected.size(); ++i) {
    double value = NAN;
    const std::size_t length = LeadingNumber(TakeLine(rest), value);
    if (std::isnan(expected[i])) continue;
    ASSERT_NE(length, 0u) << labels[i];
    ++compared;
    EXPECT_NEAR(value, expected[i], 1e-13 * std::max(1.0, std::abs(expected[i]))) << labels[i];
  }
  EXPECT_GT(compared, 36000u);
}

// Every word of the language in the library of each export.
TEST(CodeLibrary, DefinesEveryFunctionThatTheTargetLacks) {
  std::vector<std::string> words;
  for (const IntrinsicFunction& function : IntrinsicFunctions())
    if (function.Word != WrittenIn::NoModel) words.emplace_back(function.Name);
  words.push_back("sec");  // a repetition
  std::string basic, inC;
  WriteBasicLibrary(words, basic);
  WriteCLibrary(words, inC);
  ExpectGolden("FunctionLibrary.bas", basic);
  ExpectGolden("FunctionLibrary.c", inC);

  // What the user must supply compiles as it is, without a warning, and shows that it is missing by NaN.
  std::string text = "#include <math.h>\n";
  WriteCPrototypes(words, text);
  text += inC + "int main(void) {\n  int numbers = 0;\n";
  for (const std::string& word : words) {
    const CodeFunction& function = FindCodeFunction(word);
    if (!function.C.empty() || !function.CBody.empty()) continue;
    const char* arguments[] = {"(0.5)", "(1, 0.5)", "(1, 1, 0.5)"};
    text += "  numbers += !isnan(" + word + arguments[FindFunction(word)->Arguments - 1] + ");\n";
  }
  const TemporaryFolder folder;
  const std::string source = folder.Write("library.c", text + "  return numbers;\n}\n");
  // The helpers are called by nobody here. The first line is the compiler as it comes, with a C library's j0 and jn.
  for (const char* flags : {"-c -Werror", "-std=c99 -Wall -Wextra -Wno-unused-function -pedantic -Werror"}) {
    const std::string compile = std::string("cc ") + flags + " -o " + folder.Path("library") + " " + source + " -lm >" +
                                folder.Path("log") + " 2>&1";
    ASSERT_EQ(std::system(compile.c_str()), 0) << flags << "\n" << folder.Read("log");
  }
  EXPECT_EQ(std::system(folder.Path("library").c_str()), 0);
}

// The BASIC bodies of one line are computed by our own evaluator, "arg" being a coefficient, against the functions
// that they stand for. BASIC's own texts of arcsec, arccosec and arccotan have other values and are left out.
TEST(CodeLibrary, HasBasicBodiesThatComputeTheirFunction) {
  const struct {
    const char* Word;
    double At[2];
  } cases[] = {
      {"ln", {0.1, 30}},         {"log10", {0.1, 30}},   {"arcsin", {-0.5, 0.25}},  {"arccos", {-0.5, 0.25}},
      {"arctan", {-5, 0.25}},    {"sec", {-2, 2}},       {"cosec", {-2, 2}},        {"cotan", {-2, 2}},
      {"hsin", {-2, 2}},         {"hcos", {-2, 2}},      {"htan", {-2, 2}},         {"hsec", {-2, 2}},
      {"hcosec", {-2, 2}},       {"hcotan", {-2, 2}},    {"harcsin", {-2, 2}},      {"harccos", {1.5, 3}},
      {"harctan", {-0.5, 0.75}}, {"harcsec", {0.25, 1}}, {"harccosec", {-0.25, 4}}, {"harccotan", {-3, 2}},
      {"rtod", {-3, 3}},         {"dtor", {-3, 200}},    {"floor", {-2.5, 2.5}},    {"ceil", {-2.5, 2.5}},
      {"fract", {-2.25, 2.25}},
  };
  for (const auto& c : cases) {
    std::string body(FindCodeFunction(c.Word).BasicBody);
    const std::string head = std::string(c.Word) + " = ";
    ASSERT_TRUE(body.starts_with(head)) << body;
    body = std::regex_replace(body.substr(head.size()), std::regex("#|cdbl"), "");
    body = std::regex_replace(body, std::regex("atn"), "arctan");
    const Expression compiled = Compile({body});
    for (const double x : c.At) {
      double value = NAN;
      ASSERT_TRUE(Evaluator().Evaluate(compiled, {}, {&x, 1}, {}, value)) << c.Word << " at " << x;
      EXPECT_NEAR(value, Value(c.Word, {x}), 1e-13 * std::max(1.0, std::abs(value))) << c.Word << " at " << x;
    }
  }
}

}  // namespace
}  // namespace quorvex
