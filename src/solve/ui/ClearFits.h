#pragma once

#include <QDialog>

#include "solve/FitClearing.h"

class QButtonGroup;
class QLineEdit;

namespace quorvex {

// Picks the solutions to clear.
class ClearFits : public QDialog {
  Q_OBJECT

 public:
  // Both outlive the dialog.
  ClearFits(QWidget* parent, FitClearing& clearing, Prompter& user);

 private:
  void LayOut();
  void Accept();

  FitClearing& clearing_;
  Prompter& user_;
  QButtonGroup* optClear;
  QLineEdit* txtCutoff;
};

}  // namespace quorvex
