#include "desktop/SolveDialogs.h"

#include "desktop/Regress.h"
#include "desktop/quorvexWindow.h"
#include "files/GroupFileStore.h"
#include "results/ui/reginit.h"
#include "solve/ui/ClearFits.h"
#include "solve/ui/Groups.h"
#include "solve/ui/Interp.h"
#include "solve/ui/Solve.h"
#include "solve/ui/SolveFailed.h"
#include "solve/ui/SolveLog.h"
#include "solve/ui/SolveSetup.h"

namespace quorvex {

bool SolveDialogs::SolveSetup(SolveChoice& choice) { return ShowSolveSetup(&window_, choice); }
bool SolveDialogs::Regress(ModelPick& pick) { return ShowRegress(window_, pick); }
bool SolveDialogs::Groups(GroupPick& pick) { return ShowGroups(&window_, pick, window_.User()); }

std::vector<InterpClass*> SolveDialogs::Interp(std::vector<InterpClass>& curves) {
  return ChooseInterpolations(&window_, curves);
}

bool SolveDialogs::ClearFits(FitClearing& clearing) { return ShowClearFits(&window_, clearing, window_.User()); }
void SolveDialogs::SolveLog(const std::string& log, std::size_t from) { ShowSolveLog(&window_, log, from); }

std::unique_ptr<SolveProgress> SolveDialogs::OpenProgress() {
  emit window_.SolveBegins();
  return std::make_unique<Solve>(window_.window());
}

WayOn SolveDialogs::SolveFailed(FailedSolve& failed) { return ShowSolveFailed(&window_, failed); }

bool SolveDialogs::InitialEstimates(ModelClass& model) {
  return SpecifyEstimates(&window_, window_.Document(), window_.Editor(), model, window_.Preferences());
}

void SolveDialogs::RunEnded() { window_.Refresh(); }

std::unique_ptr<GroupStore> SolveDialogs::OpenGroupStore(std::size_t independentVariables) {
  return OpenGroupFile(independentVariables);
}

void SolveDialogs::GoTo(const CellPlace& cell) { window_.GoTo(cell); }

}  // namespace quorvex
