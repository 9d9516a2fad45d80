#include "sheet/OdbcSource.h"

#include <dlfcn.h>
#include <locale.h>
#include <sql.h>
#include <sqlext.h>
#include <string.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/NumberText.h"
#include "core/TextEncoding.h"

namespace quorvex {
namespace {

// Drivers write numbers with the decimal separator of the C library's locale, and texts in its character set. While
// this lives, the calling thread has decimal points and UTF-8, whatever the process has set.
class PlainLocale {
 public:
  PlainLocale() : plain_(newlocale(LC_ALL_MASK, "C.UTF-8", nullptr)) {
    if (plain_ == nullptr) plain_ = newlocale(LC_ALL_MASK, "C", nullptr);
    previous_ = uselocale(plain_);
  }
  ~PlainLocale() {
    uselocale(previous_);
    freelocale(plain_);
  }
  PlainLocale(const PlainLocale&) = delete;
  PlainLocale& operator=(const PlainLocale&) = delete;

 private:
  locale_t plain_, previous_;
};

// The functions of the driver manager.
class OdbcManager {
 public:
  // Never unloaded: drivers leave behind what must outlive a call.
  explicit OdbcManager(const char* library) : library_(dlopen(library, RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE)) {
    if (library_ == nullptr) loadError_ = dlerror();
  }

  // Why it cannot be used, empty where it can.
  const std::string& LoadError() const { return loadError_; }

 private:
  template <typename Function>
  Function Find(const char* name) {
    void* const found = library_ == nullptr ? nullptr : dlsym(library_, name);
    if (library_ != nullptr && found == nullptr) loadError_ = dlerror();
    return reinterpret_cast<Function>(found);
  }

  std::string loadError_;
  void* library_;

 public:
#define ODBC_FUNCTION(name) const decltype(&::name) name = Find<decltype(&::name)>(#name)
  ODBC_FUNCTION(SQLAllocHandle);
  ODBC_FUNCTION(SQLDataSources);
  ODBC_FUNCTION(SQLDisconnect);
  ODBC_FUNCTION(SQLDriverConnect);
  ODBC_FUNCTION(SQLExecDirect);
  ODBC_FUNCTION(SQLFetch);
  ODBC_FUNCTION(SQLFreeHandle);
  ODBC_FUNCTION(SQLGetData);
  ODBC_FUNCTION(SQLGetDiagRec);
  ODBC_FUNCTION(SQLGetInfo);
  ODBC_FUNCTION(SQLMoreResults);
  ODBC_FUNCTION(SQLNumResultCols);
  ODBC_FUNCTION(SQLSetEnvAttr);
  ODBC_FUNCTION(SQLTables);
#undef ODBC_FUNCTION
};

// The interface takes texts it doesn't change as pointers to unsigned characters it might.
SQLCHAR* SqlText(const char* text) { return reinterpret_cast<SQLCHAR*>(const_cast<char*>(text)); }

std::size_t LengthIn(const SQLCHAR* buffer, std::size_t size) {
  return strnlen(reinterpret_cast<const char*>(buffer), size);
}

// One connection and one statement. A step that fails returns false, and so does every later one; Error says why.
class OdbcSession {
 public:
  explicit OdbcSession(const char* library) : odbc_(library) {}
  ~OdbcSession();
  OdbcSession(const OdbcSession&) = delete;
  OdbcSession& operator=(const OdbcSession&) = delete;

  bool Start();
  bool Connect(const std::string& connectString);
  bool Execute(const std::string& query);
  bool SelectTables();

  // The next row; false behind the last one.
  bool Fetch();
  SQLUSMALLINT Columns() const { return static_cast<SQLUSMALLINT>(columns_); }
  // The text of a cell of the row, as the driver has it; false for NULL. Columns must be asked for in rising order.
  bool GetText(SQLUSMALLINT column, std::string& text);

  // The next data source's name; false behind the last one.
  bool NextDataSource(std::string& name);

  // A name as a query must have it.
  std::string Quoted(const std::string& name);

  bool Failed() const { return !error_.empty(); }
  const std::string& Error() const { return error_; }

 private:
  bool Allocate(SQLSMALLINT type, SQLHANDLE parent, SQLHANDLE& handle);
  // True where `result` is a success; else keeps `what` and what is known about it.
  bool Check(SQLRETURN result, std::string_view what, SQLSMALLINT type, SQLHANDLE handle);
  std::string Diagnostics(SQLSMALLINT type, SQLHANDLE handle) const;

  PlainLocale locale_;
  OdbcManager odbc_;
  SQLHANDLE environment_ = SQL_NULL_HANDLE, connection_ = SQL_NULL_HANDLE, statement_ = SQL_NULL_HANDLE;
  bool connected_ = false;
  SQLUSMALLINT nextSource_ = SQL_FETCH_FIRST;
  SQLSMALLINT columns_ = 0;
  std::string error_;
};

OdbcSession::~OdbcSession() {
  if (statement_ != SQL_NULL_HANDLE) odbc_.SQLFreeHandle(SQL_HANDLE_STMT, statement_);
  if (connected_) odbc_.SQLDisconnect(connection_);
  if (connection_ != SQL_NULL_HANDLE) odbc_.SQLFreeHandle(SQL_HANDLE_DBC, connection_);
  if (environment_ != SQL_NULL_HANDLE) odbc_.SQLFreeHandle(SQL_HANDLE_ENV, environment_);
}

bool OdbcSession::Start() {
  if (!odbc_.LoadError().empty()) {
    error_ = "Databases are read through unixODBC, which cannot be loaded: " + odbc_.LoadError();
    return false;
  }
  if (!Allocate(SQL_HANDLE_ENV, SQL_NULL_HANDLE, environment_)) return false;
  const auto version = reinterpret_cast<SQLPOINTER>(std::uintptr_t{SQL_OV_ODBC3});
  return Check(odbc_.SQLSetEnvAttr(environment_, SQL_ATTR_ODBC_VERSION, version, 0), "unixODBC cannot be started",
               SQL_HANDLE_ENV, environment_);
}

bool OdbcSession::Connect(const std::string& connectString) {
  if (!Start() || !Allocate(SQL_HANDLE_DBC, environment_, connection_)) return false;
  const SQLRETURN result = odbc_.SQLDriverConnect(connection_, nullptr, SqlText(connectString.c_str()), SQL_NTS,
                                                  nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
  connected_ = Check(result, "Connecting to the database failed", SQL_HANDLE_DBC, connection_);
  return connected_ && Allocate(SQL_HANDLE_STMT, connection_, statement_);
}

bool OdbcSession::Execute(const std::string& query) {
  constexpr std::string_view kWhat = "The query failed";
  SQLRETURN result = odbc_.SQLExecDirect(statement_, SqlText(query.c_str()), SQL_NTS);
  // Several statements have a result each; a statement that changes rows has one without columns, and may tell with
  // SQL_NO_DATA that there were none to change.
  for (bool first = true;; first = false) {
    if (result == SQL_NO_DATA && !first) return true;
    if (result != SQL_NO_DATA && !Check(result, kWhat, SQL_HANDLE_STMT, statement_)) return false;
    if (!Check(odbc_.SQLNumResultCols(statement_, &columns_), kWhat, SQL_HANDLE_STMT, statement_)) return false;
    if (columns_ > 0) return true;
    result = odbc_.SQLMoreResults(statement_);
  }
}

bool OdbcSession::SelectTables() {
  const SQLRETURN result =
      odbc_.SQLTables(statement_, nullptr, 0, nullptr, 0, nullptr, 0, SqlText("TABLE,VIEW"), SQL_NTS);
  return Check(result, "The list of tables failed", SQL_HANDLE_STMT, statement_);
}

bool OdbcSession::Fetch() {
  if (Failed()) return false;
  const SQLRETURN result = odbc_.SQLFetch(statement_);
  return result != SQL_NO_DATA && Check(result, "Reading a row failed", SQL_HANDLE_STMT, statement_);
}

bool OdbcSession::GetText(SQLUSMALLINT column, std::string& text) {
  text.clear();
  if (Failed()) return false;
  for (;;) {
    std::array<SQLCHAR, 2048> piece;
    piece[0] = 0;
    SQLLEN left = 0;  // bytes of the text from this piece on
    const SQLRETURN result = odbc_.SQLGetData(statement_, column, SQL_C_CHAR, piece.data(), piece.size(), &left);
    if (result == SQL_NO_DATA) return true;
    if (!Check(result, "Reading a cell failed", SQL_HANDLE_STMT, statement_)) return false;
    if (left == SQL_NULL_DATA) return false;
    // Up to the terminator, not piece.size() - 1: a driver need not part a character in the middle to fill a piece.
    text.append(reinterpret_cast<const char*>(piece.data()), LengthIn(piece.data(), piece.size() - 1));
    const bool cut = left == SQL_NO_TOTAL || left >= static_cast<SQLLEN>(piece.size());
    if (result == SQL_SUCCESS || !cut) return true;
  }
}

bool OdbcSession::NextDataSource(std::string& name) {
  std::array<SQLCHAR, SQL_MAX_DSN_LENGTH + 1> source;
  std::array<SQLCHAR, 256> description;
  SQLSMALLINT length;
  const SQLRETURN result =
      odbc_.SQLDataSources(environment_, nextSource_, source.data(), static_cast<SQLSMALLINT>(source.size()), &length,
                           description.data(), static_cast<SQLSMALLINT>(description.size()), &length);
  nextSource_ = SQL_FETCH_NEXT;
  if (result == SQL_NO_DATA || !Check(result, "The list of data sources failed", SQL_HANDLE_ENV, environment_))
    return false;
  name = DecodeText({reinterpret_cast<const char*>(source.data()), LengthIn(source.data(), source.size())});
  return true;
}

std::string OdbcSession::Quoted(const std::string& name) {
  const auto plain = [](char c) { return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_'; };
  if (std::all_of(name.begin(), name.end(), plain) && !(name[0] >= '0' && name[0] <= '9')) return name;
  char quote[8] = "";
  odbc_.SQLGetInfo(connection_, SQL_IDENTIFIER_QUOTE_CHAR, quote, sizeof quote, nullptr);
  if (Trim(quote).empty()) return name;  // the source has none
  std::string quoted = quote;
  for (const char c : name) quoted += c == quote[0] ? std::string(2, c) : std::string(1, c);
  return quoted + quote;
}

bool OdbcSession::Allocate(SQLSMALLINT type, SQLHANDLE parent, SQLHANDLE& handle) {
  const SQLSMALLINT parentType = type == SQL_HANDLE_STMT ? SQL_HANDLE_DBC : SQL_HANDLE_ENV;
  return Check(odbc_.SQLAllocHandle(type, parent, &handle), "unixODBC cannot be started", parentType, parent);
}

bool OdbcSession::Check(SQLRETURN result, std::string_view what, SQLSMALLINT type, SQLHANDLE handle) {
  if (SQL_SUCCEEDED(result)) return true;
  const std::string reasons = Diagnostics(type, handle);
  error_ = std::string(what) + (reasons.empty() ? "." : ": " + reasons);
  return false;
}

std::string OdbcSession::Diagnostics(SQLSMALLINT type, SQLHANDLE handle) const {
  std::string text;
  if (handle == SQL_NULL_HANDLE) return text;
  for (SQLSMALLINT record = 1;; ++record) {
    std::array<SQLCHAR, 6> state;
    std::array<SQLCHAR, 4096> message;
    SQLINTEGER number;
    SQLSMALLINT length;
    if (!SQL_SUCCEEDED(odbc_.SQLGetDiagRec(type, handle, record, state.data(), &number, message.data(),
                                           static_cast<SQLSMALLINT>(message.size()), &length)))
      break;
    text += ' ';
    text.append(reinterpret_cast<const char*>(message.data()), LengthIn(message.data(), message.size()));
  }
  text = DecodeText(text);
  std::replace_if(
      text.begin(), text.end(), [](unsigned char c) { return c < ' '; }, ' ');
  const auto end = std::unique(text.begin(), text.end(), [](char a, char b) { return a == ' ' && b == ' '; });
  text.erase(end, text.end());
  return std::string(Trim(text));
}

}  // namespace

Result<GridCells> QueryDatabase(const std::string& connectString, const std::string& query, const char* library,
                                std::size_t rowLimit) {
  OdbcSession session(library);
  if (!session.Connect(connectString) || !session.Execute(query)) return Failure{session.Error()};
  GridCells cells;
  if (session.Columns() == 0) return cells;
  std::string text;
  for (std::size_t row = 1; row <= rowLimit && session.Fetch(); ++row) {
    for (SQLUSMALLINT column = 1; column <= session.Columns(); ++column) {
      if (!session.GetText(column, text)) continue;
      if (const auto value = NumericText(text))
        cells.SetGridCellNumber(row, column, *value);
      else
        cells.SetGridCellText(row, column, DecodeText(text));
    }
  }
  if (session.Failed()) return Failure{session.Error()};
  return cells;
}

Result<std::vector<std::string>> ListTables(const std::string& connectString, const char* library) {
  constexpr SQLUSMALLINT kSchemaColumn = 2, kNameColumn = 3;
  OdbcSession session(library);
  std::vector<std::string> tables;
  if (session.Connect(connectString) && session.SelectTables()) {
    std::string schema, name;
    while (session.Fetch()) {
      session.GetText(kSchemaColumn, schema);
      if (!session.GetText(kNameColumn, name) || name.empty()) continue;
      tables.push_back((schema.empty() ? "" : session.Quoted(DecodeText(schema)) + ".") +
                       session.Quoted(DecodeText(name)));
    }
  }
  if (session.Failed()) return Failure{session.Error()};
  return tables;
}

Result<std::vector<std::string>> ListDataSources(const char* library) {
  OdbcSession session(library);
  std::vector<std::string> sources;
  std::string name;
  if (session.Start())
    while (session.NextDataSource(name)) sources.push_back(name);
  if (session.Failed()) return Failure{session.Error()};
  return sources;
}

}  // namespace quorvex
