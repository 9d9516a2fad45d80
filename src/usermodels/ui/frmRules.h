#pragma once

#include <QDialog>

#include "core/ui/MessageBoxPrompter.h"
#include "usermodels/RulesEdit.h"

class QLineEdit;
class QListWidget;

namespace quorvex {

// "User Defined Model Rules": how the initial estimates of a model are made from the data.
class frmRules : public QDialog {
  Q_OBJECT

 public:
  frmRules(QWidget* parent, const ModelClass& model, const LocaleText& locale);

  // Once accepted.
  const RulesEdit& Rules() const { return edit_; }

  void accept() override;

 private:
  void ShowLines();
  void ShowRule(int i);
  void VariableChosen(int row);
  void cmdAssign_clicked();
  void cmdDefaults_clicked();
  std::size_t Operation() const;
  std::string Value() const;

  MessageBoxPrompter user_;
  RulesEdit edit_;
  int shown_ = 1;  // the coefficient whose rule is shown
  QListWidget *lstVars, *lstOperation;
  QLineEdit* txtValue;
};

// Lets the user change the rules of a model. Returns whether that changed the model.
bool EditRules(QWidget* over, ModelClass& model, const LocaleText& locale);

}  // namespace quorvex
