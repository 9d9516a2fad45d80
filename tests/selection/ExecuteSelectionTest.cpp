#include "Golden.h"
#include "RecordingPrompter.h"
#include "selection/ExecuteSelection.h"
#include "selection/ManualSelection.h"
#include "selection/SelectionCase.h"
#include "selection/SelectionReport.h"

namespace quorvex {
namespace {

constexpr auto F = SelectionProcedure::Forward, B = SelectionProcedure::Backward, S = SelectionProcedure::Stepwise,
               A = SelectionProcedure::AllSubsets;

class StatusForm : public SelectionForm {
 public:
  std::vector<std::string> Texts;
  std::string AbortAt = "none";

  void SetStatus(const std::string& text) override { Texts.push_back(text); }
  bool Aborted() const override { return !Texts.empty() && Texts.back() == AbortAt; }
};

// Sunday, 22 November 2026, 15:05.
std::tm Moment() {
  std::tm moment{};
  moment.tm_year = 126;
  moment.tm_mon = 10;
  moment.tm_mday = moment.tm_yday = 22;
  moment.tm_hour = 15;
  moment.tm_min = 5;
  return moment;
}

SelectionResult Execute(const DataSheet& sheet, const VarSelect& choices) {
  SelectionForm form;
  return ExecuteSelection(DataFor(sheet, choices), choices, LocaleText(), form);
}

// What a search went through, as the references have it: "all -3 +2".
std::string PathOf(const SelectionResult& result, const std::vector<std::string>& names) {
  std::string path;
  for (const SelectionStep& step : result.Steps) {
    if (!path.empty()) path += ' ';
    const auto words = Split(step.Heading, ' ');
    if (words[3] != "Variable") {
      path += "all";
      continue;
    }
    const auto at = std::find(names.begin(), names.end(), words[4]) - names.begin();
    path += (words[5] == "Entered" ? "+" : "-") + std::to_string(at + 1);
  }
  return path;
}

TEST(ExecuteSelection, GoesTheWayOfReferences) {
  for (const auto& row : TableRows("selection_paths.txt", 6)) {
    const DataSheet sheet = SelectionSheet(row[0]);
    VarSelect choices = ChoicesFor(sheet, row[1] == "Forward" ? F : row[1] == "Backward" ? B : S);
    choices.PToEnter = Number(row[2]);
    choices.PToRemove = Number(row[3]);
    choices.Intercept = row[4] == "1";
    const SelectionResult result = Execute(sheet, choices);
    EXPECT_EQ(PathOf(result, sheet.Headers), row[5]) << row[0] << ' ' << row[1] << ' ' << row[2];
    EXPECT_FALSE(result.Error);
    EXPECT_FALSE(result.Correlation.empty() || result.R2OnOthers.empty());
  }
}

// Columns of which the second explains Y, the first and the third hardly anything.
DataSheet SmallSheet() {
  return SelectionSheet({{1, -1, 1, -1, 1, -1, 1, 1},
                         {1, 2, 3, 4, 5, 6, 7, 8},
                         {1, 1, -1, -1, 1, 1, -1, 1},
                         {2.1, 3.9, 6.2, 8.1, 9.8, 12.2, 13.9, 16.1}});
}

TEST(ExecuteSelection, SaysHowItEnds) {
  const std::string done = " procedure completed.", entry = " significance level for entry into the model.";
  const struct {
    SelectionProcedure Procedure;
    double Enter, Remove;
    std::vector<bool> Include;
    bool Noise;          // Y is numbers that none of them explains
    std::size_t Points;  // of eight
    std::string Path;
    std::vector<std::string> Endings;
  } cases[] = {
      {F,
       0.05,
       0.1,
       {0, 0, 0},
       false,
       8,
       "+2",
       {"No other variables met the 0.05" + entry, "Forward Selection" + done}},
      {F, 1e-12, 0.1, {0, 0, 0}, false, 8, "", {"No variables met the 1E-12" + entry, "Forward Selection" + done}},
      {F,
       0.99,
       1,
       {0, 0, 0},
       false,
       8,
       "+2 +3 +1",
       {"All variables entered into the model.", "Forward Selection" + done}},
      {F,
       0.99,
       1,
       {0, 0, 0},
       false,
       4,
       "+2 +3",
       {"Maximum number of variables reached, process stopped.", "Forward Selection" + done}},
      {B,
       0.05,
       0.1,
       {0, 0, 0},
       false,
       8,
       "all -1 -3",
       {"All variables left in the model are significant at the 0.1 level.", "Backward Elimination" + done}},
      {B, 0.5, 1, {0, 0, 0}, false, 8, "all", {"No variables removed from the model.", "Backward Elimination" + done}},
      {B,
       0.05,
       0.1,
       {0, 0, 1},
       false,
       8,
       "all -1",
       {"All variables left in the model are significant at the 0.1 level.", "Backward Elimination" + done}},
      {B,
       0.05,
       0.1,
       {0, 0, 0},
       true,
       8,
       "all -1 -2 -3",
       {"All variables were removed from the model.", "Backward Elimination" + done}},
      {S,
       0.05,
       0.1,
       {0, 0, 0},
       false,
       8,
       "+2",
       {"No other variables met the 0.05" + entry, "All variables left in the model are significant at the 0.1 level.",
        "Stepwise Selection" + done}},
      {S, 1e-12, 0.1, {0, 0, 0}, false, 8, "", {"No variables met the 1E-12" + entry, "Stepwise Selection" + done}},
      {S,
       0.99,
       1,
       {0, 0, 0},
       false,
       8,
       "+2 +3 +1",
       {"All variables left in the model are significant at the 1 level.", "Stepwise Selection" + done}},
      {S,
       0.99,
       0.001,
       {0, 0, 0},
       true,
       8,
       "+3",
       {"The same variable was entered at the 0.99 significance level",
        "and now can be removed at the 0.001 significance level.", "Stepwise Selection" + done}},
      {S,
       0.99,
       1,
       {0, 0, 0},
       false,
       4,
       "+2 +3",
       {"Maximum number of variables reached, process stopped.", "Stepwise Selection" + done}}};
  for (const auto& c : cases) {
    DataSheet sheet = SmallSheet();
    if (c.Noise)
      for (std::size_t row = 1; row <= 8; ++row)
        sheet.Cells.SetGridCellNumber(row, 4, static_cast<double>((row * 5) % 7));
    sheet.Cells.GridClearRange({c.Points + 1, 1, 9, 4});
    VarSelect choices = ChoicesFor(sheet, c.Procedure);
    choices.PToEnter = c.Enter;
    choices.PToRemove = c.Remove;
    choices.Include = c.Include;
    const SelectionResult result = Execute(sheet, choices);
    EXPECT_EQ(PathOf(result, sheet.Headers), c.Path) << &c - cases;
    EXPECT_EQ(result.Endings, c.Endings) << &c - cases;
    EXPECT_FALSE(result.Error) << *result.Error;
  }
}

// Two copies of one column have the same p.
TEST(ExecuteSelection, TakesTheLaterOfEquals) {
  DataSheet sheet = SmallSheet();
  for (std::size_t row = 1; row <= 8; ++row) sheet.Cells.SetGridCellNumber(row, 1, sheet.Cells.GridCellNumber(row, 2));
  const SelectionResult result = Execute(sheet, ChoicesFor(sheet, F));
  EXPECT_EQ(PathOf(result, sheet.Headers), "+2");
  // The other one can then not be solved with it, of which the tables below show why.
  EXPECT_EQ(result.Error, kLeastSquaresError);
  EXPECT_EQ(result.Endings, std::vector<std::string>());
  EXPECT_EQ(result.Correlation[0][1], 1);
  EXPECT_EQ(result.R2OnOthers[0], 1);
  for (const auto procedure : {B, S}) EXPECT_EQ(Execute(sheet, ChoicesFor(sheet, procedure)).Error, kLeastSquaresError);

  VarSelect both = ChoicesFor(sheet, A);
  both.Include = {true, true, false};
  const SelectionResult failed = Execute(sheet, both);
  EXPECT_FALSE(failed.Error);
  EXPECT_EQ(failed.Endings, (std::vector<std::string>{"All combinations failed.",
                                                      "There are possibly identical, or nearly identical variables."}));
}

TEST(ExecuteSelection, TellsItsStatusAndEndsWhereItIsAborted) {
  const DataSheet sheet = SmallSheet();
  const std::vector<std::string> tables = {"Processing Correlation Matrix", "Processing VIF"};
  const struct {
    SelectionProcedure Procedure;
    std::vector<std::string> Texts;
  } cases[] = {{F, {"Processing Forward Selection", "Processing Step 1", "Processing Step 2", tables[0], tables[1]}},
               {B,
                {"Processing Backward Selection", "Processing Step 1", "Processing Step 2", "Processing Step 3",
                 "Processing Step 4", tables[0], tables[1]}},
               {S, {"Processing Stepwise Selection", "Processing Step 1", "Processing Step 2", tables[0], tables[1]}},
               {A, {"Processing All Subsets", tables[0], tables[1]}}};
  for (const auto& c : cases) {
    const VarSelect choices = ChoicesFor(sheet, c.Procedure);
    StatusForm form;
    const SelectionResult whole = ExecuteSelection(DataFor(sheet, choices), choices, LocaleText(), form);
    EXPECT_EQ(form.Texts, c.Texts);
    for (const std::string& text : c.Texts) {
      StatusForm aborted;
      aborted.AbortAt = text;
      const SelectionResult part = ExecuteSelection(DataFor(sheet, choices), choices, LocaleText(), aborted);
      EXPECT_TRUE(part.Aborted) << text;
      EXPECT_EQ(part.Endings, std::vector<std::string>{"Solution process aborted."}) << text;
      EXPECT_LE(part.Steps.size(), whole.Steps.size());
      EXPECT_TRUE(part.R2OnOthers.empty());
    }
  }
}

TEST(ExecuteSelection, SaysWhichTableCannotBeMade) {
  const DataSheet sheet = SelectionSheet({{1, 2, 3, 5, 9}, {4, 4, 4, 4, 4}, {1, 1, 2, 3, 1}, {2, 4, 5, 5, 1}});
  const SelectionResult result = Execute(sheet, ChoicesFor(sheet, A));
  EXPECT_EQ(result.Subsets.size(), 3u);
  EXPECT_EQ(result.CorrelationError, "Error calculating correlation matrix");
  EXPECT_EQ(result.R2OnOthers[1], 1);
}

// The whole reports, numbers included, which other tests hold against references.
TEST(SelectionReport, IsWrittenInTheOrderOfTheProcedure) {
  for (const auto procedure : {F, B, S, A}) {
    const DataSheet sheet = SelectionSheet("longley.csv");
    VarSelect choices = ChoicesFor(sheet, procedure);
    choices.PToEnter = 0.15;
    choices.PToRemove = 0.2;
    choices.VarsToReturn = 2;
    const SelectionData data = DataFor(sheet, choices);
    SelectionForm form;
    const LocaleText comma{',', ';', '.', '.', ':'};
    const LocaleText locale = procedure == B ? comma : LocaleText();
    const SelectionReport report =
        ReportOf(ExecuteSelection(data, choices, locale, form), data, procedure, Moment(), locale);
    std::string name = kProcedureNames[static_cast<std::size_t>(procedure)];
    name.erase(std::remove(name.begin(), name.end(), ' '), name.end());
    ExpectGolden("Longley" + name + ".txt", TabSeparated(report.Table));
    if (procedure == A) {
      EXPECT_EQ(report.Table.Cell(report.FirstSubset, 0), "1");
    }
  }
}

TEST(SelectionReport, WritesWhatHasNoValueAndMarksCollinearity) {
  // A perfect fit; without it nothing is left to compare with.
  DataSheet sheet = SmallSheet();
  for (std::size_t row = 1; row <= 8; ++row)
    sheet.Cells.SetGridCellNumber(row, 4, 0.5 * sheet.Cells.GridCellNumber(row, 2));
  const VarSelect choices = ChoicesFor(sheet, F);
  const SelectionData data = DataFor(sheet, choices);
  SelectionForm form;
  SelectionResult result = ExecuteSelection(data, choices, LocaleText(), form);
  result.R2OnOthers = {0.9, std::nextafter(0.9, 1), 0.75};
  std::string text = TabSeparated(ReportOf(result, data, F, Moment(), LocaleText()).Table);
  for (const char* part :
       {"R2 = 1.0  Cp not calculated\r\n", "Regression\t1\t10.5\t10.5\tInfinity\r\n", "Error\t6\t0\t0\r\n",
        "\r\nX2\t0.5\t0.0\r\n", "X1\t0.9\t10.0\t** VIF indicates a moderate degree of multicollinearity **",
        "X2\t0.9\t10.0\t** VIF indicates a high degree of multicollinearity **",
        "X3\t0.75\t4.0\t** VIF indicates a moderate degree of multicollinearity **"})
    EXPECT_NE(text.find(part), std::string::npos) << part << text;
  result.R2OnOthers = {1, std::nextafter(0.75, 0), 0};
  text = TabSeparated(ReportOf(result, data, F, Moment(), LocaleText()).Table);
  for (const char* part :
       {"X1\t1.0\tInfinity\t** VIF indicates a high degree", "X2\t0.75\t4.0\r\n", "X3\t0.0\t1.0\r\n"})
    EXPECT_NE(text.find(part), std::string::npos) << part << text;
  // A remark is a text beside numbers.
  const std::string html = Html(ReportOf(result, data, F, Moment(), LocaleText()).Table);
  EXPECT_NE(html.find("<td align=\"right\">Infinity</td><td>** VIF"), std::string::npos) << html;
}

TEST(SelectionReport, WritesTheDateAsInLetters) {
  std::tm moment = Moment();
  EXPECT_EQ(ReportDate(moment), "03:05 PM Sunday, November 22, 2026");
  moment.tm_hour = 0;
  moment.tm_mday = 2;
  moment.tm_wday = 1;
  EXPECT_EQ(ReportDate(moment), "12:05 AM Monday, November 02, 2026");
  moment.tm_hour = 12;
  EXPECT_EQ(ReportDate(moment).substr(0, 8), "12:05 PM");
}

TEST(ManualSelection, AppendsItsCalculations) {
  RecordingPrompter user;
  const DataSheet sheet = SelectionSheet("stackloss.txt");
  ManualSelection manual(DataFor(sheet, ChoicesFor(sheet)), true, LocaleText());
  EXPECT_FALSE(manual.Export(user));
  EXPECT_EQ(user.Last(),
            "refuse: Please select the variables you want to include and perform a calculation before saving.");
  EXPECT_FALSE(manual.Calculate({}, Moment(), user));
  EXPECT_TRUE(manual.Calculate({0, 1}, Moment(), user));
  EXPECT_TRUE(manual.Calculate({2}, Moment(), user));
  ExpectGolden("StacklossManual.txt", TabSeparated(manual.Table()));
  // By the tails of F and t in SciPy; the golden file has 0.0 and 0.00005 for them.
  const std::string shown = TabSeparated(manual.ShownTable());
  for (const char* part : {"89.64197\t4.4E-10\r\n", "-9.80063\t1.2E-08\r\n", "\t188.7953\t10.48863\r\n",
                           "5.29757\t4.9E-05\r\n", "3.52491\t0.00242\r\n"})
    EXPECT_NE(shown.find(part), std::string::npos) << part << shown;
  const std::size_t rows = manual.Table().RowCount();
  manual.SetFormat({"0.000E+00", "0.000E+00"});
  EXPECT_EQ(manual.Table().RowCount(), rows);
  EXPECT_NE(TabSeparated(manual.Table()).find("air_flow\t6.712E-01\t"), std::string::npos);

  // Until the table is full.
  user.Said.clear();
  user.Answer = false;
  while (manual.Calculate({0, 1, 2}, Moment(), user)) ASSERT_LE(manual.Table().RowCount(), kMostReportRows);
  const std::string question = "ask: Maximum number of rows encountered in the table. Clear table and continue?";
  EXPECT_EQ(user.Said, std::vector<std::string>{question});
  user.Answer = true;
  EXPECT_TRUE(manual.Calculate({0, 1, 2}, Moment(), user));
  EXPECT_LT(manual.Table().RowCount(), rows);
}

TEST(ManualSelection, RefusesWhatCannotBeSolved) {
  RecordingPrompter user;
  const std::vector<double> a = {1, 2, 4, 9};
  const DataSheet sheet = SelectionSheet({a, a, {1, 0, 0, 1}, {1, 1, 0, 0}, {2, 3, 5, 7}});
  ManualSelection manual(DataFor(sheet, ChoicesFor(sheet)), true, LocaleText());
  EXPECT_FALSE(manual.Calculate({0, 2, 3}, Moment(), user));
  EXPECT_EQ(user.Last(),
            "refuse: You do not have enough data points for the selected number of independent variables.");
  EXPECT_FALSE(manual.Calculate({0, 1}, Moment(), user));
  EXPECT_EQ(user.Last(), std::string("refuse: ") + kLeastSquaresError);
  EXPECT_EQ(manual.Table().RowCount(), 0u);
  EXPECT_FALSE(manual.Model());
}

}  // namespace
}  // namespace quorvex
