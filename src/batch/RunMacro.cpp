#include "batch/RunMacro.h"

#include <vector>

#include "batch/BatchStatus.h"
#include "batch/FitModels.h"
#include "batch/MacroReader.h"
#include "batch/ReadMacroDataFile.h"
#include "batch/WriteStructuredOutput.h"
#include "core/Files.h"
#include "core/NumberText.h"

namespace quorvex {
namespace {

constexpr std::string_view kAsterisks = "***************************************";

class MacroRun {
 public:
  MacroRun(Session& session, cfgSolve& form) : session_(session), form_(form) {}

  MacroOutcome Run(const std::string& fileName) {
    const bool normal = Configure(fileName) && RunAll();
    if (normal)
      TerminateNormally();
    else
      TerminateAbnormally();
    return {normal, status_};
  }

 private:
  bool Configure(const std::string& fileName);
  bool RunAll();
  bool ReadData();
  bool SolveModels();
  bool Write();
  bool FailRun();
  void TerminateNormally();
  void TerminateAbnormally();

  void Log(std::string_view text) { log_.append(text).append(NL); }
  void Tell(const std::string& text) {
    if (macro_.Setup.UseDDE) form_.DDEText(text);
  }

  // The log file. A failure on it sets the status and ends the log; the run goes on.
  void OpenLog() { CheckLog(logFile_.Create(macro_.Setup.LogFile)); }
  void PrintBuffer() {
    if (!macro_.Setup.LogEnabled) return;
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
    macro_.Setup.LogEnabled = false;
    logFile_.Close();
  }

  Session& session_;
  cfgSolve& form_;
  Macro macro_;
  SolveData data_;
  TextFile logFile_;
  std::string log_;                   // what has not been printed yet
  std::vector<std::string> results_;  // of the finished runs
  int status_ = kSuccess;
};

bool MacroRun::Configure(const std::string& fileName) {
  MacroSetup& setup = macro_.Setup;
  InitMacroSetup(setup, session_.Preferences);
  Log("Opening Quorvex Macro file '" + fileName + "'");
  MappedFile file;
  if (const int error = file.Open(fileName); error != 0) {
    status_ = FileErrorStatus(kMacroFile, error);
    return false;
  }
  Log("Parsing Quorvex Macro file");
  if (!ReadMacro(DecodeText(file.Text()), session_.Locale, session_.Preferences, macro_, log_)) {
    status_ = kNoMacroStatement;
    return false;
  }
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
  session_.Preferences.ResidualTolerance = setup.RegressionTolerance;
  session_.Preferences.MaxIterations = setup.MaxIterations;
  session_.Preferences.DivIterations = setup.UnchangedIterations;
  session_.Preferences.DerivativeMethod = setup.Derivatives;
  if (setup.LogEnabled) OpenLog();
  FlushBuffer();
  return true;
}

bool MacroRun::RunAll() {
  Log("");
  Log(kAsterisks);
  FlushBuffer();
  if (!ReadData() || !SolveModels() || !Write()) return false;
  FlushBuffer();
  return true;
}

bool MacroRun::FailRun() {
  results_.push_back("Run Failed");
  return false;
}

bool MacroRun::ReadData() {
  const std::string& name = macro_.Setup.DataFile;
  data_ = SolveData();
  for (const auto& model : macro_.Models) model->Solved = model->SpecifyICComplete = false;
  Log(name.empty() ? "Reading the input data file failed, DataFile not specified"
                   : "Reading the input data file '" + name + "'");
  Tell("Reading data file '" + name + "'");
  DataReading reading = ReadMacroDataFile(macro_.Setup, session_.Locale);
  if (!reading.Ok) {
    if (!reading.Message.empty()) Log(reading.Message);
    Log("Error reading the input data file");
    Log(kAsterisks);
    status_ = reading.ErrorNumber == 0 ? kDataUnreadable : FileErrorStatus(kDataFile, reading.ErrorNumber);
    return FailRun();
  }
  data_ = std::move(reading.Data);
  return true;
}

bool MacroRun::SolveModels() {
  if (macro_.Setup.UseDDE) form_.DDEText("Beginning solution process");
  Log("Solving models");
  Log("");
  if (!FitModels(form_, macro_.Models, data_, macro_.Setup, session_.Preferences, log_)) {
    status_ = kNoSolution;
    return FailRun();
  }
  if (form_.Aborted) {
    status_ = kAborted;
    return false;
  }
  return true;
}

bool MacroRun::Write() {
  const std::string& name = macro_.Setup.OutputFile;
  Tell("Writing solution file '" + name + " '");
  Log(name.empty() ? "Write failed, OutputFile not specified" : "Writing solution to " + name);
  const int error = WriteStructuredOutput(macro_.Models, data_, macro_.Setup);
  if (error != 0) {
    status_ = FileErrorStatus(kOutputFile, error);
    Log("File Output Error: " + std::to_string(status_));
    Log(kAsterisks);
    return FailRun();
  }
  results_.push_back("Run Successful");
  Log(kAsterisks);
  return true;
}

void MacroRun::TerminateNormally() {
  Tell("Solution process complete");
  Log("Log Summary:");
  for (const std::string& result : results_) Log(result);
  Log(kAsterisks);
  Log("Normal termination");
  if (macro_.Setup.LogEnabled) {
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
    Log("Log Summary:");
    for (const std::string& result : results_) Log(result);
    Log(kAsterisks);
    Log("Abnormal termination");
    Log("Exit Status " + std::to_string(status_));
    PrintBuffer();
    CheckLog(logFile_.Close());
  }
  Tell("Abnormal termination");
}

}  // namespace

MacroOutcome RunMacro(const std::string& fileName, Session& session, cfgSolve& form) {
  return MacroRun(session, form).Run(fileName);
}

}  // namespace quorvex
