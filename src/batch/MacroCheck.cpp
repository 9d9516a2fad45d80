#include "batch/MacroCheck.h"

#include <algorithm>
#include <cstdint>
#include <exception>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <unordered_map>
#include <utility>

#include "batch/DataReading.h"
#include "batch/MacroStart.h"
#include "batch/NamedOutputs.h"
#include "batch/RunAnswers.h"
#include "batch/WritePlot.h"
#include "core/Files.h"
#include "core/NumberText.h"
#include "import/ConnectString.h"
#include "macro/BatchStatus.h"
#include "macro/MacroLog.h"
#include "macro/MacroStatements.h"
#include "macro/SubstituteParameters.h"
#include "macro/ValueFault.h"
#include "results/ResultPlots.h"
#include "sheet/ArrangeData.h"

namespace quorvex {
namespace {

std::string Counted(std::size_t count, const std::string& noun) {
  return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

// The names that stand between percent signs, as far as they may be meant for parameters: those of `table`, and others
// that have no blank at an end and no quote beside their signs, as a pattern of a query has.
std::vector<std::string> NamesBetweenPercents(const std::string& text, const std::set<std::string>& known) {
  std::vector<std::string> names;
  for (std::size_t open = text.find('%'); open != std::string::npos;) {
    const std::size_t close = text.find('%', open + 1);
    if (close == std::string::npos) break;
    const std::string name = text.substr(open + 1, close - open - 1);
    const bool isKnown = known.contains(ToLower(name));
    const bool isPattern = open > 0 && text[open - 1] == '\'' && text.substr(close + 1, 1) == "'";
    const bool isName = isKnown || (!name.empty() && Trim(name) == name && !isPattern);
    if (isName) names.push_back(name);
    open = isName ? text.find('%', close + 1) : close;
  }
  return names;
}

class Checker {
 public:
  Checker(Session session) : session_(std::move(session)) { log_.Faults = &rowFaults_; }

  MacroCheck CheckFile(const MacroRequest& request) {
    InitMacroSetup(macro_.Setup, session_.Preferences);
    if (const auto refusal = ReadMacroFile(request, session_, macro_, log_.Text, &notes_))
      Add(0, refusal->Status, refusal->Text);
    else
      CheckAll(request);
    return Finished();
  }

  MacroCheck CheckText(std::string_view text) {
    InitMacroSetup(macro_.Setup, session_.Preferences);
    if (ReadMacro(text, session_.Locale, session_.Preferences, macro_, log_.Text, &notes_))
      CheckAll(MacroRequest(""));
    else
      Add(0, kNoMacroStatement, "No line reads B_MACRO, or nothing follows.");
    return Finished();
  }

 private:
  void CheckAll(const MacroRequest& request);
  void CheckParameterNames();
  void CheckLog();
  void CheckResults();
  void CheckRow(std::size_t row);
  void CheckValues();
  void CheckEffects();
  void CheckData();
  void CheckColumnOrder();
  void CheckModels();
  void CheckAnswers();
  void CheckNames(const NamedOutputs& outputs);
  void NoteShared(Writing kind, const std::string& what, const std::string& name, std::size_t line);
  void TellShared();
  MacroCheck Finished();

  const MacroSetup& Setup() const { return macro_.Setup; }
  std::size_t LineOf(std::string_view keyword) const { return notes_.LineOf(keyword); }
  // A fault of the row in hand, or of none. The same one of several rows is told once.
  void Add(std::size_t line, int status, const std::string& text);

  Session session_;
  Macro macro_;
  MacroNotes notes_;
  int ignored_ = 0;  // the status of a log that is never opened
  MacroLog log_{macro_.Setup, ignored_};
  std::vector<MacroFault> rowFaults_;  // that the substitution finds
  FolderListings listings_;
  MacroFiles files_{&listings_};
  ParameterTable table_;
  RunPart part_;
  MacroSetup written_;
  std::map<std::string_view, std::vector<std::size_t>> nameLines_;  // of statements that name several files
  std::size_t row_ = 0;                                             // in hand, from 1; 0 without a table
  int logStatus_ = 0;  // ends no run, and is that of one which nothing else fails
  MacroCheck found_;
  std::unordered_map<std::string, std::size_t> places_;                // of faults, by line and text
  std::unordered_map<std::string, std::pair<int, std::string>> data_;  // status and fault of each source
  // An output, and how many rows write to it.
  struct Output {
    std::string What, Name;
    std::size_t Line, FirstRow, LastRow, Times;
  };
  std::unordered_map<std::string, Output> outputs_;  // by full name
};

void Checker::Add(std::size_t line, int status, const std::string& text) {
  if (found_.Status == 0) found_.Status = status;
  const auto [place, isNew] = places_.try_emplace(std::to_string(line) + ' ' + text, found_.Faults.size());
  if (isNew)
    found_.Faults.push_back({.Line = line, .Row = row_, .Status = status, .Text = text});
  else if (row_ > 0)
    ++found_.Faults[place->second].MoreRows;
}

void Checker::CheckAll(const MacroRequest& request) {
  found_.Models = static_cast<std::size_t>(macro_.ModelsCreated);
  if (const auto refusal = TakePart(request, macro_.Setup, part_)) return Add(0, refusal->Status, refusal->Text);
  Result<ParameterTable> table = NoteInputs(request, Setup(), files_);
  CheckLog();
  if (!table)
    return Add(LineOf("ParameterFile"), kParameterFile,
               "The parameter file '" + Setup().ParameterFile + "' cannot be read. " + table.error());
  table_ = std::move(*table);
  if (Setup().DataSeries) {
    SeriesData series;
    if (const auto refusal = StartSeries(Setup(), session_.Locale, series))
      return Add(LineOf("DataSeries"), refusal->Status, refusal->Text);
    table_ = TableOfSeries(series.Names());
  }
  CheckParameterNames();
  if (!Setup().PlotFile.empty() && !Setup().PlotTemplate.empty())
    if (const std::string fault = TemplateFault(Setup().PlotTemplate); !fault.empty())
      Add(LineOf("PlotTemplate"), 0, fault);
  files_.WatchKinds(!Setup().PlotFile.empty() || !Setup().CodeFile.empty() || !Setup().ReportFile.empty());
  CheckResults();

  written_ = Setup();
  for (const MacroNotes::Line& line : notes_.Lines)
    for (const NamedOutputs* outputs : AllNamedOutputs())
      if (line.Keyword == outputs->Keyword && !line.Value.empty()) nameLines_[outputs->Keyword].push_back(line.Number);
  const std::size_t end = part_.End(table_.Rows.size());
  for (std::size_t row = part_.First(table_.Rows.size()); row < end; ++row, ++found_.Runs) {
    row_ = Setup().UseParameterFile || Setup().DataSeries ? row + 1 : 0;
    CheckRow(row);
    macro_.Setup = written_;
    log_.Text.clear();
    rowFaults_.clear();
  }
  row_ = 0;
  TellShared();
}

// Names that the table lacks or that nothing asks for, and those that are put into no such statement.
void Checker::CheckParameterNames() {
  std::set<std::string> known, used;  // in lower case
  for (const std::string& name : table_.Names) known.insert(ToLower(name));
  for (const MacroNotes::Line& line : notes_.Lines) {
    const bool takesParameters = line.Statement == nullptr || IsSubstituted(*line.Statement);
    for (const std::string& name : NamesBetweenPercents(line.Value, known)) {
      const bool isKnown = known.contains(ToLower(name));
      if (takesParameters) used.insert(ToLower(name));
      if (takesParameters && isKnown) continue;
      if (isKnown)
        Add(line.Number, 0, "No parameter is put into " + line.Keyword + ", where %" + name + "% stays as it is.");
      else if (takesParameters)
        Add(line.Number, 0,
            Setup().UseParameterFile ? "The table has no parameter '" + name + "'."
                                     : "%" + name + "% stays as it is, for there is no ParameterFile.");
    }
  }
  // A value may ask for a parameter further on; a heading doesn't.
  for (const auto& row : table_.Rows)
    for (const std::string& value : table_.IsSeries ? std::vector<std::string>() : row)
      for (const std::string& name : NamesBetweenPercents(value, known)) used.insert(ToLower(name));
  for (const std::string& name : table_.Names)
    if (!table_.IsSeries && !used.contains(ToLower(name)))
      Add(LineOf("ParameterFile"), 0, "Nothing in the macro uses the parameter '" + name + "' of the table.");
}

void Checker::CheckLog() {
  if (!Setup().LogEnabled) return;
  const std::string path = PlaceOfLog(Setup());
  const int before = found_.Status;
  int error = 0;
  if (const auto refusal = RefuseLog(Setup(), files_))
    Add(LineOf("LogFile"), FileErrorStatus(kLogFile, error = kAccessError), *refusal);
  else if (error = WritingError(path); error != 0)
    Add(LineOf("LogFile"), FileErrorStatus(kLogFile, error),
        "The log '" + Setup().LogFile + "' cannot be written. " + FileErrorText(error));
  if (error == 0) return files_.NoteToCome(path, "log");
  logStatus_ = FileErrorStatus(kLogFile, error);
  found_.Status = before;
}

void Checker::CheckResults() {
  if (Setup().ResultFile.empty()) return;
  const std::string path = files_.Place(Setup().ResultFile);
  if (const auto refusal = RefuseResults(Setup(), table_, path, files_))
    Add(LineOf("ResultFile"), FileErrorStatus(kOutputFile, kAccessError), *refusal);
  else if (const int error = WritingError(path))
    Add(LineOf("ResultFile"), FileErrorStatus(kOutputFile, error), ResultFaultText(Setup().ResultFile, error));
  else
    files_.NoteToCome(path, "result file");
}

void Checker::CheckRow(std::size_t row) {
  const bool substituted = SubstituteParameters(macro_, table_, row, session_.Locale, log_);
  for (const MacroFault& fault : rowFaults_) {
    std::size_t line = fault.Line;
    for (const NamedOutputs* outputs : AllNamedOutputs())
      if (line == 0 && fault.Text.find(outputs->Keyword) != std::string::npos)  // one of its names is missing
        line = LineOf(outputs->Keyword);
    Add(line, fault.Status, fault.Text);
  }
  if (!substituted) return Add(LineOf("ParameterFile"), kParameterFile, std::string(kTooLongText));
  CheckValues();
  CheckEffects();
  CheckData();
  CheckModels();
  CheckAnswers();
  for (const NamedOutputs* outputs : AllNamedOutputs()) CheckNames(*outputs);
}

// What the parameters have made of values.
void Checker::CheckValues() {
  for (const SubstitutedField& field : SubstitutedFields()) {
    const std::string& text = field.In(macro_.Setup);
    if (text == field.In(written_)) continue;
    const std::string fault = ValueFault(*FindStatement(field.Keyword), text, session_.Locale);
    if (!fault.empty()) Add(LineOf(field.Keyword), 0, fault);
  }
}

// Statements that do nothing without another one.
void Checker::CheckEffects() {
  const MacroSetup& s = Setup();
  const bool ofProject = EqualNoCase(s.OutputFormat, "Quorvex"), isRobust = s.Loss != LossKind::Squares;
  const bool isDiagnosed = s.Diagnostics || !s.ReportFile.empty();
  constexpr std::string_view kDiagnostics = "without 'Diagnostics = True'", kRobust = "with a Loss other than Squares";
  const struct {
    std::string_view Keyword;
    bool IsIdle;
    std::string_view Why;
  } cases[] = {
      {"StandardDeviations", s.AbsoluteDeviations && !s.Weighted,
       "for data without them, 'Weighted = True' being missing"},
      {"LossScale", s.LossScale > 0 && !isRobust, "on squares; a Loss is missing"},
      {"Limits", s.ProfileLimits && !isDiagnosed, kDiagnostics},
      {"Limits", s.ProfileLimits && isDiagnosed && isRobust, kRobust},
      {"Bootstrap", s.Bootstrap > 0 && !isDiagnosed, kDiagnostics},
      {"BootstrapKind", s.Bootstrap == 0, "without Bootstrap"},
      {"CrossValidation", s.CrossValidation > 0 && !isDiagnosed && s.SortKey != kSortByCV,
       "without 'Diagnostics = True' or 'SortKey = CV'"},
      {"Diagnostics", s.Diagnostics && ofProject && s.ResultFile.empty() && s.ReportFile.empty(),
       "where the output is a project and there is no ResultFile"},
      {"PlotKind", s.PlotKind == static_cast<int>(ResultPlotKind::Profile) && isRobust, kRobust},
      {"PlotBands", s.PlotBands > 0 && s.PlotFile.empty(), "without a PlotFile"},
      {"PlotBands", s.PlotBands > 0 && !s.PlotFile.empty() && s.PlotKind != 0,
       s.PlotKind == static_cast<int>(ResultPlotKind::Profile) ? "on plots of profiles" : "on plots of residuals"},
  };
  for (const auto& [keyword, isIdle, why] : cases)
    if (const std::size_t line = LineOf(keyword); isIdle && line > 0)
      Add(line, 0, std::string(keyword).append(" does nothing ").append(why).append("."));
  // A project keeps quantities, and its windows tell their values.
  for (const MacroNotes::Line& line : notes_.Lines)
    if (line.Statement == nullptr && line.Keyword == "Report" && !s.Diagnostics && !ofProject)
      Add(line.Number, 0, std::string("Report does nothing ").append(kDiagnostics).append("."));
}

void Checker::CheckData() {
  const MacroSetup& setup = Setup();
  const bool fromDatabase = !setup.SQLQuery.empty();
  const auto [known, isNew] = data_.try_emplace(setup.DataFile + (fromDatabase ? "\1" : "\2"));
  auto& [status, fault] = known->second;
  if (isNew && setup.DataFile.empty()) {
    status = fromDatabase ? kDatabase : FileErrorStatus(kDataFile, ReadingError(""));
    fault = "No DataFile is named.";
  } else if (isNew && !fromDatabase) {
    const int error = ReadingError(ResolvePath(setup.DataFile, &listings_));
    if (error != 0) status = FileErrorStatus(kDataFile, error);
    if (error != 0) fault = "The data file '" + setup.DataFile + "' cannot be read. " + FileErrorText(error);
  } else if (const std::string file = ConnectValue(setup.DataFile, "Database");
             isNew && fromDatabase && !file.empty() &&
             ContainsNoCase(ConnectValue(setup.DataFile, "Driver"), "sqlite")) {
    const int error = ReadingError(ResolvePath(file, &listings_));
    if (error != 0) status = kDatabase;
    if (error != 0) fault = "The database '" + file + "' cannot be read. " + FileErrorText(error);
  }
  if (!fault.empty()) Add(LineOf("DataFile"), status, fault);
  if (const std::string variables = VariablesFault(setup); !variables.empty())
    Add(LineOf("IndependentVariables"), fromDatabase ? kDatabase : kDataUnreadable, variables);
  else if (!setup.DataSeries)
    CheckColumnOrder();
}

void Checker::CheckColumnOrder() {
  const MacroSetup& setup = Setup();
  if (EqualNoCase(Trim(setup.ColumnOrder), "default")) return;
  const auto variables = static_cast<std::size_t>(setup.IndependentVariables);
  const auto columns = ArrangedColumns(setup.ColumnOrder, variables, session_.Locale.ListSeparator);
  const std::size_t line = LineOf("ColumnOrder");
  if (columns.empty())
    return Add(line, setup.SQLQuery.empty() ? kDataUnreadable : kDatabase,
               "'ColumnOrder = " + setup.ColumnOrder + "' names too few columns.");
  for (std::size_t column = 1; column <= variables + (setup.Weighted ? 2 : 1); ++column) {
    if (std::ranges::find(columns, column) != columns.end()) continue;
    const std::string name = column > variables + 1 ? "sd" : column > variables ? "y" : "x" + std::to_string(column);
    Add(line, 0, "'ColumnOrder = " + setup.ColumnOrder + "' names no column " + name + ".");
  }
}

void Checker::CheckModels() {
  if (std::ranges::any_of(macro_.Models, [](const auto& model) { return model->Solve; })) {
    if (Setup().StrictStatus && macro_.ModelsCreated < macro_.BlockCount && found_.Status == 0)
      found_.Status = kModelFailed;
    return;
  }
  const std::size_t row = std::exchange(row_, 0);
  Add(0, kNoSolution, "The macro has no model that can be solved.");
  row_ = row;
}

void Checker::CheckAnswers() {
  const MacroSetup& setup = Setup();
  const std::size_t line = LineOf("OutputFile");
  if (setup.OutputFile.empty()) {
    if (setup.ResultFile.empty())
      Add(line, FileErrorStatus(kOutputFile, WritingError("")), "No OutputFile is named, and no ResultFile.");
    return;
  }
  if (const auto refusal = RefuseAnswers(setup, files_))
    return Add(line, FileErrorStatus(kOutputFile, kAccessError), *refusal);
  if (const int error = WritingError(files_.Place(setup.OutputFile)))
    return Add(line, FileErrorStatus(kOutputFile, error),
               "The output file '" + setup.OutputFile + "' cannot be written. " + FileErrorText(error));
  NoteShared(Writing::Answers, "output file", setup.OutputFile, line);
}

void Checker::CheckNames(const NamedOutputs& outputs) {
  const std::string& all = Setup().*outputs.Names;
  const std::vector<std::size_t>& lines = nameLines_[outputs.Keyword];
  const auto count = static_cast<std::size_t>(std::ranges::count(all, '\n')) + 1;
  std::size_t n = 0;
  for (std::string_view names = all; !names.empty(); ++n) {
    const std::string name(TakeLine(names)), what(outputs.Noun);
    // Where a row leaves one without a name nobody can tell which the others are.
    const std::size_t line = count == lines.size() ? lines[n] : LineOf(outputs.Keyword);
    std::string fault;
    int error = outputs.Error(name, files_, fault);
    if (error == 0 && (error = WritingError(files_.Place(name))) != 0)
      fault = outputs.NotWrittenText(name, FileErrorText(error));
    if (fault.empty())
      NoteShared(outputs.Kind, what, name, line);
    else
      Add(line, FileErrorStatus(kOutputFile, error), fault);
  }
}

void Checker::NoteShared(Writing kind, const std::string& what, const std::string& name, std::size_t line) {
  files_.NoteWritten(kind, name);
  const std::string full = files_.FullName(name);
  if (full.empty()) return;
  const auto [place, isNew] = outputs_.try_emplace(full, Output{what, name, line, row_, row_, 0});
  if (place->second.What != what) return;  // which is refused
  ++place->second.Times;
  place->second.LastRow = row_;
}

// Each file that would be written again: by other rows, or twice by one.
void Checker::TellShared() {
  for (const auto& [full, output] : outputs_) {
    if (output.Times < 2) continue;
    row_ = output.FirstRow;
    Add(output.Line, 0,
        "The " + output.What + " '" + output.Name + "' is written " + std::to_string(output.Times) + " times" +
            (output.LastRow > output.FirstRow ? ", at last by row " + std::to_string(output.LastRow) : "") +
            ", each over the one before.");
  }
  row_ = 0;
}

MacroCheck Checker::Finished() {
  std::ranges::move(found_.Faults, std::back_inserter(notes_.Faults));
  found_.Faults = std::move(notes_.Faults);
  std::ranges::stable_sort(found_.Faults, {}, [](const MacroFault& fault) {
    return std::pair(fault.Line == 0 ? SIZE_MAX : fault.Line, fault.Row);
  });
  if (found_.Status == 0) found_.Status = logStatus_;
  return std::move(found_);
}

// Too little memory ends a check as it ends a run.
template <typename Check>
MacroCheck Guarded(Check check) {
  try {
    return check();
  } catch (const std::exception&) {
    MacroCheck failed;
    failed.Status = kOtherFailure;
    failed.Faults.push_back(
        {.Status = kOtherFailure, .Text = "Out of memory: there is not enough of it for this check."});
    return failed;
  }
}

}  // namespace

std::string MacroCheck::Count() const {
  return "Checked " + Counted(Runs, "run") + " of " + Counted(Models, "model") + ": " +
         (Faults.empty() ? "no faults" : Counted(Faults.size(), "fault")) + '.';
}

MacroCheck CheckMacroFile(const MacroRequest& request, Session session) {
  return Guarded([&] { return Checker(std::move(session)).CheckFile(request); });
}

MacroCheck CheckMacroText(std::string_view text, Session session) {
  return Guarded([&] { return Checker(std::move(session)).CheckText(text); });
}

}  // namespace quorvex
