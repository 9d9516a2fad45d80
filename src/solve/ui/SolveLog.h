#pragma once

#include <QDialog>
#include <string>

namespace quorvex {

// Shows the account of a solve.
class SolveLog : public QDialog {
  Q_OBJECT

 public:
  SolveLog(QWidget* parent, const std::string& log);
};

}  // namespace quorvex
