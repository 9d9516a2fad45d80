#include "selection/ui/SelectionWindow.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>

#include "results/SaveResults.h"
#include "results/ui/TableBar.h"
#include "results/ui/TableView.h"

namespace quorvex {

SelectionWindow::SelectionWindow(QWidget* parent, const LocaleText& locale, Settings& settings, Prompter& user)
    : QDialog(parent),
      locale_(locale),
      settings_(settings),
      user_(user),
      f1StepWise(new TableView("f1StepWise", "Report", this)) {
  f1StepWise->setShowGrid(false);
}

void SelectionWindow::AddReport(QVBoxLayout& all, QWidget* beside) {
  auto* row = new QHBoxLayout;
  if (beside != nullptr) row->addWidget(beside);
  row->addWidget(f1StepWise, 1);
  all.addLayout(row, 1);

  const SelectionFormat format = Format();
  commands_ =
      new TableBar(*f1StepWise, {.Values = format.Values, .Residuals = format.Sums, .Digits = format.WindowDigits},
                   settings_, locale_, user_, this, "&Sums:");
  // That name is of the command that exports the model.
  commands_->findChild<QPushButton*>("cmdExport")->setObjectName("cmdSave");
  connect(commands_->Add("cmdExport", "Save as Pro&ject..."), &QPushButton::clicked, this, [this] { SaveProject(); });
  connect(commands_, &TableBar::ExportChosen, this, [this] { SaveTable(*f1StepWise->InFull(), ReportName(), user_); });
  connect(commands_, &TableBar::PatternsChosen, this, [this] {
    const NumberPatterns& chosen = commands_->Patterns();
    FormatChosen({chosen.Values, chosen.Residuals, chosen.Digits});
  });
  connect(new QShortcut(QKeySequence::Print, this), &QShortcut::activated,
          commands_->findChild<QPushButton*>("cmdPrint"), &QPushButton::click);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* bottom = new QHBoxLayout;
  bottom->addWidget(commands_, 1);
  bottom->addWidget(buttons);
  all.addLayout(bottom);
  // All columns of a report, and its frame within the screen.
  resize(QSize(900, 620).boundedTo(screen()->availableSize() * 0.95));
  Enable(false);
}

void SelectionWindow::ShowReport(Report shown, Report saved) {
  f1StepWise->SetTable(std::make_unique<Report>(std::move(shown)), std::make_unique<Report>(std::move(saved)));
  Enable(true);
}

void SelectionWindow::Enable(bool on) {
  for (QPushButton* command : commands_->findChildren<QPushButton*>()) command->setEnabled(on);
}

}  // namespace quorvex
