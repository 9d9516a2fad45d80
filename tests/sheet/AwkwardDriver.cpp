// A database driver that does what drivers may do and the tests' real one doesn't. It is a library of its own, loaded
// by the driver manager. The query names what its one row of one cell, or the way there, is like.

#include <sql.h>
#include <sqlext.h>
#include <stdio.h>
#include <string.h>

#include <algorithm>
#include <string>

namespace {

struct Statement {
  std::string Query;
  int Results = 0, Rows = 0;  // that were moved to
  std::size_t Told = 0;       // bytes of the cell
};

std::string Cell(const Statement& statement) {
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
  *handle = type == SQL_HANDLE_STMT ? static_cast<SQLHANDLE>(new Statement) : &nothing;
  return SQL_SUCCESS;
}

SQLRETURN SQLFreeHandle(SQLSMALLINT type, SQLHANDLE handle) {
  if (type == SQL_HANDLE_STMT) delete static_cast<Statement*>(handle);
  return SQL_SUCCESS;
}

SQLRETURN SQLSetEnvAttr(SQLHENV, SQLINTEGER, SQLPOINTER, SQLINTEGER) { return SQL_SUCCESS; }

SQLRETURN SQLDriverConnect(SQLHDBC, SQLHWND, SQLCHAR*, SQLSMALLINT, SQLCHAR*, SQLSMALLINT, SQLSMALLINT*, SQLUSMALLINT) {
  return SQL_SUCCESS_WITH_INFO;  // a remark on the connection
}

SQLRETURN SQLDisconnect(SQLHDBC) { return SQL_SUCCESS; }

SQLRETURN SQLExecDirect(SQLHSTMT handle, SQLCHAR* query, SQLINTEGER) {
  auto& statement = *static_cast<Statement*>(handle);
  statement.Query = reinterpret_cast<const char*>(query);
  if (statement.Query == "refused") return SQL_ERROR;
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
  return statement.Rows++ == 0 ? SQL_SUCCESS_WITH_INFO : SQL_NO_DATA;
}

// Tells as many whole characters as fit, and never how many bytes there are.
SQLRETURN SQLGetData(SQLHSTMT handle, SQLUSMALLINT, SQLSMALLINT, SQLPOINTER buffer, SQLLEN size, SQLLEN* length) {
  auto& statement = *static_cast<Statement*>(handle);
  if (statement.Query == "lost cell" && statement.Told > 0) return SQL_ERROR;
  const std::string left = Cell(statement).substr(statement.Told);
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
