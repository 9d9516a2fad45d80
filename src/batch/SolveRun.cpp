#include "batch/SolveRun.h"

#include <algorithm>
#include <cerrno>
#include <new>
#include <utility>

#include "batch/DataReading.h"
#include "batch/FitModels.h"
#include "batch/ReadMacroDataFile.h"
#include "batch/ReadMacroDatabase.h"
#include "core/Files.h"
#include "core/NumberText.h"
#include "macro/BatchStatus.h"

namespace quorvex {
namespace {

class Solving {
 public:
  Solving(RunState& state, const RunSite& site, RunEnd& end)
      : state_(state), setup_(state.Given.Setup), site_(site), end_(end) {}

  bool ReadData(std::size_t run);
  bool SolveModels();
  bool Diagnose();
  bool RequireSolution();

 private:
  DataReading Read(std::size_t run);
  DataReading AskDatabase();

  bool FromDatabase() const { return site_.Series == nullptr && !setup_.SQLQuery.empty(); }
  void Line(std::string_view text) { site_.Log.append(text).append(NL); }
  void Asterisks() { Line("***************************************"); }
  void Tell(const std::string& text) {
    if (setup_.UseDDE) site_.Form.DDEText(text);
  }
  bool GoesOn() {
    site_.Form.Yield();
    return !site_.Form.Aborted;
  }
  bool Fail(int status, std::string message) {
    end_ = {kRunFailed, status, std::move(message)};
    return false;
  }

  RunState& state_;
  const MacroSetup& setup_;
  const RunSite& site_;
  RunEnd& end_;
};

DataReading Solving::Read(std::size_t run) {
  if (site_.Series != nullptr) {
    Line("Taking column " + std::to_string(run + 1) + " of the series, '" + site_.Series->Names()[run] + "'");
    return ReadingOf(site_.Series->Points(run, KeepsUnsorted(setup_)));
  }
  if (FromDatabase()) {
    const std::string text = "Performing SQLDriverConnect '" + DataSourceText(setup_) + "'";
    Line(text);
    Tell(text);
    site_.BeforeWaiting();  // whoever looks at a log that doesn't grow sees what is waited for
    return AskDatabase();
  }
  Line(setup_.DataFile.empty() ? "Reading the input data file failed, DataFile not specified"
                               : "Reading the input data file '" + setup_.DataFile + "'");
  Tell("Reading data file '" + setup_.DataFile + "'");
  return ReadMacroDataFile(setup_, site_.Locale, site_.Preferences.Threads, FileLines::kPiece,
                           [this] { return GoesOn(); });
}

bool Solving::ReadData(std::size_t run) {
  state_.Data = state_.Unsorted = SolveData();
  // Nothing of the run before may pass for a result of this one.
  for (const auto& model : state_.Given.Models) model->Solved = model->SpecifyICComplete = false;
  DataReading reading = Read(run);
  if (!GoesOn()) {
    Line("SOLUTION PROCESS ABORTED BY USER.");
    return false;
  }
  if (reading.ErrorNumber == FileErrorNumber(ENOMEM)) throw std::bad_alloc();
  if (reading.Ok) {
    state_.Data = std::move(reading.Data);
    state_.Unsorted = std::move(reading.Unsorted);
    return true;
  }
  if (!reading.Message.empty()) Line(reading.Message);
  Line(FromDatabase() ? "Error connecting to or retrieving data from ODBC source"
                      : "Error reading the input data file");
  if (reading.Message.empty()) reading.Message = FileErrorText(reading.ErrorNumber);
  if (reading.Message.empty()) reading.Message = "The data cannot be read.";
  Fail(FromDatabase()             ? kDatabase
       : reading.ErrorNumber == 0 ? kDataUnreadable
                                  : FileErrorStatus(kDataFile, reading.ErrorNumber),
       reading.Message);
  if (site_.InTable) Line("Data Source Error: " + std::to_string(end_.Status));
  Asterisks();
  return false;
}

DataReading Solving::AskDatabase() {
  if (setup_.ShowProgress) {
    site_.Form.SetStatusLabel("Reading the database");
    site_.Form.Show(true);
  }
  DataReading reading =
      ReadMacroDatabase(setup_, site_.Locale, DatabaseUse::From(site_.Preferences), [this] { return GoesOn(); });
  if (!reading.Ok) site_.Form.Show(false);
  return reading;
}

bool Solving::SolveModels() {
  Tell("Beginning solution process");
  Line("Solving models");
  Line("");
  const Macro& macro = state_.Given;
  state_.HasModels = FitModels(site_.Form, macro.Models, state_.Data, setup_, site_.Preferences, site_.Log);
  if (state_.HasModels) return !site_.Form.Aborted;
  const std::string why = macro.ModelsCreated > 0 ? "Unrecoverable error encountered during the solution process"
                                                  : "No valid regression models detected";
  if (site_.InTable) {
    Line(why);
    Asterisks();
  }
  return Fail(kNoSolution, why);
}

// Each solution is diagnosed once, and not where nothing tells of it. False where the user ended that.
bool Solving::Diagnose() {
  const bool isTold = !EqualNoCase(setup_.OutputFormat, "quorvex") || !setup_.ResultFile.empty();
  const bool isReported = !setup_.ReportFile.empty();
  if (!(setup_.Diagnostics && isTold) && !isReported) return true;
  if (!state_.Diagnoses.Models.empty()) return true;
  state_.Diagnoses = DiagnoseModels(site_.Form, state_.Given.Models, state_.Data, setup_, site_.Preferences, site_.Log);
  return !site_.Form.Aborted;
}

bool Solving::RequireSolution() {
  const bool anySolved = std::ranges::any_of(state_.Given.Models, [](const auto& model) { return model->Solved; });
  if (!setup_.RequireSolution || anySolved) return true;
  Line("Run failed: no model was solved");
  Asterisks();
  return Fail(kNothingSolved, "No model was solved.");
}

}  // namespace

bool SolveRun(RunState& state, std::size_t run, const RunSite& site, RunEnd& end) {
  state.HasModels = false;
  state.Diagnoses = {};
  Solving solving(state, site, end);
  return solving.ReadData(run) && solving.SolveModels();
}

bool JudgeRun(RunState& state, const RunSite& site, RunEnd& end) {
  Solving solving(state, site, end);
  return solving.Diagnose() && solving.RequireSolution();
}

}  // namespace quorvex
