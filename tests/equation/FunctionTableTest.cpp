#include <gtest/gtest.h>

#include <sstream>

#include "TableFile.h"
#include "core/NumberText.h"
#include "equation/Checked.h"

namespace quorvex {
namespace {

// The most that a word's values may differ from the table, relative. 1e-7 is promised; only where published
// approximations and constants of 8 digits stand is it used up.
double LimitOf(std::string_view word) {
  const int code = FindFunction(word)->Code;
  if (code < 36) return 5e-16;    // elementary
  if (code < 38) return 1.5e-15;  // rtod and dtor have the program's pi
  if (word == "mag") return 4e-16;
  if (word == "legendre") return 1e-11;  // some l roundings
  if (code >= 55 && code < 59 && word != "in") return 1e-7;
  if (code >= 78 && code < 82) return 1e-7;  // polynomials of j0, y0 and their kin
  if (word == "k0" || word == "k1") return 1e-7;
  if (code >= 67 && code < 71) return 5e-8;  // sqrt(pi/2)
  if (code >= 86 && code < 90) return 5e-8;  // the values at 0
  const bool probability = code == 38 || code == 39 || (code >= 48 && code < 55) || (code >= 75 && code < 78);
  if (probability) return 5e-11;
  return 1e-9;  // gammln
}

// Values of all functions over their domains: magnitudes from 1e-300 to 1e300, both signs, and the joins of methods.
TEST(FunctionTable, AgreesWithEveryFunctionOverItsDomain) {
  std::ifstream table(TestData("functions.txt"));
  std::map<std::string, int> rows;
  for (std::string line; std::getline(table, line);) {
    std::istringstream fields(line);
    std::string word;
    fields >> word;
    const IntrinsicFunction* function = FindFunction(word);
    ASSERT_NE(function, nullptr) << line;
    double numbers[5] = {};
    int count = 0;
    for (std::string field; count < 5 && fields >> field; ++count) numbers[count] = std::stod(field);
    ASSERT_GT(count, function->Arguments) << line;
    const double reference = numbers[function->Arguments];
    const double modulus = count > function->Arguments + 1 ? numbers[function->Arguments + 1] : std::abs(reference);
    const double value = Checked(*function, numbers).value_or(NAN);
    EXPECT_NEAR(value, reference, LimitOf(word) * modulus) << line;
    ++rows[word];
  }
  for (const auto& function : IntrinsicFunctions()) {  // but those of whole numbers, signs and chance
    const bool exact = function.Code < 6 || function.Code == 9 || function.Code == 10 || !function.Call ||
                       function.Name == "max" || function.Name == "min" || function.Code > 89;
    EXPECT_EQ(rows.contains(std::string(function.Name)), !exact || function.Name == "exp") << function.Name;
  }
}

std::optional<double> ValueIn(const std::vector<std::string>& row) {
  std::vector<double> arguments = Numbers(row[1]);
  EXPECT_EQ(static_cast<int>(arguments.size()), FindFunction(row[0])->Arguments) << row[0] << " " << row[1];
  return Checked(*FindFunction(row[0]), arguments.data());
}

TEST(FunctionTable, AgreesWithClosedFormsAndPublishedValues) {
  for (const auto& row : TableRows("function_values.txt", 4)) {
    const double reference = Number(row[2]), scale = reference == 0 ? 1 : std::abs(reference);
    EXPECT_NEAR(ValueIn(row).value_or(NAN), reference, Number(row[3]) * scale) << row[0] << " " << row[1];
  }
}

TEST(FunctionTable, HasNoValueBeyondAFunctionsDomain) {
  for (const auto& row : TableRows("function_faults.txt", 2)) EXPECT_FALSE(ValueIn(row)) << row[0] << " " << row[1];
}

}  // namespace
}  // namespace quorvex
