#include "results/ui/TableBar.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QMimeData>
#include <QPrinter>
#include <QPushButton>

#include "core/ui/BusyCursor.h"
#include "plot/ui/PSetup.h"
#include "results/ui/PaperJob.h"
#include "results/ui/PrintTable.h"
#include "results/ui/TableFormat.h"
#include "results/ui/TableView.h"

namespace quorvex {

TableBar::TableBar(TableView& table, const NumberPatterns& patterns, Settings& settings, const LocaleText& locale,
                   Prompter& user, QWidget* window, const QString& residuals)
    : QWidget(window),
      table_(table),
      settings_(settings),
      locale_(locale),
      user_(user),
      patterns_(patterns),
      residuals_(residuals),
      row_(new QHBoxLayout(this)) {
  row_->setContentsMargins(0, 0, 0, 0);
  row_->addStretch();
  connect(Add("cmdCopy", "&Copy"), &QPushButton::clicked, this, &TableBar::Copy);
  connect(Add("cmdExport", "&Export..."), &QPushButton::clicked, this, &TableBar::ExportChosen);
  connect(Add("cmdFormat", "&Format..."), &QPushButton::clicked, this, &TableBar::Format);
  connect(Add("cmdPrint", "&Print..."), &QPushButton::clicked, this, &TableBar::Print);
  connect(Add("cmdPageSetup", "Page Set&up..."), &QPushButton::clicked, this,
          [this] { PSetup(settings_, locale_, user_, this->window()).exec(); });
}

QPushButton* TableBar::Add(const char* name, const QString& text) {
  auto* button = new QPushButton(text, this);
  button->setObjectName(name);
  button->setAutoDefault(false);
  row_->insertWidget(row_->count() - 1, button);
  return button;
}

// Else the windows would have to wait for seconds.
bool TableBar::IsShort() const {
  constexpr std::size_t kMostCells = 2'000'000;  // a full sheet of data has fewer
  const TextTable& table = *table_.Table();
  if (table.RowCount() * table.ColumnCount() <= kMostCells) return true;
  user_.Refuse("The table has too many cells for the clipboard or a printer. Please export it to a file.");
  return false;
}

void TableBar::Copy() {
  if (!IsShort()) return;
  const BusyCursor busy;
  QGuiApplication::clipboard()->setMimeData(table_.Copied());
}

void TableBar::Format() {
  TableFormat dialog(window(), patterns_, table_.TableFont(), locale_, residuals_);
  if (dialog.exec() != QDialog::Accepted) return;
  patterns_ = dialog.Patterns();
  const BusyCursor busy;
  table_.SetTableFont(dialog.Font());
  emit PatternsChosen();
}

void TableBar::Print() {
  if (!IsShort()) return;
  PrintOnPaper(window(), table_.TableFont(), settings_, user_, [this](QPrinter& printer, const QMargins& margins) {
    printer.setFullPage(true);
    PrintTable(*table_.Table(), window()->windowTitle(), table_.TableFont(), printer, margins);
  });
}

}  // namespace quorvex
