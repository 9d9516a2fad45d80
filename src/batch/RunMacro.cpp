#include "batch/RunMacro.h"

#include <exception>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "batch/BatchStatus.h"
#include "batch/FitModels.h"
#include "batch/MacroFiles.h"
#include "batch/MacroLog.h"
#include "batch/MacroReader.h"
#include "batch/ParameterFile.h"
#include "batch/ReadMacroDataFile.h"
#include "batch/ReadMacroDatabase.h"
#include "batch/RunAnswers.h"
#include "batch/RunPlots.h"
#include "batch/SubstituteParameters.h"
#include "batch/WritePlot.h"
#include "core/Files.h"
#include "core/NumberText.h"
#include "core/TextEncoding.h"
#include "engine/FitSharingInput.h"

namespace quorvex {
namespace {

// What an exception comes from, all else being told by numbers and sentences.
constexpr std::string_view kOutOfMemory = "There is not enough memory for this run.";

class MacroRun {
 public:
  MacroRun(Session& session, cfgSolve& form, PlotDrawer& drawer)
      : session_(session), form_(form), plots_(session, form, drawer, files_, log_) {}

  MacroOutcome Run(const std::string& fileName) {
    bool normal = false;
    try {
      normal = Configure(fileName) && RunAll();
    } catch (const std::exception&) {
      status_ = kOtherFailure;
      log_.Line(kOutOfMemory);
    }
    if (normal)
      TerminateNormally();
    else
      TerminateAbnormally();
    return {normal, status_, log_.Message};
  }

 private:
  bool Configure(const std::string& fileName);
  void NoteInputs(const std::string& fileName);
  bool LogParameters();
  bool RunAll();
  bool TryRun();
  void NoteChangedInputs();
  bool RunOnce();
  bool ReadData();
  DataReading AskDatabase();
  bool SolveModels();
  bool Write();
  void TerminateNormally();
  void TerminateAbnormally();

  bool InParameterRun() const { return macro_.Setup.UseParameterFile; }
  void Tell(const std::string& text) {
    if (macro_.Setup.UseDDE) form_.DDEText(text);
  }
  void FinishRun(std::string_view result) {
    log_.FinishRun((InParameterRun() ? std::to_string(run_ + 1) + ": " : "").append(result));
  }
  // Always false. The next run of a parameter run reads and solves anew.
  bool FailRun(int status) {
    status_ = status;
    inputChanged_ = true;
    FinishRun("Run Failed");
    return false;
  }

  Session& session_;
  cfgSolve& form_;
  Macro macro_;
  int status_ = kSuccess;
  MacroLog log_{macro_.Setup, status_};
  MacroFiles files_;
  RunAnswers answers_{session_.Locale, files_, log_};
  RunPlots plots_;
  std::optional<ParameterTable> parameters_;  // none where it could not be read
  std::string parametersFault_;               // why
  std::size_t run_ = 0;                       // from 0
  bool inputChanged_ = true;
  std::vector<std::string> previous_ = std::vector<std::string>(SubstitutedFields().size());  // of the run before
  SolveData data_, unsorted_;
};

bool MacroRun::Configure(const std::string& fileName) {
  MacroSetup& setup = macro_.Setup;
  InitMacroSetup(setup, session_.Preferences);
  log_.Line("Opening Quorvex Macro file '" + fileName + "'");
  WholeFile file;
  if (const int error = file.Read(fileName); error != 0) {
    status_ = FileErrorStatus(kMacroFile, error);
    log_.Message = "The macro file '" + fileName + "' cannot be read. " + FileErrorText(error);
    return false;
  }
  log_.Line("Parsing Quorvex Macro file");
  if (!ReadMacro(DecodeText(file.Text()), session_.Locale, session_.Preferences, macro_, log_.Text)) {
    status_ = kNoMacroStatement;
    log_.Message = "The file '" + fileName + "' is no macro: no line of it reads B_MACRO, or nothing follows.";
    return false;
  }
  // Before any file is written: the console program hands the whole run over to the desktop program here.
  if (setup.ShowProgress || setup.ShowMessageBox) {
    if (const std::string reason = form_.RequestWindows(); !reason.empty()) {
      setup.ShowProgress = setup.ShowMessageBox = false;
      log_.Line(reason);
    }
  }
  Tell("Reading Quorvex Macro file '" + fileName + " '");
  log_.Line("Setting regression tolerance to " + GeneralNumber(setup.RegressionTolerance));
  log_.Line("Setting maximum number of iterations to " + std::to_string(setup.MaxIterations));
  log_.Line("Setting number of unchanged iterations to " + std::to_string(setup.UnchangedIterations));
  TakeLimits(setup, session_.Preferences);
  NoteInputs(fileName);
  if (setup.LogEnabled) {
    log_.Open(files_.RefuseInput("log", setup.LogFile).value_or(""));
    files_.NoteLog(setup.LogFile);  // from here on no output may fall on it either
  }
  files_.WatchKinds(!setup.PlotFile.empty());
  if (!setup.PlotFile.empty() && !setup.PlotTemplate.empty())
    if (const std::string fault = TemplateFault(setup.PlotTemplate); !fault.empty()) log_.Fault("Error: " + fault);
  log_.Flush();
  return LogParameters();
}

// Reads the combinations of a parameter run, whose values name files, too; a run without them has one combination, and
// nothing to substitute.
void MacroRun::NoteInputs(const std::string& fileName) {
  const MacroSetup& setup = macro_.Setup;
  files_.NoteInput(fileName, "macro file");
  if (!setup.PlotTemplate.empty()) files_.NoteInput(setup.PlotTemplate, "plot template");
  if (InParameterRun()) {
    files_.NoteInput(setup.ParameterFile, "parameter file");
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
  for (std::size_t row = 0; row < parameters_->Rows.size(); ++row) {
    const std::string name = WithParameters(setup.DataFile, *parameters_, row);
    if (!names.insert(name).second) continue;
    files_.NoteInput(name, "data file");
    if (setup.SQLQuery.empty()) continue;
    for (const std::string& file : DatabaseFiles(name)) files_.NoteInput(file, "database");
  }
}

bool MacroRun::LogParameters() {
  if (!InParameterRun()) {
    log_.Line("");
    log_.Asterisks();
    log_.Flush();
    return true;
  }
  const std::string text = "Reading parameter file '" + macro_.Setup.ParameterFile + "'";
  log_.Line(text);
  Tell(text);
  if (!parameters_) {
    log_.Line(parametersFault_);
    log_.Line("Error reading parameter file");
    log_.Asterisks();
    log_.FinishRun("Run Failed");
    status_ = kParameterFile;
    return false;
  }
  log_.Line("Found " + std::to_string(parameters_->Names.size()) + " parameter(s), " +
            std::to_string(parameters_->Rows.size()) + " combination(s)");
  log_.Asterisks();
  log_.Flush();
  return true;
}

// Within a parameter run a failure ends its own run alone; only an abort ends the loop.
bool MacroRun::RunAll() {
  // Each run substitutes its parameters in the setup, so the next one begins with what the macro says.
  const MacroSetup written = macro_.Setup;
  for (run_ = 0; run_ < parameters_->Rows.size(); ++run_) {
    form_.Yield();
    if (form_.Aborted) LogAbort(log_.Text);
    const bool succeeded = !form_.Aborted && TryRun();
    if (!succeeded) form_.Yield();  // what failed may have been interrupted
    if (!succeeded && form_.Aborted) status_ = kAborted;
    if (!succeeded && (!InParameterRun() || form_.Aborted)) return false;
    macro_.Setup = written;
    log_.Flush();
  }
  return true;
}

bool MacroRun::TryRun() {
  try {
    if (InParameterRun()) log_.Line("Beginning Run: " + std::to_string(run_ + 1));
    if (SubstituteParameters(macro_, *parameters_, run_, session_.Locale, log_)) return RunOnce();
    log_.Asterisks();
    return FailRun(kParameterFile);
  } catch (const std::exception&) {
    if (!InParameterRun()) throw;
    data_ = unsorted_ = SolveData();
    log_.Line(kOutOfMemory);
    log_.Asterisks();
    return FailRun(kOtherFailure);
  }
}

void MacroRun::NoteChangedInputs() {
  for (std::size_t f = 0; f < previous_.size(); ++f) {
    const SubstitutedField& field = SubstitutedFields()[f];
    const std::string& text = field.In(macro_.Setup);
    if (!field.IsInput || EqualNoCase(text, previous_[f])) continue;
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
    log_.Line("Input parameters unchanged");
    log_.Line("Solution Complete");
    log_.Line("");
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
    log_.Line(text);
    Tell(text);
    log_.Flush();  // whoever looks at a log that doesn't grow sees what is waited for
  } else {
    log_.Line(setup.DataFile.empty() ? "Reading the input data file failed, DataFile not specified"
                                     : "Reading the input data file '" + setup.DataFile + "'");
    Tell("Reading data file '" + setup.DataFile + "'");
  }
  DataReading reading = fromDatabase ? AskDatabase() : ReadMacroDataFile(setup, session_.Locale);
  if (form_.Aborted) {
    log_.Line("SOLUTION PROCESS ABORTED BY USER.");
    status_ = kAborted;
    return false;
  }
  if (reading.Ok) {
    data_ = std::move(reading.Data);
    unsorted_ = std::move(reading.Unsorted);
    return true;
  }
  if (!reading.Message.empty()) log_.Line(reading.Message);
  log_.Line(fromDatabase ? "Error connecting to or retrieving data from ODBC source"
                         : "Error reading the input data file");
  FailRun(fromDatabase               ? kDatabase
          : reading.ErrorNumber == 0 ? kDataUnreadable
                                     : FileErrorStatus(kDataFile, reading.ErrorNumber));
  if (InParameterRun()) log_.Line("Data Source Error: " + std::to_string(status_));
  log_.Asterisks();
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
  log_.Line("Solving models");
  log_.Line("");
  const bool any = FitModels(form_, macro_.Models, data_, macro_.Setup, session_.Preferences, log_.Text);
  if (any && form_.Aborted) {
    status_ = kAborted;
    return false;
  }
  if (any) return true;
  if (InParameterRun()) {
    log_.Line(macro_.ModelsCreated > 0 ? "Unrecoverable error encountered during the solution process"
                                       : "No valid regression models detected");
    log_.Asterisks();
  }
  return FailRun(kNoSolution);
}

bool MacroRun::Write() {
  const MacroSetup& setup = macro_.Setup;
  Tell("Writing solution file '" + setup.OutputFile + " '");
  int error = answers_.Write(setup, macro_.Models, data_, unsorted_);
  if (error == 0 && !setup.PlotFile.empty()) error = plots_.Write(setup, macro_.Models, unsorted_);
  if (error != 0) {
    status_ = FileErrorStatus(kOutputFile, error);
    FinishRun("Run Failed");
    if (!form_.Aborted) log_.Line("File Output Error: " + std::to_string(status_));
    log_.Asterisks();
    return false;
  }
  FinishRun("Run Successful");
  log_.Asterisks();
  return true;
}

void MacroRun::TerminateNormally() {
  Tell("Solution process complete");
  log_.EndNormally();
  if (macro_.Setup.ShowMessageBox) form_.ShowMessageBox("Solution process is complete.");
  Tell("Normal termination");
}

void MacroRun::TerminateAbnormally() {
  log_.EndAbnormally();
  Tell("Abnormal termination");
}

}  // namespace

MacroOutcome RunMacro(const std::string& fileName, Session& session, cfgSolve& form, PlotDrawer& drawer) {
  return MacroRun(session, form, drawer).Run(fileName);
}

}  // namespace quorvex
