#pragma once

#include <QDialog>

#include "plot/StorePageSetup.h"

class QCheckBox;
class QComboBox;
class QLineEdit;

namespace quorvex {

// Page Setup: the margins of what is printed, and how plots lie on the page.
class PSetup : public QDialog {
 public:
  PSetup(Settings& settings, const LocaleText& locale, Prompter& user, QWidget* parent);

  void accept() override;

 private:
  Settings& settings_;
  const LocaleText& locale_;
  Prompter& user_;
  QLineEdit *left_, *right_, *top_, *bottom_;
  QComboBox *units_, *orientation_;
  QCheckBox* background_;
};

}  // namespace quorvex
