#pragma once

#include <gtest/gtest.h>

#include <string>

#include "TemporaryFolder.h"
#include "import/OdbcSource.h"

namespace quorvex {

// A real database, SQLite's, in a folder of its own, reached through the installed driver manager and driver.
class OdbcDatabase {
 public:
  std::string ConnectString() const { return "Driver=SQLite3;NoCreat=0;Database=" + Folder.Path("lab.db"); }

  GridCells Query(const std::string& query) const {
    const auto cells = QueryDatabase(ConnectString(), query);
    if (cells) return *cells;
    ADD_FAILURE() << query << "\n" << cells.error();
    return GridCells();
  }

  TemporaryFolder Folder;
};

}  // namespace quorvex
