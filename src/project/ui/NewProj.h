#pragma once

#include <QDialog>

class QCheckBox;
class QSpinBox;

namespace quorvex {

// Asks for the kind of a new project: how many independent variables it has, and whether a standard deviation.
class NewProj : public QDialog {
 public:
  NewProj(QWidget* parent, int independentVariables, bool hasStandardDeviation);

  std::size_t IndependentVariables() const;
  bool HasStandardDeviation() const;

 private:
  QSpinBox* txtVariables;
  QCheckBox* chkStDev;
};

}  // namespace quorvex
