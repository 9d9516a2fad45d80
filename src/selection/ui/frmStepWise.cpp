#include "selection/ui/frmStepWise.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <mutex>

#include "core/LongWork.h"
#include "core/ui/Controls.h"
#include "results/ui/TableView.h"
#include "selection/ExportSelection.h"

namespace quorvex {

// What the search and the window share. The search has it to itself until it is at its end, but for the form.
struct frmStepWise::Run : SelectionForm {
  Run(SelectionData data, VarSelect choices, const LocaleText& locale)
      : Data(std::move(data)), Choices(std::move(choices)), Locale(locale) {}

  const SelectionData Data;
  const VarSelect Choices;
  const LocaleText Locale;
  SelectionResult Result;

  std::atomic<bool> EndWanted = false;
  // How far the search is: its status, and of what is counted the part that is done.
  struct State {
    std::string Status;
    double Done = 0, Of = 0;
  };

  State Now() {
    const std::lock_guard lock(lock_);
    State state = state_;
    if (const double total = total_; total > 0) {
      state.Done = counter_;
      state.Of = total;
      state.Status = CounterStatus(state.Done, total, Locale);
    }
    return state;
  }

  void SetStatus(const std::string& text) override {
    const std::lock_guard lock(lock_);
    state_ = {text, 0, 0};
    total_ = 0;
  }
  // Called for every combination, so without the lock; that both belong together matters only for the total.
  void SetCounter(double i, double total) override {
    counter_.store(i, std::memory_order_relaxed);
    total_.store(total, std::memory_order_relaxed);
  }
  void SetProgress(std::size_t done, std::size_t of) override {
    const std::lock_guard lock(lock_);
    state_.Done = static_cast<double>(done);
    state_.Of = static_cast<double>(of);
  }
  bool Aborted() const override { return EndWanted.load(std::memory_order_relaxed); }

 private:
  std::mutex lock_;
  State state_;
  std::atomic<double> counter_ = 0, total_ = 0;
};

frmStepWise::frmStepWise(QWidget* parent, SelectionData selection, VarSelect choices, const LocaleText& locale,
                         Settings& settings, Prompter& user)
    : SelectionWindow(parent, locale, settings, user),
      run_(std::make_shared<Run>(std::move(selection), std::move(choices), locale)),
      lblStatus(Named(new QLabel(this), "lblStatus")),
      prgBar(Named(new QProgressBar(this), "prgBar")),
      cmdAbort(Named(new QPushButton("&Abort", this), "cmdAbort")) {
  setObjectName("frmStepWise");
  setWindowTitle(kProcedureNames[static_cast<std::size_t>(run_->Choices.WhichModel)]);
  prgBar->setAccessibleName("Progress of the search");
  cmdAbort->setAutoDefault(false);
  connect(cmdAbort, &QPushButton::clicked, this, &frmStepWise::Abort);
  auto* progress = new QHBoxLayout;
  progress->addWidget(lblStatus, 1);
  progress->addWidget(prgBar, 1);
  progress->addWidget(cmdAbort);
  auto* all = new QVBoxLayout(this);
  all->addLayout(progress);
  AddReport(*all);
  cmdAbort->setFocus();
}

void frmStepWise::showEvent(QShowEvent* event) {
  SelectionWindow::showEvent(event);
  if (!begun_) QTimer::singleShot(0, this, &frmStepWise::ExecuteSelection);
  begun_ = true;
}

void frmStepWise::ExecuteSelection() {
  const std::time_t now = std::time(nullptr);
  localtime_r(&now, &moment_);
  running_ = true;
  RunBeside(
      [run = run_](const LongWork&) {
        run->Result = quorvex::ExecuteSelection(run->Data, run->Choices, run->Locale, *run);
      },
      [this](const LongWork&) {
        ShowProgress();
        QCoreApplication::processEvents();
        return true;
      });
  running_ = false;
  cmdAbort->setEnabled(false);
  cmdAbort->hide();
  prgBar->hide();
  const std::vector<std::string>& endings = run_->Result.Endings;
  lblStatus->setText(endings.empty() ? QString() : QString::fromStdString(endings.back()));
  lblStatus->setVisible(!endings.empty());
  Fill();
  f1StepWise->setFocus();
  if (run_->Result.Aborted) user_.Inform("Solution process aborted.");
  if (run_->Result.Error) user_.Refuse(*run_->Result.Error);
}

void frmStepWise::ShowProgress() {
  constexpr int kWhole = 1000;
  const Run::State state = run_->Now();
  lblStatus->setText(QString::fromStdString(state.Status));
  prgBar->setRange(0, state.Of > 0 ? kWhole : 0);
  if (state.Of > 0) prgBar->setValue(static_cast<int>(kWhole * (state.Done / state.Of)));
}

// The search goes on while the user is asked.
void frmStepWise::Abort() {
  if (!running_ || asking_) return;
  asking_ = true;
  if (user_.Ask("Abort solution process?")) run_->EndWanted = true;
  asking_ = false;
}

void frmStepWise::reject() {
  if (running_) return Abort();
  SelectionWindow::reject();
}

void frmStepWise::Fill() {
  const auto report = [&](const SelectionFormat& format) {
    return ReportOf(run_->Result, run_->Data, run_->Choices.WhichModel, moment_, locale_, format);
  };
  SelectionReport saved = report(format_);
  firstSubset_ = saved.FirstSubset;
  ShowReport(report(ForWindow(format_)).Table, std::move(saved.Table));
  if (!run_->Result.Subsets.empty())
    f1StepWise->setCurrentIndex(f1StepWise->model()->index(static_cast<int>(firstSubset_), 0));
}

void frmStepWise::FormatChosen(const SelectionFormat& format) {
  format_ = format;
  Fill();
}

std::string frmStepWise::ReportName() const { return windowTitle().toStdString(); }

// Of All Subsets the combination that the user is at.
void frmStepWise::SaveProject() {
  const int row = f1StepWise->currentIndex().row() - static_cast<int>(firstSubset_);
  ExportResult(run_->Result, run_->Data, run_->Choices, static_cast<std::size_t>(std::max(row, 0)), locale_, user_);
}

}  // namespace quorvex
