#pragma once

#include <functional>

#include "batch/DataReading.h"
#include "import/OdbcSource.h"

namespace quorvex {

// Runs `SQLQuery` on the source that `DataFile` is the connect string of, and reads the result like the lines of a data
// file: its columns in the column order, a cell that shows the marker of missing data as an empty one. A result without
// rows is no failure and gives no points. Where the database refuses, Message is what it says.
//
// The database is asked on a thread of its own, so that a run that waits for it can be aborted: `keepWaiting` is called
// again and again, also while the result is sorted and weighted, and where it returns false the reading ends without a
// Message.
DataReading ReadMacroDatabase(const MacroSetup& setup, const LocaleText& locale, const DatabaseUse& use,
                              const std::function<bool()>& keepWaiting);

}  // namespace quorvex
