// What scripts/code-check.sh needs: "write FOLDER" makes a folder for each language, with the code of all cases, a
// program that prints their values, and what these are to be; "compare FOLDER" compares what was printed into
// values.txt there, and prints a line of the table.

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>
#include <string>

#include "code/CodeLanguage.h"
#include "code/CodeModel.h"
#include "code/check/CodeCases.h"
#include "core/NumberText.h"

namespace quorvex {
namespace {

// A program that takes the function NAME from a file each, and prints "NAME POINT VALUE" a call.
struct Driver {
  std::string_view Extension;  // of the language, as the folder is called
  std::string_view File;
  std::string_view Head;
  std::string_view Load;  // $1 is the model's name
  std::string_view Start;
  std::string_view Show;  // $1: the name, $2: the point's number, $3: the call
  std::string_view End;
};

constexpr Driver kDrivers[] = {
    {"py", "check.py",
     "def show(name, point, call):\n"
     "    try:\n"
     "        print(name, point, repr(float(call())))\n"
     "    except Exception as fault:\n"
     "        print(name, point, type(fault).__name__)\n\n\n",
     "from $1 import $1\n", "", "show(\"$1\", $2, lambda: $3)\n", ""},
    {"r", "check.r",
     "show <- function(name, point, value)\n"
     "    cat(name, point, sprintf(\"%.17g\", tryCatch(value, error = function(fault) NaN)), \"\\n\")\n",
     "source(\"$1.r\")\n", "", "show(\"$1\", $2, $3)\n", ""},
    {"js", "check.js",
     "function show(name, point, call) {\n"
     "    let value;\n"
     "    try { value = call(); } catch (fault) { value = fault.name; }\n"
     "    console.log(name, point, Object.is(value, -0) ? \"-0\" : String(value));\n"
     "}\n",
     "const { $1 } = require(\"./$1.js\");\n", "", "show(\"$1\", $2, () => $3);\n", ""},
    {"m", "check_all.m", "1;\n", "",
     "function show(name, point, call)\n"
     "  try\n"
     "    value = call();\n"
     "  catch\n"
     "    value = NaN;\n"
     "  end\n"
     "  printf('%s %d %.17g\\n', name, point, value);\n"
     "end\n",
     "show('$1', $2, @() $3)\n", ""},
    {"jl", "check.jl",
     "function show_value(name, point, call)\n"
     "    value = try call() catch; NaN end\n"
     "    println(name, \" \", point, \" \", Float64(value))\n"
     "end\n",
     "module file_$1\ninclude(\"$1.jl\")\nend\n", "", "show_value(\"$1\", $2, () -> file_$1.$3)\n", ""},
    {"rs", "check.rs",
     "#![allow(dead_code, unused)]\n"
     "fn show(name: &str, point: usize, value: f64) { println!(\"{} {} {:?}\", name, point, value); }\n",
     "mod $1;\n", "fn main() {\n", "    show(\"$1\", $2, $1::$3);\n", "}\n"},
    {"f90", "check.f90", "program check\n", "  use $1_code\n", "  implicit none\n",
     "  print '(a, i0, a, es24.16e3)', '$1 ', $2, ' ', $3\n", "end program check\n"},
};

std::string Filled(std::string_view text, std::initializer_list<std::string> values) {
  std::string filled;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '$')
      filled += values.begin()[text[++i] - '1'];
    else
      filled += text[i];
  }
  return filled;
}

void WriteLanguage(const std::vector<CodeCase>& cases, const Driver& driver, const CodeLanguage& language,
                   const std::filesystem::path& folder) {
  create_directories(folder);
  std::ofstream expected(folder / "expected.txt");
  std::string loads, shows;
  for (const CodeCase& test : cases) {
    CodeModel model = DescribeForCode(*test.Model);
    if (!test.X.empty()) model.Proof = CodeProof{test.X[test.X.size() / 2], test.Y[test.X.size() / 2]};
    const CodeBody body = GenerateBody(model, language, test.Name);
    if (!body.Missing.empty()) {
      expected << test.Name << " missing\n";
      continue;
    }
    std::ofstream(folder / (test.Name + "." + std::string(language.Extension)))
        << WriteCode(model, language, test.Name);
    loads += Filled(driver.Load, {test.Name});
    for (std::size_t i = 0; i < test.X.size(); ++i) {
      model.Proof = CodeProof{test.X[i], test.Y[i]};
      shows += Filled(driver.Show, {test.Name, std::to_string(i), ProofCall(model, body, language)});
      expected << test.Name << ' ' << i << ' ' << ShortestNumber(test.Y[i]) << ' ' << test.Limit << '\n';
    }
  }
  std::ofstream(folder / driver.File) << driver.Head << loads << driver.Start << shows << driver.End;
}

// The formula for row 2 as it is in another one, as copying it down would make it.
std::string InRow(std::string_view formula, const std::string& row) {
  const auto isWord = [&](std::size_t i) {
    return i < formula.size() && std::isalnum(static_cast<unsigned char>(formula[i])) != 0;
  };
  std::string text;
  for (std::size_t i = 0; i < formula.size(); ++i) {
    const bool isCell = formula[i] == '2' && i > 0 && formula[i - 1] >= 'A' && formula[i - 1] <= 'T' &&
                        !isWord(i + 1) && (i == 1 || !isWord(i - 2));
    text += isCell ? row : std::string(1, formula[i]);
  }
  return text;
}

// A sheet with a point a row: its variables from A on, the formula in D, the model's name and the point's number.
void WriteSheet(const std::vector<CodeCase>& cases, const CodeLanguage& language, const std::filesystem::path& folder) {
  create_directories(folder);
  std::ofstream expected(folder / "expected.txt"), sheet(folder / "check.csv");
  std::size_t row = 0;
  for (const CodeCase& test : cases) {
    const CodeBody body = GenerateBody(DescribeForCode(*test.Model), language, test.Name);
    if (!body.Missing.empty() || !body.Unset.empty() || body.TooLong) {
      expected << test.Name << " missing\n";
      continue;
    }
    for (std::size_t i = 0; i < test.X.size(); ++i) {
      for (std::size_t v = 0; v < 3; ++v) sheet << ShortestNumber(v < test.X[i].size() ? test.X[i][v] : 0) << ',';
      sheet << "\"=" << InRow(body.Result, std::to_string(++row)) << "\"," << test.Name << ',' << i << '\n';
      expected << test.Name << ' ' << i << ' ' << ShortestNumber(test.Y[i]) << ' ' << std::max(test.Limit, 1e-14)
               << '\n';
    }
  }
}

// Files to be run by themselves, each called like its function.
void WriteProofs(const std::vector<CodeCase>& cases, const CodeLanguage& language,
                 const std::filesystem::path& folder) {
  create_directories(folder);
  std::ofstream expected(folder / "expected.txt");
  for (const CodeCase& test : cases) {
    CodeModel model = DescribeForCode(*test.Model);
    model.Proof = CodeProof{test.X[0], test.Y[0]};
    const CodeBody body = GenerateBody(model, language, test.Name);
    std::ofstream(folder / (body.Function + "." + std::string(language.Extension)))
        << WriteCode(model, language, test.Name);
    expected << body.Function << " 0 " << ShortestNumber(test.Y[0]) << ' ' << test.Limit << '\n';
  }
}

int Write(const std::filesystem::path& folder) {
  const std::vector<CodeCase> cases = CodeCases(), proofs = ProofCases();
  for (const CodeLanguage* language : CodeLanguages())
    WriteProofs(proofs, *language, folder / std::string(language->Extension) / "proof");
  for (const Driver& driver : kDrivers)
    if (const CodeLanguage* language = LanguageOfFile("a." + std::string(driver.Extension)))
      WriteLanguage(cases, driver, *language, folder / driver.Extension);
  if (const CodeLanguage* language = LanguageOfFile("a.txt")) WriteSheet(cases, *language, folder / "txt");
  return EXIT_SUCCESS;
}

int Compare(const std::filesystem::path& folder) {
  std::map<std::string, std::string> values;
  std::ifstream printed(folder / "values.txt");
  for (std::string line; std::getline(printed, line);) {
    std::istringstream fields(line);
    std::string name, point, value;
    if (fields >> name >> point >> value) values[name + " " + point] = value;
  }
  std::ifstream expected(folder / "expected.txt");
  std::map<std::string, int> models;
  std::size_t missing = 0, compared = 0, wrong = 0;
  double worst = 0;
  for (std::string line; std::getline(expected, line);) {
    std::istringstream fields(line);
    std::string name, point;
    double value = 0, limit = 0;
    fields >> name >> point;
    if (point == "missing") {
      ++missing;
      continue;
    }
    fields >> value >> limit;
    ++models[name];
    ++compared;
    const std::string text = values[name + " " + point];
    const double other = NumericText(text).value_or(NAN);
    // Near its zeros an approximation is as far off as elsewhere.
    const double scale = limit > 1e-12 ? std::max(std::abs(value), 0.1) : std::abs(value);
    const bool isSame = other == value && (limit > 0 || std::signbit(other) == std::signbit(value));
    const double error = isSame ? 0 : std::abs(other - value) / scale;
    if (error <= limit) {
      if (limit <= 1e-12) worst = std::max(worst, error);
      continue;
    }
    ++wrong;
    std::cerr << name << " at point " << point << ": " << (text.empty() ? "nothing" : text) << " for "
              << ShortestNumber(value) << '\n';
  }
  std::printf("%6zu models %6zu values   largest difference %.1e   %zu not expressible   %zu wrong\n", models.size(),
              compared, worst, missing, wrong);
  return wrong == 0 && compared > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace
}  // namespace quorvex

int main(int argc, char** argv) {
  const std::string_view command = argc == 3 ? argv[1] : "";
  if (command == "write") return quorvex::Write(argv[2]);
  if (command == "compare") return quorvex::Compare(argv[2]);
  std::cerr << "usage: code_check write|compare FOLDER\n";
  return EXIT_FAILURE;
}
