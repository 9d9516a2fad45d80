#include "Shots.h"
#include "core/ui/MessageBoxPrompter.h"
#include "engine/UserModel.h"
#include "results/ui/reginit.h"

namespace quorvex {

// Michaelis-Menten kinetics over velocities of an enzyme (source: tests/data/README.md, puromycin).
void TakeEstimates(const Shots& shots) {
  SolveData data;
  data.X = {{0.02, 0.02, 0.06, 0.06, 0.11, 0.11, 0.22, 0.22, 0.56, 0.56, 1.1, 1.1}};
  data.Y = {76, 47, 97, 107, 123, 139, 159, 152, 191, 201, 207, 200};
  data.SD = data.sig = std::vector<double>(data.Y.size(), 1);
  MessageBoxPrompter user(nullptr);
  Project project = NewProject(1, false, {});
  ProjectEditor editor(project, shots.Run.Preferences, user);
  const std::unique_ptr<ModelClass> model = NewModelFor(1, {});
  model->UserType = true;
  model->SetID("Michaelis-Menten", {"vm*x/(k+x)"});
  model->SetValue(1, 0.05);
  model->SetValue(2, 190);
  model->SpecifyICComplete = true;
  reginit dialog(nullptr, project, editor, *model, data, shots.Run.Preferences);
  dialog.show();
  shots.Take(dialog, "initial-estimates");
}

}  // namespace quorvex
