#include "selection/ui/frmUserSelect.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/ui/BusyCursor.h"
#include "core/ui/Controls.h"
#include "results/ui/TableView.h"

namespace quorvex {

frmUserSelect::frmUserSelect(QWidget* parent, SelectionData selection, bool intercept, const LocaleText& locale,
                             Settings& settings, Prompter& user)
    : SelectionWindow(parent, locale, settings, user),
      manual_(std::move(selection), intercept, locale),
      lstVariables(Named(new QListWidget(this), "lstVariables")) {
  setObjectName("frmUserSelect");
  setWindowTitle("Manual Selection");
  auto* all = new QVBoxLayout(this);
  AddReport(*all, Variables());
  // Saving as a project says itself what is missing.
  findChild<QPushButton*>("cmdExport")->setEnabled(true);
  lstVariables->setFocus();
}

// The list, with those that are always to be included marked, and its commands.
QWidget* frmUserSelect::Variables() {
  auto* side = new QWidget(this);
  auto* column = new QVBoxLayout(side);
  column->setContentsMargins(0, 0, 0, 0);
  lstVariables->setAccessibleName("Variables");
  lstVariables->setSelectionMode(QAbstractItemView::MultiSelection);
  for (std::size_t j = 0; j < manual_.Data().Names.size(); ++j) {
    lstVariables->addItem(QString::fromStdString(manual_.Data().Names[j]));
    lstVariables->item(static_cast<int>(j))->setSelected(manual_.Data().Always[j]);
  }
  lstVariables->setCurrentRow(0, QItemSelectionModel::NoUpdate);
  lstVariables->setFixedWidth(std::clamp(lstVariables->sizeHintForColumn(0) + 40, 24 * fontMetrics().averageCharWidth(),
                                         40 * fontMetrics().averageCharWidth()));
  column->addWidget(LabelFor(lstVariables, "&Variables:", side));
  column->addWidget(lstVariables, 1);
  const auto add = [&](const char* name, const QString& text, auto command) {
    auto* button = Named(new QPushButton(text, side), name);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, command);
    column->addWidget(button);
    return button;
  };
  add("cmdSAll", "Select &All", [this] { lstVariables->selectAll(); });
  add("cmdDAll", "&Deselect All", [this] { lstVariables->clearSelection(); });
  add("cmdCalculate", "Ca&lculate", [this] { Calculate(); })->setDefault(true);
  return side;
}

void frmUserSelect::Calculate() {
  Subset chosen;
  for (int j = 0; j < lstVariables->count(); ++j)
    if (lstVariables->item(j)->isSelected()) chosen.push_back(static_cast<std::size_t>(j));
  const std::time_t now = std::time(nullptr);
  std::tm moment{};
  localtime_r(&now, &moment);
  const std::size_t rows = manual_.Table().RowCount();
  if (!manual_.Calculate(chosen, moment, user_)) return;
  ShowReport(manual_.ShownTable(), manual_.Table());
  // To where the new one begins; a table that was cleared has nothing before it.
  if (manual_.Table().RowCount() > rows && rows > 0) {
    const QModelIndex first = f1StepWise->model()->index(static_cast<int>(rows) + 1, 0);
    f1StepWise->setCurrentIndex(first);
    f1StepWise->scrollTo(first, QAbstractItemView::PositionAtTop);
  }
}

void frmUserSelect::FormatChosen(const SelectionFormat& format) {
  manual_.SetFormat(format);
  ShowReport(manual_.ShownTable(), manual_.Table());
}

}  // namespace quorvex
