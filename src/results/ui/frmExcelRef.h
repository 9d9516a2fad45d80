#pragma once

#include <QDialog>

#include "core/ui/MessageBoxPrompter.h"
#include "engine/ModelClass.h"

class QLineEdit;
class QRadioButton;

namespace quorvex {

// Asks where a spreadsheet has the independent variable, and copies the model as a formula on it.
class frmExcelRef : public QDialog {
  Q_OBJECT

 public:
  // The model outlives the dialog.
  frmExcelRef(QWidget* parent, const ModelClass& model);

  void accept() override;

 private:
  const ModelClass& model_;
  MessageBoxPrompter user_;
  QLineEdit *txtColumn, *txtRow;
  QRadioButton* optColumns = nullptr;  // with several variables
};

}  // namespace quorvex
