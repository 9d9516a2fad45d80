#pragma once

#include <QDialog>

#include "engine/ModelClass.h"

namespace quorvex {

// Shows two models with one ID side by side and asks which is kept. Accepted: the imported one.
class frmChooseModel : public QDialog {
  Q_OBJECT

 public:
  frmChooseModel(QWidget* parent, const ModelClass& existing, const ModelClass& imported);
};

}  // namespace quorvex
