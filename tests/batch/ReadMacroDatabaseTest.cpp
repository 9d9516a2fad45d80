#include <gtest/gtest.h>

#include "Paths.h"
#include "batch/ReadMacroDataFile.h"
#include "batch/ReadMacroDatabase.h"
#include "import/OdbcDatabase.h"

namespace quorvex {
namespace {

DataReading Read(const MacroSetup& setup, const LocaleText& locale) {
  return ReadMacroDatabase(setup, locale, {}, [] { return true; });
}

// A table and a text file with the same cells are the same data.
TEST(ReadMacroDatabase, GivesWhatTheSameCellsInAFileGive) {
  const OdbcDatabase lab;
  lab.Query("CREATE TABLE runs (y, sd, note, x)");
  lab.Query(
      "INSERT INTO runs VALUES (5.1, 0.5, 'a', 3), (6.5, 0.25, 'b', 1), (-999, 1, 'c', 2), (7, NULL, NULL, 2), "
      "(NULL, NULL, 'd', NULL), (8.25, 0, 'e', -999), (9, 0.125, 'f', 2)");
  const std::string file =
      lab.Folder.Write("runs.csv", "5.1,.5,a,3\n6.5,.25,b,1\n-999,1,c,2\n7,,,2\n,,d,\n8.25,0,e,-999\n9,.125,f,2\n");
  const struct {
    int variables;
    const char* order;
    bool weighted;
    char separator;
    std::size_t points;
  } kCases[] = {{1, "y,skip,skip,x", false, ',', 4},
                {1, "y;sd;skip;x", true, ';', 4},
                {1, "default", false, ',', 4},
                {2, "y,x1,skip,x2", false, ',', 3},
                {1, "y,sd,x,skip", false, ',', 0},  // notes are no numbers
                {1, "y", false, ',', 0},            // too few columns
                {21, "default", false, ',', 0}};
  for (const auto& c : kCases) {
    MacroSetup setup;
    setup.IndependentVariables = c.variables;
    setup.ColumnOrder = c.order;
    setup.Weighted = c.weighted;
    setup.MissingData = "-999";
    setup.IgnoreConsecutive = false;
    LocaleText locale;
    locale.ListSeparator = c.separator;
    setup.DataFile = file;
    const DataReading expected = ReadMacroDataFile(setup, locale);
    setup.DataFile = lab.ConnectString();
    setup.SQLQuery = "SELECT * FROM runs";
    const DataReading reading = Read(setup, locale);
    EXPECT_EQ(reading.Ok, c.points > 0) << c.order;
    EXPECT_EQ(reading.Ok, expected.Ok) << c.order;
    const bool isText = expected.Message == "Line 1: 'a' is not a number.";
    EXPECT_EQ(reading.Message, isText ? "Row 1, column 'note': 'a' is not a number." : expected.Message) << c.order;
    EXPECT_EQ(reading.Data.N(), c.points) << c.order;
    EXPECT_EQ(reading.Data.X, expected.Data.X) << c.order;
    EXPECT_EQ(reading.Data.Y, expected.Data.Y) << c.order;
    EXPECT_EQ(reading.Data.SD, expected.Data.SD) << c.order;
    EXPECT_EQ(reading.Data.sig, expected.Data.sig) << c.order;
  }
}

// SQLite's driver says "Inf" and "-Inf"; others have words of their own.
TEST(ReadMacroDatabase, CountsWhatIsNotFiniteAsTheMarkerSays) {
  const OdbcDatabase lab;
  MacroSetup setup;
  setup.DataFile = lab.ConnectString();
  setup.SQLQuery = "SELECT 1, 2 UNION ALL SELECT 2, 9e999 UNION ALL SELECT 3, -9e999 UNION ALL SELECT 4, 'NaN' AS b";
  const struct {
    const char* marker;
    const char* message;
  } kCases[] = {{"", "Row 2, column '2': 'Inf' is not a number."},
                {"nan", "Row 2, column '2': 'Inf' is not a number."},
                {"+Infinity", "Row 3, column '2': '-Inf' is not a number."},
                {"-inf", "Row 2, column '2': 'Inf' is not a number."},
                {"Infinity", "Row 4, column '2': 'NaN' is not a number."}};
  for (const auto& c : kCases) {
    setup.MissingData = c.marker;
    EXPECT_EQ(Read(setup, LocaleText()).Message, c.message) << c.marker;
  }
  setup.SQLQuery = "SELECT 1, 2 UNION ALL SELECT 2, 9e999 UNION ALL SELECT 3, -9e999";
  setup.MissingData = "infinity";
  EXPECT_EQ(Read(setup, LocaleText()).Data.N(), 1u);
}

// An abort ends the wait, here for a server that never answers, with nothing to say.
TEST(ReadMacroDatabase, EndsWhereTheRunIsAborted) {
  MacroSetup setup;
  setup.DataFile = "Driver=" + AwkwardDriver();
  setup.SQLQuery = "slow";
  int turns = 0;
  const DataReading reading = ReadMacroDatabase(setup, LocaleText(), {}, [&] { return ++turns < 3; });
  EXPECT_FALSE(reading.Ok);
  EXPECT_EQ(reading.Message, "");
  const DataReading late = ReadMacroDatabase(setup, LocaleText(), {.QuerySeconds = 1}, [] { return true; });
  EXPECT_EQ(late.Message, "The query took longer than the limit of 1 s.");
}

TEST(ReadMacroDatabase, TellsAnEmptyResultFromARefusal) {
  const OdbcDatabase lab;
  lab.Query("CREATE TABLE runs (x REAL, y REAL)");
  MacroSetup setup;
  setup.DataFile = lab.ConnectString();
  setup.SQLQuery = "SELECT x, y FROM runs";
  const DataReading empty = Read(setup, LocaleText());
  EXPECT_TRUE(empty.Ok) << empty.Message;
  EXPECT_EQ(empty.Data.N(), 0u);
  setup.SQLQuery = "SELECT x, z FROM runs";
  const DataReading refused = Read(setup, LocaleText());
  EXPECT_FALSE(refused.Ok);
  EXPECT_EQ(refused.ErrorNumber, 0);
  EXPECT_EQ(refused.Message, "The query failed: [SQLite]no such column: z (1)");
}

}  // namespace
}  // namespace quorvex
