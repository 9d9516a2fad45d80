#pragma once

#include <QDialog>
#include <functional>
#include <vector>

#include "solve/ModelPick.h"

class QButtonGroup;
class QCheckBox;
class QLabel;
class QListWidget;
class QPlainTextEdit;
class QPushButton;

namespace quorvex {

// What Regress opens and does not know: each may be missing, and then there is no button for it.
struct RegressTools {
  std::function<void(QWidget* over)> EditUserModels;
  std::function<void(QWidget* over, ModelClass& model)> SpecifyEstimates;
};

// Picks the one model to solve.
class Regress : public QDialog {
  Q_OBJECT

 public:
  // All three outlive the dialog.
  Regress(QWidget* parent, ModelPick& pick, Prompter& user, const RegressTools& tools);

 private:
  void LayOut();
  void ListModels();
  void ShowModel();
  void EditUserModels();
  void SpecifyEstimates();
  void Accept();
  ModelClass* Chosen() const;

  ModelPick& pick_;
  Prompter& user_;
  const RegressTools& tools_;
  std::vector<ModelClass*> listed_;

  QButtonGroup* optWhichModels;
  QListWidget* eq_list;
  QPlainTextEdit* definition_text;
  QLabel *description_label, *group_label;
  QCheckBox* enforce_override;
  QPushButton *specify_command, *add_command, *solve_command, *cancel_command;
};

}  // namespace quorvex
