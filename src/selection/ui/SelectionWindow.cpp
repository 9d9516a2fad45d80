#include "selection/ui/SelectionWindow.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QMimeData>
#include <QPrinter>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>

#include "core/ui/BusyCursor.h"
#include "core/ui/Controls.h"
#include "results/SaveResults.h"
#include "results/ui/PaperJob.h"
#include "results/ui/PrintTable.h"
#include "results/ui/TableView.h"
#include "sheet/ui/EditDialogs.h"

namespace quorvex {

SelectionWindow::SelectionWindow(QWidget* parent, const LocaleText& locale, const Settings& settings, Prompter& user)
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

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  const auto add = [&](const char* name, const QString& text, auto command) {
    QPushButton* button = Named(buttons->addButton(text, QDialogButtonBox::ActionRole), name);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, command);
    commands_.push_back(button);
  };
  add("cmdCopy", "&Copy", [this] { Copy(); });
  add("cmdSave", "&Save...", [this] { Save(); });
  add("cmdFormat", "F&ormat...", [this] { ChooseFormat(); });
  add("cmdPrint", "&Print...", [this] { Print(); });
  add("cmdExport", "Save as Pro&ject...", [this] { SaveProject(); });
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(new QShortcut(QKeySequence::Print, this), &QShortcut::activated, this, [this] {
    if (commands_.front()->isEnabled()) Print();
  });
  all.addWidget(buttons);
  // All columns of a report, and its frame within the screen.
  resize(QSize(900, 620).boundedTo(screen()->availableSize() * 0.95));
  Enable(false);
}

void SelectionWindow::ShowReport(Report report) {
  f1StepWise->SetTable(std::make_unique<Report>(std::move(report)));
  Enable(true);
}

void SelectionWindow::Enable(bool on) {
  for (QPushButton* command : commands_) command->setEnabled(on);
}

void SelectionWindow::Copy() const {
  const BusyCursor busy;
  QGuiApplication::clipboard()->setMimeData(f1StepWise->Copied());
}

void SelectionWindow::Save() const { SaveTable(*f1StepWise->Table(), ReportName(), user_); }

void SelectionWindow::ChooseFormat() {
  constexpr double kSample = -1234.56789012345;
  if (const auto pattern = ChooseNumberFormat(this, Format().Values, kSample, locale_))
    FormatChosen({*pattern, *pattern});
}

void SelectionWindow::Print() {
  const QFont& font = f1StepWise->TableFont();
  PrintOnPaper(this, font, settings_, user_, [&](QPrinter& printer, const QMargins& margins) {
    printer.setFullPage(true);
    PrintTable(*f1StepWise->Table(), windowTitle(), font, printer, margins);
  });
}

}  // namespace quorvex
