#pragma once

#include "solve/ProjectSolver.h"

namespace quorvex {

class quorvexWindow;

// The dialogs of a solve over the window of its project.
class SolveDialogs : public SolveWindows {
 public:
  explicit SolveDialogs(quorvexWindow& window) : window_(window) {}

  bool SolveSetup(SolveChoice& choice) override;
  bool Regress(ModelPick& pick) override;
  bool Groups(GroupPick& pick) override;
  std::vector<InterpClass*> Interp(std::vector<InterpClass>& curves) override;
  bool ClearFits(FitClearing& clearing) override;
  void SolveLog(const std::string& log, std::size_t from) override;
  std::unique_ptr<SolveProgress> OpenProgress() override;
  WayOn SolveFailed(FailedSolve& failed) override;
  bool InitialEstimates(ModelClass& model) override;
  void RunEnded() override;
  std::optional<SeriesData> ChooseSeries(std::size_t independentVariables) override;
  void ShowSeries(SeriesAnswers answers) override;
  std::unique_ptr<GroupStore> OpenGroupStore(std::size_t independentVariables) override;
  void GoTo(const CellPlace& cell) override;

 private:
  quorvexWindow& window_;
};

}  // namespace quorvex
