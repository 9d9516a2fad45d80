#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "project/ProjectEditor.h"
#include "solve/FailedSolve.h"
#include "solve/FitClearing.h"
#include "solve/GatherData.h"
#include "solve/GroupPick.h"
#include "solve/ModelPick.h"
#include "solve/RunSolve.h"
#include "solve/SolveChoice.h"
#include "solve/SolveSeries.h"

namespace quorvex {

// The dialogs and the progress window of a solve, over whatever shows the project. A dialog hands its choice to the
// `Accept` of what it is given before it closes, and returns false where the user cancels.
class SolveWindows {
 public:
  virtual ~SolveWindows() = default;

  virtual bool SolveSetup(SolveChoice& choice) = 0;
  virtual bool Regress(ModelPick& pick) = 0;
  virtual bool Groups(GroupPick& pick) = 0;
  // The interpolations to be solved; none where the user cancels.
  virtual std::vector<InterpClass*> Interp(std::vector<InterpClass>& curves) = 0;
  virtual bool ClearFits(FitClearing& clearing) = 0;
  virtual void SolveLog(const std::string& log, std::size_t from) = 0;  // begins at that character
  // Called while the project is still as it was before the run.
  virtual std::unique_ptr<SolveProgress> OpenProgress() = 0;
  // Tells what failed and asks for a way on; the fits that it is for become Chosen.
  virtual WayOn SolveFailed(FailedSolve& failed) = 0;
  // Estimates of the user's own; false where they cancel.
  virtual bool InitialEstimates(ModelClass& model) = 0;
  // The run is over. Its solutions are to be seen before their summary is told.
  virtual void RunEnded() = 0;
  virtual std::unique_ptr<GroupStore> OpenGroupStore(std::size_t independentVariables) = 0;
  // The columns of a file, chosen by the user for models of so many variables; nothing where they cancel.
  virtual std::optional<SeriesData> ChooseSeries(std::size_t independentVariables) = 0;
  virtual void ShowSeries(SeriesAnswers answers) = 0;
  // Shows the cell that the user is about to be asked about.
  virtual void GoTo(const CellPlace& cell) = 0;
};

// The commands that make and clear the solutions of a project. All it is made of outlives it.
class ProjectSolver {
 public:
  ProjectSolver(Project& project, ProjectEditor& editor, Settings& settings, Prompter& user, SolveWindows& windows)
      : project_(project), editor_(editor), settings_(settings), user_(user), windows_(windows) {}

  // Solve models, chosen by the user or by the stored setup, or interpolations. Nothing is changed where a check on the
  // data fails or the user cancels. Where something fails, the user is shown ways on, and what they choose is solved in
  // a run of its own. Returns the place in the solved list of the best of all; nothing where nothing was solved or the
  // last run was aborted.
  std::optional<std::size_t> SolveRegression();
  std::optional<std::size_t> SolveInterpolation();
  // Shows again what of the last solve has no solution yet, with the ways on; solves and returns as the above.
  std::optional<std::size_t> SolveWhatFailed();

  // Solves models of the project, chosen as for its own data, on each column of a file, and shows what comes of it. The
  // project stays as it is.
  void SolveSeries();

  // Whether the user wants to see the results of a solve at once.
  bool ShowsResults() const { return settings_.Integer("autoresults") != 0; }

  // Clears solutions, by the user's choice, which begins with the selected ones. False where nothing was cleared.
  bool ClearFits(const std::vector<SolvedItem>& selected);

  // Shows the account of the last solve, where there was one; of a model, the last of its own.
  void ShowLog(const ModelClass* model = nullptr);

  // Makes the solved models, in the order of the list, the user-specified group. False where it was not written.
  bool SaveGroup();

  // A run is going on: models are between one state and the next.
  bool Running() const { return running_; }
  // The account of the last solve; empty before the first.
  const std::string& Log() const { return log_; }
  // The limits of the last solve, and how many rows it left out; nothing before the first.
  const std::optional<SolveLimits>& LimitsOfLastSolve() const { return limits_; }
  std::size_t MissingPoints() const { return missing_; }

 private:
  // What is to be solved, and how the solve is called for undo.
  struct Request {
    UndoLabel Label;
    std::vector<SolvedItem> Objects;  // to be solved
    int SolveType = 0;                // of the models
    bool TryHarder = false;           // from the first search on
  };

  std::optional<GatheredData> Gather();
  std::optional<Request> SelectModels();
  std::vector<SolvedItem> ModelsThat(const std::function<bool(const ModelClass&)>& wanted);
  std::optional<std::size_t> Run(const GatheredData& data, Request request, std::vector<FailedFit> left = {},
                                 std::string log = {});
  void Keep(const std::vector<FailedFit>& left);
  std::vector<FailedFit> StillUnsolved();
  Settings SettingsOf(const Request& request) const;
  SolveOutcome RunOnce(const GatheredData& data, const Request& request);
  std::optional<Request> AskWayOn(FailedSolve& failed);

  Project& project_;
  ProjectEditor& editor_;
  Settings& settings_;
  Prompter& user_;
  SolveWindows& windows_;
  std::string log_;
  // What the last solve left, by name: by the time it is asked for, the objects may be gone or others.
  std::vector<std::pair<std::string, FailedFit>> left_;
  // Chosen with the last setup, for what is tried again, too.
  bool absoluteDeviations_ = false;
  LossKind loss_ = LossKind::Squares;
  double lossScale_ = 0;
  std::optional<SolveLimits> limits_;
  std::size_t missing_ = 0;
  bool running_ = false;
};

}  // namespace quorvex
