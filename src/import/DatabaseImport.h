#pragma once

#include <string>
#include <utility>
#include <vector>

#include "import/DataImport.h"
#include "import/OdbcSource.h"

namespace quorvex {

// The import of a table of a database.
class DatabaseImport : public DataImport {
 public:
  // `source` is what messages name.
  DatabaseImport(const std::string& source, std::string connectString, const DataSheet& sheet, DatabaseUse use = {})
      : DataImport(source, sheet), connectString_(std::move(connectString)), use_(use) {}

  // The tables to choose from, one at least. Fails with the message of it, which is empty where the user, who waits for
  // it, cancelled.
  Result<std::vector<DatabaseTable>> Tables(Prompter* user = nullptr) const;

  std::string Table;  // one of them, as it is quoted
  std::string Query() const { return "SELECT * FROM " + Table; }

  std::optional<std::size_t> LineCount() const override { return std::nullopt; }

 protected:
  Reading ReadRows(std::size_t first, std::size_t count, const std::string& marker) const override;
  std::string IncompleteQuestion() const override;

 private:
  std::string connectString_;
  DatabaseUse use_;
};

}  // namespace quorvex
