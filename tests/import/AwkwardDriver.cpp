// A database driver that does what drivers may do and the tests' real one doesn't. It is a library of its own, loaded
// by the driver manager. The query names what its one row of one cell, or the way there, is like.

#include <sql.h>
#include <sqlext.h>
#include <stdio.h>
#include <string.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <string>
#include <thread>

namespace {

struct Statement {
  std::string Query;
  int Results = 0, Rows = 0;  // that were moved to
  std::size_t Told = 0;       // bytes of the cell
  std::atomic<bool> Cancelled = false;
};

// What was asked for of the last connection and statement, "login/query/rows".
std::atomic<int> loginSeconds = 0, querySeconds = 0, mostRows = 0;

// A server with several databases, which pays no heed to what is asked of the list.
constexpr const char* kTables[][3] = {
    {"lab", "", "order"}, {"other", "", "runs"}, {"lab", "", "odd`name"}, {"lab", "", "endless"}};

void Pause() { std::this_thread::sleep_for(std::chrono::milliseconds(5)); }

std::string Cell(const Statement& statement, SQLUSMALLINT column) {
  if (statement.Query == "tables") return kTables[statement.Rows - 1][column - 1];
  if (statement.Query == "limits")
    return std::to_string(loginSeconds) + "/" + std::to_string(querySeconds) + "/" + std::to_string(mostRows);
  if (statement.Query == "locale") {
    char text[32];
    snprintf(text, sizeof text, "%.2f", 1.25);  // with the decimal separator of the C library's locale
    return text;
  }
  std::string text;
  for (int i = 0; i < 2000; ++i) text += "€";
  return text;
}

}  // namespace

extern "C" {

SQLRETURN SQLAllocHandle(SQLSMALLINT type, SQLHANDLE, SQLHANDLE* handle) {
  static char nothing;  // what the handles that need no memory of their own point to
  if (type == SQL_HANDLE_DBC) loginSeconds = querySeconds = mostRows = 0;
  *handle = type == SQL_HANDLE_STMT ? static_cast<SQLHANDLE>(new Statement) : &nothing;
  return SQL_SUCCESS;
}

SQLRETURN SQLFreeHandle(SQLSMALLINT type, SQLHANDLE handle) {
  if (type == SQL_HANDLE_STMT) delete static_cast<Statement*>(handle);
  return SQL_SUCCESS;
}

SQLRETURN SQLSetEnvAttr(SQLHENV, SQLINTEGER, SQLPOINTER, SQLINTEGER) { return SQL_SUCCESS; }

// Connecting to a server that doesn't answer takes a second, whatever happens.
SQLRETURN SQLDriverConnect(SQLHDBC, SQLHWND, SQLCHAR* connect, SQLSMALLINT, SQLCHAR*, SQLSMALLINT, SQLSMALLINT*,
                           SQLUSMALLINT) {
  if (strstr(reinterpret_cast<const char*>(connect), "Server=deaf") != nullptr)
    std::this_thread::sleep_for(std::chrono::seconds(1));
  return SQL_SUCCESS_WITH_INFO;  // a remark on the connection
}

SQLRETURN SQLSetConnectAttr(SQLHDBC, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER) {
  if (attribute == SQL_ATTR_LOGIN_TIMEOUT) loginSeconds = static_cast<int>(reinterpret_cast<SQLULEN>(value));
  return SQL_SUCCESS;
}

SQLRETURN SQLGetConnectAttr(SQLHDBC, SQLINTEGER, SQLPOINTER value, SQLINTEGER, SQLINTEGER* length) {
  strcpy(static_cast<char*>(value), "lab");
  *length = 3;
  return SQL_SUCCESS;
}

SQLRETURN SQLSetStmtAttr(SQLHSTMT, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER) {
  if (attribute == SQL_ATTR_QUERY_TIMEOUT) querySeconds = static_cast<int>(reinterpret_cast<SQLULEN>(value));
  if (attribute == SQL_ATTR_MAX_ROWS) mostRows = static_cast<int>(reinterpret_cast<SQLULEN>(value));
  return SQL_SUCCESS;
}

SQLRETURN SQLGetInfo(SQLHDBC, SQLUSMALLINT what, SQLPOINTER value, SQLSMALLINT, SQLSMALLINT*) {
  if (what == SQL_CATALOG_USAGE) *static_cast<SQLUINTEGER*>(value) = SQL_CU_DML_STATEMENTS;
  if (what == SQL_IDENTIFIER_QUOTE_CHAR) strcpy(static_cast<char*>(value), "`");
  return SQL_SUCCESS;
}

SQLRETURN SQLTables(SQLHSTMT handle, SQLCHAR*, SQLSMALLINT, SQLCHAR*, SQLSMALLINT, SQLCHAR*, SQLSMALLINT, SQLCHAR*,
                    SQLSMALLINT) {
  static_cast<Statement*>(handle)->Query = "tables";
  return SQL_SUCCESS;
}

SQLRETURN SQLCancel(SQLHSTMT handle) {
  static_cast<Statement*>(handle)->Cancelled = true;
  return SQL_SUCCESS;
}

SQLRETURN SQLDisconnect(SQLHDBC) { return SQL_SUCCESS; }

SQLRETURN SQLExecDirect(SQLHSTMT handle, SQLCHAR* query, SQLINTEGER) {
  auto& statement = *static_cast<Statement*>(handle);
  statement.Query = reinterpret_cast<const char*>(query);
  const bool slow = statement.Query == "slow" || statement.Query.ends_with("`endless`");
  while (slow && !statement.Cancelled) Pause();
  if (slow || statement.Query == "refused") return SQL_ERROR;
  if (statement.Query == "parameters") return SQL_NEED_DATA;
  return statement.Query == "second result" ? SQL_NO_DATA : SQL_SUCCESS_WITH_INFO;
}

SQLRETURN SQLNumResultCols(SQLHSTMT handle, SQLSMALLINT* columns) {
  const auto& statement = *static_cast<Statement*>(handle);
  *columns = statement.Query == "second result" && statement.Results == 0 ? 0 : 1;
  return SQL_SUCCESS;
}

SQLRETURN SQLMoreResults(SQLHSTMT handle) {
  return static_cast<Statement*>(handle)->Results++ == 0 ? SQL_SUCCESS : SQL_NO_DATA;
}

SQLRETURN SQLFetch(SQLHSTMT handle) {
  auto& statement = *static_cast<Statement*>(handle);
  if (statement.Query == "lost row" && statement.Rows == 1) return SQL_ERROR;
  statement.Told = 0;
  while (statement.Query == "slow rows" && statement.Rows == 2 && !statement.Cancelled) Pause();
  if (statement.Query == "slow rows") return statement.Rows++ < 2 ? SQL_SUCCESS : SQL_ERROR;
  if (statement.Query == "tables") return statement.Rows++ < 4 ? SQL_SUCCESS : SQL_NO_DATA;
  return statement.Rows++ == 0 ? SQL_SUCCESS_WITH_INFO : SQL_NO_DATA;
}

// Tells as many whole characters as fit, and never how many bytes there are.
SQLRETURN SQLGetData(SQLHSTMT handle, SQLUSMALLINT column, SQLSMALLINT, SQLPOINTER buffer, SQLLEN size,
                     SQLLEN* length) {
  auto& statement = *static_cast<Statement*>(handle);
  if (statement.Query == "lost cell" && statement.Told > 0) return SQL_ERROR;
  if (statement.Query == "tables") statement.Told = 0;
  const std::string left = Cell(statement, column).substr(statement.Told);
  std::size_t count = std::min(left.size(), static_cast<std::size_t>(size) - 1);
  while (count < left.size() && (left[count] & 0xC0) == 0x80) --count;
  memcpy(buffer, left.data(), count);
  static_cast<char*>(buffer)[count] = '\0';
  statement.Told += count;
  *length = count == left.size() ? static_cast<SQLLEN>(count) : SQL_NO_TOTAL;
  return count == left.size() ? SQL_SUCCESS : SQL_SUCCESS_WITH_INFO;
}

SQLRETURN SQLGetDiagRec(SQLSMALLINT, SQLHANDLE, SQLSMALLINT record, SQLCHAR* state, SQLINTEGER* number,
                        SQLCHAR* message, SQLSMALLINT size, SQLSMALLINT* length) {
  if (record > 2) return SQL_NO_DATA;
  memcpy(state, "HY000", 6);
  *number = 0;
  *length = static_cast<SQLSMALLINT>(snprintf(reinterpret_cast<char*>(message), static_cast<std::size_t>(size),
                                              "reason %d\r\n\tin two lines\n", record));
  return SQL_SUCCESS;
}

// The driver manager reports what SQLGetDiagRec says only where this exists as well.
SQLRETURN SQLGetDiagField(SQLSMALLINT, SQLHANDLE, SQLSMALLINT, SQLSMALLINT, SQLPOINTER, SQLSMALLINT, SQLSMALLINT*) {
  return SQL_NO_DATA;
}
}
