#include "results/ui/frmSeries.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>

#include "core/ui/BusyCursor.h"
#include "core/ui/Controls.h"
#include "results/SaveResults.h"
#include "results/ui/TableBar.h"
#include "results/ui/TableView.h"

namespace quorvex {
namespace {

QComboBox* NewCombo(QWidget* parent, const char* name, const QString& accessibleName) {
  auto* combo = Named(new QComboBox(parent), name);
  combo->setAccessibleName(accessibleName);
  combo->view()->setAccessibleName(accessibleName);
  combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  combo->setMinimumContentsLength(12);
  return combo;
}

}  // namespace

frmSeries::frmSeries(SeriesAnswers answers, Settings& settings, const LocaleText& locale, Prompter& user,
                     QWidget* parent)
    : QWidget(parent, Qt::Window),
      answers_(std::make_shared<const SeriesAnswers>(std::move(answers))),
      settings_(settings),
      locale_(locale),
      user_(user),
      cmbSortBy(NewCombo(this, "cmbSortBy", "Sort by")),
      ckDescending(Named(new QCheckBox("&Descending", this), "ckDescending")),
      cmbPlot(NewCombo(this, "cmbPlot", "Plot")),
      cmbOver(NewCombo(this, "cmbOver", "Over")),
      table_(new TableView("SeriesBook", "Answers of the columns", this)),
      commands_(new TableBar(*table_, WindowPatterns(), settings, locale, user, this)) {
  setObjectName("frmSeries");
  setWindowTitle("Series");
  const SeriesAnswersTable headings(answers_, locale_, WindowPatterns());
  for (std::size_t column = 0; column < headings.ColumnCount(); ++column)
    cmbSortBy->addItem(QString::fromStdString(headings.ColumnHeading(column)));
  for (const std::string& name : SeriesQuantities(*answers_)) cmbPlot->addItem(QString::fromStdString(name));
  cmbOver->addItems({"Number", "Heading"});
  auto* cmdPlot = Named(new QPushButton("P&lot", this), "cmdPlot");
  auto* choice = new QHBoxLayout;
  choice->addWidget(LabelFor(cmbSortBy, "&Sort by:", this));
  choice->addWidget(cmbSortBy);
  choice->addWidget(ckDescending);
  choice->addStretch();
  choice->addWidget(LabelFor(cmbPlot, "Pl&ot of:", this));
  choice->addWidget(cmbPlot);
  choice->addWidget(LabelFor(cmbOver, "o&ver:", this));
  choice->addWidget(cmbOver);
  choice->addWidget(cmdPlot);
  auto* column = new QVBoxLayout(this);
  column->addLayout(choice);
  column->addWidget(table_, 1);
  column->addWidget(commands_);
  table_->horizontalHeader()->setSectionsClickable(true);
  table_->horizontalHeader()->setSortIndicatorShown(true);
  connect(table_->horizontalHeader(), &QHeaderView::sectionClicked, this, &frmSeries::SortBy);
  connect(cmbSortBy, &QComboBox::activated, this, &frmSeries::Show);
  connect(ckDescending, &QCheckBox::clicked, this, &frmSeries::Show);
  connect(cmdPlot, &QPushButton::clicked, this, [this] {
    emit PlotChosen(static_cast<std::size_t>(cmbPlot->currentIndex()),
                    cmbOver->currentIndex() == 0 ? SeriesAxis::Number : SeriesAxis::Heading);
  });
  connect(commands_, &TableBar::ExportChosen, this, &frmSeries::Export);
  connect(commands_, &TableBar::PatternsChosen, this, &frmSeries::Show);
  connect(new QShortcut(QKeySequence::Close, this), &QShortcut::activated, this, &QWidget::close);
  table_->setFocus();
  Show();
  resize(QSize(980, 560).boundedTo(screen()->availableSize() * 0.95));
}

// The same heading again turns the order round.
void frmSeries::SortBy(int column) {
  ckDescending->setChecked(cmbSortBy->currentIndex() == column && !ckDescending->isChecked());
  cmbSortBy->setCurrentIndex(column);
  Show();
}

void frmSeries::Show() {
  const BusyCursor busy;
  const bool descending = ckDescending->isChecked();
  const auto sorted = [&](const NumberPatterns& patterns) {
    auto table = std::make_unique<SeriesAnswersTable>(answers_, locale_, patterns);
    table->Sort(static_cast<std::size_t>(cmbSortBy->currentIndex()), descending);
    return table;
  };
  table_->SetTable(sorted(commands_->Patterns().Shown()), sorted(commands_->Patterns().InFull()));
  table_->horizontalHeader()->setSortIndicator(cmbSortBy->currentIndex(),
                                               descending ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void frmSeries::Export() {
  auto table = std::make_shared<SeriesAnswersTable>(answers_, locale_, commands_->Patterns().InFull());
  table->Sort(static_cast<std::size_t>(cmbSortBy->currentIndex()), ckDescending->isChecked());
  SaveTable(std::move(table), "Series", user_);
}

}  // namespace quorvex
