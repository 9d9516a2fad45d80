#include <gtest/gtest.h>

#include <cmath>

#include "RecordingPrompter.h"
#include "TemporaryFolder.h"
#include "core/Files.h"
#include "results/SaveResults.h"
#include "results/SolvedProject.h"
#include "results/TableExport.h"

namespace quorvex {
namespace {

// Cancels whatever it is to wait for, once the work has told how far it is.
class ImpatientPrompter : public RecordingPrompter {
 public:
  bool Wait(const std::string&, const std::function<void(const LongWork&)>& work) override {
    LongWork cancelled;
    cancelled.Cancel();
    work(cancelled);
    return false;
  }
};

class TableExportTest : public testing::Test {
 protected:
  TableExport Begin(Project& project, const std::vector<SolvedItem>& selected) {
    auto begun = TableExport::Begin(SolvedItems(project, 1), selected, project.Sheet, project.Locale, user);
    if (!begun) throw std::runtime_error(user.Last());
    return *begun;
  }
  static SolvedItem Item(Project& project, const char* name) { return {project.Models.Find(name), nullptr}; }
  static std::vector<SolvedItem> Line(Project& project) {
    SolveModel(project, "a*x+b", 1);
    return {Item(project, "a*x+b")};
  }
  static std::string Text(const std::optional<ExportTable>& table) {
    std::string text = table ? TabSeparated(*table) : "no table";
    std::erase(text, '\r');
    return text;
  }

  RecordingPrompter user;
};

TEST_F(TableExportTest, WantsOneTo200Equations) {
  Project project = LineProject();
  const auto said = [&](const std::vector<SolvedItem>& selected) {
    user.Said.clear();
    TableExport::Begin(SolvedItems(project, 1), selected, project.Sheet, {}, user);
    return user.Last();
  };
  EXPECT_EQ(said({}), "refuse: There are no solved equations to export.");
  const SolvedItem line = Line(project)[0];
  EXPECT_EQ(said({}), "refuse: Please select at least 1 equation to export.");
  EXPECT_EQ(said(std::vector<SolvedItem>(200, line)), "");
  EXPECT_EQ(said(std::vector<SolvedItem>(201, line)),
            "refuse: No more than 200 equations can be included in the table at a time.");
  project.Sheet.Cells = GridCells();
  EXPECT_EQ(said({line}), "refuse: Error initializing Data Table Export window.");
}

// The line has 2 x + 1.2.
TEST_F(TableExportTest, EvaluatesAlongARange) {
  Project project = LineProject();
  const TableExport line = Begin(project, Line(project));
  EXPECT_EQ(line.TypeNames(), (std::vector<std::string>{"Value of Y at X", "X Value", "Root at Y"}));
  const auto ranges = line.Ranges({});
  ASSERT_EQ(ranges.size(), 1u);
  EXPECT_EQ(ranges[0].Name + ' ' + ranges[0].InitialValue + ' ' + ranges[0].FinalValue + ' ' + ranges[0].NPoints,
            "X 1 5 10");
  auto table = line.Make({}, {{"X", 10, -5, 4}}, user);
  table->SetPatterns({"0.0####", "0.0"});
  EXPECT_EQ(Text(table), "X Value\tCalc Y\n10.0\t21.2\n5.0\t11.2\n0.0\t1.2\n-5.0\t-8.8\nEND\n");
  // The model of the project may be solved anew while the table is there.
  project.Models.Find("a*x+b")->SetValue(1, 99);
  EXPECT_EQ(table->Cell(0, 1), "21.2");
}

TEST_F(TableExportTest, ShowsWhatEachEquationLeavesOver) {
  Project project = LineProject();
  AddModel(project, "roots", {"a*(x-1.5)^0.5"}).SetValue(1, 6);
  project.Models.Find("roots")->Solved = true;
  std::vector<SolvedItem> both = Line(project);
  both.push_back(Item(project, "roots"));
  auto table = Begin(project, both).Make({TableType::XValues}, {}, user);
  table->SetPatterns({"0.0###", "0.0###"});
  EXPECT_EQ(Text(table),
            "X Value\tY Value\ta*x+b Calc Y\ta*x+b Residual\ta*x+b Abs Residual\troots Calc Y\troots Residual\t"
            "roots Abs Residual\tMin Residual\tMax Residual\n"
            "1.0\t3.0\t3.2\t-0.2\t0.2\tERROR\tERROR\tERROR\t-0.2\t-0.2\n"
            "2.0\t5.0\t5.2\t-0.2\t0.2\t4.2426\t0.7574\t0.7574\t-0.2\t0.7574\n"
            "3.0\t8.0\t7.2\t0.8\t0.8\t7.3485\t0.6515\t0.6515\t0.6515\t0.8\n"
            "4.0\t9.0\t9.2\t-0.2\t0.2\t9.4868\t-0.4868\t0.4868\t-0.4868\t-0.2\n"
            "5.0\t11.0\t11.2\t-0.2\t0.2\t11.225\t-0.225\t0.225\t-0.225\t-0.2\n"
            "END\n");
}

// (x - 2)(x - 4) over the range of the input, 1 to 5.
TEST_F(TableExportTest, FindsAllRootsOfEachRow) {
  Project project = LineProject();
  ModelClass& parabola = AddModel(project, "parabola", {"a*(x-2)*(x-4)"});
  SolveModel(project, "parabola", 0);
  parabola.SetValue(1, 1);
  const TableExport equation = Begin(project, {Item(project, "parabola")});
  EXPECT_EQ(equation.Ranges({TableType::RootAtY})[0].Name, "Y");
  EXPECT_EQ(equation.Ranges({TableType::RootAtY})[0].FinalValue, "11");
  auto table = equation.Make({TableType::RootAtY}, {{"Y", -2, 4, 4}}, user);
  table->SetPatterns({"0.0###", ""});
  EXPECT_EQ(Text(table),
            "Y Value\tX Value\tX Value\n-2.0\tERROR\n0.0\t2.0\t4.0\n2.0\t1.2679\t4.7321\n4.0\tERROR\nEND\n");
}

// x1 + 10 x2 + 100 x3, the first variable changing fastest.
TEST_F(TableExportTest, RunsOverTheGridOfSeveralVariables) {
  Project project = ProjectOf({{1, 2, 3, 4, 5}, {1, 3, 2, 5, 4}, {0, 1, 0, 2, 1}, {1, 2, 3, 4, 5}});
  AddModel(project, "sum", {"a*x1+10*x2+100*x3"});
  SolveModel(project, "sum", 0).SetValue(1, 1);
  const TableExport sum = Begin(project, {Item(project, "sum")});
  EXPECT_EQ(sum.TypeNames(), (std::vector<std::string>{"Value of Y at Xn", "X Values", "Root at Y, Xn"}));
  EXPECT_EQ(
      Text(sum.Make({}, {{"X1", 0, 2, 3}, {"X2", 4, 9, 1}, {"X3", 1, 2, 2}}, user)),
      "X1 Value\tX2 Value\tX3 Value\tCalc Y\n0\t4\t1\t140\n1\t4\t1\t141\n2\t4\t1\t142\n0\t4\t2\t240\n1\t4\t2\t241\n"
      "2\t4\t2\t242\nEND\n");
  std::string names;
  const TableChoice second{TableType::RootAtY, 2};
  for (const TableVariable& range : sum.Ranges(second)) names += range.Name + ' ' + range.NPoints + ' ';
  EXPECT_EQ(names, "Y 10 X1 10 X3 10 ");
  auto table = sum.Make(second, {{"Y", 20, 40, 2}, {"X1", 5, 0, 1}, {"X3", 0, 0, 1}}, user);
  table->SetPatterns({"0.0###", ""});
  EXPECT_EQ(Text(table), "Y Value\tX1 Value\tX3 Value\tX2 Value\n20.0\t5.0\t0.0\t1.5\n40.0\t5.0\t0.0\t3.5\nEND\n");
}

TEST_F(TableExportTest, TakesInterpolations) {
  Project project = LineProject();
  std::string log;
  ASSERT_TRUE(project.Interpolations[0].Fit(GatherData(project.Sheet).Points, log));
  const TableExport curve = Begin(project, {{nullptr, &project.Interpolations[0]}});
  EXPECT_EQ(Text(curve.Make({}, {{"X", 4, 6, 3}}, user)), "X Value\tCalc Y\n4\t9\n5\t11\n6\tERROR\nEND\n");
  auto roots = curve.Make({TableType::RootAtY}, {{"Y", 5, 8, 2}}, user);
  roots->SetPatterns({"0.0###", ""});
  EXPECT_EQ(Text(roots), "Y Value\tX Value\n5.0\t2.0\n8.0\t3.0\nEND\n");
}

TEST_F(TableExportTest, NamesTheFirstEntryThatDoesNotDo) {
  Project project = PlaneProject();
  AddModel(project, "plane", {"a*x1+b*x2"});
  SolveModel(project, "plane", 0);
  const TableExport plane = Begin(project, {Item(project, "plane")});
  const std::string unknown = "An unknown error has occurred. Please check the input.",
                    none =
                        "The number of points must be greater than 0. To fix a variable to a single value, choose 1 "
                        "as the number of points.";
  const auto many = [](const std::string& total) {
    return "The total number of points you have chosen is " + total +
           ". The maximum allowable number is 65535. Please reduce the total number of points.";
  };
  const struct {
    const char* X1[3];
    const char* X2[3];
    std::string Said;  // empty where they do
  } cases[] = {
      {{"", "", ""}, {"", "", ""}, "Please enter an initial value for X1"},
      {{"0", " ", ""}, {"", "", ""}, "Please enter a final value for X1"},
      {{"0", "1", ""}, {"", "", ""}, "Please enter the number of points for X1"},
      {{"0", "1", "0"}, {"", "", ""}, none},
      {{"0", "1", "2"}, {"", "1", "2"}, "Please enter an initial value for X2"},
      {{"0", "1", "2"}, {"1", "1", "-3"}, none},
      {{"0", "1", "0.4"}, {"1", "1", "1"}, none},
      {{"zero", "1", "2"}, {"1", "1", "1"}, unknown},
      {{"0", "1e999", "2"}, {"1", "1", "1"}, unknown},
      {{"0", "1", "1e200"}, {"1", "1", "1e200"}, unknown},
      {{"0", "1", "65535"}, {"1", "1", "1"}, ""},
      {{"0", "1", "255"}, {"1", "2", "257"}, ""},
      {{"0", "1", "65536"}, {"1", "1", "1"}, many("65536")},
      {{"0", "1", "256"}, {"1", "1", "256"}, many("65536")},
      {{"0", "1", "1000000"}, {"1", "1", "1000000"}, many("1000000000000")},
  };
  for (const auto& c : cases) {
    const auto axes = plane.ReadRanges({{"X1", c.X1[0], c.X1[1], c.X1[2]}, {"X2", c.X2[0], c.X2[1], c.X2[2]}});
    EXPECT_EQ(axes ? "" : axes.error(), c.Said);
  }
}

TEST_F(TableExportTest, ReadsAndWritesNumbersOfTheLocale) {
  LocaleText german;
  german.DecimalSeparator = ',';
  Project project = LineProject(german);
  const TableExport line = Begin(project, Line(project));
  const auto axes = line.ReadRanges({{"X", "0,5", "1", "2"}});
  ASSERT_TRUE(axes);
  EXPECT_EQ(Text(line.Make({}, *axes, user)), "X Value\tCalc Y\n0,5\t2,2\n1\t3,2\nEND\n");
}

TEST_F(TableExportTest, TakesAFullTableAndStopsWhenItIsCancelled) {
  Project project = LineProject();
  const TableExport line = Begin(project, Line(project));
  const auto table = line.Make({}, {{"X", 0, 65534, 65535}}, user);
  ASSERT_TRUE(table);
  EXPECT_EQ(table->RowCount(), 65536u);
  EXPECT_EQ(table->Cell(65534, 0), "65534");
  EXPECT_EQ(table->Cell(65535, 0), "END");
  ImpatientPrompter impatient;
  for (const TableType type : {TableType::ValueOfY, TableType::RootAtY})
    EXPECT_FALSE(line.Make({type}, {{"X", 0, 1, 1000}}, impatient));
  EXPECT_TRUE(impatient.Said.empty());
}

TEST_F(TableExportTest, RefusesATableOfTooManyColumns) {
  Project project = LineProject();
  AddModel(project, "waves", {"a*sin(100*x)"});
  SolveModel(project, "waves", 0).SetValue(1, 1);
  const std::vector<SolvedItem> many(40, Item(project, "waves"));
  EXPECT_FALSE(Begin(project, many).Make({TableType::RootAtY}, {{"Y", 0, 0, 1}}, user));
  EXPECT_EQ(user.Last(), "refuse: Error creating the table.");
}

TEST_F(TableExportTest, IsWrittenToAFileUnlessThatIsCancelled) {
  Project project = LineProject();
  const auto table = Begin(project, Line(project)).Make({}, {{"X", 1, 2, 2}}, user);
  const auto shared = std::make_shared<ExportTable>(*table);
  const TemporaryFolder folder;
  const auto content = [](const std::string& file) {
    WholeFile whole;
    return whole.Read(file) == 0 ? std::string(whole.Text()) : "no file";
  };
  user.File = folder.Path("table.txt");
  EXPECT_TRUE(SaveTable(shared, "Data Table", user));
  EXPECT_EQ(content(*user.File), TabSeparated(*table));
  ImpatientPrompter impatient;
  impatient.File = user.File;
  const auto other = Begin(project, {Item(project, "a*x+b")}).Make({}, {{"X", 7, 8, 2}}, user);
  EXPECT_FALSE(SaveTable(std::make_shared<ExportTable>(*other), "Data Table", impatient));
  EXPECT_EQ(content(*user.File), TabSeparated(*table));
  user.File = folder.Path("table.HTML");
  EXPECT_TRUE(SaveTable(shared, "Data Table", user));
  EXPECT_EQ(content(*user.File), Html(*table));
  user.File = folder.Path("missing/table.txt");
  EXPECT_FALSE(SaveTable(shared, "Data Table", user));
  EXPECT_EQ(user.Last().find("refuse: Error writing to '"), 0u);
}

}  // namespace
}  // namespace quorvex
