#include "results/ui/frmSummary.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>

#include "core/ui/Controls.h"
#include "diagnosis/Ranking.h"
#include "engine/RankModels.h"
#include "results/SaveResults.h"
#include "results/SummaryTable.h"
#include "results/ui/TableBar.h"
#include "results/ui/TableView.h"
#include "solve/SolvedList.h"

namespace quorvex {

frmSummary::frmSummary(Project& project, Settings& settings, Prompter& user, QWidget* parent)
    : QWidget(parent, Qt::Window),
      project_(project),
      settings_(settings),
      user_(user),
      cmbSortBy(Named(new QComboBox(this), "cmbSortBy")),
      table_(new TableView("SummaryBook", "Summary of the solutions", this)),
      commands_(new TableBar(*table_, WindowPatterns(), settings, project.Locale, user, this)),
      warnings_(Named(new QLabel(this), "warnings")) {
  setObjectName("frmSummary");
  setWindowTitle("Summary Results");
  cmbSortBy->view()->setAccessibleName("Sort by");
  for (int key = 1; key <= static_cast<int>(kSortKeys.size()); ++key)
    cmbSortBy->addItem(QString::fromStdString(std::string(SortKeyName(key))), key);
  auto* choice = new QHBoxLayout;
  choice->addWidget(LabelFor(cmbSortBy, "&Sort by:", this));
  choice->addWidget(cmbSortBy);
  choice->addStretch();
  auto* column = new QVBoxLayout(this);
  column->addLayout(choice);
  column->addWidget(table_, 1);
  warnings_->setWordWrap(true);
  column->addWidget(warnings_);
  column->addWidget(commands_);
  connect(cmbSortBy, &QComboBox::activated, this, [this] { emit SortChosen(cmbSortBy->currentData().toInt()); });
  connect(commands_, &TableBar::ExportChosen, this, &frmSummary::Export);
  connect(commands_, &TableBar::PatternsChosen, this, &frmSummary::Refresh);
  connect(new QShortcut(QKeySequence::Close, this), &QShortcut::activated, this, &QWidget::close);
  table_->setFocus();
  Refresh();
  // All columns, and the frame within the screen.
  resize(QSize(980, 560).boundedTo(screen()->availableSize() * 0.95));
}

void frmSummary::Refresh() {
  const int sortIndex = settings_.Integer("sortindex");
  cmbSortBy->setCurrentIndex(std::max(cmbSortBy->findData(sortIndex), 0));
  const auto summary = [&](const NumberPatterns& patterns) {
    return std::make_unique<SummaryTable>(project_.Models, sortIndex, project_.Locale, patterns);
  };
  table_->SetTable(summary(commands_->Patterns().Shown()), summary(commands_->Patterns().InFull()));
  QStringList sentences;
  if (IsRankingKey(sortIndex)) {
    const std::vector<ModelClass*> ranked = RankModels(project_.Models, sortIndex);
    for (const std::string& warning : RankingWarnings(ranked, ranked.size()))
      sentences << QString::fromStdString(warning);
  }
  warnings_->setText(sentences.join('\n'));
  warnings_->setVisible(!sentences.isEmpty());
}

void frmSummary::Export() { SaveTable(*table_->InFull(), "Results Summary", user_, "Results Summary"); }

}  // namespace quorvex
