#include <gtest/gtest.h>

#include "batch/Program.h"
#include "code/CodeLanguage.h"
#include "files/ProjectFile.h"
#include "import/OdbcSource.h"

namespace quorvex {
namespace {

constexpr const char* kData = "1 5.1\n2 6.9\n3 9.2\n4 10.8\n5 13.1\n";
const std::string kHead = "B_MACRO\nDataFile = @data.txt\nOutputFile = @out.txt\nLogFile = @run.log\n";
const std::string kModels =
    "B_MODEL\nID = \"the\" line */\nY = a+b*x\nE_MODEL\nB_MODEL\nID = bent\nY = a+b*x^2\nE_MODEL\nE_MACRO\n";

TEST(CodeMacro, WritesTheBestModelInEachLanguage) {
  Program program(kData);
  EXPECT_EQ(program.RunMacro(kHead + "CodeFile = @my fit.py\ncodefile=@fit.JS\n" + kModels), 0) << program.Err;
  EXPECT_NE(program.Log().find("Writing solution to @out.txt\nWriting code to @my fit.py\nWriting code to @fit.JS\n"),
            std::string::npos)
      << program.Log();
  const std::string python = program.Folder.Read("my fit.py"), script = program.Folder.Read("fit.JS");
  EXPECT_EQ(python.substr(0, python.find('\n')), "# \"the\" line * /");
  EXPECT_NE(python.find("\ndef my_fit(x):\n    a = 3.0"), std::string::npos) << python;
  EXPECT_NE(python.find("# my_fit(3.0) is to give 9.01"), std::string::npos) << python;
  EXPECT_NE(script.find("\nfunction fit(x) {\n"), std::string::npos) << script;

  // In the locale of the user the code stays what its language wants.
  EXPECT_EQ(program.RunMacro(kHead + "CodeFile = @german.py\n" + kModels, "LC_ALL=de_DE.UTF-8"), 0) << program.Err;
  const std::string german = program.Folder.Read("german.py");
  EXPECT_EQ(german.substr(german.find("):\n")), [&] {
    std::string same = python.substr(python.find("):\n"));
    for (std::size_t at = 0; (at = same.find("my_fit")) != std::string::npos;) same.replace(at, 6, "german");
    return same;
  }());
}

// Measurements from a file, a column of many or a database, in either locale, and the project opened again: one model.
TEST(CodeMacro, IsTheSameByEveryRoad) {
  Program program(kData);
  program.Folder.Write("series.txt", "x well\n" + std::string(kData));
  const std::string create = "NoCreat=0;Driver=SQLite3;Database=" + program.Folder.Path("lab.db");
  ASSERT_TRUE(QueryDatabase(create, "CREATE TABLE line (x REAL, y REAL)"));
  ASSERT_TRUE(QueryDatabase(create, "INSERT INTO line VALUES (1, 5.1), (2, 6.9), (3, 9.2), (4, 10.8), (5, 13.1)"));
  const std::string rest =
      "OutputFile = @out.qvx\nOutputFormat = Quorvex\nLogFile = @run.log\nCodeFile = @fit.py\nCodeFile = @fit.txt\n"
      "B_MODEL\nID = bent\nY = a+b*x*exp(c*x/ystd)+(x>xmean)\nE_MODEL\nE_MACRO\n";
  std::string python, formula;
  for (const std::string data :
       {"DataFile = @data.txt\n", "DataFile = @series.txt\nDataFirstLine = 2\nDataSeries = True\n",
        "DataFile = Driver=SQLite3;Database=@lab.db\nSQLQuery = SELECT x, y FROM line\n"}) {
    for (const char* environment : {"LC_ALL=C", "LC_ALL=de_DE.UTF-8"}) {
      ASSERT_EQ(program.RunMacro("B_MACRO\n" + data + rest, environment), 0) << data << program.Log();
      if (python.empty()) python = program.Folder.Read("fit.py"), formula = program.Folder.Read("fit.txt");
      EXPECT_NE(python.find("c = "), std::string::npos);
      EXPECT_EQ(program.Folder.Read("fit.py"), python) << data << environment;
      EXPECT_EQ(program.Folder.Read("fit.txt"), formula) << data << environment;
      const Result<Project> project = ReadProject(program.Folder.Path("out.qvx"), LocaleText());
      ASSERT_TRUE(project) << project.error();
      ModelClass* model = project->Models.Find("bent");
      ASSERT_NE(model, nullptr);
      EXPECT_EQ(*CodeForFile(*model, "fit.py"), python) << data << environment;
    }
  }
}

TEST(CodeMacro, PutsParametersIntoNames) {
  Program program(kData);
  program.Folder.Write("sites.csv", "SITE,START\nnorth,1\nsouth,2\n,3\n");
  const std::string models = "B_MODEL\nY = a+b*x\nAssign a = %START%, Operator = Value, Fit = True\nE_MODEL\nE_MACRO\n";
  EXPECT_EQ(program.RunMacro(kHead + "ParameterFile = @sites.csv\nCodeFile = %SITE%\nCodeFile = @%SITE%.r\n" + models),
            200);
  EXPECT_TRUE(std::filesystem::exists(program.Folder.Path("north.r")) &&
              std::filesystem::exists(program.Folder.Path("south.r")));
  EXPECT_NE(program.Log().find("A CodeFile of this run has no name, and that code is left out."), std::string::npos)
      << program.Log();
}

TEST(CodeMacro, LeavesOtherFilesAlone) {
  const struct {
    const char *Statements, *Fault;
    int Status;
  } kCases[] = {
      {"CodeFile = @fit.xyz\n", "The code '@fit.xyz' is not written: its name ends in none of .py, .r, .js", 200},
      {"CodeFile = @fit\n", "The code '@fit' is not written: its name ends in none of .py", 200},
      {"CodeFile = @none/fit.py\n", "The code '@none/fit.py' cannot be written. ", 200},
      {"CodeFile = @link.py\n", "The code '@link.py' is the data file of this macro and is not overwritten.", 220},
      {"CodeFile = @out.py\nOutputFile = @out.py\n",
       "The code '@out.py' is the output file of this macro and is not overwritten.", 220},
      {"CodeFile = @pipe.py\n", "The code '@pipe.py' cannot be written. It is a pipe or a device and not a file.", 220},
      {"CodeFile = @all.py\nResultFile = @all.py\n",
       "The result file '@all.py' is the code of this macro and is not overwritten.", 220},
  };
  for (const auto& c : kCases) {
    Program program(kData);
    std::filesystem::create_symlink(program.Folder.Path("data.txt"), program.Folder.Path("link.py"));
    mkfifo(program.Folder.Path("pipe.py").c_str(), 0600);
    EXPECT_EQ(program.RunMacro(kHead + c.Statements + kModels), c.Status) << c.Statements;
    EXPECT_NE(program.WithoutFolder(program.Err + program.Log()).find(c.Fault), std::string::npos)
        << c.Statements << program.Err << program.Log();
    EXPECT_EQ(program.Folder.Read("data.txt"), kData);
  }
  // What fails costs nothing of the rest.
  Program some(kData);
  EXPECT_EQ(some.RunMacro(kHead + "CodeFile = @fit.xyz\nPlotFile = @p.gif\nPlotFile = @p.plt\nReportFile = @r.doc\n" +
                          "ReportFile = @r.tex\n" + kModels),
            200);
  for (const char* fault : {"'@fit.xyz' is not written", "'@p.gif' is not written", "'@r.doc' is not written"})
    EXPECT_NE(some.WithoutFolder(some.Log()).find(fault), std::string::npos) << some.Log();
  for (const char* written : {"out.txt", "p.plt", "r.tex"}) EXPECT_FALSE(some.Folder.Read(written).empty()) << written;

  Program unsolved("1 5\n");
  EXPECT_EQ(unsolved.RunMacro(kHead + "CodeFile = @fit.py\n" + kModels), 0);
  EXPECT_NE(unsolved.Log().find("Warning: There is no solved model to be written as code.\n"), std::string::npos)
      << unsolved.Log();
}

}  // namespace
}  // namespace quorvex
