#include "project/ProjectEditor.h"

#include <algorithm>

namespace quorvex {

ProjectEditor::ProjectEditor(Project& project, const Settings& settings, Prompter& user)
    : Edit{project.Sheet,
           project.Locale,
           user,
           {},
           [this](const UndoLabel& label, const CellRange& range) { Push(label, range); }},
      project_(project),
      settings_(settings) {
  undo_.Init(project.Sheet);
}

UndoOutcome ProjectEditor::UpdateUndoMenu(int& action, const UndoLabel* label, const CellRange& range) {
  UndoOutcome outcome;
  if (action == kLeaveUndo) return outcome;
  // As the preferences have it now: only a failure ends undo for good.
  const auto levels = static_cast<std::size_t>(std::max(0, settings_.Integer("undolevels")));
  if (undo_.Enabled() && levels == 0) {
    if (!toldDisabled_) Edit.User.Refuse("Cannot UNDO, the UNDO feature has been disabled.");
    action = kResetUndo;
  }
  toldDisabled_ = levels == 0;  // once said, it is known
  if (action == kResetUndo || !undo_.Enabled()) {
    undo_.Reset();
    Menu = UndoMenu();
  } else if (action == kPushUndo && label != nullptr) {
    const auto solved = [](const auto& item) { return item.Solved; };
    const bool saveRegression =
        std::any_of(project_.Models.begin(), project_.Models.end(), [](const auto& model) { return model->Solved; });
    const bool saveInterpolation = std::any_of(project_.Interpolations.begin(), project_.Interpolations.end(), solved);
    if (undo_.PushEvent(*label, range, project_.Models, project_.Interpolations, saveRegression, saveInterpolation,
                        levels)) {
      Menu = {label->Text, true, true};
    } else {
      StopUndo("An error occurred memorizing this transaction, possibly due to memory requirements.", action);
    }
  } else if (action == kPopUndo) {
    outcome = undo_.PopEvent(project_.Models, project_.Interpolations);
    if (outcome.Ok) {
      project_.Changed = true;
      ShowNewest(outcome);
      if (outcome.LostModels > 0)
        Edit.User.Inform(std::to_string(outcome.LostModels) +
                         " user defined model(s) could not be recovered because the definition has changed after this "
                         "UNDO level.");
    } else {
      StopUndo("An error occurred UNDO-ing this transaction, possibly due to memory requirements.", action);
    }
  } else {
    StopUndo("An error occurred with the UNDO feature.", action);
  }
  return outcome;
}

UndoOutcome ProjectEditor::EditUndo() {
  int action = kPopUndo;
  return UpdateUndoMenu(action);
}

std::vector<std::string> ProjectEditor::UndoHistory() {
  std::vector<std::string> labels;
  if (!undo_.ListUndoEvents(labels)) {
    Edit.User.Refuse("Error retrieving Undo history.");
    return {};
  }
  std::reverse(labels.begin(), labels.end());
  for (std::size_t i = 0; i < labels.size(); ++i) labels[i] = std::to_string(i + 1) + "\t" + labels[i];
  return labels;
}

UndoOutcome ProjectEditor::UndoNewest(std::size_t count) {
  UndoOutcome all;
  for (std::size_t i = 0; i < count; ++i) {
    UndoOutcome one = EditUndo();
    one.DataRestored |= all.DataRestored;
    one.RegressionChanged |= all.RegressionChanged;
    one.InterpolationChanged |= all.InterpolationChanged;
    one.LostModels += all.LostModels;
    all = one;
    if (!one.Ok) break;
  }
  return all;
}

void ProjectEditor::ForgetNewest() {
  const UndoOutcome outcome = undo_.ClearEvent();
  if (outcome.Ok) ShowNewest(outcome);
}

void ProjectEditor::Push(const UndoLabel& label, const CellRange& range) {
  int action = kPushUndo;
  // First of all: the step keeps the solutions that are dropped below.
  UpdateUndoMenu(action, &label, range);
  project_.Changed = true;
  const UndoExtent extent = ExtentOf(label.Operation);
  // These leave the numbers as they are; after any other change the solutions are those of other data.
  if (extent != UndoExtent::Formats && extent != UndoExtent::Headers && extent != UndoExtent::Models) DropSolutions();
}

void ProjectEditor::ShowNewest(const UndoOutcome& outcome) {
  Menu = {outcome.NextLabel, outcome.MoreLeft, outcome.MoreLeft};
}

void ProjectEditor::StopUndo(const std::string& cause, int& action) {
  undo_.Disable();
  Menu = UndoMenu();
  action = kResetUndo;
  Edit.User.Refuse(cause + " Quorvex will continue without UNDO in the current window.");
}

// A model that was never solved keeps the estimates that its user has chosen.
void ProjectEditor::DropSolutions() {
  for (const auto& model : project_.Models)
    if (model->Solved) model->Datachange();
  for (InterpClass& interpolation : project_.Interpolations) interpolation.Datachange();
}

}  // namespace quorvex
