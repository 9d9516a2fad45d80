#pragma once

#include "project/ProjectStore.h"
#include "solve/ProjectSolver.h"
#include "solve/ui/Regress.h"

namespace quorvex {

// The dialogs of a solve over the window of its project.
class SolveDialogs : public SolveWindows {
 public:
  // All three outlive the dialogs.
  SolveDialogs(QWidget& over, Prompter& user, ProjectStore& store) : over_(over), user_(user), store_(store) {}

  RegressTools Tools;  // as far as somebody has set them
  std::function<void()> RunBegins = [] {};
  std::function<void()> RunEnded = [] {};  // shows what was solved, before the summary is told

  bool SolveSetup(SolveChoice& choice) override;
  bool Regress(ModelPick& pick) override;
  bool Groups(GroupPick& pick) override;
  std::vector<InterpClass*> Interp(std::vector<InterpClass>& curves) override;
  bool ClearFits(FitClearing& clearing) override;
  std::unique_ptr<SolveProgress> OpenProgress() override;
  std::unique_ptr<GroupStore> OpenGroupStore(std::size_t independentVariables) override;

 private:
  QWidget& over_;
  Prompter& user_;
  ProjectStore& store_;
};

}  // namespace quorvex
