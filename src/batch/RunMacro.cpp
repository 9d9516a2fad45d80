#include "batch/RunMacro.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <exception>
#include <memory>
#include <new>
#include <optional>
#include <utility>
#include <vector>

#include "batch/BatchStatus.h"
#include "batch/FitModels.h"
#include "batch/MacroFiles.h"
#include "batch/MacroLog.h"
#include "batch/MacroReader.h"
#include "batch/MacroStart.h"
#include "batch/ParameterFile.h"
#include "batch/ReadMacroDataFile.h"
#include "batch/ReadMacroDatabase.h"
#include "batch/ResultLine.h"
#include "batch/RunAnswers.h"
#include "batch/RunCode.h"
#include "batch/RunPart.h"
#include "batch/RunPlots.h"
#include "batch/RunReports.h"
#include "batch/SubstituteParameters.h"
#include "batch/WritePlot.h"
#include "core/Files.h"
#include "core/NumberText.h"
#include "core/TextEncoding.h"
#include "engine/FitEach.h"

namespace quorvex {
namespace {

// What an exception comes from, all else being told by numbers and sentences.
constexpr std::string_view kOutOfMemory = "Out of memory: there is not enough of it for this run.";

// How the log's summary tells of a run.
constexpr std::string_view kRunSuccessful = "Run Successful", kRunFailed = "Run Failed", kRunSkipped = "Run Skipped",
                           kRunIncomplete = "Run Incomplete", kRunOutOfMemory = "Run Failed: Out of memory";

class MacroRun {
 public:
  MacroRun(Session& session, cfgSolve& form, PlotDrawer& drawer)
      : session_(session),
        form_(form),
        plots_(session, form, drawer, files_, log_),
        reports_(session, form, drawer, files_, log_) {}

  MacroOutcome Run(const MacroRequest& request) {
    bool normal = false;
    try {
      normal = Configure(request) && RunAll();
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
  bool Configure(const MacroRequest& request);
  bool LogParameters();
  bool LogSeries();
  void LogPart(const std::string& row);
  bool IsAnswered();
  bool OpenResults();
  bool RunAll();
  bool TryRun();
  void TryRunOnce();
  void NoteChangedInputs();
  bool RunOnce();
  bool SolveOnce();
  bool ReadData();
  DataReading AskDatabase();
  bool SolveModels();
  bool Diagnose();
  bool Write();
  ReportedMacro AsReported();
  void JudgeModels();
  bool WriteResult();
  void CloseResults();
  void TerminateNormally();
  void TerminateAbnormally();

  bool InSeries() const { return macro_.Setup.DataSeries; }
  // Runs that have numbers, be it of the rows of a table or of the columns of a series.
  bool InParameterRun() const { return macro_.Setup.UseParameterFile || InSeries(); }
  void Tell(const std::string& text) {
    if (macro_.Setup.UseDDE) form_.DDEText(text);
  }
  // Always false. The next run of a parameter run reads and solves anew.
  bool FailRun(int status, std::string message) {
    EndRun(kRunFailed, status, std::move(message));
    inputChanged_ = true;
    return false;
  }
  void EndRun(std::string_view result, int status, std::string message) {
    ended_ = result;
    result_.Status = status;
    result_.Message = std::move(message);
  }

  Session& session_;
  cfgSolve& form_;
  Macro macro_;
  int status_ = kSuccess;
  MacroLog log_{macro_.Setup, status_};
  MacroFiles files_;
  RunAnswers answers_{session_.Locale, files_, log_};
  RunPlots plots_;
  RunCode code_{files_, log_};
  RunReports reports_;
  std::optional<ParameterTable> parameters_;  // none where it could not be read
  std::string parametersFault_;               // why
  SeriesData series_;                         // where the columns of the data are the runs
  MacroSetup written_;                        // before a run puts its parameters in
  std::size_t run_ = 0;                       // from 0
  RunResult result_;                          // of the run in hand
  std::string_view ended_;                    // what the summary says of it; empty where it doesn't
  bool hasModels_ = false;                    // the models tell of the data in hand
  TextFile results_;
  RunPart part_;
  bool missingOnly_ = false;
  AnsweredRuns answered_;      // by their lines in the file of results
  std::ptrdiff_t wanted_ = 0;  // models to be solved, before any is found not to fit the data
  bool inputChanged_ = true;
  std::vector<Box> previousBounds_;
  std::vector<std::vector<DerivedQuantity>> previousReports_;
  std::vector<std::string> previous_ = std::vector<std::string>(SubstitutedFields().size());  // of the run before
  SolveData data_, unsorted_;
  RunDiagnoses diagnoses_;
};

bool MacroRun::Configure(const MacroRequest& request) {
  const std::string& fileName = request.FileName;
  MacroSetup& setup = macro_.Setup;
  InitMacroSetup(setup, session_.Preferences);
  // A part of what has none is refused before anything is written.
  std::optional<MacroRefusal> refusal = ReadMacroFile(request, session_, macro_, log_.Text);
  if (!refusal) refusal = TakePart(request, setup, part_);
  if (refusal) {
    status_ = refusal->Status;
    log_.Message = refusal->Text;
    return false;
  }
  missingOnly_ = request.Missing;
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
  if (Result<ParameterTable> table = NoteInputs(request, setup, files_))
    parameters_ = std::move(*table);
  else
    parametersFault_ = table.error();
  if (setup.LogEnabled) {
    const std::string log = PlaceOfLog(setup);
    log_.Open(log, missingOnly_, RefuseLog(setup, files_).value_or(""));
    files_.NoteInput(log, "log");  // from here on no output may fall on it either
  }
  files_.WatchKinds(!setup.PlotFile.empty() || !setup.CodeFile.empty() || !setup.ReportFile.empty());
  if (!setup.PlotFile.empty() && !setup.PlotTemplate.empty())
    if (const std::string fault = TemplateFault(setup.PlotTemplate); !fault.empty()) log_.Fault("Error: " + fault);
  log_.Flush();
  return LogParameters() && OpenResults();
}

bool MacroRun::LogParameters() {
  if (InSeries()) return LogSeries();
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
    log_.FinishRun(0, kRunFailed);
    status_ = kParameterFile;
    return false;
  }
  log_.Line("Found " + std::to_string(parameters_->Names.size()) + " parameter(s), " +
            std::to_string(parameters_->Rows.size()) + " combination(s)");
  LogPart("combination");
  log_.Asterisks();
  log_.Flush();
  return true;
}

// What the part is of, its rows being called so.
void MacroRun::LogPart(const std::string& row) {
  if (part_.Count <= 1) return;
  const std::size_t first = part_.First(parameters_->Rows.size()), end = part_.End(parameters_->Rows.size());
  log_.Line("Running part " + std::to_string(part_.Number) + " of " + std::to_string(part_.Count) +
            (first < end ? ": " + row + "s " + std::to_string(first + 1) + " to " + std::to_string(end)
                         : ", which has no " + row));
}

// Reads the data, whose columns are the runs to come.
bool MacroRun::LogSeries() {
  const MacroSetup& setup = macro_.Setup;
  log_.Line("Reading the input data file '" + DataSourceText(setup) + "'");
  Tell("Reading data file '" + DataSourceText(setup) + "'");
  if (const auto refusal = StartSeries(setup, session_.Locale, series_)) {
    log_.Fault(refusal->Text);
    log_.Asterisks();
    log_.FinishRun(0, kRunFailed);
    status_ = refusal->Status;
    return false;
  }
  parameters_ = TableOfSeries(series_.Names());
  log_.Line("Found a series of " + std::to_string(series_.Size()) + " column(s)");
  LogPart("column");
  log_.Asterisks();
  log_.Flush();
  return true;
}

// Creates the file of results, which no output may fall on from here on. Without it there is nothing to run for.
bool MacroRun::OpenResults() {
  const std::string& name = macro_.Setup.ResultFile;
  if (name.empty()) return true;
  const std::string path = files_.Place(name);
  const std::optional<std::string> refusal = RefuseResults(macro_.Setup, *parameters_, path, files_);
  int error = refusal ? kAccessError : 0;
  // What is no file can't tell of the runs that it was given.
  const bool goesOn = missingOnly_ && IdentityOfFile(path);
  if (error == 0 && goesOn) error = answered_.Read(path, parameters_->Rows.size());
  if (error == 0) error = results_.Continue(path, goesOn ? answered_.WholeSize() : 0);
  files_.NoteInput(path, "result file");
  if (error == 0) return true;
  log_.Fault(refusal.value_or(ResultFaultText(name, error)));
  status_ = FileErrorStatus(kOutputFile, error);
  return false;
}

// Within a parameter run a failure ends its own run alone; only an abort ends the loop.
bool MacroRun::RunAll() {
  // Each run substitutes its parameters in the setup, so the next one begins with what the macro says.
  written_ = macro_.Setup;
  wanted_ = std::ranges::count_if(macro_.Models, [](const auto& model) { return model->Solve; });
  const std::size_t end = part_.End(parameters_->Rows.size());
  for (run_ = part_.First(parameters_->Rows.size()); run_ < end; ++run_) {
    form_.Yield();
    if (missingOnly_ && !form_.Aborted && IsAnswered()) {
      log_.FinishRun(InParameterRun() ? run_ + 1 : 0, kRunSkipped);
      continue;
    }
    if (form_.Aborted) LogAbort(log_.Text);
    const bool succeeded = !form_.Aborted && TryRun();
    if (!succeeded && form_.Aborted) status_ = kAborted;
    if (!succeeded && (!InParameterRun() || form_.Aborted)) return false;
    macro_.Setup = written_;
    log_.Flush();
  }
  return true;
}

// Whether the answer of the run to come is there as a whole: its line, and its output file. One file for all rows is
// none of its own.
bool MacroRun::IsAnswered() {
  MacroSetup setup = written_;
  setup.DataFile = WithParameters(setup.DataFile, *parameters_, run_);
  setup.OutputFile = FileWithParameters(setup.OutputFile, *parameters_, run_);
  const bool hasLines = !setup.ResultFile.empty();
  if (hasLines) {
    RunResult run;
    run.Number = run_ + 1;
    run.Parameters = ShownParameters(*parameters_, run_, written_.DataFile, setup);
    if (!answered_.Has(run.Number, ResultBeginning(run))) return false;
    if (setup.OutputFile.empty()) return true;
  } else if (InParameterRun() && setup.OutputFile == written_.OutputFile) {
    return false;
  }
  return IdentityOfFile(files_.Place(setup.OutputFile)).has_value();
}

// One run with its line in the file of results. False where it failed.
bool MacroRun::TryRun() {
  result_ = RunResult();
  result_.Number = run_ + 1;
  if (InSeries()) result_.Series = series_.Names()[run_];
  ended_ = {};
  TryRunOnce();
  bool succeeded = ended_ == kRunSuccessful || ended_ == kRunIncomplete;
  if (!succeeded) form_.Yield();  // what failed may have been interrupted
  if (!succeeded && form_.Aborted) result_.Status = kAborted, result_.Message = "Aborted.";
  if (results_.IsOpen() && !WriteResult()) succeeded = false;
  if (result_.Status != 0) status_ = result_.Status;
  if (!ended_.empty()) log_.FinishRun(InParameterRun() ? run_ + 1 : 0, ended_);
  return succeeded;
}

void MacroRun::TryRunOnce() {
  try {
    if (InParameterRun()) log_.Line("Beginning Run: " + std::to_string(run_ + 1));
    if (SubstituteParameters(macro_, *parameters_, run_, session_.Locale, log_)) {
      RunOnce();
    } else {
      FailRun(kParameterFile, std::string(kTooLongText));
      log_.Asterisks();
    }
  } catch (const std::exception&) {
    // What the run holds makes room for the next one.
    data_ = unsorted_ = SolveData();
    diagnoses_ = {};
    hasModels_ = false;
    for (const auto& model : macro_.Models) model->CopyInputDataFrom(std::make_shared<const InputPoints>());
    FailRun(kOtherFailure, std::string(kOutOfMemory));
    ended_ = kRunOutOfMemory;
    log_.Line(kOutOfMemory);
    log_.Asterisks();
  }
}

// False where the line could not be written, which fails the run.
bool MacroRun::WriteResult() {
  const MacroSetup& setup = macro_.Setup;
  int error = 0;
  try {
    result_.Data = DataSourceText(setup);
    result_.Parameters = ShownParameters(*parameters_, run_, written_.DataFile, setup);
    error = results_.Append(
        (hasModels_ ? ResultLine(result_, macro_.Models, data_, setup, diagnoses_) : ResultLine(result_)) + '\n');
  } catch (const std::exception&) {
    error = FileErrorNumber(ENOMEM);
  }
  if (error == 0) return true;
  log_.Fault(ResultFaultText(setup.ResultFile, error));
  EndRun(kRunFailed, FileErrorStatus(kOutputFile, error), "");
  log_.Line("File Output Error: " + std::to_string(result_.Status));
  log_.Asterisks();
  return false;
}

void MacroRun::NoteChangedInputs() {
  for (std::size_t f = 0; f < previous_.size(); ++f) {
    const SubstitutedField& field = SubstitutedFields()[f];
    const std::string& text = field.In(macro_.Setup);
    if (!field.IsInput || EqualNoCase(text, previous_[f])) continue;
    previous_[f] = text;
    inputChanged_ = true;
  }
  // Another start may lead to the same answer, other bounds don't.
  std::vector<Box> bounds;
  for (const auto& model : macro_.Models)
    if (model->Solve) bounds.push_back(model->Bounds());
  inputChanged_ = inputChanged_ || bounds != previousBounds_;
  previousBounds_ = std::move(bounds);
  // Other quantities don't change the answer, but what is told of it.
  std::vector<std::vector<DerivedQuantity>> reports;
  for (const auto& model : macro_.Models) reports.push_back(model->Reports);
  if (reports != previousReports_) diagnoses_ = {};
  previousReports_ = std::move(reports);
}

bool MacroRun::RunOnce() { return SolveOnce() && Write(); }

bool MacroRun::SolveOnce() {
  NoteChangedInputs();
  if (inputChanged_ || macro_.Setup.SolveEachRun || InSeries()) {
    inputChanged_ = hasModels_ = false;
    diagnoses_ = {};
    if (!ReadData() || !SolveModels()) return false;
  } else {
    log_.Line("Input parameters unchanged");
    log_.Line("Solution Complete");
    log_.Line("");
  }
  if (!Diagnose()) return false;
  const bool anySolved = std::ranges::any_of(macro_.Models, [](const auto& model) { return model->Solved; });
  if (!macro_.Setup.RequireSolution || anySolved) return true;
  log_.Line("Run failed: no model was solved");
  log_.Asterisks();
  return FailRun(kNothingSolved, "No model was solved.");
}

bool MacroRun::ReadData() {
  const MacroSetup& setup = macro_.Setup;
  data_ = unsorted_ = SolveData();
  // Nothing of the run before may pass for a result of this one.
  for (const auto& model : macro_.Models) model->Solved = model->SpecifyICComplete = false;
  const bool fromDatabase = !setup.SQLQuery.empty();
  if (InSeries()) {
    log_.Line("Taking column " + std::to_string(run_ + 1) + " of the series, '" + series_.Names()[run_] + "'");
  } else if (fromDatabase) {
    const std::string text = "Performing SQLDriverConnect '" + DataSourceText(setup) + "'";
    log_.Line(text);
    Tell(text);
    log_.Flush();  // whoever looks at a log that doesn't grow sees what is waited for
  } else {
    log_.Line(setup.DataFile.empty() ? "Reading the input data file failed, DataFile not specified"
                                     : "Reading the input data file '" + setup.DataFile + "'");
    Tell("Reading data file '" + setup.DataFile + "'");
  }
  DataReading reading = InSeries()     ? ReadingOf(series_.Points(run_, KeepsUnsorted(setup)))
                        : fromDatabase ? AskDatabase()
                                       : ReadMacroDataFile(setup, session_.Locale);
  if (form_.Aborted) {
    log_.Line("SOLUTION PROCESS ABORTED BY USER.");
    return false;
  }
  if (reading.ErrorNumber == FileErrorNumber(ENOMEM)) throw std::bad_alloc();
  if (reading.Ok) {
    data_ = std::move(reading.Data);
    unsorted_ = std::move(reading.Unsorted);
    return true;
  }
  if (!reading.Message.empty()) log_.Line(reading.Message);
  log_.Line(fromDatabase ? "Error connecting to or retrieving data from ODBC source"
                         : "Error reading the input data file");
  if (reading.Message.empty()) reading.Message = FileErrorText(reading.ErrorNumber);
  if (reading.Message.empty()) reading.Message = "The data cannot be read.";
  FailRun(fromDatabase               ? kDatabase
          : reading.ErrorNumber == 0 ? kDataUnreadable
                                     : FileErrorStatus(kDataFile, reading.ErrorNumber),
          reading.Message);
  if (InParameterRun()) log_.Line("Data Source Error: " + std::to_string(result_.Status));
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
  hasModels_ = any;
  if (any) return !form_.Aborted;
  const std::string why = macro_.ModelsCreated > 0 ? "Unrecoverable error encountered during the solution process"
                                                   : "No valid regression models detected";
  if (InParameterRun()) {
    log_.Line(why);
    log_.Asterisks();
  }
  return FailRun(kNoSolution, why);
}

// Each solution is diagnosed once, and not where nothing tells of it. False where the user ended that.
bool MacroRun::Diagnose() {
  const MacroSetup& setup = macro_.Setup;
  const bool isTold = !EqualNoCase(setup.OutputFormat, "quorvex") || !setup.ResultFile.empty();
  const bool isReported = !setup.ReportFile.empty();
  if (!(setup.Diagnostics && isTold) && !isReported) return true;
  if (!diagnoses_.Models.empty()) return true;
  diagnoses_ = DiagnoseModels(form_, macro_.Models, data_, setup, session_.Preferences, log_.Text);
  return !form_.Aborted;
}

bool MacroRun::Write() {
  const MacroSetup& setup = macro_.Setup;
  int error = 0;
  // The file of results may be all that is wanted.
  if (!setup.OutputFile.empty() || setup.ResultFile.empty()) {
    Tell("Writing solution file '" + setup.OutputFile + " '");
    error = answers_.Write(setup, macro_.Models, data_, unsorted_, diagnoses_);
    if (error != 0)
      log_.TellWithoutLog("The output file '" + setup.OutputFile + "' cannot be written. " + FileErrorText(error));
  }
  if (error == 0 && !setup.CodeFile.empty()) error = code_.Write(setup, macro_.Models);
  if (error == 0 && !setup.PlotFile.empty()) error = plots_.Write(setup, macro_.Models, unsorted_);
  if (error == 0 && !setup.ReportFile.empty())
    error = reports_.Write(setup, macro_.Models, unsorted_, diagnoses_, AsReported());
  if (error != 0) {
    EndRun(kRunFailed, FileErrorStatus(kOutputFile, error),
           error == kNotDrawn ? "A plot cannot be drawn." : FileErrorText(error));
    if (!form_.Aborted) log_.Line("File Output Error: " + std::to_string(result_.Status));
    log_.Asterisks();
    return false;
  }
  EndRun(kRunSuccessful, kSuccess, "");
  if (setup.StrictStatus) JudgeModels();
  log_.Asterisks();
  return true;
}

// The macro, and what a table has put into it for this run.
ReportedMacro MacroRun::AsReported() {
  ReportedMacro reported{MacroWithoutPassword(macro_.Text, written_), ""};
  for (const auto& [name, value] : ShownParameters(*parameters_, run_, written_.DataFile, macro_.Setup))
    reported.Note += (reported.Note.empty() ? "With the parameters " : ", ") + name + " = " + value;
  if (!reported.Note.empty()) reported.Note += ".";
  return reported;
}

// The answers are written; the status tells of those that are missing, or may not be the best.
void MacroRun::JudgeModels() {
  const auto isSolved = [](const auto& model) { return model->Solved; };
  const auto atLimit = [](const auto& model) { return model->Solved && model->Ended == SearchEnd::IterationLimit; };
  if (macro_.ModelsCreated < macro_.BlockCount)
    EndRun(kRunIncomplete, kModelFailed,
           std::to_string(macro_.BlockCount - macro_.ModelsCreated) + " of " + std::to_string(macro_.BlockCount) +
               " models were not understood.");
  else if (std::ranges::count_if(macro_.Models, isSolved) < wanted_)
    EndRun(kRunIncomplete, kModelFailed, "A model was not solved.");
  else if (std::ranges::any_of(macro_.Models, atLimit))
    EndRun(kRunIncomplete, kModelAtLimit, "A search ended at the limit of iterations.");
  if (result_.Status != kSuccess) log_.Line("Strict status " + std::to_string(result_.Status) + ": " + result_.Message);
}

// Some file systems tell only now that a disk is full.
void MacroRun::CloseResults() {
  const int error = results_.IsOpen() ? results_.Close() : 0;
  if (error == 0) return;
  log_.Fault(ResultFaultText(macro_.Setup.ResultFile, error));
  if (status_ == kSuccess) status_ = FileErrorStatus(kOutputFile, error);
}

void MacroRun::TerminateNormally() {
  Tell("Solution process complete");
  CloseResults();
  log_.EndNormally();
  if (macro_.Setup.ShowMessageBox) form_.ShowMessageBox("Solution process is complete.");
  Tell("Normal termination");
}

void MacroRun::TerminateAbnormally() {
  CloseResults();
  log_.EndAbnormally();
  Tell("Abnormal termination");
}

}  // namespace

MacroOutcome RunMacro(const MacroRequest& request, Session& session, cfgSolve& form, PlotDrawer& drawer) {
  return MacroRun(session, form, drawer).Run(request);
}

}  // namespace quorvex
