#pragma once

#include <QDialog>
#include <cstddef>

#include "core/Session.h"

class QCheckBox;
class QLabel;

namespace quorvex {

// A tip at the start of the program, with those before and behind it. Closing it stores whether it comes again.
class frmTip : public QDialog {
  Q_OBJECT

 public:
  // Begins with the tip `first`, counted round.
  frmTip(QWidget* parent, Session& session, std::size_t first);

  void done(int result) override;

 private:
  void Go(std::size_t step);

  Session& session_;
  std::size_t current_;
  QLabel* lblTip;
  QCheckBox* chkLoadTipsAtStartup;
};

}  // namespace quorvex
