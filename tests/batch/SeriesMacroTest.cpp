// Series: a macro that runs once for each Y column of its data, the real program.

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <random>

#include "Paths.h"
#include "batch/Program.h"
#include "core/NumberText.h"

namespace quorvex {
namespace {

const std::string kHead =
    "B_MACRO\nDataFile = @data.txt\nDataFirstLine = 2\nIndependentVariables = 1\nResultFile = @all.jsonl\n"
    "LogFile = @run.log\n";
const std::string kLine = "B_MODEL\nID = Line %SERIES%\nY = a+b*x\nE_MODEL\nE_MACRO\n";

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  for (std::string_view rest = text; !rest.empty();) lines.emplace_back(TakeLine(rest));
  return lines;
}

std::string From(const std::string& line, const std::string& member) { return line.substr(line.find(member)); }

// A plate over a dilution series, out of order in X, with wells that are shorter and points that are missing.
std::string Plate(int wells, int points, double scale) {
  std::mt19937 random(1);
  std::string text = "dose";
  for (int w = 0; w < wells; ++w) text += "\tW" + std::to_string(w);
  for (int i = 0; i < points; ++i) {
    const double x = std::pow(10.0, 4.0 * (i * 7 % points) / points - 2);
    text += "\n" + GeneralNumber(x);
    for (int w = 0; w < wells; ++w) {
      const double noise = static_cast<double>(random()) / 4294967296.0 * 0.02;
      const double y = scale * (0.1 + (1 + 0.1 * w) / (1 + std::pow(x, -1 - 0.05 * w)) + noise);
      const bool isMissing = (w == 1 && i >= points / 2) || (w == 2 && i % 5 == 0);
      text += "\t" + (isMissing ? "" : GeneralNumber(y));
    }
  }
  return text + "\n";
}

TEST(Series, HasTheNumbersOfSingleMacrosToTheBit) {
  constexpr int kWells = 6;
  const std::string models =
      "B_MODEL\nID = Logistic\nY = bottom+(top-bottom)/(1+(c/x)^s)\nAssign bottom = 1, Operator = * YMin, Fit = True\n"
      "Assign top = 1, Operator = * YMax, Fit = True\nAssign c = 1, Operator = Value, Fit = True\n"
      "Assign s = 1, Operator = Value, Fit = True\nE_MODEL\nB_MODEL\nY = a*x+b\nE_MODEL\nE_MACRO\n";
  for (const double scale : {1.0, 1e-9, 1e9}) {
    for (const std::string weighted : {"", "Weighted = True\n"}) {
      // The column of X serves as deviations of all.
      const std::string order = weighted.empty() ? "x" : "sd,x";
      std::string data = Plate(kWells, 40, scale);
      Program program;
      if (!weighted.empty()) {
        std::string doubled;
        for (const std::string& line : Lines(data)) doubled += line.substr(0, line.find('\t')) + "\t" + line + "\n";
        data = doubled;
      }
      program.Folder.Write("data.txt", data);
      ASSERT_EQ(program.RunMacro(kHead + "DataSeries = True\n" + weighted + "ColumnOrder = " + order + ",y\n" + models),
                0);
      const std::vector<std::string> series = Lines(program.Folder.Read("all.jsonl"));
      ASSERT_EQ(series.size(), static_cast<std::size_t>(kWells));
      for (int w = 0; w < kWells; ++w) {
        std::string drops;
        for (int d = 0; d < w; ++d) drops += ",drop";
        ASSERT_EQ(program.RunMacro(kHead + "InputDelimit = Tab\n" + weighted + "ColumnOrder = " + order + drops +
                                   ",y\n" + models),
                  0);
        const std::string& line = series[static_cast<std::size_t>(w)];
        EXPECT_EQ(From(line, "\"models\""), From(Lines(program.Folder.Read("all.jsonl")).at(0), "\"models\""));
        EXPECT_TRUE(line.starts_with("{\"run\":" + std::to_string(w + 1) + ",\"parameters\":{\"SERIES\":\"W" +
                                     std::to_string(w) + "\"},"))
            << line;
      }
    }
  }
}

// One line for each run: its number, name, status and what follows.
std::string Told(const Program& program, const std::string& file = "all.jsonl") {
  std::string told;
  for (const std::string& line : Lines(program.Folder.Read(file))) {
    const std::string series = From(line, "\"series\":");
    told += line.substr(7, line.find(',') - 7) + " " + series.substr(9, series.find(",\"message\"") - 9);
    const std::size_t points = line.find("\"points\":");
    told += (points == std::string::npos ? "" : line.substr(points + 8, 3)) + "\n";
  }
  return told;
}

TEST(Series, LeavesMissingCellsOutOfTheirColumnAlone) {
  Program program(
      "x,\"Ä "
      "\"\"1\"\"\",a/b,a_b,,A,A,%SERIES%,<b>,007\n1,1,2,1,1,1,1,1,1,1\n2,2,2,NA,2.1,abc,2,2,2,NA\n3,3,4,3,3,3,3,3,"
      "3,3\n4,4,4,4.1,,4\n\n5,5,4,5,5,5\n");
  // A failing column does not stop those behind it.
  ASSERT_EQ(program.RunMacro(kHead + "DataSeries = True\nMissingData = NA\nOutputFile = @out_%SERIES%.txt\n" + kLine),
            150);
  EXPECT_EQ(Told(program),
            "1 \"Ä \\\"1\\\"\",\"status\":0:5,\n2 \"a/b\",\"status\":0:5,\n3 \"a_b_2\",\"status\":0:4,\n"
            "4 \"4\",\"status\":0:4,\n5 \"A\",\"status\":150\n6 \"A_2\",\"status\":0:3,\n"
            "7 \"%SERIES%\",\"status\":0:3,\n8 \"<b>\",\"status\":0:3,\n9 \"007\",\"status\":0:2,\n");
  const std::string results = program.Folder.Read("all.jsonl");
  EXPECT_NE(results.find("\"message\":\"Row 3, column 'A': 'abc' is not a number.\""), std::string::npos) << results;
  for (const char* name : {"Ä \"1\"", "a_b", "a_b_2", "4", "A_2", "%SERIES%", "<b>"})
    EXPECT_NE(program.Folder.Read("out_" + std::string(name) + ".txt").find("Model_ID = Line "), std::string::npos)
        << name;
  const std::string command = "/usr/bin/python3 " + TestData("check_results.py") + " " +
                              TestData("../../docs/result-schema.json") + " " + program.Folder.Path("all.jsonl") +
                              " >" + program.Folder.Path("verdict") + " 2>&1";
  static_cast<void>(std::system(command.c_str()));
  EXPECT_EQ(program.Folder.Read("verdict"), "9\n");

  // What is missing is run again, in its place.
  program.Folder.Write("data.txt", "x,\"Ä \"\"1\"\"\",a/b,a_b,,A\n1,1,2,1,1,1\n2,2,2,2,2.1,2\n3,3,4,3,3,3\n");
  EXPECT_EQ(program.Run("-runcfg " + program.Folder.Path("macro.cfg") + " -missing"), 0);
  EXPECT_NE(program.Log().find("4: Run Skipped\n5: Run Successful\n***"), std::string::npos) << program.Log();
}

TEST(Series, RunsInPartsAndByStatus) {
  Program program("x\t10\t20\t30\t40\n1\t1\t1\t1\t\n2\t2.2\t2.1\t2.2\t\n3\t3\t3\t3\t1\n4\t4\t4\t4.1\t\n");
  const std::string statements = kHead + "DataSeries = True\n";
  ASSERT_EQ(program.RunMacro(statements + kLine), 0);
  EXPECT_EQ(program.RunMacro(statements + "StrictStatus = True\n" + kLine), 164);     // 420
  EXPECT_EQ(program.RunMacro(statements + "RequireSolution = True\n" + kLine), 154);  // 410
  EXPECT_EQ(
      Told(program),
      "1 \"10\",\"status\":0:4,\n2 \"20\",\"status\":0:4,\n3 \"30\",\"status\":0:4,\n4 \"40\",\"status\":410:1,\n");
  EXPECT_EQ(program.Run("-runcfg " + program.Folder.Path("macro.cfg") + " -part 2/3"), 0);
  EXPECT_EQ(Told(program, "all.2.jsonl"), "2 \"20\",\"status\":0:4,\n");
  // A heading may be a start.
  ASSERT_EQ(program.RunMacro(statements + "B_MODEL\nY = a+b*x\nAssign a = %SERIES%, Operator = Value, Fit = False\n"
                                          "Assign b = 1, Operator = Value, Fit = True\nE_MODEL\nE_MACRO\n"),
            0);
  EXPECT_NE(Lines(program.Folder.Read("all.jsonl")).at(2).find("\"name\":\"a\",\"value\":30,"), std::string::npos);
}

TEST(Series, NamesColumnsWithoutHeadingsByTheirNumbers) {
  const struct {
    const char *Data, *Locale, *Told;
  } cases[] = {
      {"1 1 2\n2  3 4\n3 5 6\n", "C", "1 \"1\",\"status\":0:3,\n2 \"2\",\"status\":0:3,\n"},
      {"1;1,5;2,5\n2;;4\n3;5,5;6\n", "de_DE.UTF-8", "1 \"1\",\"status\":0:2,\n2 \"2\",\"status\":0:3,\n"},
      {"1 1,5 2,5\n2 2,5 4\n3 5,5 6\n", "de_DE.UTF-8", "1 \"1\",\"status\":0:3,\n2 \"2\",\"status\":0:3,\n"},
      {"1,1\n2,2\n3,3\n", "C", "1 \"1\",\"status\":0:3,\n"},
  };
  for (const auto& c : cases) {
    Program program(c.Data);
    ASSERT_EQ(
        program.RunMacro(kHead + "DataSeries = True\nDataFirstLine = 1\n" + kLine, std::string("LC_ALL=") + c.Locale),
        0);
    EXPECT_EQ(Told(program), c.Told) << c.Data;
  }
}

TEST(Series, IsRefusedWithASentenceWhereThereIsNone) {
  const struct {
    const char *Data, *Statements;
    int Status;
    const char* Sentence;
  } cases[] = {
      {"x\n1\n", "", 150, "The data have 1 column, and none of them is a column of Y."},
      {"", "", 150, "The file has no data from line 2 on."},
      {"x,y\n1,2\n", "DataFile = @none.txt\n", 110, "The file does not exist."},
      {"x,y\n1,2\n", "ColumnOrder = y\n", 150, "The ColumnOrder has no column x1."},
      {"x,y\n1,2\n", "ParameterFile = @p.csv\n", 80,
       "DataSeries and ParameterFile exclude each other: a series has its columns for rows."},
      {"x,y\n1,2\n", "SQLQuery = SELECT x\n", 150,
       "DataSeries and SQLQuery exclude each other: a series is read from a file."},
  };
  for (const auto& c : cases) {
    Program program;
    program.Folder.Write("data.txt", *c.Data == '\0' ? "x,y\n" : c.Data);
    program.Folder.Write("all.jsonl", "earlier\n");
    EXPECT_EQ(program.RunMacro(kHead + "DataSeries = True\n" + c.Statements + kLine), c.Status & 255) << c.Sentence;
    EXPECT_NE(program.Log().find(c.Sentence), std::string::npos) << program.Log();
    EXPECT_EQ(program.Folder.Read("all.jsonl"), "earlier\n");
  }
}

}  // namespace
}  // namespace quorvex
