#include "code/check/CodeCases.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "code/CodeLanguage.h"
#include "core/NumberText.h"
#include "engine/EqClass.h"
#include "engine/MvClass.h"
#include "equation/Catalogue.h"
#include "equation/IntrinsicFunctions.h"
#include "equation/Parser.h"

namespace quorvex {
namespace {

constexpr std::size_t kPoints = 20;
constexpr double kRounding = 1e-12;
// What the program's own approximations of special functions promise.
constexpr double kApproximation = 1e-7;

struct Row {
  std::vector<std::string> Lines;  // the model, F1, F2, ...
  double First = -3.7, Last = 4.1;
};

const Row kOneVariable[] = {
    {{"a-(b-x)+(a+(b-x))-(-x)"}},
    {{"a/(b*x)/(x/b)*(a/(x*x))"}},
    {{"a*-x--x+(-(-x))*-a"}},
    {{"-x^2+(-x)^2-2^-x"}},
    {{"a^b^x+(a^b)^x+a^(b^x)"}},
    {{"a^-b^x*-x"}},
    {{"1E-9*x+1e9*a-.5*b"}},
    {{"x mod 3+10*(x\\2)"}, -20.25, 20.5},
    {{"7.5\\x+7.5 mod x+a*x\\2*3"}, -9.5, 9.5},
    {{"-x mod 3-x\\-2 mod 2"}, -8.5, 9},
    {{"(x<2)+(x<=2)*2+(x>2)*4+(x>=2)*8+(x=2)*16+(x<>2)*32"}, -7, 12},
    {{"((x>-1) and (x<3))+2*((x<0) or (x>2))+4*(not (x>1))"}},
    {{"(x and 6)+100*(x or 9)+1E4*(x xor 5)"}, -40.5, 54.5},
    {{"(x eqv 5)+100*(x imp 5)+1E4*(not x)"}, -40.5, 54.5},
    {{"((x>1) xor (x<3))+2*((x>1) eqv (x<3))+4*((x>1) imp (x<3))+8*((x>1) and x)"}},
    {{"(a<x)<b"}},
    {{"(a<x)+((x<b)=(x<a))+(-(x<b))^2"}},
    {{"if(x>2,a*x,b-x)*if((x<0) and (x>-2),a,b)"}},
    {{"if(x,1,2)+if(x>0,a>x,if(x<-1,x<-2,7))"}, -10, 9},
    {{"if(x>0,sqr(x),if(x<-1,ln(-x-1),1/x))"}},
    {{"if(x>0,f1,-1)", "ln(x)"}},
    {{"f1+if(x>0,f1*f2,f1-1)", "a+abs(x)", "ln(f3)", "x*x"}},
    {{"f1+if(f2>a,f2,f1)+f2", "2*x", "if(x>0,f1,f3)", "x<b"}},
    {{"f9-f8*f1", "x", "f1+1", "f2*f1", "f3-f2", "f4+f3", "f5*.5", "f6+f1", "f7/3", "f8-f7"}},
    {{"max(a,min(x,b))+mag(x,a)*sgn(x)-fract(x)+fix(x)+int(x)+ceil(x)+floor(x)"}},
    {{"fact(x+4)+psi(x+6)+2.5 mod 2+3.5\\1"}},
    {{"a*xmean+x/xstd+ymax-ymin*xrange+xatymin"}},
    {{"class*x+lambda+function*whole-TRUE"}},
    {{"A*a+x*F+T-fn*let+const^2+end*e-E*i"}},
    {{"f*y+result*value-math+Math*special+pi+self*impl+use+mut*x"}},
    {{"f1+part1*if(x>0,f1,part2)", "if(x<1,a,sqr(x))"}},
    {{"rnd(-1)+rnd(0)*x+rnd(1)"}},
};
const Row kSeveralVariables[] = {
    {{"a*x1+b*x3"}},
    {{"x1^2-x2*x3 mod 2+if(x1>x2,x3,x1mean)"}},
    {{"x*x1+X*x2+f1*x3/ystd", "x2std-x"}},
};

// The domain of a function is found by trying.
std::string CallOf(const IntrinsicFunction& function) {
  const std::string name(function.Name);
  if (function.Arguments == 1) return name + "(x)";
  const bool isWhole = std::string_view("in kn sphjn sphyn dsphjn dsphyn yn jn").find(name) != std::string_view::npos;
  if (function.Arguments == 2) return name + (isWhole ? "(3,x)+" + name + "(0,x)+" + name + "(1,x)" : "(1.75,x)");
  if (name == "legendre") return "legendre(4,3,x)+legendre(5,0,x)";
  return name + (name == "binomial" ? "(2,5,x)" : "(2.5,3,x)");
}

bool IsApproximate(const IntrinsicFunction& function) {
  const std::string_view name = function.Name;
  return function.Code >= 38 && function.Code < 90 && name != "max" && name != "min" && name != "mag";
}

void FillPoints(CodeCase& test, double first, double last) {
  test.X.clear();
  test.Y.clear();
  for (std::size_t i = 0; i < kPoints; ++i) {
    std::vector<double> x;
    for (int v = 0; v < test.Model->NumIndependentVar(); ++v) {
      const auto step = static_cast<double>((i * (1 + 2 * static_cast<std::size_t>(v))) % kPoints);
      x.push_back(first + (last - first) * step / (kPoints - 1));
    }
    double y = 0;
    if (!test.Model->Evaluate(x, y)) continue;
    test.X.push_back(std::move(x));
    test.Y.push_back(y);
  }
}

// Takes the first coefficients with which the model has a value at most points, and which tell them apart.
void FillCatalogueCase(CodeCase& test) {
  CodeCase best;
  std::vector<double> bestValues;
  for (int attempt = 0; attempt < 12 && test.X.size() < kPoints; ++attempt) {
    for (int i = 1; i <= test.Model->NumDependentVar(); ++i)
      test.Model->SetValue(
          i, (0.7 + 0.3 * ((i * 3 + attempt) % 5)) * (attempt % 3 == 1 && i % 2 == 0 ? -1 : 1) / (attempt > 5 ? 8 : 1));
    const double first = attempt % 2 == 0 ? 0.3 : 1.2;
    FillPoints(test, first, first + 2.6);
    if (test.X.size() <= best.X.size()) continue;
    best.X = test.X;
    best.Y = test.Y;
    bestValues = test.Model->CoefficientValues;
  }
  test.X = best.X;
  test.Y = best.Y;
  if (!bestValues.empty()) test.Model->CoefficientValues = bestValues;
}

std::unique_ptr<ModelClass> UserModel(const Row& row, bool several) {
  std::unique_ptr<ModelClass> model;
  if (several)
    model = std::make_unique<MvClass>(LocaleText());
  else
    model = std::make_unique<EqClass>(LocaleText());
  model->SetID(row.Lines[0], row.Lines);
  model->cfgID = "\"\"\"*/ ' \\ \xC3\xA9\n--> %> end #= =# $(rm) {{ " + row.Lines[0] + " \\";
  for (int i = 1; i <= model->NumDependentVar(); ++i) model->SetValue(i, 0.6 + 0.35 * i);
  model->Statistics.X.assign(several ? 3 : 1, {.InputXMin = -1,
                                               .InputXMax = 4,
                                               .XMean = 1.25,
                                               .XStd = 0.75,
                                               .XAtYMin = -2,
                                               .XAtYMax = 3,
                                               .YAtXMin = 5,
                                               .YAtXMax = 7});
  model->Statistics.InputYMin = -3;
  model->Statistics.InputYMax = 8.5;
  model->Statistics.YStd = 1.5;
  return model;
}

// Lines of a title. The first is one that Python looks for in the first two lines of a file.
const std::string kTitles[] = {
    "-*- coding: no-such-code -*- coding=none",
    "\"\"\" \'\'\' ` */ /* =# #= --> ]]> <![CDATA[ </script> ${x} #{x} $(rm) %{ %} {% {{ <% ?> ...",
    "%{\n{\n%}\n#=\n!$omp parallel\n&\n#!\n//\n=1+1\n\\\n\\\n...\n!test\n![no_std]\n/ doc\nline 1 \"x\"",
    "\\end{document} \\input{none} ^^M ^^5c % & # _ ~ { } $ \\undefined \\",
    "one\nimport none\rstop\r\n}\nend\xE2\x80\xA8stop(1)\xE2\x80\xA9stop(2)\xC2\x85stop(3)\x0Bstop\x0Cstop",
    "\x01\x02\x1A\x1B[2J\x08\x7F\t\xC2\x9B",
    "\xE2\x80\xAE\xE2\x81\xA6\xE2\x80\x8F \xC3\xA4\xC3\xB6\xC3\xBC \xE2\x82\xAC \xE2\x81\xA9\xE2\x80\xAC\xEF\xBB\xBF",
    "\xFF\xFE \xE4 \xC3 \xED\xA0\x80 \xF5\x80\x80\x80",
    std::string(10'000, 'w'),
    "",
};

// Names that programs of many languages have for something, beside those that a language keeps for itself.
constexpr std::string_view kNames =
    "a x_ y z I J T c C_ e_ pi_ None nil NULL NaN NA Inf inf eps ans end fn lambda self this super new def list len "
    "str "
    "sum range print input open write read data df t q Some Ok Err Vec Box String panic println format u8 usize bool "
    "char console process Object Array Function Date JSON length prototype __proto__ constructor eval nargin nargout "
    "varargin ones zeros disp ones kind parameter program implicit real integer logical complex character common block "
    "include intent save target pointer where forall elseif elsewhere entry equivalence go to goto assign allocate "
    "model result value number call test tests assert Base Main Core missing nothing isnothing let mut im sheet A1 B2 "
    "R1C1 TRUE_ row column frac left right begin document mathrm int prod F1_ part1 f f_code";

constexpr double kScales[] = {1e-300,
                              1e300,
                              -0.0,
                              9007199254740993.0,
                              9007199254740991.0,
                              -123456789012345680.0,
                              4294967296.0,
                              1e15,
                              1e21,
                              1e22,
                              4.9406564584124654e-324,
                              2.2250738585072009e-308,
                              2.2250738585072014e-308,
                              -1.7976931348623157e308,
                              0.1,
                              1.0 / 3,
                              5e-5,
                              1.0000000000000002,
                              123456.78901234567,
                              -9.999999999999999e22};

// Gives one coefficient a point, and behind them one number of the model a point.
CodeCase ScaleCase(bool asNumbers) {
  CodeCase test{asNumbers ? "literals" : "scales", nullptr, {}, {}, 0};
  std::string line = "0", name = "aa";
  for (std::size_t i = std::size(kScales); i-- > 0; ++name[1]) {
    const std::string number = ShortestNumber(std::abs(kScales[i]));
    line = "if(x=" + std::to_string(i) + "," + (asNumbers ? number + "*k" : name) + "," + line + ")";
  }
  test.Model = std::make_unique<EqClass>(LocaleText());
  test.Model->SetID(line, {line});
  for (std::size_t i = 0; i < std::size(kScales); ++i) {
    if (asNumbers) test.Model->SetValue(1, 1);
    const auto count = static_cast<int>(std::size(kScales));
    if (!asNumbers) test.Model->SetValue(count - static_cast<int>(i), kScales[i]);
    test.X.push_back({static_cast<double>(i)});
    test.Y.push_back(asNumbers ? std::abs(kScales[i]) : kScales[i]);
  }
  return test;
}

}  // namespace

std::vector<CodeCase> ProofCases() {
  std::vector<CodeCase> cases;
  const auto add = [&](const std::string& function, const std::string& line, const std::string& title) {
    cases.push_back({function, UserModel({{line}}, false), {{1.25}}, {0}, kRounding});
    cases.back().Model->cfgID = title;
    if (!cases.back().Model->Evaluate(cases.back().X[0], cases.back().Y[0])) cases.back().Y[0] = NAN;
  };
  std::string all;
  for (const std::string& title : kTitles) all += title + "\n";
  for (const std::string& title : {all, kTitles[7], kTitles[8], kTitles[9]})
    add("title" + std::to_string(cases.size()), "a+b*x", title);
  for (const char* function : {"for", "End", "print", "main", "F64", "exp", "x", "y", "f_code", "result", "check"})
    add(function, "a+b*exp(x)", function);

  // Whatever is no coefficient, but a word of the equation language, is left out, and "endif", which disturbs an "if".
  std::set<std::string> words;
  const auto take = [&](std::string_view word) {
    const Expression alone = Parser(Dialect::OneVariable, {}).Compile({std::string(word) + "*x"});
    if (!alone.ParseError && alone.CoefficientNames.size() == 1 && word != "endif")
      words.insert(alone.CoefficientNames[0]);
  };
  for (const CodeLanguage* language : CodeLanguages()) {
    for (const std::string_view word : language->Reserved) take(word);
    for (const CodeDefinition& definition : language->Definitions) take(definition.Name);
  }
  for (std::string_view rest = kNames; !rest.empty();) {
    const std::string_view word = rest.substr(0, rest.find(' '));
    take(word);
    rest.remove_prefix(std::min(rest.size(), word.size() + 1));
  }
  std::string line;
  std::size_t count = 0;
  for (const std::string& word : words) {
    line += (line.empty() ? "" : "+") + word + "*x";
    if (++count % 40 != 0 && count < words.size()) continue;
    add("names" + std::to_string(count), line + "+if((x)mod(2)>0,whole_1*x,exp(x))", "");
    line.clear();
  }
  return cases;
}

std::vector<CodeCase> CodeCases() {
  std::vector<CodeCase> cases;
  const auto add = [&](const std::string& name, std::unique_ptr<ModelClass> model, double limit) -> CodeCase& {
    cases.push_back({name, std::move(model), {}, {}, limit});
    return cases.back();
  };
  for (const CatalogueModel& row : Catalogue(1)) {
    auto model = std::make_unique<EqClass>(LocaleText());
    model->SetBuiltIn(row);
    FillCatalogueCase(add("builtin" + std::to_string(row.IDIndex), std::move(model), kRounding));
  }
  for (const IntrinsicFunction& function : IntrinsicFunctions()) {
    if (!function.Call) continue;
    const double limit = IsApproximate(function) ? kApproximation : kRounding;
    CodeCase& test = add("function_" + std::string(function.Name), UserModel({{CallOf(function)}}, false), limit);
    FillPoints(test, -2.48, 3.1);
    for (const auto& [first, last] : {std::pair{0.13, 0.97}, {1.2, 9.0}}) {
      if (test.X.size() < kPoints) FillPoints(test, first, last);
    }
  }
  int number = 0;
  const auto addRow = [&](const Row& row, bool several) {
    CodeCase& test = add("model" + std::to_string(++number), UserModel(row, several), kRounding);
    FillPoints(test, row.First, row.Last);
  };
  for (const Row& row : kOneVariable) addRow(row, false);
  for (const Row& row : kSeveralVariables) addRow(row, true);
  for (const bool asNumbers : {false, true}) cases.push_back(ScaleCase(asNumbers));
  return cases;
}

}  // namespace quorvex
