#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <functional>

#include "EditedSheet.h"
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
  struct Case {
    SweepMethod Method;
    std::function<void(DataSweep&)> Change;
    const char *After, *Label, *Said;
  };
  const Case cases[] = {
      {SweepMethod::Constant, [](DataSweep&) {}, "0 7\n2 7\n- 7\n4 7\n", "&Undo Sweep Constant in Y", ""},
      {SweepMethod::Constant, [](DataSweep& s) { s.SelRow1 = s.SelRow2 = " 2 "; }, "0 10\n2 7\n- 30\n4 40\n",
       "&Undo Sweep Constant in Y", ""},
      {SweepMethod::Linear, [](DataSweep& s) { s.SelRow1 = "3"; }, "0 10\n2 20\n- 1\n4 1.5\n",
       "&Undo Sweep Linear in Y", ""},
      {SweepMethod::Linear, [](DataSweep& s) { s.SelCol = 1, s.LinIncrement = "-1"; }, "1 10\n0 20\n-1 30\n-2 40\n",
       "&Undo Sweep Linear in X", ""},
      {SweepMethod::Function, [](DataSweep&) {}, "0 -1\n2 -\n- 1\n4 0.5\n", "&Undo Sweep Function in Y", kLeftBlank},
      {SweepMethod::Function, [](DataSweep& s) { s.FuncText = "X^2"; }, "0 1\n2 0\n- 1\n4 4\n",
       "&Undo Sweep Function in Y", ""},
      // A missing X is no fault of the evaluation.
      {SweepMethod::ColumnFunction, [](DataSweep& s) { s.SelRow1 = "2"; }, "0 10\n2 0.5\n- -\n4 0.25\n",
       "&Undo Sweep Function in Y", ""},
      {SweepMethod::ColumnFunction, [](DataSweep&) {}, "0 -\n2 0.5\n- -\n4 0.25\n", "&Undo Sweep Function in Y",
       kLeftBlank},
      {SweepMethod::ColumnFunction, [](DataSweep& s) { s.ColumnText = "2", s.ColumnFunc = "x+1"; },
       "0 11\n2 21\n- 31\n4 41\n", "&Undo Sweep Function in Y", ""},
  };
  for (const Case& c : cases) {
    EditedSheet sheet(kBefore);
    DataSweep sweep = Sweep(c.Method);
    c.Change(sweep);
    ASSERT_TRUE(sweep.Apply(sheet.WithAll())) << sheet.User.Last();
    EXPECT_EQ(sheet.Cells(), c.After) << c.Label;
    EXPECT_EQ(sheet.WhenRemembered, kBefore);
    ASSERT_EQ(sheet.Undo.size(), 1u);
    EXPECT_EQ(sheet.Undo[0].first, c.Label);
    const auto number = [](const std::string& text) { return static_cast<std::size_t>(*NumericText(text)); };
    EXPECT_EQ(sheet.Undo[0].second,
              (CellRange{number(sweep.SelRow1), sweep.SelCol, number(sweep.SelRow2), sweep.SelCol}));
    EXPECT_EQ(sheet.User.Last(), c.Said);
    EXPECT_LE(sheet.User.Said.size(), 1u);
  }
}

TEST(DataSweep, RefusesBadEntriesAndLeavesTheSheet) {
  struct Case {
    SweepMethod Method;
    std::string DataSweep::*Field;
    const char *Entry, *Refusal;
  };
  constexpr auto constant = SweepMethod::Constant, linear = SweepMethod::Linear, function = SweepMethod::Function,
                 column = SweepMethod::ColumnFunction;
  const std::string notValid = "The equation you entered is not valid. ", check = "Please check the equation syntax.";
  const std::string bad = notValid + check,
                    coefficients = notValid +
                                   "It appears to contain variable coefficients, which are not allowed when sweeping "
                                   "data. " +
                                   check,
                    noX = notValid + "It does not appear to contain the independent variable 'X'. " + check;
  const Case cases[] = {
      {constant, &DataSweep::SelRow1, "", "Please enter a valid Start Row."},
      {constant, &DataSweep::SelRow1, "1.5", "Please enter a valid Start Row."},
      {constant, &DataSweep::SelRow2, "ten", "Please enter a valid End Row."},
      {constant, &DataSweep::SelRow1, "5", "Start Row must be greater than End Row."},
      {constant, &DataSweep::SelRow1, "1e300", "Start Row must be greater than End Row."},
      {constant, &DataSweep::SelRow2, "65537", "End Row is larger than 65536"},
      {constant, &DataSweep::SelRow2, "1e300", "End Row is larger than 65536"},
      {constant, &DataSweep::SelRow1, "0", "Start Row must be larger than 0."},
      {constant, &DataSweep::SelRow1, "-3", "Start Row must be larger than 0."},
      {constant, &DataSweep::ConstantText, "", "Please enter a valid constant."},
      {constant, &DataSweep::ConstantText, "1e999", "Please enter a valid constant."},
      {linear, &DataSweep::LinStart, "x", "Please enter a valid number for the starting value."},
      {linear, &DataSweep::LinIncrement, "1,5", "Please enter a valid number for the increment."},
      {linear, &DataSweep::LinIncrement, "1e308", "A numerical error has ocurred."},
      {function, &DataSweep::FuncStart, "", "Please enter a valid number for the X starting value."},
      {function, &DataSweep::FuncIncrement, "", "Please enter a valid number for the X increment."},
      {function, &DataSweep::FuncText, " ", "Please enter a valid equation."},
      {function, &DataSweep::FuncText, "1/", bad.c_str()},
      {function, &DataSweep::FuncText, "x+F1", bad.c_str()},
      {function, &DataSweep::FuncText, "x-xmean", bad.c_str()},
      {function, &DataSweep::FuncText, "a*x", coefficients.c_str()},
      {function, &DataSweep::FuncText, "a+1", coefficients.c_str()},
      {function, &DataSweep::FuncText, "2*pi", noX.c_str()},
      {function, &DataSweep::FuncIncrement, "1e308", "An error occurred sweeping the equation."},
      {column, &DataSweep::ColumnText, "Y", "Please enter a valid column number for the variable X. "},
      {column, &DataSweep::ColumnText, "1.5", "Please enter a valid column number for the variable X. "},
      {column, &DataSweep::ColumnText, "0", "The column value must be in the range (1-2)"},
      {column, &DataSweep::ColumnText, "3", "The column value must be in the range (1-2)"},
      {column, &DataSweep::ColumnFunc, "", "Please enter a valid equation."},
      {column, &DataSweep::ColumnFunc, "b*x", coefficients.c_str()},
  };
  for (const Case& c : cases) {
    EditedSheet sheet(kBefore);
    DataSweep sweep = Sweep(c.Method);
    sweep.*c.Field = c.Entry;
    EXPECT_FALSE(sweep.Apply(sheet.WithAll())) << c.Entry;
    EXPECT_EQ(sheet.User.Said, std::vector<std::string>{std::string("refuse: ") + c.Refusal}) << c.Entry;
    EXPECT_EQ(sheet.Cells(), kBefore);
    EXPECT_TRUE(sheet.Undo.empty());
  }

  // Both rows wrong: the order of the checks shows.
  for (const auto& [start, end, refusal] :
       {std::array{"70000", "80000", "refuse: Start Row is larger than 65536"},
        std::array{"-2", "-1", "refuse: Start Row must be larger than 0."},
        std::array{"-1", "-2", "refuse: Start Row must be greater than End Row."}}) {
    EditedSheet sheet(kBefore);
    DataSweep sweep = Sweep(constant);
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
