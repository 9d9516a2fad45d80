#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

#include "core/LongWork.h"
#include "core/Result.h"
#include "core/Settings.h"
#include "sheet/GridCells.h"

namespace quorvex {

// The driver manager through which databases are read. It is loaded at the first use and stays loaded: a run without a
// database pays nothing for it, and the program runs where it isn't installed.
inline constexpr const char* kOdbcLibrary = "libodbc.so.2";

// How a database is asked.
struct DatabaseUse {
  const char* Library = kOdbcLibrary;
  std::size_t RowLimit = std::numeric_limits<std::size_t>::max();
  // Seconds after which the driver is to give up connecting and running a query; 0 for none.
  int LoginSeconds = 0, QuerySeconds = 0;

  // With the times of the user's settings.
  static DatabaseUse From(const Settings& settings);
};

// Connects with an ODBC connect string ("DSN=lab", "Driver=SQLite3;Database=/data/lab.db"), runs the query and returns
// its result row by row, with the names of its columns: NULL is an empty cell, a number as NumericText reads it with a
// decimal point a number, whatever the column's type, and anything else a text of any length. Of several results the
// first one with columns counts; a statement without a result, such as an INSERT, gives an empty grid. What the
// statement changes is committed at once.
//
// A number is as exact as the text that its driver makes of it: PostgreSQL's reads back to the bit, SQLite's has 15
// digits. The locale of the process has no influence. SQLite's driver makes no file where there is none, unless the
// connect string says NoCreat=0.
//
// Fails in one line: what was tried, and what the manager and the driver say about it. Work that is cancelled ends as
// soon as the driver hears of it; the rows read are its progress.
Result<GridCells> QueryDatabase(const std::string& connectString, const std::string& query, const DatabaseUse& use = {},
                                const LongWork& work = {});

// A table or view: its name with what it stands in, and the same as it is to be written behind "SELECT * FROM ", in the
// quotes of the source where it has any.
struct DatabaseTable {
  std::string Name, Quoted;
};

// The tables and views behind a connect string; where that chooses one of several databases, those of that one alone.
// Fails as QueryDatabase does.
Result<std::vector<DatabaseTable>> ListTables(const std::string& connectString, const DatabaseUse& use = {},
                                              const LongWork& work = {});

// What a connect string, and the data source that it names, say of a database that is a file: names, some of which may
// be of files.
std::vector<std::string> DatabaseFiles(const std::string& connectString, const char* library = kOdbcLibrary);

// The data sources set up for the user and the machine, by the name that follows "DSN=" in a connect string.
Result<std::vector<std::string>> ListDataSources(const char* library = kOdbcLibrary);

}  // namespace quorvex
