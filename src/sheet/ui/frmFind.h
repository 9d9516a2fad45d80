#pragma once

#include <QDialog>
#include <vector>

#include "sheet/ReplaceCells.h"

class QCheckBox;
class QComboBox;
class QFormLayout;
class QLineEdit;
class QPushButton;

namespace quorvex {

// The Find dialog, which also replaces. It stays open beside the sheets and remembers what was looked for.
class frmFind : public QDialog {
  Q_OBJECT

 public:
  explicit frmFind(QWidget* parent);

  FindCell Wanted() const;
  ReplaceCells Replacement() const;
  bool InSelection() const;

  // Comes to the front, ready for another text, with what replaces or without it.
  void Open(bool replacing);

 signals:
  void FindNext();
  void Replace();
  void ReplaceAll();

 private:
  QFormLayout* rows_;
  QLineEdit *txtFindWhat, *txtReplaceWith;
  QComboBox* cmbSearchBy;
  QCheckBox *ckMatchCells, *ckSelection;
  std::vector<QPushButton*> replacers_;
};

}  // namespace quorvex
