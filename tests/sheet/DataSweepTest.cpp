#include <gtest/gtest.h>

#include <array>

#include "EditedSheet.h"
#include "TableFile.h"
#include "sheet/DataSweep.h"

namespace quorvex {
namespace {

const char* const kBefore = "0 10\n2 20\n- 30\n4 40\n";
const char* const kLeftBlank =
    "inform: Cells whose corresponding numerical evaluations resulted in errors were left blank.";

DataSweep Sweep(SweepMethod method) {
  DataSweep sweep;
  sweep.SelRow1 = "1";
  sweep.SelRow2 = "4";
  sweep.SelCol = 2;
  sweep.MethodOption = method;
  sweep.ConstantText = "7";
  sweep.LinStart = "1";
  sweep.LinIncrement = "0.5";
  sweep.FuncText = sweep.ColumnFunc = "1/x";
  sweep.FuncStart = "-1";
  sweep.FuncIncrement = "1";
  sweep.ColumnText = "1";
  return sweep;
}

TEST(DataSweep, FillsTheRowsByEachMethod) {
  using enum SweepMethod;
  struct Case {
    SweepMethod Method;
    std::function<void(DataSweep&)> Change;
    const char *After, *Label, *Said;
  };
  const Case cases[] = {
      {Constant, [](DataSweep&) {}, "0 7\n2 7\n- 7\n4 7\n", "Constant in Y", ""},
      {Constant, [](DataSweep& s) { s.SelRow1 = s.SelRow2 = " 2 "; }, "0 10\n2 7\n- 30\n4 40\n", "Constant in Y", ""},
      {Linear, [](DataSweep& s) { s.SelRow1 = "3"; }, "0 10\n2 20\n- 1\n4 1.5\n", "Linear in Y", ""},
      {Linear, [](DataSweep& s) { s.SelCol = 1, s.LinIncrement = "-1"; }, "1 10\n0 20\n-1 30\n-2 40\n", "Linear in X",
       ""},
      {Function, [](DataSweep&) {}, "0 -1\n2 -\n- 1\n4 0.5\n", "Function in Y", kLeftBlank},
      {Function, [](DataSweep& s) { s.FuncText = "X^2"; }, "0 1\n2 0\n- 1\n4 4\n", "Function in Y", ""},
      // A missing X is no fault of the evaluation.
      {ColumnFunction, [](DataSweep& s) { s.SelRow1 = "2"; }, "0 10\n2 0.5\n- -\n4 0.25\n", "Function in Y", ""},
      {ColumnFunction, [](DataSweep&) {}, "0 -\n2 0.5\n- -\n4 0.25\n", "Function in Y", kLeftBlank},
      {ColumnFunction, [](DataSweep& s) { s.ColumnText = "2", s.ColumnFunc = "x+1"; }, "0 11\n2 21\n- 31\n4 41\n",
       "Function in Y", ""},
  };
  for (const Case& c : cases) {
    EditedSheet sheet(kBefore);
    DataSweep sweep = Sweep(c.Method);
    c.Change(sweep);
    ASSERT_TRUE(sweep.Apply(sheet.WithAll())) << sheet.User.Last();
    EXPECT_EQ(sheet.Cells(), c.After) << c.Label;
    EXPECT_EQ(sheet.WhenRemembered, kBefore);
    const auto number = [](const std::string& text) { return static_cast<std::size_t>(*NumericText(text)); };
    const CellRange filled{number(sweep.SelRow1), sweep.SelCol, number(sweep.SelRow2), sweep.SelCol};
    EXPECT_EQ(sheet.Undo, (Snapshots{{std::string("&Undo Sweep ") + c.Label, filled}}));
    EXPECT_EQ(sheet.User.Last(), c.Said);
    EXPECT_LE(sheet.User.Said.size(), 1u);
  }
}

TEST(DataSweep, RefusesBadEntriesAndLeavesTheSheet) {
  const std::map<std::string, SweepMethod> methods = {{"constant", SweepMethod::Constant},
                                                      {"linear", SweepMethod::Linear},
                                                      {"function", SweepMethod::Function},
                                                      {"column", SweepMethod::ColumnFunction}};
  const std::map<std::string, std::string DataSweep::*> entries = {
      {"ColumnFunc", &DataSweep::ColumnFunc},     {"ColumnText", &DataSweep::ColumnText},
      {"ConstantText", &DataSweep::ConstantText}, {"FuncIncrement", &DataSweep::FuncIncrement},
      {"FuncStart", &DataSweep::FuncStart},       {"FuncText", &DataSweep::FuncText},
      {"LinIncrement", &DataSweep::LinIncrement}, {"LinStart", &DataSweep::LinStart},
      {"SelRow1", &DataSweep::SelRow1},           {"SelRow2", &DataSweep::SelRow2}};
  for (const auto& row : TableRows("sweep_refusals.txt", 4)) {
    EditedSheet sheet(kBefore);
    DataSweep sweep = Sweep(methods.at(row[0]));
    sweep.*entries.at(row[1]) = row[2];
    EXPECT_FALSE(sweep.Apply(sheet.WithAll())) << row[2];
    EXPECT_EQ(sheet.User.Said, std::vector<std::string>{"refuse: " + row[3]}) << row[2];
    EXPECT_TRUE(sheet.Untouched());
  }

  // Both rows wrong: the order of the checks shows.
  for (const auto& [start, end, refusal] :
       {std::array{"70000", "80000", "refuse: Start Row is larger than 65536"},
        std::array{"-2", "-1", "refuse: Start Row must be larger than 0."},
        std::array{"-1", "-2", "refuse: Start Row must be greater than End Row."}}) {
    EditedSheet sheet(kBefore);
    DataSweep sweep = Sweep(SweepMethod::Constant);
    sweep.SelRow1 = start;
    sweep.SelRow2 = end;
    EXPECT_FALSE(sweep.Apply(sheet.WithAll()));
    EXPECT_EQ(sheet.User.Last(), refusal);
  }
}

TEST(DataSweep, SumsFromRowToRowInAFullSheet) {
  EditedSheet sheet("");
  DataSweep sweep = Sweep(SweepMethod::Linear);
  sweep.SelRow2 = "65536";
  sweep.LinStart = "0";
  sweep.LinIncrement = "0.1";
  ASSERT_TRUE(sweep.Apply(sheet.WithAll()));
  sweep.MethodOption = SweepMethod::ColumnFunction;
  sweep.SelCol = 1;
  sweep.ColumnText = "2";
  sweep.ColumnFunc = "if(x < 10, x*x, sqr(x))";
  ASSERT_TRUE(sweep.Apply(sheet.WithAll()));
  double sum = 0;
  for (std::size_t row = 1; row <= kMostSheetRows; ++row, sum += 0.1) {
    ASSERT_EQ(sheet.Sheet.Cells.GridCellNumber(row, 2), sum) << row;
    ASSERT_EQ(sheet.Sheet.Cells.GridCellNumber(row, 1), sum < 10 ? sum * sum : std::sqrt(sum)) << row;
  }
}

TEST(DataSweep, ReadsNumbersAndEquationsInTheUsersLocale) {
  EditedSheet sheet(kBefore);
  sheet.Locale.DecimalSeparator = ',';
  sheet.Locale.ListSeparator = ';';
  DataSweep sweep = Sweep(SweepMethod::Function);
  sweep.FuncText = "max(x; 0,25)";
  sweep.FuncStart = "0,125";
  ASSERT_TRUE(sweep.Apply(sheet.WithAll()));
  EXPECT_EQ(sheet.Cells(), "0 0.25\n2 1.125\n- 2.125\n4 3.125\n");
}

TEST(EditFill, OpensForOneColumnOnly) {
  EditedSheet sheet(kBefore);
  EXPECT_FALSE(EditFill(sheet.With({})));
  EXPECT_EQ(sheet.User.Last(), "refuse: Please select a range of rows in a single column.");
  EXPECT_FALSE(EditFill(sheet.With({{1, 1, 2, 1}, {1, 2, 2, 2}})));
  EXPECT_EQ(sheet.User.Last(),
            "refuse: Invalid range selection. The 'Fill' command cannot be used on multiple selections.");
  EXPECT_FALSE(EditFill(sheet.With({{1, 1, 2, 2}})));
  EXPECT_EQ(sheet.User.Last(), "refuse: Only a single column may be selected for this operation.");
  const std::optional<DataSweep> sweep = EditFill(sheet.With({{2, 2, 5, 2}}));
  ASSERT_TRUE(sweep);
  EXPECT_EQ(sweep->SelRow1 + " " + sweep->SelRow2 + " " + std::to_string(sweep->SelCol), "2 5 2");
}

}  // namespace
}  // namespace quorvex
