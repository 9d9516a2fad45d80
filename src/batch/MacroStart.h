#pragma once

#include <optional>
#include <string>

#include "batch/MacroFiles.h"
#include "batch/MacroRequest.h"
#include "batch/RunPart.h"
#include "core/Result.h"
#include "core/Session.h"
#include "macro/MacroReader.h"
#include "macro/ParameterFile.h"
#include "sheet/SeriesData.h"

namespace quorvex {

// What a run of a macro begins with, and what a check of it therefore goes through, too. Nothing here writes.

// Why a run ends before it begins.
struct MacroRefusal {
  int Status;
  std::string Text;
};

// Reads the macro's file, with the notes of its reader where those are wanted.
std::optional<MacroRefusal> ReadMacroFile(const MacroRequest& request, Session& session, Macro& macro, std::string& log,
                                          MacroNotes* notes = nullptr);

// Gives a part of the table files of its own. A part of what has none is refused.
std::optional<MacroRefusal> TakePart(const MacroRequest& request, MacroSetup& setup, RunPart& part);

// Reads the combinations of a parameter run, whose values name files, too, and notes all files that the runs read; a
// run without a table has one combination, and nothing to substitute.
Result<ParameterTable> NoteInputs(const MacroRequest& request, const MacroSetup& setup, MacroFiles& files);

// Reads the data whose columns are the runs of a series. Refused where they are none, or where the macro has other
// runs.
std::optional<MacroRefusal> StartSeries(const MacroSetup& setup, const LocaleText& locale, SeriesData& series);

// Where the log is written, and why it may not be; nothing where it may.
std::string PlaceOfLog(const MacroSetup& setup);
std::optional<std::string> RefuseLog(const MacroSetup& setup, MacroFiles& files);

// Why the file of results may not be written to `path`: a run would read it, or write something else to it.
std::optional<std::string> RefuseResults(const MacroSetup& setup, const ParameterTable& table, const std::string& path,
                                         MacroFiles& files);

// Why it cannot be written, by the number of the file error.
std::string ResultFaultText(const std::string& name, int error);

}  // namespace quorvex
