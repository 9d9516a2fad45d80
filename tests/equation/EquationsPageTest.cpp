// The manual's page of the equation language against the language: docs/equations.md.

#include <gtest/gtest.h>

#include <cstdio>
#include <regex>

#include "Paths.h"
#include "core/Files.h"
#include "core/NumberText.h"
#include "equation/Compile.h"
#include "equation/Evaluator.h"

namespace quorvex {
namespace {

using Cells = std::vector<std::string>;

// The cells of each line of a table.
std::vector<Cells> TableRows() {
  WholeFile file;
  EXPECT_EQ(file.Read(TestData("../../docs/equations.md")), 0);
  std::vector<Cells> rows;
  std::istringstream lines{std::string(file.Text())};
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with("|")) continue;
    Cells cells;
    std::istringstream parts(line.substr(1));
    for (std::string cell; std::getline(parts, cell, '|');) cells.emplace_back(Trim(cell));
    rows.push_back(cells);
  }
  return rows;
}

std::string Unquoted(const std::string& cell) {
  return cell.size() > 2 && cell.front() == '`' && cell.find('`', 1) == cell.size() - 1
             ? cell.substr(1, cell.size() - 2)
             : "";
}

// As the page writes it: six digits; "none" where there is no value.
std::string ValueOf(const std::string& formula) {
  const Expression expression = Compile({formula + "+0*x*a"});
  double y = 0;
  const double x[] = {1}, values[] = {1};
  if (!Evaluator().Evaluate(expression, x, values, {}, y)) return "none";
  char text[32];
  std::snprintf(text, sizeof text, "%.6G", y + 0.0);
  return text;
}

TEST(EquationsPage, GivesTheValuesOfItsExamples) {
  int examples = 0;
  for (const Cells& row : TableRows()) {
    const std::string example = row.size() < 3 ? "" : Unquoted(row[row.size() - 2]);
    if (example.empty() || !NumericText(row.back())) continue;
    ++examples;
    EXPECT_EQ(ValueOf(example), row.back()) << example;
  }
  EXPECT_GT(examples, 80);
}

struct Call {
  std::string Name;
  Cells Arguments;
};

// The calls in a cell such as "`chi2(c,v)`, `chi2c(c,v)`".
std::vector<Call> Calls(const std::string& cell) {
  std::vector<Call> calls;
  const std::regex call("`(\\w+)\\(([\\w,]+)\\)`");
  for (std::sregex_iterator found(cell.begin(), cell.end(), call), end; found != end; ++found) {
    Cells arguments;
    std::istringstream parts((*found)[2]);
    for (std::string argument; std::getline(parts, argument, ',');) arguments.push_back(argument);
    calls.push_back({(*found)[1], arguments});
  }
  return calls;
}

std::string Written(const std::string& name, const Cells& values) {
  std::string text = name + '(';
  for (const std::string& value : values) text += (text.back() == '(' ? "" : ",") + ("(0+(" + value + "))");
  return text + ')';
}

// Inside the limit of an argument that the domain names there is a value, and beyond it there is none.
void ExpectDomain(const Call& call, const Cells& example, const std::string& domain, bool whole) {
  const std::regex limit("(\\w+) (>=|<=|<>|>|<) (-?[\\w.]+)");
  for (std::sregex_iterator found(domain.begin(), domain.end(), limit), end; found != end; ++found) {
    const auto valueOf = [&](const std::string& name) {
      const auto at = std::ranges::find(call.Arguments, name);
      return at == call.Arguments.end() ? name : example[static_cast<std::size_t>(at - call.Arguments.begin())];
    };
    const auto argument = std::ranges::find(call.Arguments, std::string((*found)[1]));
    ASSERT_NE(argument, call.Arguments.end()) << call.Name << ": " << found->str();
    const std::string relation = (*found)[2];
    const double bound = std::stod(valueOf((*found)[3]));
    const double step = whole ? std::max(1.0, std::abs(bound) / 50) : 0.02 * std::max(1.0, std::abs(bound));
    Cells values = example;
    const auto at = [&](double value) {
      values[static_cast<std::size_t>(argument - call.Arguments.begin())] = GeneralNumber(value);
      return ValueOf(Written(call.Name, values)) != "none";
    };
    EXPECT_EQ(at(bound), relation.back() == '=') << call.Name << " at " << found->str();
    if (relation != "<>") {
      EXPECT_FALSE(at(relation[0] == '>' ? bound - step : bound + step)) << call.Name << " beyond " << found->str();
    }
  }
}

TEST(EquationsPage, HasEveryFunctionWithItsArgumentsAndDomain) {
  std::map<std::string, int> told;
  for (const Cells& row : TableRows()) {
    if (row.size() != 5) continue;
    for (const Call& call : Calls(row[0])) {
      ++told[call.Name];
      const IntrinsicFunction* function = FindFunction(call.Name);
      ASSERT_TRUE(function != nullptr && function->Word != WrittenIn::NoModel) << call.Name;
      EXPECT_EQ(call.Arguments.size(), static_cast<std::size_t>(function->Arguments)) << call.Name;
      if (row[2] == "any") continue;
      Cells values;
      std::istringstream parts(row[3].substr(row[3].find('(') + 1));
      for (std::string value; std::getline(parts, value, ',');) values.push_back(value.substr(0, value.find(')')));
      ASSERT_EQ(values.size(), call.Arguments.size()) << row[3];
      EXPECT_NE(ValueOf(Written(call.Name, values)), "none") << call.Name;
      ExpectDomain(call, values, row[2], row[1].find("(*n*)") != std::string::npos);
    }
  }
  for (const IntrinsicFunction& function : IntrinsicFunctions())
    EXPECT_EQ(told[std::string(function.Name)], function.Word != WrittenIn::NoModel) << function.Name;
}

}  // namespace
}  // namespace quorvex
