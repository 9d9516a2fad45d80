#pragma once

#include <QDialog>

#include "core/Settings.h"
#include "core/ui/MessageBoxPrompter.h"
#include "engine/ModelClass.h"

class QComboBox;
class QPlainTextEdit;

namespace quorvex {

struct CodeLanguage;

// A model as code of the language that the user chooses, to be copied or saved. The language is remembered.
class frmModelCode : public QDialog {
  Q_OBJECT

 public:
  // Model and settings outlive the dialog.
  frmModelCode(QWidget* parent, ModelClass& model, Settings& settings);

 private:
  const CodeLanguage& Language() const;
  void ShowCode();

  ModelClass& model_;
  Settings& settings_;
  MessageBoxPrompter user_;
  QComboBox* cmbLanguage;
  QPlainTextEdit* txtCode;
};

}  // namespace quorvex
