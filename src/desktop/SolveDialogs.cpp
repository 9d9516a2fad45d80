#include "desktop/SolveDialogs.h"

#include "solve/ui/ClearFits.h"
#include "solve/ui/Groups.h"
#include "solve/ui/Interp.h"
#include "solve/ui/Solve.h"
#include "solve/ui/SolveSetup.h"

namespace quorvex {

bool SolveDialogs::SolveSetup(SolveChoice& choice) {
  quorvex::SolveSetup dialog(&over_, choice);
  if (dialog.exec() != QDialog::Accepted) return false;
  choice = dialog.Choice();
  return true;
}

bool SolveDialogs::Regress(ModelPick& pick) {
  return quorvex::Regress(&over_, pick, user_, Tools).exec() == QDialog::Accepted;
}

bool SolveDialogs::Groups(GroupPick& pick) { return quorvex::Groups(&over_, pick, user_).exec() == QDialog::Accepted; }

std::vector<InterpClass*> SolveDialogs::Interp(std::vector<InterpClass>& curves) {
  quorvex::Interp dialog(&over_, curves);
  return dialog.exec() == QDialog::Accepted ? dialog.Chosen() : std::vector<InterpClass*>();
}

bool SolveDialogs::ClearFits(FitClearing& clearing) {
  return quorvex::ClearFits(&over_, clearing, user_).exec() == QDialog::Accepted;
}

std::unique_ptr<SolveProgress> SolveDialogs::OpenProgress() {
  RunBegins();
  return std::make_unique<Solve>(over_.window(), RunEnded);
}

std::unique_ptr<GroupStore> SolveDialogs::OpenGroupStore(std::size_t independentVariables) {
  return store_.OpenGroupStore(independentVariables);
}

}  // namespace quorvex
