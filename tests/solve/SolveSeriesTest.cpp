// A series in the desktop, below its windows: the columns of a file, what is solved on them, table and plot of the
// answers.

#include <gtest/gtest.h>

#include "Paths.h"
#include "RecordingPrompter.h"
#include "TemporaryFolder.h"
#include "batch/Program.h"
#include "core/JsonText.h"
#include "engine/LoadModelCatalog.h"
#include "engine/UserModel.h"
#include "import/TextImport.h"
#include "results/SeriesResults.h"
#include "solve/SeriesPick.h"
#include "solve/SolvableProject.h"
#include "solve/SolveSeries.h"

namespace quorvex {
namespace {

// The choice over a file with this text.
struct PickOf {
  explicit PickOf(const std::string& text, std::size_t variables = 1, const LocaleText& locale = {})
      : Locale(locale),
        Import(std::move(*TextImport::Open(Folder.Write("series.txt", text), DataSheet(variables, false), Locale))),
        Pick(*Import, variables, Locale) {
    EXPECT_TRUE(Pick.Reload(User));
  }
  TemporaryFolder Folder;
  RecordingPrompter User;
  LocaleText Locale;
  std::unique_ptr<TextImport> Import;
  SeriesPick Pick;
};

std::string Joined(const std::vector<std::string>& texts) {
  std::string joined;
  for (const std::string& text : texts) joined += (joined.empty() ? "" : "|") + text;
  return joined;
}

TEST(SeriesPick, FindsHeadingsAndDataOfAFile) {
  const struct {
    const char* Text;
    std::size_t Variables, FirstLine;
    const char *Columns, *Names;
  } cases[] = {
      {"conc\tA1\tA2\n1\t2\t3\n2\t3\t4\n", 1, 2, "conc (Column 1)|A1 (Column 2)|A2 (Column 3)", "A1|A2"},
      {"time,10,20.50,30\n1,2,3,4\n2,3,4,5\n", 1, 2, "time (Column 1)|10 (Column 2)|20.5 (Column 3)|30 (Column 4)",
       "10|20.5|30"},
      {"1 2 3\n2 3 4\n3 4 5\n", 1, 1, "Column 1|Column 2|Column 3", "1|2"},
      {"# a plate\nx;\"<b>é\"\"</b>\";%S%;%S%\n1;2;3;4\n2;;4;5\n3;;4\n", 1, 3,
       "x (Column 1)|<b>é\"</b> (Column 2)|%S% (Column 3)|%S% (Column 4)", "<b>é\"</b>|%S%|%S%_2"},
      {"a\tb\ty\n1\t2\t3\n2\t3\t4\n", 2, 2, "a (Column 1)|b (Column 2)|y (Column 3)", "y"},
  };
  for (const auto& c : cases) {
    PickOf of(c.Text, c.Variables);
    EXPECT_EQ(of.Pick.FirstLine(), c.FirstLine) << c.Text;
    EXPECT_EQ(Joined(of.Pick.Columns()), c.Columns);
    const auto series = of.Pick.Accept(of.User);
    ASSERT_TRUE(series) << c.Text;
    EXPECT_EQ(Joined(series->Names()), c.Names);
  }
}

TEST(SeriesPick, RefusesWhatIsNoSeries) {
  PickOf of("x\tA\tB\n1\t2\tNA\n2\t3\t4\n3\t4\t5\n");
  of.Pick.IsY.assign(3, false);
  EXPECT_FALSE(of.Pick.Accept(of.User));
  EXPECT_EQ(of.User.Last(), "refuse: Please tick at least one column of Y.");
  of.Pick.IsY.assign(3, true);
  of.Pick.SD = 1;
  EXPECT_FALSE(of.Pick.Accept(of.User));
  EXPECT_EQ(of.User.Last(), "refuse: The standard deviations cannot be a column of X.");
  of.Pick.SD = 0;
  EXPECT_EQ(of.Pick.TextSentence(), "1 cell is text: NA.");
  EXPECT_EQ(of.Pick.Accept(of.User)->Points(1).error(), "Row 2, column 'B': 'NA' is not a number.");
  of.Pick.TextMissing = true;
  EXPECT_EQ(of.Pick.Accept(of.User)->Points(1)->Points.N(), 2U);
}

// The columns of puromycin_both.txt; the macro's answers are the measure.
TEST(SolveSeries, HasTheAnswersOfTheMacro) {
  Program program;
  const std::string file = TestData("../../examples/data/puromycin_both.txt");
  ASSERT_EQ(program.RunMacro("B_MACRO\nDataFile = " + file +
                             "\nDataFirstLine = 2\nDataSeries = True\nIndependentVariables = 1\n"
                             "ResultFile = @all.jsonl\nB_MODEL\nY = a*x/(b+x)\nE_MODEL\nB_MODEL\nY = a*x+b\nE_MODEL\n"
                             "E_MACRO\n"),
            0);
  const std::string results = program.Folder.Read("all.jsonl");
  const LocaleText locale;
  const auto import = TextImport::Open(file, DataSheet(1, false), locale);
  RecordingPrompter user;
  SeriesPick pick(**import, 1, locale);
  ASSERT_TRUE(pick.Reload(user));
  const auto series = pick.Accept(user);
  ModelCollection models;
  LoadModelCatalog(models, 1, locale);
  for (const char* id : {"a*x/(b+x)", "a*x+b"}) {
    models.Find(id)->Solve = true;
    models.Find(id)->SolveType = 0;
  }
  SolveProgress form;
  std::string log;
  const SeriesAnswers answers = SolveSeries(*series, models, Settings(), 1, log, form);
  EXPECT_EQ(answers.Models, 2U);
  ASSERT_EQ(answers.Fits.size(), 4U);
  std::size_t at = 0;
  for (const SeriesFit& fit : answers.Fits) {
    EXPECT_EQ(fit.Points, fit.Column == 0 ? 12U : 11U);
    for (const SeriesFit::Coefficient& coefficient : fit.Coefficients) {
      at = results.find("{\"name\":\"" + coefficient.Name + "\",\"value\":" + JsonNumber(coefficient.Value) +
                            ",\"stdErr\":" + JsonNumber(coefficient.StdErr) + ",",
                        at);
      ASSERT_NE(at, std::string::npos) << fit.Model << " " << coefficient.Name << "\n" << results;
    }
  }
}

// Seven columns, one of which is no series, for models of the catalogue and one that never gets an answer.
TEST(SolveSeries, IsTheSameOnAnyNumberOfThreads) {
  std::string text = "x\ta\tb\tc\td\te\tf\tg\n";
  for (int i = 1; i <= 40; ++i) {
    text += std::to_string(i);
    for (int column = 1; column <= 7; ++column)
      text += column == 4 && i == 9 ? "\tlost" : "\t" + std::to_string(column * i + i * i % (6 + column));
    text += '\n';
  }
  PickOf of(text);
  const SeriesData series = *of.Pick.Accept(of.User);
  const auto solve = [&](int threads, const std::string& more, int abortAt) {
    ModelCollection models;
    LoadModelCatalog(models, 1, LocaleText());
    for (const auto& model : models) model->Solve = model->IDIndex() % 10 == 1;
    models.Add("none", CompileModel("none", {"a*ln(-x)+b"}, 1, LocaleText()))->Solve = true;
    models.Add("more", CompileModel("more", {more}, 1, LocaleText()))->Solve = true;
    Settings settings;
    settings.Threads = threads;
    struct Impatient : SolveProgress {
      int Turns = 0, AbortAt = 0;
      void Yield() override { Aborted = Aborted || ++Turns == AbortAt; }
    } form;
    form.AbortAt = abortAt;
    std::string log;
    const SeriesAnswers answers = SolveSeries(series, models, settings, 1, log, form);
    EXPECT_TRUE(abortAt > 0 || !answers.Aborted);
    std::string all;
    for (const SeriesFit& fit : answers.Fits) {
      all += std::to_string(fit.Column) + ' ' + fit.Model + ' ' + std::to_string(fit.Rank) + ' ' + fit.Status + ' ' +
             std::to_string(fit.Points) + ' ' + JsonNumber(fit.R2) + ' ' + JsonNumber(fit.RSS);
      for (const SeriesFit::Coefficient& c : fit.Coefficients)
        all += ' ' + c.Name + ' ' + JsonNumber(c.Value) + ' ' + JsonNumber(c.StdErr);
      all += '\n';
    }
    return std::pair(all, log);
  };
  for (const std::string more : {"a*x^b", "a*x+rnd(1)*b"}) {
    const auto [fits, log] = solve(1, more, 0);
    for (const int threads : {2, 3, 16}) {
      const auto [sameFits, sameLog] = solve(threads, more, 0);
      EXPECT_EQ(sameFits, fits) << threads;
      EXPECT_EQ(sameLog, log) << threads;
      // What an abort leaves is the beginning of that, in whole columns.
      const auto [someFits, someLog] = solve(threads, more, 3);
      EXPECT_TRUE(fits.starts_with(someFits));
      EXPECT_TRUE(someFits.empty() || fits[someFits.size()] != someFits[someFits.rfind('\n', someFits.size() - 2) + 1]);
    }
    EXPECT_NE(fits.find("'lost' is not a number."), std::string::npos);
  }
}

SeriesData FiveColumns() {
  PickOf of("x\t10\tb\t9\t\"8,5\"\t7\n1\t1\t2\t3\t5\t\n2\t2\t5\t6\t4\t\n3\t3.1\t7\tabc\t3\t1\n4\t4\t11\t12\t1\t\n");
  return *of.Pick.Accept(of.User);
}

TEST(ProjectSolver, SolvesASeriesAndLeavesTheProjectAlone) {
  SolvableProject project;
  project.SolveOne("my line");
  const std::vector<std::string> history = project.History();
  const double before = project.Model("my line").Values(1);
  project.Windows.Series = FiveColumns();
  project.Solver.SolveSeries();
  ASSERT_TRUE(project.Windows.Answers);
  std::string told;
  for (const SeriesFit& fit : project.Windows.Answers->Fits)
    told += project.Windows.Answers->Names[fit.Column] + ":" + fit.Model + ":" + std::to_string(fit.Rank) + ":" +
            (fit.Rank > 0 ? "" : fit.Status) + "\n";
  EXPECT_EQ(told,
            "10:my line:1:\nb:my line:1:\n9::0:Row 4, column '9': 'abc' is not a number.\n"
            "8,5:my line:1:\n7:my line:0:Solution failed: not enough data points\n");
  EXPECT_EQ(project.History(), history);
  EXPECT_EQ(project.Model("my line").Values(1), before);
  EXPECT_EQ(project.SolvedNames(), "my line");

  // Aborted in the midst of the second column: the first one stays.
  project.Windows.AtTurn = [](ScriptedProgress& form) {
    if (form.Said.back().find("column 2, 'b'") != std::string::npos) form.Aborted = true;
  };
  project.Solver.SolveSeries();
  EXPECT_EQ(project.User.Last(), "inform: Solution Process Aborted.");
  EXPECT_TRUE(project.Windows.Answers->Aborted);
  EXPECT_EQ(project.Windows.Answers->Fits.size(), 1U);
  EXPECT_TRUE(project.Solver.Log().ends_with("SOLUTION PROCESS ABORTED BY USER.\r\n"));
}

TEST(SeriesAnswersTable, IsSortedByAnyColumn) {
  SolvableProject project;
  project.SolveOne("my line");
  project.Windows.Series = FiveColumns();
  project.Solver.SolveSeries();
  const auto answers = std::make_shared<const SeriesAnswers>(*project.Windows.Answers);
  const LocaleText comma{.DecimalSeparator = ',', .ListSeparator = ';', .ThousandSeparator = '.', .DateSeparator = '.'};
  SeriesAnswersTable table(answers, comma, NumberPatterns());
  std::string headings;
  for (std::size_t c = 0; c < table.ColumnCount(); ++c) headings += table.ColumnHeading(c) + "|";
  EXPECT_EQ(headings, "No.|Column|Model|Rank|Status|m|StdErr of m|n|StdErr of n|R^2|StdErr|RSS|Points|");
  const auto order = [&](std::size_t column, bool descending) {
    table.Sort(column, descending);
    std::string numbers;
    for (std::size_t row = 0; row < table.RowCount(); ++row) numbers += table.Cell(row, 0);
    return numbers;
  };
  EXPECT_EQ(order(0, false), "12345");
  EXPECT_EQ(order(0, true), "54321");
  EXPECT_EQ(order(1, false), "54312");  // 7, 8,5, 9, 10, then b
  EXPECT_EQ(order(1, true), "21345");
  EXPECT_EQ(order(5, false), "41235");  // what has no slope is last
  EXPECT_EQ(order(5, true), "21435");
  EXPECT_EQ(table.Cell(0, 12), "4");
  EXPECT_EQ(table.Cell(0, 5).substr(0, 2), "2,");
  EXPECT_EQ(table.Cell(3, 5), "");

  const Settings settings;
  const auto numbers = SeriesPlot(*answers, 0, SeriesAxis::Number, settings, comma);
  ASSERT_TRUE(numbers);
  ASSERT_EQ(numbers->PlotData.size(), 1U);
  EXPECT_EQ(numbers->PlotData[0].CopyDataTo().Y.size(), 3U);
  EXPECT_EQ(numbers->Y.AxisTitle, "m");
  const auto over = SeriesPlot(*answers, 0, SeriesAxis::Heading, settings, comma);
  ASSERT_TRUE(over);
  EXPECT_EQ(over->PlotData[0].CopyDataTo().Y.size(), 2U);  // "b" is none
  EXPECT_EQ(SeriesPlot(*answers, 0, SeriesAxis::Heading, settings).error(),
            "There are fewer than two columns with a value of m.");
}

}  // namespace
}  // namespace quorvex
