// The result file of macro runs, and the statuses that tell of models: the real program, held by a validator of JSON
// schemas and by the readers among the examples.

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <utility>

#include "Paths.h"
#include "batch/Program.h"
#include "batch/RunPart.h"
#include "core/JsonText.h"

namespace quorvex {
namespace {

constexpr const char* kData = "1 5.1\n2 6.9\n3 9.2\n4 10.8\n5 13.1\n";
constexpr const char* kLine = "B_MODEL\nID = Line\nY = a+b*x\nE_MODEL\nE_MACRO\n";
const std::string kHead = "B_MACRO\nDataFile = @data.txt\nResultFile = @all.jsonl\nLogFile = @run.log\n";

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find('\n', at), text.size());
    lines.push_back(text.substr(at, end - at));
    at = end + 1;
  }
  return lines;
}

// Each value behind "name": in a line, up to what ends it.
std::vector<std::string> ValuesOf(const std::string& line, const std::string& name) {
  std::vector<std::string> values;
  const std::string key = "\"" + name + "\":";
  for (std::size_t at = 0; (at = line.find(key, at)) != std::string::npos;) {
    at += key.size();
    values.push_back(line.substr(at, line.find_first_of(",}]", at) - at));
  }
  return values;
}

// The validator's verdict: the count of lines that it took, or why it did not.
std::string Verdict(const Program& program) {
  const std::string command = "/usr/bin/python3 " + TestData("check_results.py") + " " +
                              TestData("../../docs/result-schema.json") + " " + program.Folder.Path("all.jsonl") +
                              " >" + program.Folder.Path("verdict") + " 2>&1";
  static_cast<void>(std::system(command.c_str()));
  return program.Folder.Read("verdict");
}

TEST(JsonText, IsAlwaysValidUtf8) {
  const std::pair<std::string, const char*> cases[] = {
      {"", R"("")"},
      {"a\"b\\c/", R"("a\"b\\c/")"},
      {std::string("\0\x1f\t\n\r\x7f", 6), R"("\u0000\u001f\u0009\u000a\u000d\u007f")"},
      {"Ä € 𝄞", R"("Ä € 𝄞")"},
      {"\xFF"
       "a\xC3",
       "\"\xEF\xBF\xBD"
       "a\xEF\xBF\xBD\""},
      {"\xC0\x80\xED\xA0\x80", "\"\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\""},
  };
  for (const auto& [text, json] : cases) EXPECT_EQ(JsonText(text), json);
}

TEST(JsonNumber, ReadsBackToTheSameBits) {
  for (const double value : {0.1, 1.0 / 3, -0.0, 0.0, 1e-320, 5e-324, 1e308, std::numeric_limits<double>::max(),
                             2.2250738585072014e-308, 9007199254740993.0, -1e21, 123456789.0})
    EXPECT_EQ(std::bit_cast<std::uint64_t>(std::strtod(JsonNumber(value).c_str(), nullptr)),
              std::bit_cast<std::uint64_t>(value))
        << value;
  for (const double value : {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
                             std::numeric_limits<double>::quiet_NaN()})
    EXPECT_EQ(JsonNumber(value), "null");
}

// Names and values of any kind, models that fail, scales at both ends, and runs that come to nothing.
TEST(ResultFile, HoldsALineForEachRunByItsSchema) {
  for (const char* locale : {"LC_ALL=C", "LC_ALL=de_DE.UTF-8"}) {
    Program program(kData);
    program.Folder.Write("ä'ö.txt", "1 2\n2 4.5\n3 6\n");
    program.Folder.Write("tiny.txt", "1 1e-320\n2 3e-320\n3 4e-320\n4 9e-320\n");
    program.Folder.Write("huge.txt", "1 1e308\n2 1.2e308\n3 1.1e308\n4 1.5e308\n");
    program.Folder.Write(
        "p.csv",
        "NAME,na\"me,NAME\ndata,\"quo\"\"te\\\",1\nä'ö,\x01\x7f,2\ntiny,,3\nhuge,\"two\nlines\",4\nnone,x,5\n");
    const int status = program.RunMacro(
        "B_MACRO\nDataFile = @%NAME%.txt\nResultFile = @all.jsonl\nParameterFile = @p.csv\nInputDelimit = Space\n"
        "B_MODEL\nID = L \"%NAME%\"\nY = a+b*x\nE_MODEL\nB_MODEL\nY = a*ln(x-10)\nE_MODEL\n"
        "B_MODEL\nID = five\nY = a+b*x+c*x^2+d*x^3+e*x^4+f*x^5\nE_MODEL\nE_MACRO\n",
        locale);
    EXPECT_EQ(status, 110) << program.Err;
    EXPECT_EQ(Verdict(program), "5\n") << locale;
    const std::vector<std::string> lines = Lines(program.Folder.Read("all.jsonl"));
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_TRUE(lines[0].starts_with(R"({"run":1,"parameters":{"NAME":"data","name":"quo\"te\\"},"data":")"))
        << lines[0];
    EXPECT_NE(lines[0].find(R"("status":0,"message":null,"models":[{"id":"L \"data\"","rank":1,"ended":"converged",)"
                            R"("points":5,)"),
              std::string::npos)
        << lines[0];
    EXPECT_NE(lines[0].find(R"("coefficients":[],"message":"Solution failed: not enough data points"})"),
              std::string::npos);
    EXPECT_NE(lines[1].find(R"("name":"\u0001\u007f")"), std::string::npos) << lines[1];
    EXPECT_NE(lines[4].find(R"("status":110,"message":"The file does not exist.","models":[]})"), std::string::npos)
        << lines[4];
  }
}

TEST(ResultFile, HasTheNumbersOfTheOutputInFull) {
  Program program(kData);
  ASSERT_EQ(program.RunMacro(kHead + "OutputFile = @out.txt\n" + kLine), 0);
  const std::string line = program.Folder.Read("all.jsonl");
  const ModelAnswer answer = ReadAnswers(program.Folder.Read("out.txt")).at(0);
  const std::vector<std::string> values = ValuesOf(line, "value"), errors = ValuesOf(line, "stdErr");
  ASSERT_EQ(values.size(), 2U);
  ASSERT_EQ(errors.size(), 3U);  // of the estimate, and of each coefficient
  const struct {
    std::string Exact;
    double Rounded;
  } pairs[] = {{values[0], answer.Number("a")},
               {values[1], answer.Number("b")},
               {errors[0], answer.Number("Standard_Error_of_the_Estimate")},
               {errors[1], answer.Number("a", 1)},
               {errors[2], answer.Number("b", 1)},
               {ValuesOf(line, "rss")[0], answer.Number("Residual_Sum_of_Squares_(Absolute)")}};
  for (const auto& [exact, rounded] : pairs) EXPECT_NEAR(std::stod(exact) / rounded, 1, 1e-14) << exact;
}

TEST(ResultFile, IsReadByTheExamples) {
  Program program(kData);
  program.Folder.Write("p.csv", "n\ndata\nnone\ndata\n");
  program.RunMacro("B_MACRO\nDataFile = @%n%.txt\nResultFile = @all.jsonl\nParameterFile = @p.csv\n" +
                   std::string(kLine));
  std::string text = program.Folder.Read("all.jsonl");
  const std::string last = Lines(text).back();
  const std::string row = "\t0\tLine\ta=" + ValuesOf(last, "value")[0] + "\tb=" + ValuesOf(last, "value")[1] + "\n";
  // Of a line that was broken off nothing is read.
  program.Folder.Write("all.jsonl", text + last.substr(0, last.size() / 2));
  const std::pair<const char*, const char*> readers[] = {
      {"/usr/bin/python3", "/usr/bin/python3 @best.py"},
      {"jq", "jq -rR -f @best.jq"},
      {"Rscript -e 'library(jsonlite)'", "Rscript @best.R"},
  };
  for (const auto& [interpreter, command] : readers) {
    if (std::system((std::string(interpreter) + " </dev/null >/dev/null 2>&1").c_str()) == 127 * 256 ||
        (std::string(interpreter).starts_with("R") &&
         std::system((std::string(interpreter) + " 2>/dev/null").c_str()) != 0))
      continue;  // that one is not on this machine
    std::string reader = command;
    reader.replace(reader.find('@'), 1, TestData("../../examples/results/"));
    ASSERT_EQ(
        std::system((reader + " " + program.Folder.Path("all.jsonl") + " >" + program.Folder.Path("read")).c_str()), 0)
        << reader;
    // What the interpreters print of a number may have another form.
    std::vector<std::string> read = Lines(program.Folder.Read("read"));
    ASSERT_EQ(read.size(), 2U) << reader;
    for (const std::size_t i : {0U, 1U}) {
      EXPECT_TRUE(read[i].starts_with(std::to_string(2 * i + 1) + "\t0\tLine\ta=")) << read[i];
      for (const char* name : {"a=", "b="})
        EXPECT_EQ(std::stod(read[i].substr(read[i].find(name) + 2)), std::stod(row.substr(row.find(name) + 2)))
            << reader;
    }
  }
}

// What is there stays as it is, and nothing is solved for nothing.
TEST(ResultFile, IsRefusedWhereItIsAnotherFileOrCannotBe) {
  const struct {
    const char *Statements, *Said;
    int Status;
  } cases[] = {
      {"ResultFile = @data.txt", "is the data file of", 220},
      {"ResultFile = @macro.cfg", "is the macro file of", 220},
      {"ResultFile = @p.csv", "is the parameter file of", 220},
      {"ResultFile = @run.log", "is the log of", 220},
      {"ResultFile = @old1.txt\nOutputFile = @old%n%.txt", "is the output file of", 220},
      {"ResultFile = @link\nOutputFile = @old1.txt", "is the output file of", 220},
      {"ResultFile = @old1.txt\nOutputFile = @out.txt\nPlotFile = @old1.txt", "is the plot of", 220},
      {"ResultFile = @none/all.jsonl", "The folder does not exist.", 200},
      {"ResultFile = @", "The file cannot be accessed.", 220},
      {"ResultFile = /dev/full\nOutputFile = @out.txt", "The disk is full.", 230},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Statements);
    Program program(kData);
    program.Folder.Write("old1.txt", "kept");
    program.Folder.Write("p.csv", "n\n1\n");
    std::filesystem::create_symlink("old1.txt", program.Folder.Path("link"));
    EXPECT_EQ(program.RunMacro("B_MACRO\nDataFile = @data.txt\nLogFile = @run.log\nParameterFile = @p.csv\n" +
                               std::string(c.Statements) + "\n" + kLine),
              c.Status % 256);
    EXPECT_NE(program.Log().find(c.Said), std::string::npos) << program.Log();
    EXPECT_EQ(program.Folder.Read("old1.txt"), "kept");
    EXPECT_EQ(program.Folder.Read("data.txt"), kData);
    EXPECT_EQ(program.Folder.Read("p.csv"), "n\n1\n");
  }
  // An output does not fall on it either, by whatever name.
  Program program(kData);
  EXPECT_EQ(program.RunMacro(kHead + "OutputFile = @./all.jsonl\n" + kLine), 220);
  EXPECT_NE(program.Log().find("is the result file of this macro and is not overwritten."), std::string::npos);
  EXPECT_EQ(Verdict(program), "1\n");
}

// A password in a connect string is shown by no answer, however it came there.
TEST(ResultFile, HidesPasswords) {
  Program program;
  program.Folder.Write("p.csv", "driver,secret,whole\nNoDriver,geheim,DSN=x;Pwd=geheim\n");
  EXPECT_EQ(program.RunMacro("B_MACRO\nDataFile = Driver=%driver%;Pwd=%secret%\nSQLQuery = SELECT 1\n"
                             "ResultFile = @all.jsonl\nParameterFile = @p.csv\n" +
                             std::string(kLine)),
            160);
  const std::string line = program.Folder.Read("all.jsonl");
  EXPECT_EQ(line.find("geheim"), std::string::npos) << line;
  EXPECT_NE(line.find(R"("parameters":{"driver":"NoDriver","secret":"***","whole":"***"})"), std::string::npos) << line;
}

TEST(RunStatus, TellsOfModelsWhereTheMacroAsksForIt) {
  constexpr const char *kFails = "B_MODEL\nY = a*ln(x-10)\nE_MODEL\n", *kBroken = "B_MODEL\nY = a*x)\nE_MODEL\n",
                       *kSlow = "B_MODEL\nY = a*exp(b*x)+c\nE_MODEL\n", *kEnd = "E_MACRO\n";
  const struct {
    std::string Statements, Models;
    int Status;
    const char *Summary, *Line;
    bool HasOutput = true;
  } cases[] = {
      {"", kFails, 0, "Run Successful", ""},
      {"RequireSolution = True", kFails, 410, "Run Failed", "no model was solved", false},
      {"StrictStatus = True", kFails, 420, "Run Incomplete", "A model was not solved."},
      {"StrictStatus = True\nRequireSolution = True", kFails, 410, "Run Failed", "no model was solved", false},
      {"StrictStatus = True", std::string(kFails) + kLine, 420, "Run Incomplete", "A model was not solved."},
      {"StrictStatus = True", std::string(kBroken) + kLine, 420, "Run Incomplete",
       "1 of 2 models were not understood."},
      {"RequireSolution = True", std::string(kFails) + kLine, 0, "Run Successful", ""},
      {"StrictStatus = True", kLine, 0, "Run Successful", ""},
      {"MaxIterations = 1", kSlow, 0, "Run Successful", ""},
      {"MaxIterations = 1\nStrictStatus = True", kSlow, 430, "Run Incomplete", "ended at the limit of iterations"},
      {"MaxIterations = 1\nStrictStatus = True", std::string(kFails) + kSlow, 420, "Run Incomplete", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Statements + "\n" + c.Models);
    Program program(kData);
    EXPECT_EQ(program.RunMacro(kHead + "OutputFile = @out.txt\n" + c.Statements + "\n" + c.Models + kEnd),
              c.Status % 256);
    const std::string log = program.Log(), line = program.Folder.Read("all.jsonl");
    EXPECT_NE(log.find(std::string("Log Summary:\n") + c.Summary + "\n"), std::string::npos) << log;
    EXPECT_NE(log.find(c.Line), std::string::npos) << log;
    EXPECT_EQ(std::filesystem::exists(program.Folder.Path("out.txt")), c.HasOutput);
    EXPECT_EQ(Verdict(program), "1\n");
    EXPECT_EQ(ValuesOf(line, "status").at(0), std::to_string(c.Status)) << line;
  }
}

TEST(ParameterRun, SolvesAtEachRowWhereTheMacroSaysSo) {
  for (const bool each : {false, true}) {
    Program program(kData);
    program.Folder.Write("p.csv", "held\n2\n3\n");
    ASSERT_EQ(
        program.RunMacro(kHead + "ParameterFile = @p.csv\n" + (each ? "SolveEachRun = True\n" : "") +
                         "B_MODEL\nID = slope %held%\nY = a+b*x\nAssign b = %HELD%, Operator = Value, Fit = False\n"
                         "E_MODEL\nE_MACRO\n"),
        0);
    const std::vector<std::string> lines = Lines(program.Folder.Read("all.jsonl"));
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(ValuesOf(lines[1], "id").at(0), "\"slope 3\"");
    EXPECT_EQ(ValuesOf(lines[1], "value").at(1), each ? "3" : "2") << lines[1];
    EXPECT_NE(program.Log().find("Assigning ID = 'slope 2'\n"), std::string::npos) << program.Log();
  }
}

// What runs a program with too little memory for a file of some 20 MB. The address sanitizer reserves more addresses
// than any limit of the shell leaves, and has one of its own, by which it ends the program but where that asks whether
// there is memory, as it does for a file that is read as a whole.
#ifdef __SANITIZE_ADDRESS__
constexpr const char* kShortOfMemory = "env ASAN_OPTIONS=allocator_may_return_null=1:max_allocation_size_mb=8";
#else
constexpr const char* kShortOfMemory = "bash -c 'ulimit -v 60000; exec \"$0\" \"$@\"'";
#endif

// A row that is too large for the memory there is costs itself and no other one.
TEST(ParameterRun, GoesOnBehindARowThatRunsOutOfMemory) {
  Program program(kData);
  std::string huge = "\xFF\xFE";
  for (int i = 0; i < 2'000'000; ++i)
    for (const char c : std::to_string(i % 1000) + " 1\n") huge.append({c, '\0'});
  program.Folder.Write("huge.txt", huge);
  program.Folder.Write("p.csv", "n\ndata\nhuge\ndata\n");
  EXPECT_EQ(program.RunMacro("B_MACRO\nDataFile = @%n%.txt\nResultFile = @all.jsonl\nLogFile = @run.log\n"
                             "LogSummaryOnly = True\nThreads = 64\nParameterFile = @p.csv\n" +
                                 std::string(kLine),
                             kShortOfMemory),
            500 % 256);
  EXPECT_EQ(program.Log().find("1: Run Successful\n2: Run Failed: Out of memory\n3: Run Successful\n"),
            std::string("Log Summary:\n").size())
      << program.Log();
  EXPECT_EQ(Verdict(program), "3\n");
}

TEST(RunPart, PartsATableWithoutGapsOrRepeats) {
  for (const std::size_t rows : {0U, 1U, 7U, 10U, 1000U})
    for (const std::size_t count : {1U, 2U, 3U, 10U, 11U, 1'000'000'000U}) {
      std::size_t next = 0;
      for (std::size_t part = 1; part <= std::min<std::size_t>(count, 20); ++part) {
        const RunPart each{part, count};
        EXPECT_EQ(each.First(rows), next) << rows << "/" << count;
        EXPECT_EQ(each.End(rows), part * rows / count);
        next = each.End(rows);
      }
      EXPECT_EQ((RunPart{count, count}).End(rows), rows);
    }
  for (const char* text : {"0/4", "5/4", "a", "", "1", "1/", "/2", "1/2/3", "-1/2", "1/0", "1.5/2", "1/2x",
                           "1/1000000001", "99999999999999999999/99999999999999999999"})
    EXPECT_FALSE(ParseRunPart(text)) << text;
  const std::pair<const char*, const char*> names[] = {
      {"run.log", "run.3.log"},       {"a.b/run", "a.b/run.3"},       {"/x/all.y.jsonl", "/x/all.y.3.jsonl"},
      {"/x/.hidden", "/x/.hidden.3"}, {"C:\\a.b\\c", "C:\\a.b\\c.3"}, {"/dev/stdout", "/dev/stdout"}};
  for (const auto& [name, part] : names) EXPECT_EQ(NameOfPart(name, 3), part);
}

TEST(ParameterRun, RunsAPartOfItsTable) {
  Program program(kData);
  program.Folder.Write("p.csv", "n\n1\n2\n3\n4\n5\n6\n7\n");
  program.Folder.Write("macro.cfg", program.InFolder(kHead + "ParameterFile = @p.csv\n" + kLine));
  const std::string call = "-runcfg " + program.Folder.Path("macro.cfg");
  std::string runs;
  for (const char* part : {"1", "2", "3"}) {
    EXPECT_EQ(program.Run(call + " -PART " + part + "/3"), 0) << program.Err;
    for (const std::string& line : Lines(program.Folder.Read("all." + std::string(part) + ".jsonl")))
      runs += ValuesOf(line, "run").at(0) +
              (ValuesOf(line, "n").at(0) == '"' + ValuesOf(line, "run").at(0) + '"' ? " " : "!");
    runs += "| ";
  }
  EXPECT_EQ(runs, "1 2 | 3 4 | 5 6 7 | ");
  EXPECT_NE(program.Folder.Read("run.3.log").find("Log Summary:\r\n5: Run Successful\r\n6: "), std::string::npos);
  for (const char* name : {"run.log", "all.jsonl"}) EXPECT_FALSE(std::filesystem::exists(program.Folder.Path(name)));
  for (const char* part : {" -part 0/4", " -part 5/4", " -part a", " -part"}) {
    EXPECT_EQ(program.Run(call + part), 80) << part;
    EXPECT_NE(program.Err.find("is none: it reads i/n"), std::string::npos) << program.Err;
  }
  program.Folder.Write("macro.cfg", program.InFolder(kHead + kLine));
  EXPECT_EQ(program.Run(call + " -part 4/4"), 80);
  EXPECT_NE(program.Err.find("has no ParameterFile"), std::string::npos) << program.Err;
  EXPECT_FALSE(std::filesystem::exists(program.Folder.Path("run.4.log")));
}

TEST(ParameterRun, GoesOnWithWhatIsMissing) {
  for (const bool lines : {true, false}) {
    Program program(kData);
    program.Folder.Write("p.csv", "n,file\n1,data\n2,late\n3,data\n4,data\n");
    const std::string macro =
        program.InFolder(std::string("B_MACRO\nDataFile = @%file%.txt\nLogFile = @run.log\nParameterFile = @p.csv\n") +
                         (lines ? "ResultFile = @all.jsonl\n" : "OutputFile = @out%n%.txt\n") + kLine);
    program.Folder.Write("macro.cfg", macro);
    const std::string call = "-runcfg " + program.Folder.Path("macro.cfg");
    EXPECT_EQ(program.Run(call), 110);
    // As a run leaves it that is killed at its last row.
    if (lines) {
      const std::string text = program.Folder.Read("all.jsonl");
      program.Folder.Write("all.jsonl", text.substr(0, text.size() - 20));
    } else {
      std::filesystem::remove(program.Folder.Path("out4.txt"));
    }
    program.Folder.Write("late.txt", kData);
    EXPECT_EQ(program.Run(call + " -missing"), 0) << program.Err;
    const std::string log = program.Log(),
                      summary = "1: Run Skipped\n2: Run Successful\n3: Run Skipped\n4: Run Successful\n";
    EXPECT_NE(log.find("2: Run Failed\n"), std::string::npos);  // what was there stays
    EXPECT_NE(log.find(summary), std::string::npos) << log;
    if (lines) {
      EXPECT_EQ(Verdict(program), "5\n");
      EXPECT_EQ(ValuesOf(Lines(program.Folder.Read("all.jsonl")).back(), "run").at(0), "4");
    }
    EXPECT_EQ(program.Run(call + " -missing"), 0);
    EXPECT_NE(program.Log().find("1: Run Skipped\n2: Run Skipped\n3: Run Skipped\n4: Run Skipped\n"),
              std::string::npos);
    if (!lines) continue;
    // Another row is no answer of this one.
    program.Folder.Write("p.csv", "n,file\n1,data\n2,late\n33,data\n4,data\n");
    EXPECT_EQ(program.Run(call + " -missing"), 0);
    EXPECT_NE(program.Log().find("2: Run Skipped\n3: Run Successful\n4: Run Skipped\n"), std::string::npos);
  }
}

}  // namespace
}  // namespace quorvex
