#include "batch/RunMacro.h"

#include <array>
#include <exception>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <system_error>
#include <utility>
#include <vector>

#include "batch/Assign.h"
#include "batch/BatchStatus.h"
#include "batch/FitModels.h"
#include "batch/MacroReader.h"
#include "batch/MacroStatements.h"
#include "batch/ParameterFile.h"
#include "batch/ReadMacroDataFile.h"
#include "batch/ReadMacroDatabase.h"
#include "batch/WriteDelimitedOutput.h"
#include "batch/WritePlot.h"
#include "batch/WriteProjectOutput.h"
#include "batch/WriteStructuredOutput.h"
#include "core/Files.h"
#include "core/NumberText.h"
#include "core/SaveFile.h"
#include "core/TextEncoding.h"
#include "engine/FitSharingInput.h"
#include "plot/PictureMessages.h"

namespace quorvex {
namespace {

constexpr int kAccessError = 75;

constexpr std::string_view kAsterisks = "***************************************";

// A statement in whose text a parameter run substitutes, in the order of substitution. A change of an input makes the
// run read and solve anew.
struct Field {
  std::string_view Keyword;
  bool IsInput;
  bool IsLogged = true;

  std::string& In(MacroSetup& setup) const { return setup.*KeptText(*FindStatement(Keyword)); }
};

constexpr std::string_view kData = "DataFile", kPlots = "PlotFile";
constexpr Field kFields[] = {
    {"MissingData", true},     {kData, true},           {"SQLQuery", true},     {"OutputFile", false},
    {"Comment", false, false}, {"ColumnOrder", true},   {"InputDelimit", true}, {"Weighted", true},
    {"OutputFormat", false},   {"DataFirstLine", true}, {"PlotFile", false},
};

std::string Token(const std::string& parameter) { return "%" + parameter + "%"; }

// Replaces every occurrence of `token`, in any case, by `value`, whose own text is not looked through. False where
// there is none.
bool Substitute(std::string& text, const std::string& token, std::string_view value) {
  // Folding changes ASCII letters only, so a place in one text is the same place in the other.
  const std::string foldedToken = ToLower(token), folded = ToLower(text);
  std::string substituted;
  std::size_t done = 0;
  for (std::size_t at = 0; (at = folded.find(foldedToken, done)) != std::string::npos; done = at + token.size())
    substituted.append(text, done, at - done).append(value);
  if (done == 0) return false;
  text = substituted.append(text, done);
  return true;
}

// Several names, one a line, as a log shows them.
std::string OneLine(std::string_view lines) {
  std::string line;
  while (!lines.empty()) line.append(line.empty() ? "" : ", ").append(TakeLine(lines));
  return line;
}

// Values may hold the names of parameters further on, each of which may double a text; no text of use gets this long.
constexpr std::size_t kLongestText = 100'000;

// What an exception comes from, all else being told by numbers and sentences.
constexpr std::string_view kOutOfMemory = "There is not enough memory for this run.";

// What a run writes. One kind may overwrite what an earlier run has written of it, but never the other kind.
enum class Writing { Answers, Plot };

// By which a file that exists is known, whatever name leads to it. What it is on the disk is no such name: a file that
// is replaced is another one, and the next may get its place.
std::string FullName(const std::string& file) {
  std::error_code error;
  const std::filesystem::path name = std::filesystem::canonical(ResolveNewPath(file), error);
  return error ? "" : name.string();
}

class MacroRun {
 public:
  MacroRun(Session& session, cfgSolve& form, PlotDrawer& drawer) : session_(session), form_(form), drawer_(drawer) {}

  MacroOutcome Run(const std::string& fileName) {
    bool normal = false;
    try {
      normal = Configure(fileName) && RunAll();
    } catch (const std::exception&) {
      status_ = kOtherFailure;
      Log(kOutOfMemory);
    }
    if (normal)
      TerminateNormally();
    else
      TerminateAbnormally();
    return {normal, status_, message_};
  }

 private:
  bool Configure(const std::string& fileName);
  void NoteInputs(const std::string& fileName);
  std::optional<std::string> RefuseInput(const std::string& role, const std::string& file) const;
  std::optional<std::string> RefuseOther(Writing kind, const std::string& file) const;
  void NoteWritten(Writing kind, const std::string& file);
  bool LogParameters();
  bool RunAll();
  bool TryRun();
  bool SubstituteParameters();
  void AssignPlots();
  void NoteChangedInputs();
  bool RunOnce();
  bool ReadData();
  DataReading AskDatabase();
  bool SolveModels();
  bool Write();
  int WriteAnswers();
  int WritePlots();
  void TerminateNormally();
  void TerminateAbnormally();

  bool InParameterRun() const { return macro_.Setup.UseParameterFile; }
  void Log(std::string_view text) { log_.append(text).append(NL); }
  // Where the log doesn't hold it, whoever started the program hears the first one.
  void LogFault(const std::string& text) {
    Log(text);
    if (message_.empty() && (!logEnabled_ || macro_.Setup.LogSummaryOnly)) message_ = text;
  }
  void Tell(const std::string& text) {
    if (macro_.Setup.UseDDE) form_.DDEText(text);
  }
  void FinishRun(std::string_view result) {
    results_.push_back((InParameterRun() ? std::to_string(run_ + 1) + ": " : "").append(result));
  }
  // Always false. The next run of a parameter run reads and solves anew.
  bool FailRun(int status) {
    status_ = status;
    inputChanged_ = true;
    FinishRun("Run Failed");
    return false;
  }
  void LogSummary(std::string_view ending) {
    Log("Log Summary:");
    for (const std::string& result : results_) Log(result);
    Log(kAsterisks);
    Log(ending);
  }

  // The log file. A failure on it sets the status and ends the log; the run goes on.
  void OpenLog() {
    const std::optional<std::string> refusal = RefuseInput("log", macro_.Setup.LogFile);
    CheckLog(refusal ? kAccessError : logFile_.Create(macro_.Setup.LogFile));
    if (refusal) message_ = *refusal;
    // From here on no output may fall on the log either.
    if (const auto log = IdentityOfFile(ResolveNewPath(macro_.Setup.LogFile))) inputs_.emplace(*log, "log");
  }
  void PrintBuffer() {
    if (!logEnabled_) return;
    logFile_.Write(log_);
    CheckLog(logFile_.Flush());
  }
  void FlushBuffer() {
    if (!macro_.Setup.LogSummaryOnly) PrintBuffer();
    log_.clear();
  }
  void CheckLog(int error) {
    if (error == 0) return;
    status_ = FileErrorStatus(kLogFile, error);
    logEnabled_ = false;
    logFile_.Close();
  }

  Session& session_;
  cfgSolve& form_;
  PlotDrawer& drawer_;
  Macro macro_;
  std::optional<ParameterTable> parameters_;    // none where it could not be read
  std::string parametersFault_;                 // why
  std::map<FileIdentity, const char*> inputs_;  // what no output may fall on, and what it is
  std::map<std::string, Writing> written_;      // by full name, where there are plots at all
  bool hasPlots_ = false;
  std::size_t run_ = 0;  // from 0
  bool inputChanged_ = true;
  std::array<std::string, std::size(kFields)> previous_;  // inputs of the run before
  SolveData data_, unsorted_;
  ReplacementFile outputFile_{FileCare::Answer};
  TextFile logFile_;
  bool logEnabled_ = false;
  std::string log_;                   // what has not been printed yet
  std::vector<std::string> results_;  // of the finished runs
  int status_ = kSuccess;
  std::string message_;
};

bool MacroRun::Configure(const std::string& fileName) {
  MacroSetup& setup = macro_.Setup;
  InitMacroSetup(setup, session_.Preferences);
  Log("Opening Quorvex Macro file '" + fileName + "'");
  WholeFile file;
  if (const int error = file.Read(fileName); error != 0) {
    status_ = FileErrorStatus(kMacroFile, error);
    message_ = "The macro file '" + fileName + "' cannot be read. " + FileErrorText(error);
    return false;
  }
  Log("Parsing Quorvex Macro file");
  if (!ReadMacro(DecodeText(file.Text()), session_.Locale, session_.Preferences, macro_, log_)) {
    status_ = kNoMacroStatement;
    message_ = "The file '" + fileName + "' is no macro: no line of it reads B_MACRO, or nothing follows.";
    return false;
  }
  // Before any file is written: the console program hands the whole run over to the desktop program here.
  if (setup.ShowProgress || setup.ShowMessageBox) {
    if (const std::string reason = form_.RequestWindows(); !reason.empty()) {
      setup.ShowProgress = setup.ShowMessageBox = false;
      Log(reason);
    }
  }
  Tell("Reading Quorvex Macro file '" + fileName + " '");
  Log("Setting regression tolerance to " + GeneralNumber(setup.RegressionTolerance));
  Log("Setting maximum number of iterations to " + std::to_string(setup.MaxIterations));
  Log("Setting number of unchanged iterations to " + std::to_string(setup.UnchangedIterations));
  TakeLimits(setup, session_.Preferences);
  NoteInputs(fileName);
  logEnabled_ = setup.LogEnabled;
  if (logEnabled_) OpenLog();
  hasPlots_ = !setup.PlotFile.empty();
  if (hasPlots_ && !setup.PlotTemplate.empty())
    if (const std::string fault = TemplateFault(setup.PlotTemplate); !fault.empty()) LogFault("Error: " + fault);
  FlushBuffer();
  return LogParameters();
}

// Reads the combinations of a parameter run, whose values name files, too; a run without them has one combination, and
// nothing to substitute.
void MacroRun::NoteInputs(const std::string& fileName) {
  const MacroSetup& setup = macro_.Setup;
  const auto note = [&](const std::string& name, const char* role) {
    if (const auto file = IdentityOfFile(ResolvePath(name))) inputs_.emplace(*file, role);
  };
  note(fileName, "macro file");
  if (!setup.PlotTemplate.empty()) note(setup.PlotTemplate, "plot template");
  if (InParameterRun()) {
    note(setup.ParameterFile, "parameter file");
    Result<ParameterTable> table = ReadParameterFile(setup.ParameterFile);
    if (table)
      parameters_ = std::move(*table);
    else
      parametersFault_ = table.error();
  } else {
    parameters_.emplace().Rows.emplace_back();
  }
  if (!parameters_) return;
  std::set<std::string> names;
  for (const std::vector<std::string>& row : parameters_->Rows) {
    std::string name = setup.DataFile;
    for (std::size_t p = 0; p < parameters_->Names.size() && name.size() <= kLongestText; ++p)
      Substitute(name, Token(parameters_->Names[p]), row[p]);
    if (!names.insert(name).second) continue;
    note(name, "data file");
    if (setup.SQLQuery.empty()) continue;
    for (const std::string& file : DatabaseFiles(name)) note(file, "database");
  }
}

// Why an output or a log may not be written to `file`; nothing where it may.
std::optional<std::string> MacroRun::RefuseInput(const std::string& role, const std::string& file) const {
  const auto identity = IdentityOfFile(ResolveNewPath(file));
  const auto input = identity ? inputs_.find(*identity) : inputs_.end();
  if (input == inputs_.end()) return std::nullopt;
  return "The " + role + " '" + file + "' is the " + input->second + " of this macro and is not overwritten.";
}

// The same for what an earlier run, or this one, has written of the other kind.
std::optional<std::string> MacroRun::RefuseOther(Writing kind, const std::string& file) const {
  const auto other = written_.empty() ? written_.end() : written_.find(FullName(file));
  if (other == written_.end() || other->second == kind) return std::nullopt;
  return kind == Writing::Plot ? "The plot '" + file + "' is the output file of this macro and is not overwritten."
                               : "The output '" + file + "' is a plot of this macro and is not overwritten.";
}

void MacroRun::NoteWritten(Writing kind, const std::string& file) {
  if (const std::string name = hasPlots_ ? FullName(file) : ""; !name.empty()) written_[name] = kind;
}

bool MacroRun::LogParameters() {
  if (!InParameterRun()) {
    Log("");
    Log(kAsterisks);
    FlushBuffer();
    return true;
  }
  const std::string text = "Reading parameter file '" + macro_.Setup.ParameterFile + "'";
  Log(text);
  Tell(text);
  if (!parameters_) {
    Log(parametersFault_);
    Log("Error reading parameter file");
    Log(kAsterisks);
    results_.emplace_back("Run Failed");
    status_ = kParameterFile;
    return false;
  }
  Log("Found " + std::to_string(parameters_->Names.size()) + " parameter(s), " +
      std::to_string(parameters_->Rows.size()) + " combination(s)");
  Log(kAsterisks);
  FlushBuffer();
  return true;
}

// Within a parameter run a failure ends its own run alone; only an abort ends the loop.
bool MacroRun::RunAll() {
  // Each run substitutes its parameters in the setup, so the next one begins with what the macro says.
  const MacroSetup written = macro_.Setup;
  for (run_ = 0; run_ < parameters_->Rows.size(); ++run_) {
    form_.Yield();
    if (form_.Aborted) LogAbort(log_);
    const bool succeeded = !form_.Aborted && TryRun();
    if (!succeeded) form_.Yield();  // what failed may have been interrupted
    if (!succeeded && form_.Aborted) status_ = kAborted;
    if (!succeeded && (!InParameterRun() || form_.Aborted)) return false;
    macro_.Setup = written;
    FlushBuffer();
  }
  return true;
}

bool MacroRun::TryRun() {
  try {
    if (InParameterRun()) Log("Beginning Run: " + std::to_string(run_ + 1));
    return SubstituteParameters() && RunOnce();
  } catch (const std::exception&) {
    if (!InParameterRun()) throw;
    data_ = unsorted_ = SolveData();
    Log(kOutOfMemory);
    Log(kAsterisks);
    return FailRun(kOtherFailure);
  }
}

// False where a text outgrows all bounds, which fails the run.
bool MacroRun::SubstituteParameters() {
  MacroSetup& setup = macro_.Setup;
  std::vector<DeferredAssign> assigns = macro_.Deferred;
  std::vector<std::string> faults(assigns.size(), "it holds no parameter of the table");
  const auto tooLong = [&](const std::string& text, std::string_view name) {
    if (text.size() <= kLongestText) return false;
    Log("The parameters make " + std::string(name) + " longer than " + std::to_string(kLongestText) + " characters.");
    Log(kAsterisks);
    FailRun(kParameterFile);
    return true;
  };
  bool plotsChanged = false;
  for (std::size_t p = 0; p < parameters_->Names.size(); ++p) {
    const std::string token = Token(parameters_->Names[p]);
    const std::string& value = parameters_->Rows[run_][p];
    for (const Field& field : kFields) {
      std::string& text = field.In(setup);
      if (!Substitute(text, token, value)) continue;
      if (tooLong(text, field.Keyword)) return false;
      // Names that are not complete yet would be many.
      if (field.Keyword == kPlots) {
        plotsChanged = true;
        continue;
      }
      // A connection may hold a password, which no log shows.
      const std::string shown = field.Keyword == kData ? DataSourceText(setup) : text;
      if (field.IsLogged) Log("Assigning " + std::string(field.Keyword) + " = '" + shown + "'");
      ReadKeptText(*FindStatement(field.Keyword), setup);
    }
    for (std::size_t i = 0; i < assigns.size(); ++i) {
      if (!Substitute(assigns[i].Text, token, value)) continue;
      if (tooLong(assigns[i].Text, "Assign")) return false;
      Log("Assigning " + token + " = '" + value);
      faults[i] = ApplyAssign(*assigns[i].Model, assigns[i].Text, session_.Locale.ListSeparator);
    }
  }
  if (plotsChanged) AssignPlots();
  for (std::size_t i = 0; i < assigns.size(); ++i)
    if (!faults[i].empty()) Log("Warning: 'Assign " + assigns[i].Text + "' is ignored: " + faults[i]);
  return true;
}

// Takes those out that the parameters leave without a name.
void MacroRun::AssignPlots() {
  std::string named;
  const std::string text = std::exchange(macro_.Setup.PlotFile, "") + std::string(NL);
  for (std::string_view lines = text; !lines.empty();) {
    const std::string_view name = Trim(TakeLine(lines));
    if (name.empty())
      Log("Warning: A PlotFile of this run has no name, and that plot is left out.");
    else
      named.append(named.empty() ? "" : NL).append(name);
  }
  macro_.Setup.PlotFile = named;
  Log("Assigning PlotFile = '" + OneLine(named) + "'");
}

void MacroRun::NoteChangedInputs() {
  for (std::size_t f = 0; f < std::size(kFields); ++f) {
    const std::string& text = kFields[f].In(macro_.Setup);
    if (!kFields[f].IsInput || EqualNoCase(text, previous_[f])) continue;
    previous_[f] = text;
    inputChanged_ = true;
  }
}

bool MacroRun::RunOnce() {
  NoteChangedInputs();
  if (inputChanged_) {
    inputChanged_ = false;
    if (!ReadData() || !SolveModels()) return false;
  } else {
    Log("Input parameters unchanged");
    Log("Solution Complete");
    Log("");
  }
  return Write();
}

bool MacroRun::ReadData() {
  const MacroSetup& setup = macro_.Setup;
  data_ = unsorted_ = SolveData();
  // Nothing of the run before may pass for a result of this one.
  for (const auto& model : macro_.Models) model->Solved = model->SpecifyICComplete = false;
  const bool fromDatabase = !setup.SQLQuery.empty();
  if (fromDatabase) {
    const std::string text = "Performing SQLDriverConnect '" + DataSourceText(setup) + "'";
    Log(text);
    Tell(text);
    FlushBuffer();  // whoever looks at a log that doesn't grow sees what is waited for
  } else {
    Log(setup.DataFile.empty() ? "Reading the input data file failed, DataFile not specified"
                               : "Reading the input data file '" + setup.DataFile + "'");
    Tell("Reading data file '" + setup.DataFile + "'");
  }
  DataReading reading = fromDatabase ? AskDatabase() : ReadMacroDataFile(setup, session_.Locale);
  if (form_.Aborted) {
    Log("SOLUTION PROCESS ABORTED BY USER.");
    status_ = kAborted;
    return false;
  }
  if (reading.Ok) {
    data_ = std::move(reading.Data);
    unsorted_ = std::move(reading.Unsorted);
    return true;
  }
  if (!reading.Message.empty()) Log(reading.Message);
  Log(fromDatabase ? "Error connecting to or retrieving data from ODBC source" : "Error reading the input data file");
  FailRun(fromDatabase               ? kDatabase
          : reading.ErrorNumber == 0 ? kDataUnreadable
                                     : FileErrorStatus(kDataFile, reading.ErrorNumber));
  if (InParameterRun()) Log("Data Source Error: " + std::to_string(status_));
  Log(kAsterisks);
  return false;
}

DataReading MacroRun::AskDatabase() {
  if (macro_.Setup.ShowProgress) {
    form_.SetStatusLabel("Reading the database");
    form_.Show(true);
  }
  DataReading reading =
      ReadMacroDatabase(macro_.Setup, session_.Locale, DatabaseUse::From(session_.Preferences), [this] {
        form_.Yield();
        return !form_.Aborted;
      });
  if (!reading.Ok) form_.Show(false);
  return reading;
}

bool MacroRun::SolveModels() {
  Tell("Beginning solution process");
  Log("Solving models");
  Log("");
  const bool any = FitModels(form_, macro_.Models, data_, macro_.Setup, session_.Preferences, log_);
  if (any && form_.Aborted) {
    status_ = kAborted;
    return false;
  }
  if (any) return true;
  if (InParameterRun()) {
    Log(macro_.ModelsCreated > 0 ? "Unrecoverable error encountered during the solution process"
                                 : "No valid regression models detected");
    Log(kAsterisks);
  }
  return FailRun(kNoSolution);
}

bool MacroRun::Write() {
  int error = WriteAnswers();
  if (error == 0 && !macro_.Setup.PlotFile.empty()) error = WritePlots();
  if (error != 0) {
    status_ = FileErrorStatus(kOutputFile, error);
    FinishRun("Run Failed");
    if (!form_.Aborted) Log("File Output Error: " + std::to_string(status_));
    Log(kAsterisks);
    return false;
  }
  FinishRun("Run Successful");
  Log(kAsterisks);
  return true;
}

// Returns 0 or the number of the file error.
int MacroRun::WriteAnswers() {
  const MacroSetup& setup = macro_.Setup;
  Tell("Writing solution file '" + setup.OutputFile + " '");
  Log(setup.OutputFile.empty() ? "Write failed, OutputFile not specified" : "Writing solution to " + setup.OutputFile);
  const bool asProject = EqualNoCase(setup.OutputFormat, "quorvex");
  std::optional<std::string> refusal = RefuseInput("output", setup.OutputFile);
  // Saving a project keeps the old file under a second name, which must not fall on an input either.
  if (!refusal && asProject) refusal = RefuseInput("output", KeptName(setup.OutputFile));
  if (!refusal) refusal = RefuseOther(Writing::Answers, setup.OutputFile);
  if (refusal) {
    LogFault(*refusal);
    return kAccessError;
  }
  const int error = asProject ? WriteProjectOutput(macro_.Models, unsorted_, setup, session_.Locale)
                    : EqualNoCase(setup.OutputFormat, "structured")
                        ? WriteStructuredOutput(macro_.Models, data_, setup, outputFile_)
                        : WriteDelimitedOutput(macro_.Models, data_, setup, outputFile_);
  if (error == 0) NoteWritten(Writing::Answers, setup.OutputFile);
  return error;
}

// The same of the last plot that could not be written; the others are. What could be no plot at all is no error.
int MacroRun::WritePlots() {
  const MacroSetup& setup = macro_.Setup;
  const MacroPlot plot = MakeMacroPlot(macro_.Models, unsorted_, setup, session_.Preferences, session_.Locale);
  for (const std::string& warning : plot.Warnings) Log("Warning: " + warning);
  if (!plot.Fault.empty()) {
    LogFault(NotDrawnText(OneLine(setup.PlotFile), plot.Fault));
    return kNotDrawn;
  }
  if (plot.Text.empty()) return 0;

  const auto goOn = [this] {
    form_.Yield();
    return !form_.Aborted;
  };
  const std::string whyNoPictures = drawer_.WhyNone();
  bool told = whyNoPictures.empty();
  int error = 0;
  for (std::string_view names = setup.PlotFile; !names.empty();) {
    const std::string name(TakeLine(names));
    if (!whyNoPictures.empty() && PictureFormatOf(name) != nullptr) {
      if (!std::exchange(told, true)) Log("Warning: " + whyNoPictures);
      continue;
    }
    Tell("Writing plot file '" + name + " '");
    Log("Writing plot to " + name);
    std::optional<std::string> refusal = RefuseInput("plot", name);
    if (!refusal) refusal = RefuseOther(Writing::Plot, name);
    std::string fault = refusal.value_or("");
    const int failed = refusal ? kAccessError : WritePlot(plot.Text, name, drawer_, goOn, outputFile_, fault);
    if (failed == 0) NoteWritten(Writing::Plot, name);
    // Of an end that was asked for the log speaks once, whatever was still to be drawn.
    if (!goOn() && (failed != 0 || !names.empty())) {
      LogAbort(log_);
      return kNotDrawn;
    }
    if (!fault.empty()) LogFault(fault);
    if (failed != 0) error = failed;
  }
  return error;
}

void MacroRun::TerminateNormally() {
  Tell("Solution process complete");
  LogSummary("Normal termination");
  if (logEnabled_) {
    if (!logFile_.IsOpen()) OpenLog();
    PrintBuffer();
    CheckLog(logFile_.Close());
  }
  if (macro_.Setup.ShowMessageBox) form_.ShowMessageBox("Solution process is complete.");
  Tell("Normal termination");
}

void MacroRun::TerminateAbnormally() {
  if (logFile_.IsOpen()) {
    if (macro_.Setup.LogSummaryOnly) log_.clear();
    LogSummary("Abnormal termination");
    Log("Exit Status " + std::to_string(status_));
    PrintBuffer();
    CheckLog(logFile_.Close());
  }
  Tell("Abnormal termination");
}

}  // namespace

MacroOutcome RunMacro(const std::string& fileName, Session& session, cfgSolve& form, PlotDrawer& drawer) {
  return MacroRun(session, form, drawer).Run(fileName);
}

}  // namespace quorvex
