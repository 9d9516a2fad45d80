#include <gtest/gtest.h>

#include "Golden.h"
#include "TableFile.h"
#include "equation/Compile.h"
#include "equation/GenerateExcelInfix.h"
#include "equation/IntrinsicFunctions.h"

namespace quorvex {
namespace {

constexpr const char* kUnsupported =
    "The equation you are exporting contains Quorvex intrinsic functions which Excel does not support.";
constexpr const char* kInvalid =
    "Invalid cell referance. The column must be between 'A' and 'IV', and the row must be between 1 and 65536.";

// The formula, or what the user is told.
std::string Excel(const Expression& model, const std::vector<double>& Values = {}, std::string_view cell = "B7",
                  bool XInColumns = true) {
  DataStatistics statistics;
  statistics.X[0].XMean = 2.5;
  const auto formula = GenerateExcelInfix(model, Values, statistics, cell, XInColumns);
  return formula ? *formula : formula.error();
}

// A cell holds 32,767 characters behind the "=": 2 for x, 6 for each "( + 1)", 11 for the last term.
TEST(GenerateExcelInfix, FitsACell) {
  std::string text = "x";
  for (int i = 0; i < 5459; ++i) text += "+1";
  EXPECT_EQ(Excel(Compile({text + "+100000"})).size(), 32768u);
  EXPECT_EQ(Excel(Compile({text + "+1000000"})), "An error occurred exporting the Excel function.");
}

TEST(GenerateExcelInfix, WritesOperatorsAndOperands) {
  for (const auto& row : TableRows("expressions_in_cells.txt", 2))
    EXPECT_EQ(Excel(Compile(Split(row[0], '|')), {1.5, -2e-20}), row[1] == "unsupported" ? kUnsupported : row[1])
        << row[0];
}

TEST(GenerateExcelInfix, KnowsEveryWord) {
  std::string text;
  for (const IntrinsicFunction& function : IntrinsicFunctions()) {
    if (function.Word == WrittenIn::NoModel) continue;
    const char* arguments[] = {"(x)", "(2,x)", "(3,2,x)"};
    const std::string word(function.Name);
    text += word + "\t" + Excel(Compile({word + arguments[function.Arguments - 1]})) + "\n";
  }
  ExpectGolden("ExcelFunctions.txt", text);
}

TEST(GenerateExcelInfix, TakesFurtherVariablesFromNeighbouringCells) {
  const Expression model = Compile({"x1+x2*x03"}, Dialect::SeveralVariables);
  EXPECT_EQ(Excel(model, {}, "Y1", true), "=(Y1 + (Z1 * AA1))");
  EXPECT_EQ(Excel(model, {}, "iv65534", false), "=(IV65534 + (IV65535 * IV65536))");
  EXPECT_EQ(Excel(model, {}, "IU1", true), kInvalid);
  EXPECT_EQ(Excel(model, {}, "A65535", false), kInvalid);
}

TEST(GenerateExcelInfix, RefusesAReferenceOffTheSheet) {
  const Expression model = Compile({"a*x"});
  for (const char* cell : {"", "A", "7", "A0", "IW1", "AAA1", "A65537", "A1B", "A-1", "$A$1", " A1", "A99999999999"})
    EXPECT_EQ(Excel(model, {1}, cell), kInvalid) << cell;
}

TEST(GenerateExcelInfix, FailsWhereTheFormulaOutgrowsACell) {
  std::string text = "x";
  for (int i = 0; i < 200; ++i) text = "mag(" + text + ",1)";  // doubles with each level
  EXPECT_EQ(Excel(Compile({text})), "An error occurred exporting the Excel function.");
}

TEST(ExcelCellReference, JoinsAColumnAndARow) {
  const char* column = "Please enter an Excel worksheet column from 'A' to 'IV'.";
  const char* row = "Please enter an Excel worksheet row from 1 to 65536.";
  const struct {
    const char *Column, *Row, *Text;
  } cases[] = {{"a", "1", "A1"},       {" IV ", "65536", "IV65536"}, {"z", "007", "Z7"},   {"", "1", column},
               {"IW", "1", column},    {"1", "A", column},           {"AAA", "1", column}, {"A", "", row},
               {"A", "0", row},        {"A", "65537", row},          {"A", "1.5", row},    {"A", "-1", row},
               {"A", "99999999", row}, {"Az", "10", "AZ10"},         {"ba", "10", "BA10"}};
  for (const auto& c : cases) {
    const auto cell = ExcelCellReference(c.Column, c.Row);
    EXPECT_EQ(cell ? *cell : cell.error(), c.Text) << c.Column << "," << c.Row;
  }
}

}  // namespace
}  // namespace quorvex
