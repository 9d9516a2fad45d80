#pragma once

#include <QDialog>

#include "core/Settings.h"
#include "results/EquationExport.h"

class QCheckBox;
class QPlainTextEdit;
class QRadioButton;

namespace quorvex {

// The equation of a model as text, to be copied. How it is written is remembered in the settings.
class frmEquationText : public QDialog {
  Q_OBJECT

 public:
  // Model and settings outlive the dialog.
  frmEquationText(QWidget* parent, const ModelClass& model, Settings& settings);

 private:
  void ShowText();

  const ModelClass& model_;
  Settings& settings_;
  QRadioButton* optValues;
  QRadioButton* optNames;
  QCheckBox* chkAppend;
  QPlainTextEdit* txtEquation;
};

}  // namespace quorvex
