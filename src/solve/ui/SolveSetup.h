#pragma once

#include <QDialog>

#include "solve/SolveChoice.h"

class QButtonGroup;
class QCheckBox;

namespace quorvex {

// Asks for the solver, and which models a solve takes.
class SolveSetup : public QDialog {
  Q_OBJECT

 public:
  SolveSetup(QWidget* parent, const SolveChoice& choice);

  SolveChoice Choice() const;

 private:
  QButtonGroup *optSolver, *optModels;
  QCheckBox* chkDefault;
};

}  // namespace quorvex
