#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sheet/DataImport.h"

namespace quorvex {

// A connect string with the user's name and password put behind it, those that are not empty.
std::string ConnectString(std::string_view source, std::string_view user, std::string_view password);

// What messages call the database of a connect string, which may hold a password: its data source, database, server or
// driver, whichever is the first that is told.
std::string SourceName(std::string_view connectString);

// The import of a table of a database.
class DatabaseImport : public DataImport {
 public:
  // `source` is what messages name.
  DatabaseImport(const std::string& source, std::string connectString, const DataSheet& sheet)
      : DataImport(source, sheet), connectString_(std::move(connectString)) {}

  // The tables to choose from. Fails with the message of it.
  Result<std::vector<std::string>> Tables() const;

  std::string Table;  // one of them
  std::string Query() const { return "SELECT * FROM " + Table; }

  std::optional<std::size_t> LineCount() const override { return std::nullopt; }

 protected:
  Result<GridCells> ReadRows(std::size_t first, std::size_t count, const std::string& marker) override;
  std::string IncompleteQuestion() const override;

 private:
  std::string connectString_;
};

}  // namespace quorvex
