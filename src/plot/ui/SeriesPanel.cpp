#include "plot/ui/SeriesPanel.h"

#include <QBoxLayout>
#include <QListWidget>

#include "core/ui/Controls.h"
#include "plot/ui/FieldPanel.h"

namespace quorvex {

SeriesPanel::SeriesPanel(std::vector<FieldGroup>& series, const LocaleText& locale, QWidget* parent)
    : QWidget(parent), series_(series) {
  GraphList = Named(new QListWidget(this), "GraphList");
  GraphList->setAccessibleName(tr("Series"));
  for (std::size_t i = 0; i < series.size(); ++i) GraphList->addItem(QString());
  ShowNames();
  GraphList->setCurrentRow(0);
  panel_ = new FieldPanel(series_[0], locale, this);
  connect(GraphList, &QListWidget::currentRowChanged, this, [this] { panel_->Bind(series_[Chosen()]); });
  connect(panel_, &FieldPanel::Edited, this, [this] {
    ShowNames();
    emit Edited();
  });

  auto* list = new QVBoxLayout;
  list->addWidget(LabelFor(GraphList, tr("&Series:"), this));
  list->addWidget(GraphList);
  auto* both = new QHBoxLayout(this);
  both->setContentsMargins({});
  both->addLayout(list, 1);
  both->addWidget(panel_, 1);
}

std::size_t SeriesPanel::Chosen() const { return static_cast<std::size_t>(GraphList->currentRow()); }

void SeriesPanel::ShowNames() {
  for (int row = 0; row < GraphList->count(); ++row) {
    const FieldValue& legend = series_[static_cast<std::size_t>(row)].Fields[0].Entry;
    const QString name = QString::fromStdString(std::get<std::string>(legend));
    GraphList->item(row)->setText(name.isEmpty() ? tr("Series %1").arg(row + 1) : name);
  }
}

void SeriesPanel::ShowEntries() {
  ShowNames();
  panel_->Bind(series_[Chosen()]);
}

void SeriesPanel::GoTo(std::size_t series, const std::string& control) {
  GraphList->setCurrentRow(static_cast<int>(series));
  panel_->GoTo(control);
}

}  // namespace quorvex
