#include "sheet/DatabaseImport.h"

#include "sheet/BlankMissingMarker.h"
#include "sheet/CopyCells.h"
#include "sheet/ImportFailure.h"
#include "sheet/OdbcSource.h"

namespace quorvex {

Result<std::vector<std::string>> DatabaseImport::Tables() const {
  Result<std::vector<std::string>> tables = ListTables(connectString_);
  if (!tables) return ImportFailure(Source, tables.error());
  return tables;
}

Result<GridCells> DatabaseImport::ReadRows(std::size_t first, std::size_t count, const std::string& marker) {
  Result<GridCells> rows = QueryDatabase(connectString_, Query(), kOdbcLibrary, first - 1 + count);
  if (!rows) return ImportFailure(Source, rows.error());
  if (!marker.empty()) BlankMissingMarker(*rows, marker);
  if (first == 1) return rows;
  GridCells wanted;
  if (const std::size_t last = rows->GridLastRow(); last >= first)
    CopyCells(*rows, {first, 1, last, rows->GridLastCol()}, wanted, 1, 1);
  return wanted;
}

std::string DatabaseImport::IncompleteQuestion() const {
  return "You did not assign columns to all variables, so there will be no data imported to them. Do you want to "
         "continue?";
}

}  // namespace quorvex
