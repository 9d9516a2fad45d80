#pragma once

#include <QDialog>

#include "sheet/FindCell.h"

class QCheckBox;
class QComboBox;
class QLineEdit;

namespace quorvex {

// The Find dialog. It stays open beside the sheets and remembers what was looked for.
class frmFind : public QDialog {
  Q_OBJECT

 public:
  explicit frmFind(QWidget* parent);

  FindCell Wanted() const;

  // Comes to the front, ready for another text.
  void Open();

 signals:
  void FindNext();

 private:
  QLineEdit* txtFindWhat;
  QComboBox* cmbSearchBy;
  QCheckBox* ckMatchCells;
};

}  // namespace quorvex
