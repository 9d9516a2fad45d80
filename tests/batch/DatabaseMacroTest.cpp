// Macros that query a real database: SQLite through the installed driver manager.

#include <gtest/gtest.h>

#include "batch/Program.h"
#include "import/OdbcSource.h"

namespace quorvex {
namespace {

TEST(DatabaseMacro, QueriesAndEndsAsTold) {
  const struct {
    const char *Connect, *Query;
    int Status;
    const char* LogHas;
  } kCases[] = {
      {"Driver=SQLite3;Database=@lab.db", "SELECT x, y FROM line WHERE x < 5", 0, "Solution Complete"},
      {"Driver=SQLite3;Database=@lab.db", "SELECT * FROM line", 160,
       "Row 6, column 'y': 'six' is not a number.\nError connecting to or retrieving data from ODBC source\n"},
      {"Driver=SQLite3;Database=@lab.db", "SELECT nothing FROM line", 160,
       "Error connecting to or retrieving data from ODBC source\n***"},
      {"Driver=Nowhere;Database=@lab.db", "SELECT * FROM line", 160,
       "Error connecting to or retrieving data from ODBC source\n***"},
      {"", "SELECT * FROM line", 160, "Performing SQLDriverConnect ''\n"},
      {"Driver=SQLite3;Database=@mistyped.db;Pwd={a;b}", "SELECT * FROM line", 160,
       "mistyped.db;Pwd=***'\nConnecting to the database failed: [SQLite]connect failed\n"},
  };
  for (const auto& c : kCases) {
    Program program;
    const std::string connect = "Driver=SQLite3;NoCreat=0;Database=" + program.Folder.Path("lab.db");
    for (const char* statement :
         {"CREATE TABLE line (x REAL, y REAL)",
          "INSERT INTO line VALUES (1, 2.5), (2, 4.5), (3, 6.25), (4, NULL), (4.5, 9.5), (6, 'six')"})
      ASSERT_TRUE(QueryDatabase(connect, statement)) << statement;
    EXPECT_EQ(program.RunMacro("B_MACRO\nHandShake = UseDDE\nDataFile = " + std::string(c.Connect) +
                               "\nSQLQuery = " + c.Query +
                               "\nOutputFile = @out.txt\nLogFile = @run.log\n"
                               "TableOutput = DataFile\nB_MODEL\nY=a*x+b\nE_MODEL\nE_MACRO\n"),
              c.Status)
        << c.Query;
    EXPECT_NE(program.Log().find(c.LogHas), std::string::npos) << program.Log();
    EXPECT_NE(program.Out.find("Performing SQLDriverConnect '"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(program.Folder.Path("mistyped.db")));
    EXPECT_EQ((program.Log() + program.Out).find("a;b"), std::string::npos);
    if (c.Status == 0) {
      EXPECT_NE(program.Folder.Read("out.txt").find("DataPoints = 4\r\n"), std::string::npos);
    }
  }
}

TEST(DatabaseMacro, LeavesTheSameOnAnyNumberOfThreads) {
  std::string rows = "N,Q\n", expected;
  for (int n = 3; n <= 40; ++n) rows += std::to_string(n) + (n == 9 ? ",nothing\n" : ",y\n");
  for (const char* threads : {"1", "4"}) {
    Program program;
    const std::string connect = "Driver=SQLite3;NoCreat=0;Database=" + program.Folder.Path("lab.db");
    ASSERT_TRUE(QueryDatabase(connect, "CREATE TABLE line (x REAL, y REAL)"));
    for (int i = 1; i <= 40; ++i)
      ASSERT_TRUE(QueryDatabase(
          connect, "INSERT INTO line VALUES (" + std::to_string(i) + ", " + std::to_string(i * i % 7 + 2 * i) + ")"));
    program.Folder.Write("rows.csv", rows);
    EXPECT_EQ(
        program.RunMacro("B_MACRO\nHandShake = UseDDE\nParameterFile = @rows.csv\nThreads = " + std::string(threads) +
                         "\nDataFile = Driver=SQLite3;Database=@lab.db\n"
                         "SQLQuery = SELECT x, %Q% FROM line WHERE x <= %N%\nResultFile = @all.jsonl\n"
                         "LogFile = @run.log\nB_MODEL\nY=a*x+b\nE_MODEL\nB_MODEL\nY=a*x^b\nE_MODEL\nE_MACRO\n"),
        160);
    const std::string left =
        program.WithoutFolder(program.Out) + program.Log() + program.WithoutFolder(program.Folder.Read("all.jsonl"));
    EXPECT_NE(left.find("38: Run Successful"), std::string::npos) << left;
    if (expected.empty()) expected = left;
    EXPECT_EQ(left, expected);
  }
}

TEST(DatabaseMacro, SparesTheDatabase) {
  Program program;
  const std::string file = program.Folder.Path("lab.db"), create = "NoCreat=0;Driver=SQLite3;Database=" + file;
  ASSERT_TRUE(QueryDatabase(create, "CREATE TABLE line (x REAL, y REAL)"));
  ASSERT_TRUE(QueryDatabase(create, "INSERT INTO line VALUES (1, 2), (2, 4), (3, 7)"));
  const std::string before = program.Folder.Read("lab.db");
  const TemporaryVariable sources(
      "ODBCINI", program.Folder.Write("odbc.ini", "[lab]\nDriver=SQLite3\nDatabase=" + file + "\n").c_str());
  for (const char* connect : {"Driver=SQLite3;Database=@lab.db", "DSN=lab"}) {
    for (const char* outputs :
         {"OutputFile = @lab.db\nLogFile = @run.log\n", "OutputFile = @out.txt\nLogFile = @lab.db\n"}) {
      const int status =
          program.RunMacro("B_MACRO\nDataFile = " + std::string(connect) + "\nSQLQuery = SELECT x, y FROM line\n" +
                           outputs + "B_MODEL\nY=a*x\nE_MODEL\nE_MACRO\n");
      EXPECT_EQ(status, std::string(outputs).starts_with("OutputFile = @lab") ? 220 : 320 % 256) << connect;
      EXPECT_EQ(program.Folder.Read("lab.db"), before) << connect << outputs;
    }
  }
}

TEST(DatabaseMacro, RunsOverATableOfQueries) {
  Program program;
  const std::string connect = "Driver=SQLite3;NoCreat=0;Database=" + program.Folder.Path("lab.db");
  ASSERT_TRUE(QueryDatabase(connect, "CREATE TABLE runs (run INTEGER, x REAL, y REAL)"));
  ASSERT_TRUE(QueryDatabase(connect, "INSERT INTO runs VALUES (1,1,2), (1,2,4), (1,3,6), (2,1,3), (2,2,6), (2,3,9)"));
  program.Folder.Write("p.csv", "run,name\n1,a\n2,b\n9 garbage,c\n");
  EXPECT_EQ(program.RunMacro("B_MACRO\nDataFile = " + connect +
                             "\nSQLQuery = SELECT x, y FROM runs WHERE run = %run%\n"
                             "OutputFile = @%name%.txt\nLogFile = @run.log\nParameterFile = @p.csv\n"
                             "B_MODEL\nY=a*x\nE_MODEL\nE_MACRO\n"),
            160);
  EXPECT_NEAR(ReadAnswers(program.Folder.Read("a.txt")).at(0).Number("a"), 2, 1e-9);
  EXPECT_NEAR(ReadAnswers(program.Folder.Read("b.txt")).at(0).Number("a"), 3, 1e-9);
  const std::string log = program.Log();
  EXPECT_NE(log.find("Assigning SQLQuery = 'SELECT x, y FROM runs WHERE run = 2'\n"), std::string::npos);
  EXPECT_NE(log.find("Error connecting to or retrieving data from ODBC source\nData Source Error: 160\n***"),
            std::string::npos);
  EXPECT_NE(log.find("1: Run Successful\n2: Run Successful\n3: Run Failed\n"), std::string::npos);
}

}  // namespace
}  // namespace quorvex
