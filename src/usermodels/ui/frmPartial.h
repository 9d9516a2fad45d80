#pragma once

#include <QDialog>

#include "core/ui/MessageBoxPrompter.h"
#include "usermodels/PartialsEdit.h"

class QLabel;
class QLineEdit;
class QListWidget;

namespace quorvex {

// The partial derivatives of a user-defined model, which outlives the dialog.
class frmPartial : public QDialog {
  Q_OBJECT

 public:
  frmPartial(QWidget* parent, const ModelClass& model);

  // Once accepted.
  const PartialsEdit& Partials() const { return edit_; }

  void accept() override;

 private:
  void ShowText(int i);
  void VariableChosen(int row);
  void cmdDefault_clicked();
  void Stay();

  MessageBoxPrompter user_;
  PartialsEdit edit_;
  int shown_ = 1;  // the coefficient whose derivative is shown
  QListWidget* lstVars;
  QLabel* lblPartial;
  QLineEdit* txtPartial;
};

}  // namespace quorvex
