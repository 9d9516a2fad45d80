#include <dlfcn.h>
#include <gtest/gtest.h>
#include <locale.h>

#include <algorithm>
#include <bit>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <future>
#include <memory>
#include <new>
#include <random>

#include "Paths.h"
#include "RowTexts.h"
#include "core/NumberText.h"
#include "import/OdbcDatabase.h"
#include "import/OdbcSource.h"

namespace quorvex {
namespace {

// The locale of the whole process for the length of a test, as a window system sets it at its start.
class ProcessLocale {
 public:
  explicit ProcessLocale(const char* name) : old_(setlocale(LC_ALL, nullptr)) {
    EXPECT_NE(setlocale(LC_ALL, name), nullptr) << name;
  }
  ~ProcessLocale() { setlocale(LC_ALL, old_.c_str()); }

 private:
  std::string old_;
};

TEST(QueryDatabase, GivesTheResultRowByRow) {
  const OdbcDatabase lab;
  lab.Query("CREATE TABLE runs (n INTEGER, y REAL, note TEXT, padded CHAR(12))");
  lab.Query(
      "INSERT INTO runs VALUES (1, 0.5, 'first', ' 7.25  '), (NULL, -2.5e-7, NULL, '1,5'), "
      "(123456789012345, 1e300, 'Grüße: 5 µm, €', '   '), (4, 'no real', '', '1e999'), (NULL, NULL, NULL, NULL), "
      "(NULL, NULL, '007', CAST(x'e9' AS TEXT))");
  const struct {
    const char* query;
    std::size_t columns;
    std::vector<std::string> rows;
  } kCases[] = {
      {"SELECT * FROM runs",
       4,
       {"1|0.5|first|7.25", "-|-2.5E-07|-|1,5", "123456789012345|1E+300|Grüße: 5 µm, €|-", "4|no real|-|1e999",
        "-|-|-|-", "-|-|7|é"}},
      {"SELECT note, n * 2 FROM runs WHERE n < 5 ORDER BY n DESC", 2, {"-|8", "first|2"}},
      {"SELECT count(*), avg(y) FROM runs WHERE n = 1", 2, {"1|0.5"}},
      {"SELECT n FROM runs WHERE note = 'Grüße: 5 µm, €'", 1, {"123456789012345"}},
      {"SELECT * FROM runs WHERE n > 1e17", 4, {}},
      {"UPDATE runs SET n = 7 WHERE n > 1e17", 4, {}},
      {"CREATE TEMPORARY TABLE other (n)", 1, {}},
  };
  for (const char* locale : {"C", "de_DE.UTF-8"}) {
    const ProcessLocale process(locale);
    for (const auto& c : kCases) EXPECT_EQ(RowTexts(lab.Query(c.query), c.columns, "|"), c.rows) << c.query;
    EXPECT_EQ(uselocale(nullptr), LC_GLOBAL_LOCALE);
  }
}

// The driver makes a text of 15 digits of a real number; a number that comes as its own text loses nothing.
TEST(QueryDatabase, ReadsNumbersAsExactlyAsTheDriverTellsThem) {
  const OdbcDatabase lab;
  lab.Query("CREATE TABLE numbers (exact TEXT, stored REAL)");
  std::mt19937_64 random(7);
  std::vector<double> values = {0.1, 1.0 / 3, 5e-324, -2.2250738585072014e-308, 1.7976931348623157e308};
  while (values.size() < 200)
    if (const auto value = std::bit_cast<double>(random()); std::isfinite(value)) values.push_back(value);
  std::string rows;
  for (const double value : values)
    rows += (rows.empty() ? "('" : ", ('") + ShortestNumber(value) + "', " + ShortestNumber(value) + ")";
  lab.Query("INSERT INTO numbers VALUES " + rows);
  const GridCells cells = lab.Query("SELECT exact, stored FROM numbers");
  ASSERT_EQ(cells.GridLastRow(), values.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    EXPECT_EQ(cells.GridCellNumber(i + 1, 1), values[i]);
    if (std::isnormal(values[i]) && std::abs(values[i]) < 1e308) {
      EXPECT_NEAR(cells.GridCellNumber(i + 1, 2) / values[i], 1, 5.1e-15) << values[i];
    }
  }
}

TEST(QueryDatabase, ReadsTextsOfAnyLength) {
  const OdbcDatabase lab;
  lab.Query("CREATE TABLE texts (n INTEGER, first TEXT, second TEXT)");
  const std::size_t lengths[] = {1, 255, 256, 2045, 2046, 2047, 2048, 2049, 4093, 4094, 4095, 4096, 300000};
  const auto text = [](std::size_t length, std::size_t shift) {
    std::string made(shift, '.');  // puts the limits of a piece into the middle of a character as well
    for (std::size_t i = 0; made.size() < length; ++i) made += i % 3 == 0 ? "ß" : i % 3 == 1 ? "€" : "x";
    return made;
  };
  for (const std::size_t length : lengths)
    lab.Query("INSERT INTO texts VALUES (1, '" + text(length, 0) + "', '" + text(length, 1) + "')");
  const GridCells cells = lab.Query("SELECT first, second FROM texts");
  for (std::size_t i = 0; i < std::size(lengths); ++i) {
    EXPECT_EQ(cells.GridCellText(i + 1, 1), text(lengths[i], 0)) << lengths[i];
    EXPECT_EQ(cells.GridCellText(i + 1, 2), text(lengths[i], 1)) << lengths[i];
  }
}

TEST(QueryDatabase, SaysWhyItFailed) {
  const OdbcDatabase lab;
  const std::string good = lab.ConnectString();
  const std::string notOne = "Driver=SQLite3;Database=" + lab.Folder.Write("notes.txt", std::string(5000, 'x'));
  const struct {
    std::string connect;
    const char* query;
    const char* library;
    const char* message;
  } kCases[] = {
      {"Driver=Nowhere", "SELECT 1", kOdbcLibrary,
       "Connecting to the database failed: [unixODBC][Driver Manager]Can't open lib 'Nowhere' : file not found"},
      {"DSN=nowhere", "SELECT 1", kOdbcLibrary,
       "Connecting to the database failed: [unixODBC][Driver Manager]Data source name not found and no default driver "
       "specified"},
      {"", "SELECT 1", kOdbcLibrary,
       "Connecting to the database failed: [unixODBC][Driver Manager]Data source name not found and no default driver "
       "specified"},
      {"Driver=SQLite3;Database=" + lab.Folder.Path("none/lab.db"), "SELECT 1", kOdbcLibrary,
       "Connecting to the database failed: [SQLite]connect failed"},
      {notOne, "SELECT * FROM runs", kOdbcLibrary, "The query failed: [SQLite]file is not a database (26)"},
      {good, "SELECT * FROM nowhere", kOdbcLibrary, "The query failed: [SQLite]no such table: nowhere (1)"},
      {good, "SELEC 1", kOdbcLibrary, "The query failed: [SQLite]near \"SELEC\": syntax error (1)"},
      {good, "SELECT 1 WHERE 1 = ?", kOdbcLibrary, "The query failed: [SQLite]unbound parameters in query"},
      {good, "", kOdbcLibrary, nullptr},
      {good, "SELECT 1", "libnowhere.so.1",
       "Databases are read through unixODBC, which cannot be loaded: libnowhere.so.1: cannot open shared object file: "
       "No such file or directory"},
      {good, "SELECT 1", "libc.so.6", nullptr},  // loads, and is another library
  };
  for (const auto& c : kCases) {
    const auto cells = QueryDatabase(c.connect, c.query, {.Library = c.library});
    ASSERT_FALSE(cells) << c.connect << " " << c.query;
    if (c.message != nullptr) {
      EXPECT_EQ(cells.error(), c.message);
    }
  }
  EXPECT_FALSE(ListTables("Driver=Nowhere"));
  EXPECT_FALSE(ListDataSources("libnowhere.so.1"));
}

TEST(QueryDatabase, CopesWithWhatDriversMayDo) {
  const std::string awkward = "Driver=" + AwkwardDriver();
  std::string coins;
  for (int i = 0; i < 2000; ++i) coins += "€";
  const std::string reasons = ": reason 1 in two lines reason 2 in two lines";
  const struct {
    const char* query;
    std::string cell, error;
  } kCases[] = {
      {"locale", "1.25", ""},  // "1,25" where the driver asks the process
      {"long text", coins, ""},
      {"second result", coins, ""},
      {"refused", "", "The query failed" + reasons},
      {"parameters", "", "The query failed"},
      {"lost row", "", "Reading a row failed" + reasons},
      {"lost cell", "", "Reading a cell failed" + reasons},
  };
  const ProcessLocale process("de_DE.UTF-8");
  for (const auto& c : kCases) {
    const auto cells = QueryDatabase(awkward, c.query);
    if (c.error.empty()) {
      ASSERT_TRUE(cells) << c.query << "\n" << cells.error();
      EXPECT_EQ(cells->GridCellText(1, 1), c.cell) << c.query;
      EXPECT_EQ(cells->GridLastRow(), 1u);
    } else {
      ASSERT_FALSE(cells) << c.query;
      EXPECT_EQ(cells.error().substr(0, c.error.size()), c.error);
    }
  }
}

TEST(QueryDatabase, PassesLimitsOnAndNamesColumns) {
  const std::string awkward = "Driver=" + AwkwardDriver();
  EXPECT_EQ(QueryDatabase(awkward, "limits")->GridCellText(1, 1), "0/0/0");
  const auto cells = QueryDatabase(awkward, "limits", {.RowLimit = 200, .LoginSeconds = 7, .QuerySeconds = 9});
  EXPECT_EQ(cells->GridCellText(1, 1), "7/9/200");
  const OdbcDatabase lab;
  EXPECT_EQ(lab.Query("SELECT 1 AS dose, 2 AS \"größe, cm\"").ColumnNames,
            (std::vector<std::string>{"dose", "größe, cm"}));
}

// A mistyped name of a file is no database, by driver or by source; who wants a new one says so.
TEST(QueryDatabase, MakesNoFile) {
  const TemporaryFolder folder;
  const std::string file = folder.Path("new.db");
  const TemporaryVariable user("ODBCINI",
                               folder.Write("odbc.ini", "[new]\nDriver=SQLite3\nDatabase=" + file + "\n").c_str());
  for (const std::string& connect : {"driver={SQLite3};Database=" + file, std::string("DSN=new")}) {
    EXPECT_FALSE(QueryDatabase(connect, "SELECT 1")) << connect;
    EXPECT_FALSE(ListTables(connect)) << connect;
    EXPECT_FALSE(std::filesystem::exists(file)) << connect;
  }
  EXPECT_TRUE(QueryDatabase("Driver=SQLite3;Database=:memory:", "SELECT 1"));
  EXPECT_TRUE(QueryDatabase("DSN=new;NoCreat=0", "CREATE TABLE runs (n)"));
  EXPECT_TRUE(QueryDatabase("DSN=new", "INSERT INTO runs VALUES (1)"));
}

// Waiting ends at once, whether or not the driver hears of it, and the handles last until it has come back.
TEST(QueryDatabase, IsCancelledWhereItWaits) {
  const std::string awkward = "Driver=" + AwkwardDriver();
  const struct {
    std::string connect, query;
    std::size_t rows;  // read before
    bool hears;
  } kCases[] = {{awkward, "slow", 0, true}, {awkward, "slow rows", 2, true}, {awkward + ";Server=deaf", "x", 0, false}};
  for (const auto& c : kCases) {
    const auto ended = std::make_shared<std::promise<bool>>();
    const auto read = [ended, connect = c.connect, query = c.query](const LongWork& work) {
      ended->set_value(static_cast<bool>(QueryDatabase(connect, query, {}, work)));
    };
    std::future<bool> whether = ended->get_future();
    int turns = 0;
    EXPECT_FALSE(RunBeside(read, [&](const LongWork& work) { return ++turns < 3 || work.Done() != c.rows; }));
    if (!c.hears) {
      EXPECT_NE(whether.wait_for(std::chrono::seconds(0)), std::future_status::ready);
    }
    ASSERT_EQ(whether.wait_for(std::chrono::seconds(10)), std::future_status::ready) << c.query;
    EXPECT_FALSE(whether.get()) << c.query;
  }
}

TEST(RunBeside, ThrowsWhatEndedTheWork) {
  const auto wait = [](const LongWork&) { return true; };
  EXPECT_THROW(RunBeside([](const LongWork&) { throw std::bad_alloc(); }, wait), std::bad_alloc);
}

TEST(ListTables, NamesTheDatabaseThatTheyAreIn) {
  const auto tables = ListTables("Driver=" + AwkwardDriver());
  ASSERT_TRUE(tables) << tables.error();
  ASSERT_EQ(tables->size(), 3u);  // one is another database's
  EXPECT_EQ((*tables)[0].Name + " " + (*tables)[0].Quoted, "lab.order `lab`.`order`");
  EXPECT_EQ((*tables)[1].Name + " " + (*tables)[1].Quoted, "lab.odd`name `lab`.`odd``name`");
}

TEST(ListTables, GivesNamesThatAQueryTakes) {
  const OdbcDatabase lab;
  lab.Query("CREATE TABLE \"order\" (n)");
  lab.Query("CREATE TABLE runs_2 (n)");
  lab.Query("CREATE TABLE \"Growth \"\"fast\"\"\" (n)");
  lab.Query("CREATE TABLE \"2024\" (n)");
  lab.Query("CREATE VIEW größen AS SELECT n FROM runs_2");
  const auto tables = ListTables(lab.ConnectString());
  ASSERT_TRUE(tables) << tables.error();
  EXPECT_EQ(tables->size(), 5u);
  for (const DatabaseTable& table : *tables) lab.Query("SELECT * FROM " + table.Quoted);
  EXPECT_EQ(std::count_if(tables->begin(), tables->end(),
                          [](const DatabaseTable& t) { return t.Name + t.Quoted == "order\"order\""; }),
            1);
}

TEST(ListDataSources, GivesNamesToConnectWith) {
  const OdbcDatabase lab;
  lab.Query("CREATE TABLE runs (n)");
  lab.Query("INSERT INTO runs VALUES (5)");
  const std::string sources =
      lab.Folder.Write("odbc.ini", "[quorvex_lab]\nDriver=SQLite3\nDatabase=" + lab.Folder.Path("lab.db") + "\n");
  const TemporaryVariable user("ODBCINI", sources.c_str());
  // The manager's library of settings comes and goes with the driver and forgets the lines it has read, which the leak
  // checker counts; while something else holds the library they are remembered.
  ASSERT_NE(dlopen("libodbcinst.so.2", RTLD_NOW), nullptr) << dlerror();
  const auto names = ListDataSources();
  ASSERT_TRUE(names) << names.error();
  EXPECT_EQ(std::count(names->begin(), names->end(), "quorvex_lab"), 1);
  const auto cells = QueryDatabase("DSN=quorvex_lab", "SELECT n FROM runs");
  ASSERT_TRUE(cells) << cells.error();
  EXPECT_EQ(cells->GridCellNumber(1, 1), 5);
}

}  // namespace
}  // namespace quorvex
