#include "solve/ProjectSolver.h"

#include <algorithm>
#include <utility>

#include "core/Files.h"
#include "engine/FitEach.h"
#include "engine/RankModels.h"
#include "sheet/PointsNeeded.h"

namespace quorvex {
namespace {

// Raises a flag for the length of a block, whatever ends it.
class Turn {
 public:
  explicit Turn(bool& flag) : flag_(flag) { flag_ = true; }
  ~Turn() { flag_ = false; }
  Turn(const Turn&) = delete;
  Turn& operator=(const Turn&) = delete;

 private:
  bool& flag_;
};

}  // namespace

std::optional<std::size_t> ProjectSolver::SolveRegression() {
  const std::optional<GatheredData> data = Gather();
  if (!data) return std::nullopt;
  const std::optional<Request> request = SelectModels();
  return request ? Run(*data, *request) : std::nullopt;
}

std::optional<std::size_t> ProjectSolver::SolveInterpolation() {
  if (project_.Sheet.IndependentVariables != 1) {
    user_.Refuse("An interpolation needs data with one independent variable.");
    return std::nullopt;
  }
  const std::optional<GatheredData> data = Gather();
  if (!data) return std::nullopt;
  const std::vector<InterpClass*> chosen = windows_.Interp(project_.Interpolations);
  if (chosen.empty()) return std::nullopt;
  Request request{
      chosen.size() == 1 ? UndoLabelOfModel(UndoOperation::Solve, chosen[0]->id) : UndoOperation::SolveGroup, {}};
  for (InterpClass* curve : chosen) request.Objects.push_back({nullptr, curve});
  return Run(*data, request);
}

void ProjectSolver::SolveSeries() {
  const std::optional<SeriesData> series = windows_.ChooseSeries(project_.Sheet.IndependentVariables);
  if (!series) return;
  const std::optional<Request> request = SelectModels();
  if (!request) return;
  // Their twins are solved, so that the solutions of the project stay.
  ModelCollection models;
  for (const SolvedItem& one : request->Objects) {
    if (!CanBeSolved(*one.Model, project_.Sheet)) continue;
    std::unique_ptr<ModelClass> twin = one.Model->CopyTo();
    twin->Solve = true;
    twin->Solved = false;
    twin->SolveType = request->SolveType;
    const std::string id = twin->id;
    models.Add(id, std::move(twin));
  }
  for (const auto& model : project_.Models) model->SpecifyIC = model->SpecifyICComplete = false;
  if (models.size() == 0) return user_.Refuse("There are no equations to solve.");
  const Settings settings = SettingsOf(*request);
  log_.clear();
  SeriesAnswers answers = [&] {
    const std::unique_ptr<SolveProgress> progress = windows_.OpenProgress();
    const Turn running(running_);
    return quorvex::SolveSeries(*series, models, settings, settings_.Integer("sortindex"), log_, *progress);
  }();
  if (answers.Aborted) user_.Inform(kSolutionAborted);
  if (!answers.Fits.empty()) windows_.ShowSeries(std::move(answers));
}

std::optional<std::size_t> ProjectSolver::SolveWhatFailed() {
  std::vector<FailedFit> left = StillUnsolved();
  if (left.empty()) {
    user_.Inform("The last solve left nothing without a solution.");
    return std::nullopt;
  }
  const std::optional<GatheredData> data = Gather();
  if (!data) return std::nullopt;
  const std::string message = left.size() == 1
                                  ? "1 model of the last solve has no solution."
                                  : std::to_string(left.size()) + " models of the last solve have no solution.";
  FailedSolve failed(message, left, data->Points, project_.Locale);
  const std::optional<Request> request = AskWayOn(failed);
  return request ? Run(*data, *request, std::move(left), log_) : std::nullopt;
}

// The complete rows of the sheet, where they are enough and the user does not mind the others.
std::optional<GatheredData> ProjectSolver::Gather() {
  GatheredData gathered = GatherData(project_.Sheet);
  const DataSheet& sheet = project_.Sheet;
  // Behind the question the user sees the cell that it is about.
  if (AsksToLeaveOut(gathered, settings_)) windows_.GoTo(gathered.FirstLeftOut);
  if (!EnoughPointsToSolve(gathered.Points.N(), user_, TextRowsText(gathered, sheet)) ||
      !MayLeaveOut(gathered, sheet, settings_, user_))
    return std::nullopt;
  return gathered;
}

// Nothing where the user cancels.
std::optional<ProjectSolver::Request> ProjectSolver::SelectModels() {
  SolveChoice choice = StoredSolveChoice(settings_);
  if (settings_.Flag("promptforsetup")) {
    if (!windows_.SolveSetup(choice)) return std::nullopt;
    if (choice.UseAsDefault) StoreSolveChoice(settings_, choice);
  }
  loss_ = choice.Loss;
  lossScale_ = choice.LossScale;
  // The linear solver knows nothing but the linear forms of built-in models.
  const auto canTakePart = [&](const ModelClass& model) { return choice.SolveType != 1 || !model.UserType; };
  const bool harder = choice.TryHarder;
  absoluteDeviations_ = choice.AbsoluteDeviations;
  switch (choice.Models) {
    case ModelSelection::SingleModel: {
      ModelPick pick(project_.Models, project_.Sheet.IndependentVariables, settings_);
      if (!windows_.Regress(pick)) return std::nullopt;
      return Request{UndoLabelOfModel(UndoOperation::Solve, pick.Chosen()->id),
                     {{pick.Chosen(), nullptr}},
                     choice.SolveType,
                     harder};
    }
    case ModelSelection::Groups: {
      const auto store = windows_.OpenGroupStore(project_.Sheet.IndependentVariables);
      GroupPick pick(project_.Models, settings_, *store);
      if (!windows_.Groups(pick)) return std::nullopt;
      const auto chosen = [&](const ModelClass& model) { return canTakePart(model) && pick.Contains(model); };
      return Request{UndoOperation::SolveGroup, ModelsThat(chosen), choice.SolveType, harder};
    }
    case ModelSelection::AllModels:
      return Request{UndoOperation::SolveAll, ModelsThat(canTakePart), choice.SolveType, harder};
    default: {
      Request request{UndoOperation::SolveLast, ModelsThat(&ModelClass::Solved), choice.SolveType, harder};
      if (!request.Objects.empty()) return request;
      user_.Refuse("The previous solved list is empty.");
      return std::nullopt;
    }
  }
}

// None of them with estimates of its user's own.
std::vector<SolvedItem> ProjectSolver::ModelsThat(const std::function<bool(const ModelClass&)>& wanted) {
  std::vector<SolvedItem> models;
  for (const auto& model : project_.Models) {
    if (!wanted(*model)) continue;
    model->SpecifyIC = false;
    models.push_back({model.get(), nullptr});
  }
  return models;
}

// `left` is what runs before have not solved, and `log` their account.
std::optional<std::size_t> ProjectSolver::Run(const GatheredData& data, Request request, std::vector<FailedFit> left,
                                              std::string log) {
  std::vector<SolvedItem> solved;
  for (;;) {
    SolveOutcome outcome = RunOnce(data, request);
    if (outcome.Asked != 0) {
      log_.insert(0, log);
      log = log_;
    }
    // What is tried again stands before what is not. A run that was broken off tells nothing new of it.
    if (!outcome.Aborted)
      std::erase_if(left, [&](const FailedFit& one) {
        return std::ranges::find(request.Objects, one.Object) != request.Objects.end();
      });
    left.insert(left.begin(), outcome.Failed.begin(), outcome.Failed.end());
    if (outcome.Asked != 0) Keep(left);
    solved.insert(solved.end(), outcome.Solved.begin(), outcome.Solved.end());
    if (outcome.Asked != 0) windows_.RunEnded();
    // While the user reads, the solutions can be kept.
    if (outcome.Asked == 0 || outcome.Aborted || left.empty()) {
      TellOutcome(outcome, user_);
      if (outcome.Asked == 0 || outcome.Aborted) return std::nullopt;
      break;
    }
    FailedSolve failed(Summary(outcome), left, data.Points, project_.Locale);
    std::optional<Request> next = AskWayOn(failed);
    if (!next) break;
    request = std::move(*next);
  }
  return FirstOf(SolvedItems(project_, settings_.Integer("sortindex")), solved);
}

void ProjectSolver::Keep(const std::vector<FailedFit>& left) {
  left_.clear();
  for (const FailedFit& fit : left) left_.emplace_back(fit.Object.Name(), fit);
}

// What the last solve left, as far as it is still there and has no solution from elsewhere.
std::vector<FailedFit> ProjectSolver::StillUnsolved() {
  std::vector<FailedFit> fits;
  for (const auto& [name, kept] : left_) {
    SolvedItem object;
    if (kept.Object.Model != nullptr) {
      ModelClass* model = project_.Models.Find(name);
      if (model == nullptr || model->Solved || !CanBeSolved(*model, project_.Sheet)) continue;
      // Under the name of a model that was edited, estimates are those of another one.
      if (static_cast<std::size_t>(model->NumDependentVar()) != kept.Values.size()) continue;
      object.Model = model;
    } else {
      const auto curve = std::ranges::find(project_.Interpolations, name, &InterpClass::id);
      if (curve == project_.Interpolations.end() || curve->Solved) continue;
      object.Interpolation = &*curve;
    }
    fits.push_back(kept);
    fits.back().Object = object;
  }
  return fits;
}

// What is to be solved next; nothing where the user leaves it at that.
std::optional<ProjectSolver::Request> ProjectSolver::AskWayOn(FailedSolve& failed) {
  for (;;) {
    const WayOn way = windows_.SolveFailed(failed);
    if (way == WayOn::Close || failed.Chosen.empty()) return std::nullopt;
    if (way == WayOn::ViewLog) {
      ShowLog(failed.Fits()[failed.Chosen.front()].Object.Model);
    } else if (way == WayOn::InitialEstimates) {
      const FailedFit& fit = failed.Fits()[failed.Chosen.front()];
      ModelClass& model = *fit.Object.Model;
      // The dialog begins with those that failed: the user's, or else the program's own.
      TakeStart(fit, model);
      if (windows_.InitialEstimates(model))
        return Request{UndoLabelOfModel(UndoOperation::Solve, model.id), {fit.Object}};
      model.SpecifyICComplete = false;
    } else {
      Request request{UndoOperation::SolveGroup, {}, 0, true};
      for (const std::size_t i : failed.Chosen) {
        if (!failed.CanTryHarder(i)) continue;
        const FailedFit& fit = failed.Fits()[i];
        TakeStart(fit, *fit.Object.Model);
        request.Objects.push_back(fit.Object);
      }
      if (request.Objects.empty()) continue;
      if (request.Objects.size() == 1)
        request.Label = UndoLabelOfModel(UndoOperation::Solve, request.Objects[0].Name());
      return request;
    }
  }
}

Settings ProjectSolver::SettingsOf(const Request& request) const {
  Settings settings = settings_;
  settings.TryHarder = request.TryHarder;
  settings.AbsoluteDeviations = absoluteDeviations_;
  settings.Loss = loss_;
  settings.LossScale = lossScale_;
  return settings;
}

// One run, its solutions in the project. Nothing is changed where there is nothing to solve.
SolveOutcome ProjectSolver::RunOnce(const GatheredData& data, const Request& request) {
  const auto canBeSolved = [this](const SolvedItem& one) {
    return one.Interpolation != nullptr || CanBeSolved(*one.Model, project_.Sheet);
  };
  // This also says that a solve begins, the last moment at which a copy of the project can be kept.
  const std::unique_ptr<SolveProgress> progress = windows_.OpenProgress();
  // Before the models are touched: the snapshot holds the solutions as they were made.
  if (std::ranges::any_of(request.Objects, canBeSolved)) editor_.Edit.PushUndo(request.Label, {});
  for (const auto& model : project_.Models) model->Solve = false;
  for (InterpClass& curve : project_.Interpolations) curve.Solve = false;
  std::vector<std::pair<SolvedItem, int>> before;  // solutions, and by which solver they were found
  for (const SolvedItem& one : request.Objects) {
    if (one.Interpolation != nullptr) {
      one.Interpolation->Solve = true;
    } else {
      if (one.Model->Solved) before.emplace_back(one, one.Model->SolveType);
      one.Model->Solve = true;
      one.Model->SolveType = request.SolveType;
    }
  }
  const Settings settings = SettingsOf(request);
  std::string log;
  SolveOutcome outcome = [&] {
    // Models are half changed while they are fitted: who wants to keep a copy of the project waits for the end.
    const Turn running(running_);
    return RunSolve(project_, data.Points, settings, log, *progress);
  }();
  if (outcome.Asked == 0) return outcome;
  log_ = std::move(log);
  limits_ = {settings_.ResidualTolerance, settings_.MaxIterations, settings_.DivIterations};
  project_.Limits = *limits_;
  missing_ = data.IncompleteRows;
  for (const auto& [one, solveType] : before)  // those that an aborted run did not come to
    if (outcome.Aborted && std::ranges::find(outcome.Solved, one) == outcome.Solved.end())
      one.Model->SolveType = solveType;
  return outcome;
}

bool ProjectSolver::ClearFits(const std::vector<SolvedItem>& selected) {
  const int sortIndex = settings_.Integer("sortindex");
  std::vector<SolvedItem> list = SolvedItems(project_, sortIndex);
  if (list.empty()) {
    user_.Refuse("There are no solutions to clear.");
    return false;
  }
  FitClearing clearing(std::move(list), selected, sortIndex, project_.Locale.DecimalSeparator);
  if (!windows_.ClearFits(clearing)) return false;
  const std::vector<SolvedItem> chosen = clearing.Chosen();
  if (chosen.empty()) return false;
  editor_.Edit.PushUndo(UndoOperation::ClearFits, {});
  for (const SolvedItem& solution : chosen)
    (solution.Model != nullptr ? solution.Model->Solved : solution.Interpolation->Solved) = false;
  return true;
}

void ProjectSolver::ShowLog(const ModelClass* model) {
  if (log_.empty()) return user_.Inform("Nothing was solved since the project was opened.");
  std::size_t from = 0;
  if (model != nullptr) {
    const std::size_t name =
        log_.rfind(" for model " + (model->cfgID.empty() ? model->id : model->cfgID) + std::string(NL));
    if (name != std::string::npos && name > 0) from = log_.rfind('\n', name) + 1;  // 0 where it is the first line
  }
  windows_.SolveLog(log_, from);
}

bool ProjectSolver::SaveGroup() {
  const std::vector<ModelClass*> solved = RankModels(project_.Models, settings_.Integer("sortindex"));
  if (solved.empty()) {
    user_.Refuse("There are no solved equations to save as a group.");
    return false;
  }
  if (!user_.Ask("This operation will create or overwrite the user defined equation group file with the currently "
                 "solved equations only. " +
                 std::string(NL) + "Do you want to continue?"))
    return false;
  std::vector<std::string> ids;
  for (const ModelClass* model : solved) ids.push_back(model->id);
  const auto store = windows_.OpenGroupStore(project_.Sheet.IndependentVariables);
  const bool saved = store->Write(ids);
  saved ? user_.Inform("Group file saved to '" + store->Path() + "'.")
        : user_.Refuse("Error writing to '" + store->Path() + "'.");
  return saved;
}

}  // namespace quorvex
