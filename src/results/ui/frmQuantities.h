#pragma once

#include <QDialog>

#include "core/ui/MessageBoxPrompter.h"
#include "engine/ModelClass.h"
#include "project/ProjectEditor.h"

class QPlainTextEdit;

namespace quorvex {

// Asks which quantities of a model's coefficients are to be reported. Accepted: they are those of the model.
class frmQuantities : public QDialog {
  Q_OBJECT

 public:
  // Editor and model outlive the dialog.
  frmQuantities(QWidget* parent, ProjectEditor& editor, ModelClass& model);

  void accept() override;

 private:
  ProjectEditor& editor_;
  ModelClass& model_;
  MessageBoxPrompter user_;
  QPlainTextEdit* quantities_;
};

}  // namespace quorvex
