#include "batch/ReadMacroDatabase.h"

#include <utility>

#include "sheet/BlankMissingMarker.h"
#include "sheet/OdbcSource.h"

namespace quorvex {

DataReading ReadMacroDatabase(const MacroSetup& setup, const LocaleText& locale) {
  Result<GridCells> cells = QueryDatabase(setup.DataFile, setup.SQLQuery);
  if (!cells) {
    DataReading failed;
    failed.Message = cells.error();
    return failed;
  }
  if (!setup.MissingData.empty()) BlankMissingMarker(*cells, setup.MissingData);
  return ReadPoints(std::move(*cells), setup, locale);
}

}  // namespace quorvex
