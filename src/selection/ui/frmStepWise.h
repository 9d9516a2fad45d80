#pragma once

#include <atomic>
#include <ctime>
#include <memory>

#include "selection/ExecuteSelection.h"
#include "selection/ui/SelectionWindow.h"

class QLabel;
class QProgressBar;

namespace quorvex {

// Runs a procedure of variable selection beside the window, which shows how far it is, and then its report.
class frmStepWise : public SelectionWindow {
  Q_OBJECT

 public:
  frmStepWise(QWidget* parent, SelectionData selection, VarSelect choices, const LocaleText& locale, Settings& settings,
              Prompter& user);

  void reject() override;  // a run has to be aborted before the window closes

 protected:
  void showEvent(QShowEvent* event) override;
  SelectionFormat Format() const override { return format_; }
  void FormatChosen(const SelectionFormat& format) override;
  void SaveProject() override;
  std::string ReportName() const override;

 private:
  struct Run;

  void ExecuteSelection();
  void ShowProgress();
  void Abort();
  void Fill();

  const std::shared_ptr<Run> run_;  // what the search works with, on whichever thread
  SelectionFormat format_;
  std::tm moment_{};
  std::size_t firstSubset_ = 0;
  bool begun_ = false, running_ = false, asking_ = false;
  QLabel* lblStatus;
  QProgressBar* prgBar;
  QPushButton* cmdAbort;
};

}  // namespace quorvex
