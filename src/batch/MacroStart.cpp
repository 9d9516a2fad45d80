#include "batch/MacroStart.h"

#include <set>
#include <string_view>

#include "batch/ReadMacroDataFile.h"
#include "core/Files.h"
#include "core/NumberText.h"
#include "core/TextEncoding.h"
#include "import/OdbcSource.h"
#include "macro/BatchStatus.h"
#include "macro/SubstituteParameters.h"

namespace quorvex {

std::optional<MacroRefusal> ReadMacroFile(const MacroRequest& request, Session& session, Macro& macro, std::string& log,
                                          MacroNotes* notes) {
  const std::string& fileName = request.FileName;
  log.append("Opening Quorvex Macro file '" + fileName + "'").append(NL);
  WholeFile file;
  if (const int error = file.Read(ResolveFoldedPath(request.TypedName)); error != 0)
    return MacroRefusal{FileErrorStatus(kMacroFile, error),
                        "The macro file '" + fileName + "' cannot be read. " + FileErrorText(error)};
  log.append("Parsing Quorvex Macro file").append(NL);
  macro.Text = DecodeText(file.Text());
  if (!ReadMacro(macro.Text, session.Locale, session.Preferences, macro, log, notes))
    return MacroRefusal{kNoMacroStatement,
                        "The file '" + fileName + "' is no macro: no line of it reads B_MACRO, or nothing follows."};
  return std::nullopt;
}

std::optional<MacroRefusal> TakePart(const MacroRequest& request, MacroSetup& setup, RunPart& part) {
  if (!request.Part) return std::nullopt;
  const Result<RunPart> parsed = ParseRunPart(*request.Part);
  if (!parsed) return MacroRefusal{kParameterFile, parsed.error()};
  if (!setup.UseParameterFile && !setup.DataSeries)
    return MacroRefusal{kParameterFile,
                        "The macro file '" + request.FileName + "' has no ParameterFile to run a part of."};
  part = *parsed;
  for (std::string* name : {&setup.LogFile, &setup.LogFileTyped, &setup.ResultFile})
    if (!name->empty()) *name = NameOfPart(*name, part.Number);
  return std::nullopt;
}

Result<ParameterTable> NoteInputs(const MacroRequest& request, const MacroSetup& setup, MacroFiles& files) {
  files.NoteInput(ResolveFoldedPath(request.TypedName), "macro file");
  if (!setup.PlotTemplate.empty()) files.NoteInput(setup.PlotTemplate, "plot template");
  ParameterTable table;
  if (setup.UseParameterFile) {
    const std::string path = ResolveFoldedPath(setup.ParameterFileTyped);
    files.NoteInput(path, "parameter file");
    Result<ParameterTable> read = ReadParameterFile(path);
    if (!read) return read;
    table = std::move(*read);
  } else {
    table.Rows.emplace_back();
  }
  std::set<std::string> names;
  for (std::size_t row = 0; row < table.Rows.size(); ++row) {
    const std::string name = WithParameters(setup.DataFile, table, row);
    if (!names.insert(name).second) continue;
    files.NoteInput(name, "data file");
    if (setup.SQLQuery.empty()) continue;
    for (const std::string& file : DatabaseFiles(name)) files.NoteInput(file, "database");
  }
  return table;
}

std::optional<MacroRefusal> StartSeries(const MacroSetup& setup, const LocaleText& locale, SeriesData& series) {
  if (setup.UseParameterFile)
    return MacroRefusal{kParameterFile,
                        "DataSeries and ParameterFile exclude each other: a series has its columns for rows."};
  if (!setup.SQLQuery.empty())
    return MacroRefusal{kDataUnreadable, "DataSeries and SQLQuery exclude each other: a series is read from a file."};
  SeriesReading reading = ReadMacroSeries(setup, locale);
  if (!reading.Series)
    return MacroRefusal{reading.ErrorNumber == 0 ? kDataUnreadable : FileErrorStatus(kDataFile, reading.ErrorNumber),
                        "The data file '" + setup.DataFile + "' cannot be read as a series. " + reading.Message};
  series = std::move(*reading.Series);
  return std::nullopt;
}

std::string PlaceOfLog(const MacroSetup& setup) { return ResolveNewFoldedPath(setup.LogFileTyped); }

std::optional<std::string> RefuseLog(const MacroSetup& setup, MacroFiles& files) {
  return files.RefuseInput("log", setup.LogFile, PlaceOfLog(setup));
}

std::optional<std::string> RefuseResults(const MacroSetup& setup, const ParameterTable& table, const std::string& path,
                                         MacroFiles& files) {
  if (auto refusal = files.RefuseInput("result file", setup.ResultFile, path)) return refusal;
  const auto identity = IdentityOfFile(path);
  const auto isThat = [&](std::string_view name) {
    const std::string other = files.Place(std::string(name));
    return other == path || (identity && identity == IdentityOfFile(other));
  };
  const auto refused = [&](const char* what) {
    return "The result file '" + setup.ResultFile + "' is the " + what + " of this macro and is not overwritten.";
  };
  const std::size_t rows = setup.OutputFile.find('%') == std::string::npos ? 1 : table.Rows.size();
  for (std::size_t row = 0; row < rows; ++row)
    if (isThat(FileWithParameters(setup.OutputFile, table, row))) return refused("output file");
  for (std::string_view plots = setup.PlotFile; !plots.empty();)
    if (isThat(TakeLine(plots))) return refused("plot");
  for (std::string_view codes = setup.CodeFile; !codes.empty();)
    if (isThat(TakeLine(codes))) return refused("code");
  for (std::string_view reports = setup.ReportFile; !reports.empty();)
    if (isThat(TakeLine(reports))) return refused("report");
  return std::nullopt;
}

std::string ResultFaultText(const std::string& name, int error) {
  return "The result file '" + name + "' cannot be written. " + FileErrorText(error);
}

}  // namespace quorvex
