#pragma once

#include <string>
#include <vector>

#include "sheet/DataImport.h"

namespace quorvex {

// The import of a table of a database.
class DatabaseImport : public DataImport {
 public:
  // `source` is what messages name: the connect string may hold a password.
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
