#include <gtest/gtest.h>

#include <cmath>

#include "RecordingPrompter.h"
#include "TemporaryFolder.h"
#include "calculator/Calculator.h"
#include "calculator/Curves.h"
#include "calculator/NumberEntry.h"
#include "engine/EqClass.h"

namespace quorvex {
namespace {

using Texts = std::vector<std::string>;

LocaleText Comma() { return {.DecimalSeparator = ',', .ListSeparator = ';', .ThousandSeparator = '.'}; }

class CalculatorTest : public testing::Test {
 protected:
  // Enters numbers, and names for copies of the curve.
  void Enter(const std::string& text) {
    calculator.Entry = text;
    calculator.enterconstant();
  }
  void Push(Column x, Column y, const std::string& legend) {
    calculator.Push(Curve(std::move(x), std::move(y), legend));
  }
  // The entry whose number from the top is `place`.
  const StackEntry& At(std::size_t place) const {
    const auto& entries = calculator.Stack().Entries();
    return entries.at(entries.size() - 1 - place);
  }
  Texts Stack() const { return calculator.StackTexts(); }

  Settings settings;
  RecordingPrompter user;
  Calculator calculator{settings, {}, user};
};

TEST_F(CalculatorTest, WritesTheExpressionOfEachOperation) {
  const struct {
    int Index;
    bool Arc;
    Texts Legends;
  } cases[] = {
      {0, false, {"neg(a)"}},    {1, false, {"Sin(a)"}},
      {1, true, {"Arcsin(a)"}},  {2, false, {"Cos(a)"}},
      {2, true, {"Arcos(a)"}},   {3, false, {"Tan(a)"}},
      {3, true, {"Arctan(a)"}},  {4, false, {"Integral(a)"}},
      {5, false, {"Abs(a)"}},    {6, false, {"Sinh(a)"}},
      {6, true, {"Arcsinh(a)"}}, {7, false, {"Cosh(a)"}},
      {7, true, {"Arccosh(a)"}}, {8, false, {"Tanh(a)"}},
      {8, true, {"Arctanh(a)"}}, {9, false, {"d/dx(a)"}},
      {10, false, {"1.0/(a)"}},  {11, false, {"Exp(a)"}},
      {13, false, {"Sqrt(a)"}},  {14, false, {"Ln(a)"}},
      {15, false, {"Log(a)"}},   {17, false, {"0.5"}},
      {18, false, {"0.25"}},     {19, false, {"Sum(a) = 1.5"}},
      {20, false, {"4"}},        {21, false, {"Flip(a)"}},
      {22, false, {"dB(a)"}},    {23, false, {"FFT Mag (a)", "FFT Phase( a)"}},
      {24, false, {"Sect(a)"}},  {25, false, {"Smooth(a)"}},
      {26, false, {"0.375"}},    {27, false, {"Sort(a)"}},
      {28, false, {"d/dx2(a)"}},
  };
  calculator.Setup.AskSection = [](const XRange&) { return XRange{1, 2}; };
  for (const auto& c : cases) {
    calculator.Setup.Arc = c.Arc;
    Push({0, 1, 2, 3}, {0.25, 0.5, 0.25, 0.5}, "a");
    // Of what is 1 or more alone there is an inverse.
    if (c.Index == 7 && c.Arc) Push({0, 1}, {1, 2}, "a");
    calculator.operations(c.Index);
    const Texts all = Stack();
    EXPECT_EQ(Texts(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(c.Legends.size())), c.Legends) << c.Index;
    EXPECT_EQ(user.Said, Texts()) << c.Index;
    calculator.stackops(kClearKey);
  }
  EXPECT_EQ(OperationKeys().size(), 29U);
}

TEST_F(CalculatorTest, CombinesCurvesAndNumbersInTheirOrder) {
  const struct {
    int Index;
    const char* Operator;
    Column Curves, CurveNumber, NumberCurve;
    double Numbers;
  } cases[] = {
      {0, " + ", {6, 9}, {5, 7}, {5, 7}, 7},
      {1, " - ", {-2, -1}, {-1, 1}, {1, -1}, -1},
      {2, " * ", {8, 20}, {6, 12}, {6, 12}, 12},
      {3, " / ", {0.5, 0.8}, {2.0 / 3, 4.0 / 3}, {1.5, 0.75}, 0.75},
  };
  for (const auto& c : cases) {
    const auto both = [&](const std::string& left, const std::string& right) {
      for (const std::string& entry : {left, right})
        if (entry == "a")
          Push({1, 2}, {2, 4}, "a");
        else if (entry == "b")
          Push({1, 2}, {4, 5}, "b");
        else
          Enter(entry);
      calculator.arithmetic(c.Index);
      EXPECT_EQ(LegendText(At(0)), "(" + left + c.Operator + right + ")");
    };
    both("a", "b");
    EXPECT_EQ(YOf(At(0)), c.Curves) << c.Operator;
    both("a", "3");
    EXPECT_EQ(YOf(At(0)), c.CurveNumber) << c.Operator;
    both("3", "a");
    EXPECT_EQ(YOf(At(0)), c.NumberCurve) << c.Operator;
    both("3", "4");
    EXPECT_EQ(NumberOf(At(0)), c.Numbers) << c.Operator;
    EXPECT_EQ(calculator.Stack().NumElements(), 4);
    calculator.stackops(kClearKey);
  }
}

TEST_F(CalculatorTest, MakesOneCurveAFunctionOfAnother) {
  Push({0, 1, 2}, {10, 20, 30}, "x");
  Push({1, 2, 3}, {5, 6, 7}, "y");
  calculator.operations(16);
  EXPECT_EQ(Stack(), Texts{"(y vs x)"});
  EXPECT_EQ(XOf(At(0)), (Column{20, 30}));
  EXPECT_EQ(YOf(At(0)), (Column{5, 6}));
  calculator.operations(21);
  EXPECT_EQ(XOf(At(0)), (Column{5, 6}));
  Enter("2");
  calculator.operations(12);
  EXPECT_EQ(Stack(), Texts{"(Flip((y vs x))) ^ 2"});
  EXPECT_EQ(YOf(At(0)), (Column{400, 900}));
}

TEST_F(CalculatorTest, TransformsInTheUnitOfAngles) {
  Push({0, 1, 2}, {0, 1, 0}, "a");
  calculator.Setup.Unit = AngleUnit::Degrees;
  calculator.operations(23);
  EXPECT_EQ(XOf(At(0)), (Column{0, 0.25, 0.5, 0.75}));
  const Column expected = {0, -90, 180, 90};
  for (std::size_t k = 0; k < 4; ++k) EXPECT_NEAR(YOf(At(1))[k], expected[k], 1e-7) << k;  // pi has 10 digits there
  EXPECT_NE(YOf(At(1))[3], 90);
}

TEST_F(CalculatorTest, TakesANumberForAnEntryOfOnePoint) {
  Enter("-2.5");
  for (const int index : {17, 18, 19, 26}) {
    calculator.operations(index);
    EXPECT_EQ(NumberOf(At(0)), -2.5);
  }
  calculator.operations(20);
  EXPECT_EQ(Stack(), Texts{"1"});
}

TEST_F(CalculatorTest, RefusesByNumberAndLeavesTheStackAsItWas) {
  const std::string overlap =
      "An error has occured with one of two possible causes:\r\n1. The curves do not overlap, or\r\n"
      "2. A numerical error has occured manipulating the data.";
  const auto op = [](int index) { return [index](Calculator& c) { c.operations(index); }; };
  const auto combine = [](int index) { return [index](Calculator& c) { c.arithmetic(index); }; };
  const PlotSeries zero = Curve({0, 1, 2}, {1, 0, 1}), far = Curve({5, 6}, {1, 2});
  const Numberclass two(2), huge(1e300);
  const struct {
    std::vector<StackEntry> Entries;
    std::function<void(Calculator&)> Command;
    std::string Message;
  } cases[] = {
      {{two, zero}, combine(3), "This operation caused division by zero."},
      {{zero, Numberclass(0)}, combine(3), "This operation caused division by zero."},
      {{huge, huge}, combine(2), "This operation caused numerical overflow."},
      {{Numberclass(-1)}, op(13), "This operation caused an invalid mathematical operation."},
      {{Numberclass(-2), Numberclass(0.5)}, op(12), "This operation caused an invalid mathematical operation."},
      {{two}, combine(0), "There must be at least two entries on the stack for this operation."},
      {{two}, op(12), "There must be at least two entries on the stack for this operation."},
      {{zero, far}, combine(0), overlap},
      {{zero, far}, op(16), overlap},
      {{two}, op(4), "A curve is required to perform this operation."},
      {{two}, op(9), "A curve is required to perform this operation."},
      {{two}, op(21), "A curve is required to perform this operation."},
      {{two}, op(23), "A curve is required to perform this operation."},
      {{two}, op(24), "A curve is required to perform this operation."},
      {{two}, op(25), "A curve is required to perform this operation."},
      {{two}, op(27), "A curve is required to perform this operation."},
      {{two}, op(28), "A curve is required to perform this operation."},
      {{zero}, op(9), "A curve must contain at least 4 data points to perform this operation."},
      {{zero}, op(28), "A curve must contain at least 4 data points to perform this operation."},
      {{zero, two}, op(16), "Two curves are required for this operation."},
      {{zero}, op(16), "Two curves are required for this operation."},
      {{two, zero}, op(12), "The top of the stack must be a scalor for this operation."},
      {{}, op(1), "The calculator stack is empty."},
      {{}, [](Calculator& c) { c.stackops(kPopKey); }, "The calculator stack is empty."},
      {{}, [](Calculator& c) { c.ExportCommand(); }, "The calculator stack is empty."},
      {{two},
       [](Calculator& c) { c.SelectedCurves(std::vector<std::size_t>{0}); },
       "Please select a curve in the calculator stack to plot."},
      {{two}, [](Calculator& c) { c.copy({}); }, "There is no data to copy."},
      {{}, [](Calculator& c) { c.SampleSource({}); }, "There is no data to sample."},
      {{zero}, op(24), "The section procedure left less than 2 data points on the curve."},
      {{Curve({-1.7e308, -1, 1, 1.7e308}, {1, 2, 1, 2})},
       op(25),
       "Error in Lowess procedure, the task could not be completed."},
      {{two}, op(99), "A curve is required to perform this operation."},
  };
  for (const auto& c : cases) {
    Calculator fresh(settings, {}, user);
    fresh.Setup.AskSection = [](const XRange&) { return XRange{1, 1.5}; };
    for (const StackEntry& entry : c.Entries)
      if (const auto* number = std::get_if<Numberclass>(&entry)) {
        fresh.Entry = number->LegendText;
        fresh.enterconstant();
      } else {
        fresh.Push(std::get<PlotSeries>(entry));
      }
    const Texts before = fresh.StackTexts();
    c.Command(fresh);
    EXPECT_EQ(user.Last(), "refuse: " + c.Message);
    EXPECT_EQ(fresh.StackTexts(), before) << c.Message;
    user.Said.clear();
  }
}

TEST_F(CalculatorTest, MovesEntriesAndTakesItBack) {
  for (const char* text : {"1", "2", "3"}) Enter(text);
  const struct {
    int Key;
    Texts After;
  } cases[] = {
      {kRollDownKey, {"1", "3", "2"}},  {kRollUpKey, {"3", "2", "1"}}, {kExchangeKey, {"2", "3", "1"}},
      {kPushKey, {"2", "2", "3", "1"}}, {kPopKey, {"2", "3", "1"}},    {kClearKey, {}},
  };
  for (const auto& c : cases) {
    calculator.stackops(c.Key);
    EXPECT_EQ(Stack(), c.After) << c.Key;
  }
  for (auto step = std::rbegin(cases); ++step != std::rend(cases);) {
    calculator.Undo();
    EXPECT_EQ(Stack(), step->After) << step->Key;
  }
  while (calculator.CanUndo()) calculator.Undo();
  EXPECT_TRUE(calculator.Stack().IsEmpty());
  while (calculator.CanRedo()) calculator.Redo();
  calculator.Undo();
  EXPECT_EQ(Stack(), cases[4].After);
  Enter("4");
  EXPECT_FALSE(calculator.CanRedo());

  // One entry stays where it is, and what is cancelled has not been.
  Calculator other(settings, {}, user);
  other.Push(Curve({1, 2}, {1, 2}, "a"));
  for (const int key : {kRollDownKey, kRollUpKey, kExchangeKey}) other.stackops(key);
  EXPECT_EQ(other.StackTexts(), Texts{"a"});
  while (other.CanUndo()) other.Undo();
  other.Redo();
  other.operations(24);
  EXPECT_EQ(other.StackTexts(), Texts{"a"});
  EXPECT_TRUE(other.CanRedo());
  EXPECT_TRUE(user.Said.empty());
}

TEST_F(CalculatorTest, EntersNumbersAndNames) {
  Enter("abc");
  EXPECT_EQ(user.Last(), "refuse: The calculator stack is empty.");
  EXPECT_EQ(calculator.Entry, "abc");
  Enter("1e3");
  EXPECT_EQ(calculator.Entry, "");
  Enter("abc");
  EXPECT_EQ(Stack(), Texts{"abc = 1000"});
  Enter(" ");
  for (const char* name : {"nan", "inf", "1e999", "0x10", "1,5", "--1"}) {
    Enter(name);
    EXPECT_EQ(Stack(), Texts{std::string(name) + " = 1000"});
  }
  // What is being typed is an operand; it stays where the operation fails.
  calculator.Entry = "4";
  calculator.arithmetic(3);
  EXPECT_EQ(NumberOf(At(0)), 250);
  calculator.Entry = "0";
  calculator.arithmetic(3);
  EXPECT_EQ(user.Last(), "refuse: This operation caused division by zero.");
  EXPECT_EQ(calculator.Entry, "0");
  EXPECT_EQ(calculator.Stack().NumElements(), 1);

  Calculator comma(settings, Comma(), user);
  comma.Entry = "-1,5e-2";
  comma.enterconstant();
  EXPECT_EQ(comma.StackTexts(), Texts{"-0,015"});
  EXPECT_EQ(std::get<Numberclass>(comma.Stack().Top()).id, 1);
}

TEST_F(CalculatorTest, CutsLegendsThatWouldGrowWithoutEnd) {
  Push({1, 2}, {0, 0}, "a");
  for (int i = 0; i < 100; ++i) {
    calculator.stackops(kPushKey);
    calculator.arithmetic(0);
  }
  EXPECT_TRUE(user.Said.empty());
  EXPECT_EQ(Stack()[0].size(), 1003U);
  EXPECT_TRUE(Stack()[0].ends_with("..."));
}

TEST(NumberEntry, BuildsNumbersAsAPocketCalculator) {
  const struct {
    LocaleText Locale;
    Texts Keys;
    std::string Entry;
  } cases[] = {
      {{}, {"1", ".", "2", ".", "e", "e", "3", "+-"}, "1.2e-3"},
      {{}, {"+-", "5"}, "-5"},
      {{}, {"5", "+-", "+-"}, "5"},
      {{}, {"5", "e", "+-", "2", "+-", "."}, "5e2"},
      {{}, {"e", "2"}, "1e2"},
      {{}, {"7", "pi"}, "3.1415926535897932"},
      {Comma(), {"1", ".", "5"}, "1,5"},
      {Comma(), {"pi"}, "3,1415926535897932"},
  };
  for (const auto& c : cases) {
    std::string entry;
    for (const std::string& key : c.Keys)
      entry = key == "e"    ? WithExponent(entry)
              : key == "+-" ? WithSignChanged(entry)
                            : WithNumberKey(entry, key, c.Locale);
    EXPECT_EQ(entry, c.Entry);
  }
  const struct {
    char Key;
    const char* Entry;
    TypedKey Meaning;
  } keys[] = {
      {'+', "", TypedKey::Operator}, {'-', "12", TypedKey::Operator}, {'-', "1e", TypedKey::Text},
      {'/', "km", TypedKey::Text},   {',', "1", TypedKey::Separator}, {'.', "", TypedKey::Separator},
      {',', "a", TypedKey::Text},    {'7', "", TypedKey::Text},       {'x', "", TypedKey::Text},
  };
  for (const auto& c : keys) EXPECT_EQ(MeaningOf(c.Key, c.Entry, {}), c.Meaning) << c.Key << c.Entry;
}

TEST_F(CalculatorTest, OffersWhatThePlotAndItsProjectHave) {
  const auto line = [](double slope) {
    auto model = std::make_unique<EqClass>(LocaleText());
    model->SetID("a*x", {"a*x"});
    model->SetValue(1, slope);
    SolveData data;
    data.X = {{1, 2, 4}};
    data.Y = {2, 4, 8};
    model->SetIC(data);
    model->SetValue(1, slope);
    PlotSeries series(std::move(model));
    series.Style().LegendText = "a*x";
    return series;
  };
  PlotSeries nameless = Curve({1, 2}, {3, 4}, "");
  calculator.Init({Curve({1, 2}, {3, 4}, "Input Data"), nameless, line(2)},
                  {Curve({1, 2}, {3, 4}, "Input Data"), Curve({1, 2}, {3, 5}, "Input Data"), line(2), line(3)});
  Texts names;
  for (const PlotSeries& series : calculator.Available()) names.push_back(series.Style().LegendText);
  EXPECT_EQ(names, (Texts{"Input Data", "Series 2", "a*x", "Input Data", "a*x"}));

  settings.Set("pointsperplot", "4");
  calculator.copy(std::vector<std::size_t>{0, 2});
  EXPECT_EQ(Stack(), (Texts{"a*x", "Input Data"}));
  EXPECT_EQ(XOf(At(0)), (Column{1, 2, 3, 4}));
  EXPECT_EQ(YOf(At(0)), (Column{2, 4, 6, 8}));
  EXPECT_EQ(YOf(At(1)), (Column{3, 4}));
  calculator.Init({Curve({1, 2}, {3, NAN}, "b")}, {});
  calculator.copy(std::vector<std::size_t>{0});
  EXPECT_EQ(user.Last(), "refuse: This operation caused an invalid mathematical operation.");
  EXPECT_EQ(calculator.Stack().NumElements(), 2);

  calculator.Init({Curve({1, 2}, {3, 4}, "a"), nameless, line(2)}, {});
  EXPECT_EQ(calculator.SampleSource(std::vector<std::size_t>{2}), &calculator.Available()[2]);
  EXPECT_EQ(calculator.SampleSource(std::vector<std::size_t>{0}), nullptr);
  EXPECT_EQ(user.Last(), "refuse: Sampling can only be performed on fitted equations (regression or interpolation).");
  EXPECT_EQ(calculator.SampleSource(std::vector<std::size_t>{0, 2}), nullptr);
  EXPECT_EQ(user.Last(),
            "refuse: Only a single equation can be selected at a time in the Available Data list for sampling.");
}

TEST_F(CalculatorTest, WritesAndReadsFilesExactlyInEveryLocale) {
  const TemporaryFolder folder;
  const Column x = {-1e300, 0.1, 1.0 / 3, 1e-300}, y = {5e-324, -0.0, 1e300, 2.0 / 3};
  for (const LocaleText& locale : {LocaleText(), Comma()}) {
    Calculator c(settings, locale, user);
    user.File = folder.Path("calc.dat");
    c.Push(Curve(x, y, "a"));
    c.ExportCommand();
    EXPECT_EQ(user.Last(), "save: Export|Data files (*.dat)|dat|calc.dat");
    c.ImportCommand();
    EXPECT_EQ(user.Last(), "open: Import|Data files (*.dat)");
    EXPECT_EQ(c.StackTexts(), (Texts{"calc.dat", "a"}));
    EXPECT_EQ(XOf(c.Stack().Top()), x);
    EXPECT_EQ(YOf(c.Stack().Top()), y);
    c.Entry = "-1e-7";
    c.enterconstant();
    c.ExportCommand();
    EXPECT_EQ(folder.Read("calc.dat"), "-1E-07\r\n");
    c.ImportCommand();
    EXPECT_EQ(NumberOf(c.Stack().Top()), -1e-7);
  }
  Calculator comma(settings, Comma(), user);
  user.File = folder.Write("comma.dat", "X;Y\n1,5;2,25\n2,5;6,25\nnan;1\n");
  comma.ImportCommand();
  EXPECT_EQ(YOf(comma.Stack().Top()), (Column{2.25, 6.25}));

  for (const std::string& file :
       {folder.Path("none.dat"), folder.Write("empty.dat", ""), folder.Write("t.dat", "abc")}) {
    user.File = file;
    calculator.ImportCommand();
    EXPECT_EQ(user.Last(), "refuse: Error importing data from '" + file + "'.");
  }
  user.File = folder.Path("no/folder.dat");
  comma.ExportCommand();
  EXPECT_EQ(user.Last(), "refuse: Error exporting file.");
  user.File.reset();
  calculator.ImportCommand();
  EXPECT_TRUE(calculator.Stack().IsEmpty());
}

}  // namespace
}  // namespace quorvex
