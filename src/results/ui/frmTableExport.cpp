#include "results/ui/frmTableExport.h"

#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>
#include <memory>

#include "core/ui/BusyCursor.h"
#include "results/SaveResults.h"
#include "results/ui/TableBar.h"
#include "results/ui/TableView.h"

namespace quorvex {
namespace {

NumberPatterns InWindow(NumberPatterns patterns) {
  patterns.Digits = NumberPatterns::kWindowDigits;
  return patterns;
}

}  // namespace

frmTableExport::frmTableExport(const ExportTable& table, Settings& settings, const LocaleText& locale, Prompter& user,
                               QWidget* parent)
    : QWidget(parent, Qt::Window),
      values_(table),
      user_(user),
      table_(new TableView("TableBook", "Table of values", this)),
      commands_(new TableBar(*table_, InWindow(table.Patterns()), settings, locale, user, this)) {
  setObjectName("frmTableExport");
  setWindowTitle("Data Table Export");
  auto* column = new QVBoxLayout(this);
  column->addWidget(table_, 1);
  column->addWidget(commands_);
  connect(commands_->Add("cmdSheet", "To &Sheet..."), &QPushButton::clicked, this, &frmTableExport::ToSheet);
  connect(commands_, &TableBar::ExportChosen, this, &frmTableExport::Export);
  connect(commands_, &TableBar::PatternsChosen, this, &frmTableExport::Show);
  connect(new QShortcut(QKeySequence::Close, this), &QShortcut::activated, this, &QWidget::close);
  table_->setFocus();
  Show();
  resize(QSize(820, 560).boundedTo(screen()->availableSize() * 0.95));
}

void frmTableExport::Show() {
  const BusyCursor busy;
  values_.SetPatterns(commands_->Patterns().InFull());
  auto shown = std::make_unique<ExportTable>(values_);
  shown->SetPatterns(commands_->Patterns().Shown());
  table_->SetTable(std::move(shown), std::make_unique<ExportTable>(values_));
}

void frmTableExport::Export() { SaveTable(std::make_shared<ExportTable>(values_), "Data Table", user_); }

// Without headings and the row of "END", which are no data.
void frmTableExport::ToSheet() {
  if (!commands_->IsShort()) return;
  const QRect numbers(0, 0, static_cast<int>(values_.ColumnCount()), static_cast<int>(values_.RowCount()) - 1);
  const QRect area = numbers & table_->SelectedArea().value_or(numbers);
  const auto place = [](int index) { return static_cast<std::size_t>(index); };
  emit SheetChosen(TabSeparated(
      TableExcerpt(values_, place(area.top()), place(area.left()), place(area.height()), place(area.width()))));
}

}  // namespace quorvex
