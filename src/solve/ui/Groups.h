#pragma once

#include <QDialog>

#include "solve/GroupPick.h"

class QListWidget;
class QListWidgetItem;
class QPushButton;

namespace quorvex {

// Picks the groups of models to solve, and puts together the user's own group.
class Groups : public QDialog {
  Q_OBJECT

 public:
  // Both outlive the dialog.
  Groups(QWidget* parent, GroupPick& pick, Prompter& user);

 private:
  void LayOut();
  void ListMembers();
  void ShowState();
  void Add();
  void Remove();
  void TakeChecks();
  void Accept();

  GroupPick& pick_;
  Prompter& user_;
  QListWidget *group_list, *available_list, *member_list;
  QPushButton *add_command, *remove_command;
  QListWidgetItem *userDefined_, *userSpecified_;
};

}  // namespace quorvex
