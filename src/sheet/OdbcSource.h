#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

#include "core/Result.h"
#include "sheet/GridCells.h"

namespace quorvex {

// The driver manager through which databases are read. It is loaded at the first use and stays loaded: a run without a
// database pays nothing for it, and the program runs where it isn't installed.
inline constexpr const char* kOdbcLibrary = "libodbc.so.2";

// Connects with an ODBC connect string ("DSN=lab", "Driver=SQLite3;Database=/data/lab.db"), runs the query and returns
// its result row by row: NULL is an empty cell, a number as NumericText reads it with a decimal point a number,
// whatever the column's type, and anything else a text of any length. Of several results the first one with columns
// counts, at most `rowLimit` rows of it; a statement without a result, such as an INSERT, gives an empty grid. What the
// statement changes is committed at once.
//
// A number is as exact as the text that its driver makes of it: PostgreSQL's reads back to the bit, SQLite's has 15
// digits. The locale of the process has no influence.
//
// Fails in one line: what was tried, and what the manager and the driver say about it.
Result<GridCells> QueryDatabase(const std::string& connectString, const std::string& query,
                                const char* library = kOdbcLibrary,
                                std::size_t rowLimit = std::numeric_limits<std::size_t>::max());

// The tables and views behind a connect string, as they are to be written behind "SELECT * FROM ": with the schema
// where there is one, in the source's quotes where a name needs them. Fails as QueryDatabase does.
Result<std::vector<std::string>> ListTables(const std::string& connectString, const char* library = kOdbcLibrary);

// The data sources set up for the user and the machine, by the name that follows "DSN=" in a connect string.
Result<std::vector<std::string>> ListDataSources(const char* library = kOdbcLibrary);

}  // namespace quorvex
