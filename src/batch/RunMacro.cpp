#include "batch/RunMacro.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <exception>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "batch/DataReading.h"
#include "batch/MacroFiles.h"
#include "batch/MacroStart.h"
#include "batch/ResultLine.h"
#include "batch/RunPart.h"
#include "batch/RunState.h"
#include "batch/RunWriter.h"
#include "batch/RunsAhead.h"
#include "batch/SolveRun.h"
#include "batch/WritePlot.h"
#include "core/Files.h"
#include "core/NumberText.h"
#include "core/ParallelRuns.h"
#include "core/TextEncoding.h"
#include "engine/FitEach.h"
#include "macro/BatchStatus.h"
#include "macro/MacroLog.h"
#include "macro/MacroReader.h"
#include "macro/ParameterFile.h"
#include "macro/SubstituteParameters.h"

namespace quorvex {
namespace {

// What an exception comes from, all else being told by numbers and sentences.
constexpr std::string_view kOutOfMemory = "Out of memory: there is not enough of it for this run.";

class MacroRun {
 public:
  MacroRun(Session& session, cfgSolve& form, PlotDrawer& drawer)
      : session_(session), form_(form), writer_(session, form, drawer, files_, log_) {}

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
  bool IsAnswered(std::size_t run);
  bool OpenResults();
  bool RunAll();
  bool RunAllAhead(std::size_t first, std::size_t end, int threads);
  bool RunNext();
  bool TryRun();
  void TryRunOnce();
  bool Solve();
  bool SolveHere();
  ReportedMacro AsReported();
  void JudgeModels();
  bool WriteResult();
  void CloseResults();
  void TerminateNormally();
  void TerminateAbnormally();

  bool InSeries() const { return own_.Given.Setup.DataSeries; }
  const SeriesData* Series() const { return InSeries() ? &series_ : nullptr; }
  // Runs that have numbers, be it of the rows of a table or of the columns of a series.
  bool InParameterRun() const { return own_.Given.Setup.UseParameterFile || InSeries(); }
  Macro& Current() { return current_->Given; }
  void Tell(const std::string& text) {
    if (own_.Given.Setup.UseDDE) form_.DDEText(text);
  }
  // The next run of a parameter run reads and solves anew.
  void FailRun(int status, std::string message) {
    end_ = {kRunFailed, status, std::move(message)};
    inputChanged_ = true;
  }

  Session& session_;
  cfgSolve& form_;
  RunState own_;  // of the macro as it was read
  RunState* current_ = &own_;
  std::unique_ptr<RunState> solvedAhead_;  // the current one, where it is that of a run solved before its turn
  int status_ = kSuccess;
  MacroLog log_{own_.Given.Setup, status_};
  MacroFiles files_;
  RunWriter writer_;
  std::optional<ParameterTable> parameters_;  // none where it could not be read
  std::string parametersFault_;               // why
  SeriesData series_;                         // where the columns of the data are the runs
  MacroSetup written_;                        // before a run puts its parameters in
  std::size_t run_ = 0;                       // from 0
  std::optional<RunAhead> ahead_;             // the run in hand, where it may have been solved before its turn
  RunEnd end_;                                // of the run in hand
  TextFile results_;
  RunPart part_;
  bool missingOnly_ = false;
  AnsweredRuns answered_;      // by their lines in the file of results
  std::ptrdiff_t wanted_ = 0;  // models to be solved, before any is found not to fit the data
  bool inputChanged_ = true;
  ChangedInputs changed_;
};

bool MacroRun::Configure(const MacroRequest& request) {
  const std::string& fileName = request.FileName;
  MacroSetup& setup = own_.Given.Setup;
  InitMacroSetup(setup, session_.Preferences);
  // A part of what has none is refused before anything is written.
  std::optional<MacroRefusal> refusal = ReadMacroFile(request, session_, own_.Given, log_.Text);
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
  const std::string text = "Reading parameter file '" + own_.Given.Setup.ParameterFile + "'";
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
  const MacroSetup& setup = own_.Given.Setup;
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
  const std::string& name = own_.Given.Setup.ResultFile;
  if (name.empty()) return true;
  const std::string path = files_.Place(name);
  const std::optional<std::string> refusal = RefuseResults(own_.Given.Setup, *parameters_, path, files_);
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
  written_ = own_.Given.Setup;
  wanted_ = std::ranges::count_if(own_.Given.Models, [](const auto& model) { return model->Solve; });
  const std::size_t first = part_.First(parameters_->Rows.size()), end = part_.End(parameters_->Rows.size());
  if (const int threads = RunsAhead::Threads(own_, *parameters_, first, end, Series(), session_); threads > 1)
    return RunAllAhead(first, end, threads);
  for (run_ = first; run_ < end; ++run_)
    if (!RunNext()) return false;
  return true;
}

// The same with runs solved side by side before their turn, in which each is written, or solved where that was not to
// be done before.
bool MacroRun::RunAllAhead(std::size_t first, std::size_t end, int threads) {
  RunsAhead runs(own_, *parameters_, Series(), files_, session_, threads, end - first);
  OrderedTasks tasks{.Count = end - first, .Ahead = runs.Ahead()};
  std::vector<RunAhead> ring(tasks.Ahead);
  const auto place = [&](std::size_t i) -> RunAhead& { return ring[i % ring.size()]; };
  tasks.Prepare = [&](std::size_t i) {
    place(i) = RunAhead();
    place(i).Changes.Inputs = true;  // for one that turns out not to be answered after all
    if (!missingOnly_ || !IsAnswered(first + i)) place(i) = runs.Prepare(first + i);
    return true;
  };
  tasks.Do = [&](std::size_t i, std::stop_token stop) { runs.Solve(place(i), first + i, std::move(stop)); };
  bool hasEnded = false;
  tasks.Finish = [&](std::size_t i) {
    run_ = first + i;
    ahead_ = std::move(place(i));
    hasEnded = !RunNext();
    if (ahead_->State) runs.Return(std::move(ahead_->State));
    return !hasEnded;
  };
  tasks.KeepGoing = [&] {
    form_.Yield();
    return !form_.Aborted;
  };
  if (RunInOrder(tasks, threads)) return true;
  if (!hasEnded) RunNext();  // which tells of the abort
  return false;
}

// The run in hand with all that is told of it. False where it is the last one.
bool MacroRun::RunNext() {
  form_.Yield();
  if (missingOnly_ && !form_.Aborted && IsAnswered(run_)) {
    log_.FinishRun(InParameterRun() ? run_ + 1 : 0, kRunSkipped);
    return true;
  }
  if (form_.Aborted) LogAbort(log_.Text);
  const bool succeeded = !form_.Aborted && TryRun();
  if (!succeeded && form_.Aborted) status_ = kAborted;
  if (!succeeded && (!InParameterRun() || form_.Aborted)) return false;
  Current().Setup = written_;
  log_.Flush();
  return true;
}

// Whether the answer of the run to come is there as a whole: its line, and its output file. One file for all rows is
// none of its own.
bool MacroRun::IsAnswered(std::size_t run) {
  MacroSetup setup = written_;
  setup.DataFile = WithParameters(setup.DataFile, *parameters_, run);
  setup.OutputFile = FileWithParameters(setup.OutputFile, *parameters_, run);
  const bool hasLines = !setup.ResultFile.empty();
  if (hasLines) {
    RunResult result;
    result.Number = run + 1;
    result.Parameters = ShownParameters(*parameters_, run, written_.DataFile, setup);
    if (!answered_.Has(result.Number, ResultBeginning(result))) return false;
    if (setup.OutputFile.empty()) return true;
  } else if (InParameterRun() && setup.OutputFile == written_.OutputFile) {
    return false;
  }
  return IdentityOfFile(files_.Place(setup.OutputFile)).has_value();
}

// One run with its line in the file of results. False where it failed.
bool MacroRun::TryRun() {
  end_ = {};
  TryRunOnce();
  bool succeeded = end_.Summary == kRunSuccessful || end_.Summary == kRunIncomplete;
  if (!succeeded) form_.Yield();  // what failed may have been interrupted
  if (!succeeded && form_.Aborted) end_ = {end_.Summary, kAborted, "Aborted."};
  if (results_.IsOpen() && !WriteResult()) succeeded = false;
  if (end_.Status != 0) status_ = end_.Status;
  if (!end_.Summary.empty()) log_.FinishRun(InParameterRun() ? run_ + 1 : 0, end_.Summary);
  return succeeded;
}

void MacroRun::TryRunOnce() {
  try {
    if (!Solve() || !writer_.Write(
                        *current_, [this] { return AsReported(); }, end_))
      return;
    if (Current().Setup.StrictStatus) JudgeModels();
    log_.Asterisks();
  } catch (const std::exception&) {
    // What the run holds makes room for the next one.
    current_->Clear();
    FailRun(kOtherFailure, std::string(kOutOfMemory));
    end_.Summary = kRunOutOfMemory;
    log_.Line(kOutOfMemory);
    log_.Asterisks();
  }
}

// False where there is nothing to be written.
bool MacroRun::Solve() {
  if (!ahead_ || ahead_->State == nullptr || ahead_->IsOutOfMemory) return SolveHere();
  // Its state becomes the current one, and what was that serves another run.
  solvedAhead_.swap(ahead_->State);
  current_ = solvedAhead_.get();
  log_.Text += ahead_->Log;
  for (const std::string& text : ahead_->Told) form_.DDEText(text);
  end_ = std::move(ahead_->End);
  inputChanged_ = !ahead_->IsSolved;
  return ahead_->IsSolved;
}

// Puts the parameters into the current state, and solves it anew where they changed anything.
bool MacroRun::SolveHere() {
  if (InParameterRun()) log_.Line("Beginning Run: " + std::to_string(run_ + 1));
  if (!SubstituteParameters(Current(), *parameters_, run_, session_.Locale, log_)) {
    FailRun(kParameterFile, std::string(kTooLongText));
    log_.Asterisks();
    return false;
  }
  const ChangedInputs::Changes changes = ahead_ ? ahead_->Changes : changed_.Note(Current());
  inputChanged_ = inputChanged_ || changes.Inputs;
  if (changes.Reports) current_->Diagnoses = {};
  const RunSite site{.Preferences = session_.Preferences,
                     .Locale = session_.Locale,
                     .Series = Series(),
                     .InTable = InParameterRun(),
                     .Form = form_,
                     .Log = log_.Text,
                     .BeforeWaiting = [this] { log_.Flush(); }};
  bool solved = true;
  if (inputChanged_ || Current().Setup.SolveEachRun || InSeries()) {
    solved = SolveRun(*current_, run_, site, end_);
  } else {
    log_.Line("Input parameters unchanged");
    log_.Line("Solution Complete");
    log_.Line("");
  }
  solved = solved && JudgeRun(*current_, site, end_);
  inputChanged_ = !solved;
  return solved;
}

// False where the line could not be written, which fails the run.
bool MacroRun::WriteResult() {
  const MacroSetup& setup = Current().Setup;
  int error = 0;
  try {
    RunResult result;
    result.Number = run_ + 1;
    if (InSeries()) result.Series = series_.Names()[run_];
    result.Status = end_.Status;
    result.Message = end_.Message;
    result.Data = DataSourceText(setup);
    result.Parameters = ShownParameters(*parameters_, run_, written_.DataFile, setup);
    error = results_.Append((current_->HasModels
                                 ? ResultLine(result, Current().Models, current_->Data, setup, current_->Diagnoses)
                                 : ResultLine(result)) +
                            '\n');
  } catch (const std::exception&) {
    error = FileErrorNumber(ENOMEM);
  }
  if (error == 0) return true;
  log_.Fault(ResultFaultText(setup.ResultFile, error));
  end_ = {kRunFailed, FileErrorStatus(kOutputFile, error), ""};
  log_.Line("File Output Error: " + std::to_string(end_.Status));
  log_.Asterisks();
  return false;
}

// The macro, and what a table has put into it for this run.
ReportedMacro MacroRun::AsReported() {
  ReportedMacro reported{MacroWithoutPassword(own_.Given.Text, written_), ""};
  for (const auto& [name, value] : ShownParameters(*parameters_, run_, written_.DataFile, Current().Setup))
    reported.Note += (reported.Note.empty() ? "With the parameters " : ", ") + name + " = " + value;
  if (!reported.Note.empty()) reported.Note += ".";
  return reported;
}

// The answers are written; the status tells of those that are missing, or may not be the best.
void MacroRun::JudgeModels() {
  const Macro& macro = Current();
  const auto isSolved = [](const auto& model) { return model->Solved; };
  const auto atLimit = [](const auto& model) { return model->Solved && model->Ended == SearchEnd::IterationLimit; };
  if (macro.ModelsCreated < macro.BlockCount)
    end_ = {kRunIncomplete, kModelFailed,
            std::to_string(macro.BlockCount - macro.ModelsCreated) + " of " + std::to_string(macro.BlockCount) +
                " models were not understood."};
  else if (std::ranges::count_if(macro.Models, isSolved) < wanted_)
    end_ = {kRunIncomplete, kModelFailed, "A model was not solved."};
  else if (std::ranges::any_of(macro.Models, atLimit))
    end_ = {kRunIncomplete, kModelAtLimit, "A search ended at the limit of iterations."};
  if (end_.Status != kSuccess) log_.Line("Strict status " + std::to_string(end_.Status) + ": " + end_.Message);
}

// Some file systems tell only now that a disk is full.
void MacroRun::CloseResults() {
  const int error = results_.IsOpen() ? results_.Close() : 0;
  if (error == 0) return;
  log_.Fault(ResultFaultText(own_.Given.Setup.ResultFile, error));
  if (status_ == kSuccess) status_ = FileErrorStatus(kOutputFile, error);
}

void MacroRun::TerminateNormally() {
  Tell("Solution process complete");
  CloseResults();
  log_.EndNormally();
  if (own_.Given.Setup.ShowMessageBox) form_.ShowMessageBox("Solution process is complete.");
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
