#pragma once

#include <QElapsedTimer>
#include <QWidget>
#include <array>

#include "engine/SolveProgress.h"

class QLabel;
class QProgressBar;
class QPushButton;
class QScrollArea;

namespace quorvex {

// The progress of a run as a window. Its buttons work because a fit yields once per iteration, and within one that
// takes long; closing it by the title bar is an abort. It only raises its flags: the run ends where the fit looks at
// them, and then hides the window.
class ProgressWindow : public QWidget, public virtual SolveProgress {
  Q_OBJECT

 public:
  ProgressWindow(QWidget* parent, const QString& caption);

  void Show(bool visible) override { setVisible(visible); }
  void Yield() override;
  void Pulse() override;
  void ShowConverging(bool running) override;
  void SetProgress(int done, int of) override;
  void SetStatusLabel(const std::string& text) override;
  void SetIterationLabel(const std::string& text) override;
  void SetResidualLabel(const std::string& text) override;
  void SetDeltaLabel(const std::string& text) override;
  void SetParameterCount(int count) override;
  void SetParameterLabel(int index, const std::string& text) override;

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void LayOut();
  void ToggleDetail();
  void FitToFont();

  QLabel* status_label;
  QProgressBar* ProgressBar1;
  QLabel* ConvergeLabel;
  QLabel* IterationLabel;
  QLabel* ResidualLabel;
  QLabel* DeltaLabel;
  QPushButton* cmdDetail;
  QPushButton* cmdPause;
  QPushButton* Abort_command;
  QScrollArea* panel_;
  std::array<QLabel*, kParameterLabels> lblParam;
  int parameters_ = 0;  // labels in use
  QElapsedTimer sinceYield_;
};

}  // namespace quorvex
