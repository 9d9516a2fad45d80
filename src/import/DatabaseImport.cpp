#include "import/DatabaseImport.h"

#include <utility>

#include "import/BlankMissingMarker.h"
#include "import/ImportFailure.h"
#include "sheet/CopyCells.h"

namespace quorvex {

Result<std::vector<DatabaseTable>> DatabaseImport::Tables(Prompter* user) const {
  using Tables = Result<std::vector<DatabaseTable>>;
  const auto list = [connect = connectString_, use = use_, source = Source](const LongWork& work) {
    Tables tables = ListTables(connect, use, work);
    if (!tables) return Tables(ImportFailure(source, tables.error()));
    return tables->empty() ? Tables(Failure{"There are no tables in '" + source + "'."}) : tables;
  };
  return Await<Tables>(user, "Connecting to '" + Source + "'", list).value_or(Failure{});
}

DatabaseImport::Reading DatabaseImport::ReadRows(std::size_t first, std::size_t count,
                                                 const std::string& marker) const {
  DatabaseUse use = use_;
  // There is no way to skip rows that every source knows: they are read and dropped.
  use.RowLimit = first - 1 + count;
  // Everything is captured by value, as a reading that is given up may go on when this object is gone.
  return [connect = connectString_, query = Query(), use, source = Source, first, marker](const LongWork& work) {
    Result<GridCells> rows = QueryDatabase(connect, query, use, work);
    if (!rows) return Result<GridCells>(ImportFailure(source, rows.error()));
    if (!marker.empty()) BlankMissingResults(*rows, marker);
    if (first == 1) return rows;
    GridCells wanted;
    wanted.ColumnNames = rows->ColumnNames;
    if (const std::size_t last = rows->GridLastRow(); last >= first)
      CopyCells(*rows, {first, 1, last, rows->GridLastCol()}, wanted, 1, 1);
    return Result<GridCells>(std::move(wanted));
  };
}

std::string DatabaseImport::IncompleteQuestion() const {
  return "You did not assign columns to all variables, so there will be no data imported to them. Do you want to "
         "continue?";
}

}  // namespace quorvex
