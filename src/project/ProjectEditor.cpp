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
  undo_.Init(project.Sheet, project.Locale);
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
    if (undo_.PushEvent(*label, range, project_.Models, project_.Interpolations, levels)) {
      Menu = {.UndoText = label->Text, .UndoEnabled = true, .HistoryEnabled = true};
    } else {
      StopUndo("An error occurred memorizing this transaction, possibly due to memory requirements.", action);
    }
  } else if (action == kPopUndo) {
    outcome = undo_.PopEvent(project_.Models, project_.Interpolations);
    if (outcome.Ok) {
      Tell(outcome);
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

UndoOutcome ProjectEditor::EditRedo() {
  if (!Menu.RedoEnabled) return {};
  std::vector<ModelClass*> solved = SolvedModels();
  const UndoOutcome outcome = undo_.RedoEvent(project_.Models, project_.Interpolations);
  int action = kPushUndo;
  if (!outcome.Ok)
    StopUndo("An error occurred with the UNDO feature.", action);
  else
    Tell(outcome);
  // As when the operation was made first. With other columns there are other models.
  std::erase_if(solved, [&](const ModelClass* model) {
    return std::ranges::none_of(project_.Models, [&](const auto& there) { return there.get() == model; });
  });
  if (outcome.DataRestored) DropSolutions(solved);
  return outcome;
}

std::vector<std::string> ProjectEditor::UndoHistory() {
  std::vector<std::string> labels;
  if (!undo_.ListUndoEvents(labels)) {
    Edit.User.Refuse("Error retrieving Undo history.");
    return {};
  }
  std::reverse(labels.begin(), labels.end());
  for (std::size_t i = 0; i < labels.size(); ++i) labels[i] = std::to_string(i + 1) + "\t" + labels[i];
  std::vector<std::string> lines = undo_.ListRedoEvents();
  for (std::size_t i = 0; i < lines.size(); ++i) lines[i] = "+" + std::to_string(lines.size() - i) + "\t" + lines[i];
  lines.insert(lines.end(), labels.begin(), labels.end());
  return lines;
}

UndoOutcome ProjectEditor::Repeat(UndoOutcome (ProjectEditor::*step)(), std::size_t count) {
  UndoOutcome all;
  for (std::size_t i = 0; i < count; ++i) {
    UndoOutcome one = (this->*step)();
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
  if (outcome.Ok) ShowMenu(outcome);
}

void ProjectEditor::Push(const UndoLabel& label, const CellRange& range) {
  int action = kPushUndo;
  // First of all: the step keeps the solutions that are dropped below.
  UpdateUndoMenu(action, &label, range);
  project_.Changed = true;
  const UndoExtent extent = ExtentOf(label.Operation);
  // These leave the numbers as they are; after any other change the solutions are those of other data.
  if (extent != UndoExtent::Formats && extent != UndoExtent::Headers && extent != UndoExtent::Models)
    DropSolutions(SolvedModels());
}

void ProjectEditor::Tell(const UndoOutcome& outcome) {
  project_.Changed = true;
  ShowMenu(outcome);
  if (outcome.LostModels > 0)
    Edit.User.Inform(std::to_string(outcome.LostModels) +
                     " user defined model(s) could not be recovered because the definition has changed after this UNDO "
                     "level.");
}

void ProjectEditor::ShowMenu(const UndoOutcome& outcome) {
  const std::vector<std::string> redos = undo_.ListRedoEvents();
  Menu = {outcome.NextLabel, outcome.MoreLeft, outcome.MoreLeft || !redos.empty(),
          redos.empty() ? kCannotRedo : redos.back(), !redos.empty()};
}

void ProjectEditor::StopUndo(const std::string& cause, int& action) {
  undo_.Disable();
  Menu = UndoMenu();
  action = kResetUndo;
  Edit.User.Refuse(cause + " Quorvex will continue without UNDO in the current window.");
}

std::vector<ModelClass*> ProjectEditor::SolvedModels() const {
  std::vector<ModelClass*> solved;
  for (const auto& model : project_.Models)
    if (model->Solved) solved.push_back(model.get());
  return solved;
}

// A model that was never solved keeps the estimates that its user has chosen.
void ProjectEditor::DropSolutions(const std::vector<ModelClass*>& solved) {
  for (ModelClass* model : solved) model->Datachange();
  for (InterpClass& interpolation : project_.Interpolations) interpolation.Datachange();
}

}  // namespace quorvex
