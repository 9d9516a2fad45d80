#pragma once

#include <QDialog>

#include "core/Settings.h"
#include "core/ui/MessageBoxPrompter.h"
#include "files/UserModelFiles.h"
#include "usermodels/UserModelDraft.h"

class QListWidget;
class QPlainTextEdit;

namespace quorvex {

// The user-defined models of a project, and what can be done with them. The project, which outlives the dialog, changes
// with each command.
class usereq : public QDialog {
  Q_OBJECT

 public:
  usereq(QWidget* parent, Project& project, const Settings& settings);

 private:
  void LayOut();
  void ShowModels(const std::string& current);  // the ID of the one that is to be selected
  void ShowChosen();
  ModelClass* Chosen() const;
  void Edit(const UserModelDraft& start, const ModelClass* edited);
  void EditChosen();
  void EditRules(ModelClass& model);

  Project& project_;
  const Settings& settings_;
  MessageBoxPrompter user_;
  QListWidget* lstModels;
  QPlainTextEdit* txtModel;
  QList<QWidget*> forOne_;  // commands that need a model
};

void ShowUserModels(QWidget* over, Project& project, const Settings& settings);

// The commands that read models from a file, with their dialogs over a window: for the file, which begins in the folder
// of projects, and for two models with one ID.
void LoadUserModels(QWidget* over, Project& project, const Settings& settings, Prompter& user);
void ImportUserModels(QWidget* over, Project& project, const Settings& settings, Prompter& user);

}  // namespace quorvex
