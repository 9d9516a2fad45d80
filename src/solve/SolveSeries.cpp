#include "solve/SolveSeries.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <utility>

#include "core/Files.h"
#include "core/NumberText.h"
#include "core/ParallelRuns.h"
#include "diagnosis/CrossValidation.h"
#include "engine/FitEach.h"
#include "engine/RankModels.h"
#include "engine/SideForm.h"
#include "sheet/ComputeWeights.h"
#include "solve/FailedFit.h"

namespace quorvex {
namespace {

const char* EndText(SearchEnd end) {
  switch (end) {
    case SearchEnd::Converged:
      return "Converged";
    case SearchEnd::Unchanged:
      return "Unchanged";
    case SearchEnd::IterationLimit:
      return "Iteration limit";
    case SearchEnd::Paused:
      break;
  }
  return "Paused";
}

std::string NameOf(const ModelClass& model) { return model.cfgID.empty() ? model.id : model.cfgID; }

SeriesFit FitOf(const ModelClass& model, std::size_t column, std::size_t rank, std::size_t points) {
  SeriesFit fit;
  fit.Column = column;
  fit.Model = NameOf(model);
  fit.Rank = rank;
  fit.Points = points;
  fit.Status = rank > 0 ? EndText(model.Ended) : model.Failure;
  if (rank == 0) return fit;
  fit.R2 = model.R2;
  fit.StdErr = model.StdErr;
  fit.RSS = model.RSS;
  for (int i = 1; i <= model.NumDependentVar(); ++i)
    fit.Coefficients.push_back({model.Variables(i), model.Values(i), model.StandardError(i)});
  return fit;
}

// The columns of a series, and what is solved on each.
class SeriesRun {
 public:
  SeriesRun(const SeriesData& series, const ModelCollection& models, const Settings& settings, int sortKey)
      : series_(series), models_(models), settings_(settings), sortKey_(sortKey) {
    for (const auto& model : models)
      if (model->Solve)
        starts_.push_back({{model.get(), nullptr},
                           model->SpecifyICComplete,
                           model->CoefficientValues,
                           model->ICRanges,
                           settings.TryHarder});
  }

  // Both give the fits of the columns up to the first one that was not solved to its end.
  std::vector<SeriesFit> InTurn(std::string& log, SolveProgress& form);
  std::vector<SeriesFit> SideBySide(std::string& log, SolveProgress& form);
  bool CanBeSideBySide() const;

 private:
  using Fits = std::vector<SeriesFit>;

  std::optional<Fits> SolveColumn(std::size_t column, const ModelCollection& models, const Settings& settings,
                                  std::string& log, SolveProgress& form) const;
  std::unique_ptr<ModelCollection> Twins() const;
  int Count() const { return static_cast<int>(series_.Size()); }

  const SeriesData& series_;
  const ModelCollection& models_;
  const Settings& settings_;
  const int sortKey_;
  std::vector<FailedFit> starts_;
};

// Nothing where the form is aborted: half of a column is none.
std::optional<SeriesRun::Fits> SeriesRun::SolveColumn(std::size_t column, const ModelCollection& models,
                                                      const Settings& settings, std::string& log,
                                                      SolveProgress& form) const {
  const std::string name = "column " + std::to_string(column + 1) + ", '" + series_.Names()[column] + "'";
  log.append("Taking ").append(name).append(" of the series").append(NL);
  Result<LoadedGrid> loaded = series_.Points(column);
  if (!loaded) {
    log.append(loaded.error()).append(NL).append(NL);
    Fits none(1);
    none[0].Column = column;
    none[0].Status = loaded.error();
    return none;
  }
  SolveData& data = loaded->Points;
  TakeWeights(data);
  std::vector<ModelClass*> asked;
  for (const auto& model : models)
    if (model->Solve) asked.push_back(model.get());
  for (std::size_t i = 0; i < asked.size(); ++i) {
    asked[i]->Solved = false;
    TakeStart(starts_[i], *asked[i]);
  }
  const auto begin = [&](const ModelClass& model, int coefficients) {
    form.SetParameterCount(coefficients);
    form.SetStatusLabel("Solving " + FirstCharacters(name, 30) + ": " + FirstCharacters(NameOf(model), 20));
  };
  FitEach(models, data, settings, log, form, begin, [] {});
  if (!form.Aborted && sortKey_ == kSortByCV) CrossValidate(models, data, 0, 0, settings, form);
  if (form.Aborted) return std::nullopt;
  Fits fits;
  std::size_t rank = 0;
  for (const ModelClass* model : RankModels(models, sortKey_)) fits.push_back(FitOf(*model, column, ++rank, data.N()));
  for (const ModelClass* model : asked)
    if (!model->Solved) fits.push_back(FitOf(*model, column, 0, data.N()));
  return fits;
}

std::vector<SeriesFit> SeriesRun::InTurn(std::string& log, SolveProgress& form) {
  Fits all;
  for (std::size_t column = 0; column < series_.Size(); ++column) {
    form.SetProgress(static_cast<int>(column), Count());
    form.Yield();
    if (form.Aborted) break;
    std::optional<Fits> fits = SolveColumn(column, models_, settings_, log, form);
    if (!fits) break;
    std::ranges::move(*fits, std::back_inserter(all));
  }
  return all;
}

// Where threads have something to do, and no fit hears of the one before.
bool SeriesRun::CanBeSideBySide() const {
  constexpr std::size_t kShort = 2000;  // points of all fits
  return series_.Size() > 1 && series_.Size() * series_.Rows() * starts_.size() >= kShort &&
         ThreadCount(settings_.Threads) > 1 &&
         std::ranges::all_of(starts_, [](const FailedFit& start) { return start.Object.Model->RunsOverBlocks(); });
}

std::unique_ptr<ModelCollection> SeriesRun::Twins() const {
  auto twins = std::make_unique<ModelCollection>();
  for (const FailedFit& start : starts_) twins->Add(start.Object.Model->id, start.Object.Model->CopyTo());
  return twins;
}

std::vector<SeriesFit> SeriesRun::SideBySide(std::string& log, SolveProgress& form) {
  struct Column {
    explicit Column(const SideWishes& wishes) : Form(wishes) {}
    SideForm Form;
    std::string Log;
    std::optional<Fits> Solved;
  };
  constexpr std::size_t kAhead = 1000;  // columns that are kept while an earlier one takes longer
  Settings each = settings_;
  each.Threads = std::max(1, ThreadCount(settings_.Threads) / Count());
  SideWishes wishes(form);
  std::vector<std::unique_ptr<Column>> columns(series_.Size());
  std::mutex lock;
  std::vector<std::unique_ptr<ModelCollection>> idle;  // as many as there were threads at work
  Fits all;
  std::size_t taken = 0;
  OrderedTasks tasks{.Count = columns.size(), .Ahead = std::min(columns.size(), kAhead)};
  tasks.Prepare = [&](std::size_t i) {
    columns[i] = std::make_unique<Column>(wishes);
    return true;
  };
  tasks.Do = [&](std::size_t i, std::stop_token stop) {
    std::unique_ptr<ModelCollection> models;
    {
      const std::lock_guard guard(lock);
      if (!idle.empty()) {
        models = std::move(idle.back());
        idle.pop_back();
      }
    }
    if (!models) models = Twins();
    columns[i]->Form.Start(std::move(stop));
    columns[i]->Solved = SolveColumn(i, *models, each, columns[i]->Log, columns[i]->Form);
    const std::lock_guard guard(lock);
    idle.push_back(std::move(models));
  };
  tasks.Finish = [&](std::size_t i) {
    log += columns[i]->Log;
    std::ranges::move(*columns[i]->Solved, std::back_inserter(all));
    columns[i].reset();
    ++taken;
    if (taken < columns.size()) form.SetProgress(static_cast<int>(taken), Count());
    return !form.Aborted;
  };
  tasks.KeepGoing = [&] {
    columns[taken]->Form.ShowOn(form);
    return wishes.Hear(form);
  };
  form.SetProgress(0, Count());
  if (!form.Aborted && !RunInOrder(tasks, settings_.Threads) && taken < columns.size() && columns[taken])
    log += columns[taken]->Log;  // as far as it went
  return all;
}

}  // namespace

bool SeriesAnswers::AnySolved() const {
  return std::ranges::any_of(Fits, [](const SeriesFit& fit) { return fit.Rank > 0; });
}

SeriesAnswers SolveSeries(const SeriesData& series, const ModelCollection& models, const Settings& settings,
                          int sortKey, std::string& log, SolveProgress& form) {
  SeriesAnswers answers;
  answers.Names = series.Names();
  for (const auto& model : models) {
    if (!model->Solve) continue;
    ++answers.Models;
    for (int i = 1; i <= model->NumDependentVar(); ++i)
      if (std::ranges::find(answers.Coefficients, model->Variables(i)) == answers.Coefficients.end())
        answers.Coefficients.push_back(model->Variables(i));
  }
  form.Show(true);
  const auto count = static_cast<int>(series.Size());
  SeriesRun run(series, models, settings, sortKey);
  answers.Fits = run.CanBeSideBySide() ? run.SideBySide(log, form) : run.InTurn(log, form);
  answers.Aborted = form.Aborted;
  if (!form.Aborted) form.SetProgress(count, count);
  form.Show(false);
  if (answers.Aborted) LogAbort(log);
  return answers;
}

}  // namespace quorvex
