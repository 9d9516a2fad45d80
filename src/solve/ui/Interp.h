#pragma once

#include <QDialog>
#include <vector>

#include "engine/InterpClass.h"

class QCheckBox;
class QPushButton;

namespace quorvex {

// Picks the interpolations to solve, one at least.
class Interp : public QDialog {
  Q_OBJECT

 public:
  // The interpolations outlive the dialog.
  Interp(QWidget* parent, std::vector<InterpClass>& curves);

  std::vector<InterpClass*> Chosen() const;

 private:
  std::vector<InterpClass>& curves_;
  std::vector<QCheckBox*> checks_;  // one for each
  QPushButton* solve_command;
};

}  // namespace quorvex
