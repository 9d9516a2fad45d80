#include "batch/RunsAhead.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <system_error>
#include <utility>

#include "batch/RunAnswers.h"
#include "batch/SolveRun.h"
#include "batch/cfgSolve.h"
#include "core/Files.h"
#include "core/NumberText.h"
#include "core/ParallelRuns.h"

namespace quorvex {
namespace {

// The form of a run that is solved ahead of its turn.
class AheadForm final : public cfgSolve {
 public:
  AheadForm(std::stop_token stop, std::vector<std::string>& told) : stop_(std::move(stop)), told_(told) {}
  std::string RequestWindows() override { return {}; }
  void DDEText(std::string_view text) override { told_.emplace_back(text); }
  void Yield() override { Pulse(); }
  void Pulse() override { Aborted = Aborted || stop_.stop_requested(); }

 private:
  std::stop_token stop_;
  std::vector<std::string>& told_;
};

// Some points that a run has: few bytes make one.
constexpr double kBytesOfPoint = 16;
double PointsOf(const MacroSetup& setup, const ParameterTable& table, std::size_t run, const SeriesData* series) {
  std::error_code error;
  const std::string name = series != nullptr ? setup.DataFile : WithParameters(setup.DataFile, table, run);
  const auto bytes = std::filesystem::file_size(ResolvePath(name), error);
  if (error) return 1;
  const std::size_t columns = series != nullptr ? series->Size() : 1;
  return std::max(static_cast<double>(bytes) / (kBytesOfPoint * static_cast<double>(columns)), 1.0);
}

}  // namespace

ChangedInputs::Changes ChangedInputs::Note(Macro& macro) {
  Changes changes;
  for (std::size_t f = 0; f < texts_.size(); ++f) {
    const SubstitutedField& field = SubstitutedFields()[f];
    const std::string& text = field.In(macro.Setup);
    if (!field.IsInput || EqualNoCase(text, texts_[f])) continue;
    texts_[f] = text;
    changes.Inputs = true;
  }
  // Another start may lead to the same answer, other bounds don't.
  std::vector<Box> bounds;
  std::vector<std::vector<DerivedQuantity>> reports;
  for (const auto& model : macro.Models) {
    if (model->Solve && model->NumIndependentVar() <= macro.Setup.IndependentVariables)
      bounds.push_back(model->Bounds());
    // Other quantities don't change the answer, but what is told of it.
    reports.push_back(model->Reports);
  }
  changes.Inputs = changes.Inputs || bounds != bounds_;
  changes.Reports = reports != reports_;
  bounds_ = std::move(bounds);
  reports_ = std::move(reports);
  return changes;
}

RunsAhead::RunsAhead(const RunState& state, const ParameterTable& table, const SeriesData* series,
                     const MacroFiles& files, const Session& session, int threads, std::size_t runs)
    : table_(table),
      series_(series),
      files_(files),
      locale_(session.Locale),
      preferences_(session.Preferences),
      state_(TwinOf(state)),
      written_(state.Given.Setup) {
  constexpr double kMemory = 1 << 28, kModels = 1000;  // bytes, and copies of models
  constexpr std::size_t kMost = 64;
  const double most = std::min(kMemory / (kBytesOfPoint * PointsOf(written_, table, 0, series)),
                               kModels / static_cast<double>(state.Given.Models.size() + 1));
  const auto wanted = static_cast<std::size_t>(threads);
  ahead_ = std::clamp(static_cast<std::size_t>(most), 2 * wanted, std::max(kMost, 2 * wanted));
  preferences_.Threads = static_cast<int>(std::max<std::size_t>(wanted / runs, 1));
}

int RunsAhead::Threads(const RunState& state, const ParameterTable& table, std::size_t first, std::size_t end,
                       const SeriesData* series, const Session& session) {
  const MacroSetup& setup = state.Given.Setup;
  if (first + 1 >= end || table.Names.empty()) return 1;
  constexpr double kShort = 2000;  // points of fits, which take less than to begin a thread
  const double fits = static_cast<double>(end - first) * static_cast<double>(state.Given.Models.size());
  if (!setup.TryHarder && !setup.Diagnostics && setup.ReportFile.empty() &&
      fits * PointsOf(setup, table, first, series) < kShort)
    return 1;
  // A user who watches a run pauses the fit that is shown, and there is one at a time.
  if (setup.ShowProgress || setup.ShowMessageBox) return 1;
  // A model that draws random numbers, or recalls a value of another point, goes on where the run before ended.
  if (std::ranges::any_of(state.Given.Models,
                          [](const auto& model) { return model->Solve && !model->RunsOverBlocks(); }))
    return 1;
  return ThreadCount(session.Preferences.Threads);
}

RunAhead RunsAhead::Prepare(std::size_t run) {
  RunAhead ahead;
  state_.Given.Setup = written_;
  log_.Text.clear();
  log_.Line("Beginning Run: " + std::to_string(run + 1));
  if (!SubstituteParameters(state_.Given, table_, run, locale_, log_)) return ahead;
  ahead.Changes = changed_.Note(state_.Given);
  const MacroSetup& setup = state_.Given.Setup;
  const bool isAnew = ahead.Changes.Inputs || setup.SolveEachRun || series_ != nullptr;
  const bool isThere = series_ != nullptr || (setup.SQLQuery.empty() && files_.IsInput(setup.DataFile));
  if (!isAnew || !isThere) return ahead;
  if (free_.empty()) {
    ahead.State = std::make_unique<RunState>(TwinOf(state_));
  } else {
    ahead.State = std::move(free_.back());
    free_.pop_back();
    TakeSetup(*ahead.State, state_);
  }
  ahead.Log = std::exchange(log_.Text, {});
  return ahead;
}

void RunsAhead::Solve(RunAhead& ahead, std::size_t run, std::stop_token stop) const {
  if (ahead.State == nullptr) return;
  AheadForm form(std::move(stop), ahead.Told);
  const RunSite site{.Preferences = preferences_,
                     .Locale = locale_,
                     .Series = series_,
                     .InTable = true,
                     .Form = form,
                     .Log = ahead.Log,
                     .BeforeWaiting = {}};
  try {
    RunState& state = *ahead.State;
    ahead.IsSolved = SolveRun(state, run, site, ahead.End) && JudgeRun(state, site, ahead.End);
    // What is written in turn is made here, as long as it is no great text.
    constexpr std::size_t kManyPoints = 10'000;
    if (ahead.IsSolved && !state.Given.Setup.OutputFile.empty() && state.Data.N() <= kManyPoints)
      state.Output = OutputText(state);
  } catch (const std::exception&) {
    ahead.IsOutOfMemory = true;
  }
}

}  // namespace quorvex
