#include "import/OdbcSource.h"

#include <dlfcn.h>
#include <locale.h>
#include <odbcinst.h>
#include <sql.h>
#include <sqlext.h>
#include <string.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string_view>
#include <thread>

#include "core/NumberText.h"
#include "core/TextEncoding.h"
#include "import/ConnectString.h"

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
    // Drivers load this one for their settings, which it caches without an end; a cache lost with each driver leaks.
    if (void* const settings = dlopen("libodbcinst.so.2", RTLD_LAZY | RTLD_LOCAL | RTLD_NODELETE))
      setting_ = reinterpret_cast<decltype(setting_)>(dlsym(settings, "SQLGetPrivateProfileString"));
  }

  // What the settings say of a data source under a key, empty where they say nothing.
  std::string Setting(const std::string& source, const char* key) const {
    char text[4096] = "";
    if (setting_ != nullptr) setting_(source.c_str(), key, "", text, sizeof text, "odbc.ini");
    return text;
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

  // These two come before the functions, which are looked up in the library when the members are made.
  std::string loadError_;
  void* library_;
  decltype(&::SQLGetPrivateProfileString) setting_ = nullptr;

 public:
#define ODBC_FUNCTION(name) const decltype(&::name) name = Find<decltype(&::name)>(#name)
  ODBC_FUNCTION(SQLAllocHandle);
  ODBC_FUNCTION(SQLCancel);
  ODBC_FUNCTION(SQLDataSources);
  ODBC_FUNCTION(SQLDescribeCol);
  ODBC_FUNCTION(SQLDisconnect);
  ODBC_FUNCTION(SQLDriverConnect);
  ODBC_FUNCTION(SQLExecDirect);
  ODBC_FUNCTION(SQLFetch);
  ODBC_FUNCTION(SQLFreeHandle);
  ODBC_FUNCTION(SQLGetConnectAttr);
  ODBC_FUNCTION(SQLGetData);
  ODBC_FUNCTION(SQLGetDiagRec);
  ODBC_FUNCTION(SQLGetInfo);
  ODBC_FUNCTION(SQLMoreResults);
  ODBC_FUNCTION(SQLNumResultCols);
  ODBC_FUNCTION(SQLSetConnectAttr);
  ODBC_FUNCTION(SQLSetEnvAttr);
  ODBC_FUNCTION(SQLSetStmtAttr);
  ODBC_FUNCTION(SQLTables);
#undef ODBC_FUNCTION
};

// The interface takes texts it doesn't change as pointers to unsigned characters it might.
SQLCHAR* SqlText(const char* text) { return reinterpret_cast<SQLCHAR*>(const_cast<char*>(text)); }

std::size_t LengthIn(const SQLCHAR* buffer, std::size_t size) {
  return strnlen(reinterpret_cast<const char*>(buffer), size);
}

// A number where the interface takes a pointer.
SQLPOINTER SqlNumber(std::size_t number) { return reinterpret_cast<SQLPOINTER>(std::uintptr_t{number}); }

// Cancels a statement when the work is cancelled or its time is over, which drivers may not see to. That is done on a
// thread of its own, since a driver may answer the call no sooner than the one that it is to end. A call that comes
// before the other has begun is without effect, so it is repeated until this is at its end; then no such call is under
// way any more, and the statement may go.
class StatementWatch {
 public:
  // `seconds` of 0 are any time.
  StatementWatch(const LongWork& work, int seconds, std::function<void()> cancel)
      : cancel_(std::move(cancel)),
        seconds_(seconds),
        thread_([this] { Watch(); }),
        asked_(work.Stop(), [this] { Tell(asked); }) {}
  ~StatementWatch() { Tell(ended); }
  StatementWatch(const StatementWatch&) = delete;
  StatementWatch& operator=(const StatementWatch&) = delete;

  bool TimeIsOver() const { return timeIsOver_; }

 private:
  enum State { running, asked, ended };

  void Tell(State state) {
    {
      const std::lock_guard lock(lock_);
      state_ = std::max(state_, state);
    }
    wake_.notify_one();
  }

  void Watch() {
    constexpr auto kPause = std::chrono::milliseconds(200);
    const auto told = [this] { return state_ != running; };
    const auto end = [this] { return state_ == ended; };
    std::unique_lock lock(lock_);
    if (seconds_ == 0)
      wake_.wait(lock, told);
    else
      timeIsOver_ = !wake_.wait_for(lock, std::chrono::seconds(seconds_), told);
    while (!end()) {
      lock.unlock();
      cancel_();
      lock.lock();
      wake_.wait_for(lock, kPause, end);
    }
  }

  const std::function<void()> cancel_;
  const int seconds_;
  std::mutex lock_;
  std::condition_variable wake_;
  State state_ = running;
  std::atomic<bool> timeIsOver_ = false;
  std::jthread thread_;  // joined at the end
  // Made last, since it may call at once, and the first to go, so that nobody calls a watch that is half gone.
  std::stop_callback<std::function<void()>> asked_;
};

// One connection and one statement. A step that fails returns false, and so does every later one; Error says why.
class OdbcSession {
 public:
  OdbcSession(const DatabaseUse& use, const LongWork& work) : odbc_(use.Library), use_(use), work_(work) {}
  ~OdbcSession();
  OdbcSession(const OdbcSession&) = delete;
  OdbcSession& operator=(const OdbcSession&) = delete;

  bool Start();
  bool Connect(const std::string& connectString);
  bool Execute(const std::string& query);
  bool SelectTables(const std::string& catalog);

  // The next row; false behind the last one.
  bool Fetch();
  SQLUSMALLINT Columns() const { return static_cast<SQLUSMALLINT>(columns_); }
  // The name of a column of the result, "" where it has none.
  std::string ColumnName(SQLUSMALLINT column);
  // The text of a cell of the row, as the driver has it; false for NULL. Columns must be asked for in rising order.
  bool GetText(SQLUSMALLINT column, std::string& text);

  // The next data source's name and driver; false behind the last one.
  bool NextDataSource(std::string& name, std::string& driver);

  // The database that the connection is in, "" where there is none or the source has no such names.
  std::string CurrentCatalog();
  // Whether queries may name the catalog of a table.
  bool CatalogsInQueries();
  // A name as a query must have it, in quotes wherever the source has them: one may be a word of the language.
  std::string Quoted(const std::string& name);

  bool Failed() const { return !error_.empty(); }
  const std::string& Error() const { return error_; }

 private:
  bool Allocate(SQLSMALLINT type, SQLHANDLE parent, SQLHANDLE& handle);
  // The connect string as the driver gets it.
  std::string WithoutCreation(const std::string& connectString);
  // False, and failed, where the work is cancelled.
  bool Wanted();
  // True where `result` is a success; else keeps `what` and what is known about it.
  bool Check(SQLRETURN result, std::string_view what, SQLSMALLINT type, SQLHANDLE handle);
  std::string Diagnostics(SQLSMALLINT type, SQLHANDLE handle) const;

  PlainLocale locale_;
  OdbcManager odbc_;
  const DatabaseUse use_;
  const LongWork work_;
  SQLHANDLE environment_ = SQL_NULL_HANDLE, connection_ = SQL_NULL_HANDLE, statement_ = SQL_NULL_HANDLE;
  bool connected_ = false;
  SQLUSMALLINT nextSource_ = SQL_FETCH_FIRST;
  SQLSMALLINT columns_ = 0;
  std::string error_;
  std::optional<StatementWatch> watch_;
};

OdbcSession::~OdbcSession() {
  // Its thread may be cancelling the statement, which must not be freed before.
  watch_.reset();
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
  return Check(odbc_.SQLSetEnvAttr(environment_, SQL_ATTR_ODBC_VERSION, SqlNumber(SQL_OV_ODBC3), 0),
               "unixODBC cannot be started", SQL_HANDLE_ENV, environment_);
}

bool OdbcSession::Connect(const std::string& connectString) {
  if (!Start()) return false;
  const std::string text = WithoutCreation(connectString);
  if (!Allocate(SQL_HANDLE_DBC, environment_, connection_)) return false;
  // What a driver can't limit it leaves alone.
  if (use_.LoginSeconds > 0)
    odbc_.SQLSetConnectAttr(connection_, SQL_ATTR_LOGIN_TIMEOUT, SqlNumber(std::size_t(use_.LoginSeconds)), 0);
  const SQLRETURN result = odbc_.SQLDriverConnect(connection_, nullptr, SqlText(text.c_str()), SQL_NTS, nullptr, 0,
                                                  nullptr, SQL_DRIVER_NOPROMPT);
  connected_ = Check(result, "Connecting to the database failed", SQL_HANDLE_DBC, connection_);
  if (!connected_ || !Wanted() || !Allocate(SQL_HANDLE_STMT, connection_, statement_)) return false;
  watch_.emplace(work_, use_.QuerySeconds, [this] { odbc_.SQLCancel(statement_); });
  return true;
}

std::string OdbcSession::WithoutCreation(const std::string& connectString) {
  std::string driver = ConnectValue(connectString, "Driver");
  if (const std::string source = ConnectValue(connectString, "DSN"); driver.empty() && !source.empty()) {
    for (std::string name, its; NextDataSource(name, its);)
      if (EqualNoCase(name, source)) driver = its;
    error_.clear();  // connecting tells what is wrong with the sources
  }
  const bool sqlite = ToLower(driver).find("sqlite") != std::string::npos;
  if (!sqlite || !ConnectValue(connectString, "NoCreat").empty()) return connectString;
  return "NoCreat=1;" + connectString;  // in front, since the driver loses its way behind braces
}

bool OdbcSession::Wanted() {
  if (work_.Cancelled() && error_.empty()) error_ = "The import was cancelled.";
  return error_.empty();
}

bool OdbcSession::Execute(const std::string& query) {
  constexpr std::string_view kWhat = "The query failed";
  if (use_.QuerySeconds > 0)
    odbc_.SQLSetStmtAttr(statement_, SQL_ATTR_QUERY_TIMEOUT, SqlNumber(std::size_t(use_.QuerySeconds)), 0);
  // A hint that spares the source work; a driver may ignore it, and the reading stops at the limit by itself.
  if (use_.RowLimit <= std::numeric_limits<SQLINTEGER>::max())
    odbc_.SQLSetStmtAttr(statement_, SQL_ATTR_MAX_ROWS, SqlNumber(use_.RowLimit), 0);
  if (!Wanted()) return false;
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

bool OdbcSession::SelectTables(const std::string& catalog) {
  const SQLRETURN result = odbc_.SQLTables(statement_, catalog.empty() ? nullptr : SqlText(catalog.c_str()), SQL_NTS,
                                           nullptr, 0, nullptr, 0, SqlText("TABLE,VIEW"), SQL_NTS);
  return Check(result, "The list of tables failed", SQL_HANDLE_STMT, statement_);
}

bool OdbcSession::Fetch() {
  if (Failed() || !Wanted()) return false;
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

std::string OdbcSession::ColumnName(SQLUSMALLINT column) {
  std::array<SQLCHAR, 1024> name{};
  SQLSMALLINT length, type, digits, nullable;
  SQLULEN size;
  const SQLRETURN result = odbc_.SQLDescribeCol(statement_, column, name.data(), static_cast<SQLSMALLINT>(name.size()),
                                                &length, &type, &size, &digits, &nullable);
  if (!SQL_SUCCEEDED(result)) return "";
  return DecodeText({reinterpret_cast<const char*>(name.data()), LengthIn(name.data(), name.size())});
}

bool OdbcSession::NextDataSource(std::string& name, std::string& driver) {
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
  driver =
      DecodeText({reinterpret_cast<const char*>(description.data()), LengthIn(description.data(), description.size())});
  return true;
}

std::string OdbcSession::CurrentCatalog() {
  std::array<SQLCHAR, 1024> name{};
  SQLINTEGER length;
  const SQLRETURN result = odbc_.SQLGetConnectAttr(connection_, SQL_ATTR_CURRENT_CATALOG, name.data(),
                                                   static_cast<SQLINTEGER>(name.size()), &length);
  if (!SQL_SUCCEEDED(result)) return "";
  const std::string catalog(reinterpret_cast<const char*>(name.data()), LengthIn(name.data(), name.size()));
  return catalog == "null" ? "" : catalog;  // MariaDB's driver says so where none is chosen
}

bool OdbcSession::CatalogsInQueries() {
  SQLUINTEGER usage = 0;
  odbc_.SQLGetInfo(connection_, SQL_CATALOG_USAGE, &usage, sizeof usage, nullptr);
  return (usage & SQL_CU_DML_STATEMENTS) != 0;
}

std::string OdbcSession::Quoted(const std::string& name) {
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
  // What a driver says of a statement that was cancelled does not tell that its time was over.
  if (watch_ && watch_->TimeIsOver()) {
    error_ = "The query took longer than the limit of " + std::to_string(use_.QuerySeconds) + " s.";
    return false;
  }
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
  // One line for a log or a box: messages come with line ends and runs of blanks.
  std::replace_if(
      text.begin(), text.end(), [](unsigned char c) { return c < ' '; }, ' ');
  const auto end = std::unique(text.begin(), text.end(), [](char a, char b) { return a == ' ' && b == ' '; });
  text.erase(end, text.end());
  return std::string(Trim(text));
}

}  // namespace

DatabaseUse DatabaseUse::From(const Settings& settings) {
  DatabaseUse use;
  use.LoginSeconds = settings.Integer("logintimeout");
  use.QuerySeconds = settings.Integer("querytimeout");
  return use;
}

Result<GridCells> QueryDatabase(const std::string& connectString, const std::string& query, const DatabaseUse& use,
                                const LongWork& work) {
  OdbcSession session(use, work);
  if (!session.Connect(connectString) || !session.Execute(query)) return Failure{session.Error()};
  GridCells cells;
  if (session.Columns() == 0) return cells;
  for (SQLUSMALLINT column = 1; column <= session.Columns(); ++column)
    cells.ColumnNames.push_back(session.ColumnName(column));
  std::string text;
  for (std::size_t row = 1; row <= use.RowLimit && session.Fetch(); ++row) {
    work.ShowProgress(row, 0);
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

Result<std::vector<DatabaseTable>> ListTables(const std::string& connectString, const DatabaseUse& use,
                                              const LongWork& work) {
  constexpr SQLUSMALLINT kCatalogColumn = 1, kSchemaColumn = 2, kNameColumn = 3;
  OdbcSession session(use, work);
  std::vector<DatabaseTable> tables;
  if (session.Connect(connectString)) {
    const std::string current = session.CurrentCatalog();
    const bool withCatalog = session.CatalogsInQueries();
    session.SelectTables(current);
    std::string catalog, schema, name;
    while (session.Fetch()) {
      session.GetText(kCatalogColumn, catalog);
      session.GetText(kSchemaColumn, schema);
      if (!session.GetText(kNameColumn, name) || name.empty()) continue;
      // The catalog that was asked for is a pattern to some drivers and nothing to others.
      if (!current.empty() && !catalog.empty() && catalog != current) continue;
      DatabaseTable table;
      for (const std::string& part : {withCatalog ? catalog : "", schema, name}) {
        if (part.empty()) continue;
        const char* const dot = table.Name.empty() ? "" : ".";
        table.Name += dot + DecodeText(part);
        table.Quoted += dot + session.Quoted(DecodeText(part));
      }
      tables.push_back(std::move(table));
    }
  }
  if (session.Failed()) return Failure{session.Error()};
  return tables;
}

std::vector<std::string> DatabaseFiles(const std::string& connectString, const char* library) {
  std::vector<std::string> names = ConnectValues(connectString);
  if (const std::string source = ConnectValue(connectString, "DSN"); !source.empty()) {
    const OdbcManager odbc(library);
    for (const char* const key : {"Database", "DBQ"}) names.push_back(odbc.Setting(source, key));
  }
  return names;
}

Result<std::vector<std::string>> ListDataSources(const char* library) {
  DatabaseUse use;
  use.Library = library;
  OdbcSession session(use, LongWork());
  std::vector<std::string> sources;
  std::string name, driver;
  if (session.Start())
    while (session.NextDataSource(name, driver)) sources.push_back(name);
  if (session.Failed()) return Failure{session.Error()};
  return sources;
}

}  // namespace quorvex
