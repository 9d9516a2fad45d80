#include <QCheckBox>
#include <QLineEdit>

#include "Shots.h"
#include "engine/UserModel.h"
#include "files/ui/usereq.h"
#include "results/ui/frmEquationText.h"
#include "results/ui/frmExcelRef.h"
#include "results/ui/frmModelCode.h"
#include "usermodels/UserModels.h"
#include "usermodels/ui/frmChooseModel.h"
#include "usermodels/ui/frmCopyModel.h"
#include "usermodels/ui/frmEqEdit.h"
#include "usermodels/ui/frmFunc.h"
#include "usermodels/ui/frmPartial.h"
#include "usermodels/ui/frmRules.h"

namespace quorvex {
namespace {

void Take(const Shots& shots, QWidget& window, const char* name) {
  window.show();
  shots.Take(window, name);
}

ModelClass& Added(Project& project, const UserModelDraft& draft) {
  return StoreUserModel(project, CheckUserModel(draft, project, nullptr).Model, nullptr);
}

}  // namespace

// The dialogs of user-defined models and of export, with two models of a decay.
void TakeModels(const Shots& shots) {
  Project project = NewProject(1, false, {});
  ModelClass& decay =
      Added(project, {"Decay with drift",
                      "Exponential decay\r\nover a line",
                      {"a*exp(-b*x)+f1", "c+d*x"},
                      {{"a", {"* YMax", "1", "exp(-b*x)"}}, {"b", {"/ (XMax-XMin)", "2", "Numerical"}}}});
  Added(project, {"Michaelis-Menten", "", {"vmax*x/(km+x)"}, {{"vmax", {"* YMax", "1.2", "Numerical"}}}});
  const double values[] = {12.5, 0.31, 1.05, -0.02};
  for (int i = 1; i <= 4; ++i) decay.SetValue(i, values[i - 1]);

  usereq list(nullptr, project, shots.Run.Preferences);
  Take(shots, list, "models-list");
  frmEqEdit editor(nullptr, project, DraftOf(decay), &decay);
  Take(shots, editor, "models-editor");
  frmRules rules(nullptr, decay, {});
  Take(shots, rules, "models-rules");
  frmPartial partials(nullptr, decay);
  Take(shots, partials, "models-partials");
  frmFunc functions(nullptr, 1);
  functions.findChild<QLineEdit*>("txtFind")->setText("bessel");
  Take(shots, functions, "models-functions");
  std::vector<ModelClass*> all;
  for (const auto& model : project.Models) all.push_back(model.get());
  frmCopyModel copy(nullptr, "Copy Model", all);
  Take(shots, copy, "models-copy");
  const auto other = NewModelFor(1, {});
  other->SetID(decay.id, {"a*exp(-b*x)+c"});
  frmChooseModel choose(nullptr, decay, *other);
  Take(shots, choose, "models-choose");
  frmEquationText text(nullptr, decay, shots.Run.Preferences);
  text.findChild<QCheckBox*>("chkAppend")->setChecked(true);
  Take(shots, text, "models-text");
  frmModelCode code(nullptr, decay, shots.Run.Preferences);
  Take(shots, code, "models-code");
  const auto several = NewModelFor(2, {});
  several->SetID("Plane", {"a*x1+b*x2"});
  frmExcelRef formula(nullptr, *several);
  Take(shots, formula, "models-formula");
}

}  // namespace quorvex
