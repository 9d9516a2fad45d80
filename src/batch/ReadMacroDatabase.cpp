#include "batch/ReadMacroDatabase.h"

#include <memory>
#include <utility>

#include "core/LongWork.h"
#include "import/BlankMissingMarker.h"

namespace quorvex {

DataReading ReadMacroDatabase(const MacroSetup& setup, const LocaleText& locale, const DatabaseUse& use,
                              const std::function<bool()>& keepWaiting) {
  DataReading failed;
  // Shared, since a query that is given up goes on for a while and writes here after this function has returned.
  const auto cells = std::make_shared<Result<GridCells>>(Failure{});
  const auto read = [cells, connect = setup.DataFile, query = setup.SQLQuery, use](const LongWork& work) {
    *cells = QueryDatabase(connect, query, use, work);
  };
  if (!RunBeside(read, [&](const LongWork&) { return keepWaiting(); })) return failed;
  if (!*cells) {
    failed.Message = cells->error();
    return failed;
  }
  if (!setup.MissingData.empty()) BlankMissingResults(**cells, setup.MissingData);
  return ReadPoints(std::move(**cells), setup, locale, keepWaiting);
}

}  // namespace quorvex
