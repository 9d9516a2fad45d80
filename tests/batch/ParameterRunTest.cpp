// Parameter runs: one macro, a table of values, the real program.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "Golden.h"
#include "batch/Program.h"
#include "core/NumberText.h"
#include "files/ProjectFile.h"
#include "macro/ParameterFile.h"

namespace quorvex {
namespace {

using Rows = std::vector<std::vector<std::string>>;

const struct {
  const char* Text;
  std::vector<std::string> Names;  // none: no table
  Rows Values;
  std::string Fault = "";
} kTables[] = {
    {"a,b\n1,2\n3,4\n", {"a", "b"}, {{"1", "2"}, {"3", "4"}}},
    {"\r\n  \r\n \"a\" , b \"c\"\r\n 1 ,\t2 \r\n", {"a", "b c"}, {{"1", "2"}}},
    {"a,b\n\"x, \"\"y\"\"\nz\" , 4", {"a", "b"}, {{"x, \"y\"\nz", "4"}}},
    {"a,b,c\n1,,\n,2,3\n", {"a", "b", "c"}, {{"1", "", ""}, {"", "2", "3"}}},
    {"a,b,c\n1,2,", {"a", "b", "c"}, {{"1", "2", ""}}},
    {"a,b\r\n1\r\n2\r\n3,4\n\n\n", {"a", "b"}, {{"1", "2"}, {"3", "4"}}},  // a line end separates fields too
    {"a\n1\n\n2\n", {"a"}, {{"1"}, {"2"}}},
    {"a,b\n1,2\n3\n", {}, {}, "The last row has 1 of 2 values."},
    {"a,b\n1,2\n3\n\n\n", {}, {}, "The last row has 1 of 2 values."},
    {"a,b\n", {}, {}, "The file has no row below its names."},
    {"", {}, {}, "The file is empty."},
    {"a,b\n1,\"2\n", {}, {}, "Line 2: a quote is not closed."},
};

TEST(ReadParameterFile, ReadsRowsOfAsManyFieldsAsNames) {
  for (const auto& c : kTables) {
    TemporaryFolder folder;
    const auto table = ReadParameterFile(folder.Write("p.csv", c.Text));
    ASSERT_EQ(static_cast<bool>(table), !c.Names.empty()) << c.Text;
    if (!table) {
      EXPECT_EQ(table.error(), c.Fault);
      continue;
    }
    EXPECT_EQ(table->Names, c.Names) << c.Text;
    EXPECT_EQ(table->Rows, c.Values) << c.Text;
  }
  EXPECT_FALSE(ReadParameterFile("/no/such/file"));
}

// The log less the lines of the fits.
std::string ShortLog(const Program& program) {
  const std::string log = program.Log();
  std::string text;
  for (std::size_t at = 0; at < log.size();) {
    if (log.compare(at, 15, "Solving models\n") == 0) {
      text += "Solving models...\n";
      at = std::min({log.find("Writing solution", at), log.find("Unrecoverable", at), log.find("No valid", at)});
      continue;
    }
    const std::size_t end = log.find('\n', at) + 1;
    text += log.substr(at, end - at);
    at = end;
  }
  return text;
}

constexpr const char* kStars = "***************************************\n";

TEST(ParameterRun, ReadsAndSolvesAnewOnlyWhereAnInputChanged) {
  Program program;
  program.Folder.Write("one.txt", "1 2\n2 4\n3 6.5\n4 8\n");
  program.Folder.Write("two.txt", "1;1\n2;3\n3;2\n4;5\n");
  program.Folder.Write("p.csv",
                       "data, out, start\n"
                       "one, a.txt, 1\n"
                       "ONE, b.txt, 2\n"     // the same input; an Assign alone solves nothing anew
                       "none, c.txt, 1\n"    // a bad run
                       "two, no/d.txt, 1\n"  // an output that fails
                       "two, e.txt, 1\n");
  const int status = program.RunMacro(
      "B_MACRO\nDataFile = @%data%.txt\nOutputFile = @%OUT%\nLogFile = @run.log\nParameterFile = @p.csv\n"
      "Comment = file %data%\nInputDelimit = Space, Semicolon\n"
      "B_MODEL\nY = a*x\nAssign a = %start%, Operator = value, Fit = True\nE_MODEL\nE_MACRO\n");
  EXPECT_EQ(status, 200);
  EXPECT_EQ(program.Err, "Exit Status 200\n");
  // New data are not solved from where the search in others ended.
  EXPECT_EQ(program.Folder.Read("run.log").find("Using current initial estimates"), std::string::npos);
  ExpectGolden("ParameterRunLog.txt", ShortLog(program));
  EXPECT_NE(program.Folder.Read("b.txt").find("        file ONE\r\n"), std::string::npos);
  EXPECT_EQ(ReadAnswers(program.Folder.Read("b.txt"))[0].Values.at("a"),
            ReadAnswers(program.Folder.Read("a.txt"))[0].Values.at("a"));
  EXPECT_EQ(program.Folder.Read("c.txt"), "");
}

TEST(ParameterRun, SubstitutesInEveryFieldItMay) {
  Program program("1;9;2;1\n2;-7;4;1\n3;9;6.5;2\n4;9;8;1\n");
  program.Folder.Write("p.csv", "P,Q\nSemicolon,x\ncomma, \"y\"\n");
  program.RunMacro(
      "B_MACRO\nDataFile = @data.txt\nOutputFile = @%p%.txt\nLogFile = @run.log\nParameterFile = @p.csv\n"
      "InputDelimit = %P%\nColumnOrder = %Q%, none, y, sd\nMissingData = -7%P%\nWeighted = %Q%\n"
      "OutputFormat = %P%\nDataFirstLine = %Q%\nTableOutput = DataFile\nB_MODEL\nY=a*x\nE_MODEL\nE_MACRO\n");
  const std::string log = ShortLog(program);
  const std::string first =
      log.substr(log.find("Beginning Run: 1"), log.find("Reading the input") - log.find("Beginning Run: 1"));
  EXPECT_EQ(first,
            "Beginning Run: 1\nAssigning MissingData = '-7Semicolon'\nAssigning OutputFile = '@Semicolon.txt'\n"
            "Assigning InputDelimit = 'Semicolon'\nAssigning OutputFormat = 'Semicolon'\n"
            "Assigning ColumnOrder = 'x, none, y, sd'\nAssigning Weighted = 'x'\nAssigning DataFirstLine = 'x'\n");
  EXPECT_NE(program.Folder.Read("Semicolon.txt").find("DataPoints\t4\r\nX\tY\r\n1\t2\r\n2\t4\r\n"), std::string::npos);
  // The second row leaves no column for x, and so no points: nothing is solved, and nothing fails.
  EXPECT_NE(program.Folder.Read("comma.txt").find("DataPoints\t0\r\n"), std::string::npos);
  EXPECT_NE(log.find("1: Run Successful\n2: Run Successful\n"), std::string::npos);
}

// Bounds out of the table, with the comma of a locale; other bounds are solved for anew.
TEST(ParameterRun, TakesBoundsFromTheTable) {
  Program program("1;2\n2;4\n3;6,5\n4;8\n");
  program.Folder.Write("p.csv", "n,most\n1,\"1,5\"\n2,\"1,5\"\n3,\n4,x\n");
  program.RunMacro(
      "B_MACRO\nDataFile = @data.txt\nOverrideDecimal = False\nInputDelimit = SemiColon\nOutputFile = @%n%.txt\n"
      "LogFile = @run.log\nParameterFile = @p.csv\nB_MODEL\nY = a*x\n"
      "Assign a = 3; Operator = Value; Fit = True; Minimum = 0; Maximum = %most%\nE_MODEL\nE_MACRO\n",
      "LC_ALL=de_DE.UTF-8");
  const std::string log = program.Folder.Read("run.log");
  const auto answer = [&](const std::string& file) {
    return NumericText(ReadAnswers(program.Folder.Read(file))[0].Values.at("a")[0]).value_or(NAN);
  };
  EXPECT_EQ(answer("1.txt"), 1.5) << log;
  EXPECT_EQ(answer("2.txt"), 1.5);
  EXPECT_NEAR(answer("3.txt"), 61.5 / 30, 1e-9);
  EXPECT_NE(log.find("Coefficient a lies on its maximum of 1.5."), std::string::npos) << log;
  EXPECT_NE(log.find("Coefficient a starts on its maximum of 1.5, since 3 lies above."), std::string::npos);
  EXPECT_NE(log.find("is ignored: its Maximum, 'x', is no number"), std::string::npos);
}

TEST(ParameterRun, KeepsTheLastApplicationOfAnAssignWithSeveralParameters) {
  Program program("1 2\n2 4\n3 6.5\n4 8\n");
  program.Folder.Write("p.csv", "v,flag\n3,False\n");
  ASSERT_EQ(program.RunMacro("B_MACRO\nDataFile = @data.txt\nOutputFile = @out.txt\nLogFile = @run.log\n"
                             "ParameterFile = @p.csv\nB_MODEL\nY=a*x+b\n"
                             "Assign a = %v%, Operator = Value, Fit = %flag%\nE_MODEL\nE_MACRO\n"),
            0);
  const ModelAnswer answer = ReadAnswers(program.Folder.Read("out.txt")).at(0);
  EXPECT_EQ(answer.Number("a"), 3);
  EXPECT_EQ(answer.Number("a", 1), 0);
  EXPECT_NE(ShortLog(program).find("Assigning %v% = '3\nAssigning %flag% = 'False\n"), std::string::npos);
}

TEST(ParameterRun, PutsValuesInOnceAndWithinBounds) {
  Program program("1 2\n2 4\n3 6.5\n4 8\n");
  std::string names = "p,q", once = "<%P%>,%p%", doubled = "%q%%Q%,%c0%%c0%";
  for (int i = 0; i < 18; ++i) {
    const std::string next = "%c" + std::to_string(i + 1) + "%";
    names += ",c" + std::to_string(i);
    once += ",1";
    doubled += "," + next + next;
  }
  program.Folder.Write("p.csv", names + "\n" + once + "\n" + doubled + "\n" + once + "\n");
  for (const std::string named : {"Comment", "Assign"}) {
    const std::string comment = named == "Comment" ? "[%p%][%q%]" : "none", value = named == "Assign" ? "%q%" : "1";
    EXPECT_EQ(program.RunMacro("B_MACRO\nDataFile = @data.txt\nOutputFile = @out.txt\nLogFile = @run.log\nComment = " +
                               comment + "\nParameterFile = @p.csv\nB_MODEL\nY=a*x+b\nAssign a = " + value +
                               ", Operator = Value, Fit = True\nE_MODEL\nE_MACRO\n"),
              80);
    const std::string written = program.Folder.Read("out.txt");
    EXPECT_EQ(written.find("        [<%P%>][%p%]\r\n") != std::string::npos, named == "Comment") << written;
    const std::string log = ShortLog(program);
    EXPECT_NE(log.find("The parameters make " + named + " longer than 100000 characters.\n"), std::string::npos);
    EXPECT_NE(log.find("1: Run Successful\n2: Run Failed\n3: Run Successful\n"), std::string::npos);
  }
}

TEST(ParameterRun, TurnsToAProjectWithoutReadingAgain) {
  Program program("4 8\n1 2\n3 6.5\n2 4\n");
  program.Folder.Write("p.csv", "form,out\nstructured,out.txt\nquorvex,out.qvx\n");
  ASSERT_EQ(program.RunMacro("B_MACRO\nDataFile = @data.txt\nOutputFile = @%out%\nOutputFormat = %form%\n"
                             "LogFile = @run.log\nParameterFile = @p.csv\nB_MODEL\nY=a*x+b\nE_MODEL\nE_MACRO\n"),
            0);
  EXPECT_NE(ShortLog(program).find("Input parameters unchanged\n"), std::string::npos);
  const Result<Project> project = ReadProject(program.Folder.Path("out.qvx"), {});
  ASSERT_TRUE(project) << project.error();
  EXPECT_EQ(project->Sheet.Cells.GridCellNumber(1, 1), 4);
  EXPECT_EQ(project->Sheet.Cells.GridCellNumber(4, 2), 4);
}

TEST(ParameterRun, EndsOnATableThatCannotBeRead) {
  const struct {
    const char *Table, *Fault;
  } kFaults[] = {{"", "The file is empty."}, {"a,b\n1\n", "The last row has 1 of 2 values."}};
  for (const auto& c : kFaults) {
    Program program;
    program.Folder.Write("p.csv", c.Table);
    EXPECT_EQ(program.RunMacro("B_MACRO\nParameterFile = @P.csv\nLogFile = @run.log\nE_MACRO\n"), 80);
    const std::string log = ShortLog(program);
    EXPECT_EQ(log.substr(log.find("Reading parameter")),
              "Reading parameter file '@p.csv'\n" + std::string(c.Fault) + "\nError reading parameter file\n" + kStars +
                  "Log Summary:\nRun Failed\n" + kStars + "Abnormal termination\nExit Status 80\n");
  }
}

TEST(ParameterRun, SaysWhyNothingCouldBeSolved) {
  const std::pair<const char*, const char*> macros[] = {
      {"", "No valid regression models detected\n"},
      {"IndependentVariables = 2\nB_MODEL\nY=a*x3\nE_MODEL\n",
       "Unrecoverable error encountered during the solution process\n"},
  };
  for (const auto& [models, words] : macros) {
    Program program("1 2 3\n2 4 4\n3 6 7\n");
    program.Folder.Write("p.csv", "a\n1\n2\n");
    EXPECT_EQ(program.RunMacro("B_MACRO\nDataFile = @data.txt\nOutputFile=@%a%\nParameterFile = @p.csv\n"
                               "LogFile = @run.log\n" +
                               std::string(models) + "E_MACRO\n"),
              400 % 256);
    const std::string log = ShortLog(program);
    // Each run tries again.
    EXPECT_NE(log.find("Solving models...\n" + std::string(words) + kStars + "Beginning Run: 2\n"), std::string::npos)
        << log;
    EXPECT_NE(log.find(words, log.find("Beginning Run: 2")), std::string::npos);
    EXPECT_TRUE(log.ends_with("Normal termination\n"));
  }
}

TEST(ParameterRun, GoesThroughTwoHundredRuns) {
  Program program;
  std::string table = "data,name,comment\n", summary = "Log Summary:\n";
  for (int run = 1; run <= 200; ++run) {
    const int set = (run - 1) / 20;  // ten runs of twenty
    const bool bad = run % 50 == 0;
    table += (bad ? "missing" : "set" + std::to_string(set)) + ".txt,out" + std::to_string(run) + ",\"run, " +
             std::to_string(run) + "\"\n";
    summary += std::to_string(run) + (bad ? ": Run Failed\n" : ": Run Successful\n");
    program.Folder.Write("set" + std::to_string(set) + ".txt",
                         "1 " + std::to_string(set) + "\n2 5\n3 " + std::to_string(8 + set) + "\n");
  }
  program.Folder.Write("p.csv", table);
  EXPECT_EQ(program.RunMacro("B_MACRO\nDataFile = @%data%\nOutputFile = @%name%.txt\nComment = %comment%\n"
                             "ParameterFile = @p.csv\nLogFile = @run.log\nB_MODEL\nY = a*x\nE_MODEL\nE_MACRO\n"),
            110);
  const std::string log = ShortLog(program);
  const auto count = [&](const std::string& words) {
    int found = 0;
    for (std::size_t at = 0; (at = log.find(words, at)) != std::string::npos; ++at) ++found;
    return found;
  };
  // Ten sets; runs 50 and 150 fail within a set, which is then read once more, runs 100 and 200 at the end of one.
  EXPECT_EQ(count("Reading the input data file '"), 10 + 4 + 2);
  EXPECT_EQ(count("Solving models"), 10 + 2);
  EXPECT_EQ(count("Data Source Error: 110\n"), 4);
  EXPECT_EQ(count("Input parameters unchanged\n"), 196 - 12);
  EXPECT_NE(log.find(summary + kStars + "Normal termination\n"), std::string::npos);
  for (int run = 1; run <= 200; ++run) {
    const std::string output = program.Folder.Read("out" + std::to_string(run) + ".txt");
    if (run % 50 == 0) {
      EXPECT_EQ(output, "");
      continue;
    }
    EXPECT_NE(output.find("        run, " + std::to_string(run) + "\r\n"), std::string::npos);
    const int set = (run - 1) / 20;  // a = sum xy / sum xx
    EXPECT_NEAR(ReadAnswers(output).at(0).Number("a"), (set + 10 + 3 * (8 + set)) / 14.0, 1e-9);
  }
}

TEST(SpreadsheetLayout, HoldsTheSameInCells) {
  Program program("1 3 1\n2 5 1\n3 9 2\n");
  ASSERT_EQ(
      program.RunMacro("B_MACRO\nDataFile = @data.txt\nOutputFile = @out.txt\nOutputFormat = Spreadsheet\n"
                       "Comment = two\nComment = lines\nOutputDelimit = Semicolon\nWeighted = True\n"
                       "TableOutput = DataFile, CalcData, ErrorData, MinMaxError\nB_MODEL\nID = held\nF1=a*x\nY=F1+b\n"
                       "Assign a = 2, Operator = value, Fit = False\nAssign b = 1, Operator = value, Fit = False\n"
                       "E_MODEL\nE_MACRO\n"),
      0);
  std::string text = program.Folder.Read("out.txt");
  std::erase(text, '\r');
  const std::size_t at = text.find("Quorvex Macro");
  text.erase(at, text.find('\n', at) - at);
  ExpectGolden("MacroSpreadsheet.txt", text);
}

}  // namespace
}  // namespace quorvex
